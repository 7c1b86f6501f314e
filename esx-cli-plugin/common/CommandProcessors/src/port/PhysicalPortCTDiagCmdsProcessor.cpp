#include "PhysicalPortCTDiagCmdsProcessor.h"

#include "CmdLineParser.h"
#include "PingTest.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortCTDiagCmdsProcessor";

constexpr char OUT_RESULT[] = "CTDiagResult";
constexpr char OUT_DIAG_TEST[] = "Diagnostic Test";
constexpr char OUT_TEST_RESULT[] = "Test Result";

/// Test types; 0 stands for a word that is none.
constexpr CodeText TEST_TYPES[] = {{1, "CTPing"}, {2, "CTFCTraceRoute"}};

/// `runcli` carries no usage function, so nothing shows this text.
constexpr UsageText USAGES[] = {{2, "Usage: set\r\n"}};

constexpr LibraryCall CT_TEST = {"VEXAPI_DiagnosticsCTCommand", "", "CT Diag failed", RC_DIAG_TEST_FAILED};

} // namespace

constinit const Leaf PhysicalPortCTDiagCmdsProcessor::LEAVES[] = {
    {"run", "run CTDiag test on Orvane adapter port", 0, Xml<"CmdRun", CmdRunCommon>, nullptr},
    {"help", "list of available commands", 1, CmdHelp, Usage},
    {"runcli", "run CTDiag Test on Orvane adapter port", 2, Text<"CmdRunCli", CmdRunCommon>, nullptr},
};

constinit const FamilyDescription PhysicalPortCTDiagCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "CTDiag",
    .helpId = 1,
    .leaves = LEAVES,
    .usages = USAGES,
    .resultTexts = PING_RESULT_TEXTS,
};

VX_UINT32 PhysicalPortCTDiagCmdsProcessor::CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                        eOutputFormat format) {
    VX_UINT32 testType = 0;
    const VX_UINT32 code = Run(args, testType);
    const TracedCall traced(CLASS_NAME, "DisplayCTDiagResult");
    Document document(*self, format);
    document.Flat(OUT_RESULT, [&] {
        document.Field(OUT_DIAG_TEST, TextOf(TEST_TYPES, testType, OUT_UNKNOWN));
        document.Message(code, ResultText(code), OUT_TEST_RESULT);
    });
    return code;
}

/// The test's word comes first, ahead of the port and of a help word.
VX_UINT32 PhysicalPortCTDiagCmdsProcessor::Run(const TavuStringArray& args, VX_UINT32& testType) {
    if (!FindWord(TEST_TYPES, ArgText(args, 1), testType)) {
        return RC_INVALID_PARAMETER;
    }
    PingRequest request;
    VX_UINT32 code = AdmitPingPort(args, request);
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
