#include <VoktFramework/Tool/VoktTool.h>

#include "Tool/FailureGuard.h"

#include <Platform/FileTests.h>
#include <Platform/OutputCapture.h>
#include <Platform/Paths.h>
#include <QelTools/Exception.h>
#include <VokLib/Library/VokLib.h>
#include <VoktFramework/Atoms/VoktAtomString.h>
#include <VoktFramework/Atoms/VoktAtomStringArray.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>
#include <VoktFramework/Saving/VoktBinaryFilenameQEL.h>

#include <cstdio>
#include <iostream>
#include <new>

using QelTools::Common::ThrowException;

VoktTool::VoktTool() : failuresOnTheirWay(std::uncaught_exceptions()) {}

VoktTool::~VoktTool() noexcept(false) {
    std::exception_ptr firstFailure;
    const auto attempt = [&firstFailure](auto step) {
        try {
            step();
        } catch (...) {
            if (!firstFailure) firstFailure = std::current_exception();
        }
    };
    // Released first: a smart pointer does not let out what a destructor throws.
    for (std::unique_ptr<VoktComponent>& component : components)
        attempt([&component] { delete component.release(); });
    components.clear();
    attempt([] {
        if (VoktBinaryFilename::Exists()) delete &VoktBinaryFilename::Get();
    });
    attempt([this] { EndCapture(); });
    if (firstFailure && std::uncaught_exceptions() == failuresOnTheirWay)
        std::rethrow_exception(firstFailure);
}

void VoktTool::Run(int argc, const char* const* argv) {
    auto handler = std::make_unique<VoktErrorHandler>();
    CreateBinaryFilename();
    try {
        Execute(argc, argv);
    } catch (const VoktError& error) {
        handler->Add(error);
    } catch (const std::bad_alloc& failure) {
        handler->Add(VoktError(VoktErrorId::Unknown, failure.what()));
    } catch (...) {
        handler->Add(VoktError(VoktErrorId::Unknown));
    }
    handler->Print(std::cout);
    const std::size_t errors = handler->CountErrors();
    handler.reset();
    if (errors != 0) throw QelTools::Common::TextException("Tool encountered errors");
}

void VoktTool::Execute(int argc, const char* const* argv) {
    PrintBanner(argc > 0 ? argv[0] : "");
    args.assign(argv, argv + argc);
    GuardStep(VoktErrorId::AddingComponents, [this] {
        AddComponents();
        InitialiseComponents();
        DefineFlags();
    });
    if (argc == 1) {
        GuardStep(VoktErrorId::CommandLine, [this] { PrintHelp(); });
        return;
    }
    GuardStep(VoktErrorId::CommandLine, [this, argc, argv] {
        syntax.Parse(argc, argv, 1);
        ReadFlags();
    });
    GuardStep(VoktErrorId::Validation, [this] { Validate(); });
    GuardProcessing(VoktErrorId::Processing, [this] { StartLogAndProcess(); });
}

void VoktTool::InitialiseComponents() {
    if (timeTool) stageTimes.clear();
    for (const auto& component : components) component->Initialise();
}

void VoktTool::ReadFlags() {
    syntax.GetBoolean("-tt", 0, timeTool, 0);
    syntax.GetString("-log", 0, logFileName, 0);
    for (const auto& component : components) component->ReadFlags(syntax);
}

void VoktTool::Validate() {
    std::string faults;
    if (!logFileName.empty() && !Platform::IsWritable(logFileName))
        faults += "Log file '" + logFileName + "' is not writeable\n";
    if (!faults.empty()) ThrowException(faults);
    for (const auto& component : components) component->Validate();
}

void VoktTool::StartLogAndProcess() {
    if (!logFileName.empty()) StartCapture();
    Process();
}

void VoktTool::StartCapture() {
    using Result = Platform::OutputCapture::StartResult;
    capture = std::make_unique<Platform::OutputCapture>();
    const Result result = capture->Start(logFileName);
    if (result == Result::kLogNotOpened)
        ThrowException("could not open '" + logFileName + "' for write");
    if (result == Result::kThreadNotStarted) {
        std::cerr << "\nWARNING: log file '" << logFileName
                  << "' cannot be copied to: " << capture->GetStartFault() << std::endl;
        ThrowException("failed to create log thread");
    }
}

void VoktTool::EndCapture() {
    if (capture == nullptr) return;
    if (!capture->Stop())
        std::cerr << "\nWARNING: timeout waiting for log file thread to exit" << std::endl;
    else if (!capture->GetLogFault().empty())
        std::cerr << "\nWARNING: log file '" << logFileName
                  << "' is not whole: " << capture->GetLogFault() << std::endl;
}

void VoktTool::PrintHelp() {
    syntax.PrintHelp();
}

void VoktTool::DefineFlags() {
    syntax.AddFlag("-timetool", "-tt", "Prints out how long the tool took to run");
    syntax.AddFlagArgument(VoktArgumentType::Boolean, "Whether to print timing info", "", true,
                           "0");
    syntax.AddFlag("-logfile", "-log", "Captures stdout to named file");
    syntax.AddFlagArgument(VoktArgumentType::OutputFilename);
    for (const auto& component : components) component->AddFlags(syntax);
    syntax.CheckFlagDefinitions();
}

void VoktTool::AddComponent(std::unique_ptr<VoktComponent> component) {
    components.push_back(std::move(component));
}

void VoktTool::CreateBinaryFilename() {
    // It names itself the one instance; the destructor finds it there.
    static_cast<void>(new VoktBinaryFilenameQEL);
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)

void VoktTool::PrintBanner(const char* toolPath) {
    std::printf("QEL SDK version %s: %s\n", kVokLibVersion, toolPath);
    std::fflush(stdout);
}

void VoktTool::InitialiseUniverse(VoktUniverse& universe) {
    const std::optional<std::string> folder = Platform::CurrentDirectory();
    if (!folder) ThrowException("Failed to retrieve current working directory");
    auto folderAtom = std::make_unique<VoktAtomString>();
    folderAtom->value = *folder;
    universe.Add(std::move(folderAtom), "VoktTool_cwd");

    auto argumentsAtom = std::make_unique<VoktAtomStringArray>();
    argumentsAtom->values = args;
    universe.Add(std::move(argumentsAtom), "VoktTool_args");
}
