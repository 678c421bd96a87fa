#include <VokLib/Links/VokTextTree.h>

#include <algorithm>

namespace {

std::size_t SharedLength(std::string_view a, std::string_view b) {
    const std::size_t most = std::min(a.size(), b.size());
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.begin() + most, b.begin()).first -
                                    a.begin());
}

}  // namespace

/// Where the child that begins with a byte hangs, or would.
VokTextTree::Place& VokTextTree::LinkToChild(Place parent, char first) {
    const auto order = static_cast<unsigned char>(first);
    Place* link = &nodes[parent].firstChild;
    while (*link != kStart && static_cast<unsigned char>(nodes[*link].label[0]) < order)
        link = &nodes[*link].nextSibling;
    return *link;
}

VokTextTree::Place VokTextTree::Append(Place place, std::string_view text) {
    while (!text.empty()) {
        // At most two nodes come; the reference below must outlive both.
        if (nodes.capacity() < nodes.size() + 2) nodes.reserve(2 * nodes.size() + 2);
        Place& link = LinkToChild(place, text[0]);
        if (link == kStart || nodes[link].label[0] != text[0]) {
            nodes.push_back({text, kStart, link, false});
            return link = static_cast<Place>(nodes.size() - 1);
        }
        const std::size_t shared = SharedLength(nodes[link].label, text);
        if (shared < nodes[link].label.size()) Split(link, shared);
        place = link;
        text.remove_prefix(shared);
    }
    return place;
}

/// Puts a node in front of the one at `link`, for the first bytes of its label.
void VokTextTree::Split(Place& link, std::size_t length) {
    const Place lower = link;
    Node upper = nodes[lower];
    upper.label = upper.label.substr(0, length);
    upper.firstChild = lower;
    upper.isText = false;
    nodes[lower].label.remove_prefix(length);
    nodes[lower].nextSibling = kStart;
    nodes.push_back(upper);
    link = static_cast<Place>(nodes.size() - 1);
}

void VokTextTree::Add(Place place) {
    if (!nodes[place].isText) ++count;
    nodes[place].isText = true;
}

void VokTextTree::VisitTexts(const std::function<bool(const std::string&)>& visit) const {
    std::string text;
    std::vector<Place> above;  // the nodes whose labels make up the text
    Place at = kStart;
    while (true) {
        text += nodes[at].label;
        if (nodes[at].isText && !visit(text)) return;
        above.push_back(at);
        Place next = nodes[at].firstChild;
        while (next == kStart) {
            const Node& done = nodes[above.back()];
            text.resize(text.size() - done.label.size());
            next = done.nextSibling;
            above.pop_back();
            if (above.empty()) return;
        }
        at = next;
    }
}
