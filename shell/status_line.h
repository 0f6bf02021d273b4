#pragma once

class QLabel;
class QStatusBar;

namespace veldran::shell {

class Host;

/// The status bar: company, user, database, locks.
class StatusLine {
public:
    /// The bar owns the labels; `bar` outlives this object.
    explicit StatusLine(QStatusBar& bar);

    void show(const Host& host);
    void showLocks(bool capitals, bool numbers);

private:
    QLabel* addPanel(QStatusBar& bar, const char* name, int stretch);

    QLabel* company_;
    QLabel* user_;
    QLabel* database_;
    QLabel* capitals_;
    QLabel* numbers_;
};

} // namespace veldran::shell
