#pragma once

#include <set>
#include <string>
#include <vector>

/// Names lead from a source to its test and back:
///
/// - `Tests/<folder>/<Thing>[Facet]Test.cpp` stands in the folder of its thing. The thing is the
///   longest beginning of the name that names a header or a source of `<folder>`: a folder of a
///   library, a folder of `Standalone`, `Runtime/skeleton` for `Tests/Runtime`, the tests' own
///   helpers for `Tests/House` and `Tests/Support`. Whole runs stand in `Tests/EndToEnd` and
///   `Tests/Faults`; their thing is a program, or `Programs` for what holds for several.
/// - Each source of a library has a test whose thing its own name begins with: `CBlockWrite.cpp` is
///   held by `CBlockTest.cpp`. What has none, because its rules show only in something larger, is
///   listed with the test that holds it.

/// A test that holds sources which have none of their own, by their paths below `Libraries` without
/// the ending.
struct HeldElsewhere {
    std::string test;
    std::vector<std::string> sources;
};

/// The list for this checkout.
const std::vector<HeldElsewhere>& SourcesHeldElsewhere();

/// What the names of the files at `paths` do against the rule, one line of text for each fault, and
/// what in the list no longer holds. Paths begin at the repository's root.
std::vector<std::string> TestNameFaults(const std::set<std::string>& paths,
                                        const std::vector<HeldElsewhere>& elsewhere);
