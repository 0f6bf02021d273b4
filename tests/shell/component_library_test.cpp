#include "shell/component_library.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldran::test {
namespace {

using shell::ComponentError;
using shell::ComponentLibrary;
using testing::AllOf;
using testing::HasSubstr;

std::string failureOf(const std::filesystem::path& file) {
    try {
        ComponentLibrary::load(file);
    } catch (const ComponentError& error) {
        return error.what();
    }
    return {};
}

TEST(ComponentLibrary, IsLoadedFromBesideTheProgram) {
    const auto library =
        ComponentLibrary::load(shell::Places::ofThisProgram().program / ComponentLibrary::fileName());
    EXPECT_TRUE(library.create("CLSCI_VELDRAN"));
    EXPECT_THROW(library.create("CLSCI_ALTRA"), ComponentError);
}

TEST(ComponentLibrary, IsMissedByItsName) {
    EXPECT_THAT(failureOf("/manca/libveldran.so"), HasSubstr("«/manca/libveldran.so» non esiste"));
}

TEST(ComponentLibrary, IsRefusedWhenItIsNoLibrary) {
    const ScratchFolder folder;
    EXPECT_THAT(failureOf(folder.write("finto.so", "testo")),
                AllOf(HasSubstr("finto.so»"), HasSubstr("non può essere caricato")));
}

TEST(ComponentLibrary, IsRefusedWhenItExportsNoClassFactory) {
    const auto other = shell::Places::ofThisProgram().program / "libveldran_platform.so";
    EXPECT_THAT(failureOf(other),
                AllOf(HasSubstr("non è un componente"), HasSubstr("VeldranGetClassFactory")));
}

} // namespace
} // namespace veldran::test
