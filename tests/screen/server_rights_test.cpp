// The rights that the administrator's page names are enough for the screen.
#include "tests/screen/correlation_fixture.h"
#include "tests/screen/server_sign_in.h"
#include "tests/support/source_file.h"

#include <chrono>
#include <sstream>
#include <thread>

namespace veldran::test {

namespace {

const std::string login = "veldran_prova";
const std::string password = "Prova-di-Diritti-7";

/// What the page grants for the screen ("SELECT ON CG10_DESPDC"), without what a host needs.
std::vector<std::string> namedRights() {
    const std::string grant = "GRANT ";
    const std::string receiver = " TO veldran";
    std::vector<std::string> rights;
    std::istringstream page(sourceFile("docs/sqlserver.md"));
    for (std::string line; std::getline(page, line) && !line.starts_with("The reference host");) {
        if (line.starts_with(grant) && line.ends_with(receiver)) {
            rights.push_back(line.substr(grant.size(), line.size() - grant.size() - receiver.size()));
        }
    }
    return rights;
}

/// A login that has them, and goes with this object.
class Login {
public:
    explicit Login(TestServer& server) : session_(server.session()), rights_(namedRights()) {
        if (!value("SELECT @@VERSION").starts_with("Microsoft SQL Server")) {
            replaceWhatChainsGive();
        }
        drop();
        run("CREATE LOGIN " + login + " WITH PASSWORD = '" + password + "'");
        run("CREATE USER " + login + " FOR LOGIN " + login);
        for (const std::string& right : rights_) {
            run("GRANT " + right + " TO " + login);
        }
    }
    ~Login() {
        try {
            drop();
        } catch (const ado::AdoError& error) {
            ADD_FAILURE() << error.what();
        }
    }
    Login(const Login&) = delete;
    Login& operator=(const Login&) = delete;

    static std::string signIn(const std::string& connectionString) {
        return withSignIn(connectionString, login, password);
    }

private:
    void run(const std::string& text) { session_.execute(text, {}, {.wantsRows = false}); }
    std::string value(const std::string& query) {
        return asText(*session_.execute(query, {}, {}).rows).at(0).at(0);
    }
    bool exists(const std::string& catalogue) {
        return value("SELECT COUNT(*) FROM sys." + catalogue + " WHERE name = '" + login + "'") != "0";
    }
    void drop() {
        if (exists("database_principals")) {
            for (const std::string& right : rights_) {
                run("REVOKE " + right + " FROM " + login);
            }
            run("DROP USER " + login);
        }
        // A server notices a moment later that the login's last session has ended.
        for (int attempt = 1; exists("server_principals"); ++attempt) {
            try {
                run("DROP LOGIN " + login);
            } catch (const ado::AdoError&) {
                if (attempt == 50) {
                    throw;
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(100));
            }
        }
    }
    /// On SQL Server routines work on their owner's rights, and a table function is selected from. A server
    /// without such chains checks the caller, and wants to have functions executed.
    void replaceWhatChainsGive() {
        std::erase_if(rights_, [](const std::string& right) { return right.starts_with("SELECT ON FN"); });
        rights_.insert(rights_.end(), {"EXECUTE ON FNCI03_CAUSALI", "EXECUTE ON FNPC03_ANAGPDC_COAN",
                                       "SELECT ON CI03_CAUSALI", "SELECT ON PC03_ANAGPDC",
                                       "INSERT ON CI35_CONTIATTIVI", "DELETE ON CI35_CONTIATTIVI"});
    }

    ado::Session& session_;
    std::vector<std::string> rights_;
};

TEST(Rights, ThatThePageNamesAreEnoughForEverythingTheScreenDoes) {
    ASSERT_EQ(namedRights().size(), 12U);
    const Login granted(*TestServer::chosen());
    const auto screen = openEditorAs(withStored(), Login::signIn);
    const ScreenUser user = screen->host.user();
    user.addFilterTabs();
    for (int filter = 9; filter >= 1; --filter) {
        user.filter(filter);
    }
    user.search("0102030006");
    user.checkByKeyboard(user.node("*P0102030006*"));
    user.checkByKeyboard(user.root(2));
    Editor editor(*screen);
    editor.enter();
    EXPECT_EQ(editor.shown()[1][5], "Materie prime");
    editor.account().LookupFromView();
    editor.addCorrelation("VEND", {{"2", "50.00"}});
    EXPECT_TRUE(editor.save());
    editor.clickCausale("ACQ");
    editor.list().SetFocus();
    editor.list().KeyDownFromView(controls::keyC, controls::shiftCtrl);
    editor.clickCausale("VEND");
    screen->host.messages->answers = {services::answerYes};
    editor.list().KeyDownFromView(controls::keyV, controls::shiftCtrl);
    EXPECT_EQ(editor.stored("VEND"), wholeRows);
    screen->host.messages->answers = {services::answerYes};
    EXPECT_TRUE(editor.header().PressFromView("Elimina"));
    editor.toggleMode();
    EXPECT_TRUE(screen->host.form().Unload());
    for (const ShownError& shown : screen->host.messages->errors) {
        ADD_FAILURE() << shown.routine << " " << shown.error.Description;
    }
}

TEST(Rights, DoNotIncludeWritingToTheChart) {
    const Login granted(*TestServer::chosen());
    const TestDatabase database{Chart(4)};
    const auto session = database.driver()->open(Login::signIn(database.connectionString()), {}, {});
    for (const char* forbidden :
         {"DELETE FROM CG24_TABPDC", "DELETE FROM CG10_DESPDC", "DELETE FROM CI11_CONTROLLOCONTI",
          "UPDATE CI15_CORRCONTICOGE SET CI15_PERC = 1"}) {
        EXPECT_THROW(session->execute(forbidden, {}, {.wantsRows = false}), ado::AdoError) << forbidden;
    }
}

} // namespace

} // namespace veldran::test
