#pragma once

#include <VokLib/Base/VokTypeId.h>

#include <cstddef>
#include <string_view>
#include <vector>

class VokObj;

/// The element names of a document and what makes their objects: one registry for the process.
namespace VokFactory {

/// Makes a new object on the heap; the caller owns it.
using Function = VokObj* (*)();

/// A name already present throws a VokException.
void RegisterFactory(std::string_view name, Function factory);
/// Null for an unknown name. `nameId` is MakeTypeId(name), which the reader has at hand.
Function FindFactory(std::string_view name, VokTypeId nameId);
Function FindFactory(std::string_view name);
/// An absent name is ignored.
void UnregisterFactory(std::string_view name);
std::size_t FactoryCount();
/// All names, sorted; each is valid until it is unregistered.
std::vector<std::string_view> GetNames();

}  // namespace VokFactory
