#include "adapters/odbc/errors.h"
#include "adapters/odbc/utf16.h"
#include "tests/support/ado_expect.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>
#include <vector>

namespace veldran::odbc {
namespace {

TEST(Utf16, CarriesEveryKindOfCharacterBothWays) {
    const std::vector<std::pair<std::string, std::u16string>> texts{
        {"", u""},
        {"Conto 01", u"Conto 01"},
        {"perché", u"perch\u00e9"},
        {"\xE2\x82\xAC", u"\u20ac"},
        {"\xEF\xBF\xBD", u"\ufffd"},
        {"\xF0\x9F\x98\x80", u"\xd83d\xde00"},
        {"\xF4\x8F\xBF\xBF", u"\xdbff\xdfff"},
        {std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
    };
    for (const auto& [utf8, utf16] : texts) {
        EXPECT_EQ(toUtf16(utf8), utf16) << utf8;
        EXPECT_EQ(toUtf8(utf16), utf8);
    }
}

TEST(Utf16, RefusesBytesThatAreNoText) {
    for (const char* bytes : {"\x80", "a\xC3", "\xC3(", "\xC0\xAF", "\xE0\x80\x80", "\xED\xA0\x80",
                              "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
        EXPECT_THROW(toUtf16(bytes), std::invalid_argument) << bytes;
    }
}

TEST(Utf16, RefusesAStatementThatIsNoText) {
    EXPECT_ADO_ERROR(textToSend("SELECT '\xFF'"), errorUnspecified);
}

TEST(Utf16, ShowsHalfASurrogatePairAsAReplacementCharacter) {
    EXPECT_EQ(toUtf8(std::u16string{u'a', char16_t{0xD83D}, u'b'}), "a\xEF\xBF\xBD"
                                                                    "b");
    EXPECT_EQ(toUtf8(std::u16string{char16_t{0xDE00}}), "\xEF\xBF\xBD");
    EXPECT_EQ(toUtf8(std::u16string{char16_t{0xD83D}}), "\xEF\xBF\xBD");
}

} // namespace
} // namespace veldran::odbc
