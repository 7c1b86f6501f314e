#include "FrameTest.h"

#include "CmdLineParser.h"
#include "Console.h"
#include "TracedFunction.h"

#include <algorithm>

namespace {

constexpr VX_UINT32 ON_ERROR_STOP = 1;
constexpr CodeText ON_ERROR_WORDS[] = {{0, "Ignore"}, {ON_ERROR_STOP, "Stop"}, {2, "Loop"}};

constexpr VX_UINT32 PATTERN_RANDOM = 0;
constexpr VX_UINT32 PATTERN_CUSTOM = 4;
constexpr VX_UINT32 PATTERN_FIXED = 5;
/// The fixed patterns reach the library as the ASCII digits of their words, not as bits.
constexpr CodeText PATTERN_WORDS[] = {
    {PATTERN_RANDOM, "Random"},
    {1, "CRPAT"},
    {2, "CJTPAT"},
    {3, "CSPAT"},
    {PATTERN_FIXED, "00000000"},
    {PATTERN_FIXED, "01010101"},
    {PATTERN_FIXED, "01011010"},
    {PATTERN_FIXED, "10100101"},
    {PATTERN_FIXED, "10101010"},
    {PATTERN_FIXED, "11111111"},
    {PATTERN_CUSTOM, "Custom"},
};

VX_UINT32 Refuse(const char* why, VX_UINT32 code) {
    TraceStep(TRACE_DEBUG, "%s", why);
    return code;
}

/// Custom data, "c-c-c-c-c-c-c-c": what stands behind it is cut off.
bool ReadCustomData(const TavuString& value, VX_UINT8 (&data)[8]) {
    constexpr std::size_t LENGTH = 15;
    char text[LENGTH + 1] = {};
    value.copy(text, LENGTH);
    for (std::size_t at = 1; at < LENGTH; at += 2) {
        if (text[at] != '-') {
            return false;
        }
    }
    for (std::size_t at = 0; at < sizeof data; ++at) {
        data[at] = static_cast<VX_UINT8>(text[2 * at]);
    }
    return true;
}

} // namespace

VX_UINT32 ReadFrameTestWords(const TavuStringArray& args, const FrameTestLimits& limits, DiagTestParams& parameters,
                             FrameTestCounts& counts) {
    if (args.size() <= limits.patternIndex) {
        return Refuse("Too few arguments", RC_INVALID_PARAMETER);
    }
    const VX_UINT32 count = ParseNumber(ArgText(args, 1));
    if (count == 0 || static_cast<int>(count) > static_cast<int>(limits.maxCount)) {
        return Refuse("Invalid test count", RC_INVALID_PARAMETER);
    }
    parameters.TestCount = count;
    parameters.TestCountCopy = count;
    counts.increment = ParseNumber(ArgText(args, 2));
    if (counts.increment == 0 || counts.increment > limits.maxCount) {
        return Refuse("Invalid test increment", RC_INVALID_PARAMETER);
    }
    parameters.DataSize = ParseNumber(ArgText(args, 3));
    if (std::find(limits.dataSizes.begin(), limits.dataSizes.end(), parameters.DataSize) == limits.dataSizes.end()) {
        return Refuse("Invalid data size", RC_INVALID_PARAMETER);
    }
    FindWord(ON_ERROR_WORDS, ArgText(args, 4), parameters.OnError); // any other word means to ignore errors
    return RC_SUCCESS;
}

VX_UINT32 ReadFrameTestPattern(const TavuStringArray& args, const FrameTestLimits& limits, DiagTestParams& parameters) {
    const char* word = ArgText(args, limits.patternIndex);
    FindWord(PATTERN_WORDS, word, parameters.DataPatternType);
    if (parameters.DataPatternType == PATTERN_FIXED) {
        std::memcpy(parameters.CustomData, word, sizeof parameters.CustomData);
    }
    TavuString value;
    if (parameters.DataPatternType == PATTERN_CUSTOM &&
        CmdLineParser::GetCommandValueFromArgs(args, "-d", "--data-pattern", value) != 0 &&
        !ReadCustomData(value, parameters.CustomData)) {
        return Refuse("Custom data is not '-' (hifen) separated", RC_INVALID_FORMAT);
    }
    return RC_SUCCESS;
}

bool CountFrameTest(const DiagTestParams& parameters, const char* testName, VX_UINT32 index, bool isPassed,
                    FrameTestCounts& counts) {
    TraceStep(TRACE_INFORMATION, "%s Test %s for TestIteration=%u", testName, isPassed ? "Successful" : "Failed",
              index);
    ++(isPassed ? counts.successes : counts.failures);
    const bool isStopped = !isPassed && parameters.OnError == ON_ERROR_STOP;
    // A stop shows the index of the failed iteration, one less than the calls made.
    counts.iterations = isStopped ? index : index + 1;
    return !isStopped && counts.iterations != counts.increment;
}
