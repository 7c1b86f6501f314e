/// @file
/// Conversion of a module's fields to text.
#include "BitFunctions.h"
#include "TransceiverImages.h"

using namespace transceiver_test;

namespace {

std::string Trimmed(char* (*trim)(char*, char), const std::string& text, char character) {
    char buffer[64];
    std::strcpy(buffer, text.c_str());
    EXPECT_EQ(trim(buffer, character), buffer);
    return buffer;
}

TEST(BitFunctionsTest, Sign) {
    EXPECT_EQ(Sign(-2147483647 - 1), -1);
    EXPECT_EQ(Sign(-1), -1);
    EXPECT_EQ(Sign(0), 0);
    EXPECT_EQ(Sign(1), 1);
    EXPECT_EQ(Sign(2147483647), 1);
}

TEST(BitFunctionsTest, HighestSetBit) {
    EXPECT_EQ(GetMSB(0), 0);
    EXPECT_EQ(GetMSB(1), 0);
    EXPECT_EQ(GetMSB(2), 1);
    EXPECT_EQ(GetMSB(0xFF), 7);
    EXPECT_EQ(GetMSB(0x100), 8);
    EXPECT_EQ(GetMSB(0x80000000), 31);
    EXPECT_EQ(GetMSB(0xFFFFFFFF), 31);
}

TEST(BitFunctionsTest, StateOfABit) {
    EXPECT_EQ(findbit(0x80, 7, false), 1);
    EXPECT_EQ(findbit(0x7F, 7, false), 0);
    EXPECT_EQ(findbit(0x01, 0, false), 1);
    EXPECT_EQ(findbit(0x100, 8, false), -1); // only bits 7 to 0
    EXPECT_EQ(findbit(0x100, 8, true), 1);
    EXPECT_EQ(findbit(0x8000, 15, true), 1);
    EXPECT_EQ(findbit(0x7FFF, 15, true), 0);
    EXPECT_EQ(findbit(0x10000, 16, true), -1);
    EXPECT_EQ(findbit(1, -1, false), -1);
    EXPECT_EQ(findbit(1, -1, true), -1);
}

TEST(FieldDecodersTest, TrimsTheSeparatorsAtTheEndOrAllOfThem) {
    EXPECT_EQ(Trimmed(RTrimBuf, "a,b,,", ','), "a,b");
    EXPECT_EQ(Trimmed(RTrimBuf, "a, ", ','), "a, ");
    EXPECT_EQ(Trimmed(RTrimBuf, ",,,", ','), ","); // keeps its first
    EXPECT_EQ(Trimmed(RTrimBuf, "", ','), "");
    EXPECT_EQ(Trimmed(LTrimBuf, ",a,b,", ','), "ab"); // every one, anywhere
    EXPECT_EQ(Trimmed(LTrimBuf, "a b", '\0'), "a b");
    EXPECT_EQ(Trimmed(RTrimBuf, "a b", '\0'), "a b");
    EXPECT_EQ(Trimmed(TrimBuf, "one, two, ", ','), "one two "); // both pieces keep their blanks
    EXPECT_EQ(Trimmed(TrimBuf, " 1 6 0 0 ", ' '), "1600");
    EXPECT_EQ(Trimmed(TrimBuf, "   ", ' '), "");
    EXPECT_EQ(RTrimBuf(nullptr, ','), nullptr);
    EXPECT_EQ(LTrimBuf(nullptr, ','), nullptr);
    EXPECT_EQ(TrimBuf(nullptr, ','), nullptr);
}

TEST(FieldDecodersTest, FamilyByTheFirstByte) {
    for (int identifier = 0; identifier < 256; ++identifier) {
        const Image image = Image().Set(0, {identifier});
        const bool isQsfp = identifier == 12 || identifier == 13 || identifier == 17 || identifier == 18;
        EXPECT_EQ(image.View().IsQsfp(), isQsfp) << identifier;
        EXPECT_EQ(image.View().Base(), isQsfp ? 128 : 0) << identifier;
        EXPECT_EQ(FieldTableOf(image.View()), isQsfp ? FieldIndxTableQSFP : FieldIndxTable) << identifier;
    }
}

TEST(FieldDecodersTest, FieldsByOffset) {
    const Image sfp;
    EXPECT_STREQ(FieldAt(sfp.View(), 37)->Name, "Vendor OUI");
    EXPECT_STREQ(FieldAt(sfp.View(), 509)->Name, "MCU Version"); // the first of two
    EXPECT_EQ(FieldAt(sfp.View(), 61)->Offset, 65535);           // no row begins there
    EXPECT_EQ(FieldAt(sfp.View(), 65534)->Offset, 65535);        // a heading is never found
    EXPECT_EQ(FieldAt(sfp.View(), 65535)->Offset, 65535);        // the end row, never null
    EXPECT_EQ(FieldAt(sfp.View(), SIZE_MAX)->Offset, 65535);
    const Image qsfp = Image().Set(0, {17});
    EXPECT_STREQ(FieldAt(qsfp.View(), 165)->Name, "Vendor OUI");
    EXPECT_STREQ(FieldAt(qsfp.View(), 140)->Name, "BR, Nominal");
    EXPECT_STREQ(FieldAt(qsfp.View(), 222)->Name, "BR, Nominal");
    EXPECT_EQ(FieldAt(qsfp.View(), 256)->Offset, 65535);
    // A field outside a shorter image is not found.
    EXPECT_EQ(FieldAt(ModuleImage(sfp.View().Sub(0, 96)), 95)->Offset, 95);
    EXPECT_EQ(FieldAt(ModuleImage(sfp.View().Sub(0, 95)), 95)->Offset, 65535);
}

TEST(FieldDecodersTest, ReadsATextWithALetterOrADigitAndElseZero) {
    DecodedText text;
    const auto decode = [&text](const Image& image) -> std::string {
        return GetAsciiData(FieldAt(image.View(), 56), image.View(), text);
    };
    EXPECT_EQ(decode(Image().Set(56, "A1  ")), "A1  "); // padding stays
    EXPECT_EQ(decode(Image().Set(56, "ABCD")), "ABCD"); // fills its field
    EXPECT_EQ(decode(Image().Set(56, "    ")), "0");
    EXPECT_EQ(decode(Image().Set(56, "-./_")), "0");
    EXPECT_EQ(decode(Image().Set(56, " -z ")), " -z ");
    EXPECT_EQ(decode(Image().Set(56, "@[`{")), "0"); // the neighbours of the letters
    EXPECT_EQ(decode(Image().Set(56, "/:  ")), "0"); // and of the digits
    EXPECT_EQ(decode(Image()), "0");
    EXPECT_EQ(decode(Image().Set(56, {0, 'A', 'B', 'C'})), "0"); // the text ends at its first zero byte
    EXPECT_EQ(decode(Image().Set(56, {'B', 0, 'C', 'D'})), "B");
    EXPECT_EQ(decode(Image().Set(56, {0xC4, 0xE9, 0xFF, 0xAA})), "0"); // above 127: neither letter nor digit
}

TEST(FieldDecodersTest, ReadsTheLastOrEveryBitThatIsListed) {
    DecodedText text;
    const auto decode = [&text](VX_UINT8 byte, bool accumulate) -> std::string {
        std::strcpy(text, "be,fore");
        return GetBitDataCodeTable(byte, FCTransMediaCodeTbl, text, accumulate);
    };
    EXPECT_EQ(decode(0x05, true), "SM M5 ");
    EXPECT_EQ(decode(0x05, false), "M5 "); // the last match wins
    EXPECT_EQ(decode(0x02, true), "  ");
    EXPECT_EQ(decode(0xFF, true), "SM   M5 M6 TV MI TP TW ");
    EXPECT_EQ(decode(0xFF, false), "TW ");
    EXPECT_EQ(decode(0x00, true), ""); // a byte of 0 empties it
    // No row of the long table has bit 1: the destination keeps what it held, but for its commas.
    std::strcpy(text, "be,fore");
    EXPECT_STREQ(GetBitDataCodeTable(0x02, FCTransMediaTbl, text, true), "before");
}

TEST(FieldDecodersTest, LeavesTheTextForAByteThatIsNotListed) {
    DecodedText text;
    const auto decode = [&text](VX_UINT8 byte) -> std::string {
        std::strcpy(text, "be,fore");
        return GetByteDataCodeTable(byte, EncodingTbl, text, true);
    };
    EXPECT_EQ(decode(0), ""); // the table's own text of 0 is never reached
    EXPECT_EQ(decode(1), "8B10B ");
    EXPECT_EQ(decode(8), "PAM4 ");
    EXPECT_EQ(decode(9), "before");
    EXPECT_EQ(decode(255), "before");
}

} // namespace
