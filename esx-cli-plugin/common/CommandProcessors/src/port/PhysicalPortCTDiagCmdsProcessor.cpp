#include "PhysicalPortCTDiagCmdsProcessor.h"

#include "CmdLineParser.h"
#include "PingDiagnostics.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortCTDiagCmdsProcessor";

constexpr char OUT_RESULT[] = "CTDiagResult";
constexpr char OUT_DIAG_TEST[] = "Diagnostic Test";
constexpr char OUT_TEST_RESULT[] = "Test Result";

/// Test types; 0 for any other word.
constexpr CodeText TEST_TYPES[] = {{1, "CTPing"}, {2, "CTFCTraceRoute"}};

constexpr LibraryCall CT_TEST = {"VEXAPI_DiagnosticsCTCommand", "", "CT Diag failed", RC_DIAG_TEST_FAILED};

constexpr DocumentField FIELDS[] = {{OUT_DIAG_TEST, FieldType::TEXT}, {OUT_TEST_RESULT, FieldType::TEXT}};
constexpr Argument RUN_ARGUMENTS[] = {
    PORT_ARGUMENT, {"test", nullptr, "which test", ArgumentKind::WORD, true, TEST_TYPES}, PING_NAME, PING_COUNT,
    PING_STOP,
};

} // namespace

constexpr Command PhysicalPortCTDiagCmdsProcessor::COMMANDS[] = {
    {.names = Names<"run", "CmdRun">(),
     .description = "run CTDiag test on Orvane adapter port",
     .run = CmdRunCommon,
     .usage = nullptr,
     .arguments = RUN_ARGUMENTS,
     .document = FlatDocument(OUT_RESULT, FIELDS),
     .changes = true,
     .twinDescription = "run CTDiag Test on Orvane adapter port",
     .twinUsage = TwinUsage::NONE},
};

constinit const FamilyDescription PhysicalPortCTDiagCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "CTDiag",
    .leaves = LEAVES_OF<PhysicalPortCTDiagCmdsProcessor>,
    .resultTexts = PING_RESULT_TEXTS,
};

ResultCode PhysicalPortCTDiagCmdsProcessor::CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                         eOutputFormat format) {
    VX_UINT32 testType = 0;
    const ResultCode code = Run(args, testType);
    const TracedCall traced(CLASS_NAME, "DisplayCTDiagResult");
    Document document(*self, format);
    document.Flat(OUT_RESULT, [&] {
        document.Field(OUT_DIAG_TEST, TextOf(TEST_TYPES, testType, OUT_UNKNOWN));
        document.Message(code, ResultText(code), OUT_TEST_RESULT);
    });
    return code;
}

/// The test type is checked first, before the port and a help word.
ResultCode PhysicalPortCTDiagCmdsProcessor::Run(const TavuStringArray& args, VX_UINT32& testType) {
    if (!FindWord(TEST_TYPES, ArgText(args, 1), testType)) {
        return RC_INVALID_PARAMETER;
    }
    PingRequest request;
    ResultCode code = AdmitPingPort(args, request);
    if (code == RC_SUCCESS) {
        code = ReadPingWords(args, 2, request);
    }
    if (code == RC_SUCCESS && !IsPingTarget(request)) {
        code = RC_TARGET_NOT_FOUND;
    }
    if (code != RC_SUCCESS) {
        return code;
    }
    return CallLibrary(CT_TEST, [&] {
        VX_UINT32 output = 0;
        char buffer[PING_BUFFER_SIZE] = {};
        return VEXAPI_DiagnosticsCTCommand(&request.entry.protocol->PortHandle, request.name, request.count,
                                           request.stopOnError, &output, buffer, sizeof buffer, testType);
    });
}
