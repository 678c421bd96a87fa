#pragma once

#include <QelTools/Exception.h>

#include <boost/noncopyable.hpp>

#include <string>

namespace QelTools::Common {

/// Base of a class of which one object exists at a time. The template owns nothing: whoever brings
/// the service up creates the object and deletes it. `T` derives from `Singleton<T>` and names
/// itself in a static `const char* SingletonName()`.
///
/// A second object, a destructor without an object and a `Get()` without one throw a TextException
/// whose text begins with the operation's name, written out the same way with every compiler.
template <class T>
class Singleton : private boost::noncopyable {
  public:
    static T& Get() {
        if (instance == nullptr) Fail("Get", "we don't have an instance");
        return static_cast<T&>(*instance);
    }

    static bool Exists() { return instance != nullptr; }

  protected:
    Singleton() {
        if (instance != nullptr) Fail("Singleton", "we already have an instance");
        instance = this;
    }

    ~Singleton() noexcept(false) {
        if (instance == nullptr) Fail("~Singleton", "we don't have an instance");
        instance = nullptr;
    }

  private:
    [[noreturn]] static void Fail(const char* operation, const char* text) {
        throw TextException(std::string("QelTools::Common::Singleton<class ") + T::SingletonName() +
                            ">::" + operation + ": " + text);
    }

    // Not a T*: what is still under construction is not a T yet, and the cast would be undefined.
    static inline Singleton* instance = nullptr;
};

}  // namespace QelTools::Common
