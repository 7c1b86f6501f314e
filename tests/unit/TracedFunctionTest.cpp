#include "TracedFunction.h"
#include "TraceLog.h"

#include <gtest/gtest.h>

namespace {

using Strings = std::vector<std::string>;

TEST(TracedFunctionTest, NamesItsSteps) {
    const TraceLog log("5");
    const TracedFunction traced("Class", "Function");
    TraceStep(TRACE_DEBUG, "file [%s] has %d%%", "a", 7);
    TraceStep(TRACE_INFORMATION, "%s", "100%s");
    EXPECT_EQ(TraceLog::Lines(),
              (Strings{"DEBUG: Class::Function: file [a] has 7%", "INFORMATION: Class::Function: 100%s"}));
}

TEST(TracedFunctionTest, StandsInForTheOuterOneUntilItsEnd) {
    const TraceLog log("1");
    const TracedFunction outer("Outer", "Command");
    {
        const TracedFunction resolver("Other", "Resolve");
        TraceStep(TRACE_INFORMATION, "one");
        {
            const TracedFunction helper("Helper");
            TraceStep(TRACE_INFORMATION, "two");
        }
        TraceStep(TRACE_INFORMATION, "three");
    }
    TraceStep(TRACE_INFORMATION, "four");
    EXPECT_EQ(TraceLog::Lines(), (Strings{"INFORMATION: Other::Resolve: one", "INFORMATION: Other::Helper: two",
                                          "INFORMATION: Other::Resolve: three", "INFORMATION: Outer::Command: four"}));
}

TEST(TracedFunctionTest, IsSilentOutsideTheMask) {
    const TraceLog log("4");
    const TracedFunction traced("Class", "Function");
    TraceStep(TRACE_INFORMATION, "a step");
    EXPECT_FALSE(TraceLog::Exists());
}

/// The whole line is truncated, like every trace.
TEST(TracedFunctionTest, CutsALongText) {
    const TraceLog log("1");
    const TracedFunction traced("Class", "Function");
    TraceStep(TRACE_INFORMATION, "%s", std::string(3000, 'x').c_str());
    const std::string content = TraceLog::Content();
    EXPECT_EQ(content.size() - content.find("CIM Provider"), 1024u);
}

} // namespace
