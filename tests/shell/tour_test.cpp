#include "platform/ado/recordset.h"
#include "tests/shell/shell_fixture.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <fstream>

namespace veldran::test {
namespace {

struct Outcome {
    int exitCode = -1;
    std::string output;
};

/// Runs the host as a user does, with a user's folder of the test's own.
Outcome runHost(const ScratchFolder& user, const QStringList& arguments) {
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_DATA_HOME", QString::fromStdString(user.path().string()));
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QString::fromStdString((shell::Places::ofThisProgram().program / "veldran-shell").string()),
                  arguments);
    EXPECT_TRUE(process.waitForFinished(240000));
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAll().toStdString()};
}

TEST(Tour, GoesThroughTheWholeJobAndLeavesAPictureAndACaptionForEachStep) {
    const ScratchFolder user;
    const ScratchFolder pictures;
    const Outcome outcome = runHost(user, {"--tour", QString::fromStdString(pictures.path().string())});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.output;
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(pictures.path())) {
        if (entry.path().extension() == ".png") {
            ++count;
            EXPECT_FALSE(QImage(QString::fromStdString(entry.path().string())).isNull());
            std::string caption;
            std::getline(std::ifstream(std::filesystem::path(entry.path()).replace_extension(".txt")) >>
                             std::ws,
                         caption);
            EXPECT_FALSE(caption.empty()) << entry.path();
        }
    }
    EXPECT_GE(count, 40);
}

TEST(Tour, LeavesActivationsAndCorrelationsAsItFoundThem) {
    const ScratchFolder user;
    const auto database = demoDatabase(user);
    const auto contents = [&] {
        const auto connection = openDatabase(database);
        std::vector<std::string> rows;
        for (const char* query :
             {"SELECT * FROM CI35_CONTIATTIVI ORDER BY CI35_DITTA_CG18, CI35_CONTO_CG24",
              "SELECT * FROM CI15_CORRCONTICOGE ORDER BY CI15_DITTA_CG18, CI15_CONTO_CG24, "
              "CI15_CODCAUS_CI03, CI15_PROG"}) {
            for (const auto records = connection->Execute(query); !records->EndOfFile();
                 records->MoveNext()) {
                std::string row;
                for (const ado::Field& field : records->Fields()) {
                    row += nullSafeText(field.Value()) + "|";
                }
                rows.push_back(row);
            }
        }
        return rows;
    };
    const auto before = contents();
    ASSERT_GT(before.size(), 100U);
    const Outcome outcome =
        runHost(user, {"--tour", QString::fromStdString((user.path() / "immagini").string()), "--database",
                       QString::fromStdString(database.string())});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.output;
    EXPECT_EQ(contents(), before);
}

TEST(Tour, FailsWhenTheScreenDoesNotShowWhatItShould) {
    const ScratchFolder user;
    const ScratchFolder pictures;
    const Outcome outcome = runHost(user, {"--tour", QString::fromStdString(pictures.path().string()),
                                           "--component", "/manca/libveldran.so"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_NE(outcome.output.find("/manca/libveldran.so"), std::string::npos) << outcome.output;
}

TEST(Tour, EndsWithAnErrorWhenItsDatabaseCannotBeOpened) {
    const ScratchFolder user;
    const ScratchFolder pictures;
    const Outcome outcome = runHost(
        user, {"--tour", QString::fromStdString(pictures.path().string()), "--database", "/manca/ditta.vdb"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_NE(outcome.output.find("/manca/ditta.vdb"), std::string::npos) << outcome.output;
}

} // namespace
} // namespace veldran::test
