/// @file
/// PCI vital product data: resources and keywords made by hand, and the images of tests/data/vpd.
#include "VitalProductData.h"
#include "Data.h"

using namespace decoders;
using namespace decoders_test;

namespace {

using Rows = std::vector<std::pair<std::string, std::string>>;

Data BytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}
std::string Large(int tag, std::size_t length, const std::string& content = "") {
    return {std::string{static_cast<char>(tag), static_cast<char>(length & 0xFF), static_cast<char>(length >> 8)} +
            content};
}
std::string Resource(int tag, const std::string& content) {
    return Large(tag, content.size(), content);
}
std::string Keyword(const std::string& name, const std::string& value) {
    return name + static_cast<char>(value.size()) + value;
}
const std::string END = "\x78";

VitalProductData Decode(const std::string& text) {
    const Data data = BytesOf(text);
    return DecodeVpd(Bytes(data));
}
Rows RowsOf(const std::vector<VpdKeyword>& keywords) {
    Rows rows;
    for (const VpdKeyword& keyword : keywords) {
        rows.emplace_back(keyword.name, keyword.value);
    }
    return rows;
}
/// `text` with the byte at `at` such that all bytes up to and with it add up to 0.
std::string Summed(std::string text, std::size_t at) {
    unsigned sum = 0;
    for (std::size_t index = 0; index < at; ++index) {
        sum += static_cast<unsigned char>(text[index]);
    }
    text[at] = static_cast<char>(0x100 - (sum & 0xFF));
    return text;
}

const std::string GOLDEN = [] {
    const std::string text =
        Resource(0x82, "ACME 64G") +
        Resource(0x90, Keyword("PN", "AC-64") + Keyword("SN", "S1  ") + Keyword("RV", std::string(5, '\0'))) +
        Resource(0x91, Keyword("V1", "7.04") + Keyword("PN", "other") + Keyword("RW", std::string(3, '\0'))) + END;
    return Summed(text, text.find("RV") + 3);
}();

TEST(VpdTest, GoldenImage) {
    const VitalProductData vpd = Decode(GOLDEN);
    EXPECT_EQ(vpd.identifier, "ACME 64G");
    const std::string reserved = GOLDEN.substr(GOLDEN.find("RV") + 3, 5);
    EXPECT_EQ(RowsOf(vpd.readOnly), (Rows{{"PN", "AC-64"}, {"SN", "S1  "}, {"RV", reserved}}));
    EXPECT_EQ(RowsOf(vpd.readWrite), (Rows{{"V1", "7.04"}, {"PN", "other"}, {"RW", std::string(3, '\0')}}));
    EXPECT_EQ(vpd.checksum, VpdChecksum::VALID);
    EXPECT_TRUE(vpd.isWhole);
    ASSERT_NE(vpd.Find("PN"), nullptr);
    EXPECT_EQ(vpd.Find("PN")->value, "AC-64"); // the read-only one
    EXPECT_EQ(vpd.Find("SN")->Text(), "S1");
    EXPECT_EQ(vpd.Find("V1")->Text(), "7.04");
    EXPECT_EQ(vpd.Find("RW")->Text(), "");
    EXPECT_EQ(vpd.Find("EC"), nullptr);
    EXPECT_EQ(vpd.Find(""), nullptr);
}

/// What is there before the cut is read, nothing more, and only the whole image is called whole.
TEST(VpdTest, EveryTruncation) {
    const std::size_t sum = GOLDEN.find("RV") + 3;
    const VitalProductData whole = Decode(GOLDEN);
    for (std::size_t size = 0; size < GOLDEN.size(); ++size) {
        const VitalProductData vpd = Decode(GOLDEN.substr(0, size));
        EXPECT_FALSE(vpd.isWhole) << size;
        EXPECT_EQ(vpd.checksum, size > sum       ? VpdChecksum::VALID
                                : size + 1 > sum ? VpdChecksum::INVALID // its keyword, without the byte
                                                 : VpdChecksum::ABSENT)
            << size;
        for (std::size_t index = 0; index < vpd.readOnly.size(); ++index) {
            EXPECT_EQ(vpd.readOnly[index].name, whole.readOnly[index].name) << size;
            EXPECT_TRUE(whole.readOnly[index].value.starts_with(vpd.readOnly[index].value)) << size;
        }
        for (std::size_t index = 0; index < vpd.readWrite.size(); ++index) {
            EXPECT_EQ(vpd.readWrite[index].name, whole.readWrite[index].name) << size;
            EXPECT_TRUE(whole.readWrite[index].value.starts_with(vpd.readWrite[index].value)) << size;
        }
    }
}

TEST(VpdTest, ChecksumOverAllBytesBeforeIt) {
    const std::size_t sum = GOLDEN.find("RV") + 3;
    for (std::size_t at = 0; at < GOLDEN.size(); ++at) {
        // Values alone: another length or name is another image.
        if (at != GOLDEN.find("ACME") && at != GOLDEN.find("AC-64") && at != sum && at != sum + 1 &&
            at != GOLDEN.find("7.04")) {
            continue;
        }
        std::string changed = GOLDEN;
        changed[at] = static_cast<char>(changed[at] + 1);
        EXPECT_EQ(Decode(changed).checksum, at <= sum ? VpdChecksum::INVALID : VpdChecksum::VALID) << at;
    }
    EXPECT_EQ(Decode(Resource(0x90, Keyword("PN", "a")) + END).checksum, VpdChecksum::ABSENT);
    EXPECT_EQ(Decode(Resource(0x90, Keyword("RV", "")) + END).checksum, VpdChecksum::INVALID);
    // A byte after the keyword, or after its resource, isn't the sum, though it makes all before it 0.
    const std::string keywords[] = {std::string("RV\0PN\0", 6), std::string("RV\1", 3)};
    for (const std::string& content : keywords) {
        std::string text = Resource(0x82, "q") + Resource(0x90, content) + END;
        const std::size_t summed = text.find("RV") + 4;
        const Data unbalanced = BytesOf(text);
        text[text.find('q')] = static_cast<char>('q' - Bytes(unbalanced).Sub(0, summed).Sum());
        const Data data = BytesOf(text);
        ASSERT_EQ(Bytes(data).Sub(0, summed).Sum(), 0);
        EXPECT_EQ(DecodeVpd(Bytes(data)).checksum, VpdChecksum::INVALID);
    }
    // It is a read-only keyword.
    EXPECT_EQ(Decode(Resource(0x91, Keyword("RV", "a")) + END).checksum, VpdChecksum::ABSENT);
}

TEST(VpdTest, ResourcesOfOtherKindsAreSkipped) {
    const std::string keywords = Resource(0x90, Keyword("PN", "a"));
    EXPECT_EQ(RowsOf(Decode(Resource(0x83, Keyword("SN", "b")) + keywords + END).readOnly), (Rows{{"PN", "a"}}));
    EXPECT_EQ(RowsOf(Decode("\x0A"
                            "xx" +
                            keywords + END)
                         .readOnly),
              (Rows{{"PN", "a"}})); // a small one of 2 bytes
    EXPECT_TRUE(Decode("\x0A"
                       "xx" +
                       keywords + END)
                    .isWhole);
    EXPECT_TRUE(Decode(keywords + "\x79"
                                  "c")
                    .isWhole); // an end tag with a byte
    EXPECT_FALSE(Decode(keywords + "\x79").isWhole);
    // Nothing is read after the end tag.
    EXPECT_EQ(Decode(END + keywords).readOnly.size(), 0u);
    EXPECT_EQ(RowsOf(Decode(keywords + keywords + END).readOnly), (Rows{{"PN", "a"}, {"PN", "a"}}));
    EXPECT_EQ(Decode(Resource(0x82, "one") + Resource(0x82, "two") + END).identifier, "one");
    // A keyword that begins with the byte of the end tag is a keyword.
    EXPECT_EQ(RowsOf(Decode(Resource(0x90, Keyword("xA", "b")) + END).readOnly), (Rows{{"xA", "b"}}));
}

TEST(VpdTest, LyingLengths) {
    // Out of the data.
    EXPECT_EQ(Decode(Large(0x82, 0xFFFF, "abc")).identifier, "abc");
    EXPECT_FALSE(Decode(Large(0x82, 0xFFFF, "abc")).isWhole);
    EXPECT_EQ(RowsOf(Decode(Large(0x90, 0xFFFF, Keyword("PN", "a"))).readOnly), (Rows{{"PN", "a"}}));
    // A keyword out of its resource: cut there, and the walk goes on after the resource.
    const std::string longer = Resource(0x90, "PN\xFF"
                                              "abc") +
                               Resource(0x91, Keyword("V1", "b")) + END;
    EXPECT_EQ(RowsOf(Decode(longer).readOnly), (Rows{{"PN", "abc"}}));
    EXPECT_EQ(RowsOf(Decode(longer).readWrite), (Rows{{"V1", "b"}}));
    EXPECT_FALSE(Decode(longer).isWhole);
    // Less than a keyword at the end of a resource.
    const std::string rest = Resource(0x90, Keyword("PN", "a") + "SN") + END;
    EXPECT_EQ(RowsOf(Decode(rest).readOnly), (Rows{{"PN", "a"}}));
    EXPECT_FALSE(Decode(rest).isWhole);
    EXPECT_TRUE(Decode(Resource(0x90, "") + END).isWhole);
}

TEST(VpdTest, WhatIsNoVpd) {
    for (const char filler : {'\0', '\xFF'}) {
        const VitalProductData vpd = Decode(std::string(1024, filler));
        EXPECT_FALSE(vpd.identifier.has_value());
        EXPECT_TRUE(vpd.readOnly.empty());
        EXPECT_TRUE(vpd.readWrite.empty());
        EXPECT_FALSE(vpd.isWhole);
    }
    EXPECT_FALSE(Decode("").isWhole);
    EXPECT_TRUE(Decode(END).isWhole);
    // Every byte as a tag, alone and with a length.
    for (int tag = 0; tag < 256; ++tag) {
        Decode(std::string(1, static_cast<char>(tag)));
        Decode(Large(tag, 0xFFFF));
    }
}

TEST(VpdTest, NetworkCardWithoutAnEndTag) {
    const Data data = Load("vpd/broadcom-bcm95719.hex").first;
    const VitalProductData vpd = DecodeVpd(Bytes(data));
    EXPECT_EQ(vpd.identifier, "Broadcom NetXtreme Gigabit Ethernet Controller"); // a zero byte ends it
    ASSERT_EQ(vpd.readOnly.size(), 5u);
    EXPECT_EQ(vpd.Find("PN")->Text(), "BCM95719");
    EXPECT_EQ(vpd.Find("EC")->Text(), "106679-15");
    EXPECT_EQ(vpd.Find("SN")->Text(), "0123456789");
    EXPECT_EQ(vpd.Find("MN")->Text(), "14e4");
    EXPECT_EQ(vpd.Find("RV")->value.size(), 29u);
    EXPECT_EQ(vpd.checksum, VpdChecksum::VALID);
    EXPECT_FALSE(vpd.isWhole);
}

TEST(VpdTest, VirtualDevice) {
    const Data data = Load("vpd/libvirt-testname.hex").first;
    const VitalProductData vpd = DecodeVpd(Bytes(data));
    EXPECT_EQ(vpd.identifier, "testname");
    EXPECT_EQ(RowsOf(vpd.readOnly),
              (Rows{{"PN", "42"}, {"EC", "4242"}, {"VA", "EX"}, {"RV", std::string("\x31\0", 2)}}));
    EXPECT_EQ(vpd.checksum, VpdChecksum::VALID);
    EXPECT_TRUE(vpd.isWhole);
}

TEST(VpdTest, ExampleOfTheSpecification) {
    Data data = Load("vpd/pci-spec-example-widget.hex").first;
    const VitalProductData vpd = DecodeVpd(Bytes(data));
    EXPECT_EQ(vpd.identifier, "ABCD Super-Fast Widget Controller");
    EXPECT_EQ(vpd.Find("PN")->Text(), "6181682A");
    EXPECT_EQ(vpd.Find("EC")->Text(), "4950262536");
    EXPECT_EQ(vpd.Find("SN")->Text(), "00000194");
    EXPECT_EQ(vpd.Find("MN")->Text(), "1037");
    EXPECT_EQ(vpd.Find("RV")->value.size(), 44u);
    EXPECT_EQ(vpd.Find("V1")->Text(), "65A01");
    EXPECT_EQ(vpd.Find("Y1")->Text(), "Error Code 26");
    EXPECT_EQ(vpd.Find("RW")->value, std::string(97, '\0'));
    EXPECT_TRUE(vpd.isWhole);
    // It has FFh where the sum belongs; all bytes before add up to B0h, so 50h makes it right.
    EXPECT_EQ(vpd.checksum, VpdChecksum::INVALID);
    const std::string text(data.begin(), data.end());
    data[text.find("RV") + 3] = 0x50;
    EXPECT_EQ(DecodeVpd(Bytes(data)).checksum, VpdChecksum::VALID);
}

TEST(VpdTest, SampleOfARegistry) {
    const Data data = Load("vpd/tcg-registry-sample1.hex").first;
    const VitalProductData vpd = DecodeVpd(Bytes(data));
    EXPECT_EQ(vpd.identifier, "Sample PCI Component");
    EXPECT_EQ(vpd.Find("PN")->Text(), "Sample VPD Part Number 1");
    EXPECT_EQ(vpd.Find("MN")->Text(), "Sample VPD Manufacture ID 1");
    EXPECT_EQ(vpd.Find("SN")->Text(), "Sample VPD Serial Number 1");
    EXPECT_EQ(vpd.Find("V0")->value.size(), 41u);
    EXPECT_EQ(vpd.Find("V0")->Text(), "Sample Extra Data in VPD");
    EXPECT_EQ(vpd.Find("V2")->Text(), "N/A");
    EXPECT_EQ(vpd.Find("YB")->Text(), "xxxxxxxxxxxxxxxx");
    EXPECT_EQ(vpd.checksum, VpdChecksum::VALID);
    EXPECT_TRUE(vpd.isWhole);
}

TEST(VpdTest, EveryTruncationOfEveryImage) {
    for (const char* name :
         {"broadcom-bcm95719", "libvirt-testname", "pci-spec-example-widget", "tcg-registry-sample1"}) {
        const Data data = Load(std::string("vpd/") + name + ".hex").first;
        for (std::size_t size = 0; size < data.size(); ++size) {
            const Data cut = Cut(data, size);
            EXPECT_FALSE(DecodeVpd(Bytes(cut)).isWhole) << name << " " << size;
        }
    }
}

} // namespace
