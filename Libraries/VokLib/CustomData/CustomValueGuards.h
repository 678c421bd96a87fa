#pragma once

class VokCustomAttribute;

/// The rules that every attribute with values keeps; each throws a QelTools Exception when it is
/// broken.
namespace CustomValueGuards {

void RequireSingle(const VokCustomAttribute& attribute);
void RequireArray(const VokCustomAttribute& attribute);
[[noreturn]] void ThrowNoValue();

}  // namespace CustomValueGuards
