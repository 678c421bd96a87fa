#include "CommandLine.h"

#include "CompanionCommands.h"
#include "Diff.h"
#include "Dump.h"
#include "FailureText.h"
#include "Header.h"
#include "OutputFile.h"
#include "Picture.h"

#include <Platform/FileIdentity.h>
#include <Platform/Paths.h>
#include <QelTools/AsciiText.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr int kBadFile = 1;
constexpr int kDifferent = 1;

struct Arguments {
    std::vector<std::string> files;
    std::string in;
    std::string other;
    std::string out;
    std::vector<std::string> names;
    bool isJson = false;
    HeaderOptions header;
};

std::string RefuseNoIdentifier(const std::string& text) {
    bool isIdentifier = !text.empty() && std::isdigit(static_cast<unsigned char>(text[0])) == 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        isIdentifier = isIdentifier && byte < 0x80 && (std::isalnum(byte) != 0 || byte == '_');
    }
    return isIdentifier ? std::string() : "\"" + text + "\" is no identifier in C";
}

void AddNames(CLI::App& command, std::vector<std::string>& values) {
    command
        .add_option("--names", values,
                    "A scene document whose joints and channels name what the file only hashes; "
                    "may be given again")
        ->type_name("SCENE")
        ->allow_extra_args(false);
}

bool HasEnding(const std::string& path, const std::string& ending) {
    return QelTools::Common::ToLowerAscii(path).ends_with(ending);
}

/// The form of a picture, by the end of its name.
bool IsPage(const std::string& path) {
    return HasEnding(path, ".html") || HasEnding(path, ".htm");
}

std::string RefuseOtherEnding(const std::string& path) {
    return IsPage(path) || HasEnding(path, ".svg")
               ? std::string()
               : "\"" + path + "\" ends in neither .svg nor .html";
}

void PrintJson(const Json& json) {
    json.Write(std::cout, 2);
    std::cout << '\n';
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
    std::string name = Platform::FromPath(Platform::ToPath(path).filename());
    const bool hasControls = std::any_of(name.begin(), name.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
    });
    try {
        static_cast<void>(Json(name));  // refuses what is not UTF-8
        if (!hasControls) return name;
    } catch (const nlohmann::json::exception&) {
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
    if (Platform::LeadToOneFile(arguments.in, arguments.out))
        throw SkeletonFileFault(arguments.out + ": error: The picture would replace the file");
    for (const std::string& scene : arguments.names)
        if (Platform::LeadToOneFile(scene, arguments.out))
            throw SkeletonFileFault(arguments.out + ": error: The picture would replace the scene");
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
    SkeletonDifference difference = Compare(before, after);
    difference.otherBytesAt = FindOtherBytes(first, second);
    if (arguments.isJson)
        PrintJson(DiffJson(difference, before, after));
    else
        DiffText(difference, before, after, std::cout);
    return !difference.IsEmpty();
}

/// What an option has nothing to say about shows only when IN is looked into.
void RefuseIdleOptions(const HeaderOptions& options, bool isFile) {
    if (isFile && options.hasMultipleRoots)
        throw CLI::ValidationError("--multi-root",
                                   options.in + " is a skeleton file: its roots are settled");
    if (!isFile && !options.names.empty())
        throw CLI::ValidationError("--names", options.in + " is a scene: it has its own names");
}

void AddCheck(CompanionCommands& commands, Arguments& arguments) {
    CLI::App& command = commands.Add(
        "check",
        "Verify skeleton files as one would who trusts nobody, and name the first fault of each "
        "table, also of those within the procedural items, with its byte offset and field.",
        [&] { return Check(arguments.files) ? 0 : kBadFile; });
    AddRequired(command, "FILE", arguments.files, "The files to read");
}

void AddDump(CompanionCommands& commands, Arguments& arguments) {
    CLI::App& command = commands.Add("dump", "Show everything that a skeleton file holds.", [&] {
        Dump(arguments);
        return 0;
    });
    AddRequired(command, "FILE", arguments.in, "The file to read");
    command.add_flag("--json", arguments.isJson, "As JSON, for scripts");
    AddNames(command, arguments.names);
}

void AddDiff(CompanionCommands& commands, Arguments& arguments) {
    CLI::App& command = commands.Add(
        "diff",
        "Compare two skeletons joint by joint. The exit status is 1 when they differ; the byte "
        "order does not count.",
        [&] { return Diff(arguments) ? kDifferent : 0; });
    AddRequired(command, "A", arguments.in, "The file before");
    AddRequired(command, "B", arguments.other, "The file after");
    command.add_flag("--json", arguments.isJson, "As JSON, for scripts");
    AddNames(command, arguments.names);
}

void AddHeader(CompanionCommands& commands, Arguments& arguments) {
    CLI::App& command = commands.Add(
        "header", "Print C constants: index, hash and parent of each joint, and the signature.",
        [&] {
            const bool isFile = HoldsSkeleton(arguments.header.in);
            RefuseIdleOptions(arguments.header, isFile);
            PrintHeader(arguments.header, isFile, std::cout);
            return 0;
        });
    AddRequired(command, "IN", arguments.header.in,
                "A skeleton file, or the scene it is baked from");
    command
        .add_option("--prefix", arguments.header.prefix,
                    "What the constants' names begin with (SKELETON), another for each skeleton "
                    "that one source file includes")
        ->type_name("NAME")
        ->check(RefuseNoIdentifier);
    command.add_flag("--multi-root", arguments.header.hasMultipleRoots,
                     "All roots of a scene are one skeleton");
    AddNames(command, arguments.header.names);
}

void AddPicture(CompanionCommands& commands, Arguments& arguments) {
    CLI::App& command = commands.Add(
        "picture",
        "Draw the bind pose, the levels of detail and what is evaluated when: OUT.svg is a "
        "drawing, OUT.html a page in which the figure can be turned.",
        [&] {
            Picture(arguments);
            return 0;
        });
    AddRequired(command, "FILE", arguments.in, "The file to read");
    AddRequired(command, "OUT", arguments.out,
                "The picture to write, in a folder that is there: NAME.svg or NAME.html")
        ->check(RefuseOtherEnding);
    AddNames(command, arguments.names);
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv) {
    CompanionCommands commands(
        "skel", "looks into skeleton files, checks and compares them.",
        "Exit status: 0 for success, 1 for a file that is not sound or cannot be read, and for "
        "skeletons that differ, 2 for wrong usage.");
    Arguments arguments;
    AddCheck(commands, arguments);
    AddDump(commands, arguments);
    AddDiff(commands, arguments);
    AddHeader(commands, arguments);
    AddPicture(commands, arguments);
    return commands.Run(argc, argv);
}
