#include "shell/data_file.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldran::test {
namespace {

using shell::DataFileError;
using shell::DataObject;
using shell::Problems;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string failureOf(const std::filesystem::path& file) {
    Problems problems;
    try {
        DataObject::fromFile(file, problems);
    } catch (const DataFileError& error) {
        return error.what();
    }
    return {};
}

TEST(DataFile, NamesAMissingFile) {
    const ScratchFolder folder;
    const auto file = folder.path() / "manca.json";
    EXPECT_EQ(failureOf(file), "Il file «" + file.string() + "» non esiste.");
}

TEST(DataFile, RefusesAFolderAsAFile) {
    const ScratchFolder folder;
    EXPECT_THAT(failureOf(folder.path()), HasSubstr("non può essere letto"));
}

struct BadText {
    const char* text;
    const char* place;
    const char* reason;

    friend void PrintTo(const BadText& bad, std::ostream* out) { *out << bad.reason << ", " << bad.place; }
};

class BrokenJson : public testing::TestWithParam<BadText> {};

TEST_P(BrokenJson, IsRefusedWithItsPlace) {
    const ScratchFolder folder;
    const auto file = folder.write("rotto.json", GetParam().text);
    EXPECT_THAT(failureOf(file), AllOf(HasSubstr("«" + file.string() + "»"), HasSubstr(GetParam().place),
                                       HasSubstr(GetParam().reason)));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BrokenJson,
    testing::Values(BadText{"", "riga 1, colonna 1", "finisce troppo presto"},
                    BadText{"{\n  \"a\": 1,\n  \"b\" 2\n}", "riga 3, colonna 7", "«2»"},
                    BadText{"{\n  \"à\": tru\n}", "riga 2, colonna 11", "non è JSON valido"},
                    BadText{"{\"a\": \"non chiuso}\n", "riga 1, colonna 19", "non è JSON valido"},
                    BadText{"{\"a\": 1", "riga 1, colonna 8", "finisce troppo presto"},
                    BadText{"[1, 2]", "riga 1, colonna 1", "deve contenere un oggetto JSON"},
                    BadText{"{\n\"a\": \"\xE8\"}", "riga 2, colonna 7", "non è in codifica UTF-8"}));

TEST(DataFile, AllowsCommentsAndAByteOrderMark) {
    const ScratchFolder folder;
    Problems problems;
    const auto object = DataObject::fromFile(
        folder.write("a.json", "\xEF\xBB\xBF{ // nota\n \"a\": \"b\" /* altro */ }"), problems);
    EXPECT_EQ(object.text("a"), "b");
    EXPECT_THAT(problems, IsEmpty());
}

TEST(DataFile, NotesAKeyThatIsWrittenTwice) {
    const ScratchFolder folder;
    Problems problems;
    const auto object =
        DataObject::fromFile(folder.write("a.json", R"({"a": {"x": 1, "x": 2}, "b": {"x": 3}})"), problems);
    EXPECT_THAT(problems, ElementsAre(AllOf(HasSubstr("chiave «x»"), HasSubstr("scritta due volte"))));
    EXPECT_EQ(object.object("a")->integer("x"), 2);
}

TEST(DataFile, NotesAValueOfTheWrongTypeWithItsWholeKey) {
    const ScratchFolder folder;
    Problems problems;
    const auto file = folder.write("a.json", R"({"a": {"b": {"t": 1, "v": "sì", "n": 1.5, "o": []}}})");
    const auto inner = DataObject::fromFile(file, problems).object("a")->object("b");
    EXPECT_FALSE(inner->text("t"));
    EXPECT_FALSE(inner->boolean("v"));
    EXPECT_FALSE(inner->integer("n"));
    EXPECT_FALSE(inner->object("o"));
    const std::string place = "File «" + file.string() + "», chiave «a/b/";
    EXPECT_THAT(problems, ElementsAre(place + "t»: deve essere un testo tra virgolette.",
                                      place + "v»: deve essere true oppure false.",
                                      place + "n»: deve essere un numero intero.",
                                      place + "o»: deve essere un oggetto JSON, tra graffe."));
}

TEST(DataFile, TakesNoIntegerThatDoesNotFit) {
    const ScratchFolder folder;
    Problems problems;
    const auto object = DataObject::fromFile(
        folder.write("a.json", R"({"a": 4294967296, "b": 18446744073709551615, "c": -2147483648})"),
        problems);
    EXPECT_FALSE(object.integer("a"));
    EXPECT_FALSE(object.integer("b"));
    EXPECT_EQ(object.integer("c"), -2147483647 - 1);
    EXPECT_EQ(problems.size(), 2U);
}

TEST(DataFile, NotesAKeyThatNobodyKnows) {
    const ScratchFolder folder;
    Problems problems;
    DataObject::fromFile(folder.write("a.json", R"({"ditta": "1", "dita": "2"})"), problems)
        .refuseKeysOtherThan({"ditta"});
    EXPECT_THAT(problems, ElementsAre(HasSubstr("chiave «dita»: non è una chiave prevista")));
}

} // namespace
} // namespace veldran::test
