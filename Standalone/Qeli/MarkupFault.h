#pragma once

#include <string>
#include <string_view>

/// Looks through written markup for what no reader accepts and tells it in words: "<" in an
/// attribute value, "]]>" in a text, a control character. Empty when there is none of them. The
/// format has no way to write these: attribute values keep their "<".
std::string FindMarkupFault(std::string_view markup);
