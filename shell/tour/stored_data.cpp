#include "shell/tour/stored_data.h"

#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"

namespace veldran::shell {

int StoredData::count(const std::string& statement) const {
    return connection_->Execute("SELECT COUNT(*) FROM " + statement)->Fields()[0].Value().toInt32();
}

int StoredData::activeAccounts(const std::string& codeStart) const {
    return count("CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = " + company_ + " AND CI35_CONTO_CG24 LIKE '" +
                 codeStart + "%'");
}

int StoredData::correlationRows(const std::string& account) const {
    return count("CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = " + company_ + " AND CI15_CONTO_CG24 = '" +
                 account + "'");
}

StoredData::Rows StoredData::correlation(const std::string& account, const std::string& causale) const {
    const auto records = connection_->Execute(
        "SELECT CI15_INDSEGNO, CI15_PERC, CI15_CONTO_PC03, CI15_VDS_PC03 FROM CI15_CORRCONTICOGE"
        " WHERE CI15_DITTA_CG18 = " +
        company_ + " AND CI15_CONTO_CG24 = '" + account + "' AND CI15_CODCAUS_CI03 = '" + causale +
        "' ORDER BY CI15_PROG");
    Rows rows;
    for (; !records->EndOfFile(); records->MoveNext()) {
        std::string row;
        for (const ado::Field& field : records->Fields()) {
            const std::string text = nullSafeText(field.Value());
            row += (row.empty() || text.empty() ? "" : " ") + text;
        }
        rows.push_back(row);
    }
    return rows;
}

} // namespace veldran::shell
