#include "FamilyTest.h"
#include "RefusedBlock.h"

using namespace family_test;

namespace {

/// Reports whose text can't be allocated. The command's result is still 0.
class NoMemoryTest : public FamilyTest {
protected:
    struct Case {
        bool isAdapter;
        const char* family;
        const char* rest;
        std::size_t size;
        const char* structure;
        const char* field;
    };
    static constexpr Case CASES[] = {
        {false, "info", "", 4096, "PortInformation", "PortInfo"},
        {false, "stats", "Driver", 2048, "FCStatistics", "FCStats"},
        {false, "stats", "Firmware", 2048, "FCStatistics", "FCStats"},
        {true, "info", "", 4096, "AdapterInformation", "General Parameters"},
        {true, "flashinfo", "", 1024, "AdapterFlashInformation", "Flash Info"},
    };
};

TEST_F(NoMemoryTest, ReportsShowIt) {
    Fake().Succeed({"GetFlashComponentVersion", "GetAdapterAsicBoardTemperature", "GetLockdownStatus"});
    Fake().onGetAdapterFlashMemoBlock = [](VX_PORT_HANDLE*, VX_SFlashMemoBlock* block) {
        std::memcpy(block->Signature, "FMBS", 4);
        return 0u;
    };
    for (const Case& row : CASES) {
        for (const Format& format : FORMATS) {
            CommandRun run;
            {
                const RefusedBlock refused(row.size);
                run = row.isAdapter ? RunAdapter(row.family, format.Leaf("get"), row.rest)
                                    : RunPort(row.family, format.Leaf("get"), row.rest);
            }
            EXPECT_EQ(run.code, RC_SUCCESS) << row.structure;
            EXPECT_EQ(run.output, format.Report(row.structure, {{"Message", "Failed, Memory Error"}}, row.field, ""));
        }
    }
}

/// The transceiver was read, and the document says so, but has no data.
TEST_F(NoMemoryTest, TransceiverReportIsASuccessWithoutData) {
    Fake().onGetSFPData = [](VX_PORT_HANDLE*, void* data) {
        *static_cast<VX_UINT8*>(data) = 3;
        return 0u;
    };
    for (const Format& format : FORMATS) {
        CommandRun run;
        {
            const RefusedBlock refused(16384);
            run = RunPort("dmi", format.Leaf("get"));
        }
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, format.Report("DMIInformation", {{"Message", "Success"}}, "Dmi Info",
                                            format.Structure("DMIInfoList", format.OpenField("Dmi Data", ""))));
    }
}

/// The buffer is allocated before the library call; the family has no text for a failure.
TEST_F(NoMemoryTest, VitalProductDataGivesUp) {
    for (const Format& format : FORMATS) {
        CommandRun run;
        {
            const RefusedBlock refused(1024);
            run = RunPort("vpd", format.Leaf("get"));
        }
        EXPECT_EQ(run.code, RC_NO_MEMORY);
        EXPECT_EQ(run.output, format.Report("VPDInformation", {{"Message", "Failed, Unknown"}}, "VPD Data", ""));
        EXPECT_EQ(PortCalls(), Calls{});
    }
}

} // namespace
