#include "platform/services/message_service.h"
#include "shell/file_thesaurus.h"
#include "shell/message_catalogue.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldran::test {
namespace {

using shell::FileThesaurus;
using shell::MessageCatalogue;
using shell::Problems;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(FileThesaurus, HoldsTheCaptionsOfTheFourRoots) {
    FileThesaurus thesaurus;
    Problems problems;
    thesaurus.add(shell::Places::ofThisProgram().data / "thesaurus.json", problems);
    EXPECT_THAT(problems, IsEmpty());
    EXPECT_EQ(thesaurus.Entry(15554), "Conti d'ordine");
    EXPECT_EQ(thesaurus.Entry(15588), "Conti patrimoniali");
    EXPECT_EQ(thesaurus.Entry(15566), "Conti economici");
    EXPECT_EQ(thesaurus.Entry(15556), "Conti da non stampare");
    EXPECT_EQ(thesaurus.Entry(1), std::nullopt);
}

TEST(FileThesaurus, FindsACaptionWhateverTheCaseOfItsNames) {
    const ScratchFolder folder;
    FileThesaurus thesaurus;
    Problems problems;
    thesaurus.add(folder.write("t.json", R"({"didascalie": {"frmci_veldran": {"But_Ricerca": "&Trova"}}})"),
                  problems);
    EXPECT_EQ(thesaurus.ControlCaption("FRMCI_VELDRAN", "BUT_RICERCA"), "&Trova");
    EXPECT_EQ(thesaurus.ControlCaption("FRMCI_CAUSDUP", "BUT_RICERCA"), std::nullopt);
    EXPECT_EQ(thesaurus.ControlCaption("FRMCI_VELDRAN", "TXT_CONTO"), std::nullopt);
}

TEST(FileThesaurus, LetsALaterFileReplaceWhatItNames) {
    const ScratchFolder folder;
    FileThesaurus thesaurus;
    Problems problems;
    thesaurus.add(folder.write("a.json", R"({"voci": {"1": "uno", "2": "due"}})"), problems);
    thesaurus.add(folder.write("b.json", R"({"voci": {"2": "zwei"}})"), problems);
    EXPECT_EQ(thesaurus.Entry(1), "uno");
    EXPECT_EQ(thesaurus.Entry(2), "zwei");
}

TEST(FileThesaurus, NotesBadEntriesAndKeepsTheGoodOnes) {
    const ScratchFolder folder;
    FileThesaurus thesaurus;
    Problems problems;
    thesaurus.add(folder.write("t.json", R"({"voci": {"15554": "Ordine", "abc": "x", "-3": "y", "7": 8},
                                             "didascalie": {"FRMCI_VELDRAN": "no"}, "altro": 1})"),
                  problems);
    EXPECT_EQ(thesaurus.Entry(15554), "Ordine");
    EXPECT_EQ(thesaurus.Entry(7), std::nullopt);
    EXPECT_THAT(problems, ElementsAre(HasSubstr("chiave «altro»"), HasSubstr("chiave «voci/-3»"),
                                      HasSubstr("chiave «voci/7»"), HasSubstr("chiave «voci/abc»"),
                                      HasSubstr("chiave «didascalie/FRMCI_VELDRAN»")));
}

TEST(MessageCatalogue, HoldsTheThreeRefusalsOfTheScreen) {
    MessageCatalogue catalogue;
    Problems problems;
    catalogue.add(shell::Places::ofThisProgram().data / "messaggi.json", problems);
    EXPECT_THAT(problems, IsEmpty());
    EXPECT_THAT(catalogue.message(30179).text, HasSubstr("cambiare ditta"));
    EXPECT_THAT(catalogue.message(69054).text, HasSubstr("esportazione"));
    EXPECT_THAT(catalogue.message(45614).text, HasSubstr("stampa della scheda"));
    EXPECT_EQ(catalogue.message(45614).style, services::styleExclamation);
}

TEST(MessageCatalogue, SaysSoWhenItLacksANumber) {
    EXPECT_EQ(MessageCatalogue().message(4711).text,
              "Messaggio 4711: il testo non è presente nel catalogo dei messaggi.");
}

TEST(MessageCatalogue, NotesBadMessagesAndKeepsTheGoodOnes) {
    const ScratchFolder folder;
    MessageCatalogue catalogue;
    Problems problems;
    catalogue.add(
        folder.write("m.json", R"({"1": {"testo": "uno", "icona": "errore"}, "2": {"titolo": "senza"},
                                             "3": "tre", "quattro": {"testo": "x"},
                                             "5": {"testo": "cinque", "icona": "fuoco"}})"),
        problems);
    EXPECT_EQ(catalogue.message(1).style, services::styleCritical);
    EXPECT_EQ(catalogue.message(5).text, "cinque");
    EXPECT_THAT(problems, ElementsAre(HasSubstr("chiave «2/testo»"), HasSubstr("chiave «3»"),
                                      HasSubstr("«fuoco» non è tra errore, avviso, informazione"),
                                      HasSubstr("chiave «quattro»")));
}

} // namespace
} // namespace veldran::test
