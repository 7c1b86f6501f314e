#include "PhysicalPortLoopbackCmdsProcessor.h"

#include "BoundedText.h"
#include "ChipFamilies.h"
#include "CmdLineParser.h"
#include "FieldRows.h"
#include "Resolvers.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortLoopbackCmdsProcessor";

constexpr ReportNames OUT_NAMES = {"LoopbackTestInfo", "LoopbackTestResult", "LoopbackTestResultList"};

constexpr auto RESULT_TEXTS = FrameTestResultTexts("Failed, Loopback type not supported for this adapter");

constexpr VX_UINT32 DATA_SIZES[] = {8, 16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192, 16384, 32768, 65535};
constexpr FrameTestLimits LIMITS = {65535, DATA_SIZES, 6};

constexpr VX_UINT32 LOOPBACK_INTERNAL_10BIT = 0;
constexpr VX_UINT32 LOOPBACK_FCOE_ECHO = 3;
constexpr CodeText LOOPBACK_WORDS[] = {
    {4, "Internal"}, {LOOPBACK_FCOE_ECHO, "FCoE_Echo"}, {2, "External"}, {LOOPBACK_INTERNAL_10BIT, "Internal_10bit"}};

/// An unknown word acts as "Internal_10bit", which only older chips support.
ResultCode ReadLoopbackType(const char* word, __CHIPPROPERTY chip, VX_UINT32& type) {
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

using Test = PhysicalPortLoopbackCmdsProcessor::Loopback;
constexpr FieldRow<Test> FIELDS[] = {
    {"Test Status", [](const Test& test) { return TavuString(BoundedText(test.result.TestStatus)); }},
    NumberField<Test>("Crc Error", [](const Test& test) { return test.result.CrcError; }),
    NumberField<Test>("Disparity Error", [](const Test& test) { return test.result.DisparityError; }),
    NumberField<Test>("Frame Length Error", [](const Test& test) { return test.result.FrameLengthError; }),
    NumberField<Test>("Test Iteration", [](const Test& test) { return test.counts.iterations; }),
    NumberField<Test>("Success Count", [](const Test& test) { return test.counts.successes; }),
    NumberField<Test>("Failure Count", [](const Test& test) { return test.counts.failures; }),
};
constexpr auto FIELD_ROWS = FieldsOf(FIELDS);
constexpr Argument RUN_ARGUMENTS[] = {
    PORT_ARGUMENT,
    FrameTestCountArgument(LIMITS),
    FrameTestIncrementArgument(LIMITS),
    FrameTestSizeArgument("size of a frame's data, a power of two or 65535", LIMITS),
    FRAME_TEST_ON_ERROR,
    {"type", nullptr, "where frames are looped back", ArgumentKind::WORD, true, LOOPBACK_WORDS},
    FRAME_TEST_PATTERN,
    FRAME_TEST_DATA,
};

} // namespace

constexpr Command PhysicalPortLoopbackCmdsProcessor::COMMANDS[] = {
    {.names = Names<"run", "CmdRun">(),
     .description = "run Loopback test on Orvane adapter port",
     .run = CmdRunCommon,
     .usage = nullptr,
     .arguments = RUN_ARGUMENTS,
     .document = ReportDocument(OUT_NAMES, FIELD_ROWS),
     .changes = true,
     .twinDescription = "run Loopback Test on Orvane adapter port",
     .twinUsage = TwinUsage::NONE},
};

constinit const FamilyDescription PhysicalPortLoopbackCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "LoopbackTest",
    .leaves = LEAVES_OF<PhysicalPortLoopbackCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_NAMES,
};

/// Succeeds even if every iteration failed: pass or fail is in the report.
ResultCode PhysicalPortLoopbackCmdsProcessor::Run(const TavuStringArray& args, Loopback& loopback) {
    PortEntry entry;
    DiagTestParams parameters{};
    ResultCode code = GetPhysicalPortFromPortString(args, entry);
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
        const ResultCode called = MakeLibraryCalls(
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
    document.FieldReport(OUT_NAMES, REBOOT_NOT_SHOWN, [&] { WriteFields<Loopback>(document, FIELDS, loopback); });
}
