#include "PhysicalPortFCPingCmdsProcessor.h"

#include "PingTest.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortFCPingCmdsProcessor";

constexpr char OUT_RESULT[] = "FCPingResult";
constexpr char OUT_DIAG_TEST[] = "Diagnostic Test";
constexpr char OUT_TEST_RESULT[] = "Test Result";
constexpr char OUT_FC_PING[] = "FCPing";

/// `runcli` carries no usage function, so nothing shows this text.
constexpr UsageText USAGES[] = {{2, "Usage: set\r\n"}};

constexpr LibraryCall PING = {"VEXAPI_DiagnosticsFCPingTest", "", "FC Ping failed", RC_DIAG_TEST_FAILED};

} // namespace

constinit const Leaf PhysicalPortFCPingCmdsProcessor::LEAVES[] = {
    {"run", "run FCPing test on Orvane adapter port", 0, Xml<"CmdRun", CmdRunCommon>, nullptr},
    {"help", "list of available commands", 1, CmdHelp, Usage},
    {"runcli", "run FCPing Test on Orvane adapter port", 2, Text<"CmdRunCli", CmdRunCommon>, nullptr},
};

constinit const FamilyDescription PhysicalPortFCPingCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FCPing",
    .helpId = 1,
    .leaves = LEAVES,
    .usages = USAGES,
    .resultTexts = PING_RESULT_TEXTS,
};

VX_UINT32 PhysicalPortFCPingCmdsProcessor::CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                        eOutputFormat format) {
    const VX_UINT32 code = Run(args);
    const TracedCall traced(CLASS_NAME, "DisplayFCPingResult");
    Document document(*self, format);
    document.Flat(OUT_RESULT, [&] {
        document.Field(OUT_DIAG_TEST, OUT_FC_PING);
        document.Message(code, ResultText(code), OUT_TEST_RESULT);
    });
    return code;
}

/// One library call for the whole test: count and stop are handled behind it.
VX_UINT32 PhysicalPortFCPingCmdsProcessor::Run(const TavuStringArray& args) {
    PingRequest request;
    VX_UINT32 code = AdmitPingPort(args, request);
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
