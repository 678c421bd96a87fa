#include <HashClient/ProxyMessage.h>

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using ProxyMessage::AddStringRequest;
using ProxyMessage::ReadRequest;
using ProxyMessage::Request;

constexpr std::size_t kSizePlace = 4;
constexpr std::size_t kFirstOffset = 8;
constexpr std::size_t kStringOffset = 20;
constexpr std::size_t kHeader = 24;

void PutWord(std::string& message, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) message[at + i] = static_cast<char>(value >> (8 * i));
}

std::string AddString(const char* application = "app", const char* resource = "res",
                      const char* category = "joint", const char* string = "hips") {
    std::array<char, ProxyMessage::kBufferSize> buffer;
    return std::string(buffer.data(), ProxyMessage::ComposeAddString(buffer, application, resource,
                                                                     category, string));
}

std::string Changed(std::size_t place, std::uint32_t value) {
    std::string message = AddString();
    PutWord(message, place, value);
    return message;
}

Request Kind(const std::string& message) {
    // Bytes behind the end are found by the sanitizers alone when the message has its own memory.
    const std::vector<char> own(message.begin(), message.end());
    AddStringRequest strings;
    return ReadRequest(own, strings);
}

}  // namespace

TEST(ProxyRequest, AStringComesWithItsCategoryAndWhoAsks) {
    const std::string message = AddString("a\xE9", "", "", "\xFF");
    AddStringRequest strings;
    ASSERT_EQ(ReadRequest(message, strings), Request::AddString);
    EXPECT_EQ(strings.applicationName, "a\xE9");
    EXPECT_EQ(strings.resourceName, "");
    EXPECT_EQ(strings.category, "");
    EXPECT_EQ(strings.string, "\xFF");
}

TEST(ProxyRequest, AGoodbyeIsKnownByItsId) {
    std::array<char, 21> buffer;
    ASSERT_EQ(ProxyMessage::ComposeShutdown(buffer), 21u);
    EXPECT_EQ(Kind(std::string(buffer.data(), buffer.size())), Request::Shutdown);
    EXPECT_EQ(Kind(std::string("\2\0\0\0\x08\0\0\0", 8)), Request::Shutdown);
}

TEST(ProxyRequest, OtherIdsAreMalformed) {
    for (const std::uint32_t id : {1u, 3u, 0x80000000u, 0xFFFFFFFFu})
        EXPECT_EQ(Kind(Changed(0, id)), Request::Malformed) << id;
}

TEST(ProxyRequest, EveryCutIsMalformed) {
    const std::string whole = AddString();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(Kind(whole.substr(0, size)), Request::Malformed) << size;
        std::string cut = whole.substr(0, size);
        if (size >= kFirstOffset) PutWord(cut, kSizePlace, static_cast<std::uint32_t>(size));
        EXPECT_EQ(Kind(cut), Request::Malformed) << size;
    }
}

TEST(ProxyRequest, ASizeOtherThanTheMessagesIsMalformed) {
    const auto size = static_cast<std::uint32_t>(AddString().size());
    for (const std::uint32_t wrong : {0u, size - 1, size + 1, 0xFFFFFFFFu})
        EXPECT_EQ(Kind(Changed(kSizePlace, wrong)), Request::Malformed) << wrong;
    EXPECT_EQ(Kind(Changed(kSizePlace, size)), Request::AddString);
}

TEST(ProxyRequest, OffsetsStayBehindTheHeaderAndInsideTheMessage) {
    const auto size = static_cast<std::uint32_t>(AddString().size());
    for (std::uint32_t place = kFirstOffset; place <= kStringOffset; place += 4) {
        const auto first = static_cast<std::uint32_t>(kHeader) - place;
        const std::uint32_t end = size - place;
        for (const std::uint32_t wrong :
             {1u, first - 1, end, end + 1, 0x7FFFFFFFu, 0x80000000u, 0u - place, 0xFFFFFFFFu}) {
            EXPECT_EQ(Kind(Changed(place, wrong)), Request::Malformed) << place << " " << wrong;
        }
        EXPECT_EQ(Kind(Changed(place, first)), Request::AddString) << place;
        EXPECT_EQ(Kind(Changed(place, end - 1)), Request::AddString) << place;
    }
}

TEST(ProxyRequest, AnOffsetOfZeroIsNoString) {
    AddStringRequest strings;
    const std::string nameless = Changed(8, 0);
    EXPECT_EQ(ReadRequest(nameless, strings), Request::AddString);
    EXPECT_EQ(strings.applicationName, "");
    EXPECT_EQ(strings.string, "hips");
    EXPECT_EQ(Kind(Changed(12, 0)), Request::AddString);
    EXPECT_EQ(Kind(Changed(16, 0)), Request::Malformed);
    EXPECT_EQ(Kind(Changed(20, 0)), Request::Malformed);
}

TEST(ProxyRequest, AStringWithoutItsEndIsMalformed) {
    std::string message = AddString();
    message.back() = 'x';
    EXPECT_EQ(Kind(message), Request::Malformed);
}

TEST(ProxyReply, AHashIsSixteenBytes) {
    std::array<char, 16> buffer;
    ASSERT_EQ(ProxyMessage::ComposeAddStringReply(buffer, 0x12345678, std::nullopt), 16u);
    EXPECT_EQ(std::string(buffer.data(), 16),
              std::string("\0\0\0\x80\x10\0\0\0\x78\x56\x34\x12\0\0\0\0", 16));
}

TEST(ProxyReply, ACollisionGivesTheOtherString) {
    std::array<char, 22> buffer;
    ASSERT_EQ(ProxyMessage::ComposeAddStringReply(buffer, 0x12345678, "spine"), 22u);
    EXPECT_EQ(std::string(buffer.data(), 22),
              std::string("\0\0\0\x80\x16\0\0\0\x78\x56\x34\x12\4\0\0\0spine\0", 22));
    std::uint32_t hash = 0;
    std::span<const char> other;
    ASSERT_TRUE(ProxyMessage::ReadAddStringReply(buffer, hash, other));
    EXPECT_EQ(std::string(other.data(), other.size()), "spine");
    ASSERT_EQ(ProxyMessage::ComposeAddStringReply(buffer, 1, ""), 17u);
    ASSERT_TRUE(ProxyMessage::ReadAddStringReply({buffer.data(), 17}, hash, other));
    EXPECT_NE(other.data(), nullptr);
    EXPECT_EQ(other.size(), 0u);
}

TEST(ProxyReply, AGoodbyeIsAnsweredByItsId) {
    std::array<char, 8> buffer;
    ASSERT_EQ(ProxyMessage::ComposeShutdownReply(buffer), 8u);
    EXPECT_EQ(std::string(buffer.data(), 8), std::string("\2\0\0\x80\x08\0\0\0", 8));
}

TEST(ProxyReply, WhatDoesNotFitIsNotComposed) {
    std::array<char, 21> buffer;
    EXPECT_EQ(ProxyMessage::ComposeAddStringReply(buffer, 1, "spine"), 0u);
    EXPECT_EQ(ProxyMessage::ComposeAddStringReply({buffer.data(), 15}, 1, std::nullopt), 0u);
    EXPECT_EQ(ProxyMessage::ComposeShutdownReply({buffer.data(), 7}), 0u);
}

TEST(ProxyReply, EveryStringThatARequestHoldsFitsTheReply) {
    std::array<char, ProxyMessage::kBufferSize> buffer;
    const std::string longest(ProxyMessage::kBufferSize - kHeader - 4, 'a');
    ASSERT_EQ(ProxyMessage::ComposeAddString(buffer, "", "", "", longest.c_str()),
              ProxyMessage::kBufferSize);
    EXPECT_NE(ProxyMessage::ComposeAddStringReply(buffer, 1, longest), 0u);
}
