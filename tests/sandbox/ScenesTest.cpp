#include "sandbox/SandboxFixture.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace zephyr::test {
namespace {

std::vector<std::filesystem::path> scenes()
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(ZEPHYR_SANDBOX_SCENES)) {
        files.push_back(entry.path());
    }
    return files;
}

class Scenes : public testing::Test
{
protected:
    /// The lines of a log that answer a mistake.
    static Lines complaints(const ConsoleDriver& driver)
    {
        Lines found;
        for (const std::string& line : driver.log()) {
            for (const char* const part :
                 {"Invalid usage", "Unrecognized", "not a ", "No room", "Can't", "ERROR"}) {
                if (line.find(part) != std::string::npos) {
                    found.push_back(line);
                }
            }
        }
        return found;
    }

    static std::set<std::u32string> aliasNames(sandbox::Sandbox& sandbox)
    {
        std::set<std::u32string> names;
        sandbox.console().forEachAlias(
            [&](const std::u32string& name, const std::vector<std::u32string>&) { names.insert(name); });
        return names;
    }
};

TEST_F(Scenes, AreFour) { EXPECT_EQ(4U, scenes().size()); }

TEST_F(Scenes, RunWithoutAMistakeAndSetWindObstaclesParticlesAndAliases)
{
    for (const std::filesystem::path& file : scenes()) {
        SCOPED_TRACE(file);
        sandbox::Sandbox sandbox;
        const ConsoleDriver driver(sandbox.console());
        sandbox.console().appendRunpath(file.parent_path());
        const std::vector<sandbox::Obstacle> first = sandbox.simulation().obstacles();
        ASSERT_TRUE(sandbox.console().runFile(file));
        const std::set<std::u32string> names = aliasNames(sandbox);
        for (const std::u32string& name : names) {
            sandbox.console().execute(name);
        }

        EXPECT_EQ(Lines(), complaints(driver));
        EXPECT_EQ(2U, names.size());
        EXPECT_NE(first, sandbox.simulation().obstacles());
        EXPECT_NE(sandbox::kDefaultParticleCount, sandbox.simulation().particles().size());
    }
}

TEST_F(Scenes, SayAtTheTopWhatTheyShowAndWhichAliasesTheySet)
{
    for (const std::filesystem::path& file : scenes()) {
        SCOPED_TRACE(file);
        std::ifstream stream(file);
        const std::string text(std::istreambuf_iterator<char>(stream), {});
        const std::string comment = text.substr(0, text.find("\nsim "));
        EXPECT_TRUE(comment.starts_with("// "));

        sandbox::Sandbox sandbox;
        sandbox.console().runFile(file);
        for (const std::u32string& name : aliasNames(sandbox)) {
            EXPECT_NE(std::string::npos, comment.find('"' + StringUtil::toString(name) + '"'));
        }
    }
}

} // namespace
} // namespace zephyr::test
