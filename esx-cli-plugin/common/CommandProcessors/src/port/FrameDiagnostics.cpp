#include "FrameDiagnostics.h"

#include "CmdLineParser.h"
#include "TracedFunction.h"
#include "Words.h"

#include <algorithm>

namespace {

ResultCode Refuse(const char* why, ResultCode code) {
    TraceStep(TRACE_DEBUG, "%s", why);
    return code;
}

/// Custom data, "c-c-c-c-c-c-c-c"; anything after it is cut off.
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

ResultCode ReadFrameTestWords(const TavuStringArray& args, const FrameTestLimits& limits, DiagTestParams& parameters,
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
    FindWord(FRAME_TEST_ON_ERROR_WORDS, ArgText(args, 4), parameters.OnError); // any other word: ignore errors
    return RC_SUCCESS;
}

ResultCode ReadFrameTestPattern(const TavuStringArray& args, const FrameTestLimits& limits,
                                DiagTestParams& parameters) {
    const char* word = ArgText(args, limits.patternIndex);
    FindWord(FRAME_TEST_PATTERN_WORDS, word, parameters.DataPatternType);
    if (parameters.DataPatternType == FRAME_TEST_PATTERN_FIXED) {
        std::memcpy(parameters.CustomData, word, sizeof parameters.CustomData);
    }
    TavuString value;
    if (parameters.DataPatternType == FRAME_TEST_PATTERN_CUSTOM &&
        CmdLineParser::GetOption(args, FRAME_TEST_DATA, value) && !ReadCustomData(value, parameters.CustomData)) {
        return Refuse("Custom data is not '-' (hifen) separated", RC_INVALID_FORMAT);
    }
    return RC_SUCCESS;
}

bool CountFrameTest(const DiagTestParams& parameters, const char* testName, VX_UINT32 index, bool isPassed,
                    FrameTestCounts& counts) {
    TraceStep(TRACE_INFORMATION, "%s Test %s for TestIteration=%u", testName, isPassed ? "Successful" : "Failed",
              index);
    ++(isPassed ? counts.successes : counts.failures);
    const bool isStopped = !isPassed && parameters.OnError == FRAME_TEST_STOP;
    // After a stop, this is the index of the failed iteration, one less than the calls made.
    counts.iterations = isStopped ? index : index + 1;
    return !isStopped && counts.iterations != counts.increment;
}
