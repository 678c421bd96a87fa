#include "CommandLine.h"

#include "Diff.h"
#include "Dump.h"
#include "FailureText.h"
#include "Header.h"
#include "OutputFile.h"
#include "Picture.h"

#include <VokLib/Library/VokLib.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr int kBadFile = 1;
constexpr int kDifferent = 1;
constexpr int kWrongUsage = 2;
constexpr const char* kSeeHelp = "Run skel --help for more information.\n";

struct Arguments {
    std::vector<std::string> files;
    std::string in;
    std::string other;
    std::string out;
    std::vector<std::string> names;
    bool isJson = false;
    HeaderOptions header;
};

/// The parser would only say that some command is missing.
bool IsUnknownCommand(const CLI::App& app, int argc, const char* const* argv) {
    if (argc < 2 || argv[1][0] == '-') return false;
    return app
        .get_subcommands([name = std::string(argv[1])](const CLI::App* command) {
            return command->get_name() == name;
        })
        .empty();
}

std::string RefuseNoIdentifier(const std::string& text) {
    bool isIdentifier = !text.empty() && std::isdigit(static_cast<unsigned char>(text[0])) == 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        isIdentifier = isIdentifier && byte < 0x80 && (std::isalnum(byte) != 0 || byte == '_');
    }
    return isIdentifier ? std::string() : "\"" + text + "\" is no identifier in C";
}

void AddFile(CLI::App& command, const char* name, std::string& value, const char* words) {
    command.add_option(name, value, words)->required()->type_name("");
}

void AddNames(CLI::App& command, std::vector<std::string>& values) {
    command
        .add_option("--names", values,
                    "A scene document whose joints and channels name what the file only hashes; "
                    "may be given again")
        ->type_name("SCENE")
        ->allow_extra_args(false);
}

CLI::App* AddCheck(CLI::App& app, Arguments& arguments) {
    CLI::App* const command = app.add_subcommand(
        "check",
        "Verify skeleton files as one would who trusts nobody, and name the first fault of each "
        "table with its place.");
    command->add_option("FILE", arguments.files, "The files to read")->required()->type_name("");
    return command;
}

CLI::App* AddDump(CLI::App& app, Arguments& arguments) {
    CLI::App* const command =
        app.add_subcommand("dump", "Show everything that a skeleton file holds.");
    AddFile(*command, "FILE", arguments.in, "The file to read");
    command->add_flag("--json", arguments.isJson, "As JSON, for scripts");
    AddNames(*command, arguments.names);
    return command;
}

CLI::App* AddDiff(CLI::App& app, Arguments& arguments) {
    CLI::App* const command = app.add_subcommand(
        "diff",
        "Compare two skeletons joint by joint. The exit status is 1 when they differ; the byte "
        "order does not count.");
    AddFile(*command, "A", arguments.in, "The file before");
    AddFile(*command, "B", arguments.other, "The file after");
    command->add_flag("--json", arguments.isJson, "As JSON, for scripts");
    AddNames(*command, arguments.names);
    return command;
}

CLI::App* AddHeader(CLI::App& app, Arguments& arguments) {
    CLI::App* const command = app.add_subcommand(
        "header", "Print C constants: index, hash and parent of each joint, and the signature.");
    AddFile(*command, "IN", arguments.header.in, "A skeleton file, or the scene it is baked from");
    command
        ->add_option("--prefix", arguments.header.prefix,
                     "What the constants' names begin with (SKELETON)")
        ->type_name("NAME")
        ->check(RefuseNoIdentifier);
    command->add_flag("--multi-root", arguments.header.hasMultipleRoots,
                      "All roots of a scene are one skeleton");
    AddNames(*command, arguments.header.names);
    return command;
}

/// The form of a picture, by the end of its name.
bool IsPage(const std::string& path) {
    return path.ends_with(".html") || path.ends_with(".htm");
}

std::string RefuseOtherEnding(const std::string& path) {
    return IsPage(path) || path.ends_with(".svg")
               ? std::string()
               : "\"" + path + "\" ends in neither .svg nor .html";
}

CLI::App* AddPicture(CLI::App& app, Arguments& arguments) {
    CLI::App* const command =
        app.add_subcommand("picture",
                           "Draw the bind pose, the levels of detail and what is evaluated when: "
                           "OUT.svg is a drawing, "
                           "OUT.html a page in which the figure can be turned.");
    AddFile(*command, "FILE", arguments.in, "The file to read");
    command->add_option("OUT", arguments.out, "The picture to write: NAME.svg or NAME.html")
        ->required()
        ->type_name("")
        ->check(RefuseOtherEnding);
    AddNames(*command, arguments.names);
    return command;
}

void PrintJson(const Json& json) {
    std::cout << json.dump(2) << '\n';
}

bool Check(const std::vector<std::string>& paths) {
    bool areAllSound = true;
    for (const std::string& path : paths) {
        try {
            SkeletonFile::Load(path);
            std::cout << path << ": OK" << std::endl;
        } catch (const SkeletonFileFault& fault) {
            std::cerr << fault.what() << std::endl;
            areAllSound = false;
        }
    }
    return areAllSound;
}

void Dump(const Arguments& arguments) {
    const SkeletonFile file = SkeletonFile::Load(arguments.in);
    const Description::Skeleton skeleton =
        Description::Describe(file, Names::Load(arguments.names));
    if (arguments.isJson)
        PrintJson(DumpJson(skeleton));
    else
        DumpText(skeleton, std::cout);
}

/// A file may be called anything; a picture holds text. Bytes that are none are taken for those of
/// a document's names.
std::string TitleOf(const std::string& path) {
    std::string name = std::filesystem::path(path).filename().string();
    const bool hasControls = std::any_of(name.begin(), name.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
    });
    try {
        static_cast<void>(Json(name).dump());  // refuses what is not UTF-8
        if (!hasControls) return name;
    } catch (const Json::exception&) {
    }
    return ReadableText(name);
}

void Picture(const Arguments& arguments) {
    const SkeletonFile file = SkeletonFile::Load(arguments.in);
    const Description::Skeleton skeleton =
        Description::Describe(file, Names::Load(arguments.names));
    const std::string title = TitleOf(arguments.in);
    const std::string text =
        IsPage(arguments.out) ? MakePage(skeleton, title) : DrawSvg(skeleton, title);
    std::error_code ignored;
    if (std::filesystem::equivalent(arguments.in, arguments.out, ignored))
        throw SkeletonFileFault(arguments.out + ": error: The picture would replace the file");
    OutputFile out(arguments.out);
    out.GetStream() << text;
    out.Finish();
    out.Publish();
}

bool Diff(const Arguments& arguments) {
    const SkeletonFile first = SkeletonFile::Load(arguments.in);
    const SkeletonFile second = SkeletonFile::Load(arguments.other);
    const Names names = Names::Load(arguments.names);
    const Description::Skeleton before = Description::Describe(first, names);
    const Description::Skeleton after = Description::Describe(second, names);
    const SkeletonDifference difference = Compare(before, after);
    if (arguments.isJson)
        PrintJson(DiffJson(difference, before, after));
    else
        DiffText(difference, before, after, std::cout);
    return !difference.IsEmpty();
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv) {
    CLI::App app("skel looks into skeleton files, checks and compares them.", "skel");
    Arguments arguments;
    app.set_version_flag("--version", std::string("skel ") + kVokLibVersion);
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return "skel: " + std::string(error.what()) + "\n" + kSeeHelp;
    });
    app.footer(
        "Exit status: 0 for success, 1 for a file that is not sound or cannot be read, and for "
        "skeletons that differ, 2 for wrong usage.");
    app.require_subcommand(1);
    const CLI::App* const check = AddCheck(app, arguments);
    const CLI::App* const dump = AddDump(app, arguments);
    const CLI::App* const diff = AddDiff(app, arguments);
    const CLI::App* const header = AddHeader(app, arguments);
    AddPicture(app, arguments);
    if (IsUnknownCommand(app, argc, argv)) {
        std::cerr << "skel: There is no command \"" << argv[1]
                  << "\". The commands are check dump diff header picture.\n"
                  << kSeeHelp;
        return kWrongUsage;
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUsage;
    }

    if (check->parsed()) return Check(arguments.files) ? 0 : kBadFile;
    if (diff->parsed()) return Diff(arguments) ? kDifferent : 0;
    if (dump->parsed())
        Dump(arguments);
    else if (header->parsed())
        PrintHeader(arguments.header, std::cout);
    else
        Picture(arguments);
    return 0;
}
