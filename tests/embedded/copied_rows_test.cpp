// Statements on working tables that are copies of others, at random, beside the same statements on tables of
// whose origin nothing is known: every answer, every count and every row has to be the same.
#include "tests/embedded/random_texts.h"
#include "tests/embedded/session_fixture.h"

#include <algorithm>

namespace veldran::embedded::test {

namespace {

const std::string columns = "INDICE, GRUPPO, CONTO, PADRE, RADICE, NATURA, ANALITICO, ATTIVO";
const std::string definition =
    " (INDICE INT IDENTITY(1, 1) NOT NULL PRIMARY KEY, GRUPPO DECIMAL(2) NOT NULL, CONTO NCHAR(4) NOT NULL, "
    "PADRE NCHAR(4) NULL, RADICE NCHAR(4) NOT NULL, NATURA DECIMAL(1) NOT NULL, ANALITICO BIT NOT NULL, "
    "ATTIVO BIT NOT NULL)";

/// The text with {T}, the original, and {S}, its copy, or with the tables beside them.
std::string about(const std::string& text, const std::string& original, const std::string& copy) {
    std::string result = text;
    for (std::size_t at = 0; (at = result.find('{', at)) != std::string::npos;) {
        result.replace(at, 3, result[at + 1] == 'T' ? original : copy);
    }
    return result;
}

/// Texts on {S}, {T} and #B, at random.
class Texts : public RandomTexts {
public:
    using RandomTexts::RandomTexts;

    std::string value() { return of({"0100", "0101", "01a1", "01A1", "0200", "0201", "0300", "03  ", "03"}); }
    /// One of them, or a marker for one.
    std::string code() { return among(4) == 0 ? "?" : "'" + value() + "'"; }

    std::string query() {
        const std::string alias = of({"X", "[{T}]", "[Y]", "{S}"});
        const std::string from = "FROM {S}" + (alias == "{S}" ? "" : " AS " + alias);
        const std::string where = " WHERE " + conjunction(alias, 2);
        switch (among(7)) {
        case 0:
            return "SELECT COUNT(*), MIN(INDICE) " + from + where;
        case 1:
            return "SELECT DISTINCT NATURA " + from + where + " ORDER BY NATURA";
        case 2:
            return "SELECT TOP 2 INDICE " + from + where + " ORDER BY INDICE";
        case 3:
            return "SELECT INDICE, (SELECT COUNT(*) FROM {S} AS M WHERE M.GRUPPO = " + alias +
                   ".GRUPPO AND " + conjunction("M", 1) + ") " + from + where + " ORDER BY INDICE";
        case 4:
            return "SELECT INDICE, CASE WHEN " + exists(alias, 1) + " THEN 1 ELSE 0 END " + from + where +
                   " ORDER BY INDICE";
        case 5:
            return "SELECT F.INDICE FROM (SELECT * " + from + where +
                   ") AS F INNER JOIN {T} ON {T}.INDICE = "
                   "F.INDICE AND {T}.CONTO = F.CONTO ORDER BY 1";
        default:
            return "SELECT " + columns + " " + from + where + " ORDER BY INDICE";
        }
    }

    std::string update() {
        const std::string value =
            of({"ATTIVO = " + number(2), "ATTIVO = 1 - ATTIVO", "CONTO = " + code(), "CONTO = RADICE",
                "PADRE = CONTO", "PADRE = NULL", "ATTIVO = ANALITICO, ANALITICO = ATTIVO",
                "NATURA = 3 - NATURA", "CONTO = PADRE, ATTIVO = 1"});
        switch (among(5)) {
        case 4:
            return ofPartners(of({"{S}", "{T}"}));
        case 0:
            return "UPDATE X SET " + value + " FROM {S} AS X WHERE " + conjunction("X", 2);
        case 1:
            return "UPDATE {T} SET " + value + " WHERE " + conjunction("{T}", 1);
        default:
            return "UPDATE {S} SET " + value + " WHERE " + conjunction("{S}", 2);
        }
    }

    std::string ofPartners(const std::string& table) {
        const std::string query = " FROM #B WHERE CODICE = " + table + "." + of({"PADRE", "CONTO"}) +
                                  " AND " + of({table + ".GRUPPO = 1", "V = 1"}) + ")";
        return "UPDATE " + table + " SET ATTIVO = " +
               of({"ISNULL((SELECT TOP 1 1" + query + ", 0)",
                   "CASE WHEN EXISTS (SELECT *" + query + " THEN 0 ELSE 1 END"});
    }

    std::string writeBack() {
        const std::string column = of({"ATTIVO", "CONTO", "PADRE", "NATURA"});
        return of({"UPDATE {T} SET " + column + " = {S}." + column +
                       " FROM {T} INNER JOIN {S} ON {T}.INDICE = {S}.INDICE",
                   "UPDATE [{S}] SET " + column + " = [{T}]." + column +
                       " FROM {T} AS [{S}] INNER JOIN {S} AS [{T}] ON [{T}].INDICE = [{S}].INDICE"});
    }

private:
    std::string conjunction(const std::string& alias, int depth) {
        std::string text = atom(alias, depth);
        for (int more = among(3); more > 0; --more) {
            text += " AND " + atom(alias, depth);
        }
        return among(8) == 0 ? "(" + text + " OR " + atom(alias, depth) + ")" : text;
    }

    std::string atom(const std::string& alias, int depth) {
        const std::string x = alias + ".";
        switch (among(depth > 0 ? 19 : 10)) {
        case 0:
            return x + "GRUPPO = 1";
        case 1:
            return x + "CONTO = " + code();
        case 2:
            return of({x + "CONTO LIKE '01%'", x + "CONTO LIKE '01a%'", x + "CONTO LIKE '0%'"});
        case 3:
            return x + "PADRE = " + code();
        case 4:
            return x + "ATTIVO = " + number(2);
        case 5:
            return x + "NATURA = " + of({"1", "2", "2.0", "'2'"});
        case 6:
            return x + "CONTO " + of({"BETWEEN '0100' AND '0200'", "IN ('0100', '01A1')", ">= '0200'"});
        case 7:
            return of({x + "PADRE IS NULL", x + "PADRE = " + x + "RADICE", "NOT " + x + "CONTO = '0100'"});
        case 8:
            return x + "ANALITICO = " + number(2);
        case 9:
            return x + "INDICE " + of({"> 2", "<> 3", "= 3"});
        case 10:
            return "NOT " + exists(alias, depth);
        case 11:
            return "CASE WHEN " + exists(alias, depth) + " THEN 1 ELSE 0 END = 1";
        case 12:
            return "(" + exists(alias, depth) + " OR " + atom(alias, 0) + ")";
        case 13:
            return x + "PADRE IN (SELECT CODICE FROM #B WHERE " + (among(2) == 0 ? "V = 1)" : "QUANTI > 0)");
        case 14:
            return x + "CONTO = (SELECT MAX(W.CONTO) FROM {S} AS W WHERE " + conjunction("W", 0) + ")";
        default:
            return exists(alias, depth);
        }
    }

    std::string exists(const std::string& outer, int depth) {
        const std::string x = outer + ".";
        const bool other = among(3) == 0;
        const std::string y = of({"Y" + std::to_string(depth), "[{T}" + std::to_string(depth) + "]"});
        std::string text = "EXISTS (SELECT " + of({"1", "TOP 1 1", "*", "DISTINCT 1", "TOP 0 1", "TOP 2 1"}) +
                           " FROM " + (other ? std::string("#B") : of({"{S}", "{T}"})) + " AS " + y +
                           " WHERE ";
        std::vector<std::string> parts;
        const std::string mine =
            x + of({"CONTO", "PADRE", "RADICE", "CONTO", "CONTO", "NATURA", "ATTIVO", "INDICE"});
        const bool numeric = mine.ends_with("NATURA") || mine.ends_with("ATTIVO") || mine.ends_with("INDICE");
        const std::string theirs =
            y + "." +
            (other ? (numeric ? of({"QUANTI", "V", "PESO", "INTERO"}) : of({"CODICE", "BREVE"}))
                   : (numeric ? of({"NATURA", "INDICE", "ANALITICO"}) : of({"CONTO", "PADRE", "RADICE"})));
        if (among(10) != 0) {
            parts.push_back(among(2) == 0 ? mine + " = " + theirs : theirs + " = " + mine);
        }
        if (among(4) == 0 && !numeric) {
            parts.push_back(of({"LEFT(" + theirs + ", 2) = '01'", theirs + " + '' = " + x + "CONTO",
                                mine + " = " + code(), "RTRIM(" + theirs + ") = " + x + "PADRE"}));
        }
        if (among(8) != 0) {
            parts.push_back(other ? of({y + ".V = 1", y + ".QUANTI = 1", y + ".PESO = 1.5",
                                        y + ".CODICE LIKE '01%'", y + ".INTERO > 0"})
                                  : conjunction(y, depth - 1));
        }
        if (among(6) == 0) {
            parts.push_back(of({y + ".ATTIVO = " + x + "ATTIVO", y + ".INDICE > " + x + "INDICE"}));
            if (other) {
                parts.back() = y + ".V <= " + x + "ATTIVO";
            }
        }
        if (parts.empty()) {
            parts.push_back("1 = 1");
        }
        shuffle(parts);
        for (std::size_t i = 0; i < parts.size(); ++i) {
            text += (i == 0 ? "" : " AND ") + parts[i];
        }
        if (among(12) == 0 && text.find("*") == std::string::npos) {
            text += " GROUP BY " + theirs + of({"", " HAVING COUNT(*) > 1"});
        }
        return text + ")";
    }
};

class CopiedRows : public SessionTest {
protected:
    /// Rows, count or the number of the error.
    std::string outcome(const std::string& text, const std::vector<ado::BoundParameter>& values) {
        try {
            const ado::StatementResult result = execute(text, values);
            if (!result.rows) {
                return std::to_string(result.rowsAffected);
            }
            std::string answer;
            for (const auto& row : asText(*result.rows)) {
                for (const auto& value : row) {
                    answer += value + ",";
                }
                answer += ";";
            }
            return answer;
        } catch (const ado::AdoError& error) {
            return "error " + std::to_string(error.first().Number);
        }
    }
    void bothSay(const std::string& text) {
        std::vector<ado::BoundParameter> values;
        for (auto markers = std::count(text.begin(), text.end(), '?'); markers > 0; --markers) {
            values.push_back(wide("", texts_.value(), 4));
        }
        const std::string answer = outcome(about(text, "#T", "#S"), values);
        ASSERT_EQ(answer, outcome(about(text, "#N", "#M"), values)) << text;
        telling_ += answer.empty() || answer == "0" ? 0 : 1;
    }
    void copyAnew(const std::string& where) {
        run({"DROP TABLE #S",
             "SELECT " + columns + " INTO #S FROM #T " + where +
                 " ORDER BY INDICE ALTER TABLE #S ADD PRIMARY KEY CLUSTERED (INDICE)",
             "CREATE INDEX PER_PADRE ON #S (GRUPPO, PADRE)",
             "CREATE INDEX PER_RADICE ON #S (NATURA, ANALITICO, ATTIVO, RADICE)", "DROP TABLE #M",
             "CREATE TABLE #M" + definition, "SET IDENTITY_INSERT #M ON",
             "INSERT INTO #M (" + columns + ") SELECT " + columns + " FROM #N " + where + " ORDER BY INDICE",
             "SET IDENTITY_INSERT #M OFF"});
    }

    Texts texts_{11};
    int telling_ = 0; ///< answers that were neither empty nor 0
};

} // namespace

TEST_F(CopiedRows, AreAnsweredCountedAndChangedLikeRowsOfWhichNothingIsKnown) {
    const std::string rowsOfChart =
        " VALUES (1, '0100', NULL, '0100', 1, 0, 0), (1, '0101', '0100', '0100', 1, 1, 0), (1, '01a1', "
        "'0100', "
        "'0100', 1, 1, 1), (1, '01A1', '01a1', '0100', 2, 1, 1), (2, '0200', NULL, '0200', 2, 0, 0), (1, "
        "'0201', "
        "'0200', '0200', 2, 1, 1), (2, '03', NULL, '03', 2, 0, 0), (1, '0300', '03', '03', 2, 1, 0)";
    run({"CREATE TABLE #T" + definition, "INSERT INTO #T" + rowsOfChart, "DELETE FROM #T WHERE INDICE = 5",
         "CREATE INDEX PER_CONTO ON #T (GRUPPO, CONTO)", "CREATE INDEX PER_PADRE ON #T (GRUPPO, PADRE)",
         "CREATE INDEX PER_TUTTO ON #T (CONTO, PADRE)", "CREATE TABLE #N" + definition,
         "INSERT INTO #N" + rowsOfChart, "DELETE FROM #N WHERE INDICE = 5",
         "CREATE TABLE #B (CODICE NVARCHAR(10) NULL, BREVE VARCHAR(3) NULL, QUANTI DECIMAL(6, 2) NULL, V BIT "
         "NOT "
         "NULL, PESO DECIMAL(4, 1) NULL, INTERO INT NULL)",
         "CREATE INDEX PER_CODICE ON #B (QUANTI, V, CODICE)",
         "INSERT INTO #B VALUES (N'01a1  ', '01a', 1, 1, 1.5, 1), (N'01A1', '03', 1.00, 0, 2, 2), (N'0100', "
         "'03 ', 2, "
         "1, 1.5, NULL), (NULL, NULL, NULL, 0, NULL, 3), (N'0100', NULL, 1, 1, 3, 1), (N'03', '03', 1, 1, "
         "1.5, 0)",
         "CREATE TABLE #S (N INT)", "CREATE TABLE #M (N INT)"});
    copyAnew("");
    bool within = false;
    for (int step = 0; step < 300; ++step) {
        switch (texts_.among(16)) {
        case 0:
        case 1:
            copyAnew(texts_.among(2) == 0 ? "" : "WHERE INDICE <> " + texts_.number(8));
            break;
        case 2:
            if (within) {
                session_->rollback();
            } else {
                session_->begin();
            }
            within = !within;
            break;
        case 3:
            if (within) {
                session_->commit();
                within = false;
            }
            break;
        case 4:
            if (texts_.among(3) == 0) {
                bothSay("DELETE FROM {S} WHERE INDICE = " + texts_.number(8));
            }
            break;
        case 5:
        case 6:
            bothSay(texts_.writeBack());
            break;
        case 7:
        case 8:
        case 9:
            bothSay(texts_.update());
            break;
        default:
            for (int i = 0; i < 6; ++i) {
                bothSay(texts_.query());
            }
        }
        bothSay("SELECT " + columns + " FROM {S} ORDER BY INDICE");
        bothSay("SELECT " + columns + " FROM {T} ORDER BY INDICE");
        if (HasFatalFailure()) {
            FAIL() << "step " << step;
        }
    }
    EXPECT_GT(telling_, 1000);
}

} // namespace veldran::embedded::test
