#pragma once

#include "host/segnalazione_errori.h"
#include "platform/ado/connection.h"
#include "platform/services/windows.h"

#include <cstdint>
#include <memory>
#include <string>

namespace veldran {

/// What the work areas of the form share. Company and charts are fixed while the form is open.
struct AmbienteDiLavoro {
    std::shared_ptr<ado::Connection> connessione; // shared with the form, its commands and its recordsets
    std::string stringaConnessione;
    std::string codiceDitta; ///< as it is written into statements, without quotes
    std::int32_t codicePDC = 0;
    std::int16_t livelli = 0; ///< of the chart; 0 until it has been read
    SegnalazioneErrori& errori;
    services::Screen& schermo;
};

/// Shows the busy pointer while it lives, then the default one, whatever happens in between.
class PuntatoreOccupato {
public:
    explicit PuntatoreOccupato(services::Screen& schermo) : schermo_(schermo) {
        schermo_.SetMousePointer(services::mouseArrowHourglass);
    }
    ~PuntatoreOccupato() { schermo_.SetMousePointer(services::mouseDefault); }
    PuntatoreOccupato(const PuntatoreOccupato&) = delete;
    PuntatoreOccupato& operator=(const PuntatoreOccupato&) = delete;

private:
    services::Screen& schermo_;
};

} // namespace veldran
