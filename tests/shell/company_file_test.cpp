#include "shell/company_file.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldran::test {
namespace {

using shell::CompanyFile;
using shell::DataFileError;
using shell::Problems;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class CompanyFileTest : public testing::Test {
protected:
    CompanyFile read(const std::string& text) {
        return shell::readCompanyFile(folder_.write("azienda.json", text), places_, problems_);
    }
    std::string failureOf(const std::string& text) {
        try {
            read(text);
        } catch (const DataFileError& error) {
            return error.what();
        }
        return {};
    }

    ScratchFolder folder_;
    shell::Places places_{"/dati", "/script", "/utente", "/programma"};
    Problems problems_;
};

TEST_F(CompanyFileTest, ReadsEverythingItNames) {
    const CompanyFile company = read(R"({
        "applicazione": "Suite", "utente": "Rossi", "ditta": "12", "connessione": "Data Source=${UTENTE}/x",
        "diritti": {"inserimento": false, "modifica": false},
        "layout": "l.json", "script": "${DATI}/s.js", "thesaurus": "/altrove/t.json", "messaggi": "../m.json"})");
    EXPECT_EQ(company.applicationTitle, "Suite");
    EXPECT_EQ(company.user, "Rossi");
    EXPECT_EQ(company.company, "12");
    EXPECT_EQ(company.connectionString, "Data Source=/utente/x");
    EXPECT_FALSE(company.rights.insert);
    EXPECT_TRUE(company.rights.remove);
    EXPECT_FALSE(company.rights.update);
    EXPECT_TRUE(company.rights.query);
    EXPECT_EQ(company.layout, folder_.path() / "l.json");
    EXPECT_EQ(company.script, "/dati/s.js");
    EXPECT_EQ(company.thesaurus, "/altrove/t.json");
    EXPECT_EQ(company.messages, folder_.path().parent_path() / "m.json");
    EXPECT_THAT(problems_, IsEmpty());
}

TEST_F(CompanyFileTest, LeavesOutTheFilesThatACompanyDoesNotHave) {
    const CompanyFile company = read(R"({"ditta": "1", "connessione": "x"})");
    EXPECT_TRUE(company.layout.empty());
    EXPECT_TRUE(company.script.empty());
    EXPECT_EQ(company.applicationTitle, "Contabilità industriale");
}

TEST_F(CompanyFileTest, RefusesAFileWithoutConnection) {
    EXPECT_THAT(failureOf(R"({"ditta": "1"})"),
                HasSubstr("chiave «connessione»: manca la stringa di connessione"));
}

TEST_F(CompanyFileTest, IsNeverQuotedWhereItIsNoJson) {
    const std::string wrong = failureOf(R"({"ditta": "1", "connessione": "PWD="segreta""})");
    EXPECT_THAT(wrong, HasSubstr("riga 1, colonna 37: il testo non è JSON valido da qui in poi."));
    EXPECT_THAT(wrong, Not(HasSubstr("segreta")));
}

TEST_F(CompanyFileTest, SaysHowABackslashIsWritten) {
    const std::string wrong = failureOf(R"({"ditta": "1", "connessione": "Server=srv\INST;PWD=segreta"})");
    EXPECT_THAT(wrong, HasSubstr("dentro un testo la barra rovesciata si scrive due volte"));
    EXPECT_THAT(wrong, Not(HasSubstr("segreta")));
    EXPECT_THAT(failureOf(R"({"ditta": "1", "connessione": "Server=srv\nome"})"),
                HasSubstr("chiave «connessione»: contiene un carattere di controllo; la barra rovesciata"));
    EXPECT_EQ(read(R"({"ditta": "1", "connessione": "Server=srv\\nome"})").connectionString,
              "Server=srv\\nome");
}

TEST_F(CompanyFileTest, RefusesAFileWithoutCompany) {
    EXPECT_THAT(failureOf(R"({"connessione": "x"})"),
                HasSubstr("chiave «ditta»: manca il codice della ditta"));
}

TEST_F(CompanyFileTest, RefusesACompanyWrittenAsANumberAndSaysSo) {
    EXPECT_THAT(failureOf(R"({"ditta": 1, "connessione": "x"})"), HasSubstr("chiave «ditta»"));
    EXPECT_THAT(problems_, ElementsAre(HasSubstr("deve essere un testo tra virgolette")));
}

TEST_F(CompanyFileTest, NotesAMisspeltKeyAndReadsTheRest) {
    const CompanyFile company =
        read(R"({"ditta": "1", "connessione": "x", "lay-out": "l.json", "diritti": {"stampa": true}})");
    EXPECT_EQ(company.company, "1");
    EXPECT_THAT(problems_, ElementsAre(HasSubstr("chiave «lay-out»"), HasSubstr("chiave «diritti/stampa»")));
}

} // namespace
} // namespace veldran::test
