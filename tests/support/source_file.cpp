#include "tests/support/source_file.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace veldran::test {

std::string sourceFile(const std::string& path) {
    std::ifstream stream(VELDRAN_SOURCE_DIR "/" + path, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace veldran::test
