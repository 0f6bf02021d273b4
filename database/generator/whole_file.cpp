#include "database/generator/whole_file.h"

#include "database/generator/source_error.h"

#include <filesystem>
#include <fstream>

namespace veldran::chartgen {
namespace {

void fill(const std::string& aside, const std::string& path,
          const std::function<void(std::ostream&)>& write) {
    std::ofstream out(aside, std::ios::binary);
    if (!out)
        throw SourceError("cannot write " + path);
    write(out);
    out.close();
    if (!out)
        throw SourceError("cannot write " + path);
}

} // namespace

void writeWholeFile(const std::string& path, const std::function<void(std::ostream&)>& write) {
    const std::string aside = path + ".part";
    std::error_code problem;
    try {
        fill(aside, path, write);
    } catch (...) {
        std::filesystem::remove(aside, problem);
        throw;
    }
    std::filesystem::rename(aside, path, problem);
    if (problem) {
        std::error_code ignored; // the refusal below is what matters
        std::filesystem::remove(aside, ignored);
        throw SourceError("cannot write " + path + ": " + problem.message());
    }
}

} // namespace veldran::chartgen
