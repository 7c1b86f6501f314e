#include "PhysicalPortFCPingCmdsProcessor.h"

#include "PingDiagnostics.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortFCPingCmdsProcessor";

constexpr char OUT_RESULT[] = "FCPingResult";
constexpr char OUT_DIAG_TEST[] = "Diagnostic Test";
constexpr char OUT_TEST_RESULT[] = "Test Result";
constexpr char OUT_FC_PING[] = "FCPing";

constexpr LibraryCall PING = {"VEXAPI_DiagnosticsFCPingTest", "", "FC Ping failed", RC_DIAG_TEST_FAILED};

constexpr DocumentField FIELDS[] = {{OUT_DIAG_TEST, FieldType::TEXT}, {OUT_TEST_RESULT, FieldType::TEXT}};

} // namespace

constexpr Command PhysicalPortFCPingCmdsProcessor::COMMANDS[] = {
    {.names = Names<"run", "CmdRun">(),
     .description = "run FCPing test on Orvane adapter port",
     .run = CmdRunCommon,
     .usage = nullptr,
     .arguments = PING_ARGUMENTS,
     .document = FlatDocument(OUT_RESULT, FIELDS),
     .changes = true,
     .twinDescription = "run FCPing Test on Orvane adapter port",
     .twinUsage = TwinUsage::NONE},
};

constinit const FamilyDescription PhysicalPortFCPingCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FCPing",
    .leaves = LEAVES_OF<PhysicalPortFCPingCmdsProcessor>,
    .resultTexts = PING_RESULT_TEXTS,
};

ResultCode PhysicalPortFCPingCmdsProcessor::CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                         eOutputFormat format) {
    const ResultCode code = Run(args);
    const TracedCall traced(CLASS_NAME, "DisplayFCPingResult");
    Document document(*self, format);
    document.Flat(OUT_RESULT, [&] {
        document.Field(OUT_DIAG_TEST, OUT_FC_PING);
        document.Message(code, ResultText(code), OUT_TEST_RESULT);
    });
    return code;
}

/// Makes one library call for the whole test; the library handles count and stop.
ResultCode PhysicalPortFCPingCmdsProcessor::Run(const TavuStringArray& args) {
    PingRequest request;
    ResultCode code = AdmitPingPort(args, request);
    if (code == RC_SUCCESS) {
        code = ReadPingWords(args, 1, request);
    }
    if (code == RC_SUCCESS && !IsPingTarget(request)) {
        code = RC_TARGET_NOT_FOUND;
    }
    if (code != RC_SUCCESS) {
        return code;
    }
    return CallLibrary(PING, [&] {
        VX_UINT32 output = 0;
        char buffer[PING_BUFFER_SIZE] = {};
        return VEXAPI_DiagnosticsFCPingTest(&request.entry.protocol->PortHandle, request.name, request.count,
                                            request.stopOnError, &output, buffer, sizeof buffer);
    });
}
