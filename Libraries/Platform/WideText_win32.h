#pragma once

#include <string>

namespace Platform {

/// Between the bytes of names and the system's own form of text. What the other form cannot hold
/// becomes a sign that stands for it.
std::wstring WideText(const std::string& text);
std::string NarrowText(const std::wstring& text);

}  // namespace Platform
