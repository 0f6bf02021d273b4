#include "shell/message_box.h"
#include "shell/qt_screen.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>

namespace veldran::test {
namespace {

using services::MessageBoxAnswer;

/// What a box looked like while it was open.
struct Seen {
    QString title;
    QString text;
    QString informative;
    QString details;
    QStringList buttons;
    QString defaultButton;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    bool onTop = false;
};

Seen look(const QMessageBox& box) {
    Seen seen{box.windowTitle(),
              box.text(),
              box.informativeText(),
              box.detailedText(),
              {},
              {},
              box.icon(),
              box.windowFlags().testFlag(Qt::WindowStaysOnTopHint)};
    for (const QAbstractButton* button : box.buttons()) {
        seen.buttons << button->text();
    }
    seen.defaultButton = box.defaultButton() ? box.defaultButton()->text() : QString();
    return seen;
}

class MessageBoxTest : public testing::Test {
protected:
    /// Shows what `action` shows and answers with a key.
    MessageBoxAnswer answer(const std::function<MessageBoxAnswer()>& action, Qt::Key key) {
        MessageBoxAnswer result{};
        EXPECT_TRUE(withModal([&] { result = action(); },
                              [&](QWidget& modal) {
                                  seen_ = look(dynamic_cast<QMessageBox&>(modal));
                                  QTest::keyClick(&modal, key);
                              }));
        return result;
    }
    MessageBoxAnswer answerByButton(const std::function<MessageBoxAnswer()>& action, const QString& button) {
        MessageBoxAnswer result{};
        EXPECT_TRUE(withModal([&] { result = action(); },
                              [&](QWidget& modal) {
                                  for (QAbstractButton* one : dynamic_cast<QMessageBox&>(modal).buttons()) {
                                      if (one->text() == button) {
                                          one->click();
                                      }
                                  }
                              }));
        return result;
    }

    shell::MessageCatalogue catalogue_;
    shell::MessageBoxService service_{catalogue_};
    Seen seen_;
};

TEST_F(MessageBoxTest, ReportsAnErrorWithItsNumberSourceDescriptionPlaceAndDatabaseErrors) {
    services::ErrorObject error{208, "Connessione", "Il nome di oggetto 'X' non è valido."};
    const ado::Errors errors{{208, "Driver", "Il nome di oggetto 'X' non è valido.", "42S02", 208},
                             {8180, "Driver", "Impossibile preparare l'istruzione.", "42000", 8180}};
    service_.SetError(error);
    service_.SetConnectionErrors(errors);
    error.Source = "\n" + error.Source; // changed after it was handed over, as the form's report does
    const auto result = answer(
        [&] { return service_.ShowError("Contabilità", "Attivazione conti", "CaricaChildren:", 4370); },
        Qt::Key_Return);
    EXPECT_EQ(result, services::answerRetry) << "the second button is the default";
    EXPECT_EQ(seen_.title, "Contabilità");
    EXPECT_EQ(seen_.text, "Errore 208\nConnessione\n\nIl nome di oggetto 'X' non è valido.");
    EXPECT_EQ(seen_.informative,
              "Maschera: Attivazione conti\nRoutine: CaricaChildren:\n\nErrori del database:\n"
              "208 [42S02] Driver: Il nome di oggetto 'X' non è valido.\n"
              "8180 [42000] Driver: Impossibile preparare l'istruzione.");
    EXPECT_EQ(seen_.buttons, QStringList({"&Interrompi", "&Riprova", "I&gnora"}));
    EXPECT_EQ(seen_.defaultButton, "&Riprova");
    EXPECT_EQ(seen_.icon, QMessageBox::Critical);
    EXPECT_TRUE(seen_.onTop);
}

TEST_F(MessageBoxTest, AnswersWithTheButtonThatWasPressed) {
    const auto show = [&] { return service_.ShowError("T", "F", "R:", 4370); };
    EXPECT_EQ(answerByButton(show, "&Interrompi"), services::answerAbort);
    EXPECT_EQ(answerByButton(show, "&Riprova"), services::answerRetry);
    EXPECT_EQ(answerByButton(show, "I&gnora"), services::answerIgnore);
}

TEST_F(MessageBoxTest, ForgetsTheErrorOnceItWasShown) {
    services::ErrorObject error{5, "S", "D"};
    service_.SetError(error);
    answer([&] { return service_.ShowError("T", "F", "R:", 4370); }, Qt::Key_Return);
    EXPECT_EQ(seen_.text, "Errore 5 S\n\nD");
    answer([&] { return service_.ShowError("T", "F", "R:", 4370); }, Qt::Key_Return);
    EXPECT_EQ(seen_.text, "Errore 0\n\n");
}

TEST_F(MessageBoxTest, PutsALongListOfDatabaseErrorsBehindTheDetails) {
    ado::Errors errors;
    for (int i = 1; i <= 8; ++i) {
        errors.push_back({i, "", "errore numero " + std::to_string(i), "", i});
    }
    const auto content = shell::errorContent({1, "", "x"}, errors, "T", "F", "R:");
    EXPECT_TRUE(content.informative.endsWith("5: errore numero 5\n… e altri 3"));
    EXPECT_TRUE(content.details.endsWith("8: errore numero 8"));
}

TEST_F(MessageBoxTest, AsksYesOrNoInItalian) {
    const auto ask = [&] {
        return service_.ShowBox("Procedere?\r\nSicuro?", services::styleYesNo | services::styleExclamation,
                                "Attenzione");
    };
    EXPECT_EQ(answer(ask, Qt::Key_Return), services::answerYes);
    EXPECT_EQ(seen_.buttons, QStringList({"&Sì", "&No"}));
    EXPECT_EQ(seen_.text, "Procedere?\nSicuro?");
    EXPECT_EQ(seen_.icon, QMessageBox::Warning);
    EXPECT_EQ(answerByButton(ask, "&No"), services::answerNo);
    EXPECT_EQ(answer(ask, Qt::Key_Escape), services::answerNo);
}

TEST_F(MessageBoxTest, ShowsACriticalBoxWithOneButton) {
    EXPECT_EQ(answer(
                  [&] {
                      return service_.ShowBox("Testo", services::styleCritical,
                                              "A T T E N Z I O N E ! ! ! ! !");
                  },
                  Qt::Key_Escape),
              services::answerOk);
    EXPECT_EQ(seen_.buttons, QStringList({"OK"}));
    EXPECT_EQ(seen_.icon, QMessageBox::Critical);
}

TEST_F(MessageBoxTest, ShowsTextThatLooksLikeMarkupAsItStands) {
    answer([&] { return service_.ShowBox("<b>x</b>", services::styleOkOnly, "t"); }, Qt::Key_Return);
    EXPECT_EQ(seen_.text, "<b>x</b>");
}

TEST_F(MessageBoxTest, ShowsANumberedMessageOfTheCatalogue) {
    shell::Problems problems;
    catalogue_.add(shell::Places::ofThisProgram().data / "messaggi.json", problems);
    EXPECT_EQ(answer([&] { return service_.ShowCatalogueMessage(30179); }, Qt::Key_Return),
              services::answerOk);
    EXPECT_EQ(seen_.title, "Cambio ditta");
    EXPECT_TRUE(seen_.text.startsWith("Non è possibile cambiare ditta"));
}

TEST_F(MessageBoxTest, TakesTheBusyPointerAwayWhileItAsks) {
    shell::QtScreen screen;
    screen.SetMousePointer(services::mouseArrowHourglass);
    screen.SetMousePointer(services::mouseArrowHourglass);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(withModal([&] { service_.ShowBox("x", services::styleOkOnly, "t"); },
                          [](QWidget& modal) {
                              EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
                              QTest::keyClick(&modal, Qt::Key_Return);
                          }));
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::BusyCursor);
    screen.SetMousePointer(services::mouseDefault);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "set twice, taken back once";
    EXPECT_EQ(screen.GetMousePointer(), services::mouseDefault);
}

TEST_F(MessageBoxTest, BreaksALineThatTheScreenHasNoRoomFor) {
    EXPECT_TRUE(withModal(
        [&] {
            shell::showBox({"Controllo", QStringLiteral("parola ").repeated(60), {}, {}},
                           services::styleExclamation);
        },
        [](QWidget& modal) {
            const auto* text = modal.findChild<QLabel*>("qt_msgbox_label");
            ASSERT_NE(text, nullptr);
            EXPECT_LE(modal.width(), modal.screen()->availableSize().width());
            EXPECT_LE(text->geometry().right(), modal.width());
            QTest::keyClick(&modal, Qt::Key_Return);
        }));
}

TEST_F(MessageBoxTest, BreaksItsTextWhereTheTextSaysSo) {
    const QString line =
        QStringLiteral("non è ammesso salvare una correlazione con la somma delle percentuali");
    EXPECT_TRUE(withModal(
        [&] {
            shell::showBox({"Controllo", line + "\n" + line, {}, {}}, services::styleExclamation);
        },
        [](QWidget& modal) {
            const auto* text = modal.findChild<QLabel*>("qt_msgbox_label");
            ASSERT_NE(text, nullptr);
            EXPECT_LT(text->heightForWidth(text->width()), 3 * text->fontMetrics().lineSpacing());
            QTest::keyClick(&modal, Qt::Key_Return);
        }));
}

} // namespace
} // namespace veldran::test
