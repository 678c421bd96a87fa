#include "RunProxy.h"

#include <Platform/LackOfMemory.h>
#include <Platform/Process.h>
#include <Platform/StandardStreams.h>

#include <CLI/CLI.hpp>

namespace {

/// Other sources take memory before the main function.
[[gnu::init_priority(101)]] const Platform::EndWhereMemoryDoes endWhereMemoryDoes(
    Platform::StandardStream::kErrors, "QelHashProxy: error: Cannot allocate memory\n");

constexpr int kWrongUsage = 2;
constexpr char kVersion[] = "QelHashProxy " RIGBAKE_VERSION;

constexpr char kAbout[] =
    "Serves the hash registry: it remembers every string of a build with its hash, and refuses a "
    "string whose hash another string of its category has already. The tools start it by itself "
    "when QEL_HASH_SERVER_NAME is set; a second one steps aside.";
constexpr char kVariables[] =
    "Environment:\n"
    "  QEL_HASH_DATABASE        the database file; by default\n"
    "                           QelHashProxy/registry.sqlite in the user's data folder\n"
    "  QEL_HASH_IDLE_SECONDS    ends after so long without a client; by default 60\n"
    "\n"
    "Exit status: 0 when it served or stepped aside, 1 when it could do neither, 2 for wrong "
    "usage.";

}  // namespace

int main(int argc, char** argv) {
    // All tools of the machine share this process; it is not to end with the first one's console.
    Platform::LeaveStartersConsole();
    Platform::PrepareStandardStreams();
    CLI::App app(kAbout, "QelHashProxy.exe");
    app.allow_windows_style_options(false);
    app.set_version_flag("--version", kVersion);
    app.footer(kVariables);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUsage;
    }
    return RunProxy();
}
