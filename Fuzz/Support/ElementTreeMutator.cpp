#include "Support/ElementTreeMutator.h"

#include "Support/NumberMutations.h"
#include "Support/SceneObjects.h"
#include "Support/SceneRepairs.h"

#include <algorithm>
#include <utility>

namespace {

/// Beyond this a document is only changed and made smaller.
constexpr std::size_t kMostElements = 1500;

struct Place {
    Element* element;
    Element* parent;  ///< null for the root
};

void CollectPlaces(Element& element, Element* parent, std::vector<Place>& places) {
    places.push_back({&element, parent});
    for (Element& child : element.children) CollectPlaces(child, &element, places);
}

std::vector<Place> PlacesOf(Element& root) {
    std::vector<Place> places;
    CollectPlaces(root, nullptr, places);
    return places;
}

void Erase(const Place& place) {
    std::vector<Element>& siblings = place.parent->children;
    siblings.erase(siblings.begin() + (place.element - siblings.data()));
}

void Insert(Element& parent, Element child, Random& random) {
    const std::size_t at = random.Below(parent.children.size() + 1);
    parent.children.insert(parent.children.begin() + static_cast<std::ptrdiff_t>(at),
                           std::move(child));
}

void ChangeAttribute(const Place& place, const Vocabulary::Word& word, Random& random) {
    Element& element = *place.element;
    // The root's attributes tell the version, without which nothing is read.
    if (element.attributes.empty() || place.parent == nullptr) return;
    auto& [name, value] = element.attributes[random.Below(element.attributes.size())];
    if (IsLink(value)) {
        value = "|";  // leads nowhere, so that another target is found
    } else if (IsNumbers(value) && !random.OneIn(4)) {
        value = ChangeNumbers(value, random);
    } else if (const auto known = word.values.find(name); known != word.values.end()) {
        value = random.Pick(known->second);
    } else {
        value = OddNumber(random);
    }
}

void ChangeText(const Place& place, const Vocabulary::Word& word, Random& random) {
    std::string& text = place.element->text;
    if (!word.texts.empty() && random.OneIn(4))
        text = random.Pick(word.texts);
    else if (IsNumbers(text) || (text.empty() && !word.texts.empty()))
        text = ChangeNumbers(text, random);
    else if (IsLink(text))
        text = "|";
}

void AddAttribute(const Place& place, const Vocabulary::Word& word, Random& random) {
    if (word.values.empty() || place.parent == nullptr) return;
    auto known = word.values.begin();
    std::advance(known, static_cast<std::ptrdiff_t>(random.Below(word.values.size())));
    if (place.element->Find(known->first) != nullptr) return;
    place.element->attributes.emplace_back(known->first, random.Pick(known->second));
}

void RemoveAttribute(const Place& place, Random& random) {
    std::vector<std::pair<std::string, std::string>>& attributes = place.element->attributes;
    // Seldom: most attributes that documents have are required.
    if (attributes.empty() || place.parent == nullptr || !random.OneIn(8)) return;
    attributes.erase(attributes.begin() +
                     static_cast<std::ptrdiff_t>(random.Below(attributes.size())));
}

/// Large parts seldom: what is left would hold no skeleton.
void Remove(const Place& place, Random& random) {
    if (place.parent == nullptr) return;
    if (CountElements(*place.element) < 8 || random.OneIn(8)) Erase(place);
}

void Duplicate(const Place& place, Random& random) {
    if (place.parent == nullptr) return;
    Insert(*place.parent, Element(*place.element), random);
}

void Exchange(const Place& place, Random& random) {
    if (place.parent == nullptr) return;
    std::swap(*place.element, place.parent->children[random.Below(place.parent->children.size())]);
}

/// Puts a subtree below another place that has such elements, or may have them.
void Move(const std::vector<Place>& places, const Place& place, Random& random) {
    if (place.parent == nullptr) return;
    const Place& to = random.Pick(places);
    const bool fits = to.element->name == place.parent->name ||
                      (IsObject(*place.element) && IsObject(*to.element) && random.OneIn(4));
    if (!fits) return;
    Element moved = *place.element;
    // The copy first: what is inserted may stand inside what is erased.
    Erase(place);
    std::vector<Place> left;
    CollectPlaces(*place.parent, nullptr, left);
    Insert(*random.Pick(left).element, std::move(moved), random);
}

void Rename(const Place& place, const std::vector<Place>& places, Random& random) {
    std::string* name = IsObject(*place.element) ? place.element->Find("name") : nullptr;
    const Element& other = *random.Pick(places).element;
    const std::string* taken = other.Find("name");
    if (name == nullptr) return;
    if (taken != nullptr && random.OneIn(2))
        *name = *taken;
    else
        *name = (random.OneIn(4) ? "a:b:" : "n") + std::to_string(random.Below(100));
}

void CutTail(Element& element, Random& random) {
    if (element.children.empty()) return;
    element.children.resize(1 + random.Below(element.children.size()));
}

}  // namespace

void ElementTreeMutator::Mutate(ElementDocument& document, Random& random) const {
    const std::size_t changes = 1 + random.Below(3);
    for (std::size_t i = 0; i < changes; ++i) MutateOnce(document.root, random);
    Mend(document.root, random);
}

void ElementTreeMutator::MutateOnce(Element& root, Random& random) const {
    const std::vector<Place> places = PlacesOf(root);
    const Place place = random.Pick(places);
    const Vocabulary::Word& word = vocabulary.Of(*place.element, place.parent);
    const bool mayGrow = places.size() < kMostElements;
    switch (random.Below(16)) {
        case 0:
        case 1:
        case 2:
            return ChangeAttribute(place, word, random);
        case 3:
        case 4:
        case 5:
            return ChangeText(place, word, random);
        case 6:
            return AddAttribute(place, word, random);
        case 7:
            return RemoveAttribute(place, random);
        case 8:
            if (mayGrow) Duplicate(place, random);
            return;
        case 9:
            return Remove(place, random);
        case 10:
        case 11:
        case 12:
            if (mayGrow && !word.children.empty())
                Insert(*place.element, *random.Pick(word.children), random);
            return;
        case 13:
            return random.OneIn(2) ? Exchange(place, random) : Move(places, place, random);
        case 14:
            return Rename(place, places, random);
        default:
            if (place.parent != nullptr && random.OneIn(4)) CutTail(*place.element, random);
            return;
    }
}

void ElementTreeMutator::CrossOver(ElementDocument& document, const ElementDocument& other,
                                   Random& random) const {
    const std::vector<Place> places = PlacesOf(document.root);
    Element source = other.root;
    const std::vector<Place> donors = PlacesOf(source);
    const Place donor = random.Pick(donors);
    if (donor.parent == nullptr || places.size() + CountElements(*donor.element) > kMostElements)
        return;
    std::vector<Place> fitting;
    for (const Place& place : places)
        if (place.element->name == donor.parent->name) fitting.push_back(place);
    if (fitting.empty()) return;
    Insert(*random.Pick(fitting).element, *donor.element, random);
    Mend(document.root, random);
}

void ElementTreeMutator::Mend(Element& root, Random& random) const {
    // A few stay broken: failures are part of what is tested.
    if (!random.OneIn(32)) MendNames(root);
    if (!random.OneIn(32)) MendLinks(root, vocabulary, random);
}
