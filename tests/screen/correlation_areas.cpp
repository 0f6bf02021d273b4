#include "tests/screen/correlation_areas.h"

namespace veldran::test {

namespace {

std::shared_ptr<ado::Connection> connected(Screen& screen) {
    services::GlobalObject& global = *screen.host.component().GetClsGlobal();
    auto connection = global.Connections().NewConnection();
    connection->Open(global.StringaDiConnessione());
    return connection;
}

WorkAreasContext contextOf(const Screen& screen) {
    const Company& company = screen.host.company;
    return {screen.database.connectionString(), company.ditta, company.chart, 4};
}

} // namespace

CorrelationAreas::CorrelationAreas(const Chart& chart, Company company, Screen::Markers markers)
    : screen(chart, std::move(company), markers), work(connected(screen), contextOf(screen)),
      areas(std::make_unique<AreeCorrelazioni>(
          work.areas->ambiente, *screen.host.component().GetClsGlobal(), work.form, work.controls,
          AreeCorrelazioni::Vicini{work.areas->albero, work.areas->filtri}, [this] { ++scriptsBuilt; })) {
    areas->dettaglio.CaricamentoCombo();
}

CorrelationAreas::~CorrelationAreas() {
    areas->frame.RimozioneVirtualFrame();
    areas->archivio.Rilascia();
    areas->campi.Rilascia();
}

void CorrelationAreas::enter(const std::string& account) {
    work.controls.LAY_CORRELAZIONI.SetVisible(true);
    areas->ambiente.conto = account;
    areas->lista.CaricamentoListaCausali();
    areas->frame.ConfigurazioneVirtualFrame();
    frames::VirtualFrame& header = *areas->frame.Testata();
    header.SetStatus(header.HasRecords() ? frames::statusBrowsing : frames::statusAddingNew);
}

} // namespace veldran::test
