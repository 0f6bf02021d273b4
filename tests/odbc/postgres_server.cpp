#include "tests/odbc/postgres_server.h"

#include "adapters/odbc/driver.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sanitizer/lsan_interface.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <thread>
#include <vector>

/// What the driver of the tests' server loses is not ours to free.
const char* __lsan_default_suppressions() {
    return "leak:psqlodbcw.so\n";
}

namespace veldran::test {

namespace {

constexpr const char* driverName = "PostgreSQL Unicode";

/// Where Debian keeps the server's programs, the newest version's first.
std::filesystem::path programs() {
    std::vector<std::filesystem::path> found;
    std::error_code ignored;
    for (const auto& version : std::filesystem::directory_iterator("/usr/lib/postgresql", ignored)) {
        if (std::filesystem::exists(version.path() / "bin" / "initdb")) {
            found.push_back(version.path() / "bin");
        }
    }
    std::sort(found.rbegin(), found.rend());
    return found.empty() ? std::filesystem::path() : found.front();
}

int freePort() {
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (listener < 0 || bind(listener, generic, size) != 0 || getsockname(listener, generic, &size) != 0) {
        throw std::runtime_error("no free port");
    }
    close(listener);
    return ntohs(address.sin_port);
}

/// The server refuses to run as root, whom build machines run as.
const passwd* servant() {
    return geteuid() == 0 ? getpwnam("nobody") : nullptr;
}

pid_t start(const std::vector<std::string>& command, const std::filesystem::path& log) {
    const passwd* const user = servant();
    const pid_t child = fork();
    if (child != 0) {
        return child;
    }
    prctl(PR_SET_PDEATHSIG, SIGQUIT);
    const int output = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    if (user != nullptr && (setgid(user->pw_gid) != 0 || setuid(user->pw_uid) != 0)) {
        _exit(127);
    }
    prctl(PR_SET_PDEATHSIG, SIGQUIT); // forgotten with the change of user
    std::vector<char*> arguments;
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    execv(arguments.front(), arguments.data());
    _exit(127);
}

void run(const std::vector<std::string>& command, const std::filesystem::path& log) {
    int status = 0;
    if (waitpid(start(command, log), &status, 0) < 0 || status != 0) {
        throw std::runtime_error(command.front() + " failed, see " + log.string());
    }
}

} // namespace

bool PostgresServer::isInstalled() {
    const auto drivers = odbc::OdbcDriver().installedDrivers();
    return !programs().empty() && std::find(drivers.begin(), drivers.end(), driverName) != drivers.end();
}

const PostgresServer& PostgresServer::instance() {
    static const PostgresServer server;
    return server;
}

PostgresServer::PostgresServer() : port_(freePort()) {
    std::string pattern = (std::filesystem::temp_directory_path() / "veldran-postgres-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary directory");
    }
    directory_ = pattern;
    if (const passwd* const user = servant(); user != nullptr) {
        if (chown(directory_.c_str(), user->pw_uid, user->pw_gid) != 0) {
            throw std::runtime_error("the temporary directory cannot be given away");
        }
    }
    const std::string data = (directory_ / "data").string();
    const auto log = directory_ / "log";
    const auto program = [](const char* name) { return (programs() / name).string(); };
    run({program("initdb"), "-D", data, "-U", "veldran", "--auth=trust", "--encoding=UTF8",
         "--locale=C.UTF-8", "--no-sync"},
        log);
    process_ = start({program("postgres"), "-D", data, "-p", std::to_string(port_), "-h", "127.0.0.1", "-k",
                      directory_.string(), "-F"},
                     log);
    waitUntilItAnswers();
    prepareDatabase();
}

PostgresServer::~PostgresServer() {
    kill(process_, SIGQUIT);
    waitpid(process_, nullptr, 0);
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
}

// Protocol "-0": what the server undoes, the driver does not paper over with savepoints of its own.
std::string PostgresServer::connectionString() const {
    return std::string("Driver={") + driverName + "};Servername=127.0.0.1;Port=" + std::to_string(port_) +
           ";Database=postgres;UID=veldran;BoolsAsChar=0;Protocol=7.4-0";
}

void PostgresServer::waitUntilItAnswers() const {
    odbc::OdbcDriver driver;
    for (int attempt = 0;; ++attempt) {
        try {
            driver.open(connectionString(), "", "");
            return;
        } catch (const ado::AdoError&) {
            if (attempt == 300) {
                throw;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    }
}

// What SQL Server does unasked: text compares blind to case, and 0 and 1 are bits.
void PostgresServer::prepareDatabase() const {
    odbc::OdbcDriver driver;
    const auto session = driver.open(connectionString(), "", "");
    session->execute(
        "CREATE COLLATION blind (provider = icu, locale = 'und-u-ks-level2', deterministic = false)", {}, {});
    session->execute(
        "UPDATE pg_cast SET castcontext = 'a' WHERE castsource = 'int4'::regtype AND casttarget = "
        "'bool'::regtype",
        {}, {});
}

} // namespace veldran::test
