#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace veldran::qt {

/// Text is UTF-8 in the control objects and UTF-16 in the views.
inline QString toQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string fromQt(const QString& text) {
    return text.toStdString();
}

} // namespace veldran::qt
