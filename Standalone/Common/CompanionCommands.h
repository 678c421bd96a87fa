#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

/// The command line of a companion program: one of several commands with arguments of its own.
class CompanionCommands {
  public:
    /// What `program` is, and what its exit status tells, for the help.
    CompanionCommands(const std::string& program, const std::string& words,
                      const std::string& footer);

    /// Adds a command; `run` does its work and gives the exit status. Commands are listed in the
    /// order in which they were added.
    CLI::App& Add(const char* name, const char* words, std::function<int()> run);

    /// Gives the exit status: of the command, 0 behind a help text, 2 behind a line on standard
    /// error for wrong usage, which a command tells by a CLI::ValidationError when its arguments
    /// alone do not show it. What else the command throws passes on.
    [[nodiscard]] int Run(int argc, const char* const* argv);

  private:
    struct Command {
        const CLI::App* app;
        std::function<int()> run;
    };

    bool IsUnknownCommand(int argc, const char* const* argv) const;

    std::string program;
    std::string seeHelp;
    CLI::App app;
    std::vector<Command> commands;
};

/// Adds an argument without which the command cannot do.
CLI::Option* AddRequired(CLI::App& command, const char* name, std::string& value,
                         const char* words);
CLI::Option* AddRequired(CLI::App& command, const char* name, std::vector<std::string>& values,
                         const char* words);
