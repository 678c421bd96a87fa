#pragma once

#include <string>

class VokWorld;
struct VokParseFailure;

/// The second phase of a load: paths become links. What does not resolve throws a VokException
/// "Unresolved VokObjLinks"; only for documents of the oldest versions, which were written without
/// a check, the links are dropped with a warning on the standard error stream. `outdatedVersion` is
/// empty for a document of the current version; `failure` receives the links that it failed over.
void ResolveDocumentLinks(VokWorld& world, const std::string& outdatedVersion,
                          VokParseFailure& failure);
