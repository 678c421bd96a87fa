#include "Support/SceneObjects.h"

namespace {

void Collect(const Element& parent, const std::string& path, std::vector<SceneObject>& objects) {
    for (const Element& child : parent.children) {
        if (!IsObject(child)) continue;
        const std::string* name = child.Find("name");
        const std::string own = path + '|' + (name != nullptr ? *name : "");
        objects.push_back({own, child.name});
        Collect(child, own, objects);
    }
}

}  // namespace

bool IsObject(const Element& element) {
    // Parts of objects that have names, too.
    static const std::set<std::string> parts = {"attribute", "field", "target",  "array",
                                                "diff",      "input", "upobject"};
    if (element.name == "scene") return true;
    return element.Find("name") != nullptr && parts.count(element.name) == 0;
}

bool IsLink(const std::string& value) {
    return value.starts_with('|');
}

std::vector<SceneObject> FindObjects(const Element& root) {
    std::vector<SceneObject> objects;
    Collect(root, "", objects);
    return objects;
}
