#pragma once

#include <cstdlib>
#include <optional>
#include <string>

/// Sets an environment variable, or unsets it, while the object lives; what was there before comes
/// back.
class ScopedEnvironment {
  public:
    ScopedEnvironment(const char* name, const std::optional<std::string>& value) : variable(name) {
        if (const char* const old = std::getenv(name)) before = old;
        Set(value);
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
    ~ScopedEnvironment() { Set(before); }

  private:
    void Set(const std::optional<std::string>& value) const {
        if (value.has_value())
            setenv(variable, value->c_str(), 1);
        else
            unsetenv(variable);
    }

    const char* variable;
    std::optional<std::string> before;
};
