#include "CommandLine.h"

#include "Check.h"
#include "Convert.h"
#include "Files.h"
#include "Tree.h"

#include <VokLib/Library/VokLib.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr int kBadDocument = 1;
constexpr int kWrongUsage = 2;
constexpr const char* kSeeHelp = "Run qeli --help for more information.\n";

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

/// The parser would only say that some command is missing.
bool IsUnknownCommand(const CLI::App& app, int argc, const char* const* argv) {
    if (argc < 2 || argv[1][0] == '-') return false;
    return app
        .get_subcommands([name = std::string(argv[1])](const CLI::App* command) {
            return command->get_name() == name;
        })
        .empty();
}

CLI::App* AddConvert(CLI::App& app, Arguments& arguments) {
    CLI::App* const command = app.add_subcommand(
        "convert",
        "Write a document as one of the current version. Every version since 1_0_4 is brought up "
        "to "
        "date. OUT may be IN. Relative file names are rewritten when OUT stands in another "
        "folder.");
    command->add_option("IN", arguments.in, "The document to read")->required()->type_name("");
    command->add_option("OUT", arguments.out, "The document to write; - is standard output")
        ->required()
        ->type_name("");
    return command;
}

CLI::App* AddCheck(CLI::App& app, Arguments& arguments) {
    CLI::App* const command = app.add_subcommand(
        "check",
        "Load documents and say which are fine, in what version they are and whether that needs "
        "the update, and what is wrong.");
    command->add_option("IN", arguments.documents, "The documents to read")
        ->required()
        ->type_name("");
    return command;
}

CLI::App* AddTree(CLI::App& app, Arguments& arguments) {
    CLI::App* const command =
        app.add_subcommand("tree", "Show the objects of a document with types and names.");
    command->add_option("IN", arguments.in, "The document to read")->required()->type_name("");
    command
        ->add_option("--type", arguments.tree.types,
                     "Show objects of this type alone; may be given several times")
        ->type_name("TYPE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(RefuseUnknownType);
    command->add_option("--depth", arguments.tree.depth, "Show this many levels below the root")
        ->type_name("N")
        ->check(RefuseNegative);
    return command;
}

CLI::App* AddFiles(CLI::App& app, Arguments& arguments) {
    CLI::App* const command =
        app.add_subcommand("files", "List the files that a document depends on.");
    command->add_option("IN", arguments.in, "The document to read")->required()->type_name("");
    CLI::Option* const file = command->add_option(
        "--depfile", arguments.dependencyFile,
        "Write them, with the document, as a rule for Make and Ninja; - is standard output");
    CLI::Option* const target =
        command->add_option("--target", arguments.target, "What the rule makes")->type_name("NAME");
    file->type_name("OUT")->needs(target)->check(RefuseEmpty);
    target->needs(file)->check(RefuseEmpty);
    return command;
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv) {
    CLI::App app("qeli looks into scene documents, checks them and brings them up to date.",
                 "qeli");
    Arguments arguments;
    app.set_version_flag("--version", std::string("qeli ") + kVokLibVersion);
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return "qeli: " + std::string(error.what()) + "\n" + kSeeHelp;
    });
    app.footer(
        "Exit status: 0 for success, 1 for a document that cannot be read or written, 2 for "
        "wrong usage.");
    app.require_subcommand(1);
    const CLI::App* const convert = AddConvert(app, arguments);
    const CLI::App* const check = AddCheck(app, arguments);
    const CLI::App* const tree = AddTree(app, arguments);
    AddFiles(app, arguments);
    if (IsUnknownCommand(app, argc, argv)) {
        std::cerr << "qeli: There is no command \"" << argv[1]
                  << "\". The commands are convert check tree files.\n"
                  << kSeeHelp;
        return kWrongUsage;
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUsage;
    }

    if (convert->parsed())
        Convert(arguments.in, arguments.out);
    else if (check->parsed())
        return Check(arguments.documents) ? 0 : kBadDocument;
    else if (tree->parsed())
        PrintTree(arguments.in, arguments.tree);
    else if (arguments.dependencyFile.empty())
        PrintFiles(arguments.in);
    else
        WriteDependencyFile(arguments.in, arguments.dependencyFile, arguments.target);
    return 0;
}
