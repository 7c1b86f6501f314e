/// @file
/// The pattern of a command family: what all families do alike exists here once.
///
/// A family is a class of static members, derived from `Family<itself>`, with a table `COMMANDS` and a `FAMILY`. Its
/// command functions get the family's node as `self` and use it as their serializer.
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
    /// The same for a command that may write to the adapter: "Reboot Required" is false.
    static void DisplaySetError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format) {
        DisplayReportError(self, code, format, false);
    }
    /// The display function `function` of a data-block report, whose lines `fill(block)` writes. Without memory for
    /// the block it shows that failure, and the command's result stays.
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

    /// The common function of most commands: `fetch(args, state)` resolves, admits, parses and calls the
    /// library, and gives a result code; then `display(self, state, format)` describes the state, or
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

    /// The same for commands with one document for success and failure: `display(self, state, code, format)`.
    template <auto fetch, auto display>
    static ResultCode FetchThenDisplayAlways(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format) {
        StateOf<fetch> state{};
        const ResultCode code = fetch(args, state);
        display(self, state, code, format);
        return code;
    }

    /// The same for a `set` of settings that were staged: the state has a `Commit`. The cache file is deleted when
    /// the document is out, so that nobody loses settings without being told what became of them.
    template <auto set, auto display, auto displayError>
    static ResultCode CommitThenDisplay(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format) {
        StateOf<set> state{};
        const ResultCode code = set(args, state);
        if (code != RC_SUCCESS || state.commit.isNothingPending) {
            // Required: where nothing is pending, the document of a failure comes with the result of a success.
            displayError(self, code, format);
            return code;
        }
        display(self, state, format);
        state.commit.Finish();
        return RC_SUCCESS;
    }

    /// The same for a state that holds something of the library's: `release(state)` gives it back when it was
    /// displayed, and gives a result code. Its failure is described too, as a second document after the first.
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
