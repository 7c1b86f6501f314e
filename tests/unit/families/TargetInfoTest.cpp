#include "TargetTestBase.h"

using namespace family_test;

namespace {

constexpr char STRUCTURE[] = "TargetInformation";
constexpr char FIELD[] = "TargetInfo";
constexpr char LIST[] = "TargetInfoList";

class TargetInfoTest : public TargetTest {
protected:
    TargetInfoTest() {
        SetBytes(target->NodeName, {0x50, 0x0a, 0x09, 0x80, 0xa1, 0xc3, 0x40, 0x1e});
        SetBytes(target->PortId, {0x01, 0x4f, 0xe0});
        target->TargetNumber = 65535;
        SetChip(*port, BIRCH);
        port->FeatureFlags = 0;
    }
    /// The report's lines without indentation.
    std::vector<std::string> Lines() const { return LinesOf(BlockText(RunTarget("info", "getcli").output)); }
    /// Value of the line with this label, or the reason why there is none.
    std::string Value(const std::string& label) const {
        for (const std::string& line : Lines()) {
            if (line.starts_with(label + ": ")) {
                return line.substr(label.size() + 2);
            }
        }
        return "no line " + label;
    }
    void UseFirstBlock() const {
        std::memcpy(target->AuthPortName, target->PortName, 8);
        std::memcpy(target->AuthPortId, target->PortId, 3);
    }
    void UseSecondBlock() const {
        port->SecurityFlags = 1;
        std::memcpy(target->SecPortName, target->PortName, 8);
        std::memcpy(target->SecPortId, target->PortId, 3);
    }
    std::string Authentication() const {
        return Value("Remote Type") + ", " + Value("Session State") + ", " + Value("Secure Mode");
    }
};

TEST_F(TargetInfoTest, ReportsAScsiTarget) {
    SetText(target->VendorId, "HELIODOR");
    SetText(target->ProductId, "VIRTUAL-VOLUME  ");
    SetText(target->ProductRevision, "8804");
    SetText(target->NvmeRevision, "no");
    SetText(target->StorageNqn, "no");
    SetText(target->SerialNumber, std::string(64, 's'));
    for (const VX_UINT16 number : std::initializer_list<VX_UINT16>{0, 1, 5}) {
        Fake().host.AddLun(*target).LunNumber = number;
    }
    const std::vector<std::string> expected = {
        "Target Node Name: 50:0a:09:80:a1:c3:40:1e",
        "Target Port Name: 50:00:0a:0b:0c:0d:01:01",
        "Target Port ID: 01:4f:e0",
        "Target Number: 65535",
        "Vendor ID: HELIODOR",
        "Product ID: VIRTUAL-VOLUME  ",
        "Product Revision: 8804",
        "Product Type: FCP Disk",
        "Serial Number: " + std::string(64, 's'),
        "Lun Count: 3",
        "Luns: LUN_0, LUN_1, LUN_5",
        "Remote Type: Unknown",
        "Session State: NA",
        "Secure Mode: Disabled",
        "Congestion Current State: Healthy",
        "Virtual Lane: NA",
        "I/O Throttling: None",
        "Status: Offline",
    };
    for (const Format& format : FORMATS) {
        const CommandRun run = RunTarget("info", format.Leaf("get"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, format.Block(STRUCTURE, FIELD, LIST, TextOfLines(expected)));
        EXPECT_EQ(PortCalls(), Calls{}); // everything comes from the records
    }
}

TEST_F(TargetInfoTest, ReportsAnNvmeTarget) {
    target->TargetFlags[5] = NVME;
    SetText(target->VendorId, "BASALT");
    SetText(target->ProductRevision, "no");
    SetText(target->NvmeRevision, "6.3.1-rc");
    SetText(target->StorageNqn, "nqn.2010-06.com.example:array");
    target->StorageControllerId = 0xBEEF;
    for (const VX_UINT16 number : std::initializer_list<VX_UINT16>{1, 2, 65535}) {
        Fake().host.AddLun(*target).LunNumber = number;
    }
    const std::vector<std::string> expected = {
        "Target Node Name: 50:0a:09:80:a1:c3:40:1e",
        "Target Port Name: 50:00:0a:0b:0c:0d:01:01",
        "Target Port ID: 01:4f:e0",
        "Target Number: 65535",
        "Vendor ID: BASALT",
        "Product ID: ",
        "Product Revision: 6.3.1-rc",
        "Product Type: NVMe Disk",
        "Serial Number: ",
        "Storage NQN: nqn.2010-06.com.example:array",
        "Storage Controller ID: 0xbeef",
        "Namespace Count: 3",
        "Namespaces: NSID_1, NSID_2, NSID_65535",
        "Remote Type: Unknown",
        "Session State: NA",
        "Secure Mode: Disabled",
        "Congestion Current State: Healthy",
        "Virtual Lane: NA",
        "I/O Throttling: None",
        "Status: Offline",
    };
    for (const Format& format : FORMATS) {
        EXPECT_EQ(RunTarget("info", format.Leaf("get")).output,
                  format.Block(STRUCTURE, FIELD, LIST, TextOfLines(expected)));
    }
}

/// 256 characters are copied to a buffer of 256 bytes including a terminator, so 255 remain.
TEST_F(TargetInfoTest, NqnThatFillsItsArrayLosesACharacter) {
    target->TargetFlags[5] = NVME;
    SetText(target->StorageNqn, std::string(255, 'n') + "Z");
    EXPECT_EQ(Value("Storage NQN"), std::string(255, 'n'));
    SetText(target->StorageNqn, std::string(254, 'n') + "Z");
    EXPECT_EQ(Value("Storage NQN"), std::string(254, 'n') + "Z");
}

TEST_F(TargetInfoTest, CountAndListBothBoundTheLuns) {
    static constexpr struct {
        VX_UINT32 count;
        int present;
        const char* luns;
    } CASES[] = {
        {0, 0, ""},          {0, 2, ""},
        {1, 2, "LUN_0"},     {2, 2, "LUN_0, LUN_1"},
        {3, 1, "LUN_0"},     {0xFFFFFFFF, 1, "LUN_0"},
        {0xFFFFFFFF, 0, ""},
    };
    for (const auto& row : CASES) {
        target->pLunList = nullptr;
        target->LunCount = 0;
        for (int i = 0; i < row.present; ++i) {
            Fake().host.AddLun(*target);
        }
        target->LunCount = row.count;
        EXPECT_EQ(Value("Lun Count"), std::to_string(row.count));
        EXPECT_EQ(Value("Luns"), row.luns) << row.count << " of " << row.present;
        // Without LUNs the label keeps its blank.
        const std::string line = std::string("      Luns: ") + row.luns + "\n";
        EXPECT_NE(RunTarget("info", "get").output.find(line), std::string::npos);
    }
}

struct TypeCase {
    VX_UINT32 type;
    const char* text;
};
constexpr TypeCase TYPES[] = {
    {1, "Tape"},   {2, "Device"},  {3, "Device"},  {4, "Optical"},    {5, "CDROM"},
    {6, "Device"}, {7, "Device"},  {8, "Changer"}, {9, "Device"},     {11, "Device"},
    {12, "RAID"},  {13, "SAF-TE"}, {14, "Device"}, {0x100, "Device"}, {0xFFFFFFFF, "Device"},
};

TEST_F(TargetInfoTest, ProductTypes) {
    for (const VX_UINT8 flags : {VX_UINT8{0}, NVME}) {
        target->TargetFlags[5] = flags;
        target->DeviceType = 0;
        EXPECT_EQ(Value("Product Type"), flags == NVME ? "NVMe Disk" : "FCP Disk");
        for (const TypeCase& row : TYPES) {
            target->DeviceType = row.type;
            EXPECT_EQ(Value("Product Type"), row.text) << row.type;
        }
    }
}

TEST_F(TargetInfoTest, FirstAuthenticationBlock) {
    UseFirstBlock();
    static constexpr TypeCase ROLES[] = {{0, "Unknown"},          {1, "Target"},  {2, "Initiator"},
                                         {3, "Initiator-Target"}, {4, "Unknown"}, {255, "Unknown"}};
    for (const TypeCase& row : ROLES) {
        target->AuthRole = static_cast<VX_UINT8>(row.type);
        EXPECT_EQ(Authentication(), std::string(row.text) + ", NA, Disabled");
    }
    target->AuthRole = 1;
    static constexpr struct {
        VX_UINT8 status;
        VX_UINT8 state;
        const char* expected;
    } CASES[] = {
        {0, 0, "Target, NA, Disabled"},
        {0, 1, "Target, NA, Disabled"},
        {0, 2, "Target, Auth Pending, Disabled"},
        {0, 3, "Target, Auth Pending, Disabled"},
        {0, 5, "Target, Auth Pending, Disabled"},
        {0, 6, "Target, Auth Failed, Disabled"},
        {0, 7, "Target, Auth Failed, Disabled"},
        {0, 255, "Target, Auth Failed, Disabled"},
        {1, 0, "Target, Auth Complete, Enabled"},
        {1, 5, "Target, Auth Complete, Enabled"},
        {1, 6, "Target, Auth Unknown, Disabled"},
        {1, 7, "Target, Auth Unknown, Disabled"},
        {2, 0, "Target, Auth Unknown, Disabled"},
        {2, 5, "Target, Auth Unknown, Disabled"},
        {255, 7, "Target, Auth Unknown, Disabled"},
    };
    for (const auto& row : CASES) {
        target->AuthStatus = row.status;
        target->AuthState = row.state;
        EXPECT_EQ(Authentication(), row.expected) << int{row.status} << " " << int{row.state};
    }
}

TEST_F(TargetInfoTest, SecondAuthenticationBlock) {
    UseSecondBlock();
    static constexpr TypeCase FLAGS[] = {
        {0x00, "Unknown, NA, Disabled"},         {0x01, "Initiator, NA, Disabled"},
        {0x02, "Target, NA, Disabled"},          {0x03, "Initiator-Target, NA, Disabled"},
        {0x10, "Unknown, NA, Enabled"},          {0x11, "Initiator, NA, Enabled"},
        {0x12, "Target, NA, Enabled"},           {0x13, "Initiator-Target, NA, Enabled"},
        {0xEC, "Unknown, NA, Disabled"},         {0xEF, "Initiator-Target, NA, Disabled"},
        {0xFF, "Initiator-Target, NA, Enabled"},
    };
    for (const TypeCase& row : FLAGS) {
        target->SecFlags = static_cast<VX_UINT8>(row.type);
        EXPECT_EQ(Authentication(), row.text) << row.type;
    }
    static constexpr TypeCase STATES[] = {
        {0, "NA"},
        {1, "NA"},
        {2, "Auth Pending"},
        {3, "Auth Failed"},
        {4, "Auth Complete"},
        {5, "Auth Terminate"},
        {6, "Auth Unknown"},
        {0x100, "Auth Unknown"},
        {0xFFFFFFFF, "Auth Unknown"},
    };
    for (const TypeCase& row : STATES) {
        target->SecSessionState = row.type;
        EXPECT_EQ(Value("Session State"), row.text) << row.type;
    }
}

/// Which block is used: the second before the first, each only if it is the target's own.
TEST_F(TargetInfoTest, AuthenticationBlockOfThisTarget) {
    constexpr char FIRST[] = "Target, Auth Complete, Enabled";
    constexpr char SECOND[] = "Initiator, Auth Failed, Disabled";
    constexpr char NEITHER[] = "Unknown, NA, Disabled";
    target->AuthRole = 1;
    target->AuthStatus = 1;
    target->SecFlags = 1;
    target->SecSessionState = 3;
    EXPECT_EQ(Authentication(), NEITHER);
    UseFirstBlock();
    EXPECT_EQ(Authentication(), FIRST);
    UseSecondBlock();
    EXPECT_EQ(Authentication(), SECOND);
    for (const VX_UINT32 flags : {0u, 2u, 0xFFFFFFFEu}) {
        port->SecurityFlags = flags; // without extended security the second block is ignored
        EXPECT_EQ(Authentication(), FIRST) << flags;
    }
    port->SecurityFlags = 0xFFFFFFFF;
    for (VX_UINT8& byte : target->SecPortName) {
        byte ^= 1;
        EXPECT_EQ(Authentication(), FIRST);
        byte ^= 1;
    }
    for (VX_UINT8& byte : target->SecPortId) {
        byte ^= 1;
        EXPECT_EQ(Authentication(), FIRST);
        byte ^= 1;
    }
    EXPECT_EQ(Authentication(), SECOND);
    target->SecPortId[2] ^= 1;
    for (VX_UINT8& byte : target->AuthPortName) {
        byte ^= 1;
        EXPECT_EQ(Authentication(), NEITHER);
        byte ^= 1;
    }
    for (VX_UINT8& byte : target->AuthPortId) {
        byte ^= 1;
        EXPECT_EQ(Authentication(), NEITHER);
        byte ^= 1;
    }
    EXPECT_EQ(Authentication(), FIRST);
}

TEST_F(TargetInfoTest, CongestionStates) {
    static constexpr TypeCase STATES[] = {{0, "Healthy"}, {1, "Congested"}, {2, "Unknown"}, {255, "Unknown"}};
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        for (const TypeCase& row : STATES) {
            target->ScmCongState = static_cast<VX_UINT8>(row.type);
            EXPECT_EQ(Value("Congestion Current State"), row.text) << chip.name;
        }
    }
}

constexpr VX_UINT32 BIT_30 = 0x40000000;
constexpr VX_UINT32 BIT_31 = 0x80000000;

TEST_F(TargetInfoTest, VirtualLanes) {
    static constexpr struct {
        VX_UINT8 lane;
        const char* withBit30;
        const char* without;
    } CASES[] = {{1, "Slow", "Slow"},          {2, "Normal", "Normal"},      {3, "Fast", "Fast"},
                 {0, "Non-Operational", "NA"}, {4, "Non-Operational", "NA"}, {255, "Non-Operational", "NA"}};
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        for (const auto& row : CASES) {
            target->ScmVirtualLane = row.lane;
            port->FeatureFlags = BIT_30;
            EXPECT_EQ(Value("Virtual Lane"), chip.chip == BIRCH ? row.withBit30 : "NA") << chip.name << int{row.lane};
            port->FeatureFlags = ~BIT_30;
            EXPECT_EQ(Value("Virtual Lane"), chip.chip == BIRCH ? row.without : "NA") << chip.name << int{row.lane};
        }
    }
}

/// The last case reads "None", not "NA" as for a port.
TEST_F(TargetInfoTest, ThrottlingIsToldByChipsThatCount) {
    static constexpr struct {
        VX_UINT8 state;
        const char* withBit31;
        const char* without;
    } CASES[] = {{1, "None", "None"},
                 {2, "Active", "Active"},
                 {0, "Disabled", "None"},
                 {3, "Disabled", "None"},
                 {255, "Disabled", "None"}};
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        const bool counts = chip.chip == LARCH || chip.chip == ALDER || chip.chip == BIRCH;
        for (const auto& row : CASES) {
            target->ScmThrottleState = row.state;
            port->FeatureFlags = BIT_31;
            EXPECT_EQ(Value("I/O Throttling"), counts ? row.withBit31 : "None") << chip.name << int{row.state};
            port->FeatureFlags = ~BIT_31;
            EXPECT_EQ(Value("I/O Throttling"), counts ? row.without : "None") << chip.name << int{row.state};
        }
    }
}

/// Byte 2 bit 1 together with byte 4 bit 0 takes precedence over byte 0 bit 6.
TEST_F(TargetInfoTest, StatusIsReadFromThreeFlags) {
    static constexpr struct {
        VX_UINT8 byte0, byte2, byte4;
        const char* status;
    } CASES[] = {
        {0x00, 0x02, 0x01, "Online"},       {0x40, 0x02, 0x01, "Online"},       {0xFF, 0xFF, 0xFF, "Online"},
        {0x40, 0x02, 0x00, "Unconfigured"}, {0x40, 0x00, 0x01, "Unconfigured"}, {0x40, 0x00, 0x00, "Unconfigured"},
        {0x40, 0xFD, 0xFF, "Unconfigured"}, {0x40, 0xFF, 0xFE, "Unconfigured"}, {0x00, 0x02, 0x00, "Offline"},
        {0x00, 0x00, 0x01, "Offline"},      {0xBF, 0xFD, 0xFE, "Offline"},      {0x00, 0x00, 0x00, "Offline"},
    };
    for (const auto& row : CASES) {
        target->TargetFlags[0] = row.byte0;
        target->TargetFlags[2] = row.byte2;
        target->TargetFlags[4] = row.byte4;
        EXPECT_EQ(Value("Status"), row.status);
    }
}

/// Size rule of the block: a line is added if it and a terminator fit in the *space left*, 4096 bytes less the used
/// space, although the used space must fit there too. So 2 * used + length < 4096.
std::vector<std::string> LinesThatFit(const std::vector<std::string>& lines) {
    std::vector<std::string> fitting;
    std::size_t used = 0;
    for (const std::string& line : lines) {
        const std::size_t length = (used == 0 ? 0 : 6) + line.size() + 1;
        if (2 * used + length < 4096) {
            used += length;
            fitting.push_back(line);
        }
    }
    return fitting;
}

class TargetLunsTest : public TargetInfoTest {
protected:
    void SetLuns(int count) {
        while (target->LunCount < static_cast<VX_UINT32>(count)) {
            Fake().host.AddLun(*target);
        }
    }
    /// Every line of the report, whether it fits or not.
    std::vector<std::string> AllLines() const {
        std::string luns;
        for (VX_UINT32 i = 0; i < target->LunCount; ++i) {
            luns += (i == 0 ? "LUN_" : ", LUN_") + std::to_string(i);
        }
        return {"Target Node Name: 50:0a:09:80:a1:c3:40:1e",
                "Target Port Name: 50:00:0a:0b:0c:0d:01:01",
                "Target Port ID: 01:4f:e0",
                "Target Number: 65535",
                "Vendor ID: ",
                "Product ID: ",
                "Product Revision: ",
                "Product Type: FCP Disk",
                "Serial Number: ",
                "Lun Count: " + std::to_string(target->LunCount),
                "Luns: " + luns,
                "Remote Type: Unknown",
                "Session State: NA",
                "Secure Mode: Disabled",
                "Congestion Current State: Healthy",
                "Virtual Lane: NA",
                "I/O Throttling: None",
                "Status: Offline"};
    }
    bool Has(const std::string& label) const { return Value(label) != "no line " + label; }
};

TEST_F(TargetLunsTest, LinesGoOneByOne) {
    for (int count = 0; count <= 450; ++count) {
        SetLuns(count);
        ASSERT_EQ(Lines(), LinesThatFit(AllLines())) << count;
    }
}

/// Calculated limits for 100 to 999 LUNs numbered from 0; sizes include indentation and line end.
///
/// Before "Luns": 42 + 48 + 31 + 27 + 18 + 19 + 25 + 29 + 22 + 21 = 282.
/// "Luns" with n: 6 + 6 + 1 = 13, and n times "LUN_", n - 1 times ", ", 10 numbers of one digit, 90 of two and n -
/// 100 of three: 4n + 2n - 2 + 10 + 180 + 3n - 300 = 9n - 112; together 9n - 99.
/// After "Luns": 282 + 9n - 99 = 9n + 183.
TEST_F(TargetLunsTest, DropsTheLinesThatManyLunsLeaveNoRoomFor) {
    // "Status" takes 22 and follows 9n + 183 + 27 + 24 + 28 + 40 + 23 + 27 = 9n + 352:
    // 18n + 704 + 22 < 4096 up to n = 187 (18 * 187 = 3366 < 3370).
    SetLuns(187);
    EXPECT_EQ(Lines().size(), 18u);
    SetLuns(188);
    EXPECT_EQ(Lines().size(), 17u);
    EXPECT_FALSE(Has("Status"));
    EXPECT_TRUE(Has("I/O Throttling"));
    // "I/O Throttling" takes 27 after 9n + 325: 18n + 650 + 27 < 4096 up to n = 189 (3402 < 3419).
    SetLuns(189);
    EXPECT_TRUE(Has("I/O Throttling"));
    SetLuns(190);
    EXPECT_FALSE(Has("I/O Throttling"));
    // "Congestion Current State" takes 40 after 9n + 262: 18n + 524 + 40 < 4096 up to n = 196 (3528 < 3532). Then
    // "Virtual Lane" takes 23, and fits instead at n = 197: 3546 + 524 + 23 = 4093 < 4096.
    SetLuns(196);
    EXPECT_TRUE(Has("Congestion Current State"));
    EXPECT_FALSE(Has("Virtual Lane"));
    SetLuns(197);
    EXPECT_FALSE(Has("Congestion Current State"));
    EXPECT_TRUE(Has("Virtual Lane"));
    // "Luns" itself takes 9n - 99 after 282: 564 + 9n - 99 < 4096 up to n = 403 (3627 < 3631).
    SetLuns(403);
    EXPECT_EQ(Lines().size(), 11u);
    EXPECT_TRUE(Has("Luns"));
    // Without it, all following lines fit again.
    SetLuns(404);
    EXPECT_FALSE(Has("Luns"));
    EXPECT_EQ(Lines().size(), 17u);
    EXPECT_EQ(Value("Lun Count"), "404");
    EXPECT_EQ(Value("Status"), "Offline");
}

/// Formatted lines are truncated to 1024 characters; this one isn't.
TEST_F(TargetLunsTest, LineOfLunsIsNotCut) {
    SetLuns(300);
    std::string expected = "LUN_0";
    for (int i = 1; i < 300; ++i) {
        expected += ", LUN_" + std::to_string(i);
    }
    EXPECT_EQ(expected.size(), 9u * 300 - 112);
    EXPECT_EQ(Value("Luns"), expected);
}

struct ErrorCase {
    const char* arguments;
    ResultCode code;
    const char* message;
};

TEST_F(TargetInfoTest, RefusesHelpAndATargetThatIsNotThere) {
    static constexpr ErrorCase CASES[] = {
        {"", RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
        {" FC_21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
        {" FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:02", RC_INVALID_PARAMETER,
         "Failed, Invalid parameter"},
        {" FC_21:00:0A:0B:0C:0D:00:01_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER,
         "Failed, Invalid parameter"},
        {" help", RC_HELP_REQUESTED, "Failed, Unknown"},
    };
    for (const ErrorCase& row : CASES) {
        for (const Format& format : FORMATS) {
            const CommandRun run = Run("-t target -v info " + format.Leaf("get") + row.arguments);
            EXPECT_EQ(run.code, row.code);
            EXPECT_EQ(run.output, ErrorOf(format, STRUCTURE, FIELD, row.message) +
                                      (format.IsXml() ? "" : "Usage: get [port identifier]\r\n"));
        }
    }
}

TEST_F(TargetInfoTest, FailsWithoutAHost) {
    LoseHost();
    for (const Format& format : FORMATS) {
        const CommandRun run = RunTarget("info", format.Leaf("get"));
        EXPECT_EQ(run.code, RC_HOST_NOT_FOUND);
        EXPECT_EQ(run.output, ErrorOf(format, STRUCTURE, FIELD, "Failed, Host not found"));
    }
}

} // namespace
