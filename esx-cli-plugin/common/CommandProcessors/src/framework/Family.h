/// @file
/// The common base of command families.
///
/// A family is a class of static members, derived from `Family<itself>`, with a table `COMMANDS` and a `FAMILY`.
/// Its command functions receive the family's node as `self` and use it as their serializer.
#pragma once

#include "CodeTable.h"
#include "Document.h"
#include "MultipleCmdsProcessor.h"
#include "ResultCodes.h"
#include "TracedFunction.h"
#include "Words.h"

template <typename Self> class Family {
protected:
    using eOutputFormat = Serializer::eOutputFormat;
    static constexpr auto INT_U32 = Serializer::INT_U32;

    /// Message of a result code.
    static const char* ResultText(ResultCode code) { return ResultTextOf(Self::FAMILY.resultTexts, code); }

    /// The error form of the family's report.
    static void DisplayError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format) {
        DisplayReportError(self, code, format, REBOOT_NOT_SHOWN);
    }
    /// Same for a command that may write to the adapter: "Reboot Required" is false.
    static void DisplaySetError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format) {
        DisplayReportError(self, code, format, false);
    }
    /// The display function `function` of a data-block report, whose lines are written by `fill(block)`. If the
    /// block can't be allocated, shows that failure; the command's result is unchanged.
    template <typename Fill>
    static void DisplayBlock(MultipleCmdsProcessor* self, eOutputFormat format, const char* function,
                             const BlockShape& shape, Fill fill, RebootRequired reboot = REBOOT_NOT_SHOWN,
                             RebootRequired rebootWithoutMemory = REBOOT_NOT_SHOWN) {
        const TracedCall traced(Self::FAMILY.className, function);
        ReportBlock block(shape.size, shape.rule);
        if (!block.IsAllocated()) {
            DisplayReportError(self, RC_NO_MEMORY, format, rebootWithoutMemory);
            return;
        }
        fill(block);
        Document(*self, format).BlockReport(shape.names, reboot, block);
    }

    /// The common function of most commands: `fetch(args, state)` resolves, admits and parses the arguments, calls
    /// the library and returns a result code; then `display(self, state, format)` shows the state, or
    /// `displayError(self, code, format)` the failure.
    template <auto fetch, auto display, auto displayError>
    static ResultCode FetchThenDisplay(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format) {
        StateOf<fetch> state{};
        const ResultCode code = fetch(args, state);
        if (code == RC_SUCCESS) {
            display(self, state, format);
        } else {
            displayError(self, code, format);
        }
        return code;
    }

    /// Same for commands with one document for success and failure: `display(self, state, code, format)`.
    template <auto fetch, auto display>
    static ResultCode FetchThenDisplayAlways(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format) {
        StateOf<fetch> state{};
        const ResultCode code = fetch(args, state);
        display(self, state, code, format);
        return code;
    }

    /// Same for a `set` of staged settings: the state has a `Commit`. The cache file is deleted only after the
    /// document is written, so that settings aren't lost without a report.
    template <auto set, auto display, auto displayError>
    static ResultCode CommitThenDisplay(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format) {
        StateOf<set> state{};
        const ResultCode code = set(args, state);
        if (code != RC_SUCCESS || state.commit.isNothingPending) {
            // Required: if nothing is pending, the document shows a failure but the result is success.
            displayError(self, code, format);
            return code;
        }
        display(self, state, format);
        state.commit.Finish();
        return RC_SUCCESS;
    }

    /// Same for a state with library resources: `release(state)` frees them after the display and returns a result
    /// code. A failure to release is shown as a second document after the first.
    template <auto fetch, auto display, auto release, auto displayError>
    static ResultCode FetchDisplayRelease(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format) {
        StateOf<fetch> state{};
        ResultCode code = fetch(args, state);
        if (code == RC_SUCCESS) {
            display(self, state, format);
            code = release(state);
        }
        if (code != RC_SUCCESS) {
            displayError(self, code, format);
        }
        return code;
    }

private:
    static void DisplayReportError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format,
                                   RebootRequired reboot) {
        const TracedCall traced(Self::FAMILY.className, "DisplayError");
        Document(*self, format).ReportError(Self::FAMILY.report, reboot, code, ResultText(code));
    }

    template <typename State> static State StateOfFunction(ResultCode (*)(const TavuStringArray&, State&));
    template <auto fetch> using StateOf = decltype(StateOfFunction(fetch));
};
