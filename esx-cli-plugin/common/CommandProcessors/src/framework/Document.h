/// @file
/// The shapes of a command's document. Each shape exists once, takes its names, and closes what it opens.
///
/// Flat:      a structure with fields.
/// List:      a list of structures, one a row.
/// Report:    a structure with "Message" and one field, which holds a list of structures. In a data-block
///            report that is one structure with the field "Data", the whole report as one text. In an
///            error the list is empty.
#pragma once

#include "Serializer.h"

#include <optional>

/// Field labels and texts that no family words otherwise.
inline constexpr char OUT_MESSAGE[] = "Message";
inline constexpr char OUT_SUCCESS[] = "Success";
inline constexpr char OUT_REBOOT_REQUIRED[] = "Reboot Required";
inline constexpr char OUT_DATA[] = "Data";

/// Value of "Reboot Required" in commands that may write to the adapter; empty where it isn't shown.
using RebootRequired = std::optional<bool>;
inline constexpr RebootRequired REBOOT_NOT_SHOWN = std::nullopt;

/// Names of a report's frame: the structure, the field in it, and the structures in the field's list.
struct ReportNames {
    const char* structure;
    const char* field;
    const char* list;
};

template <typename Fields> void WriteStructure(Serializer& out, const char* name, Fields fields) {
    out.begin_struct_output(name);
    fields();
    out.end_struct_output();
}

/// The flat document; `fields()` writes its fields.
template <typename Fields>
void WriteFlat(Serializer& out, Serializer::eOutputFormat format, const char* structure, Fields fields) {
    out.begin_output(format);
    WriteStructure(out, structure, fields);
    out.end_output();
}

/// The list document; `rows()` writes its structures.
template <typename Rows> void WriteList(Serializer& out, Serializer::eOutputFormat format, Rows rows) {
    out.begin_output(format);
    out.begin_list_output(Serializer::LIST_STRUCTURE);
    rows();
    out.end_list_output();
    out.end_output();
}

/// A report with fields of its own; `head()` writes the fields ahead of the list, `rows()` the list's
/// structures.
template <typename Head, typename Rows>
void WriteReport(Serializer& out, Serializer::eOutputFormat format, const ReportNames& names, Head head, Rows rows) {
    WriteFlat(out, format, names.structure, [&] {
        head();
        out.begin_field_output(names.field);
        out.begin_list_output(Serializer::LIST_STRUCTURE);
        rows();
        out.end_list_output();
        out.end_field_output();
    });
}

/// "Message" of a success, then "Reboot Required" where it is shown.
void WriteSuccess(Serializer& out, RebootRequired reboot = REBOOT_NOT_SHOWN);

/// A report of one structure with real fields, which `fields()` writes.
template <typename Fields>
void WriteFieldReport(Serializer& out, Serializer::eOutputFormat format, const ReportNames& names,
                      RebootRequired reboot, Fields fields) {
    WriteReport(
        out, format, names, [&] { WriteSuccess(out, reboot); }, [&] { WriteStructure(out, names.list, fields); });
}

/// A data-block report.
void WriteBlockReport(Serializer& out, Serializer::eOutputFormat format, const ReportNames& names,
                      RebootRequired reboot, const char* block);

/// The error form of every report: an empty list. "Reboot Required", where it is shown, stands ahead of
/// "Message" here and behind it in a success; clients see both orders.
void WriteReportError(Serializer& out, Serializer::eOutputFormat format, const ReportNames& names,
                      RebootRequired reboot, const char* message);
