#include <VokLib/Links/VokUnresolvedLinks.h>

#include <VokLib/Base/VokLimits.h>
#include <VokLib/Links/VokObjLink.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <string_view>

namespace {

constexpr const char* kNoOwner = "?";
constexpr const char* kArrow = "->";

/// FNV-1a, which can be carried on from the text in front.
constexpr std::uint64_t kEmptyHash = 0xCBF29CE484222325u;
std::uint64_t Hash(std::string_view text, std::uint64_t before) {
    constexpr std::uint64_t kPrime = 0x100000001B3u;
    for (const char c : text) before = (before ^ static_cast<unsigned char>(c)) * kPrime;
    return before;
}

bool IsWorld(const VokObj& object) {
    return object.IsExactly(VokWorld::TypeId());
}

/// What stands above an object under the world; null for the world's child.
const VokObj* Above(const VokObj& object) {
    const VokObj* const parent = object.GetParent();
    return parent != nullptr && !IsWorld(*parent) ? parent : nullptr;
}

std::size_t DepthOf(const VokObj* object) {
    std::size_t depth = 0;
    for (; object != nullptr; object = Above(*object)) ++depth;
    return depth;
}

/// The last part of a link's text: what stands behind the path of `top`, which is the owner, one
/// above it, or null for all of it.
std::string TextBelow(const VokObj* top, const VokObjLink& link) {
    std::vector<const std::string*> names;
    std::size_t length = 0;
    for (const VokObj* at = link.owner; at != top; at = Above(*at)) {
        names.push_back(&at->GetName());
        length += 1 + at->GetName().size();
    }
    std::string text;
    text.reserve(length + 2 + link.path.size());
    for (auto name = names.rbegin(); name != names.rend(); ++name) text.append("|").append(**name);
    if (link.owner == nullptr) text += kNoOwner;
    return text.append(kArrow).append(link.path);
}

/// The lowest object whose path begins the paths of both owners; null when there is none.
const VokObj* CommonOwner(const VokObj* a, const VokObj* b) {
    if (a == b) return a;
    if (a == nullptr || b == nullptr) return nullptr;
    if (Above(*a) == Above(*b)) return Above(*a);
    std::size_t depthOfA = DepthOf(a);
    std::size_t depthOfB = DepthOf(b);
    for (; depthOfA > depthOfB; --depthOfA) a = Above(*a);
    for (; depthOfB > depthOfA; --depthOfB) b = Above(*b);
    for (; a != b; a = Above(*a)) b = Above(*b);
    return a;
}

}  // namespace

bool VokUnresolvedLinks::ByText::operator()(const Entry& a, const Entry& b) const {
    const VokObj* const common = CommonOwner(a.link->owner, b.link->owner);
    return TextBelow(common, *a.link) < TextBelow(common, *b.link);
}

VokUnresolvedLinks::PathOfOwner VokUnresolvedLinks::Measure(const VokObj* owner) {
    if (owner == nullptr) return {1, Hash(kNoOwner, kEmptyHash)};
    std::vector<const VokObj*> unknown;
    const VokObj* at = owner;
    for (; at != nullptr && !paths.contains(at); at = Above(*at)) {
        // The world itself and what stands outside of one have no path: the path says so.
        if (at->GetParent() == nullptr) static_cast<void>(VokPath(owner));
        unknown.push_back(at);
    }
    PathOfOwner path = at != nullptr ? paths[at] : PathOfOwner{0, kEmptyHash};
    for (auto object = unknown.rbegin(); object != unknown.rend(); ++object) {
        const std::string& name = (*object)->GetName();
        path = {path.length + 1 + name.size(), Hash(name, Hash("|", path.hash))};
        paths.emplace(*object, path);
    }
    return path;
}

void VokUnresolvedLinks::Add(const VokObjLink& link) {
    const PathOfOwner path = Measure(link.owner);
    hashes.push_back(Hash(link.path, Hash(kArrow, path.hash)));
    const Entry entry{&link, path.length + 2 + link.path.size()};
    const bool isFull = keptBytes + entry.length > VokLimits::kMaxUnresolvedText;
    if (isFull && !kept.empty() && !ByText()(entry, *kept.rbegin())) {
        isCut = true;
        return;
    }
    if (!kept.insert(entry).second) return;
    keptBytes += entry.length;
    while (keptBytes > VokLimits::kMaxUnresolvedText && kept.size() > 1) {
        isCut = true;
        const auto last = std::prev(kept.end());
        keptBytes -= last->length;
        kept.erase(last);
    }
}

std::size_t VokUnresolvedLinks::Count() const {
    if (!isCut) return kept.size();
    std::vector<std::uint64_t> different = hashes;
    std::sort(different.begin(), different.end());
    return static_cast<std::size_t>(std::unique(different.begin(), different.end()) -
                                    different.begin());
}

std::vector<std::string> VokUnresolvedLinks::MakeTexts() const {
    std::vector<std::string> texts;
    for (const Entry& entry : kept) texts.push_back(TextBelow(nullptr, *entry.link));
    return texts;
}
