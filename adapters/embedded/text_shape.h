#pragma once

#include "adapters/embedded/types.h"
#include "adapters/tsql/ast.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Texts that say the same of other codes share one plan, as on the server.
///
/// The shape of a text is the text without the characters of its literals: of those it keeps how many there
/// are and whether the last is a blank. So texts of one shape have the same tokens at the same places and
/// literals of the same types, and what is bound of one of them serves the others, as long as binding looks
/// at no literal. It looks at none that is compared with a column of a table, and at one that is written to
/// a column only to see whether it fits; these become markers, and each text brings its own values for them.
/// A text with any other literal is bound by itself; so are several statements, what defines something, and
/// a text with markers of its own.
///
/// Where the number of characters does not tell what there is to know, nothing is shared: of an empty
/// literal, of one with a quote or a control character (places in the text are counted in columns and
/// lines), and of one with a blank at its end that is written, because it fits where its blanks do not.
namespace veldran::embedded {

struct TextShape {
    struct Literal {
        std::string_view value; ///< a piece of the text
        std::size_t end;        ///< behind its closing quote
    };
    std::string text;              ///< the same for all texts of the shape
    std::vector<Literal> literals; ///< in their order; empty when the text has none or shares nothing
};

/// Only pairs the quotes of the text: whether what stands between them are literals, its tree says.
TextShape shapeOf(std::string_view text);

/// Puts markers in the place of the literals and gives their types; none, and the tree as it was, when the
/// text that it was read from has to be bound by itself.
std::vector<SqlType> takeOutLiterals(tsql::Batch& batch, const TextShape& shape);

} // namespace veldran::embedded
