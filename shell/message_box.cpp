#include "shell/message_box.h"

#include "adapters/qt/text.h"
#include "shell/qt_screen.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStringList>
#include <algorithm>
#include <utility>
#include <vector>

namespace veldran::shell {

using qt::toQt;

namespace {

using services::MessageBoxAnswer;

constexpr int buttonMask = 0x7;
constexpr int iconMask = 0x70;
constexpr int defaultMask = 0x300;
constexpr int defaultShift = 8;
constexpr qsizetype errorsShownAtOnce = 5;
constexpr int lettersOfLine = 100;
constexpr int lettersBeside = 20; ///< of a small screen that are kept for icon and edges

struct AnswerButton {
    MessageBoxAnswer answer;
    const char* text;
    QMessageBox::ButtonRole role;
};

std::vector<AnswerButton> buttonsOf(int style) {
    const AnswerButton ok{services::answerOk, "OK", QMessageBox::AcceptRole};
    const AnswerButton cancel{services::answerCancel, "Annulla", QMessageBox::RejectRole};
    const AnswerButton abort{services::answerAbort, "&Interrompi", QMessageBox::ActionRole};
    const AnswerButton retry{services::answerRetry, "&Riprova", QMessageBox::ActionRole};
    const AnswerButton ignore{services::answerIgnore, "I&gnora", QMessageBox::ActionRole};
    const AnswerButton yes{services::answerYes, "&Sì", QMessageBox::YesRole};
    const AnswerButton no{services::answerNo, "&No", QMessageBox::NoRole};
    switch (style & buttonMask) {
    case 1:
        return {ok, cancel};
    case services::styleAbortRetryIgnore:
        return {abort, retry, ignore};
    case services::styleYesNoCancel:
        return {yes, no, cancel};
    case services::styleYesNo:
        return {yes, no};
    case 5:
        return {retry, cancel};
    default:
        return {ok};
    }
}

QMessageBox::Icon iconOf(int style) {
    switch (style & iconMask) {
    case services::styleCritical:
        return QMessageBox::Critical;
    case 32:
        return QMessageBox::Question;
    case services::styleExclamation:
        return QMessageBox::Warning;
    case services::styleInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

/// Lines as the toolkit breaks them; the house's texts may carry carriage returns.
QString plain(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

/// Room for the lines as they were written, unless one is very long; the box would break them anywhere.
void keepLines(QMessageBox& box) {
    auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (!label) {
        return;
    }
    const QFontMetrics metrics = label->fontMetrics();
    int widest = 0;
    for (const QString& line : box.text().split(u'\n')) {
        widest = std::max(widest, metrics.horizontalAdvance(line));
    }
    const QMargins margins = label->contentsMargins();
    const int around = margins.left() + margins.right() + metrics.averageCharWidth();
    const int room = box.screen()->availableSize().width() - lettersBeside * metrics.averageCharWidth();
    label->setMinimumWidth(std::min({widest, lettersOfLine * metrics.averageCharWidth(), room}) + around);
}

QString databaseLine(const ado::Error& error) {
    QString line = QString::number(error.NativeError != 0 ? error.NativeError : error.Number);
    if (!error.SQLState.empty()) {
        line += QStringLiteral(" [%1]").arg(toQt(error.SQLState));
    }
    if (!error.Source.empty()) {
        line += u' ' + toQt(error.Source);
    }
    return line + QStringLiteral(": ") + toQt(error.Description);
}

} // namespace

MessageBoxAnswer showBox(const BoxContent& content, int style) {
    const PointerPause pause;
    QWidget* over = QApplication::activeModalWidget();
    if (!over) {
        over = QApplication::activeWindow();
    }
    QMessageBox box(over);
    box.setObjectName(QStringLiteral("messaggio"));
    box.setWindowTitle(content.title);
    box.setTextFormat(Qt::PlainText);
    box.setText(plain(content.text));
    box.setInformativeText(plain(content.informative));
    box.setIcon(iconOf(style));
    box.setWindowModality(Qt::ApplicationModal);
    if ((style & services::styleSystemModal) != 0) {
        box.setWindowFlag(Qt::WindowStaysOnTopHint);
    }
    std::vector<std::pair<QAbstractButton*, MessageBoxAnswer>> answers;
    for (const AnswerButton& button : buttonsOf(style)) {
        answers.emplace_back(box.addButton(toQt(button.text), button.role), button.answer);
    }
    if (!content.details.isEmpty()) {
        box.setDetailedText(plain(content.details));
    }
    keepLines(box);
    const std::size_t preferred = static_cast<std::size_t>((style & defaultMask) >> defaultShift);
    if (auto* button = qobject_cast<QPushButton*>(answers[std::min(preferred, answers.size() - 1)].first)) {
        box.setDefaultButton(button);
    }
    box.exec();
    for (const auto& [button, answer] : answers) {
        if (button == box.clickedButton()) {
            return answer;
        }
    }
    return answers.back().second; // left by Escape or by the window's own button
}

BoxContent errorContent(const services::ErrorObject& error, const ado::Errors& databaseErrors,
                        const std::string& applicationTitle, const std::string& formCaption,
                        const std::string& routine) {
    BoxContent content;
    content.title = toQt(applicationTitle);
    const QString source = plain(toQt(error.Source));
    content.text = QStringLiteral("Errore %1").arg(error.Number);
    if (!source.isEmpty()) {
        content.text += (source.startsWith(u'\n') ? QString() : QStringLiteral(" ")) + source;
    }
    content.text += QStringLiteral("\n\n") + plain(toQt(error.Description));
    content.informative = QStringLiteral("Maschera: %1\nRoutine: %2").arg(toQt(formCaption), toQt(routine));
    if (databaseErrors.empty()) {
        return content;
    }
    QStringList lines;
    for (const ado::Error& databaseError : databaseErrors) {
        lines << databaseLine(databaseError);
    }
    content.informative +=
        QStringLiteral("\n\nErrori del database:\n") + lines.mid(0, errorsShownAtOnce).join(u'\n');
    if (lines.size() > errorsShownAtOnce) {
        content.informative += QStringLiteral("\n… e altri %1").arg(lines.size() - errorsShownAtOnce);
        content.details = lines.join(u'\n');
    }
    return content;
}

MessageBoxAnswer MessageBoxService::ShowError(const std::string& applicationTitle,
                                              const std::string& formCaption, const std::string& routine,
                                              int style) {
    const services::ErrorObject* error = std::exchange(error_, nullptr);
    const ado::Errors* errors = std::exchange(connectionErrors_, nullptr);
    return showBox(errorContent(error ? *error : services::ErrorObject{}, errors ? *errors : ado::Errors{},
                                applicationTitle, formCaption, routine),
                   style);
}

MessageBoxAnswer MessageBoxService::ShowBox(const std::string& text, int style, const std::string& title) {
    return showBox({toQt(title), toQt(text), {}, {}}, style);
}

MessageBoxAnswer MessageBoxService::ShowCatalogueMessage(std::int32_t number) {
    const CatalogueMessage message = catalogue_.message(number);
    return ShowBox(message.text, message.style, message.title);
}

} // namespace veldran::shell
