#include "shell/places.h"

#include "platform/text.h"

#include <QCoreApplication>
#include <QStandardPaths>

namespace veldran::shell {

Places Places::ofThisProgram() {
    Places places;
    places.program = QCoreApplication::applicationDirPath().toStdString();
    const std::filesystem::path beside = places.program / "data";
    const std::filesystem::path shared = std::filesystem::exists(beside)
                                             ? beside
                                             : places.program.parent_path() / "share" / "veldran" / "data";
    places.data = shared;
    places.database = shared.parent_path() / "database";
    places.user = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation).toStdString();
    return places;
}

std::string Places::expand(std::string text) const {
    text = replaceAll(std::move(text), "${DATI}", data.string());
    return replaceAll(std::move(text), "${UTENTE}", user.string());
}

std::filesystem::path Places::resolve(const std::string& path, const std::filesystem::path& base) const {
    const std::filesystem::path expanded = expand(path);
    return (expanded.is_absolute() ? expanded : base / expanded).lexically_normal();
}

} // namespace veldran::shell
