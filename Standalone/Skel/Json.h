#pragma once

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <iosfwd>
#include <ranges>
#include <string>
#include <variant>
#include <vector>

/// A value of JSON to be written: keys keep their order, and floats are as short as they read back.
/// Numbers that are infinite are null, as JSON has none. Unlike the library's own values it comes
/// to its end without memory of its own. What is no UTF-8 throws.
class Json {
  public:
    struct Member;

    Json(std::nullptr_t = nullptr);
    Json(const char* text);
    Json(const std::string& text);
    /// Of integers and truth values.
    template <std::integral Number>
    Json(Number number);
    Json(float number);
    template <std::ranges::input_range List>
    requires(!std::convertible_to<List, std::string>) Json(const List& list);
    Json(std::initializer_list<Member> members);

    static Json array();

    /// Appends to an array.
    void push_back(Json element);
    /// The member of an object, appended when there is none; the reference is good until the next.
    Json& operator[](const char* key);
    Json& operator[](std::size_t index);

    /// With an indentation each element stands on a line of its own; below 0 all is one line.
    void Write(std::ostream& out, int indentation) const { Write(out, indentation, 0); }
    /// All in one line.
    std::string dump() const;

  private:
    struct Scalar {
        std::string text;  // as JSON writes it
    };
    using Elements = std::vector<Json>;
    using Members = std::vector<Member>;

    explicit Json(Scalar scalar);
    void Write(std::ostream& out, int indentation, int depth) const;

    std::variant<Scalar, Elements, Members> value;
};

struct Json::Member {
    std::string key;
    Json value;
};

template <std::integral Number>
Json::Json(Number number) {
    if constexpr (std::same_as<Number, bool>)
        value = Scalar{number ? "true" : "false"};
    else
        value = Scalar{std::to_string(number)};
}

template <std::ranges::input_range List>
requires(!std::convertible_to<List, std::string>) Json::Json(const List& list)
    : value(Elements(list.begin(), list.end())) {}
