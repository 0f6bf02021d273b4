#pragma once

#include <QColor>

namespace veldran::qt {

/// `over` laid on `under`, covering it by so many per cent.
inline QColor blended(const QColor& over, const QColor& under, int percent) {
    const auto mix = [percent](int a, int b) { return (a * percent + b * (100 - percent)) / 100; };
    return QColor(mix(over.red(), under.red()), mix(over.green(), under.green()),
                  mix(over.blue(), under.blue()));
}

} // namespace veldran::qt
