#include "tests/support/test_host.h"

#include "tests/support/component_library.h"

#include <stdexcept>

namespace veldran::test {

class TestHost::Global final : public services::GlobalObject, public services::ConnectionFactory {
public:
    explicit Global(TestHost& host) : host_(host) {}

    std::string ApplicationTitle() const override { return "Contabilità di prova"; }
    std::string CodiceDitta() const override { return host_.company.ditta; }
    std::int32_t CodicePdcCoge() const override { return host_.company.chart; }
    std::int32_t CodicePdcCoin() const override { return host_.company.costChart; }
    std::int32_t CodicePdcVds() const override { return host_.company.itemChart; }
    bool GestioneVociDiSpesa() const override { return host_.company.costItems; }
    std::string FlagContabilitaAnalitica() const override { return host_.company.analyticFlag; }
    const services::AnalyticParameters* ParametriContabilitaAnalitica() const override {
        return host_.company.hasParameters ? &host_.parameters : nullptr;
    }
    std::string StringaDiConnessione() const override { return host_.connectionString_; }

    std::unique_ptr<services::MessageService> NewMessageService() override {
        return std::make_unique<MessageRecorder>(host_.messages, host_.journal);
    }
    services::ConnectionFactory& Connections() override { return *this; }
    services::LookupService& Lookups() override { return host_.lookups; }
    const services::Thesaurus& Thesaurus() const override { return host_.thesaurus; }
    services::LayoutEngine& Layouts() override { return host_.layouts; }
    services::ScriptEngine& Scripts() override { return host_.scripts; }
    services::WindowService& Windows() override { return *host_.windows; }
    services::Screen& Screen() override { return host_.screen; }
    void ScreenClosing() override {
        ++host_.globalClosings;
        host_.journal->push_back("global object told");
        failWith(host_.closingFailure);
    }

    std::shared_ptr<ado::Connection> NewConnection() override {
        ++host_.connectionsMade;
        host_.journal->push_back("new connection");
        auto connection = ado::Connection::create(host_.driver_);
        connection->CommandTimeout(host_.commandTimeout);
        return connection;
    }

private:
    TestHost& host_;
};

TestHost::TestHost(std::shared_ptr<ado::Driver> driver, std::string connectionString, Company theCompany)
    : windows(std::make_shared<HeadlessWindows>(journal)),
      navigator(std::make_shared<NavigatorFake>(journal)), layouts(journal), scripts(journal),
      company(std::move(theCompany)), parameters(company.parameters), driver_(std::move(driver)),
      connectionString_(std::move(connectionString)), global_(std::make_shared<Global>(*this)),
      component_(newComponent()) {
    thesaurus.entries = {{15554, "Conti d'ordine"},
                         {15588, "Conti patrimoniali"},
                         {15566, "Conti economici"},
                         {15556, "Conti da non stampare"}};
}

TestHost::~TestHost() {
    constexpr std::size_t mostQuestions = 4; // one for each frame, and to spare
    scripts.vetoClose = false;
    if (scripts.script) {
        scripts.script->vetoClose = false;
    }
    messages->boxFailure.clear();
    while (controls::Form* standing = windows->current()) {
        messages->answers.assign(mostQuestions, services::answerNo); // what is being edited is given up
        if (!standing->Unload()) {
            break;
        }
    }
    windows->DoEvents();
    component_.reset();
}

controls::Form& TestHost::form() const {
    controls::Form* current = windows->current();
    if (current == nullptr) {
        throw std::logic_error("no form is shown");
    }
    return *current;
}

std::shared_ptr<Cinterface> TestHost::newComponent() {
    auto component = ComponentLibrary::instance().factory().CreateInstance("CLSCI_VELDRAN");
    if (!component) {
        throw std::logic_error("the class factory does not know the component");
    }
    component->SetClsGlobal(global_);
    component->SetActiveNavigator(navigator);
    component->LetCaption("Attivazione conti");
    component->LetWindowState(controls::windowNormal);
    component->LetCanInsert(variantTrue);
    component->LetCanUpdate(variantTrue);
    component->LetCanDelete(variantTrue);
    return component;
}

} // namespace veldran::test
