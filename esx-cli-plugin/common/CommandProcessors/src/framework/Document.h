/// @file
/// The shapes of a command's document.
#pragma once

#include "CommandRows.h"
#include "ReportBlock.h"
#include "Serializer.h"

#include <optional>

/// Value of "Reboot Required" in commands that may write to the adapter; empty if not shown.
using RebootRequired = std::optional<bool>;
inline constexpr RebootRequired REBOOT_NOT_SHOWN = std::nullopt;

/// A data-block report: its names, block size and size rule.
struct BlockShape {
    ReportNames names;
    std::size_t size;
    ReportBlock::SizeRule rule;
};

/// One document of a command. There is one function for each shape, which takes the names and closes whatever it
/// opens:
///
/// Flat:    a structure with fields.
/// List:    a list of structures, one per row.
/// Report:  a structure with "Message" and one field that is a list of structures. In a data-block report
///          the list has one structure, whose field "Data" contains the whole report as one text. In an
///          error report the list is empty.
///
/// Every field is traced at level 1 as "CLASS::FUNCTION: LABEL=VALUE", with the names of the traced function.
class Document {
public:
    using Format = Serializer::eOutputFormat;

    Document(Serializer& out, Format format) : mOut(out), mFormat(format) {}

    void Field(const char* label, const char* value);
    void Field(const char* label, const TavuString& value) { Field(label, value.c_str()); }
    void Field(const char* label, bool value);
    void Field(const char* label, unsigned long long value, Serializer::eIntType type);

    /// The message of a result code, success or failure. Every failure that is reported in a document is traced
    /// here, at level 4.
    void Message(ResultCode code, const char* message, const char* label = OUT_MESSAGE);

    /// "Message" of a success, then "Reboot Required" if shown.
    void Success(RebootRequired reboot);
    /// "Message" of a failure. Required: "Reboot Required", if shown, precedes the message of a failure but follows
    /// that of a success.
    void Failure(RebootRequired reboot, ResultCode code, const char* message);

    /// A structure inside a shape; `fields()` writes its fields.
    template <typename Fields> void Structure(const char* name, Fields fields) {
        mOut.begin_struct_output(name);
        fields();
        mOut.end_struct_output();
    }

    template <typename Fields> void Flat(const char* structure, Fields fields) {
        mOut.begin_output(mFormat);
        Structure(structure, fields);
        mOut.end_output();
    }

    /// `rows()` writes the structures.
    template <typename Rows> void List(Rows rows) {
        mOut.begin_output(mFormat);
        StructureList(rows);
        mOut.end_output();
    }

    /// A report of structures whose fields differ, written by `rows()`.
    template <typename Rows> void Report(const ReportNames& names, RebootRequired reboot, Rows rows) {
        Frame(
            names, [&] { Success(reboot); }, rows);
    }
    /// Same with an explicit message, for rows that are shown on failure too.
    template <typename Rows> void Report(const ReportNames& names, ResultCode code, const char* message, Rows rows) {
        Frame(
            names, [&] { Message(code, message); }, rows);
    }
    /// A report of one structure, whose fields `fields()` writes.
    template <typename Fields> void FieldReport(const ReportNames& names, RebootRequired reboot, Fields fields) {
        Report(names, reboot, [&] { Structure(names.list, fields); });
    }
    /// A data-block report of a text; null leaves the field empty.
    void TextReport(const ReportNames& names, RebootRequired reboot, const char* text);
    void BlockReport(const ReportNames& names, RebootRequired reboot, const ReportBlock& block) {
        TextReport(names, reboot, block.GetText());
    }
    /// The error form of every report.
    void ReportError(const ReportNames& names, RebootRequired reboot, ResultCode code, const char* message);

private:
    template <typename Rows> void StructureList(Rows rows) {
        mOut.begin_list_output(Serializer::LIST_STRUCTURE);
        rows();
        mOut.end_list_output();
    }
    template <typename Head, typename Rows> void Frame(const ReportNames& names, Head head, Rows rows) {
        Flat(names.structure, [&] {
            head();
            mOut.begin_field_output(names.field);
            StructureList(rows);
            mOut.end_field_output();
        });
    }
    void Reboot(RebootRequired reboot);

    Serializer& mOut;
    Format mFormat;
};
