#include "VoktFramework/RecordingTool.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <exception>

namespace {

class RecordingComponent : public VoktComponent {
  public:
    RecordingComponent(Script& toPlay, std::string ownName)
        : script(toPlay), name(std::move(ownName)) {
        script.Do(name + ".constructor");
    }
    ~RecordingComponent() noexcept(false) override { script.Do(name + ".destructor"); }

    void Initialise() override { script.Do(name + ".Initialise"); }
    void AddFlags(VoktCommandLineSyntax& syntax) override {
        script.Do(name + ".AddFlags", {&syntax, nullptr});
    }
    void ReadFlags(const VoktCommandLineSyntax&) override { script.Do(name + ".ReadFlags"); }
    void Validate() override { script.Do(name + ".Validate"); }
    void Process(VoktUniverse& universe) override {
        script.Do(name + ".Process", {nullptr, &universe});
    }

  private:
    Script& script;
    std::string name;
};

}  // namespace

void Script::Do(const std::string& step, const Step& with) {
    journal.push_back(step);
    const auto action = actions.find(step);
    if (action != actions.end()) action->second(with);
}

void RecordingTool::AddComponents() {
    for (const std::string& name : script.components)
        AddComponent(std::make_unique<RecordingComponent>(script, name));
}

int PlayForStatus(Script& script, const std::vector<std::string>& arguments) {
    std::vector<const char*> words = {"tool"};
    for (const std::string& argument : arguments) words.push_back(argument.c_str());
    try {
        RecordingTool tool(script);
        tool.Run(static_cast<int>(words.size()), words.data());
    } catch (const std::exception& failure) {
        std::printf("Error: %s\n", failure.what());
        return 1;
    }
    return 0;
}

ProgramEnd Play(Script& script, const std::vector<std::string>& arguments) {
    testing::internal::CaptureStdout();
    const int status = PlayForStatus(script, arguments);
    return {status, testing::internal::GetCapturedStdout()};
}

std::string WithoutPositions(const std::string& text) {
    std::string result = text;
    for (std::size_t end; (end = result.find(">\n")) != std::string::npos;)
        result.erase(result.rfind(" <", end), end + 1 - result.rfind(" <", end));
    return result;
}
