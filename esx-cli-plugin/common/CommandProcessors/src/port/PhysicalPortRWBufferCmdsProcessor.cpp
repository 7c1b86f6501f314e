#include "PhysicalPortRWBufferCmdsProcessor.h"

#include "FieldRows.h"
#include "HostTree.h"
#include "ReportTexts.h"
#include "Resolvers.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortRWBufferCmdsProcessor";

constexpr ReportNames OUT_NAMES = {"RWBufferTestInfo", "RWBufferTestResult", "RWBufferTestResultList"};

constexpr auto RESULT_TEXTS = FrameTestResultTexts("Failed, RWBuffer type not supported for this adapter");

constexpr VX_UINT32 DATA_SIZES[] = {8, 16, 32, 64, 128};
constexpr FrameTestLimits LIMITS = {10000, DATA_SIZES, 5};

/// Failing to release a list is not a failure of the command.
void Release(_VEXAPI_ReadWriteBufferTestResult* results) {
    TraceStatus("VEXAPI_FreeRWBufferTestResultList", VEXAPI_FreeRWBufferTestResultList(results));
}

/// A row: one result, and the counts of the run, repeated in every row.
struct Row {
    const _VEXAPI_ReadWriteBufferTestResult& result;
    const FrameTestCounts& counts;
};
constexpr FieldRow<Row> FIELDS[] = {
    {"Test Status", [](const Row& row) { return TavuString(BoundedText(row.result.TestStatus)); }},
    {"Port ID", [](const Row& row) { return PortIdText(row.result.PortId); }},
    NumberField<Row>("Data Miscompare", [](const Row& row) { return row.result.DataMiscompare; }),
    NumberField<Row>("Link Failure", [](const Row& row) { return row.result.LinkFailure; }),
    NumberField<Row>("Loss Of Sync", [](const Row& row) { return row.result.LossOfSync; }),
    NumberField<Row>("Loss Of Signal", [](const Row& row) { return row.result.LossOfSignal; }),
    NumberField<Row>("Invalid CRC", [](const Row& row) { return row.result.InvalidCrc; }),
    NumberField<Row>("Test Iteration", [](const Row& row) { return row.counts.iterations; }),
    NumberField<Row>("Success Count", [](const Row& row) { return row.counts.successes; }),
    NumberField<Row>("Failure Count", [](const Row& row) { return row.counts.failures; }),
};
constexpr auto FIELD_ROWS = FieldsOf(FIELDS);
constexpr Argument RUN_ARGUMENTS[] = {
    PORT_ARGUMENT,
    FrameTestCountArgument(LIMITS),
    FrameTestIncrementArgument(LIMITS),
    FrameTestSizeArgument("size of a frame's data, a power of two", LIMITS),
    FRAME_TEST_ON_ERROR,
    FRAME_TEST_PATTERN,
    FRAME_TEST_DATA,
};

} // namespace

constexpr Command PhysicalPortRWBufferCmdsProcessor::COMMANDS[] = {
    {.names = Names<"run", "CmdRun">(),
     .description = "run Read Write Buffer test on Orvane adapter port",
     .run = CmdRunCommon,
     .usage = nullptr,
     .arguments = RUN_ARGUMENTS,
     .document = ReportDocument(OUT_NAMES, FIELD_ROWS),
     .changes = true,
     .twinDescription = "run Read Write Buffer Test on Orvane adapter port",
     .twinUsage = TwinUsage::NONE},
};

constinit const FamilyDescription PhysicalPortRWBufferCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "RWBuffer",
    .leaves = LEAVES_OF<PhysicalPortRWBufferCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_NAMES,
};

/// Shows the last list and then releases it; if that fails, adds a second document.
ResultCode PhysicalPortRWBufferCmdsProcessor::CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                           eOutputFormat format) {
    RWBuffer buffer;
    ResultCode code = Run(args, buffer);
    if (code == RC_SUCCESS) {
        DisplayRWBufferTestResult(self, buffer, format);
    }
    if (buffer.results != nullptr) {
        const ResultCode released = MakeLibraryCalls([&] { Release(buffer.results); });
        code = code == RC_SUCCESS ? released : code;
    }
    if (code != RC_SUCCESS) {
        DisplayError(self, code, format);
    }
    return code;
}

/// The caller releases the last iteration's list, even on failure.
ResultCode PhysicalPortRWBufferCmdsProcessor::Run(const TavuStringArray& args, RWBuffer& buffer) {
    PortEntry entry;
    DiagTestParams parameters{};
    ResultCode code = GetPhysicalPortFromPortString(args, entry);
    if (code == RC_SUCCESS) {
        code = ReadFrameTestWords(args, LIMITS, parameters, buffer.counts);
    }
    if (code == RC_SUCCESS) {
        code = ReadFrameTestPattern(args, LIMITS, parameters);
    }
    if (code != RC_SUCCESS) {
        return code;
    }
    return RunFrameTest(parameters, "RWBuffer", buffer.counts, [&](bool& isPassed) -> ResultCode {
        const ResultCode called = MakeLibraryCalls(
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

void PhysicalPortRWBufferCmdsProcessor::DisplayRWBufferTestResult(MultipleCmdsProcessor* self, const RWBuffer& buffer,
                                                                  eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Report(OUT_NAMES, REBOOT_NOT_SHOWN, [&] {
        ForEachEntry(buffer.results, [&](const _VEXAPI_ReadWriteBufferTestResult& result) {
            document.Structure(OUT_NAMES.list, [&] { WriteFields<Row>(document, FIELDS, Row{result, buffer.counts}); });
            return true;
        });
    });
}
