/// @file
/// Codes, checksums and dates that both families of modules share.
#include "ModuleIdentity.h"
#include "Data.h"

using namespace decoders;
using namespace decoders_test;

namespace {

/// SFF-8024: 02h and 03h have their memory by SFF-8472; 0Ch, 0Dh and 11h by SFF-8636 or what came before it.
TEST(ModuleIdentityTest, FamilyByTheIdentifier) {
    for (int identifier = 0; identifier < 256; ++identifier) {
        const Page page = Page(1).Set(0, {identifier});
        const bool isSfp = identifier == 2 || identifier == 3;
        const bool isQsfp = identifier == 12 || identifier == 13 || identifier == 17;
        EXPECT_EQ(FamilyOf(Bytes(page)), isSfp    ? ModuleFamily::SFP
                                         : isQsfp ? ModuleFamily::QSFP
                                                  : ModuleFamily::OTHER)
            << identifier;
    }
    EXPECT_EQ(FamilyOf(Bytes()), ModuleFamily::OTHER);
}

TEST(ModuleIdentityTest, Names) {
    EXPECT_EQ(IdentifierName(0x00), "Unknown or unspecified");
    EXPECT_EQ(IdentifierName(0x03), "SFP/SFP+/SFP28");
    EXPECT_EQ(IdentifierName(0x0D), "QSFP+");
    EXPECT_EQ(IdentifierName(0x11), "QSFP28");
    EXPECT_EQ(IdentifierName(0x18), "QSFP-DD");
    EXPECT_EQ(IdentifierName(0x80), ""); // vendor specific
    EXPECT_EQ(ConnectorName(0x07), "LC");
    EXPECT_EQ(ConnectorName(0x0C), "MPO 1x12");
    EXPECT_EQ(ConnectorName(0x23), "No separable connector");
    EXPECT_EQ(ConnectorName(0x0E), ""); // reserved
    EXPECT_EQ(ConnectorName(0xFF), "");
}

TEST(ModuleIdentityTest, Checksums) {
    const Data data = {0xFF, 0x80, 0x81, 0x00, 0x01}; // 128 + 129 is 257
    EXPECT_EQ(CheckSum(Bytes(data), 1, 3), Checksum::VALID);
    EXPECT_EQ(CheckSum(Bytes(data), 0, 3), Checksum::INVALID);
    EXPECT_EQ(CheckSum(Bytes(data), 1, 2), Checksum::INVALID);
    EXPECT_EQ(CheckSum(Bytes(data), 1, 4), Checksum::UNREAD);
    EXPECT_EQ(CheckSum(Bytes(data).Sub(0, 4), 1, 3), Checksum::UNREAD);
    EXPECT_EQ(CheckSum(Bytes(), 0, 0), Checksum::UNREAD);
}

TEST(ModuleIdentityTest, Dates) {
    EXPECT_EQ(ParseDateCode("110414"), (Date{2011, 4, 14}));
    EXPECT_EQ(ParseDateCode("11041403"), (Date{2011, 4, 14})); // a lot code
    EXPECT_EQ(ParseDateCode("991231xx"), (Date{2099, 12, 31}));
    EXPECT_EQ(ParseDateCode("000101"), (Date{2000, 1, 1}));
    EXPECT_EQ(ParseDateCode("240229"), (Date{2024, 2, 29}));
    for (const char* code : {"", "1", "11041", "1104 4", "11 414", "1a0414", "110014", "111314", "110400", "110431",
                             "230229", "      ", "-10101"}) {
        EXPECT_FALSE(ParseDateCode(code).has_value()) << code;
    }
}

} // namespace
