// The report that every routine ends in.
#include "host/segnalazione_errori.h"
#include "tests/module/scripted_driver.h"
#include "tests/support/message_recorder.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace veldran::test {

namespace {

class ErrorReport : public testing::Test {
protected:
    void startMessages() {
        report.UsaMessaggi(std::make_unique<MessageRecorder>(log, std::make_shared<Journal>()), "Suite");
    }

    std::shared_ptr<MessageLog> log = std::make_shared<MessageLog>(); // shared with the message service
    SegnalazioneErrori report{[] { return std::string("Conti"); }};
};

TEST_F(ErrorReport, AnswersAbortAtOnceWithoutAMessageService) {
    EXPECT_EQ(report.SegnalazioneErrore("Prova:"), services::answerAbort);
    report.Esegui("Prova:", [] { fail(); });
    EXPECT_TRUE(log->errors.empty());
}

TEST_F(ErrorReport, ShowsTheDatabasesErrorUnderTheRoutinesLabel) {
    startMessages();
    ScriptedDatabase database;
    const auto connection = connectTo(database);
    database.answer = [](const Request&) -> ado::StatementResult { fail(208, "Tabella sconosciuta"); };
    report.UsaConnessione(connection);
    log->answers = {services::answerIgnore};
    report.Esegui("Prova:", [&] { connection->Execute("SELECT 1"); });
    ASSERT_EQ(log->errors.size(), 1U);
    const ShownError& shown = log->errors[0];
    EXPECT_EQ(shown.error.Number, 208);
    EXPECT_EQ(shown.error.Source, "\r\nBase dati di prova");
    EXPECT_EQ(shown.error.Description, "Tabella sconosciuta");
    EXPECT_EQ(shown.applicationTitle, "Suite");
    EXPECT_EQ(shown.formCaption, "Conti");
    EXPECT_EQ(shown.routine, "Prova:");
    EXPECT_EQ(shown.style, 4370);
    ASSERT_TRUE(shown.hadConnectionErrors);
    ASSERT_EQ(shown.connectionErrors.size(), 1U);
    EXPECT_EQ(shown.connectionErrors[0].SQLState, "HY000");
}

TEST_F(ErrorReport, PassesNoDatabaseErrorsBeforeTheConnectionExists) {
    startMessages();
    report.Esegui("Prova:", [] { throw std::runtime_error("host"); });
    ASSERT_EQ(log->errors.size(), 1U);
    EXPECT_FALSE(log->errors[0].hadConnectionErrors);
    EXPECT_EQ(log->errors[0].error.Description, "host");
}

TEST_F(ErrorReport, YieldsTheRoutinesFailureValueAndNeverLetsAnErrorThrough) {
    startMessages();
    EXPECT_EQ(report.Esegui("A:", 7, []() -> int { throw std::invalid_argument("x"); }), 7);
    EXPECT_EQ(report.Esegui("B:", 7, [] { return 3; }), 3);
    EXPECT_NO_THROW(report.Esegui("C:", [] { throw 5; }));
    ASSERT_EQ(log->errors.size(), 2U);
    EXPECT_EQ(log->errors[0].routine, "A:");
    EXPECT_EQ(log->errors[0].error.Number, 13);
    EXPECT_EQ(log->errors[1].routine, "C:");
    EXPECT_NE(log->errors[1].error.Description, "");
}

TEST_F(ErrorReport, NumbersFailuresThatAreNotTheDatabases) {
    startMessages();
    report.Esegui("A:", [] { throw std::overflow_error("x"); });
    report.Esegui("B:", [] { throw std::out_of_range("x"); });
    report.Esegui("C:", [] { throw std::bad_alloc(); });
    report.Esegui("D:", [] { throw std::logic_error("x"); });
    ASSERT_EQ(log->errors.size(), 4U);
    EXPECT_EQ(log->errors[0].error.Number, 6);
    EXPECT_EQ(log->errors[1].error.Number, 9);
    EXPECT_EQ(log->errors[2].error.Number, 7);
    EXPECT_EQ(log->errors[3].error.Number, 51);
}

TEST_F(ErrorReport, ReturnsTheUsersAnswerAndClearsTheError) {
    startMessages();
    log->answers = {services::answerRetry, services::answerIgnore};
    report.Esegui("A:", [] { throw std::runtime_error("prima"); });
    EXPECT_EQ(report.SegnalazioneErrore("B:"), services::answerIgnore);
    ASSERT_EQ(log->errors.size(), 2U);
    EXPECT_EQ(log->errors[1].error.Number, 0);
    EXPECT_EQ(log->errors[1].error.Description, "") << "the first error is not shown a second time";
}

TEST_F(ErrorReport, ReportsAnErrorOnceThatANestedRoutineHasHandled) {
    startMessages();
    report.Esegui("Fuori:", [&] { report.Esegui("Dentro:", [] { throw std::runtime_error("x"); }); });
    ASSERT_EQ(log->errors.size(), 1U);
    EXPECT_EQ(log->errors[0].routine, "Dentro:");
}

TEST_F(ErrorReport, SurvivesAHostThatCannotShowIt) {
    struct Broken final : services::MessageService {
        void Bind(services::Object&) override {}
        void SetError(const services::ErrorObject&) override {}
        void SetConnectionErrors(const ado::Errors&) override {}
        services::MessageBoxAnswer ShowError(const std::string&, const std::string&, const std::string&,
                                             int) override {
            throw std::runtime_error("no window");
        }
        services::MessageBoxAnswer ShowBox(const std::string&, int, const std::string&) override {
            return services::answerOk;
        }
        services::MessageBoxAnswer ShowCatalogueMessage(std::int32_t) override { return services::answerOk; }
    };
    report.UsaMessaggi(std::make_unique<Broken>(), "Suite");
    EXPECT_NO_THROW(report.Esegui("A:", [] { throw std::runtime_error("x"); }));
}

} // namespace

} // namespace veldran::test
