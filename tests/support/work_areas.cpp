#include "tests/support/work_areas.h"

#include <utility>

namespace veldran::test {

WorkAreas::WorkAreas(std::shared_ptr<ado::Connection> database, WorkAreasContext context)
    : connection(std::move(database)), errors([this] { return form.Caption(); }) {
    const SharedJournal journal = std::make_shared<Journal>();
    errors.UsaMessaggi(std::make_unique<MessageRecorder>(messages, journal), "Prova");
    errors.UsaConnessione(connection);
    areas = std::make_unique<AreeDiLavoro>(
        AmbienteDiLavoro{connection, std::move(context.connectionString), std::move(context.ditta),
                         context.chart, context.levels, errors, screen},
        controls, DidascalieRadici{"Ordine", "Patrimoniali", "Economici", "Non stampati"});
    controls.LAY_ATTIVAZIONE.SetVisible(true);
}

WorkAreas::~WorkAreas() {
    areas->albero.SvuotaAlbero();
}

std::vector<std::string> WorkAreas::labels() const {
    return messages->routines();
}

} // namespace veldran::test
