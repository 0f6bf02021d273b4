#pragma once

#include "platform/event.h"

#include <QObject>
#include <QString>
#include <QVariant>

namespace veldran::controls {
class Control;
class Form;
} // namespace veldran::controls

namespace veldran::shell {

/// The form that a script addresses. Empty from the form's unloading on: a script object may be held longer.
class ScriptedForm {
public:
    explicit ScriptedForm(controls::Form& form);
    controls::Form* form() const { return form_; }

private:
    controls::Form* form_;
    Subscription unloading_;
};

/// One control as a customer script sees it: an object with properties. A property that the control does not
/// have, or a form that is gone, is an error of the script.
class ScriptControl final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString caption READ caption WRITE setCaption)
    Q_PROPERTY(QString toolTip READ toolTip WRITE setToolTip)
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled)
    Q_PROPERTY(bool visible READ isVisible WRITE setVisible)
    Q_PROPERTY(int tabIndex READ tabIndex WRITE setTabIndex)
    Q_PROPERTY(bool focused READ isFocused)
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QVariant value READ value WRITE setValue)
    Q_PROPERTY(int selectedIndex READ selectedIndex WRITE setSelectedIndex)
    Q_PROPERTY(QString selectedKey READ selectedKey)
    Q_PROPERTY(bool selectedChecked READ isSelectedChecked)

public:
    ScriptControl(const ScriptedForm& form, controls::Control& control, QObject* parent);

    QString name() const { return name_; }
    QString caption() const;
    void setCaption(const QString& caption);
    QString toolTip() const;
    void setToolTip(const QString& toolTip);
    bool isEnabled() const;
    void setEnabled(bool enabled);
    bool isVisible() const;
    void setVisible(bool visible);
    int tabIndex() const;
    void setTabIndex(int index);
    bool isFocused() const;
    /// Of a code field its text, of a combo its choice, of a tree the selected node, of a tab strip the
    /// selected tab, of a number what it shows; of every other control its caption.
    QString text() const;
    void setText(const QString& text);
    QVariant value() const; ///< of a number; null while it is empty
    void setValue(const QVariant& value);
    int selectedIndex() const; ///< of a tab strip (from 1) or a combo (from 0)
    void setSelectedIndex(int index);
    QString selectedKey() const;    ///< of a tree; empty when nothing is selected
    bool isSelectedChecked() const; ///< of a tree

    Q_INVOKABLE void setFocus();

private:
    /// The control, or nullptr after raising the script error that the form is closed.
    controls::Control* control() const;
    template<class Kind>
    Kind* as(const char* property) const;
    void fail(const QString& what) const;

    const ScriptedForm& form_;
    controls::Control& control_;
    QString name_;
};

} // namespace veldran::shell
