#pragma once

#include <VokLib/Objects/Nodes/VokLocator.h>

#include <string>

/// A locator that names another document.
class VokQeliLocator : public VokElement<VokQeliLocator, VokLocator> {
  public:
    static constexpr std::string_view kElementName = "qelilocator";
    static std::span<const VokChildElement<VokQeliLocator>> ChildElements();

    bool GetDependencies(VokDependencies& files) const override;
    bool UpdateDependencies(VokUpdateDependencies& update) override;

    std::string uri;  ///< a file name in the world's form
};
