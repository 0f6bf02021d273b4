// The host on a company whose books are on a server, opened from its company file.
#include "adapters/embedded/script.h"
#include "adapters/odbc/connection_string.h"
#include "adapters/qt/tree_widget.h"
#include "platform/ado/recordset.h"
#include "platform/text.h"
#include "shell/cost_codes.h"
#include "shell/drivers.h"
#include "shell/lookup_query.h"
#include "tests/shell/host_window.h"
#include "tests/support/source_file.h"
#include "tests/support/test_server.h"

#include <QComboBox>
#include <QLabel>
#include <optional>

namespace veldran::test {
namespace {

using services::LookupKind;

// Accounts of one group of the demo company, both activated; the first has correlations.
constexpr const char* source = "6505050001";
constexpr const char* target = "6505050003";

std::string asJsonText(const std::string& text) {
    return "\"" + replaceAll(replaceAll(text, "\\", "\\\\"), "\"", "\\\"") + "\"";
}

class ServerCompany : public ScreenKeysTest {
protected:
    void SetUp() override {
        TestServer& server = *TestServer::chosen();
        stay_.emplace(server);
        embedded::runScript(server.session(), sourceFile("database/demo.sql"));
        connectionString_ = server.connectionString();
        open(folder_.write("azienda.json",
                           R"({"ditta": "1", "connessione": )" + asJsonText(connectionString_) + "}"));
    }
    std::shared_ptr<ado::Connection> connect() {
        auto connection = ado::Connection::create(shell::driverFor(connectionString_, "1"));
        connection->Open(connectionString_);
        return connection;
    }
    /// The rows of a table that name an account of the company.
    int stored(const std::string& table, const std::string& condition) {
        return connect()
            ->Execute("SELECT COUNT(*) AS QUANTE FROM " + table + " WHERE " + condition)
            ->Fields()["QUANTE"]
            .Value()
            .toInt32();
    }
    int correlations(const std::string& account) {
        return stored("CI15_CORRCONTICOGE", "CI15_DITTA_CG18 = 1 AND CI15_CONTO_CG24 = '" + account + "'");
    }
    int activations(const std::string& account) {
        return stored("CI35_CONTIATTIVI", "CI35_DITTA_CG18 = 1 AND CI35_CONTO_CG24 = '" + account + "'");
    }

    std::string connectionString_;

private:
    std::optional<TestServer::Occupation> stay_;
};

TEST_F(ServerCompany, IsShownWithItsNameAndItsDatabase) {
    EXPECT_EQ(host_->companies().size(), 5U);
    EXPECT_EQ(qt::fromQt(window_->windowTitle()),
              "Contabilità industriale - Officine Meccaniche Valdarno S.p.A.");
    EXPECT_EQ(qt::fromQt(part<QLabel>("statoDatabase")->text()),
              " Database: " + odbc::databaseOf(connectionString_));
}

TEST_F(ServerCompany, IsWorkedOnByKeys) {
    openScreen();
    activate();
    ASSERT_EQ(part<qt::TreeWidget>("TRW_CONTI")->model()->rowCount(), 4);
    ASSERT_EQ(activations(target), 1);
    find(target);
    key(Qt::Key_Space);
    EXPECT_EQ(activations(target), 0);
    key(Qt::Key_Space);
    EXPECT_EQ(activations(target), 1);
    const int rows = correlations(source);
    ASSERT_GT(rows, 0);
    ASSERT_EQ(correlations(target), 0);
    find(source);
    key(Qt::Key_C, Qt::ControlModifier);
    find(target);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(correlations(target), rows);
}

TEST_F(ServerCompany, HasTheSameListsAsTheDemoCompanyInItsFile) {
    const auto embedded = openDatabase(demoDatabase(folder_));
    const auto server = connect();
    struct List {
        LookupKind kind;
        std::int32_t chart;
        std::optional<std::int32_t> kinds;
    };
    for (const List& list : {List{LookupKind::ContiCoge, 1, {}}, List{LookupKind::Causali, 0, {}},
                             List{LookupKind::ContiCoin, 101, {}}, List{LookupKind::ContiCoin, 101, 8},
                             List{LookupKind::ContiCoin, 101, 0}, List{LookupKind::VociDiSpesa, 201, {}}}) {
        const auto shown = [&list](const std::shared_ptr<ado::Connection>& connection) {
            services::LookupRequest request;
            request.kind = list.kind;
            request.connection = connection;
            request.ditta = "1";
            request.pdc = list.chart;
            request.tipologie = list.kinds;
            std::vector<std::string> rows;
            for (const shell::LookupRow& row : shell::queryRows(request)) {
                request.code = row.code.toStdString();
                rows.push_back(request.code + " " + row.display.toStdString() + " " +
                               row.description.toStdString());
            }
            rows.push_back(shell::queryDescription(request).value_or("none"));
            return rows;
        };
        EXPECT_EQ(shown(server), shown(embedded));
    }
    EXPECT_EQ(shell::queryStructure(server, 101).display("CDCPRD0020"), "CDC.PRD.0020");
}

TEST_F(ServerCompany, HasItsCostCodesMaintained) {
    shell::CostCodes codes(connect(), 101, "1", false);
    const shell::CostCode created{"CDCPRD0110", "Sbavatura d'angolo – qualità", 8, false, "1"};
    codes.insert(created);
    EXPECT_EQ(codes.find("cdcprd0110"), created);
    EXPECT_THROW(codes.insert(created), ado::AdoError);
    shell::CostCode changed = created;
    changed.description = "Sbavatura";
    EXPECT_TRUE(codes.update(created, changed));
    EXPECT_EQ(codes.find("CDCPRD0110"), changed);
    EXPECT_FALSE(codes.update(created, changed)) << "somebody has changed it meanwhile";
}

} // namespace
} // namespace veldran::test
