#include "PhysicalPortLoopbackCmdsProcessor.h"

#include "BoundedText.h"
#include "ChipFamilies.h"
#include "CmdLineParser.h"
#include "PhysicalPortCmdsProcessor.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortLoopbackCmdsProcessor";

constexpr ReportNames OUT_NAMES = {"LoopbackTestInfo", "LoopbackTestResult", "LoopbackTestResultList"};

constexpr auto RESULT_TEXTS = FrameTestResultTexts("Failed, Loopback type not supported for this adapter");

constexpr UsageText USAGES[] = {{2, "Usage: run\r\n"}};

constexpr VX_UINT32 DATA_SIZES[] = {8, 16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192, 16384, 32768, 65535};
constexpr FrameTestLimits LIMITS = {65535, DATA_SIZES, 6};

constexpr VX_UINT32 LOOPBACK_INTERNAL_10BIT = 0;
constexpr VX_UINT32 LOOPBACK_FCOE_ECHO = 3;
constexpr CodeText LOOPBACK_WORDS[] = {
    {4, "Internal"}, {LOOPBACK_FCOE_ECHO, "FCoE_Echo"}, {2, "External"}, {LOOPBACK_INTERNAL_10BIT, "Internal_10bit"}};

/// A word that is none acts as "Internal_10bit", which only the older chips know.
VX_UINT32 ReadLoopbackType(const char* word, __CHIPPROPERTY chip, VX_UINT32& type) {
    FindWord(LOOPBACK_WORDS, word, type);
    const bool isSupported = type == LOOPBACK_INTERNAL_10BIT ? Is4GAdapter(chip) || Is8GAdapter(chip)
                             : type == LOOPBACK_FCOE_ECHO    ? IsRowanCNAAdapter(chip)
                                                             : true;
    if (!isSupported) {
        TraceStep(TRACE_DEBUG, "%s",
                  type == LOOPBACK_FCOE_ECHO ? "Option not supported for FC adapter"
                                             : "Option not supported for this adapter");
    }
    return isSupported ? RC_SUCCESS : RC_PARAM_ERROR;
}

} // namespace

constinit const Leaf PhysicalPortLoopbackCmdsProcessor::LEAVES[] = {
    {"run", "run Loopback test on Orvane adapter port", 0, Xml<"CmdRun", CmdRunCommon>, nullptr},
    {"help", "list of available commands", 1, CmdHelp, Usage},
    {"runcli", "run Loopback Test on Orvane adapter port", 2, Text<"CmdRunCli", CmdRunCommon>, nullptr},
};

constinit const FamilyDescription PhysicalPortLoopbackCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "LoopbackTest",
    .helpId = 1,
    .leaves = LEAVES,
    .usages = USAGES,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_NAMES,
};

/// The result is success even where every iteration failed: pass or fail stands in the report.
VX_UINT32 PhysicalPortLoopbackCmdsProcessor::Run(const TavuStringArray& args, Loopback& loopback) {
    PortEntry entry;
    DiagTestParams parameters{};
    VX_UINT32 code = PhysicalPortCmdsProcessor::GetPhysicalPortFromPortString(args, entry);
    if (code == RC_SUCCESS) {
        code = ReadFrameTestWords(args, LIMITS, parameters, loopback.counts);
    }
    if (code == RC_SUCCESS) {
        code = ReadLoopbackType(ArgText(args, 5), entry.protocol->ChipProperty, parameters.LoopbackType);
    }
    if (code == RC_SUCCESS) {
        code = ReadFrameTestPattern(args, LIMITS, parameters);
    }
    if (code != RC_SUCCESS) {
        return code;
    }
    parameters.ConnectionMode = entry.protocol->PortConnectionMode;
    return RunFrameTest(parameters, "Loopback", loopback.counts, [&](bool& isPassed) {
        loopback.result = {};
        const VX_UINT32 called = MakeLibraryCalls(
            [&] { loopback.result = VEXAPI_DiagnosticsLoopBackTest(&entry.protocol->PortHandle, &parameters); },
            " before LoopbackTest read");
        isPassed = IsTestPassed(loopback.result.TestStatus);
        return called;
    });
}

void PhysicalPortLoopbackCmdsProcessor::DisplayLoopbackTestResult(MultipleCmdsProcessor* self, const Loopback& loopback,
                                                                  eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.FieldReport(OUT_NAMES, REBOOT_NOT_SHOWN, [&] {
        const auto number = [&](const char* label, VX_UINT32 value) { document.Field(label, value, INT_U32); };
        document.Field("Test Status", TavuString(BoundedText(loopback.result.TestStatus)));
        number("Crc Error", loopback.result.CrcError);
        number("Disparity Error", loopback.result.DisparityError);
        number("Frame Length Error", loopback.result.FrameLengthError);
        number("Test Iteration", loopback.counts.iterations);
        number("Success Count", loopback.counts.successes);
        number("Failure Count", loopback.counts.failures);
    });
}
