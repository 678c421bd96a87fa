#include <BiffLib/CBlock.h>

#include <BiffLib/CAlign.h>
#include <BiffLib/CData.h>
#include <QelTools/Exception.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

using QelTools::Common::TextException;

namespace Biff {

namespace {

constexpr char kElementTooLarge[] =
    "BiffLib cannot handle data element sizes greater than 16 bytes";

constexpr std::uint32_t kNotANumber = 0x7FC00000u;

}  // namespace

void CBlock::AppendLabel(std::uint32_t label) {
    items.push_back(std::make_unique<CLabel>(label));
}

void CBlock::AppendAlign(std::uint32_t multiple) {
    kind = kLeafBlock;
    items.push_back(std::make_unique<CAlign>(multiple));
}

COffset& CBlock::AppendOffset(std::uint32_t label, std::uint32_t from, std::uint32_t storage,
                              std::uint32_t stride) {
    auto offset = std::make_unique<COffset>(label, from, storage, stride);
    COffset& appended = *offset;
    items.push_back(std::move(offset));
    return appended;
}

void CBlock::AppendData(const void* source, std::uint32_t elementSize, std::uint32_t count) {
    if (elementSize > CData::kMaxElementSize) throw TextException(kElementTooLarge);
    kind = kLeafBlock;
    if (items.empty() || items.back()->type != kDataItem)
        items.push_back(std::make_unique<CData>());
    CData& data = static_cast<CData&>(*items.back());
    const std::size_t length = std::size_t{elementSize} * count;
    if (length != 0) {
        const auto* first = static_cast<const std::uint8_t*>(source);
        data.bytes.insert(data.bytes.end(), first, first + length);
    }
    data.runs.push_back({elementSize, count});
}

void CBlock::AppendU8(std::uint8_t value) {
    AppendData(&value, sizeof value, 1);
}

void CBlock::AppendU16(std::uint16_t value) {
    AppendData(&value, sizeof value, 1);
}

void CBlock::AppendU32(std::uint32_t value) {
    AppendData(&value, sizeof value, 1);
}

void CBlock::AppendI32(std::int32_t value) {
    AppendData(&value, sizeof value, 1);
}

void CBlock::AppendFloat(float value) {
    AppendU32(std::isnan(value) ? kNotANumber : std::bit_cast<std::uint32_t>(value));
}

void CBlock::AppendFloats(std::span<const float> values) {
    const bool numbers =
        std::none_of(values.begin(), values.end(), [](float value) { return std::isnan(value); });
    if (numbers)
        AppendData(values.data(), sizeof(float), static_cast<std::uint32_t>(values.size()));
    else
        for (const float value : values) AppendFloat(value);
}

void CBlock::AppendMagic(std::string_view magic) {
    AppendData(magic.data(), 1, static_cast<std::uint32_t>(magic.size()));
}

}  // namespace Biff
