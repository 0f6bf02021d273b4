#pragma once

#include <QPoint>
#include <QString>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

class QMenu;
class QPixmap;
class QWidget;

namespace veldran::shell {

/// A step did not show what it should.
class TourFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a picture shows: the end of its file's name, and its caption.
struct Shot {
    std::string name;
    std::string caption;
};

/// What a message box says.
struct Message {
    std::string title;
    std::string text;
};

/// The window as a user has it before him: sends real mouse and key events through the window system, looks
/// at what is shown, and takes pictures.
class Stage {
public:
    /// \param pictures folder that the pictures go to; created when missing
    Stage(QWidget& window, std::filesystem::path pictures);

    /// Saves a picture of the window and everything above it, with its caption, and says so on the console.
    void picture(const std::string& name, const std::string& caption);
    int pictureCount() const { return pictures_; }

    void click(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton);
    void click(QWidget& widget) { click(widget, centre(widget)); }
    /// Opens a menu of the bar and leaves it open.
    QMenu& openMenu(const QString& objectName);
    /// Clicks an entry of an open menu; a submenu opens and is returned.
    QMenu* clickEntry(QMenu& menu, const QString& actionName);
    void clickToolButton(const QString& actionName);
    /// To the widget that has the focus, by way of its window.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString& text);
    /// As long as it takes for what is typed next to be a new beginning.
    void pauseTyping() const;

    /// Does `action`, which opens a dialog, and lets `inside` work with the dialog; `inside` has to close it.
    void withDialog(const std::function<void()>& action, const std::function<void(QWidget& dialog)>& inside);

    /// Does `action`, which brings up the message, takes its picture and answers it.
    /// \throws TourFailure for another message
    void expectMessage(const std::function<void()>& action, const Message& message, const Shot& shot,
                       Qt::Key answer = Qt::Key_Return, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// Object name of the widget that has the focus, or of the nearest one around it that has a name.
    static std::string focused();
    /// Waits until the focus is there: a key that presses a button does so with a delay. \throws TourFailure
    void expectFocus(const std::string& objectName) const;

    /// The visible widget of that object name. \throws TourFailure
    template<class Kind>
    Kind& find(const QString& objectName) {
        auto* found = dynamic_cast<Kind*>(findVisible(objectName));
        require(found != nullptr, "non si vede il controllo " + objectName.toStdString());
        return *found;
    }
    /// \throws TourFailure naming `what` when it does not hold
    void require(bool holds, const std::string& what) const;
    /// Lets the window work until `holds`. \throws TourFailure after some seconds
    void waitUntil(const std::function<bool()>& holds, const std::string& what) const;
    void settle() const;
    /// Makes the window, or the dialog before it, the active one, as a window manager does where there is
    /// one.
    void activate() const;

    /// Whether something has already gone wrong, so that no step need be waited for; may be empty.
    std::function<bool()> hopeless;

private:
    static QPoint centre(const QWidget& widget);
    QWidget* findVisible(const QString& objectName) const;
    QPixmap scene() const;

    QWidget& window_;
    std::filesystem::path folder_;
    int pictures_ = 0;
};

} // namespace veldran::shell
