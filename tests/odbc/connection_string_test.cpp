#include "adapters/odbc/connection_string.h"
#include "adapters/odbc/errors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veldran::odbc {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string vendor = "ODBC Driver 18 for SQL Server";
const std::vector<std::string> withVendor{"FreeTDS", vendor, "PostgreSQL Unicode"};
const std::vector<std::string> withFreeTds{"FreeTDS", "PostgreSQL Unicode"};

std::string forVendor(const std::string& text, const std::string& user = {},
                      const std::string& password = {}) {
    return connectionTarget(text, user, password, withVendor).text;
}
std::string forFreeTds(const std::string& text) {
    return connectionTarget(text, {}, {}, withFreeTds).text;
}
std::string refusalOf(const std::string& text, const std::vector<std::string>& drivers = withVendor) {
    try {
        connectionTarget(text, {}, {}, drivers);
    } catch (const ado::AdoError& error) {
        return error.first().SQLState + " " + error.first().Description;
    }
    return "accepted";
}

TEST(ConnectionString, MapsTheKeysOfTheOleDbFormToTheVendorsDriver) {
    EXPECT_EQ(forVendor("Provider=SQLOLEDB.1;Data Source=srv\\inst;Initial Catalog=CONTI;User ID=mario;"
                        "Password=rossi;Encrypt=true;Trust Server Certificate=yes;Application Name=Suite;"
                        "Workstation ID=PC1;Current Language=Italiano"),
              "Driver={ODBC Driver 18 for SQL Server};Server=srv\\inst;Encrypt=yes;"
              "TrustServerCertificate=yes;Database=CONTI;UID=mario;PWD=rossi;APP=Suite;WSID=PC1;"
              "Language=Italiano;");
}

TEST(ConnectionString, MapsTheKeysOfTheOdbcFormToTheVendorsDriver) {
    EXPECT_EQ(forVendor("driver={odbc driver 18 for sql server};SERVER=tcp:srv,1444;DATABASE=CONTI;UID=mario;"
                        "PWD=rossi;MultiSubnetFailover=yes"),
              "Driver={ODBC Driver 18 for SQL Server};Server=srv,1444;Database=CONTI;UID=mario;PWD=rossi;"
              "MultiSubnetFailover=yes;");
}

TEST(ConnectionString, MapsBothFormsToFreeTds) {
    const std::string tail = "TDS_Version=7.4;ClientCharset=UTF-8;Database=CONTI;UID=mario;PWD=rossi;";
    EXPECT_EQ(forFreeTds("Provider=MSOLEDBSQL;Data Source=srv,1444;Initial Catalog=CONTI;User ID=mario;"
                         "Password=rossi;Encrypt=yes"),
              "Driver={FreeTDS};Server=srv;Port=1444;Encryption=require;" + tail);
    EXPECT_EQ(forFreeTds("Server=srv;Database=CONTI;UID=mario;PWD=rossi"),
              "Driver={FreeTDS};Server=srv;Port=1433;" + tail);
    EXPECT_EQ(forFreeTds("Server=srv\\inst;Database=CONTI;UID=mario;PWD=rossi"),
              "Driver={FreeTDS};Server=srv\\inst;" + tail);
    EXPECT_EQ(forFreeTds("Server=srv;Port=1500;TDS_Version=7.3"),
              "Driver={FreeTDS};Server=srv;Port=1500;ClientCharset=UTF-8;TDS_Version=7.3;");
}

TEST(ConnectionString, TakesAPortBeforeAnInstance) {
    EXPECT_THAT(forVendor("Provider=SQLOLEDB;Data Source=srv\\inst,1444"), HasSubstr("Server=srv,1444;"));
    EXPECT_THAT(forFreeTds("Provider=SQLOLEDB;Data Source=srv\\inst,1444"),
                HasSubstr("Server=srv;Port=1444;"));
}

TEST(ConnectionString, ReadsAServerWrittenWithBlanks) {
    EXPECT_THAT(forVendor("Provider=SQLOLEDB;Data Source=tcp: srv \\ inst , 1444"),
                HasSubstr("Server=srv,1444;"));
    EXPECT_THAT(forVendor("Server=srv \\inst"), HasSubstr("Server=srv\\inst;"));
}

TEST(ConnectionString, ReadsTheNamesOfThisComputer) {
    EXPECT_THAT(forVendor("Provider=SQLOLEDB;Data Source=(local)"), HasSubstr("Server=localhost;"));
    EXPECT_THAT(forVendor("Provider=SQLOLEDB;Data Source=.\\SQLEXPRESS"),
                HasSubstr("Server=localhost\\SQLEXPRESS;"));
}

TEST(ConnectionString, SignsInAsTheUserOfTheSystem) {
    for (const char* key :
         {"Integrated Security=SSPI", "Integrated Security=true", "Trusted_Connection=yes"}) {
        EXPECT_EQ(forFreeTds(std::string("Provider=SQLOLEDB;Data Source=srv;") + key),
                  "Driver={FreeTDS};Server=srv;Port=1433;TDS_Version=7.4;ClientCharset=UTF-8;"
                  "Trusted_Connection=yes;");
    }
}

TEST(ConnectionString, EncryptsWhereTheProviderWouldHave) {
    EXPECT_THAT(forVendor("Provider=SQLOLEDB;Data Source=srv"), HasSubstr("Encrypt=no;"));
    EXPECT_THAT(forVendor("Provider=MSOLEDBSQL19;Data Source=srv"), HasSubstr("Encrypt=yes;"));
    EXPECT_THAT(forFreeTds("Provider=MSOLEDBSQL19;Data Source=srv"), HasSubstr("Encryption=require;"));
    EXPECT_THAT(forVendor("Provider=MSOLEDBSQL19;Data Source=srv;Encrypt=Optional"),
                HasSubstr("Encrypt=no;"));
    EXPECT_THAT(forVendor("Driver={ODBC Driver 18 for SQL Server};Server=srv"), Not(HasSubstr("Encrypt")));
    EXPECT_THAT(forVendor("Server=srv;Encrypt=strict"), HasSubstr("Encrypt=strict;"));
    EXPECT_THAT(forFreeTds("Provider=SQLOLEDB;Data Source=srv;Use Encryption for Data=false"),
                Not(HasSubstr("Encrypt")));
}

TEST(ConnectionString, ReadsTheKeyByWhichFreeTdsItselfEncrypts) {
    EXPECT_THAT(forFreeTds("Server=srv;Encryption=require"), HasSubstr("Encryption=require;"));
    EXPECT_THAT(forFreeTds("Server=srv;Encryption=request"), Not(HasSubstr("Encryption")));
    EXPECT_THAT(forFreeTds("Server=srv;Encryption=off"), Not(HasSubstr("Encryption")));
    EXPECT_THAT(refusalOf("Server=srv;Encrypt=yes;Encryption=off"), HasSubstr("'Encryption' è ripetuta"));
}

TEST(ConnectionString, LeavesOutWhatHasNoMeaningHere) {
    EXPECT_EQ(
        forVendor("Provider=SQLOLEDB.1;Persist Security Info=False;Data Source=srv;Use Procedure for "
                  "Prepare=1;Auto Translate=True;Network Library=DBMSSOCN;Tag with column collation when "
                  "possible=False;MARS_Connection=no;"),
        "Driver={ODBC Driver 18 for SQL Server};Server=srv;Encrypt=no;");
}

TEST(ConnectionString, TakesTheEmptyEntriesThatTheDataLinkDialogWrites) {
    EXPECT_EQ(forVendor("Provider=MSOLEDBSQL.1;Password=rossi;Persist Security Info=True;User ID=mario;"
                        "Initial Catalog=CONTI;Data Source=srv;Initial File Name=\"\";Use Encryption for "
                        "Data=False;Workstation ID=\"\";Server SPN=\"\";Trust Server Certificate=False;"
                        "Application Intent=READWRITE;MultiSubnetFailover=False;Use FMTONLY=False;"
                        "Authentication=\"\";Access Token=\"\";OLE DB Services=-2;General Timeout=0"),
              "Driver={ODBC Driver 18 for SQL Server};Server=srv;Encrypt=no;Database=CONTI;UID=mario;"
              "PWD=rossi;ApplicationIntent=READWRITE;MultiSubnetFailover=False;");
    EXPECT_EQ(refusalOf("Provider=SQLNCLI11;Data Source=srv;Initial File Name=C:\\x.mdf"),
              "08001 Stringa di connessione non valida: 'Initial File Name' non è gestita: deve essere "
              "vuota.");
    EXPECT_THAT(refusalOf("Provider=MSOLEDBSQL;Data Source=srv;Access Token=segreta"),
                Not(HasSubstr("segreta")));
}

TEST(ConnectionString, KeepsTimeOutAndPacketSizeForTheConnection) {
    const auto target =
        connectionTarget("Server=srv;Connect Timeout=3;Packet Size=8192", {}, {}, withFreeTds);
    EXPECT_EQ(target.loginTimeout, 3);
    EXPECT_EQ(target.packetSize, 8192);
    EXPECT_EQ(connectionTarget("Server=srv", {}, {}, withFreeTds).loginTimeout, 15);
    EXPECT_EQ(connectionTarget("Server=srv;Timeout=0", {}, {}, withFreeTds).loginTimeout, 0);
}

TEST(ConnectionString, ReadsValuesInQuotationMarksInTheOleDbForm) {
    EXPECT_THAT(forVendor("Provider=SQLOLEDB;Data Source=srv;Password=\"a;b\"\"c\";User ID='d''e'"),
                HasSubstr("UID=d'e;PWD={a;b\"c};"));
    EXPECT_THAT(forVendor("Data Source=srv;Password=\"x;y\";Provider=SQLOLEDB"), HasSubstr("PWD={x;y};"));
    EXPECT_THAT(forVendor("Provider=SQLOLEDB;Data Source=srv;Password={a}b"), HasSubstr("PWD={{a}}b};"));
}

TEST(ConnectionString, ReadsValuesInBracesInTheOdbcForm) {
    EXPECT_THAT(forVendor("Server=srv;UID=u;PWD={a;b}}c}"), HasSubstr("PWD={a;b}}c};"));
    EXPECT_THAT(forVendor("Server=srv;UID=u;PWD=\"a\""), HasSubstr("PWD=\"a\";"));
    EXPECT_THAT(forVendor("Server=srv;UID=u;PWD={ a }"), HasSubstr("PWD={ a };"));
}

TEST(ConnectionString, IsNotTakenForTheOtherFormBecauseOfWhatAValueHolds) {
    EXPECT_THAT(forVendor("Server=srv;UID=u;PWD={a;Provider=b}"), HasSubstr("PWD={a;Provider=b};"));
    EXPECT_THAT(forVendor("Server=srv;Database=Providers;UID=u;PWD=\"a"), HasSubstr("PWD=\"a;"));
    EXPECT_THAT(forVendor("Provider=SQLOLEDB;Data Source=srv;Password=\"{a\""), HasSubstr("PWD={{a};"));
    EXPECT_THAT(forVendor("Provider=SQLOLEDB;Data Source=srv;Password={a"), HasSubstr("PWD={{a};"));
}

TEST(ConnectionString, WritesBracesAsFreeTdsReadsThem) {
    EXPECT_THAT(forFreeTds("Server=srv;UID=u;PWD={a;b}}c}"), HasSubstr("PWD={a;b}c};"));
    EXPECT_THAT(forFreeTds("Server=srv;UID=u;PWD={a}}}"), HasSubstr("PWD=a};"));
    EXPECT_THAT(refusalOf("Server=srv;UID=u;PWD={segreta}};x}", withFreeTds),
                HasSubstr("il driver non accetta il valore di 'PWD'"));
}

TEST(ConnectionString, LetsUserAndPasswordOfTheCallerTakePrecedence) {
    EXPECT_THAT(forVendor("Server=srv;UID=vecchio;PWD=vecchia", "nuovo", "nuova"),
                HasSubstr("UID=nuovo;PWD=nuova;"));
    EXPECT_EQ(forVendor("DSN=CONTI;UID=vecchio;PWD=vecchia", "nuovo", "nuova"),
              "DSN=CONTI;UID=nuovo;PWD=nuova;");
}

TEST(ConnectionString, HandsOnADataSourceOrAnotherDatabasesDriverAsItIs) {
    EXPECT_EQ(forVendor("DSN=CONTI;Qualcosa=1;PWD={a;b}"), "DSN=CONTI;Qualcosa=1;PWD={a;b};");
    EXPECT_EQ(forVendor("Driver={PostgreSQL Unicode};Servername=srv;BoolsAsChar=0"),
              "Driver={PostgreSQL Unicode};Servername=srv;BoolsAsChar=0;");
}

TEST(ConnectionString, NamesTheKeyThatItDoesNotKnow) {
    EXPECT_EQ(refusalOf("Provider=SQLOLEDB;Data Source=srv;Colore=rosso"),
              "08001 Stringa di connessione non valida: la chiave 'Colore' non è riconosciuta.");
    EXPECT_EQ(refusalOf("Server=srv;Colore=rosso"),
              "08001 Stringa di connessione non valida: la chiave 'Colore' non è riconosciuta.");
}

TEST(ConnectionString, NamesTheKeyThatIsGivenTwiceUnderWhateverName) {
    EXPECT_THAT(refusalOf("Server=srv;Database=A;Initial Catalog=B"),
                HasSubstr("'Initial Catalog' è ripetuta"));
    EXPECT_THAT(refusalOf("Server=srv;KeepAlive=1;keepalive=2"), HasSubstr("'keepalive' è ripetuta"));
}

TEST(ConnectionString, NamesTheKeyWhoseValueIsWrong) {
    EXPECT_THAT(refusalOf("Server=srv;Encrypt=forse"),
                HasSubstr("'Encrypt' vuole yes, no o strict, non 'forse'"));
    EXPECT_THAT(refusalOf("Server=srv;Connect Timeout=1s"), HasSubstr("'Connect Timeout' vuole un numero"));
    EXPECT_THAT(refusalOf("Server=srv;Trusted_Connection=si"),
                HasSubstr("'Trusted_Connection' vuole yes o no"));
    for (const char* port : {"porta", "0", "65536", "-1", "14 33"}) {
        EXPECT_THAT(
            refusalOf(std::string("Server=srv,") + port),
            HasSubstr(std::string("la porta del server 'srv,") + port + "' non è un numero da 1 a 65535"));
    }
    EXPECT_THAT(refusalOf("Server=srv;Port=70000"), HasSubstr("la porta del server 'srv' non è un numero"));
    EXPECT_THAT(refusalOf("Server=np:srv"), HasSubstr("soltanto per TCP/IP, non con 'np:'"));
    EXPECT_THAT(refusalOf("Server=srv;Network Library=DBNMPNTW"), HasSubstr("'Network Library' vuole"));
    EXPECT_THAT(refusalOf("Server=srv;Encrypt=strict", withFreeTds),
                HasSubstr("FreeTDS non conosce 'strict'"));
    EXPECT_THAT(refusalOf("Provider=ALTRO;Data Source=srv"),
                HasSubstr("il provider 'ALTRO' non è di SQL Server"));
    EXPECT_THAT(refusalOf("UID=mario"), HasSubstr("manca il server"));
}

TEST(ConnectionString, NeverShowsAPasswordThatBreaksTheString) {
    for (const char* text :
         {"Provider=SQLOLEDB;Data Source=srv;Password=prima;segreta", "Server=srv;PWD=prima;segreta;x=1",
          "Server=srv;PWD={segreta", "Server=srv;PWD={prima}segreta;UID=u",
          "Provider=SQLOLEDB;Password=\"segreta;Data Source=srv", "PWD=x;segreta",
          "Provider=SQLOLEDB;Data Source=srv;Password={prima;segreta=x}", "Server=srv;PWD=prima;segreta7=x",
          "Server=srv;PWD=\"prima;segreta=x\"", "Server=srv;PWD=prima;segreta!=x;Database=CONTI",
          "Provider=SQLOLEDB;Data Source=srv;Password='prima;segreta=x"}) {
        const std::string refusal = refusalOf(text);
        EXPECT_THAT(refusal, HasSubstr("08001")) << text;
        EXPECT_THAT(refusal, Not(HasSubstr("segreta"))) << text;
    }
}

TEST(ConnectionString, NamesAnUnknownKeyBehindAPasswordThatIsWhole) {
    EXPECT_THAT(refusalOf("Server=srv;PWD={segreta};Colore=rosso"), HasSubstr("'Colore' non è riconosciuta"));
    EXPECT_THAT(refusalOf("Provider=SQLOLEDB;Password=segreta;Data_Base=x"),
                HasSubstr("'Data_Base' non è riconosciuta"));
    EXPECT_EQ(refusalOf("Server=srv;PWD=segr;eta7=x"),
              "08001 Stringa di connessione non valida: dopo il valore di 'PWD' segue una chiave che non è "
              "riconosciuta; un valore che contiene ';' va racchiuso tra virgolette o tra graffe.");
}

TEST(ConnectionString, TellsWhetherItIsForThisAdapter) {
    EXPECT_TRUE(isOdbcConnectionString("Provider=sqloledb.1;Data Source=srv"));
    EXPECT_TRUE(isOdbcConnectionString("Driver={FreeTDS};Server=srv"));
    EXPECT_TRUE(isOdbcConnectionString("DSN=CONTI"));
    EXPECT_TRUE(isOdbcConnectionString("Server=srv;Database=CONTI"));
    EXPECT_FALSE(isOdbcConnectionString("Provider=VeldranEmbedded;Data Source=\"/dati/x.vdb\""));
    EXPECT_FALSE(isOdbcConnectionString("Data Source=x"));
    EXPECT_FALSE(isOdbcConnectionString(""));
}

TEST(ConnectionString, TellsTheDatabaseAndNothingOfThePassword) {
    EXPECT_EQ(databaseOf("Provider=SQLOLEDB;Initial Catalog=CONTI;Password=\"x;Database=y\""), "CONTI");
    EXPECT_EQ(databaseOf("Server=srv;PWD={x;Database=y};Database=CONTI"), "CONTI");
    EXPECT_EQ(databaseOf("Server=srv"), "");
    EXPECT_EQ(databaseOf("Server=srv;PWD={x;Database=y"), "");
}

TEST(DriverChoice, PrefersTheVendorsNewestDriver) {
    const auto chosen = [](const std::vector<std::string>& installed) { return chooseDriver({}, installed); };
    EXPECT_EQ(chosen({"FreeTDS", "ODBC Driver 17 for SQL Server", "ODBC Driver 18 for SQL Server"}).name,
              "ODBC Driver 18 for SQL Server");
    EXPECT_EQ(chosen({"ODBC Driver 17 for SQL Server", "FreeTDS", "SQL Server"}).name,
              "ODBC Driver 17 for SQL Server");
    EXPECT_EQ(chosen({"SQLite3", "FreeTDS", "SQL Server"}).name, "FreeTDS");
    EXPECT_EQ(chosen({"SQL Server", "SQL Server Native Client 11.0"}).name, "SQL Server Native Client 11.0");
    EXPECT_EQ(chosen({"FreeTDS"}).family, DriverFamily::FreeTds);
    EXPECT_EQ(chosen({"SQL Server"}).family, DriverFamily::Vendor);
}

TEST(DriverChoice, TakesALibraryUnseen) {
    const auto driver = chooseDriver("/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so", {});
    EXPECT_EQ(driver.name, "/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so");
    EXPECT_EQ(driver.family, DriverFamily::FreeTds);
}

TEST(DriverChoice, SaysWhatToInstallWhenThereIsNone) {
    EXPECT_EQ(
        refusalOf("Server=srv", {"SQLite3"}),
        "IM002 Non è installato alcun driver ODBC per SQL Server: installare «ODBC Driver 18 for SQL Server» "
        "oppure FreeTDS (su Debian il pacchetto tdsodbc). Driver installati: SQLite3.");
    EXPECT_THAT(refusalOf("Server=srv", {}), HasSubstr("Driver installati: nessuno."));
}

TEST(DriverChoice, NamesTheDriverThatIsNotInstalledAndThoseThatAre) {
    EXPECT_EQ(
        refusalOf("Driver={ODBC Driver 17 for SQL Server};Server=srv", withFreeTds),
        "IM002 Il driver ODBC 'ODBC Driver 17 for SQL Server' non è installato. Driver installati: FreeTDS, "
        "PostgreSQL Unicode.");
}

} // namespace
} // namespace veldran::odbc
