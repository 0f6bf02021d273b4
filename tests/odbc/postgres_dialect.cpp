#include "tests/odbc/postgres_dialect.h"

#include "adapters/tsql/lexer.h"
#include "platform/ado/forwarding_session.h"
#include "platform/text.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace veldran::test {

namespace {

using tsql::Token;
using tsql::TokenKind;

/// Statements that T-SQL says otherwise altogether.
const std::map<std::string, std::string, std::less<>>& wholeStatements() {
    static const std::map<std::string, std::string, std::less<>> statements{
        {"IF OBJECT_ID('VLDCT_PROC') IS NOT NULL DROP PROCEDURE VLDCT_PROC",
         "DROP PROCEDURE IF EXISTS vldct_proc"},
        {"IF OBJECT_ID('VLDCT_TAB') IS NOT NULL DROP TABLE VLDCT_TAB", "DROP TABLE IF EXISTS vldct_tab"},
        {"SELECT IDENTITY(INT, 1, 1) AS INDICE, PROG AS PROG, CONTO AS CONTO INTO #N FROM #D WHERE CAUSALE = "
         "'VEND' ORDER BY PROG DESC",
         "SELECT row_number() OVER (ORDER BY PROG DESC) AS INDICE, PROG AS PROG, CONTO AS CONTO INTO "
         "TEMPORARY "
         "\"#n\" FROM \"#d\" WHERE CAUSALE = 'VEND' ORDER BY PROG DESC"},
    };
    return statements;
}

/// Runs of tokens, in capitals, that stand for something else. The longest come first.
struct Phrase {
    std::vector<std::string_view> tokens;
    std::string_view meaning;
};
const std::vector<Phrase>& phrases() {
    static const std::vector<Phrase> all{
        {{"INT", "IDENTITY", "(", "1", ",", "1", ")"}, "SERIAL"},
        {{"COLLATE", "DATABASE_DEFAULT"}, "COLLATE blind"},
        {{"VLDCT_TAB"}, "\"public\".vldct_tab"},
        {{"NCHAR"}, "CHAR"},
        {{"NVARCHAR"}, "VARCHAR"},
        {{"BIT"}, "BOOLEAN"},
    };
    return all;
}

bool isWorkingTable(const Token& token) {
    return token.kind == TokenKind::Word && token.text.starts_with('#');
}

class Translation {
public:
    explicit Translation(std::string_view text) : text_(text), tokens_(tsql::tokenize(text)) {}

    std::string translated() {
        std::string result;
        for (at_ = 0; tokens_[at_].kind != TokenKind::End;) {
            const std::string gap = gapBefore();
            result += (endsAStatement(gap) ? ";" : "") + gap;
            result += next();
        }
        return result + gapBefore();
    }

private:
    // Blanks and comments between the tokens.
    std::string gapBefore() const {
        const std::size_t begin = at_ == 0 ? 0 : tokens_[at_ - 1].span.end.offset;
        return std::string(text_.substr(begin, tokens_[at_].span.begin.offset - begin));
    }

    // T-SQL needs nothing between two statements; the contract puts them on lines of their own.
    bool endsAStatement(const std::string& gap) const {
        static const std::set<std::string, std::less<>> first{"SELECT", "INSERT", "UPDATE", "DELETE"};
        return at_ > 0 && gap.find('\n') != std::string::npos && first.contains(tokens_[at_].upper);
    }

    std::string next() {
        for (const Phrase& phrase : phrases()) {
            if (stands(phrase)) {
                at_ += phrase.tokens.size();
                return std::string(phrase.meaning);
            }
        }
        const Token& token = tokens_[at_++];
        if (token.kind == TokenKind::DelimitedIdentifier || isWorkingTable(token)) {
            return '"' + withFoldedCase(token.text) + '"';
        }
        std::string written(
            text_.substr(token.span.begin.offset, token.span.end.offset - token.span.begin.offset));
        if (token.kind == TokenKind::Word) {
            written = withFoldedCase(written); // as the server keeps names, and its catalogue wants them
        }
        return written;
    }

    bool stands(const Phrase& phrase) const {
        for (std::size_t i = 0; i < phrase.tokens.size(); ++i) {
            const Token& token = tokens_[at_ + i];
            if (token.kind == TokenKind::End ||
                !(token.is(phrase.tokens[i]) ||
                  (token.kind == TokenKind::Integer && token.text == phrase.tokens[i]))) {
                return false;
            }
        }
        return true;
    }

    std::string_view text_;
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
};

class PostgresDialectSession final : public ado::ForwardingSession {
public:
    using ForwardingSession::ForwardingSession;

    ado::StatementResult execute(std::string_view text, std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& settings) override {
        return ForwardingSession::execute(inPostgresDialect(text), parameters, settings);
    }
    std::unique_ptr<ado::PreparedStatement> prepare(std::string_view text,
                                                    std::span<const ado::ParameterInfo> parameters) override {
        return ForwardingSession::prepare(inPostgresDialect(text), parameters);
    }
};

} // namespace

std::string inPostgresDialect(std::string_view text) {
    const auto whole = wholeStatements().find(text);
    return whole != wholeStatements().end() ? whole->second : Translation(text).translated();
}

std::unique_ptr<ado::Session> PostgresDialectDriver::open(const std::string& connectionString,
                                                          const std::string& user,
                                                          const std::string& password) {
    auto session = inner_->open(connectionString, user, password);
    session->execute("SET search_path = pg_temp, public", {}, {}); // what is made belongs to the session
    return std::make_unique<PostgresDialectSession>(inner_, std::move(session));
}

} // namespace veldran::test
