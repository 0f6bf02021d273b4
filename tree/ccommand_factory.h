#pragma once

#include "platform/ado/command.h"
#include "tree/natura.h"

#include <cstdint>
#include <memory>
#include <string>

namespace veldran {

/// Makes the commands that list the children of a node. Each is created on first use, kept until the factory
/// ends, and only bound anew afterwards. Errors of connection and database are the caller's.
class CCommandFactory {
public:
    CCommandFactory() = default;
    /// Releases the commands.
    ~CCommandFactory();
    CCommandFactory(const CCommandFactory&) = delete;
    CCommandFactory& operator=(const CCommandFactory&) = delete;

    /// To be set before a command is asked for.
    void Connessione(std::shared_ptr<ado::Connection> connessione) { connessione_ = std::move(connessione); }

    /// Level-1 accounts below the root of a nature. A value that is no nature leaves the parameters as they
    /// were.
    /// \throws ado::AdoError
    std::shared_ptr<ado::Command> GetCMDChildrenRadice(EnumNaturaConto natura);
    /// Children of an account: the text command when they are analytic accounts, the stored procedure when
    /// they are grouping accounts.
    /// \throws ado::AdoError
    std::shared_ptr<ado::Command> GetCMDChildrenContoIntermedio(std::int32_t codicePDC,
                                                                const std::string& codiceConto,
                                                                std::int16_t livello, std::int16_t livelli,
                                                                EnumNaturaConto natura);

private:
    std::shared_ptr<ado::Connection> connessione_; // shared with the form, which owns the connection
    // Shared as ADO commands are: the recordsets opened from them keep them.
    std::shared_ptr<ado::Command> figliRadice_;
    std::shared_ptr<ado::Command> figliAnalitici_;
    std::shared_ptr<ado::Command> figliIntermedi_;
};

} // namespace veldran
