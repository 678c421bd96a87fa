#pragma once

#include <cstddef>

/// The element types of the format, in the registry for as long as this lives. When one cannot be
/// registered, those before it are taken out again.
class ElementFactories {
  public:
    ElementFactories();
    ~ElementFactories();
    ElementFactories(const ElementFactories&) = delete;
    ElementFactories& operator=(const ElementFactories&) = delete;

  private:
    void Unregister() noexcept;

    std::size_t registered = 0;
};
