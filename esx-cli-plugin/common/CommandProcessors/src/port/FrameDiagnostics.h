/// @file
/// Common arguments, loop and texts of the loopback and the read/write buffer test.
#pragma once

#include "CodeTable.h"
#include "CommandRows.h"
#include "LibraryCall.h"
#include "TavuString.h"

#include <array>
#include <cstring>
#include <span>

/// Limits of a test. Its arguments are the port, the test count, the test increment, the data size, the action on
/// error, any of its own, and last the data pattern.
struct FrameTestLimits {
    VX_UINT32 maxCount; ///< of the test count and of the test increment
    std::span<const VX_UINT32> dataSizes;
    std::size_t patternIndex; ///< of the data pattern in the arguments
};

inline constexpr VX_UINT32 FRAME_TEST_STOP = 1;
inline constexpr CodeText FRAME_TEST_ON_ERROR_WORDS[] = {{0, "Ignore"}, {FRAME_TEST_STOP, "Stop"}, {2, "Loop"}};

inline constexpr VX_UINT32 FRAME_TEST_PATTERN_CUSTOM = 4;
inline constexpr VX_UINT32 FRAME_TEST_PATTERN_FIXED = 5;
/// The library receives the fixed patterns as the ASCII digits of their words, not as binary.
inline constexpr CodeText FRAME_TEST_PATTERN_WORDS[] = {
    {0, "Random"},
    {1, "CRPAT"},
    {2, "CJTPAT"},
    {3, "CSPAT"},
    {FRAME_TEST_PATTERN_FIXED, "00000000"},
    {FRAME_TEST_PATTERN_FIXED, "01010101"},
    {FRAME_TEST_PATTERN_FIXED, "01011010"},
    {FRAME_TEST_PATTERN_FIXED, "10100101"},
    {FRAME_TEST_PATTERN_FIXED, "10101010"},
    {FRAME_TEST_PATTERN_FIXED, "11111111"},
    {FRAME_TEST_PATTERN_CUSTOM, "Custom"},
};

/// Arguments of a test. Each test has its own data sizes.
constexpr Argument FrameTestCountArgument(const FrameTestLimits& limits) {
    return {"count", nullptr, "frames of one iteration", ArgumentKind::NUMBER, true, {}, 1, limits.maxCount};
}
constexpr Argument FrameTestIncrementArgument(const FrameTestLimits& limits) {
    return {"increment", nullptr, "number of iterations", ArgumentKind::NUMBER, true, {}, 1, limits.maxCount};
}
constexpr Argument FrameTestSizeArgument(const char* description, const FrameTestLimits& limits) {
    return {
        "size", nullptr, description, ArgumentKind::NUMBER, true, {}, limits.dataSizes.front(), limits.dataSizes.back(),
        "bytes"};
}
inline constexpr Argument FRAME_TEST_ON_ERROR = {
    "onerror",          nullptr, "what to do after an error; any other word means to ignore it",
    ArgumentKind::WORD, true,    FRAME_TEST_ON_ERROR_WORDS};
inline constexpr Argument FRAME_TEST_PATTERN = {
    "pattern",          nullptr, "data of a frame; any other word means Random",
    ArgumentKind::WORD, true,    FRAME_TEST_PATTERN_WORDS};
inline constexpr Argument FRAME_TEST_DATA =
    Argument{"--data-pattern", "-d", "eight characters with hyphens between them", ArgumentKind::TEXT}.With(
        std::span(FRAME_TEST_PATTERN_WORDS).last(1)); // "Custom"

/// Iterations of a test, and their outcome.
struct FrameTestCounts {
    VX_UINT32 increment = 0;  ///< requested library calls
    VX_UINT32 iterations = 0; ///< as reported: the requested ones, or the index of the one that stopped the test
    VX_UINT32 successes = 0;
    VX_UINT32 failures = 0;
};

/// Parses the arguments up to the action on error. Returns `RC_INVALID_PARAMETER` for missing arguments and numbers
/// out of range. A test count with the top bit of its low 32 bits set is accepted, because it is compared as
/// signed; the test increment isn't.
ResultCode ReadFrameTestWords(const TavuStringArray& args, const FrameTestLimits& limits, DiagTestParams& parameters,
                              FrameTestCounts& counts);

/// Parses the data pattern; an unknown word means random data. Returns `RC_INVALID_FORMAT` unless custom data is
/// eight characters separated by "-".
ResultCode ReadFrameTestPattern(const TavuStringArray& args, const FrameTestLimits& limits, DiagTestParams& parameters);

/// True if a test's verdict is "Success", including the terminator.
template <std::size_t N> bool IsTestPassed(const char (&status)[N]) {
    constexpr char PASSED[] = "Success";
    static_assert(N >= sizeof PASSED);
    return std::memcmp(status, PASSED, sizeof PASSED) == 0;
}

/// Counts the outcome of iteration `index`. Returns false if it ends the test.
bool CountFrameTest(const DiagTestParams& parameters, const char* testName, VX_UINT32 index, bool isPassed,
                    FrameTestCounts& counts);

/// Runs the iterations. `iterate(isPassed)` makes one library call and returns a result code; if not 0, that ends
/// the test and is returned.
template <typename Iterate>
ResultCode RunFrameTest(const DiagTestParams& parameters, const char* testName, FrameTestCounts& counts,
                        Iterate iterate) {
    for (VX_UINT32 index = 0;; ++index) {
        bool isPassed = false;
        if (const ResultCode code = iterate(isPassed); code != RC_SUCCESS) {
            return code;
        }
        if (!CountFrameTest(parameters, testName, index, isPassed, counts)) {
            return RC_SUCCESS;
        }
    }
}

/// "Message" of a result code; `RC_PARAM_ERROR` has a different text in each test.
constexpr auto FrameTestResultTexts(const char* paramError) {
    return std::to_array<CodeText>({
        {RC_PARAM_ERROR, paramError},
        {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
        {RC_INVALID_FORMAT, "Failed, Custom Data should be of 8 chars separated by '-' (hifen)"},
        {RC_CFG_READ_FAILED, "Failed, DPortDiag read failed"},
        {RC_HOST_NOT_FOUND, "Failed, Host not found"},
        {RC_FILE_ERROR, "Failed, File not found"},
        {RC_CFG_UPDATE_FAILED, "Failed, DPortDiag update failed"},
        {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
        {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this port"},
        {RC_LINK_UP_REQUIRED, "Failed, Feature requires link up"},
        {RC_UNSUPPORTED_SPEED, "Failed, Feature supported for speeds 16 Gbps and above"},
        {RC_UNSUPPORTED_MODE, "Failed, Port not in diagnostics mode"},
        {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, Feature not supported for virtual port"},
    });
}
