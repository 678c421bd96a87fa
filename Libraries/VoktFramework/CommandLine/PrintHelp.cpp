#include <Platform/Console.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>

#include <algorithm>
#include <iostream>

#include "CommandLine/CommandLineHelp.h"

void VoktCommandLineSyntax::PrintHelp() const {
    int width = kDefaultWidth;
    if (const auto columns = Platform::ConsoleWidth()) width = *columns - 1;
    PrintHelp(std::cout, width);
}

void VoktCommandLineSyntax::PrintHelp(std::ostream& out, int width) const {
    const bool anyFlagShown =
        std::any_of(flags.begin(), flags.end(),
                    [this](const VoktCommandLineFlag& flag) { return !flag.hidden || showHidden; });
    CommandLineHelp help(out, width);
    help.AddArguments(arguments, anyFlagShown);
    help.AddFlags(flags, showHidden, describeArguments);
    help.Print();
}
