#include "shell/companies.h"

#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"

namespace veldran::shell {

std::vector<Company> readCompanies(ado::Connection& connection) {
    const auto records = connection.Execute(
        "SELECT CG18_DITTA, CG18_RAGSOC, CG18_CODPDC_CG10, CG18_CODCOIN_PC01, CG18_CODVDS_PC01, "
        "CG18_FLGANALITICA, CG18_PARANALITICA, CG18_FLGVDS FROM CG18_DITTE ORDER BY CG18_DITTA");
    const auto field = [&](const char* name) { return records->Fields()[name].Value(); };
    const auto number = [&](const char* name) { return valueOrDefault(field(name), Value(0)).toInt32(); };
    std::vector<Company> companies;
    for (; !records->EndOfFile(); records->MoveNext()) {
        Company company;
        company.code = nullSafeText(field("CG18_DITTA"));
        company.name = nullSafeText(field("CG18_RAGSOC"));
        company.pdcCoge = number("CG18_CODPDC_CG10");
        company.pdcCoin = number("CG18_CODCOIN_PC01");
        company.pdcVds = number("CG18_CODVDS_PC01");
        company.managesVds = number("CG18_FLGVDS") != 0;
        company.analyticFlag = nullSafeText(field("CG18_FLGANALITICA"));
        company.analyticParameters = field("CG18_PARANALITICA");
        companies.push_back(std::move(company));
    }
    return companies;
}

} // namespace veldran::shell
