#include <VoktFramework/Errors/VoktErrorHandler.h>

#include "Errors/LabelledBlock.h"

#include <algorithm>
#include <ostream>

namespace {

/// What the framework itself reports; a stage registers the numbers of its own.
constexpr VoktErrorId kFrameworkIds[] = {
    VoktErrorId::Unknown,
    VoktErrorId::SceneFailure,
    VoktErrorId::InternalFailure,
    VoktErrorId::AddingComponents,
    VoktErrorId::CommandLine,
    VoktErrorId::Validation,
    VoktErrorId::Processing,
    VoktErrorId::UnhandledArgument,
    VoktErrorId::HashServer,
    VoktErrorId::References,
    VoktErrorId::UnimplementedMethod,
    VoktErrorId::CannotOpenForWrite,
    VoktErrorId::UnknownWarning,
};

std::string OnOneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

bool HasPlace(const VoktError& error) {
    return !error.GetFile().empty() || !error.GetLine().empty();
}

std::string PlaceText(const VoktError& error) {
    return error.GetFile() + ":" + error.GetLine();
}

const char* SeverityText(const VoktError& error) {
    return error.IsWarning() ? "Warning" : "Error";
}

}  // namespace

VoktErrorHandler::VoktErrorHandler() {
    for (const VoktErrorId id : kFrameworkIds) Register(id);
}

VoktErrorHandler::~VoktErrorHandler() noexcept(false) = default;

void VoktErrorHandler::Add(const VoktError& error) {
    records.push_back({error, context, severityMode});
}

void VoktErrorHandler::Print(std::ostream& stream) const {
    for (const bool warnings : {true, false})
        for (const VoktErrorRecord& record : records) {
            if (record.error.IsWarning() != warnings) continue;
            if (detailed)
                PrintBlocks(stream, record);
            else
                PrintLine(stream, record);
        }
}

void VoktErrorHandler::Register(int id, const std::string& text) {
    const auto [entry, isNew] = descriptions.emplace(id, text);
    if (!isNew && entry->second != text)
        QelTools::Common::ThrowException("Duplicate VoktError id registered");
}

void VoktErrorHandler::Register(VoktErrorId id) {
    Register(static_cast<int>(id), VoktErrorText(id));
}

std::size_t VoktErrorHandler::CountErrors() const {
    const auto counts = [](const VoktErrorRecord& record) {
        if (record.severityMode == kNeverCount) return false;
        return record.severityMode == kAlwaysCount || !record.error.IsWarning();
    };
    return static_cast<std::size_t>(std::count_if(records.begin(), records.end(), counts));
}

const std::string* VoktErrorHandler::FindDescription(int id) const {
    const auto found = descriptions.find(id);
    return found == descriptions.end() ? nullptr : &found->second;
}

void VoktErrorHandler::PrintLine(std::ostream& stream, const VoktErrorRecord& record) const {
    const VoktError& error = record.error;
    stream << SeverityText(error) << ": " << error.GetId() << " ";
    if (const std::string* description = FindDescription(error.GetId())) stream << *description;
    if (!error.GetCauseMessage().empty()) stream << "; " << OnOneLine(error.GetCauseMessage());
    const std::string message = error.what();
    if (!message.empty()) stream << "; " << OnOneLine(message);
    if (!record.context.empty()) stream << " : " << record.context;
    if (!error.GetCauseObject().empty()) stream << " {" << error.GetCauseObject() << "}";
    if (HasPlace(error)) stream << " <" << PlaceText(error) << ">";
    stream << std::endl;
}

void VoktErrorHandler::PrintBlocks(std::ostream& stream, const VoktErrorRecord& record) const {
    const VoktError& error = record.error;
    const auto printUnlessEmpty = [&stream](const char* label, const std::string& value) {
        if (!value.empty()) PrintLabelledBlock(stream, 1, label, value);
    };
    PrintLabelledBlock(stream, 0, SeverityText(error), std::to_string(error.GetId()));
    if (const std::string* description = FindDescription(error.GetId()))
        PrintLabelledBlock(stream, 1, "Description", *description);
    printUnlessEmpty("Message", error.what());
    printUnlessEmpty("Context", record.context);
    printUnlessEmpty("CauseMessage", error.GetCauseMessage());
    printUnlessEmpty("CauseObject", error.GetCauseObject());
    if (HasPlace(error)) PrintLabelledBlock(stream, 1, "FileLine", PlaceText(error));
}
