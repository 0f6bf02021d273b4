#include "shell/word_filter.h"

#include <algorithm>

namespace veldran::shell {

QString folded(const QString& text) {
    if (std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; })) {
        return text.toLower(); // nearly every description; the long way costs ten times as much
    }
    QString result;
    result.reserve(text.size());
    for (const QChar c : text.normalized(QString::NormalizationForm_KD)) {
        if (c.category() != QChar::Mark_NonSpacing) {
            result += c;
        }
    }
    return result.toCaseFolded();
}

WordFilter::WordFilter(const QString& typed) : words_(folded(typed).split(u' ', Qt::SkipEmptyParts)) {}

bool WordFilter::accepts(const QString& foldedText) const {
    return std::all_of(words_.begin(), words_.end(),
                       [&](const QString& word) { return foldedText.contains(word); });
}

} // namespace veldran::shell
