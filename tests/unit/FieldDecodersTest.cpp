/// @file
/// From the bytes of a module's field to text.
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

TEST(BitFunctionsTest, Swaps) {
    EXPECT_EQ(swapshort(0x1234), 0x3412);
    EXPECT_EQ(swapshort(0x0080), 0x8000);
    // F1 02, sign-extended, is FFFFF102: its upper half stays, FFFF02F1.
    EXPECT_EQ(static_cast<VX_UINT32>(swapshort(static_cast<VX_INT16>(0xF102))), 0xFFFF02F1u);
    for (const bool flag : {false, true}) {
        EXPECT_EQ(swapData(0x1234, flag), 0x3412);
        EXPECT_EQ(swapData(0x00FF, flag), 0xFF00);
        EXPECT_EQ(swapData(static_cast<int>(0xFFFF1234), flag), 0x3412);
    }
    EXPECT_EQ(swapint(0x12345678), 0x78563412);
    EXPECT_EQ(static_cast<VX_UINT32>(swapint(0x000000FE)), 0xFE000000u);
    EXPECT_EQ(swapint(static_cast<int>(0xFE000000)), 0xFE);
}

TEST(FieldDecodersTest, HexadecimalNumbers) {
    EXPECT_EQ(hexToDec(nullptr), 0);
    EXPECT_EQ(hexToDec(""), 0);
    EXPECT_EQ(hexToDec("0"), 0);
    EXPECT_EQ(hexToDec("1f"), 31);
    EXPECT_EQ(hexToDec("1F"), 31);
    EXPECT_EQ(hexToDec("aAfF09"), 0xAAFF09);
    EXPECT_EQ(hexToDec(" 1\t2\n\v\f\r3 "), 0x123); // white space doesn't move the place
    EXPECT_EQ(hexToDec("0x12"), 0);                // "x" ends it all
    EXPECT_EQ(hexToDec("12g"), 0);
    EXPECT_EQ(hexToDec("g12"), 0);
    EXPECT_EQ(hexToDec("-1"), 0);
    EXPECT_EQ(hexToDec("7fffffff"), 2147483647);
    EXPECT_EQ(hexToDec("ffffffff"), -1); // eight digits are the bits
    EXPECT_EQ(hexToDec("80000000"), -2147483647 - 1);
    EXPECT_EQ(hexToDec("123456789"), 0x23456789); // wraps at 32 bits
}

TEST(FieldDecodersTest, ComparisonOfNames) {
    EXPECT_EQ(striscmp("Tx_I(Slope)", "tX_i(SLOPE)"), 0);
    EXPECT_EQ(striscmp(nullptr, "a"), -1);
    EXPECT_EQ(striscmp("a", nullptr), -1);
    EXPECT_EQ(striscmp("a", "b"), -1);
    EXPECT_EQ(striscmp("[", "{"), -1); // no letters, though 32 apart
    EXPECT_EQ(striscmp("", "a"), -2);
    EXPECT_EQ(striscmp("", ""), -2);
    EXPECT_EQ(striscmp("a", ""), -3);
    EXPECT_EQ(striscmp("ab", "abc"), -4);
    EXPECT_EQ(striscmp("xb", "abc"), -4);
}

TEST(FieldDecodersTest, Trims) {
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

TEST(FieldDecodersTest, FindFields) {
    const Image sfp;
    EXPECT_EQ(GetFieldEntry(sfp.View(), "vendor OUI")->Offset, 37);
    EXPECT_EQ(GetFieldEntry(sfp.View(), "Vendor Specific")->Offset, 96);  // the first of two
    EXPECT_EQ(GetFieldEntry(sfp.View(), "Reserved MSB")->Offset, 362);    // the first of two
    EXPECT_EQ(GetFieldEntry(sfp.View(), "\nAddress A2")->Offset, 65535);  // a heading is never found
    EXPECT_EQ(GetFieldEntry(sfp.View(), "")->Offset, 65535);              // nor a nameless row
    EXPECT_EQ(GetFieldEntry(sfp.View(), "No such field")->Offset, 65535); // the end row, never null
    EXPECT_EQ(GetFieldEntry(sfp.View(), nullptr)->Offset, 65535);
    const Image qsfp = Image().Set(0, {17});
    EXPECT_EQ(GetFieldEntry(qsfp.View(), "Vendor OUI")->Offset, 165);
    EXPECT_EQ(GetFieldEntry(qsfp.View(), "BR, Nominal")->Offset, 140);
    EXPECT_EQ(GetFieldEntry(qsfp.View(), "Rate Identifier")->Offset, 65535);
    // A field behind a shorter image is none.
    EXPECT_EQ(GetFieldEntry(ModuleImage(sfp.Data, 96), "CC_EXT")->Offset, 95);
    EXPECT_EQ(GetFieldEntry(ModuleImage(sfp.Data, 95), "CC_EXT")->Offset, 65535);
}

TEST(FieldDecodersTest, FieldData) {
    const Image image = Image().Set(7, {0x05}).Set(20, "ACME Optics     ").Set(60, {0x03, 0x52, 0x81, 0xC4});
    DecodedText text;
    const auto decode = [&](eFieldType type, VX_UINT16 offset, const SfpTable* table = nullptr) -> std::string {
        std::strcpy(text, "before");
        return GetFieldData(image.View(), table, type, offset, text);
    };
    // The caller's type decides, not the row's.
    EXPECT_EQ(decode(FieldHex2, 60), "0352");
    EXPECT_EQ(decode(FieldHex4, 60), "035281c4");
    EXPECT_EQ(decode(FieldAscii, 20), "ACME Optics     ");
    EXPECT_EQ(decode(FieldHex2, 20), "4143");
    EXPECT_EQ(decode(FieldBitCode, 7, FCLinkLengthTbl),
              "Electrical-InterEnclosure (EL) Shortwave Laser linear Rx (SA) ");
    EXPECT_EQ(decode(FieldRaw, 60), "before");
    EXPECT_EQ(decode(FieldByteTable, 60), "before");
    EXPECT_EQ(decode(FieldHex2, 61), "before");    // no row begins there
    EXPECT_EQ(decode(FieldHex2, 65534), "before"); // a heading is no field
    EXPECT_EQ(decode(FieldHex2, 65535), "before"); // nor is the end row
    // Bytes behind the image read as 0: row 121 is the last, at 510.
    EXPECT_EQ(decode(FieldHex4, 510), "00000000");
    const Image last = Image().Set(510, {0xAB, 0xCD});
    EXPECT_STREQ(GetFieldData(last.View(), nullptr, FieldHex4, 510, text), "abcd0000");
}

TEST(FieldDecodersTest, Text) {
    DecodedText text;
    const auto decode = [&text](const Image& image) -> std::string {
        return GetAsciiData(GetFieldEntry(image.View(), "Vendor rev"), image.View(), text);
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

TEST(FieldDecodersTest, ByteText) {
    const Image image = Image().Set(37, {0x00, 0x9F, 0x65});
    const FieldTable* row = GetFieldEntry(image.View(), "Vendor OUI");
    char text[3];
    EXPECT_STREQ(GetByteData(row, image.View(), 99, 0, text, sizeof text), "00");
    EXPECT_STREQ(GetByteData(row, image.View(), 0, 1, text, sizeof text), "9f");
    EXPECT_STREQ(GetByteData(row, image.View(), 3, 2, text, sizeof text), "65");
}

TEST(FieldDecodersTest, BitCodes) {
    DecodedText text;
    const auto decode = [&text](int byte, bool accumulate) -> std::string {
        const Image image = Image().Set(9, {byte});
        std::strcpy(text, "be,fore");
        return GetBitDataCodeTable(GetFieldEntry(image.View(), "FC Transmission Media"), image.View(),
                                   FCTransMediaCodeTbl, text, accumulate);
    };
    EXPECT_EQ(decode(0x05, true), "SM M5 ");
    EXPECT_EQ(decode(0x05, false), "M5 "); // the last match wins
    EXPECT_EQ(decode(0x02, true), "  ");
    EXPECT_EQ(decode(0xFF, true), "SM   M5 M6 TV MI TP TW ");
    EXPECT_EQ(decode(0xFF, false), "TW ");
    EXPECT_EQ(decode(0x00, true), ""); // a byte of 0 empties it
    // No row of the long table has bit 1: the destination keeps what it held, but for its commas.
    const Image image = Image().Set(9, {0x02});
    const FieldTable* row = GetFieldEntry(image.View(), "FC Transmission Media");
    std::strcpy(text, "be,fore");
    EXPECT_STREQ(GetBitDataCodeTable(row, image.View(), FCTransMediaTbl, text, true), "before");
    EXPECT_EQ(GetBitDataCodeTable(nullptr, image.View(), FCTransMediaTbl, text, true), nullptr);
    // A row without a place in the image empties it too.
    std::strcpy(text, "before");
    EXPECT_STREQ(GetBitDataCodeTable(&FieldIndxTable[0], image.View(), FCTransMediaTbl, text, true), "");
    std::strcpy(text, "before");
    EXPECT_STREQ(GetBitDataCodeTable(&FieldIndxTable[123], image.View(), FCTransMediaTbl, text, true), "");
}

TEST(FieldDecodersTest, ByteCodes) {
    DecodedText text;
    const auto decode = [&text](int byte) -> std::string {
        const Image image = Image().Set(11, {byte});
        std::strcpy(text, "be,fore");
        return GetByteDataCodeTable(GetFieldEntry(image.View(), "Encoding"), image.View(), EncodingTbl, text, true);
    };
    EXPECT_EQ(decode(0), ""); // the table's own text of 0 is never reached
    EXPECT_EQ(decode(1), "8B10B ");
    EXPECT_EQ(decode(8), "PAM4 ");
    EXPECT_EQ(decode(9), "before");
    EXPECT_EQ(decode(255), "before");
    const Image image;
    EXPECT_EQ(GetByteDataCodeTable(nullptr, image.View(), EncodingTbl, text, true), nullptr);
    EXPECT_STREQ(GetByteDataCodeTable(&FieldIndxTable[123], image.View(), EncodingTbl, text, true), "");
}

TEST(FieldDecodersTest, Values) {
    const Image image = Image().Set(A2h(76), {0x12, 0x34}).Set(94, {9}).Set(92, {0x68});
    EXPECT_EQ(getDataValue(image.View(), "SFF-8472 Compliance"), 9);
    EXPECT_EQ(getDataValue(image.View(), "Tx_I(Slope)"), 0x34); // the last byte alone
    EXPECT_EQ(GetRawData(&FieldIndxTable[0], image.View()), 0); // a heading has no byte
    EXPECT_EQ(GetRawData(&FieldIndxTable[123], image.View()), 0);
    EXPECT_EQ(GetSFPTableBitValue(image.View(), "Diag Monitoring Type:", 64), 1);
    EXPECT_EQ(GetSFPTableBitValue(image.View(), "Diag Monitoring Type:", 0x90), 0);
    EXPECT_EQ(GetSFPTableBitValue(image.View(), "Diag Monitoring Type:", 0x30), 1); // any bit of the mask
    EXPECT_EQ(GetSFPTableBitValue(image.View(), "No such field", 255), 0);
}

} // namespace
