#include "EndToEnd/ProgramRun.h"
#include "Support/MemoryLimit.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

/// Names that Make and Ninja see as they are.
const std::vector<std::string> kTaken = {
    "plain.dds", "two words", "a  b",    " b",       "c#1",        "#",        "c$1",
    "$x)y",      "$",         "x:y",     "c:/x y/z", ":b",         "a: b",     "a\\b",
    "a\\ b",     "a\\\\ b",   "\\b",     "a~",       "x/~y",       "x ~y",     "tex (2).dds",
    "(b).x",     "a(b",       "(c",      "a!b",      "a,b",        "{a,b}",    "a]b",
    "a@b",       "+b",        "-b",      "a%b",      "B\xC3\xA4r", "export",   "include",
    "a define",  "-Lx",       "x/-l",    ".P1",      ".Phony",     "a.PHONY",  "a$",
    "x/define",  "../lib",    ".hidden", "\xE4.dds", "undefined",  "/abs/x",   "c) d",
    "a\\xb",     "a# b",      "ifdef",   "private",  "define x",   "override", ".cache",
    "a.c",       "x/.c",      ".c.",     ".c.x",     ".x.c",       ".c.c.c",   "..c",
    ".sh~"};

constexpr const char* kNoMakeAndNinja = "left out: Make and Ninja are not both here";

struct Refused {
    const char* name;
    const char* fault;
};

/// Names that one of the two takes for something else.
const Refused kRefused[] = {{"s2.qeli;id>pwned", "it has the character ';'"},
                            {"x;", "it has the character ';'"},
                            {"a|b", "it has the character '|'"},
                            {"a=b", "it has the character '='"},
                            {"!=id", "it has the character '='"},
                            {"a*", "it has the character '*'"},
                            {"a?b", "it has the character '?'"},
                            {"tex[1].dds", "it has the character '['"},
                            {"a<b", "it has the character '<'"},
                            {"a>b", "it has the character '>'"},
                            {"a^b", "it has the character '^'"},
                            {"a`b", "it has the character '`'"},
                            {"a\"b", "it has the character '\"'"},
                            {"a'b", "it has the character '''"},
                            {"a&b", "it has the character '&'"},
                            {"~", "it starts with the character '~'"},
                            {"~root/x", "it starts with the character '~'"},
                            {"b ", "it ends with the character ' '"},
                            {"b:", "it ends with the character ':'"},
                            {"lib(x)", "it ends with the character ')'"},
                            {"c\\:d", "it has the character ':' behind a backslash"},
                            {"\\#", "it has the character '#' behind a backslash"},
                            {"c\\#d", "it has the character '#' behind a backslash"},
                            {"c\\$d", "it has the character '$' behind a backslash"},
                            {"$(shell", "it has the character '(' behind a dollar"},
                            {"a${b}", "it has the character '{' behind a dollar"},
                            {"-lm", "it starts with -l, as a library does"},
                            {".PHONY", "it is a word of Make's"},
                            {".SECONDARY_Z", "it is a word of Make's"},
                            {".sh", "it is a rule of Make's"},
                            {".c.o", "it is a rule of Make's"},
                            {".lm.m", "it is a rule of Make's"},
                            {"define", "it is a word of Make's"},
                            {"undefine", "it is a word of Make's"},
                            {"b\\", "it ends with the character '\\'"}};

std::string InMarkup(const std::string& name) {
    std::string text;
    for (const char c : name) {
        if (c == '&' || c == '<' || c == '"' || static_cast<unsigned char>(c) < 0x20)
            text += "&#" + std::to_string(static_cast<int>(c)) + ";";
        else
            text += c;
    }
    return text;
}

class QeliDependencyFile : public testing::Test {
  protected:
    /// Writes a.qeli, which depends on files of these names. Slashes and folders in them are as the
    /// list of files has them.
    void WriteDocument(const std::vector<std::string>& names) const {
        std::string references;
        for (const std::string& name : names)
            references += "<reference name=\"a\" uri=\"" + InMarkup(name) + "\" namespace=\"p\"/>";
        folder.WriteFile("a.qeli", Document("<scene/>" + references));
    }
    ProgramResult Run(const std::string& target, const std::string& document = "a.qeli") const {
        return folder.Run("qeli", {"files", document, "--depfile", "a.d", "--target", target});
    }
    void ExpectRefusal(const ProgramResult& run, const std::string& errors) const {
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, errors);
        EXPECT_FALSE(folder.Has("a.d"));
    }
    bool Shell(const std::string& command) const {
        return std::system(
                   (kShellWithoutLimit + ("cd '" + folder.Path() + "' && ") + command).c_str()) ==
               0;
    }
    /// What Make takes for the target's dependencies, all in one line.
    std::string SeenByMake(const std::string& target) const {
        folder.WriteFile("Makefile", "include a.d\n");
        Shell("make -rRpqn >database 2>errors");
        const std::string database = folder.ReadFile("database");
        const std::string start = "\n" + target + ": ";
        const std::size_t begin = database.find(start, database.find("\n# Files\n"));
        if (begin == std::string::npos) return "no target";
        const std::size_t end = database.find('\n', begin + 1);
        const std::size_t block = database.find("\n\n", end);
        if (database.substr(end, block - end).find("recipe to execute") != std::string::npos)
            return "a recipe";
        return database.substr(begin + start.size(), end - begin - start.size());
    }
    /// What Ninja takes for them, each in a line.
    std::string SeenByNinja() const {
        folder.WriteFile("build.ninja",
                         "rule r\n  command = cp a.d copy\n  depfile = copy\n  deps = gcc\n"
                         "build out: r\n");
        EXPECT_TRUE(Shell("rm -f .ninja_deps && ninja >errors && ninja -t deps >deps"))
            << folder.ReadFile("errors");
        const std::string deps = folder.ReadFile("deps");
        return deps.substr(deps.find('\n') + 1);
    }
    bool HasMakeAndNinja() const {
        return !kIsWindows &&
               Shell("make --version >version 2>&1 && ninja --version >version 2>&1");
    }

    RunFolder folder;
};

}  // namespace

TEST_F(QeliDependencyFile, ANameThatMakeOrNinjaTakesForSomethingElseIsRefusedAsATarget) {
    WriteDocument({});
    const std::string words = "a.qeli: error: A rule for Make and Ninja cannot hold the target '";
    for (const Refused& refused : kRefused)
        ExpectRefusal(Run(refused.name), words + refused.name + "': " + refused.fault + "\n");
    ExpectRefusal(Run("v=1/hero.bin"), words + "v=1/hero.bin': it has the character '='\n");
    ExpectRefusal(Run("a%b"), words + "a%b': it has the character '%'\n");
    ExpectRefusal(Run("a\nb"), words + "a\\x0Ab': it has the character \\x0A\n");
    ExpectRefusal(Run("a\rb"), words + "a\\x0Db': it has the character \\x0D\n");
    ExpectRefusal(Run("a\tb\n"), words + "a\\x09b\\x0A': it has the character \\x09\n");
    ExpectRefusal(Run("\x01"), words + "\\x01': it has the character \\x01\n");
    ExpectRefusal(Run("\x1F"), words + "\\x1F': it has the character \\x1F\n");
    ExpectRefusal(Run("\x7F"), words + "\\x7F': it has the character \\x7F\n");
}

TEST_F(QeliDependencyFile, NothingIsHiddenByADotAndASlashInFrontOfIt) {
    WriteDocument({});
    const Refused refusals[] = {{"././/.PHONY", "it is a word of Make's"},
                                {"./.y.c", "it is a rule of Make's"},
                                {".///./.sh", "it is a rule of Make's"},
                                {"./~root/x", "it starts with the character '~'"},
                                {".//-lm", "it starts with -l, as a library does"}};
    for (const Refused& refused : refusals)
        ExpectRefusal(Run(refused.name),
                      "a.qeli: error: A rule for Make and Ninja cannot hold the target '" +
                          std::string(refused.name) + "': " + refused.fault + "\n");
}

TEST_F(QeliDependencyFile, SuchANameIsRefusedAsOneThatTheDocumentLists) {
    const std::string words =
        "a.qeli: error: A rule for Make and Ninja cannot hold the file name '";
    for (const Refused& refused : kRefused) {
        // In a document a backslash parts folders.
        const std::string name = refused.name;
        if (name.find('\\') != std::string::npos) continue;
        WriteDocument({"fine", name});
        ExpectRefusal(Run("t"), words + name + "': " + refused.fault + "\n");
    }
    WriteDocument({"a\nb"});
    ExpectRefusal(Run("t"), words + "a\\x0Ab': it has the character \\x0A\n");
}

TEST_F(QeliDependencyFile, SuchANameIsRefusedAsTheDocumentsOwn) {
    if (kIsWindows) GTEST_SKIP() << "left out: no file is called so here";
    const std::string words = ": error: A rule for Make and Ninja cannot hold the file name '";
    for (const Refused& refused : kRefused) {
        const std::string name = refused.name;
        if (name[0] == '-' || name.find_first_of("/~") != std::string::npos) continue;
        folder.WriteFile(name, Document("<scene/>"));
        ExpectRefusal(Run("t", name), name + words + name + "': " + refused.fault + "\n");
    }
    folder.WriteFile("a\nb", Document("<scene/>"));
    ExpectRefusal(Run("t", "a\nb"), "a\nb" + words + "a\\x0Ab': it has the character \\x0A\n");
}

TEST_F(QeliDependencyFile, NoNameIsThatOfARuleWhichMakeHas) {
    if (!HasMakeAndNinja()) GTEST_SKIP() << kNoMakeAndNinja;
    Shell("make -p -f /dev/null >database 2>errors");
    std::istringstream database(folder.ReadFile("database"));
    std::set<std::string> names;
    for (std::string line; std::getline(database, line);)
        if (line.starts_with("SUFFIXES := ")) {
            std::istringstream suffixes(line.substr(12));
            for (std::string suffix; suffixes >> suffix;) names.insert(suffix);
        } else if (line.starts_with('.') && line.ends_with(':')) {
            names.insert(line.substr(0, line.size() - 1));
        }
    EXPECT_GT(names.size(), 60u);
    for (const std::string& name : names) {
        EXPECT_EQ(Run(name).status, 1) << name;
        folder.WriteFile(name, Document("<scene/>"));
        EXPECT_EQ(Run("t", name).status, 1) << name;
        EXPECT_FALSE(folder.Has("a.d")) << name;
    }
}

TEST_F(QeliDependencyFile, ARefusalLeavesTheDependencyFileAsItWas) {
    WriteDocument({"a;b"});
    folder.WriteFile("a.d", "old");
    EXPECT_EQ(Run("t").status, 1);
    EXPECT_EQ(folder.ReadFile("a.d"), "old");
}

TEST_F(QeliDependencyFile, MakeAndNinjaSeeAsTargetEveryNameThatIsTaken) {
    if (!HasMakeAndNinja()) GTEST_SKIP() << kNoMakeAndNinja;
    WriteDocument({});
    for (const std::string& name : kTaken) {
        if (name[0] == '-' || name.find('%') != std::string::npos) continue;
        ASSERT_EQ(Run(name).status, 0) << name;
        EXPECT_EQ(SeenByMake(name), "a.qeli") << name;
        EXPECT_EQ(SeenByNinja(), "    a.qeli\n\n") << name;
    }
}

TEST_F(QeliDependencyFile, MakeAndNinjaSeeAsTheDocumentEveryNameThatIsTaken) {
    if (!HasMakeAndNinja()) GTEST_SKIP() << kNoMakeAndNinja;
    for (const std::string& name : kTaken) {
        if (name[0] == '-' || name.find('/') != std::string::npos) continue;
        folder.WriteFile(name, Document("<scene/><reference name=\"a\" uri=\"of others\" "
                                        "namespace=\"p\"/>"));
        ASSERT_EQ(Run("t", name).status, 0) << name;
        EXPECT_EQ(SeenByMake("t"), name + " of others");
        EXPECT_EQ(SeenByNinja(), "    " + name + "\n    of others\n\n");
    }
}

TEST_F(QeliDependencyFile, MakeAndNinjaSeeEveryListedNameThatIsTaken) {
    if (!HasMakeAndNinja()) GTEST_SKIP() << kNoMakeAndNinja;
    std::vector<std::string> names;
    std::string inMake = "a.qeli", inNinja = "    a.qeli\n";
    for (const std::string& name : kTaken) {
        // A document's names have slashes alone, and single bytes.
        if (name.find('\\') != std::string::npos || name.find_first_of("\xC3\xE4") < 4) continue;
        names.push_back(name);
        inMake += " " + name;
        inNinja += "    " + name + "\n";
    }
    EXPECT_GT(names.size(), 30u);
    WriteDocument(names);
    ASSERT_EQ(Run("t").status, 0);
    EXPECT_EQ(SeenByMake("t"), inMake);
    EXPECT_EQ(SeenByNinja(), inNinja + "\n");
}
