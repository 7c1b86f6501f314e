/// @file
/// The pattern of a command family: what all families do alike exists here once.
///
/// A family class derives from `Family<itself>`, inherits its constructor and gives a `FAMILY`: a constant
/// that names the class, its leaves, usage texts and sub-families. Its command functions are static
/// members; they get the family object as `self` and use it as their serializer.
#pragma once

#include "CodeTable.h"
#include "Console.h"
#include "Document.h"
#include "MultipleCmdsProcessor.h"
#include "ResultCodes.h"
#include "TracedFunction.h"

#include <algorithm>

/// Usage text of the leaf with this id.
struct UsageText {
    VX_UINT32 id;
    const char* text;
};

/// What is particular to a family's node.
struct FamilyDescription {
    const char* className; ///< as the traces name it
    const char* helpWord;  ///< the family in the heading of its help
    VX_UINT32 helpId;      ///< id of its `help` leaf
    std::span<const Leaf> leaves;
    std::span<const UsageText> usages = {};
    std::span<const CodeText> resultTexts = {}; ///< "Message" of a result code, in this family's words
    ReportNames report = {};                    ///< of a family whose documents are reports
    const char* subOption = "";
    std::span<const SubFamily> subFamilies = {};
};

/// Prints the heading of a family's help and a line for each child of `self`.
VX_UINT32 ShowFamilyHelp(MultipleCmdsProcessor* self, TavuStringArray& args, const char* helpWord);

/// Prints the usage text of an id. `RC_NO_USAGE`, with nothing printed, for an id without one.
VX_UINT32 ShowUsage(std::span<const UsageText> usages, VX_UINT32 cmdId);

/// The whole of a command; `format` is what distinguishes a plain leaf from its `cli` twin.
using CommonFunction = VX_UINT32 (*)(MultipleCmdsProcessor* self, TavuStringArray& args,
                                     Serializer::eOutputFormat format);

/// Runs a common function for the command function `name`, and traces both: a command that fails does not
/// exit in the traces.
VX_UINT32 RunCommon(const char* className, const char* name, CommonFunction common, MultipleCmdsProcessor* self,
                    TavuStringArray& args, Serializer::eOutputFormat format);

/// What a `list` leaf does ahead of its document: `RC_SUCCESS` with the host stored, or why there is none.
VX_UINT32 AdmitList(const TavuStringArray& args, const VX_ADAPTER_LIST*& host);

/// A literal as a template argument.
template <std::size_t Size> struct FixedText {
    char text[Size];
    consteval FixedText(const char (&literal)[Size]) { std::copy_n(literal, Size, text); } // NOLINT: a conversion
};

template <typename Self> class Family : public MultipleCmdsProcessor {
public:
    Family(MultipleCmdsProcessor* parent, const char* name, const char* option, const char* description, VX_UINT32 id,
           VX_UINT32 flags)
        : MultipleCmdsProcessor(parent, name, option, description, false, id, flags) {
        const ScopedTrace trace(ScopedTrace::CONSTRUCTOR, Self::FAMILY.className);
        CreateSubFamilies(Self::FAMILY.subOption, Self::FAMILY.subFamilies);
    }
    ~Family() override {
        const ScopedTrace trace(ScopedTrace::DESTRUCTOR, Self::FAMILY.className);
        DeleteSubFamilies();
    }

    std::vector<CmdProcessor*>& GetSubCmdProcessors() override { return BuildChildren(Self::FAMILY.leaves); }

    /// Usage function of the family's leaves.
    static VX_UINT32 Usage(MultipleCmdsProcessor* self, TavuStringArray& args, VX_UINT32 cmdId) {
        const TracedCall traced(Self::FAMILY.className, __func__);
        return cmdId == Self::FAMILY.helpId ? CmdHelp(self, args) : ShowUsage(Self::FAMILY.usages, cmdId);
    }

    using MultipleCmdsProcessor::CmdHelp;
    /// Command function of the `help` leaf.
    static VX_UINT32 CmdHelp(MultipleCmdsProcessor* self, TavuStringArray& args) {
        const TracedCall traced(Self::FAMILY.className, __func__);
        return ShowFamilyHelp(self, args, Self::FAMILY.helpWord);
    }

protected:
    /// Command function `Name` of a plain leaf: `common` as an XML document.
    template <FixedText Name, CommonFunction common>
    static VX_UINT32 Xml(MultipleCmdsProcessor* self, TavuStringArray& args) {
        return RunCommon(Self::FAMILY.className, Name.text, common, self, args, FORMAT_XML);
    }
    /// Command function `Name` of a `cli` leaf: `common` as text.
    template <FixedText Name, CommonFunction common>
    static VX_UINT32 Text(MultipleCmdsProcessor* self, TavuStringArray& args) {
        return RunCommon(Self::FAMILY.className, Name.text, common, self, args, FORMAT_TEXT);
    }

    /// Message of a result code.
    static const char* ResultText(VX_UINT32 code) { return ResultTextOf(Self::FAMILY.resultTexts, code); }

    /// The error form of the family's report.
    static void DisplayError(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format) {
        DisplayReportError(self, code, format, REBOOT_NOT_SHOWN);
    }
    /// The same for a command that may write to the adapter: "Reboot Required" is false.
    static void DisplaySetError(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format) {
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

    /// The common function `CmdListCommon` of a `list` leaf, whose structures `rows(document, host)` writes.
    /// It takes no object: `RC_HELP_REQUESTED` for a help word, `RC_HOST_NOT_FOUND` without an adapter list,
    /// both without any document.
    template <typename Rows>
    static VX_UINT32 ListHost(MultipleCmdsProcessor* self, const TavuStringArray& args, eOutputFormat format,
                              Rows rows) {
        const VX_ADAPTER_LIST* host = nullptr;
        const VX_UINT32 code = AdmitList(args, host);
        if (code == RC_SUCCESS) {
            Document document(*self, format);
            document.List([&] { rows(document, *host); });
        }
        return code;
    }

    /// The common function of most commands: `fetch(args, state)` resolves, admits, parses and calls the
    /// library, and gives a result code; then `display(self, state, format)` describes the state, or
    /// `displayError(self, code, format)` the failure.
    template <auto fetch, auto display, auto displayError>
    static VX_UINT32 FetchThenDisplay(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format) {
        StateOf<fetch> state{};
        const VX_UINT32 code = fetch(args, state);
        if (code == RC_SUCCESS) {
            display(self, state, format);
        } else {
            displayError(self, code, format);
        }
        return code;
    }

    /// The same for a `set` of settings that were staged: the state is a `Commit`. The cache file is deleted when
    /// the document is out, so that nobody loses settings without being told what became of them.
    template <auto set, auto display, auto displayError>
    static VX_UINT32 CommitThenDisplay(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format) {
        StateOf<set> state{};
        const VX_UINT32 code = set(args, state);
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
    /// displayed, and gives a result code. Its failure is described too, as a second document behind the first.
    template <auto fetch, auto display, auto release, auto displayError>
    static VX_UINT32 FetchDisplayRelease(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format) {
        StateOf<fetch> state{};
        VX_UINT32 code = fetch(args, state);
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
    static void DisplayReportError(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format,
                                   RebootRequired reboot) {
        const TracedCall traced(Self::FAMILY.className, "DisplayError");
        Document(*self, format).ReportError(Self::FAMILY.report, reboot, code, ResultText(code));
    }

    template <typename State> static State StateOfFunction(VX_UINT32 (*)(const TavuStringArray&, State&));
    template <auto fetch> using StateOf = decltype(StateOfFunction(fetch));
};
