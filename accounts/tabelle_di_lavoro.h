#pragma once

#include "host/ambiente.h"
#include "platform/ado/command.h"

#include <cstdint>
#include <memory>
#include <string>

namespace veldran {

/// The chart of accounts as the form works on it: its number of levels, the working table #CG24_TABPDC, and
/// the header codes that the server computes.
class TabelleDiLavoro {
public:
    explicit TabelleDiLavoro(AmbienteDiLavoro& ambiente) : ambiente_(ambiente) {}

    /// \return the number of levels of the company's chart; 0 when it could not be read.
    std::int16_t GetLivelliPDC();
    /// Builds #CG24_TABPDC for the chart and its number of levels. Once for each connection.
    void ConfigurazioneTabelleTemporanee();
    /// The prefix that all accounts below `conto` start with, the whole code for an analytic account; "" when
    /// the server yields none.
    std::string GetCodeHeader(const std::string& conto);

    /// Detaches the kept command from the connection.
    void Rilascia();

private:
    AmbienteDiLavoro& ambiente_;
    std::shared_ptr<ado::Command> codeHeader_; // shared as ADO commands are
};

} // namespace veldran
