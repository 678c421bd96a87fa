#include "Support/Vocabulary.h"

#include "Support/SceneObjects.h"

#include <algorithm>

namespace {

constexpr std::size_t kMostValues = 64;

void AddOnce(std::vector<std::string>& list, const std::string& value) {
    if (list.size() < kMostValues && std::find(list.begin(), list.end(), value) == list.end())
        list.push_back(value);
}

/// The same name means another thing inside another object ("target", "binding").
std::string KeyOf(const Element& element, const Element* parent) {
    if (parent == nullptr || IsObject(element)) return element.name;
    return parent->name + '/' + element.name;
}

}  // namespace

void Vocabulary::Learn(ElementDocument sample) {
    const ElementDocument& kept = samples.emplace_back(std::move(sample));
    std::map<std::string, std::string> elementsByPath;
    for (SceneObject& object : FindObjects(kept.root))
        elementsByPath.emplace(std::move(object.path), std::move(object.element));
    Learn(kept.root, nullptr, elementsByPath);
}

const Vocabulary::Word& Vocabulary::Of(const Element& element, const Element* parent) const {
    static const Word empty;
    const auto found = words.find(KeyOf(element, parent));
    return found == words.end() ? empty : found->second;
}

void Vocabulary::Learn(const Element& element, const Element* parent,
                       const std::map<std::string, std::string>& elementsByPath) {
    Word& word = words[KeyOf(element, parent)];
    for (const auto& [name, value] : element.attributes) {
        std::vector<std::string>& values = word.values[name];
        AddOnce(values, value);
        const auto linked = elementsByPath.find(value);
        if (linked != elementsByPath.end()) word.linkedObjects[name].insert(linked->second);
    }
    if (!element.text.empty()) AddOnce(word.texts, element.text);
    for (const Element& child : element.children) {
        word.children.push_back(&child);
        Learn(child, &element, elementsByPath);
    }
}
