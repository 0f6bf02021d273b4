#include "tests/embedded/session_fixture.h"

#include <algorithm>
#include <sstream>

namespace veldran::embedded::test {

namespace {

/// A file of golden/: comment lines that say why, perhaps "-- ?: NCHAR(10), BIT" with the types of the
/// markers, the T-SQL, a line of dashes, and the SQLite text that stands for it.
struct Golden {
    std::vector<ado::ParameterInfo> markers;
    std::string statement;
    std::string emitted;
};

std::filesystem::path goldenDirectory() {
    return std::filesystem::path(VELDRAN_SOURCE_DIR) / "tests/embedded/golden";
}

std::vector<std::string> goldenNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(goldenDirectory())) {
        if (entry.path().extension() == ".sql") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

ado::ParameterInfo parameterOf(std::string text) {
    const auto argument = [&](std::size_t index) {
        std::size_t at = text.find('(');
        for (; index > 0 && at != std::string::npos; --index) {
            at = text.find(' ', at);
        }
        return at == std::string::npos ? 0 : std::stoi(text.substr(at + 1));
    };
    if (text.starts_with("NCHAR")) {
        return wide("?", "", argument(0)).info;
    }
    if (text.starts_with("DECIMAL")) {
        return numeric("?", 0, argument(0), argument(1)).info;
    }
    return text == "BIT" ? flag("?", false).info : integer("?", 0).info;
}

Golden read(const std::string& name) {
    Golden golden;
    std::istringstream lines(sourceFile("tests/embedded/golden/" + name + ".sql"));
    std::string* target = &golden.statement;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("-- ?: ")) {
            std::istringstream types(line.substr(6));
            for (std::string type; std::getline(types, type, ';');) {
                golden.markers.push_back(parameterOf(type.substr(type.find_first_not_of(' '))));
            }
        } else if (line.starts_with("----")) {
            target = &golden.emitted;
        } else if (!line.starts_with("--")) {
            *target += (target->empty() ? "" : "\n") + line;
        }
    }
    return golden;
}

class GoldenStatements : public SessionTest, public ::testing::WithParamInterface<std::string> {
protected:
    GoldenStatements() {
        run({"CREATE TABLE CONTI (GRUPPO DECIMAL(2) NOT NULL, CONTO NCHAR(10) NOT NULL, DESCR NVARCHAR(40) "
             "NOT NULL, "
             "PADRE NCHAR(10) NULL, ATTIVO BIT NOT NULL, LIVELLO SMALLINT NOT NULL, PERC DECIMAL(5, 2) NULL, "
             "PRIMARY KEY (GRUPPO, CONTO))",
             "CREATE TABLE #SCELTI (INDICE INT IDENTITY(1, 1) PRIMARY KEY, CONTO NCHAR(10) NOT NULL, ATTIVO "
             "BIT NOT NULL)",
             "CREATE FUNCTION TESTATA (@LIVELLI SMALLINT, @CONTO NCHAR(10)) RETURNS NVARCHAR(10) AS BEGIN "
             "RETURN "
             "CASE @LIVELLI WHEN 2 THEN SUBSTRING(@CONTO, 1, 2) ELSE @CONTO END END",
             "CREATE FUNCTION DESCRIZIONI (@CONTO NCHAR(10), @GRUPPO INT) RETURNS TABLE AS RETURN (SELECT "
             "CONTO AS C, "
             "DESCR AS D FROM CONTI WHERE (@CONTO IS NULL OR CONTO = @CONTO) AND GRUPPO = @GRUPPO)"});
    }
};

} // namespace

TEST_P(GoldenStatements, AreWrittenAsTheyStand) {
    const Golden golden = read(GetParam());
    const std::string emitted = session_->explain(golden.statement, golden.markers);
    if (std::getenv("VELDRAN_WRITE_GOLDEN") != nullptr) {
        std::cout << "=== " << GetParam() << "\n" << emitted << "\n";
    }
    EXPECT_EQ(emitted, golden.emitted);
}

INSTANTIATE_TEST_SUITE_P(Files, GoldenStatements, ::testing::ValuesIn(goldenNames()),
                         [](const auto& golden) { return golden.param; });

} // namespace veldran::embedded::test
