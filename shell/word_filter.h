#pragma once

#include <QString>
#include <QStringList>

namespace veldran::shell {

/// `text` without accents and case, for comparisons: "Àccóntò" becomes "acconto".
QString folded(const QString& text);

/// Words that must all be in a text, in any order, as parts of its words.
class WordFilter {
public:
    explicit WordFilter(const QString& typed);
    bool isEmpty() const { return words_.isEmpty(); }
    /// \param foldedText as `folded` returns it
    bool accepts(const QString& foldedText) const;

private:
    QStringList words_;
};

} // namespace veldran::shell
