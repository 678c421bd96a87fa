#include "Support/SceneRepairs.h"

#include "Support/SceneObjects.h"

#include <set>
#include <string>
#include <vector>

namespace {

class LinkMender {
  public:
    LinkMender(const Element& root, const Vocabulary& words, Random& numbers)
        : vocabulary(words), random(numbers), objects(FindObjects(root)) {
        for (const SceneObject& object : objects) paths.insert(object.path);
    }

    void Mend(Element& element, const Element* parent) {
        for (auto& [name, value] : element.attributes)
            if (IsLink(value) && paths.count(value) == 0)
                value = Choose(vocabulary.Of(element, parent), name);
        if (IsLink(element.text) && paths.count(element.text) == 0) element.text = Choose({}, "");
        for (Element& child : element.children) Mend(child, &element);
    }

  private:
    std::string Choose(const Vocabulary::Word& word, const std::string& attribute) {
        if (objects.empty()) return "";
        const auto kinds = word.linkedObjects.find(attribute);
        // The first of the wanted kind behind a random place.
        const std::size_t start = random.Below(objects.size());
        for (std::size_t i = 0; kinds != word.linkedObjects.end() && i < objects.size(); ++i) {
            const SceneObject& object = objects[(start + i) % objects.size()];
            if (kinds->second.count(object.element) != 0) return object.path;
        }
        return objects[start].path;
    }

    const Vocabulary& vocabulary;
    Random& random;
    std::vector<SceneObject> objects;
    std::set<std::string> paths;
};

void MendNames(Element& element, std::set<std::string>& taken) {
    const bool isKnownByName = element.name == "joint" || element.name == "material" ||
                               element.name == "blendshapeController";
    std::string* name = isKnownByName ? element.Find("name") : nullptr;
    if (name != nullptr) {
        const std::string stem = name->substr(0, 40);
        for (std::size_t number = taken.size(); !taken.insert(*name).second; ++number)
            *name = stem + std::to_string(number);
    }
    for (Element& child : element.children) MendNames(child, taken);
}

}  // namespace

void MendLinks(Element& root, const Vocabulary& vocabulary, Random& random) {
    LinkMender(root, vocabulary, random).Mend(root, nullptr);
}

void MendNames(Element& root) {
    std::set<std::string> taken;
    MendNames(root, taken);
}
