// The README names every key of a port, and its example is a host.
#include "Fixture.h"
#include "description/Records.h"

namespace {

const std::string& readme() {
    static const std::string text = textOf(SIMULATOR_SOURCE "/README.md");
    return text;
}

TEST(Readme, NamesEveryAnswer) {
    for (const sim::Field& field : sim::fieldsOf<sim::PortAnswers>()) {
        EXPECT_NE(readme().find("`" + std::string(field.key) + "`"), std::string::npos) << field.key;
    }
    for (const sim::Field& field : sim::fieldsOf<sim::CreditInfo>()) {
        EXPECT_NE(readme().find("`" + std::string(field.key) + "`"), std::string::npos) << field.key;
    }
    for (const char* key :
         {"Targets", "CongestionStatistics", "FwPrivateStatistics", "Transceiver", "Vpd", "FirmwareDump", "RdpPayload",
          "Loopback", "Echo", "ReadWriteBuffer", "Statuses", "LinkSpeed", "Statistics", "Luns", "Repeat", "Adapters",
          "Templates", "BfsMode", "AllowDuplicateNames"}) {
        EXPECT_NE(readme().find(std::string("`") + key + "`"), std::string::npos) << key;
    }
}

class ReadmeExample : public Simulated {};

TEST_F(ReadmeExample, IsAHost) {
    const std::size_t begin = readme().find("    {\n");
    const std::size_t finish = readme().find("\n\n", begin);
    ASSERT_NE(begin, std::string::npos);
    file("sfp.hex", "03\n");
    describeText(readme().substr(begin, finish - begin));
    ASSERT_EQ(start(), 0U) << output;
    EXPECT_EQ(port()->pTargetList->LunCount, 300U);
}

TEST_F(ReadmeExample, LabPortsAreThere) {
    ASSERT_EQ(start(), 0U);
    const std::string section = readme().substr(readme().find("## The lab host"));
    for (unsigned i = 0; i < 23; ++i) {
        if (port(i)->ProtocolType >= 2) {
            continue;
        }
        const std::string name = sim::bytesText(port(i)->WWPN);
        EXPECT_NE(section.find("`" + name + "`"), std::string::npos) << name;
    }
}

} // namespace
