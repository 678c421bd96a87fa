#include "Faults/FaultyRun.h"
#include "Support/Document.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// Sets a variable of the environment for a while.
class Variable {
  public:
    Variable(const char* what, const std::string& value) : name(what) {
        if (const char* const before = std::getenv(name)) old = before;
        setenv(name, value.c_str(), 1);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() {
        if (old)
            setenv(name, old->c_str(), 1);
        else
            unsetenv(name);
    }

  private:
    const char* name;
    std::optional<std::string> old;
};

/// Runs a bake that shows its dependencies, with temporary files and a Graphviz of its own that
/// notes that it was called.
class RigbakeGraphFault : public testing::Test {
  protected:
    RigbakeGraphFault() {
        fs::create_directories(programs.Path("bin"));
        for (const char* name : {"unflatten", "dot"}) {
            const fs::path program = programs.Path(std::string("bin/") + name);
            std::ofstream(program) << "#!/bin/sh\n: >>drawn\n";
            fs::permissions(program, fs::perms::owner_all);
        }
    }

    struct Result {
        long calls = 0;
        bool isDrawn = false;
        std::vector<std::string> graphs;  // the files that stay
    };
    Result Bake(const Fault& fault) const {
        const TemporaryFolder folder;
        folder.WriteFile("a.qeli", Document("<scene><joint name=\"a\"><joint name=\"b\"/></joint>"
                                            "</scene>"));
        const Variable folderOfFiles("TMPDIR", folder.Path());
        const Variable folderOfPrograms("PATH", programs.Path("bin"));
        Result result;
        result.calls = RunWithFault(folder.Path(), "rigbake",
                                    {"-in", "a.qeli", "-out", "a", "-debugDependencies"}, fault)
                           .count;
        result.isDrawn = folder.Has("drawn");
        for (const auto& entry : fs::directory_iterator(folder.Path()))
            if (entry.path().extension() == ".dot")
                result.graphs.push_back(folder.ReadFile(entry.path().filename().string()));
        return result;
    }

  private:
    const TemporaryFolder programs;
};

}  // namespace

TEST_F(RigbakeGraphFault, AGraphThatIsNotWholeIsNeitherDrawnNorKept) {
    const Result whole = Bake({Fault::Kind::Call});
    EXPECT_TRUE(whole.isDrawn);
    ASSERT_EQ(whole.graphs.size(), 1u);
    EXPECT_TRUE(whole.graphs[0].ends_with("\n}\n")) << whole.graphs[0];
    ASSERT_GT(whole.calls, 10);
    bool wasLeftOut = false;
    for (long number = 1; number <= whole.calls; ++number)
        for (const bool isLasting : {false, true}) {
            SCOPED_TRACE("call " + std::to_string(number) + (isLasting ? " and all behind" : ""));
            const Result result = Bake({Fault::Kind::Call, number, isLasting, ENOSPC});
            for (const std::string& graph : result.graphs) EXPECT_EQ(graph, whole.graphs[0]);
            EXPECT_GE(result.graphs.size(), result.isDrawn ? 1u : 0u);
            wasLeftOut = wasLeftOut || !result.isDrawn;
        }
    EXPECT_TRUE(wasLeftOut);
}
