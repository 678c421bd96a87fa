#pragma once

#include <VoktFramework/Tool/VoktTool.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// What a run of a RecordingTool does and what it did. A step is named after its component and
/// operation, as in "a.Process"; the constructor and destructor are "a.constructor" and
/// "a.destructor".
struct Script {
    struct Step {
        VoktCommandLineSyntax* syntax = nullptr;
        VoktUniverse* universe = nullptr;
    };
    using Action = std::function<void(const Step&)>;

    std::vector<std::string> components = {"a"};
    std::map<std::string, Action> actions;
    std::vector<std::string> journal;

    /// Notes the step and does what the script has for it.
    void Do(const std::string& step, const Step& with);
    void Do(const std::string& step) { Do(step, Step()); }
};

/// A tool whose components do as the script says.
class RecordingTool : public VoktTool {
  public:
    explicit RecordingTool(Script& toPlay) : script(toPlay) {}

    std::size_t CountStageTimes() const { return stageTimes.size(); }

  protected:
    void AddComponents() override;

  private:
    Script& script;
};

/// How a program around the tool ended: its exit status and all that went to standard output.
struct ProgramEnd {
    int status;
    std::string output;
};

/// Plays the script with the arguments behind the program's name "tool", as a program's entry does.
ProgramEnd Play(Script& script, const std::vector<std::string>& arguments);

/// The same, with the exit status alone; standard output is left as it is.
int PlayForStatus(Script& script, const std::vector<std::string>& arguments);

/// What every run prints first.
inline const std::string kBanner = "QEL SDK version 1.28.3: tool\n";
/// What a run with an error in its report prints last.
inline const std::string kFailedEnd = "Error: Tool encountered errors\n";

/// The text without the position between "<" and ">" at the ends of lines, which moves with the
/// sources.
std::string WithoutPositions(const std::string& text);
