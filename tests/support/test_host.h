#pragma once

#include "host/cinterface.h"
#include "platform/ado/connection.h"
#include "tests/support/customer_fakes.h"
#include "tests/support/host_fakes.h"
#include "tests/support/message_recorder.h"
#include "tests/support/screen_user.h"

#include <memory>
#include <string>

namespace veldran::test {

/// What the host knows of the company that is open.
struct Company {
    std::string ditta = "1";
    std::int32_t chart = 1;
    std::int32_t costChart = 10;
    std::int32_t itemChart = 20;
    bool costItems = true;
    std::string analyticFlag = "1";
    bool hasParameters = true;
    Value parameters = Value("S");
};

/// A host without windows around the real component: every service is a recorder, every statement goes to the
/// driver that the test chose.
class TestHost {
public:
    /// \param driver what the form's connections are made of. Shared: connections keep it.
    TestHost(std::shared_ptr<ado::Driver> driver, std::string connectionString, Company company = {});
    /// Unloads what is still shown, without asking the user.
    ~TestHost();
    TestHost(const TestHost&) = delete;
    TestHost& operator=(const TestHost&) = delete;

    /// The component, made by the library's class factory and given its context.
    Cinterface& component() { return *component_; }
    const std::shared_ptr<Cinterface>& componentRef() const { return component_; }
    /// Shows the screen. \return the user before the form, should the form still stand.
    void open() { component_->ShowForm(); }
    bool isOpen() const { return windows->current() != nullptr; }
    controls::Form& form() const;
    ScreenUser user() const { return ScreenUser(form()); }
    /// The form's own connection.
    ado::Connection& connection() const { return *component_->GetConnection(); }

    /// A second component of the same host.
    std::shared_ptr<Cinterface> newComponent();
    /// Lets go of the host's reference to its component.
    void releaseComponent() { component_.reset(); }

    SharedJournal journal = std::make_shared<Journal>();
    std::shared_ptr<MessageLog> messages = std::make_shared<MessageLog>(); // shared with message services
    std::shared_ptr<HeadlessWindows> windows;
    std::shared_ptr<NavigatorFake> navigator;
    ScreenRecorder screen;
    LayoutRecorder layouts;
    ScriptEngineRecorder scripts;
    ThesaurusFake thesaurus;
    LookupFake lookups;
    Company company;
    AnalyticParametersFake parameters;
    int connectionsMade = 0;
    int commandTimeout = 30; ///< seconds, of the connections that the host makes
    int globalClosings = 0;
    std::string closingFailure; ///< what the global object's `ScreenClosing` fails with; "" for none

private:
    class Global;

    std::shared_ptr<ado::Driver> driver_;
    std::string connectionString_;
    std::shared_ptr<Global> global_; // shared with the component
    std::shared_ptr<Cinterface> component_;
};

} // namespace veldran::test
