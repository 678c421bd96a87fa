#pragma once

#include "Support/ElementTree.h"

#include <set>
#include <string>
#include <vector>

/// Whether an element stands for an object of the scene, which links can lead to.
bool IsObject(const Element& element);

/// Whether a value is a link that leads somewhere, or is meant to.
bool IsLink(const std::string& value);

struct SceneObject {
    std::string path;
    std::string element;  ///< its element's name
};

/// The objects below `root` with their paths, in document order.
std::vector<SceneObject> FindObjects(const Element& root);
