#pragma once

#include <QObject>
#include <functional>

namespace veldran::shell {

/// Whether capitals and the number pad are locked, as far as the keys that reach the application tell: the
/// toolkit does not report the state of the locks, but a letter or a key of the number pad gives it away.
class LockKeys final : public QObject {
public:
    /// Watches the keys of the whole application.
    explicit LockKeys(QObject* parent);

    bool capitals() const { return capitals_; }
    bool numbers() const { return numbers_; }
    std::function<void()> onChanged;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void set(bool& lock, bool on);
    bool capitals_ = false;
    bool numbers_ = true; ///< desktops start with the number pad locked
};

} // namespace veldran::shell
