#pragma once

#include <VoktFramework/CommandLine/VoktCommandLineFlag.h>
#include <VoktFramework/CommandLine/VoktTextTable.h>

#include <cstddef>
#include <map>
#include <ostream>
#include <string>
#include <vector>

/// Lays out the help of one command line and prints it.
class CommandLineHelp {
  public:
    CommandLineHelp(std::ostream& stream, int totalWidth);

    /// Prints the usage line and takes the positional arguments into the table; before AddFlags.
    void AddArguments(const std::vector<VoktCommandLineArgument>& arguments, bool anyFlagShown);
    void AddFlags(const std::vector<VoktCommandLineFlag>& flags, bool showHidden,
                  bool describeArguments);
    /// Prints what was added.
    void Print();

  private:
    /// The rows of one heading.
    struct Group {
        std::vector<std::size_t> required;
        std::vector<std::size_t> optional;
    };
    using GroupRows = std::vector<std::size_t> Group::*;

    std::size_t AddRow(std::string first, std::string text);
    void AddFlag(const VoktCommandLineFlag& flag, bool describeArguments);
    void LayOut();
    void PrintArguments();
    void PrintGroups(GroupRows rows, const char* kind);

    std::ostream& out;
    int width;
    VoktTextTable table;
    std::vector<std::size_t> argumentRows;
    std::map<std::string, Group> groups;
};
