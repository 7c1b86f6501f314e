/// @file
/// The pattern of a command family: what all families do alike exists here once.
///
/// A family class derives from `Family<itself>`, inherits its constructor and gives a `FAMILY`: a constant
/// that names the class, its leaves, usage texts and sub-families. Its command functions are static
/// members; they get the family object as `self` and use it as their serializer.
#pragma once

#include "Console.h"
#include "MultipleCmdsProcessor.h"
#include "ResultCodes.h"
#include "TavuDebug.h"

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
        const ScopedTrace trace(Self::FAMILY.className);
        CreateSubFamilies(Self::FAMILY.subOption, Self::FAMILY.subFamilies);
    }
    ~Family() override {
        const ScopedTrace trace(Self::FAMILY.className);
        DeleteSubFamilies();
    }

    std::vector<CmdProcessor*>& GetSubCmdProcessors() override { return BuildChildren(Self::FAMILY.leaves); }

    /// Usage function of the family's leaves.
    static VX_UINT32 Usage(MultipleCmdsProcessor* self, TavuStringArray& args, VX_UINT32 cmdId) {
        return cmdId == Self::FAMILY.helpId ? CmdHelp(self, args) : ShowUsage(Self::FAMILY.usages, cmdId);
    }

    using MultipleCmdsProcessor::CmdHelp;
    /// Command function of the `help` leaf.
    static VX_UINT32 CmdHelp(MultipleCmdsProcessor* self, TavuStringArray& args) {
        return ShowFamilyHelp(self, args, Self::FAMILY.helpWord);
    }

protected:
    /// Command function `Name` of a plain leaf: `common` as an XML document.
    template <FixedText Name, CommonFunction common>
    static VX_UINT32 Xml(MultipleCmdsProcessor* self, TavuStringArray& args) {
        TraceEntered(Name.text);
        return common(self, args, FORMAT_XML);
    }
    /// Command function `Name` of a `cli` leaf: `common` as text.
    template <FixedText Name, CommonFunction common>
    static VX_UINT32 Text(MultipleCmdsProcessor* self, TavuStringArray& args) {
        TraceEntered(Name.text);
        return common(self, args, FORMAT_TEXT);
    }

    static void TraceEntered(const char* function) {
        TavuDebug::Print(TRACE_INFORMATION, "%s::%s: Entered", Self::FAMILY.className, function);
    }
    static void TraceExiting(const char* function) {
        TavuDebug::Print(TRACE_INFORMATION, "%s::%s: Exiting", Self::FAMILY.className, function);
    }
};
