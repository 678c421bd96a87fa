#include "CompanionCommands.h"

#include <VokLib/Library/VokLib.h>

#include <algorithm>
#include <iostream>
#include <utility>

namespace {

constexpr int kWrongUsage = 2;

}  // namespace

CompanionCommands::CompanionCommands(const std::string& name, const std::string& words,
                                     const std::string& footer)
    : program(name),
      seeHelp("Run " + name + " --help for more information.\n"),
      app(name + " " + words, name) {
    // A word that begins with a slash is the name of a file on every system.
    app.allow_windows_style_options(false);
    app.set_version_flag("--version", program + " " + kVokLibVersion);
    app.failure_message([this](const CLI::App*, const CLI::Error& error) {
        return program + ": " + error.what() + "\n" + seeHelp;
    });
    app.footer(footer);
    app.require_subcommand(1);
}

CLI::App& CompanionCommands::Add(const char* name, const char* words, std::function<int()> run) {
    CLI::App& command = *app.add_subcommand(name, words);
    commands.push_back({&command, std::move(run)});
    return command;
}

/// The parser would only say that some command is missing.
bool CompanionCommands::IsUnknownCommand(int argc, const char* const* argv) const {
    if (argc < 2 || argv[1][0] == '-') return false;
    return std::none_of(commands.begin(), commands.end(),
                        [&](const Command& command) { return command.app->get_name() == argv[1]; });
}

int CompanionCommands::Run(int argc, const char* const* argv) {
    if (IsUnknownCommand(argc, argv)) {
        std::cerr << program << ": There is no command \"" << argv[1] << "\". The commands are";
        for (const Command& command : commands) std::cerr << ' ' << command.app->get_name();
        std::cerr << ".\n" << seeHelp;
        return kWrongUsage;
    }
    try {
        app.parse(argc, argv);
        for (const Command& command : commands)
            if (command.app->parsed()) return command.run();
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUsage;
    }
    return kWrongUsage;
}

CLI::Option* AddRequired(CLI::App& command, const char* name, std::string& value,
                         const char* words) {
    return command.add_option(name, value, words)->required()->type_name("");
}

CLI::Option* AddRequired(CLI::App& command, const char* name, std::vector<std::string>& values,
                         const char* words) {
    return command.add_option(name, values, words)->required()->type_name("");
}
