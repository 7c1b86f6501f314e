#include "Resolvers.h"
#include "TargetIdentifiers.h"
#include "TargetTestBase.h"

using namespace family_test;

namespace {

constexpr char TARGET_ID[] = "FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01";
constexpr const char* HELP_WORDS[] = {"help", "/h", "/help", "-h", "-help", "/?", "?", "HELP"};

TEST(TargetIdentifierTest, WritesWhatItReads) {
    _vexapi_protocol_t protocol{};
    _tagVEXAPI_SDMTarget target{};
    SetBytes(protocol.WWPN, {0x21, 0x00, 0x0a, 0xf0, 0xff, 0x90, 0x09, 0x1e});
    SetBytes(target.PortName, {0x50, 0x01, 0xa0, 0x0f, 0x99, 0xcd, 0xef, 0xb8});
    constexpr char TEXT_OF_TARGET[] = "FC_21:00:0a:f0:ff:90:09:1e_Target_50:01:a0:0f:99:cd:ef:b8";
    EXPECT_STREQ(TargetIdentifier(protocol, target).text, TEXT_OF_TARGET);

    static constexpr struct {
        VX_UINT16 number;
        const char* text;
    } NUMBERS[] = {{0, "0"},     {1, "1"},       {9, "9"},       {10, "10"},       {255, "255"},
                   {256, "256"}, {4095, "4095"}, {9999, "9999"}, {10000, "10000"}, {65535, "65535"}};
    for (const bool isNvme : {false, true}) {
        // All other bits set: only bit 3 of byte 5 counts.
        std::memset(target.TargetFlags, 0xFF, sizeof target.TargetFlags);
        target.TargetFlags[5] = isNvme ? 0xFF : 0xF7;
        LunIdentifier identifier(protocol, target);
        for (const auto& row : NUMBERS) {
            const std::string expected = std::string(TEXT_OF_TARGET) + (isNvme ? "_NSID_" : "_LUN_") + row.text;
            EXPECT_EQ(identifier.WithNumber(row.number), expected);
            LunName name{};
            ASSERT_TRUE(ParseLunIdentifier(expected.c_str(), name)) << expected;
            EXPECT_EQ(name.number, row.number);
            EXPECT_EQ(name.isNamespace, isNvme);
            EXPECT_EQ(std::memcmp(name.target.portWwpn, protocol.WWPN, 8), 0);
            EXPECT_EQ(std::memcmp(name.target.targetWwpn, target.PortName, 8), 0);
        }
    }
}

/// Any changed byte and any truncation makes a different text.
TEST(TargetIdentifierTest, TakesNoOtherText) {
    for (const std::string& good : {std::string(TARGET_ID), TARGET_ID + std::string("_LUN_7")}) {
        const bool isLun = good != TARGET_ID;
        const auto parses = [isLun](const std::string& text) {
            TargetName target{};
            LunName lun{};
            return isLun ? ParseLunIdentifier(text.c_str(), lun) : ParseTargetIdentifier(text.c_str(), target);
        };
        EXPECT_TRUE(parses(good));
        EXPECT_FALSE(parses(good + " "));
        for (std::size_t at = 0; at < good.size(); ++at) {
            EXPECT_FALSE(parses(good.substr(0, at))) << at;
            for (const char other : {'G', 'A', ' ', '-', '_', 'x', '\x80'}) {
                if (other != good[at]) {
                    std::string bad = good;
                    bad[at] = other;
                    EXPECT_FALSE(parses(bad)) << bad;
                }
            }
        }
    }
}

class TargetResolverTest : public TargetTest {
protected:
    VX_UINT32 Resolve(const TavuStringArray& args) {
        entry = {};
        return GetTargetFromTargetString(args, entry);
    }
    VX_UINT32 Resolve(const std::string& identifier) { return Resolve(TavuStringArray{identifier}); }
    TargetEntry entry;
};

/// `resultWithout` is the result without a host: it shows whether the words were accepted.
struct IdentifierCase {
    const char* identifier;
    ResultCode result;
    ResultCode resultWithout;
};

TEST_F(TargetResolverTest, ReadsTheIdentifier) {
    static constexpr IdentifierCase CASES[] = {
        {TARGET_ID, RC_SUCCESS, RC_HOST_NOT_FOUND},
        // The words pass in any letter case, and find nothing then.
        {"fc_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_TARGET_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0A:0B:0C:0D:00:01_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0A:0B:0C:0D:01:01", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        // So do bytes that read as numbers in another form, and anything after the second word.
        {"FC_0x21:0:a:b:c:d:0:1_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_+21: 0:a:b:c:d:-0:1_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target_", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target'", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:02", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:02_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:0", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01 ", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:011", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01_LUN_0", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target_50-00-0a-0b-0c-0d-01-01", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        // A first part, or a second word, of another form is refused before the host.
        {"FC_21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00:01_", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00:01_Targe_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00:01_Targets_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00:01_LUN_0", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:0g:01_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC_21-00-0a-0b-0c-0d-00-01_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC'21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FD_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {" FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"_", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
    };
    for (const IdentifierCase& row : CASES) {
        EXPECT_EQ(Resolve(row.identifier), row.result) << row.identifier;
        EXPECT_EQ(entry.protocol, row.result == RC_SUCCESS ? port : nullptr) << row.identifier;
        EXPECT_EQ(entry.target, row.result == RC_SUCCESS ? target : nullptr) << row.identifier;
    }
    EXPECT_EQ(Resolve(TavuStringArray{}), RC_INVALID_PARAMETER);
    EXPECT_EQ(Resolve(TavuStringArray{TARGET_ID, "help"}), RC_SUCCESS);
    EXPECT_EQ(Resolve(std::string(TARGET_ID) + std::string(100'000, '0')), RC_INVALID_PARAMETER);
    EXPECT_EQ(Resolve(std::string(100'000, 'F')), RC_INVALID_PARAMETER);
    LoseHost();
    for (const IdentifierCase& row : CASES) {
        EXPECT_EQ(Resolve(row.identifier), row.resultWithout) << row.identifier;
    }
    EXPECT_EQ(Resolve(TavuStringArray{}), RC_INVALID_PARAMETER);
}

TEST_F(TargetResolverTest, HelpWordsComeFirst) {
    LoseHost();
    for (const char* word : HELP_WORDS) {
        EXPECT_EQ(Resolve(word), RC_HELP_REQUESTED) << word;
    }
    EXPECT_EQ(Fake().calls, Calls{});
}

TEST_F(TargetResolverTest, EveryPortHasItsOwnTargets) {
    _vexapi_protocol_t& other = Fake().host.AddProtocol(Fake().host.AddPhyPort(*adapter));
    _tagVEXAPI_SDMTarget& same = Fake().host.AddTarget(other);
    std::memcpy(same.PortName, target->PortName, 8);
    EXPECT_EQ(Resolve("FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01"), RC_SUCCESS);
    EXPECT_EQ(entry.target, target);
    EXPECT_EQ(Resolve("FC_21:00:0a:0b:0c:0d:00:02_Target_50:00:0a:0b:0c:0d:01:01"), RC_SUCCESS);
    EXPECT_EQ(entry.target, &same);
    EXPECT_EQ(entry.protocol, &other);
}

TEST_F(TargetResolverTest, FirstInListOrderWins) {
    _tagVEXAPI_SDMTarget& second = Fake().host.AddTarget(*port);
    std::memcpy(second.PortName, target->PortName, 8);
    EXPECT_EQ(Resolve(TARGET_ID), RC_SUCCESS);
    EXPECT_EQ(entry.target, target);
    // A port of the same name that doesn't see the target is passed by.
    _vexapi_protocol_t& other = Fake().host.AddProtocol(Fake().host.AddPhyPort(*adapter));
    std::memcpy(other.WWPN, port->WWPN, 8);
    other.pTargetList = port->pTargetList;
    port->pTargetList = nullptr;
    EXPECT_EQ(Resolve(TARGET_ID), RC_SUCCESS);
    EXPECT_EQ(entry.protocol, &other);
}

TEST_F(TargetResolverTest, LastOfManyIsFound) {
    for (int i = 0; i < 200; ++i) {
        Fake().host.AddTarget(*port);
    }
    EXPECT_EQ(Resolve("FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:c9"), RC_SUCCESS); // 0xc9 = 201
    EXPECT_EQ(entry.target->TargetNumber, 200);
    EXPECT_EQ(Resolve("FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:ca"), RC_INVALID_PARAMETER);
}

TEST_F(TargetResolverTest, OnlyFcAndFcoePortsHaveTargets) {
    static constexpr struct {
        VX_UINT32 type;
        ResultCode result;
    } CASES[] = {{0, RC_SUCCESS},           {1, RC_SUCCESS},           {2, RC_INVALID_PARAMETER},
                 {3, RC_INVALID_PARAMETER}, {4, RC_INVALID_PARAMETER}, {0xFFFFFFFF, RC_INVALID_PARAMETER}};
    for (const auto& row : CASES) {
        port->ProtocolType = row.type;
        EXPECT_EQ(Resolve(TARGET_ID), row.result) << row.type;
    }
}

TEST_F(TargetResolverTest, EmptyListsFindNothing) {
    port->pTargetList = nullptr;
    EXPECT_EQ(Resolve(TARGET_ID), RC_INVALID_PARAMETER);
    phyPort->pProtocolList->pHead = nullptr;
    EXPECT_EQ(Resolve(TARGET_ID), RC_INVALID_PARAMETER);
    phyPort->pProtocolList = nullptr;
    EXPECT_EQ(Resolve(TARGET_ID), RC_INVALID_PARAMETER);
    adapter->pPhyPortList->pHead = nullptr;
    EXPECT_EQ(Resolve(TARGET_ID), RC_INVALID_PARAMETER);
    adapter->pPhyPortList = nullptr;
    EXPECT_EQ(Resolve(TARGET_ID), RC_INVALID_PARAMETER);
    Fake().host.List()->pHead = nullptr;
    EXPECT_EQ(Resolve(TARGET_ID), RC_INVALID_PARAMETER);
}

class LunResolverTest : public TargetTest {
protected:
    LunResolverTest() : nvme(&Fake().host.AddTarget(*port)) {
        nvme->TargetFlags[5] = NVME;
        for (const VX_UINT16 number : std::initializer_list<VX_UINT16>{0, 1, 300, 65535}) {
            Fake().host.AddLun(*target).LunNumber = number;
            Fake().host.AddLun(*nvme).LunNumber = number;
        }
    }
    VX_UINT32 Resolve(const TavuStringArray& args) {
        LunEntry entry;
        const ResultCode code = GetLunFromLunString(args, entry);
        lun = entry.lun;
        return code;
    }
    VX_UINT32 Resolve(const std::string& identifier) { return Resolve(TavuStringArray{identifier}); }

    _tagVEXAPI_SDMTarget* nvme;
    _tagVEXAPI_SDMLun* lun = nullptr;
};

#define FCP_TARGET "FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01"
#define NVME_TARGET "FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:02"

TEST_F(LunResolverTest, ReadsTheIdentifier) {
    static constexpr IdentifierCase CASES[] = {
        {FCP_TARGET "_LUN_0", RC_SUCCESS, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_1", RC_SUCCESS, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_300", RC_SUCCESS, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_65535", RC_SUCCESS, RC_HOST_NOT_FOUND},
        {NVME_TARGET "_NSID_0", RC_SUCCESS, RC_HOST_NOT_FOUND},
        {NVME_TARGET "_NSID_300", RC_SUCCESS, RC_HOST_NOT_FOUND},
        // The word is that of the target's kind.
        {FCP_TARGET "_NSID_1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {NVME_TARGET "_LUN_1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        // The words pass in any letter case, and find nothing then.
        {FCP_TARGET "_lun_1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {NVME_TARGET "_nsid_1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"fc_21:00:0a:0b:0c:0d:00:01_TARGET_50:00:0a:0b:0c:0d:01:01_LUN_1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0A:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01_LUN_1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN'1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_2", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_01", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_00", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_+1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_-1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_ 1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_1 ", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_1x", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_0x1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        // 65537 is 1 in sixteen bits, and 4294967297 in thirty-two.
        {FCP_TARGET "_LUN_65536", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_65537", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_4294967297", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {FCP_TARGET "_LUN_99999999999999999999999", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:03_LUN_1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        {"FC_21:00:0a:0b:0c:0d:00:02_Target_50:00:0a:0b:0c:0d:01:01_LUN_1", RC_INVALID_PARAMETER, RC_HOST_NOT_FOUND},
        // A target alone, and a third word of another form, are refused before the host.
        {FCP_TARGET, RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {FCP_TARGET "_", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {FCP_TARGET "_LU_1", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {FCP_TARGET "_LUNS_1", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {FCP_TARGET "_NSIDNSID_1", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {FCP_TARGET "_1", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {FCP_TARGET ":00_LUN_1", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01_LUN_1", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        // The last separator of a target's bytes counts here.
        {"FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01-01_LUN_1", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00:01_LUN_1", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FX_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01_LUN_1", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"FC", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
        {"", RC_INVALID_PARAMETER, RC_INVALID_PARAMETER},
    };
    for (const IdentifierCase& row : CASES) {
        EXPECT_EQ(Resolve(row.identifier), row.result) << row.identifier;
        if (row.result == RC_SUCCESS) {
            const std::string text = row.identifier;
            ASSERT_NE(lun, nullptr) << text;
            EXPECT_EQ(text.substr(text.rfind('_') + 1), std::to_string(lun->LunNumber));
        } else {
            EXPECT_EQ(lun, nullptr) << row.identifier;
        }
    }
    EXPECT_EQ(Resolve(TavuStringArray{}), RC_INVALID_PARAMETER);
    EXPECT_EQ(Resolve(FCP_TARGET "_LUN_" + std::string(100'000, '1')), RC_INVALID_PARAMETER);
    LoseHost();
    for (const IdentifierCase& row : CASES) {
        EXPECT_EQ(Resolve(row.identifier), row.resultWithout) << row.identifier;
    }
    EXPECT_EQ(Resolve(TavuStringArray{}), RC_INVALID_PARAMETER);
    for (const char* word : HELP_WORDS) {
        EXPECT_EQ(Resolve(word), RC_HELP_REQUESTED) << word;
    }
}

/// The list's flags, not the LUN's own, say what it is called.
TEST_F(LunResolverTest, FindsTheLunOfItsTarget) {
    nvme->pLunList->LunFlags = 0;
    target->pLunList->LunFlags = 1;
    EXPECT_EQ(Resolve(NVME_TARGET "_NSID_0"), RC_SUCCESS);
    EXPECT_EQ(lun, nvme->pLunList);
    EXPECT_EQ(Resolve(FCP_TARGET "_LUN_0"), RC_SUCCESS);
    EXPECT_EQ(lun, target->pLunList);
}

TEST_F(LunResolverTest, FirstInListOrderWins) {
    _tagVEXAPI_SDMLun& again = Fake().host.AddLun(*target);
    again.LunNumber = 300;
    EXPECT_EQ(Resolve(FCP_TARGET "_LUN_300"), RC_SUCCESS);
    EXPECT_NE(lun, &again);
    // A target of the same name without the number is passed by.
    _tagVEXAPI_SDMTarget& twin = Fake().host.AddTarget(*port);
    std::memcpy(twin.PortName, target->PortName, 8);
    _tagVEXAPI_SDMLun& other = Fake().host.AddLun(twin);
    other.LunNumber = 5;
    EXPECT_EQ(Resolve(FCP_TARGET "_LUN_5"), RC_SUCCESS);
    EXPECT_EQ(lun, &other);
}

/// The counts of targets and LUNs don't bound the search.
TEST_F(LunResolverTest, CountsAreNotAsked) {
    port->TargetCount = 0;
    target->LunCount = 0;
    EXPECT_EQ(Resolve(FCP_TARGET "_LUN_65535"), RC_SUCCESS);
}

TEST_F(LunResolverTest, EmptyListsFindNothing) {
    target->pLunList = nullptr;
    EXPECT_EQ(Resolve(FCP_TARGET "_LUN_0"), RC_INVALID_PARAMETER);
    port->pTargetList = nullptr;
    EXPECT_EQ(Resolve(FCP_TARGET "_LUN_0"), RC_INVALID_PARAMETER);
    port->ProtocolType = 2;
    EXPECT_EQ(Resolve(NVME_TARGET "_NSID_0"), RC_INVALID_PARAMETER);
    phyPort->pProtocolList = nullptr;
    EXPECT_EQ(Resolve(FCP_TARGET "_LUN_0"), RC_INVALID_PARAMETER);
    adapter->pPhyPortList = nullptr;
    EXPECT_EQ(Resolve(FCP_TARGET "_LUN_0"), RC_INVALID_PARAMETER);
    Fake().host.List()->pHead = nullptr;
    EXPECT_EQ(Resolve(FCP_TARGET "_LUN_0"), RC_INVALID_PARAMETER);
}

/// Rows as the lists print them: a structure with one field.
std::string ListOf(const Format& format, const std::string& structure, const std::string& label,
                   const std::vector<std::string>& identifiers) {
    std::string rows;
    for (const std::string& identifier : identifiers) {
        rows += format.Structure(structure, format.FieldOf({label, identifier}));
    }
    return format.Whole(format.List(rows));
}

class TargetListTest : public LunResolverTest {
protected:
    TargetListTest() {
        // A network function with targets of its own, which don't count, and a second port with the same target.
        _vexapi_protocol_t& nic = Fake().host.AddProtocol(*phyPort);
        nic.ProtocolType = 2;
        Fake().host.AddLun(Fake().host.AddTarget(nic));
        _vexapi_protocol_t& second = Fake().host.AddProtocol(Fake().host.AddPhyPort(*adapter));
        _tagVEXAPI_SDMTarget& same = Fake().host.AddTarget(second);
        std::memcpy(same.PortName, target->PortName, 8);
        second.ProtocolType = 1;
    }
};

TEST_F(TargetListTest, ListsEveryTargetOfEveryPort) {
    for (const Format& format : FORMATS) {
        const CommandRun run = Run("-t target " + format.Leaf("list"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output,
                  ListOf(format, "TargetList", "Targets",
                         {FCP_TARGET, NVME_TARGET, "FC_21:00:0a:0b:0c:0d:00:03_Target_50:00:0a:0b:0c:0d:01:01"}));
    }
}

TEST_F(TargetListTest, ListsEveryLunOfEveryTarget) {
    for (const Format& format : FORMATS) {
        const CommandRun run = Run("-t lun " + format.Leaf("list"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, ListOf(format, "LunList", "LUNs/Namespaces",
                                     {FCP_TARGET "_LUN_0", FCP_TARGET "_LUN_1", FCP_TARGET "_LUN_300",
                                      FCP_TARGET "_LUN_65535", NVME_TARGET "_NSID_0", NVME_TARGET "_NSID_1",
                                      NVME_TARGET "_NSID_300", NVME_TARGET "_NSID_65535"}));
    }
}

TEST_F(TargetListTest, NothingToListIsAnEmptyList) {
    target->pLunList = nullptr;
    port->pTargetList = target;
    target->pNext = nullptr;
    for (const Format& format : FORMATS) {
        EXPECT_EQ(Run("-t lun " + format.Leaf("list")).output, format.Whole(format.List("")));
    }
    Fake().host.List()->pHead = nullptr;
    for (const Format& format : FORMATS) {
        for (const char* family : {"target", "lun"}) {
            const CommandRun run = Run(std::string("-t ") + family + " " + format.Leaf("list"));
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, format.Whole(format.List("")));
        }
    }
}

/// A `cli` leaf shows its usage for the result 5; neither leaf writes a document.
TEST_F(TargetListTest, FailuresHaveNoDocument) {
    for (const char* family : {"target", "lun"}) {
        const std::string list = std::string("-t ") + family + " list";
        const std::string listCli = list + "cli";
        EXPECT_EQ(Run(list + " help").code, RC_HELP_REQUESTED);
        EXPECT_EQ(Run(list + " help").output, "");
        EXPECT_EQ(Run(listCli + " /H").code, RC_HELP_REQUESTED);
        EXPECT_EQ(Run(listCli + " /H").output, "Usage: list\r\n");
        EXPECT_EQ(Run(list + " other").code, RC_SUCCESS);
    }
    LoseHost();
    for (const char* family : {"target", "lun"}) {
        for (const char* leaf : {"list", "listcli"}) {
            const CommandRun run = Run(std::string("-t ") + family + " " + leaf);
            EXPECT_EQ(run.code, RC_HOST_NOT_FOUND);
            EXPECT_EQ(run.output, "");
        }
    }
}

} // namespace
