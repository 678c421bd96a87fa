#include <BiffLib/CBlock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <vector>

#include "BiffLib/WrittenBytes.h"

using Biff::CBlock;
using Biff::ReserveLabel;

namespace {

// What a producer appended, kept apart from the block so that the test reads the file by itself.
struct Element {
    enum Kind { Data, Align, Label, Offset } kind;
    std::vector<std::uint8_t> bytes;  // Data: one element in little-endian order
    std::uint32_t number;             // Align: the multiple; Label, Offset: the label
    std::uint32_t origin;
    std::uint32_t storage;
    std::uint32_t stride;
};

class RandomProducer {
  public:
    explicit RandomProducer(std::uint32_t seed) : random(seed) {
        for (std::uint32_t& label : labels) label = ReserveLabel();
    }

    void Fill(CBlock& block) {
        std::vector<std::uint32_t> left(labels.begin(), labels.end() - 2);
        std::shuffle(left.begin(), left.end(), random);
        for (int i = 0; i < 200; ++i) {
            switch (Below(4)) {
                case 0:
                    AddData(block);
                    break;
                case 1:
                    AddAlign(block, 1u << Below(6));
                    break;
                case 2:
                    AddOffset(block);
                    break;
                default:
                    if (left.empty()) break;
                    AddAlign(block, 8);
                    block.AppendLabel(left.back());
                    elements.push_back({Element::Label, {}, left.back(), 0, 0, 0});
                    left.pop_back();
            }
        }
    }

    std::vector<Element> elements;

  private:
    std::uint32_t Below(std::uint32_t limit) {
        return static_cast<std::uint32_t>(random()) % limit;
    }

    void AddData(CBlock& block) {
        const std::uint32_t size = 1 + Below(16);
        const std::uint32_t count = 1 + Below(5);
        std::vector<std::uint8_t> all;
        for (std::uint32_t i = 0; i < count; ++i) {
            std::vector<std::uint8_t> bytes(size);
            for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(Below(256));
            all.insert(all.end(), bytes.begin(), bytes.end());
            elements.push_back({Element::Data, bytes, 0, 0, 0, 0});
        }
        block.AppendData(InHostOrder(all, size).data(), size, count);
    }

    void AddAlign(CBlock& block, std::uint32_t multiple) {
        block.AppendAlign(multiple);
        elements.push_back({Element::Align, {}, multiple, 0, 0, 0});
    }

    void AddOffset(CBlock& block) {
        const std::uint32_t label = labels[Below(static_cast<std::uint32_t>(labels.size()))];
        const std::uint32_t origin = Below(2);
        const std::uint32_t storage = 2 + Below(3);
        const std::uint32_t stride = 1u << Below(4);
        block.AppendOffset(label, origin, storage, stride);
        elements.push_back({Element::Offset, {}, label, origin, storage, stride});
    }

    std::mt19937 random;
    std::array<std::uint32_t, 12> labels{};  // the last two are never appended
};

using Labels = std::map<std::uint32_t, std::size_t>;

std::size_t SizeOf(const Element& element, std::size_t at) {
    switch (element.kind) {
        case Element::Data:
            return element.bytes.size();
        case Element::Align:
            return (element.number - at % element.number) % element.number;
        case Element::Offset:
            return element.storage;
        default:
            return 0;
    }
}

Labels FindLabels(const std::vector<Element>& elements) {
    Labels labels;
    std::size_t at = 0;
    for (const Element& element : elements) {
        if (element.kind == Element::Label) labels[element.number] = at;
        at += SizeOf(element, at);
    }
    return labels;
}

// The bytes that an element has in the little-endian form at `at`.
std::string Expected(const Element& element, std::size_t at, const Labels& labels) {
    if (element.kind == Element::Data)
        return std::string(element.bytes.begin(), element.bytes.end());
    if (element.kind != Element::Offset) return std::string(SizeOf(element, at), '\0');
    const auto found = labels.find(element.number);
    if (found == labels.end())
        return std::string(element.storage, element.origin == 0 ? '\xFF' : '\0');
    const long stride = element.stride;
    const long from = element.origin == 0 ? 0 : static_cast<long>(at) / stride;
    const long value = static_cast<long>(found->second) / stride - from;
    std::string bytes;
    for (std::uint32_t i = 0; i < element.storage; ++i)
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(value >> (8 * i))));
    return bytes;
}

void ExpectFile(const std::string& file, const std::vector<Element>& elements, bool reversed) {
    const Labels labels = FindLabels(elements);
    std::size_t at = 0;
    for (const Element& element : elements) {
        std::string bytes = Expected(element, at, labels);
        if (reversed) std::reverse(bytes.begin(), bytes.end());
        ASSERT_EQ(file.substr(at, bytes.size()), bytes) << "at " << at;
        at += bytes.size();
    }
    EXPECT_EQ(file.size(), at);
}

}  // namespace

TEST(RandomBlocks, ReadTheSameInBothByteOrders) {
    for (std::uint32_t seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        CBlock block;
        RandomProducer producer(seed);
        producer.Fill(block);
        const std::string little = Little(block);
        ExpectFile(little, producer.elements, false);
        ExpectFile(Big(block), producer.elements, true);
        EXPECT_EQ(Little(block), little);
    }
}

TEST(RandomBlocks, ManyOffsetsToManyLabelsAreAllFilledIn) {
    CBlock block;
    constexpr std::uint32_t kCount = 100000;
    std::vector<std::uint32_t> labels(kCount);
    for (std::uint32_t& label : labels) label = ReserveLabel();
    for (const std::uint32_t label : labels) block.AppendOffset(label, Biff::kAbsolute, 4, 1);
    for (const std::uint32_t label : labels) {
        block.AppendLabel(label);
        block.AppendU8(7);
    }
    const std::string file = Big(block);
    ASSERT_EQ(file.size(), 5u * kCount);
    for (std::uint32_t i = 0; i < kCount; ++i) {
        std::uint32_t value = 0;
        for (std::uint32_t byte = 0; byte < 4; ++byte)
            value = value << 8 | static_cast<unsigned char>(file[4 * i + byte]);
        ASSERT_EQ(value, 4 * kCount + i);
    }
}
