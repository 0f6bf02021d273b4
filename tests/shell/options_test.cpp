#include "shell/options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veldran::test {
namespace {

std::optional<int> parse(std::vector<std::string> arguments, shell::Options& options) {
    arguments.insert(arguments.begin(), "veldran-shell");
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    return shell::parseOptions(static_cast<int>(argv.size()), argv.data(), options);
}

TEST(Options, AreAllAbsentUnlessGiven) {
    shell::Options options;
    EXPECT_EQ(parse({}, options), std::nullopt);
    EXPECT_FALSE(options.companyFile || options.component || options.database || options.tour ||
                 options.demoReset);
}

TEST(Options, TakePathsWithBlanksWhole) {
    shell::Options options;
    EXPECT_EQ(
        parse({"--company", "la mia ditta.json", "--component=x y.so", "--database", "d.vdb", "--demo-reset"},
              options),
        std::nullopt);
    EXPECT_EQ(options.companyFile, "la mia ditta.json");
    EXPECT_EQ(options.component, "x y.so");
    EXPECT_EQ(options.database, "d.vdb");
    EXPECT_TRUE(options.demoReset);
    EXPECT_EQ(parse({"--tour", "a b"}, options), std::nullopt);
    EXPECT_EQ(options.tour, "a b");
}

TEST(Options, KeepTheGuidedTourOutOfACompanysBooks) {
    shell::Options options;
    testing::internal::CaptureStderr();
    EXPECT_EQ(parse({"--company", "azienda.json", "--tour", "immagini"}, options), 2);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "Il giro guidato lavora solo sulla ditta dimostrativa: --tour e --company non vanno insieme.\n");
}

TEST(Options, EndTheProgramWithoutErrorForHelp) {
    shell::Options options;
    testing::internal::CaptureStdout();
    EXPECT_EQ(parse({"--help"}, options), 0);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("--company"), std::string::npos);
}

TEST(Options, EndTheProgramWithAnErrorForAnUnknownOption) {
    shell::Options options;
    testing::internal::CaptureStderr();
    const auto code = parse({"--dita", "1"}, options);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("--dita"), std::string::npos);
    ASSERT_TRUE(code);
    EXPECT_NE(*code, 0);
}

} // namespace
} // namespace veldran::test
