#include "shell/drivers.h"
#include "shell/host.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldran::test {
namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

class HostTest : public testing::Test {
protected:
    bool open(const std::string& companyFile) {
        return host_.open(folder_.write("azienda.json", companyFile));
    }
    std::string withDatabase(const std::string& others) {
        demoDatabase(folder_);
        return R"({"connessione": "Provider=VeldranEmbedded;Data Source=${UTENTE}/demo.vdb", )" + others +
               "}";
    }

    ScratchFolder folder_;
    Complaints complaints_;
    shell::Host host_{placesFor(folder_), complaints_.reporter()};
};

TEST_F(HostTest, OpensTheCompanyOfItsFileAmongAllOfTheDatabase) {
    ASSERT_TRUE(open(withDatabase(R"("ditta": "2")"))) << complaints_.text();
    EXPECT_EQ(complaints_.text(), "");
    EXPECT_EQ(host_.companies().size(), 5U);
    ASSERT_NE(host_.current(), nullptr);
    EXPECT_EQ(host_.current()->code, "2");
    EXPECT_EQ(host_.current()->pdcCoge, 2);
    EXPECT_EQ(host_.current()->pdcCoin, 102);
    EXPECT_EQ(host_.current()->analyticFlag, "1");
}

TEST_F(HostTest, KnowsACompanyWithoutAnalyticAccounting) {
    ASSERT_TRUE(open(withDatabase(R"("ditta": "5")"))) << complaints_.text();
    EXPECT_NE(host_.current()->analyticFlag, "1");
}

TEST_F(HostTest, OpensTheDatabaseGivenInsteadOfTheFilesOwn) {
    const auto database = demoDatabase(folder_);
    const auto file = folder_.write(
        "a.json", R"({"ditta": "1", "connessione": "Provider=VeldranEmbedded;Data Source=/manca"})");
    EXPECT_TRUE(host_.open(file, database)) << complaints_.text();
}

TEST_F(HostTest, TellsThatTheCompanyFileIsMissing) {
    EXPECT_FALSE(host_.open(folder_.path() / "manca.json"));
    EXPECT_THAT(complaints_.text(), HasSubstr("manca.json» non esiste"));
    EXPECT_EQ(host_.current(), nullptr);
    EXPECT_EQ(host_.thesaurus().Entry(15554), "Conti d'ordine") << "the texts do not depend on the company";
}

TEST_F(HostTest, TellsWhichCompanyTheDatabaseLacks) {
    EXPECT_FALSE(open(withDatabase(R"("ditta": "77")")));
    EXPECT_THAT(complaints_.text(),
                AllOf(HasSubstr("chiave «ditta»"), HasSubstr("la ditta 77 non è presente")));
}

TEST_F(HostTest, TellsThatTheDatabaseCannotBeOpened) {
    EXPECT_FALSE(
        open(R"({"ditta": "1", "connessione": "Provider=VeldranEmbedded;Data Source=/manca/x.vdb"})"));
    EXPECT_THAT(complaints_.text(), AllOf(HasSubstr("chiave «connessione»"), HasSubstr("/manca/x.vdb")));
}

TEST_F(HostTest, TellsThatNoDriverServesTheConnection) {
    EXPECT_FALSE(open(R"({"ditta": "1", "connessione": "Provider=ALTRO;Data Source=x"})"));
    EXPECT_THAT(complaints_.text(), AllOf(HasSubstr("Errore 3706"), HasSubstr("ALTRO")));
}

#ifdef VELDRAN_WITH_ODBC
TEST_F(HostTest, TellsThatTheServerCannotBeReachedAndNoPassword) {
    EXPECT_FALSE(open(R"({"ditta": "1", "connessione":
        "Provider=SQLOLEDB;Data Source=127.0.0.1,1;Initial Catalog=CONTI;User ID=utente;Password=segreta"})"));
    EXPECT_THAT(complaints_.text(), AllOf(HasSubstr("chiave «connessione»"), Not(HasSubstr("segreta"))));
    EXPECT_THAT(complaints_.text(), AnyOf(HasSubstr("Il server 127.0.0.1,1 non può essere raggiunto."),
                                          HasSubstr("Non è installato alcun driver ODBC per SQL Server")));
}

TEST_F(HostTest, TellsWhichKeyOfAServersConnectionIsUnknown) {
    EXPECT_FALSE(open(R"({"ditta": "1", "connessione": "Server=srv;Colore=rosso;PWD=segreta"})"));
    EXPECT_THAT(complaints_.text(),
                AllOf(HasSubstr("la chiave 'Colore' non è riconosciuta"), Not(HasSubstr("segreta"))));
}
#endif

TEST_F(HostTest, OpensTheCompanyThoughItsTextsAreBroken) {
    folder_.write("t.json", "{\n rotto");
    folder_.write("m.json", R"({"30179": {"testo": "Mio", "icona": "boh"}})");
    EXPECT_TRUE(open(withDatabase(R"("ditta": "1", "thesaurus": "t.json", "messaggi": "m.json")")));
    EXPECT_THAT(complaints_.text(),
                AllOf(HasSubstr("t.json», riga 2, colonna 2"), HasSubstr("m.json»"), HasSubstr("«boh»")));
    EXPECT_EQ(host_.thesaurus().Entry(15554), "Conti d'ordine") << "the host's own texts still serve";
    EXPECT_EQ(host_.catalogue().message(30179).text, "Mio");
}

} // namespace
} // namespace veldran::test
