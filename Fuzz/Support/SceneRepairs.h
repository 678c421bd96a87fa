#pragma once

#include "Support/ElementTree.h"
#include "Support/Random.h"
#include "Support/Vocabulary.h"

/// What a change of a tree may have broken, and what would keep every document from being loaded:
/// links that lead nowhere are turned to an object of a kind that the samples link to from there.
void MendLinks(Element& root, const Vocabulary& vocabulary, Random& random);

/// Joints, materials and controllers get names of their own, for the file knows them by name.
void MendNames(Element& root);
