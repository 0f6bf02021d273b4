#include "tests/tsql/invariant.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto wrong = veldran::tsql::test::brokenInvariant(text)) {
        std::fprintf(stderr, "%s\n", wrong->c_str());
        std::abort();
    }
    return 0;
}
