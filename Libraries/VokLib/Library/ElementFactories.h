#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

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

/// What the rows of an element type know of its vocabulary.
struct ElementVocabulary {
    struct Child {
        std::string_view name;
        std::string_view within;  ///< the child element inside which alone it is known; or empty
    };

    std::string_view element;
    std::vector<Child> children;  ///< the type's own, in the order in which they are written
};

/// Every element type of the format, for documentation.
std::vector<ElementVocabulary> DescribeElements();
