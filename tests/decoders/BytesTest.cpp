#include "Data.h"

#include <array>
#include <cmath>

using decoders::Bytes;
using namespace decoders_test;

namespace {

const Data NUMBERS = {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF};

TEST(BytesTest, BigEndianNumbers) {
    const Bytes bytes(NUMBERS);
    EXPECT_EQ(bytes[0], 0x01);
    EXPECT_EQ(bytes[7], 0xEF);
    EXPECT_EQ(bytes.BigU16(0), 0x0123);
    EXPECT_EQ(bytes.BigU16(6), 0xCDEF);
    EXPECT_EQ(bytes.BigS16(0), 0x0123);
    EXPECT_EQ(bytes.BigS16(6), 0xCDEF - 0x10000);
    EXPECT_EQ(bytes.BigU32(1), 0x23456789u);
    EXPECT_EQ(bytes.BigU64(0), 0x0123456789ABCDEFu);
}

TEST(BytesTest, SignsAtTheEndsOfTheRange) {
    const auto number = [](int first, int second) {
        const Data data = {static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(second)};
        return Bytes(data).BigS16(0);
    };
    EXPECT_EQ(number(0x80, 0x00), -32768);
    EXPECT_EQ(number(0xFF, 0xFF), -1);
    EXPECT_EQ(number(0x00, 0x00), 0);
    EXPECT_EQ(number(0x7F, 0xFF), 32767);
}

TEST(BytesTest, LittleEndianNumbers) {
    const Bytes bytes(NUMBERS);
    EXPECT_EQ(bytes.LittleU16(0), 0x2301);
    EXPECT_EQ(bytes.LittleU16(6), 0xEFCD);
    EXPECT_EQ(bytes.LittleS16(6), 0xEFCD - 0x10000);
    EXPECT_EQ(bytes.LittleU16(7), 0x00EF); // the high byte is missing
}

TEST(BytesTest, Singles) {
    const Data data = {0x3F, 0x80, 0, 0, 0xC0, 0x40, 0, 0, 0x7F, 0x80, 0, 0, 0x7F, 0xC0, 0, 0, 0, 0, 0, 1};
    const Bytes bytes(data);
    EXPECT_EQ(bytes.BigSingle(0), 1.0f);
    EXPECT_EQ(bytes.BigSingle(4), -3.0f);
    EXPECT_TRUE(std::isinf(bytes.BigSingle(8)));
    EXPECT_TRUE(std::isnan(bytes.BigSingle(12)));
    EXPECT_EQ(bytes.BigSingle(16), std::ldexp(1.0f, -149)); // the smallest of all
}

/// A number of which the end is missing has zero bytes there: the bytes that are there keep their weight.
TEST(BytesTest, WhatIsMissingReadsAsZero) {
    const Bytes bytes(NUMBERS);
    EXPECT_EQ(bytes.BigU16(7), 0xEF00);
    EXPECT_EQ(bytes.BigU32(6), 0xCDEF0000u);
    EXPECT_EQ(bytes.BigU32(7), 0xEF000000u);
    EXPECT_EQ(bytes.BigU64(1), 0x23456789ABCDEF00u);
    EXPECT_EQ(bytes.BigU64(7), 0xEF00000000000000u);
    for (const std::size_t offset : {std::size_t{8}, std::size_t{9}, SIZE_MAX - 1, SIZE_MAX}) {
        EXPECT_EQ(bytes[offset], 0);
        EXPECT_EQ(bytes.BigU16(offset), 0);
        EXPECT_EQ(bytes.BigU32(offset), 0u);
        EXPECT_EQ(bytes.BigU64(offset), 0u);
        EXPECT_EQ(bytes.LittleU16(offset), 0);
        EXPECT_EQ(bytes.Text(offset, SIZE_MAX), "");
        EXPECT_TRUE(bytes.Sub(offset).empty());
    }
    const Bytes none;
    EXPECT_EQ(none.size(), 0u);
    EXPECT_EQ(none.BigU64(0), 0u);
    EXPECT_TRUE(Bytes(nullptr, 5).empty());
}

TEST(BytesTest, Holds) {
    const Bytes bytes(NUMBERS);
    EXPECT_TRUE(bytes.Holds(0, 8));
    EXPECT_TRUE(bytes.Holds(8, 0));
    EXPECT_TRUE(bytes.Holds(7, 1));
    EXPECT_FALSE(bytes.Holds(0, 9));
    EXPECT_FALSE(bytes.Holds(8, 1));
    EXPECT_FALSE(bytes.Holds(9, 0));
    EXPECT_FALSE(bytes.Holds(1, SIZE_MAX)); // their sum is 0
    EXPECT_FALSE(bytes.Holds(SIZE_MAX, 1));
}

TEST(BytesTest, SubViewsEndWithTheView) {
    const Bytes bytes(NUMBERS);
    EXPECT_EQ(bytes.Sub(2).size(), 6u);
    EXPECT_EQ(bytes.Sub(2, 3).size(), 3u);
    EXPECT_EQ(bytes.Sub(2, 3)[0], 0x45);
    EXPECT_EQ(bytes.Sub(2, 3)[3], 0); // though the byte is there
    EXPECT_EQ(bytes.Sub(6, 100).size(), 2u);
    EXPECT_EQ(bytes.Sub(6, SIZE_MAX).size(), 2u);
    EXPECT_EQ(bytes.Sub(8, 1).size(), 0u);
    EXPECT_EQ(bytes.Sub(2, 3).BigU32(0), 0x45678900u);
}

TEST(BytesTest, Texts) {
    const Page data = Page(16).Set(0, "AB  C   ").Set(9, {'D', 0, 'E', 0xE9, ' ', ' ', ' '});
    const Bytes bytes(data);
    EXPECT_EQ(bytes.Text(0, 8), "AB  C   ");
    EXPECT_EQ(bytes.PaddedText(0, 8), "AB  C"); // blanks inside stay
    EXPECT_EQ(bytes.PaddedText(5, 3), "");
    EXPECT_EQ(bytes.PaddedText(1, 3), "B");
    EXPECT_EQ(bytes.Text(8, 8), ""); // ends at its first zero byte
    EXPECT_EQ(bytes.Text(9, 7), "D");
    EXPECT_EQ(bytes.PaddedText(11, 100), "E\xE9"); // and with the view
    EXPECT_EQ(bytes.Text(0, 0), "");
    EXPECT_EQ(bytes.Text(0, Bytes::REST), "AB  C   ");
}

TEST(BytesTest, Sums) {
    EXPECT_EQ(Bytes().Sum(), 0);
    const Data data = {0xFF, 0x02, 0xFF};
    EXPECT_EQ(Bytes(data).Sum(), 0); // 255 + 2 + 255 is 512
    EXPECT_EQ(Bytes(data).Sub(1).Sum(), 1);
}

} // namespace
