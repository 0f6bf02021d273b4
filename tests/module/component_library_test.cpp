// The component's library as a host finds it.
#include "host/class_factory.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace veldran {

namespace {

std::string outputOf(const std::string& command) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string text;
    std::array<char, 256> buffer{};
    while (pipe && std::fgets(buffer.data(), static_cast<int>(buffer.size()), pipe.get()) != nullptr) {
        text += buffer.data();
    }
    return text;
}

TEST(ComponentLibrary, ExportsItsClassFactoryAndNothingElse) {
    std::istringstream table(
        outputOf(std::string(VELDRAN_NM) + " -D --defined-only '" + VELDRAN_COMPONENT_FILE + "'"));
    std::vector<std::string> exported;
    for (std::string address, kind, name; table >> address >> kind >> name;) {
        exported.push_back(kind + " " + name);
    }
    EXPECT_EQ(exported, std::vector<std::string>{std::string("T ") + classFactorySymbol});
}

TEST(ComponentLibrary, CreatesTheComponentByItsNameBlindToCase) {
    void* library = dlopen(VELDRAN_COMPONENT_FILE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    const auto getClassFactory = reinterpret_cast<GetClassFactory>(dlsym(library, classFactorySymbol));
    ASSERT_NE(getClassFactory, nullptr);
    ClassFactory* factory = getClassFactory();
    ASSERT_NE(factory, nullptr);
    EXPECT_EQ(getClassFactory(), factory) << "one factory for the life of the library";
    EXPECT_EQ(factory->CreateInstance("CLSCI_ALTRA"), nullptr);
    EXPECT_EQ(factory->CreateInstance(""), nullptr);
    {
        const auto one = factory->CreateInstance("CLSCI_VELDRAN");
        const auto other = factory->CreateInstance("clsci_veldran");
        ASSERT_NE(one, nullptr);
        ASSERT_NE(other, nullptr);
        EXPECT_NE(one, other);
        EXPECT_EQ(one->GetActiveDll().get(), one.get());
    }
    EXPECT_EQ(dlclose(library), 0);
}

TEST(ComponentLibrary, NeedsNothingButThePlatformAndTheLanguagesLibraries) {
    std::istringstream table(outputOf("readelf -d '" + std::string(VELDRAN_COMPONENT_FILE) + "'"));
    int needed = 0;
    for (std::string line; std::getline(table, line);) {
        if (line.find("(NEEDED)") == std::string::npos) {
            continue;
        }
        ++needed;
        const bool known =
            line.find("[libveldran_platform.so") != std::string::npos ||
            line.find("[libstdc++.so") != std::string::npos ||
            line.find("[libgcc_s.so") != std::string::npos || line.find("[libm.so") != std::string::npos ||
            line.find("[libc.so") != std::string::npos || line.find("[libasan.so") != std::string::npos ||
            line.find("[libubsan.so") != std::string::npos;
        EXPECT_TRUE(known) << line;
    }
    EXPECT_GT(needed, 0);
}

} // namespace

} // namespace veldran
