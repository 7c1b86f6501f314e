#include "PhysicalPortRDPCmdsProcessor.h"

#include "HostTree.h"
#include "LibraryCall.h"
#include "PhysicalPortCmdsProcessor.h"
#include "PingTest.h"
#include "RDPPayload.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortRDPCmdsProcessor";

/// The data field has a label of its own.
constexpr ReportNames OUT_NAMES = {"RDPInformation", "Read Diagnostics Parameters Data", "RDPDataList", "RDPInfo"};

constexpr UsageText USAGES[] = {{2, "Usage: get\r\n"}};

constexpr LibraryCall READ_RDP = {"VEXAPI_DiagnosticsRDPTest", "", "RDP Test failed", RC_DIAG_TEST_FAILED};

constexpr std::size_t REPORT_SIZE = 16384;

} // namespace

// The text twin of `get` is named `runcli`, and carries no usage function.
constinit const Leaf PhysicalPortRDPCmdsProcessor::LEAVES[] = {
    {"get", "Read Diagnostic Parameters on Orvane adapter port", 0, Xml<"CmdGet", CmdGetCommon>, nullptr},
    {"help", "list of available commands", 1, CmdHelp, Usage},
    {"runcli", "Read Diagnostic Parameters on Orvane adapter port", 2, Text<"CmdGetCli", CmdGetCommon>, nullptr},
};

constinit const FamilyDescription PhysicalPortRDPCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "RDP",
    .helpId = 1,
    .leaves = LEAVES,
    .usages = USAGES,
    .resultTexts = PING_RESULT_TEXTS,
    .report = OUT_NAMES,
};

/// The size that the library gives back is of no use: the payload tells its own length.
VX_UINT32 PhysicalPortRDPCmdsProcessor::Get(const TavuStringArray& args, Payload& payload) {
    PingRequest request;
    if (const VX_UINT32 code = AdmitPingPort(args, request); code != RC_SUCCESS) {
        return code;
    }
    return CallLibrary(READ_RDP, [&] {
        VX_UINT32 size = Payload::SIZE;
        return VEXAPI_DiagnosticsRDPTest(&request.entry.protocol->PortHandle, payload.bytes, &size);
    });
}

/// Without memory for the report the document holds no data, and still says "Success".
void PhysicalPortRDPCmdsProcessor::DisplayRDPInfo(MultipleCmdsProcessor* self, const Payload& payload,
                                                  eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    ReportBlock report(REPORT_SIZE, ReportBlock::SizeRule::FULL);
    if (report.IsAllocated()) {
        bool isVendorMatch = false;
        ParseRDPDataBuffer(decoders::Bytes(payload.bytes, Payload::SIZE), report, isVendorMatch);
    }
    Document(*self, format).BlockReport(OUT_NAMES, REBOOT_NOT_SHOWN, report);
}
