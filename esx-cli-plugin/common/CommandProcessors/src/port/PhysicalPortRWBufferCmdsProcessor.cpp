#include "PhysicalPortRWBufferCmdsProcessor.h"

#include "HostTree.h"
#include "PhysicalPortCmdsProcessor.h"
#include "ReportTexts.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortRWBufferCmdsProcessor";

constexpr ReportNames OUT_NAMES = {"RWBufferTestInfo", "RWBufferTestResult", "RWBufferTestResultList"};

constexpr auto RESULT_TEXTS = FrameTestResultTexts("Failed, RWBuffer type not supported for this adapter");

constexpr UsageText USAGES[] = {{2, "Usage: run\r\n"}};

constexpr VX_UINT32 DATA_SIZES[] = {8, 16, 32, 64, 128};
constexpr FrameTestLimits LIMITS = {10000, DATA_SIZES, 5};

/// A list that can't be released is no failure of the command.
void Release(_VEXAPI_ReadWriteBufferTestResult* results) {
    TraceStatus("VEXAPI_FreeRWBufferTestResultList", VEXAPI_FreeRWBufferTestResultList(results));
}

} // namespace

constinit const Leaf PhysicalPortRWBufferCmdsProcessor::LEAVES[] = {
    {"run", "run Read Write Buffer test on Orvane adapter port", 0, Xml<"CmdRun", CmdRunCommon>, nullptr},
    {"help", "list of available commands", 1, CmdHelp, Usage},
    {"runcli", "run Read Write Buffer Test on Orvane adapter port", 2, Text<"CmdRunCli", CmdRunCommon>, nullptr},
};

constinit const FamilyDescription PhysicalPortRWBufferCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "RWBuffer",
    .helpId = 1,
    .leaves = LEAVES,
    .usages = USAGES,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_NAMES,
};

/// The last list is shown and then released; a release that can't be made adds a second document.
VX_UINT32 PhysicalPortRWBufferCmdsProcessor::CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                          eOutputFormat format) {
    RWBuffer buffer;
    VX_UINT32 code = Run(args, buffer);
    if (code == RC_SUCCESS) {
        DisplayRWBufferTestResult(self, buffer, format);
    }
    if (buffer.results != nullptr) {
        const VX_UINT32 released = MakeLibraryCalls([&] { Release(buffer.results); });
        code = code == RC_SUCCESS ? released : code;
    }
    if (code != RC_SUCCESS) {
        DisplayError(self, code, format);
    }
    return code;
}

/// Leaves the last iteration's list to the caller, on a failure too.
VX_UINT32 PhysicalPortRWBufferCmdsProcessor::Run(const TavuStringArray& args, RWBuffer& buffer) {
    PortEntry entry;
    DiagTestParams parameters{};
    VX_UINT32 code = PhysicalPortCmdsProcessor::GetPhysicalPortFromPortString(args, entry);
    if (code == RC_SUCCESS) {
        code = ReadFrameTestWords(args, LIMITS, parameters, buffer.counts);
    }
    if (code == RC_SUCCESS) {
        code = ReadFrameTestPattern(args, LIMITS, parameters);
    }
    if (code != RC_SUCCESS) {
        return code;
    }
    return RunFrameTest(parameters, "RWBuffer", buffer.counts, [&](bool& isPassed) -> VX_UINT32 {
        const VX_UINT32 called = MakeLibraryCalls(
            [&] {
                if (buffer.results != nullptr) {
                    Release(buffer.results);
                }
                buffer.results = VEXAPI_DiagnosticsReadWriteBufferTest(&entry.protocol->PortHandle, &parameters);
            },
            " before RWBufferTest read");
        if (called != RC_SUCCESS) {
            return called;
        }
        if (buffer.results == nullptr) {
            return RC_CFG_READ_FAILED;
        }
        isPassed = IsTestPassed(buffer.results->TestStatus);
        return RC_SUCCESS;
    });
}

/// The counts of the run are repeated in every row.
void PhysicalPortRWBufferCmdsProcessor::DisplayRWBufferTestResult(MultipleCmdsProcessor* self, const RWBuffer& buffer,
                                                                  eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    const auto number = [&](const char* label, VX_UINT32 value) { document.Field(label, value, INT_U32); };
    document.Report(OUT_NAMES, REBOOT_NOT_SHOWN, [&] {
        ForEachEntry(buffer.results, [&](const _VEXAPI_ReadWriteBufferTestResult& result) {
            document.Structure(OUT_NAMES.list, [&] {
                document.Field("Test Status", TavuString(BoundedText(result.TestStatus)));
                document.Field("Port ID", PortIdText(result.PortId));
                number("Data Miscompare", result.DataMiscompare);
                number("Link Failure", result.LinkFailure);
                number("Loss Of Sync", result.LossOfSync);
                number("Loss Of Signal", result.LossOfSignal);
                number("Invalid CRC", result.InvalidCrc);
                number("Test Iteration", buffer.counts.iterations);
                number("Success Count", buffer.counts.successes);
                number("Failure Count", buffer.counts.failures);
            });
            return true;
        });
    });
}
