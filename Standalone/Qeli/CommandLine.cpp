#include "CommandLine.h"

#include "Check.h"
#include "CompanionCommands.h"
#include "Convert.h"
#include "Files.h"
#include "Tree.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr int kBadDocument = 1;

struct Arguments {
    std::string in;
    std::string out;
    std::vector<std::string> documents;
    TreeOptions tree;
    std::string dependencyFile;
    std::string target;
};

std::string RefuseUnknownType(const std::string& type) {
    const std::vector<std::string> known = KnownTypes();
    if (std::find(known.begin(), known.end(), type) != known.end()) return {};
    std::string text = "There is no type \"" + type + "\". The types are";
    for (const std::string& name : known) text += " " + name;
    return text + ".";
}

std::string RefuseNegative(const std::string& number) {
    return number.starts_with('-') ? number + " is below 0" : std::string();
}

std::string RefuseEmpty(const std::string& name) {
    return name.empty() ? "The name is empty" : std::string();
}

void AddConvert(CompanionCommands& commands, Arguments& arguments) {
    CLI::App& command = commands.Add(
        "convert",
        "Write a document as one of the current version. Every version since 1_0_4 is brought up "
        "to date. OUT may be IN. Relative file names are rewritten when OUT stands in another "
        "folder.",
        [&] {
            Convert(arguments.in, arguments.out);
            return 0;
        });
    AddRequired(command, "IN", arguments.in, "The document to read");
    AddRequired(command, "OUT", arguments.out, "The document to write; - is standard output");
}

void AddCheck(CompanionCommands& commands, Arguments& arguments) {
    CLI::App& command = commands.Add(
        "check",
        "Load documents and say which are fine, in what version they are and whether that needs "
        "the update, and what is wrong.",
        [&] { return Check(arguments.documents) ? 0 : kBadDocument; });
    AddRequired(command, "IN", arguments.documents, "The documents to read");
}

void AddTree(CompanionCommands& commands, Arguments& arguments) {
    CLI::App& command =
        commands.Add("tree", "Show the objects of a document with types and names.", [&] {
            PrintTree(arguments.in, arguments.tree);
            return 0;
        });
    AddRequired(command, "IN", arguments.in, "The document to read");
    command
        .add_option("--type", arguments.tree.types,
                    "Show objects of this type alone; may be given several times")
        ->type_name("TYPE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(RefuseUnknownType);
    command.add_option("--depth", arguments.tree.depth, "Show this many levels below the root")
        ->type_name("N")
        ->check(RefuseNegative);
}

void AddFiles(CompanionCommands& commands, Arguments& arguments) {
    CLI::App& command = commands.Add("files", "List the files that a document depends on.", [&] {
        if (arguments.dependencyFile.empty())
            PrintFiles(arguments.in);
        else
            WriteDependencyFile(arguments.in, arguments.dependencyFile, arguments.target);
        return 0;
    });
    AddRequired(command, "IN", arguments.in, "The document to read");
    CLI::Option* const file = command.add_option(
        "--depfile", arguments.dependencyFile,
        "Write them, with the document, as a rule for Make and Ninja; - is standard output");
    CLI::Option* const target =
        command.add_option("--target", arguments.target, "What the rule makes")->type_name("NAME");
    file->type_name("OUT")->needs(target)->check(RefuseEmpty);
    target->needs(file)->check(RefuseEmpty);
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv) {
    CompanionCommands commands(
        "qeli", "looks into scene documents, checks them and brings them up to date.",
        "Exit status: 0 for success, 1 for a document that cannot be read or written, 2 for "
        "wrong usage.");
    Arguments arguments;
    AddConvert(commands, arguments);
    AddCheck(commands, arguments);
    AddTree(commands, arguments);
    AddFiles(commands, arguments);
    return commands.Run(argc, argv);
}
