#include "Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <ostream>
#include <sstream>

namespace {

using Library = nlohmann::basic_json<std::map, std::vector, std::string, bool, std::int64_t,
                                     std::uint64_t, float>;

void StartLine(std::ostream& out, int indentation, int depth) {
    if (indentation < 0) return;
    out << '\n';
    for (int i = 0; i < indentation * depth; ++i) out << ' ';
}

/// Writes what stands between two brackets.
template <class List, class Write>
void WriteList(std::ostream& out, const char* brackets, const List& list, int indentation,
               int depth, const Write& write) {
    out << brackets[0];
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (i > 0) out << ',';
        StartLine(out, indentation, depth + 1);
        write(list[i]);
    }
    if (!list.empty()) StartLine(out, indentation, depth);
    out << brackets[1];
}

}  // namespace

// Values of the library that hold no others come to their end without memory.
Json::Json(Scalar scalar) : value(std::move(scalar)) {}
Json::Json(std::nullptr_t) : Json(Scalar{"null"}) {}
Json::Json(const char* text) : Json(Scalar{Library(text).dump()}) {}
Json::Json(const std::string& text) : Json(Scalar{Library(text).dump()}) {}
Json::Json(float number) : Json(Scalar{Library(number).dump()}) {}
Json::Json(std::initializer_list<Member> members) : value(Members(members)) {}

Json Json::array() {
    Json json;
    json.value = Elements();
    return json;
}

void Json::push_back(Json element) {
    std::get<Elements>(value).push_back(std::move(element));
}

Json& Json::operator[](const char* key) {
    Members& members = std::get<Members>(value);
    const auto found = std::find_if(members.begin(), members.end(),
                                    [&](const Member& member) { return member.key == key; });
    if (found != members.end()) return found->value;
    return members.emplace_back(Member{key, nullptr}).value;
}

Json& Json::operator[](std::size_t index) {
    return std::get<Elements>(value)[index];
}

std::string Json::dump() const {
    std::ostringstream out;
    // A stream that has no memory is silent otherwise.
    out.exceptions(std::ios::badbit);
    Write(out, -1);
    return out.str();
}

void Json::Write(std::ostream& out, int indentation, int depth) const {
    if (const auto* scalar = std::get_if<Scalar>(&value)) {
        out << scalar->text;
    } else if (const auto* elements = std::get_if<Elements>(&value)) {
        WriteList(out, "[]", *elements, indentation, depth,
                  [&](const Json& element) { element.Write(out, indentation, depth + 1); });
    } else {
        WriteList(out, "{}", std::get<Members>(value), indentation, depth,
                  [&](const Member& member) {
                      out << '"' << member.key << (indentation < 0 ? "\":" : "\": ");
                      member.value.Write(out, indentation, depth + 1);
                  });
    }
}
