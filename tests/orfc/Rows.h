/// @file
/// Records for the writers, made of values, and what a writer makes of them.
#pragma once

#include "Writer.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>

namespace orfc_test {

using namespace orfc;

/// Columns with values in rows. Integers may be given as `int`.
class Rows final : public Records {
public:
    struct Cell : Value {
        using Value::Value;
        Cell(int number) : Value(static_cast<std::uint64_t>(number)) {}
        Cell(const char* text) : Value(std::string(text)) {}
        Cell(std::nullopt_t /*unknown*/) {}
    };
    Rows(std::vector<ColumnInfo> columns, std::vector<std::vector<Cell>> rows, const char* kind = "row")
        : mKind(kind), mColumns(std::move(columns)), mRows(std::move(rows)) {}

    const char* Kind() const override { return mKind; }
    std::size_t Size() const override { return mRows.size(); }
    std::size_t ColumnCount() const override { return mColumns.size(); }
    const ColumnInfo& Column(std::size_t column) const override { return mColumns[column]; }
    Value At(std::size_t record, std::size_t column) const override { return mRows[record][column]; }

private:
    const char* mKind;
    std::vector<ColumnInfo> mColumns;
    std::vector<std::vector<Cell>> mRows;
};

using Writer = void(const Answer& answer, const Style& style, std::FILE* out);

/// What a writer writes.
inline std::string Written(Writer* write, const Answer& answer, const Style& style = {}) {
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* const out = open_memstream(&text, &size);
    write(answer, style, out);
    std::fclose(out);
    const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
    return {text, size};
}
inline std::string Written(Writer* write, const Records& records, const Style& style = {}) {
    Answer answer;
    answer.records = {&records};
    return Written(write, answer, style);
}

} // namespace orfc_test
