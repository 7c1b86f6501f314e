// The README documents every key of a port, and its example is valid.
#include "Fixture.h"
#include "description/Records.h"

namespace {

const std::string& Readme() {
    static const std::string text = TextOf(SIMULATOR_SOURCE "/README.md");
    return text;
}

TEST(Readme, NamesEveryAnswer) {
    for (const sim::Field& field : sim::FieldsOf<sim::PortAnswers>()) {
        EXPECT_NE(Readme().find("`" + std::string(field.key) + "`"), std::string::npos) << field.key;
    }
    for (const sim::Field& field : sim::FieldsOf<sim::CreditInfo>()) {
        EXPECT_NE(Readme().find("`" + std::string(field.key) + "`"), std::string::npos) << field.key;
    }
    for (const char* key : {"Targets",
                            "CongestionStatistics",
                            "FwPrivateStatistics",
                            "Transceiver",
                            "Vpd",
                            "FirmwareDump",
                            "RdpPayload",
                            "Loopback",
                            "Echo",
                            "ReadWriteBuffer",
                            "Statuses",
                            "LinkSpeed",
                            "Statistics",
                            "Luns",
                            "Repeat",
                            "Adapters",
                            "Templates",
                            "BfsMode",
                            "AllowDuplicateNames",
                            "Counters"}) {
        EXPECT_NE(Readme().find(std::string("`") + key + "`"), std::string::npos) << key;
    }
}

class ReadmeExample : public Simulated {};

TEST_F(ReadmeExample, IsAHost) {
    const std::size_t begin = Readme().find("    {\n");
    const std::size_t finish = Readme().find("\n\n", begin);
    ASSERT_NE(begin, std::string::npos);
    File("sfp.hex", "03\n");
    DescribeText(Readme().substr(begin, finish - begin));
    ASSERT_EQ(Start(), 0U) << output;
    EXPECT_EQ(Port()->pTargetList->LunCount, 300U);
}

TEST_F(ReadmeExample, LabPortsAreThere) {
    ASSERT_EQ(Start(), 0U);
    const std::string section = Readme().substr(Readme().find("## The lab host"));
    for (unsigned i = 0; i < 23; ++i) {
        if (Port(i)->ProtocolType >= 2) {
            continue;
        }
        const std::string name = sim::BytesText(Port(i)->WWPN);
        EXPECT_NE(section.find("`" + name + "`"), std::string::npos) << name;
    }
}

} // namespace
