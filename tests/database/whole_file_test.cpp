#include "database/generator/source_error.h"
#include "database/generator/whole_file.h"
#include "tests/support/test_database.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace veldran::chartgen {
namespace {

class WholeFile : public testing::Test {
protected:
    std::string path() const { return (directory_.path() / "out.sql").string(); }
    std::string content() const {
        std::ifstream stream(path(), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    long files() const { return std::distance(std::filesystem::directory_iterator(directory_.path()), {}); }

    test::TemporaryDirectory directory_;
};

TEST_F(WholeFile, HoldsWhatWasWritten) {
    writeWholeFile(path(), [](std::ostream& out) { out << "SELECT 1\n"; });
    EXPECT_EQ(content(), "SELECT 1\n");
    EXPECT_EQ(files(), 1);
}

TEST_F(WholeFile, KeepsTheOlderFileWhenWritingFails) {
    writeWholeFile(path(), [](std::ostream& out) { out << "older"; });
    const auto failing = [](std::ostream& out) {
        out << "half";
        throw std::runtime_error("refused");
    };
    EXPECT_THROW(writeWholeFile(path(), failing), std::runtime_error);
    EXPECT_EQ(content(), "older");
    EXPECT_EQ(files(), 1);
}

TEST_F(WholeFile, RefusesAPlaceThatCannotBeWritten) {
    EXPECT_THROW(writeWholeFile("/nonexistent/out.sql", [](std::ostream&) {}), SourceError);
    std::filesystem::create_directory(path());
    EXPECT_THROW(writeWholeFile(path(), [](std::ostream&) {}), SourceError);
    EXPECT_EQ(files(), 1);
}

TEST_F(WholeFile, RefusesAStreamThatBroke) {
    EXPECT_THROW(writeWholeFile(path(), [](std::ostream& out) { out.setstate(std::ios::badbit); }),
                 SourceError);
    EXPECT_EQ(files(), 0);
}

} // namespace
} // namespace veldran::chartgen
