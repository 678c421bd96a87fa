#pragma once

/// Every number that the tool reports. Numbers from kFirstWarning up are warnings.
enum class VoktErrorId : int {
    Unknown = 0,
    SceneFailure = 1,     ///< a VokException during processing
    InternalFailure = 2,  ///< any other exception of the libraries during processing
    AddingComponents = 100,
    CommandLine = 101,
    Validation = 102,
    Processing = 103,
    UnhandledArgument = 200,
    HashServer = 201,
    References = 202,
    UnimplementedMethod = 203,
    CannotOpenForWrite = 204,
    NoSkeleton = 1100,
    UnknownWarning = 10000,
    MultipleSkeletons = 10100,
};

/// The text of a number, as it stands in the report.
constexpr const char* VoktErrorText(VoktErrorId id) {
    switch (id) {
        case VoktErrorId::Unknown:
            return "An unknown error occurred";
        case VoktErrorId::SceneFailure:
        case VoktErrorId::InternalFailure:
            return "An internal error occurred";
        case VoktErrorId::AddingComponents:
            return "An error occurred while adding components to the tool";
        case VoktErrorId::CommandLine:
            return "An error occurred while parsing the command line";
        case VoktErrorId::Validation:
            return "An error occurred while validating arguments";
        case VoktErrorId::Processing:
            return "An error occurred during tool processing";
        case VoktErrorId::UnhandledArgument:
            return "Unhandled argument";
        case VoktErrorId::HashServer:
            return "Unable to establish communication with hash server";
        case VoktErrorId::References:
            return "A problem occurred while importing references";
        case VoktErrorId::UnimplementedMethod:
            return "Unimplemented virtual method";
        case VoktErrorId::CannotOpenForWrite:
            return "Cannot open file for write";
        case VoktErrorId::NoSkeleton:
            return "No skeleton found";
        case VoktErrorId::UnknownWarning:
            return "An unknown warning occurred";
        case VoktErrorId::MultipleSkeletons:
            return "Multiple skeletons found. Only the first one will be exported without "
                   "-multiRoot option.";
    }
    return "";
}
