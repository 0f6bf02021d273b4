#include "adapters/odbc/catalogue.h"
#include "adapters/odbc/parameters.h"
#include "adapters/odbc/procedures.h"
#include "adapters/odbc/select_shape.h"
#include "adapters/odbc/statement.h"
#include "platform/ado/constants.h"
#include "tests/support/ado_expect.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veldran::odbc {
namespace {

using ado::BoundParameter;
using ado::ParameterInfo;

ParameterInfo info(ado::DataTypeEnum type, int size = 0, std::uint8_t precision = 0, std::uint8_t scale = 0) {
    return {"@P", type, ado::adParamInput, size, precision, scale};
}

void assign(const ParameterInfo& parameter, const Value& value) {
    ParameterBuffers buffers(std::vector{parameter});
    buffers.assign(std::vector<BoundParameter>{{parameter, value}});
}

TEST(OdbcParameters, AreDeclaredExactlyAsTheirObjectsSay) {
    const auto same = [](const ParameterInfo& parameter, SQLSMALLINT type, SQLULEN size, SQLSMALLINT scale) {
        const Declaration declaration = declarationOf(parameter);
        EXPECT_EQ(declaration.sqlType, type);
        EXPECT_EQ(declaration.size, size);
        EXPECT_EQ(declaration.scale, scale);
    };
    same(info(ado::adWChar, 10), SQL_WCHAR, 10, 0);
    same(info(ado::adVarWChar, 80), SQL_WVARCHAR, 80, 0);
    same(info(ado::adChar, 4), SQL_CHAR, 4, 0);
    same(info(ado::adVarChar, 8000), SQL_VARCHAR, 8000, 0);
    same(info(ado::adNumeric, 0, 5, 2), SQL_NUMERIC, 5, 2);
    same(info(ado::adDecimal, 0, 3, 0), SQL_NUMERIC, 3, 0);
    same(info(ado::adSmallInt), SQL_SMALLINT, 5, 0);
    same(info(ado::adInteger), SQL_INTEGER, 10, 0);
    same(info(ado::adBigInt), SQL_BIGINT, 19, 0);
    same(info(ado::adBoolean), SQL_BIT, 1, 0);
    same(info(ado::adDouble), SQL_DOUBLE, 15, 0);
    same(info(ado::adVarWChar, 4001), SQL_WLONGVARCHAR, 4001, 0);
}

TEST(OdbcParameters, RefuseATextThatADriverWouldCut) {
    EXPECT_ADO_ERROR(assign(info(ado::adWChar, 4), "LUNGA"), ado::sqlErrTextTooLong);
    EXPECT_ADO_ERROR(assign(info(ado::adVarWChar, 1), "\xF0\x9F\x98\x80"), ado::sqlErrTextTooLong);
    EXPECT_NO_THROW(assign(info(ado::adWChar, 4), "AB      "));
}

TEST(OdbcParameters, RefuseDecimalPlacesThatADriverWouldDrop) {
    EXPECT_ADO_ERROR(assign(info(ado::adNumeric, 0, 2, 0), 4.5), ado::adErrDataConversion);
    EXPECT_ADO_ERROR(assign(info(ado::adNumeric, 0, 5, 2), Decimal{12345, 3}), ado::adErrDataConversion);
    EXPECT_NO_THROW(assign(info(ado::adNumeric, 0, 5, 2), Decimal{12300, 3}));
}

TEST(OdbcParameters, RefuseNumbersBeyondTheirDeclaration) {
    EXPECT_ADO_ERROR(assign(info(ado::adNumeric, 0, 2, 0), 123), ado::sqlErrOverflow);
    EXPECT_ADO_ERROR(assign(info(ado::adSmallInt), 40000), ado::sqlErrOverflow);
    EXPECT_ADO_ERROR(assign(info(ado::adInteger), std::int64_t{3000000000}), ado::sqlErrOverflow);
}

TEST(OdbcParameters, RefuseValuesOfAnotherKindAndBytesThatAreNoText) {
    EXPECT_ADO_ERROR(assign(info(ado::adInteger), "dodici"), ado::adErrDataConversion);
    EXPECT_ADO_ERROR(assign(info(ado::adVarWChar, 10), "a\xFF"), ado::adErrDataConversion);
}

TEST(OdbcParameters, TakeNullForEveryType) {
    for (const auto type : {ado::adWChar, ado::adNumeric, ado::adInteger, ado::adBoolean, ado::adDouble}) {
        EXPECT_NO_THROW(assign(info(type, 4, 4), Value()));
    }
}

TEST(OdbcMarkers, AreCountedOutsideTextsNamesAndComments) {
    EXPECT_NO_THROW(checkMarkers("SELECT '?', [a?b], \"?\" /* ? /* ? */ */ FROM T WHERE A = ? -- ?", 1));
    EXPECT_ADO_ERROR(checkMarkers("SELECT ? + ?", 1), 8178);
    EXPECT_ADO_ERROR(checkMarkers("SELECT '?'", 1), 8144);
}

TEST(OdbcMarkers, LeaveATextThatCannotBeReadToTheServer) {
    EXPECT_NO_THROW(checkMarkers("SELECT 'aperto", 1));
}

TEST(OdbcNames, AreTakenApartWithTheirDelimiters) {
    const auto shown = [](std::string_view text) {
        const ObjectName name = objectName(text);
        return name.catalogue + "|" + name.schema + "|" + name.name;
    };
    EXPECT_EQ(shown("SPCI_X"), "||SPCI_X");
    EXPECT_EQ(shown("DBO.SPCI_X"), "|DBO|SPCI_X");
    EXPECT_EQ(shown("[CONTI].[dbo].[a.b]]c]"), "CONTI|dbo|a.b]c");
    EXPECT_EQ(shown("TEMPDB..#X"), "TEMPDB||#X");
}

TEST(OdbcProcedures, AreCalledByTheNamesOfTheirParameters) {
    const std::vector<BoundParameter> parameters{{{"@ON", ado::adBoolean}, true},
                                                 {{"@CONTO", ado::adWChar}, "1"}};
    EXPECT_EQ(callText("DBO.SPCI_X", parameters), "EXEC [DBO].[SPCI_X] @ON = ?, @CONTO = ?");
    EXPECT_EQ(callText("[SPCI_X]", {}), "EXEC [SPCI_X]");
}

TEST(OdbcProcedures, RefuseANameThatIsNoParameters) {
    const std::vector<BoundParameter> parameters{{{"@A = 1; DROP TABLE T --", ado::adBoolean}, true}};
    EXPECT_ADO_ERROR(callText("X", parameters), ado::adErrInvalidParamInfo);
}

std::string shapeText(std::string_view text) {
    const auto shape = selectShape(text);
    if (!shape) {
        return "none";
    }
    std::string shown = shape->table + ":";
    for (const auto& column : shape->columns) {
        shown += " " + (shape->allColumns ? "*" : column.value_or("-"));
    }
    return shown;
}

TEST(SelectShape, NamesTheTableAndTheColumnsThatAreItsOwn) {
    EXPECT_EQ(shapeText("SELECT * FROM #D WHERE CAUSALE = 'A' ORDER BY PROG"), "#D: *");
    EXPECT_EQ(shapeText("select PROG, T.CONTO AS C, [SEGNO], PROG + 1 FROM DBO.[T] T WHERE A = ?"),
              "DBO.T: PROG CONTO SEGNO -");
}

TEST(SelectShape, KnowsNothingOfRowsThatAreNotATables) {
    for (const char* text :
         {"SELECT * FROM A, B", "SELECT * FROM A INNER JOIN B ON A.X = B.X", "SELECT DISTINCT X FROM A",
          "SELECT X FROM A GROUP BY X", "SELECT X FROM A UNION SELECT X FROM B", "SELECT COUNT(*) FROM A",
          "SELECT X INTO #B FROM A", "SELECT * FROM (SELECT X FROM A) AS T", "SELECT 1", "UPDATE A SET X = 1",
          "SELECT X FROM A SELECT X FROM A", "SELECT * FROM F(1)", "SELECT FROM"}) {
        EXPECT_EQ(shapeText(text), "none") << text;
    }
}

TEST(OdbcMessages, AreCutIntoTheirSourceAndTheirText) {
    std::string source;
    std::string text;
    splitMessage("[Microsoft][ODBC Driver 18 for SQL Server][SQL Server]Violazione [dbo].\r\n", source, text);
    EXPECT_EQ(source, "Microsoft, ODBC Driver 18 for SQL Server, SQL Server");
    EXPECT_EQ(text, "Violazione [dbo].");
    splitMessage("senza parentesi", source, text);
    EXPECT_EQ(source, errorSource);
    EXPECT_EQ(text, "senza parentesi");
    splitMessage("[aperta", source, text);
    EXPECT_EQ(text, "[aperta");
}

} // namespace
} // namespace veldran::odbc
