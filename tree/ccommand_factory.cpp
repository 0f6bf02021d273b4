#include "tree/ccommand_factory.h"

#include "sql/commands.h"
#include "sql/tree_statements.h"

#include <exception>
#include <iostream>

namespace veldran {

CCommandFactory::~CCommandFactory() {
    try {
        sql::release(figliRadice_);
        sql::release(figliAnalitici_);
        sql::release(figliIntermedi_);
    } catch (const std::exception& error) {
        std::clog << "VELDRAN CCommandFactory " << error.what() << '\n';
    }
}

std::shared_ptr<ado::Command> CCommandFactory::GetCMDChildrenRadice(EnumNaturaConto natura) {
    if (!figliRadice_) {
        figliRadice_ =
            sql::textCommand(connessione_, sql::figliRadice(),
                             {sql::numericParameter("@NATURA1"), sql::numericParameter("@NATURA2")});
    }
    switch (natura) {
    case Ordine:
    case Patrimoniale:
    case Economico:
    case DaNonStampare: {
        const std::int16_t valore = natura;
        figliRadice_->Parameters()["@NATURA1"].Value(valore);
        figliRadice_->Parameters()["@NATURA2"].Value(valore);
        break;
    }
    }
    return figliRadice_;
}

std::shared_ptr<ado::Command> CCommandFactory::GetCMDChildrenContoIntermedio(std::int32_t codicePDC,
                                                                             const std::string& codiceConto,
                                                                             std::int16_t livello,
                                                                             std::int16_t livelli,
                                                                             EnumNaturaConto natura) {
    std::shared_ptr<ado::Command> comando;
    if (livelli - livello <= 1) {
        if (!figliAnalitici_) {
            figliAnalitici_ =
                sql::textCommand(connessione_, sql::figliIntermedio(),
                                 {sql::numericParameter("@GRUPPO"), sql::contoParameter("@PARENT"),
                                  sql::numericParameter("@NATURA")},
                                 sql::Preparation::Prepared);
        }
        comando = figliAnalitici_;
    } else {
        if (!figliIntermedi_) {
            figliIntermedi_ = sql::procedureCommand(connessione_, "SPCI_INTERMEDIFIGLI");
        }
        comando = figliIntermedi_;
        comando->Parameters()["@LIVELLO_PARENT"].Value(livello);
    }
    comando->Parameters()["@GRUPPO"].Value(codicePDC);
    comando->Parameters()["@PARENT"].Value(codiceConto);
    comando->Parameters()["@NATURA"].Value(static_cast<std::int16_t>(natura));
    return comando;
}

} // namespace veldran
