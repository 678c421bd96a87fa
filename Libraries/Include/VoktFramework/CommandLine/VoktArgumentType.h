#pragma once

/// The kind of a value on the command line, in the order in which the kinds are numbered.
enum class VoktArgumentType {
    Boolean = 0,
    Integer = 1,
    UnsignedInt = 2,
    Float = 3,
    String = 4,
    InputFilename = 5,
    OutputFilename = 6,
};

/// What the help shows for a value of this kind that has no name of its own.
const char* VoktArgumentTypeName(VoktArgumentType type);
