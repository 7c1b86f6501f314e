#include "FCLunInfoCmdsProcessor.h"
#include "TargetTestBase.h"

using namespace family_test;

namespace {

constexpr char STRUCTURE[] = "LunInformation";
constexpr char FIELD[] = "LunInfo";
constexpr char LIST[] = "LunInfoList";

/// (blocks / 1024) * block size / 1024, with integer divisions in this order and a 64-bit product.
TEST(LunSizeTest, ShiftsMultipliesShifts) {
    static constexpr struct {
        VX_UINT64 blocks;
        VX_UINT32 blockSize;
        VX_UINT64 megabytes;
    } CASES[] = {
        {0, 512, 0},
        {2097152, 512, 1024},                            // 2048 * 512 / 1024
        {1000, 4096, 0},                                 // the first shift loses them
        {1023, 0xFFFFFFFF, 0},                           //
        {1024, 4096, 4},                                 // 1 * 4096 / 1024
        {2047, 4096, 4},                                 // 1 again
        {1024, 1023, 0},                                 // the second shift loses these
        {2048, 512, 1},                                  // 2 * 512 / 1024
        {1024, 0, 0},                                    //
        {0x100000000ULL, 512, 2097152},                  // 2^22 * 2^9 / 2^10 = 2^21
        {0xFFFFFFFFFFFFFFFFULL, 512, 0x1FFFFFFFFFFFFF},  // (2^54 - 1) * 2^9 / 2^10 = 2^53 - 1/2, whole 2^53 - 1
        {0xFFFFFFFFFFFFFFFFULL, 4096, 0x3FFFFFFFFFFFFC}, // (2^54 - 1) * 2^12 is 2^66 - 2^12, in 64 bits 2^64 - 2^12;
                                                         // over 2^10: 2^54 - 2^2
    };
    for (const auto& row : CASES) {
        EXPECT_EQ(LunSizeInMegabytes(row.blocks, row.blockSize), row.megabytes) << row.blocks << " " << row.blockSize;
    }
}

class LunInfoTest : public TargetTest {
protected:
    LunInfoTest() : lun(&Fake().host.AddLun(*target)) {
        lun->LunNumber = 1023;
        SetText(lun->VendorId, "HELIODOR");
        SetText(lun->ProductId, "VIRTUAL-VOLUME 1");
        SetText(lun->ProductRevision, "8804");
        SetText(lun->NamespaceRevision, "6.3.1-rc");
        lun->BlockCount = 2097152;
        lun->BlockSize = 512;
    }
    CommandRun RunLun(const std::string& leaf) const {
        const char* word = (target->TargetFlags[5] & NVME) != 0 ? "_NSID_" : "_LUN_";
        return Run("-t lun -v info " + leaf + " " + TargetId(*port, *target) + word + std::to_string(lun->LunNumber));
    }
    std::vector<std::string> Lines() const { return LinesOf(BlockText(RunLun("getcli").output)); }

    _tagVEXAPI_SDMLun* lun;
};

TEST_F(LunInfoTest, ReportsALun) {
    lun->WorldwideId[0] = 0x60;
    lun->WorldwideId[1] = 0x06;
    lun->WorldwideId[3] = 0xE0;
    lun->WorldwideIdLength = 4;
    for (const Format& format : FORMATS) {
        const CommandRun run = RunLun(format.Leaf("get"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output,
                  format.Block(STRUCTURE, FIELD, LIST,
                               TextOfLines({"Vendor ID: HELIODOR", "Product ID: VIRTUAL-VOLUME 1",
                                            "Product Revision: 8804", "Lun Number: 1023", "Lun Size In MB: 1024",
                                            "Lun Worldwide Unique ID: 60:06:00:e0"})));
        EXPECT_EQ(PortCalls(), Calls{});
    }
}

/// The LUN's own flag decides what is shown, whatever its target.
TEST_F(LunInfoTest, ReportsANamespace) {
    lun->WorldwideId[0] = 0x60;
    lun->WorldwideIdLength = 4;
    for (const VX_UINT8 targetFlags : {NVME, VX_UINT8{0}}) {
        for (const VX_UINT8 flags : std::initializer_list<VX_UINT8>{0x01, 0xFF}) {
            target->TargetFlags[5] = targetFlags;
            lun->LunFlags = flags;
            for (const Format& format : FORMATS) {
                EXPECT_EQ(RunLun(format.Leaf("get")).output,
                          format.Block(STRUCTURE, FIELD, LIST,
                                       TextOfLines({"Vendor ID: HELIODOR", "Product ID: VIRTUAL-VOLUME 1",
                                                    "Product Revision: 6.3.1-rc", "Namespace ID: 1023",
                                                    "Namespace Size In MB: 1024"})));
            }
        }
    }
    target->TargetFlags[5] = NVME;
    lun->LunFlags = 0xFE;
    EXPECT_EQ(Lines().size(), 6u);
}

TEST_F(LunInfoTest, LargestSize) {
    lun->BlockCount = 0xFFFFFFFFFFFFFFFFULL;
    lun->BlockSize = 4096;
    EXPECT_EQ(Lines()[4], "Lun Size In MB: 18014398509481980"); // 2^54 - 4
}

TEST_F(LunInfoTest, WorldwideIdentifiers) {
    std::string whole;
    for (int i = 0; i < 32; ++i) {
        lun->WorldwideId[i] = static_cast<VX_UINT8>(0x10 + i); // 10, 11, ... 2f
        char byte[4];
        std::snprintf(byte, sizeof byte, "%02x", 0x10 + i);
        whole += (i > 0 ? ":" : "") + std::string(byte);
    }
    EXPECT_EQ(whole.substr(0, 11), "10:11:12:13");
    for (int length = 0; length <= 255; ++length) {
        lun->WorldwideIdLength = static_cast<VX_UINT8>(length);
        // Two digits per byte, a colon between two: three characters per byte less one; 32 bytes at most.
        const int bytes = std::min(length, 32);
        EXPECT_EQ(Lines()[5], "Lun Worldwide Unique ID: " + whole.substr(0, bytes == 0 ? 0 : 3 * bytes - 1)) << length;
    }
    std::memset(lun->WorldwideId, 0, sizeof lun->WorldwideId);
    for (const VX_UINT8 length : std::initializer_list<VX_UINT8>{0, 1, 32, 33, 255}) {
        lun->WorldwideIdLength = length;
        EXPECT_EQ(Lines()[5], "Lun Worldwide Unique ID: NA") << int{length};
    }
    // A single non-zero byte, even beyond the length, makes it an identifier.
    lun->WorldwideId[31] = 1;
    lun->WorldwideIdLength = 2;
    EXPECT_EQ(Lines()[5], "Lun Worldwide Unique ID: 00:00");
}

TEST_F(LunInfoTest, RefusesHelpAndALunThatIsNotThere) {
    static constexpr struct {
        const char* arguments;
        ResultCode code;
        const char* message;
    } CASES[] = {
        {"", RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
        {" FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01", RC_INVALID_PARAMETER,
         "Failed, Invalid parameter"},
        {" FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01_LUN_1", RC_INVALID_PARAMETER,
         "Failed, Invalid parameter"},
        {" FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01_lun_1023", RC_INVALID_PARAMETER,
         "Failed, Invalid parameter"},
        {" FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01_NSID_1023", RC_INVALID_PARAMETER,
         "Failed, Invalid parameter"},
        {" /h", RC_HELP_REQUESTED, "Failed, Unknown"},
    };
    for (const auto& row : CASES) {
        for (const Format& format : FORMATS) {
            const CommandRun run = Run("-t lun -v info " + format.Leaf("get") + row.arguments);
            EXPECT_EQ(run.code, row.code);
            EXPECT_EQ(run.output, ErrorOf(format, STRUCTURE, FIELD, row.message) +
                                      (format.IsXml() ? "" : "Usage: get [port identifier]\r\n"));
        }
    }
}

TEST_F(LunInfoTest, FailsWithoutAHost) {
    LoseHost();
    for (const Format& format : FORMATS) {
        const CommandRun run = RunLun(format.Leaf("get"));
        EXPECT_EQ(run.code, RC_HOST_NOT_FOUND);
        EXPECT_EQ(run.output, ErrorOf(format, STRUCTURE, FIELD, "Failed, Host not found"));
    }
}

} // namespace
