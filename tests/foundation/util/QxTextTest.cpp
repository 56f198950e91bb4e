// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxText.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace std::string_literals;

std::string roundTrip(const std::string& utf8) {
    return QxText::fromUtf8(utf8).toUtf8();
}

TEST(QxText, IsEqualByContentAndCopiesIt) {
    const QxText a(L"Kn\u00F6chel");
    QxText b;
    b = L"Kn\u00F6chel";
    EXPECT_EQ(a.equals(&b), 1);
    EXPECT_EQ(a.hashCode(), b.hashCode());
    EXPECT_EQ(a.length(), 7);
    QxText* const clone = b.cloneObject();
    b = b.pString() + 1;
    EXPECT_EQ(b.equals(&a), 0);
    EXPECT_EQ(b.string(), L"n\u00F6chel");
    EXPECT_EQ(clone->equals(&a), 1);
    clone->copyAttributes(&b);
    const QxObject plain;
    const QxObject* const none = nullptr;
    for (const QxObject* source : {&plain, static_cast<const QxObject*>(clone), none}) {
        clone->copyObject(source);
        EXPECT_EQ(clone->string(), L"n\u00F6chel");
        EXPECT_EQ(a.equals(source), 0);
    }
    clone->vRelease();
    b = nullptr;
    EXPECT_EQ(b.length(), 0);
    EXPECT_EQ(QxText(static_cast<const wchar_t*>(nullptr)).equals(&b), 1);
}

TEST(QxText, KeepsEveryCharacterThroughUtf8) {
    for (char32_t c = 1; c <= 0x10FFFF; c += c < 0x3000 ? 1 : 13) {
        if (c >= 0xD800 && c <= 0xDFFF) {
            continue;
        }
        const std::wstring wide(1, static_cast<wchar_t>(c));
        ASSERT_EQ(QxText::decodeUtf8(QxText::encodeUtf8(wide)), wide) << std::hex << +c;
    }
    EXPECT_EQ(QxText(L"a\u00E9\u20AC\U0001F600").toUtf8(), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(roundTrip("a\0b"s), "a\0b"s);
}

TEST(QxText, ReplacesEachIllFormedUtf8SequenceOnce) {
    const std::string R = "\xEF\xBF\xBD";
    const std::pair<std::string, std::string> cases[] = {
        {"a\x80z", "a" + R + "z"},                 // continuation without a lead
        {"\xC3", R},                               // cut at the end
        {"\xE2\x82", R},                           // cut later
        {"\xE2\x82q", R + "q"},                    // broken off by a character
        {"\xF0\x9F\x98\xC3\xA9", R + "\xC3\xA9"},  // broken off by another lead
        {"\xC0\xAF", R + R},                       // overlong: the lead is never valid
        {"\xE0\x80\x80", R + R + R},               // overlong: the second byte is not
        {"\xED\xA0\x80", R + R + R},               // surrogate
        {"\xF4\x90\x80\x80", R + R + R + R},       // beyond the last character
        {"\xF0\x80\x80\x80", R + R + R + R},       // overlong, longer
        {"\xF5\x80\xFE\xFF", R + R + R + R},       // leads that never occur
        {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},  // the last character
        {"\xED\x9F\xBF\xEE\x80\x80", "\xED\x9F\xBF\xEE\x80\x80"},  // around the surrogates
    };
    for (const auto& [input, expected] : cases) {
        EXPECT_EQ(roundTrip(input), expected) << testing::PrintToString(input);
    }
}

TEST(QxText, WritesOnlyWellFormedUtf8) {
    const std::string R = "\xEF\xBF\xBD";
    const auto encoded = [](std::initializer_list<unsigned> units) {
        return QxText::encodeUtf8(std::wstring(units.begin(), units.end()));
    };
    EXPECT_EQ(encoded({0xD83D, 0xDE00}), "\xF0\x9F\x98\x80");
    EXPECT_EQ(encoded({0xD83D, 'x'}), R + "x");
    EXPECT_EQ(encoded({0xDE00, 0xD83D}), R + R);
    if (sizeof(wchar_t) == 4) {
        EXPECT_EQ(encoded({0x110000, 0xFFFFFFFF, 'x'}), R + R + "x");
    }
    std::mt19937 random(11);
    for (int i = 0; i < 20000; ++i) {
        std::string bytes(random() % 9, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(random() % 3 == 0 ? random() : 0x80 | (random() % 128));
        }
        const std::string once = roundTrip(bytes);
        ASSERT_EQ(roundTrip(once), once) << testing::PrintToString(bytes);
    }
}

}  // namespace
