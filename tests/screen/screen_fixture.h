#pragma once

#include "platform/ado/recordset.h"
#include "tests/support/component_library.h"
#include "tests/support/failing_driver.h"
#include "tests/support/recording_driver.h"
#include "tests/support/test_database.h"
#include "tests/support/test_host.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::test {

/// Four levels, three natures in use, no account of the fourth. Nothing is activated or correlated.
///     01 patrimoniali: 0101 (010101: ..0001, ..0002; 010102: ..0001), 0102 (010203: ..0005, ..0006)
///     03, 04 economici: one analytic account each below 0301, 0302 and 0401
///     09 d'ordine: one analytic account
Chart smallChart();

/// One screen over one database: the host's edge is faked, the component and the database are the real ones.
/// Every message to the database is recorded and may be made to fail.
class Screen {
public:
    /// Whether the host's connections resolve the marker of the company in statement texts.
    enum class Markers { Resolved, Unknown };

    /// What becomes of the database's connection string before the form gets it.
    using SignIn = std::function<std::string(const std::string&)>;

    explicit Screen(const Chart& chart, Company company = {}, Markers markers = Markers::Resolved,
                    const SignIn& signIn = std::identity());
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// What the form has executed: direct texts, prepared texts and procedures.
    std::vector<Message> sent() const { return log().executed(); }
    StatementLog& log() const;
    void forget() { log().clear(); }
    /// Rows of a query in the form's own session, in the form of `TestDatabase::rows`. It leaves no trace in
    /// the log.
    std::vector<std::vector<std::string>> query(const std::string& select);
    /// The form waits 300 milliseconds for what another program holds, and no longer. It leaves no trace in
    /// the log.
    void waitBrieflyForLocks();
    /// The order of events, statements shortened to what tells them apart, navigator refreshes left out.
    Journal journalWithoutNavigator() const;

    void refuseToOpen(const std::string& why) { failing->plan().failOpening(simulatedFailure(why)); }
    void allowToOpen() { failing->plan().heal(); }
    FailurePlan& failures() { return failing->plan(); }

private:
    class Recorder;
    class Pause;
    std::shared_ptr<Recorder> recorder_; // shared with the sessions

public:
    TestDatabase database;
    std::shared_ptr<FailingDriver> failing; // shared with the connections
    TestHost host;
};

/// The value of a parameter by name, blind to case. \throws std::out_of_range when the message has none of
/// that name.
const Value& valueOf(const Message& message, std::string_view parameter);

} // namespace veldran::test
