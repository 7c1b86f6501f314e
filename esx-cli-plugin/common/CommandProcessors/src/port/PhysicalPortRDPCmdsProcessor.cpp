#include "PhysicalPortRDPCmdsProcessor.h"

#include "HostTree.h"
#include "LibraryCall.h"
#include "PingDiagnostics.h"
#include "RDPPayload.h"
#include "Resolvers.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortRDPCmdsProcessor";

/// The data field has a special label.
constexpr ReportNames OUT_NAMES = {"RDPInformation", "Read Diagnostics Parameters Data", "RDPDataList", "RDPInfo"};

constexpr LibraryCall READ_RDP = {"VEXAPI_DiagnosticsRDPTest", "", "RDP Test failed", RC_DIAG_TEST_FAILED};

constexpr std::size_t REPORT_SIZE = 16384;

constexpr DocumentField FIELDS[] = {{OUT_NAMES.data, FieldType::TEXT}};

} // namespace

// Required: the twin of `get` is named `runcli`.
constexpr Command PhysicalPortRDPCmdsProcessor::COMMANDS[] = {
    {.names = {"get", "runcli", "CmdGetCommon"},
     .description = "Read Diagnostic Parameters on Orvane adapter port",
     .run = CmdGetCommon,
     .usage = nullptr,
     .arguments = ONLY_PORT,
     .document = ReportDocument(OUT_NAMES, FIELDS),
     .twinUsage = TwinUsage::NONE},
};

constinit const FamilyDescription PhysicalPortRDPCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "RDP",
    .leaves = LEAVES_OF<PhysicalPortRDPCmdsProcessor>,
    .resultTexts = PING_RESULT_TEXTS,
    .report = OUT_NAMES,
};

/// The size returned by the library is not used: the payload contains its own length.
ResultCode PhysicalPortRDPCmdsProcessor::Get(const TavuStringArray& args, Payload& payload) {
    PingRequest request;
    if (const ResultCode code = AdmitPingPort(args, request); code != RC_SUCCESS) {
        return code;
    }
    return CallLibrary(READ_RDP, [&] {
        VX_UINT32 size = Payload::SIZE;
        return VEXAPI_DiagnosticsRDPTest(&request.entry.protocol->PortHandle, payload.bytes, &size);
    });
}

/// If the report can't be allocated, the document has no data but still says "Success".
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
