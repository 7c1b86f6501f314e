/// @file
/// The formats of an answer.
#pragma once

#include "Records.h"

#include <cstdio>
#include <optional>

namespace orfc {

/// What a command answers.
struct Answer {
    std::string command;
    std::vector<std::string> arguments;    ///< of the program, as they were given
    std::string library;                   ///< path of the library that served
    std::vector<std::string> messages;     ///< what couldn't be read, one line each
    bool isOk = true;                      ///< false: the command failed, and the last message says why
    std::vector<const Records*> records;   ///< one kind after the other
    std::vector<const Records*> forPeople; ///< shown instead in tables; empty: the same

    const std::vector<const Records*>& ForTables() const { return forPeople.empty() ? records : forPeople; }
};

struct Style {
    std::vector<std::string> columns; ///< in tables and CSV, keys in their order; empty: the usual ones
    bool hasHeadings = true;
    bool isWide = false;
    bool isColored = false;
    bool isCompact = false;           ///< JSON: the whole answer on one line, for one that follows another
    std::optional<std::size_t> width; ///< cells of a terminal's line; none: no limit
};

/// Each writes an answer to `out`. What isn't known is left blank, is "-" in a table and null in JSON.
void WriteTable(const Answer& answer, const Style& style, std::FILE* out);
void WriteJson(const Answer& answer, const Style& style, std::FILE* out);
void WriteCsv(const Answer& answer, const Style& style, std::FILE* out);
void WriteEsxcli(const Answer& answer, const Style& style, std::FILE* out);
/// Every column of each record, a line each, by groups. Records with headings, which belong together, as a table.
void WriteDetails(const Answer& answer, const Style& style, std::FILE* out);

/// Throws `Failure` for a key to show or to sort by that none of the sets of records has.
void CheckColumns(const std::vector<const Records*>& all, const Style& style, std::string_view sort);

/// Columns that a style shows, by their index. Empty for records without the keys that it names.
std::vector<std::size_t> ChosenColumns(const Records& records, const Style& style, Place last);

/// The records in another order: by the values of a column, ascending, or descending with "-" before its key. What is
/// unknown comes last, and records without the column stay as they are.
class SortedRecords final : public Records {
public:
    SortedRecords(const Records& records, std::string_view key);
    const char* Kind() const override { return mRecords.Kind(); }
    std::size_t Size() const override { return mOrder.size(); }
    std::size_t ColumnCount() const override { return mRecords.ColumnCount(); }
    const ColumnInfo& Column(std::size_t column) const override { return mRecords.Column(column); }
    Value At(std::size_t record, std::size_t column) const override { return mRecords.At(mOrder[record], column); }

private:
    const Records& mRecords;
    std::vector<std::size_t> mOrder;
};

} // namespace orfc
