#pragma once

#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Stages/VoktComponent.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class VoktUniverse;

namespace Platform {
class OutputCapture;
}

/// A command line tool made of components: the life of one run, from the argument vector to the
/// report. A concrete tool adds its components in AddComponents; the order of adding is the order
/// of the stages. A tool serves one run.
class VoktTool {
  public:
    VoktTool();
    VoktTool(const VoktTool&) = delete;
    VoktTool& operator=(const VoktTool&) = delete;

    /// Deletes the components, first to last, and the service that CreateBinaryFilename made, then
    /// ends the capture of standard output. What a component's destructor throws comes out when all
    /// that is done, the first failure if there are several; nothing comes out while another
    /// failure is on its way.
    virtual ~VoktTool() noexcept(false);

    /// The whole run with its report on std::cout. Throws "Tool encountered errors" when the report
    /// holds an error; warnings alone are a success.
    virtual void Run(int argc, const char* const* argv);

    /// The arguments of the run, the program's name included.
    const std::vector<std::string>& GetArguments() const { return args; }

  protected:
    /// The steps of the run between the creation of the error handler and its report.
    virtual void Execute(int argc, const char* const* argv);
    /// Builds the components and calls AddComponent for each.
    virtual void AddComponents() = 0;
    virtual void InitialiseComponents();
    /// Reads the tool's own flags, then has each component read its flags.
    virtual void ReadFlags();
    /// Checks the log file, then has each component check its values.
    virtual void Validate();
    /// Starts the copy of standard output if a log file is named, then calls Process.
    virtual void StartLogAndProcess();
    /// Runs the stages with one universe and prints their times if asked for.
    virtual void Process();
    virtual void PrintHelp();
    /// Declares the tool's own flags, then the components', and checks the declarations.
    virtual void DefineFlags();
    virtual void AddComponent(std::unique_ptr<VoktComponent> component);
    /// Makes the VoktBinaryFilename singleton; the tool's destructor deletes it.
    virtual void CreateBinaryFilename();
    virtual void PrintBanner(const char* toolPath);
    /// Adds the working directory and the arguments as "VoktTool_cwd" and "VoktTool_args".
    virtual void InitialiseUniverse(VoktUniverse& universe);

    std::vector<std::string> args;
    VoktCommandLineSyntax syntax;
    std::vector<std::unique_ptr<VoktComponent>> components;
    bool timeTool = false;
    std::string logFileName;
    std::vector<std::int32_t> stageTimes;  ///< milliseconds, one entry for each stage

  private:
    void StartCapture();
    void EndCapture();
    void PrintTimings() const;

    std::unique_ptr<Platform::OutputCapture> capture;
    int failuresOnTheirWay;  ///< exceptions in flight when the tool was built
};
