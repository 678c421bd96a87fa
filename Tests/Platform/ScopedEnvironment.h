#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

/// Sets an environment variable, or unsets it, while the object lives; what was there before comes
/// back.
class ScopedEnvironment {
  public:
    ScopedEnvironment(std::string name, const std::optional<std::string>& value)
        : variable(std::move(name)) {
        if (const char* const old = std::getenv(variable.c_str())) before = old;
        Set(value);
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
    ~ScopedEnvironment() { Set(before); }

  private:
    void Set(const std::optional<std::string>& value) const {
        if (value.has_value())
            setenv(variable.c_str(), value->c_str(), 1);
        else
            unsetenv(variable.c_str());
    }

    std::string variable;
    std::optional<std::string> before;
};
