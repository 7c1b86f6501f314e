/// @file
/// Records as the writers see them: columns with a key, a type and a unit, and one value each. The writers know no
/// hardware, and what a record is made of knows no format.
#pragma once

#include <compare>
#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace orfc {

/// A number that is shown with so many digits after the point.
struct Decimal {
    double value;
    int digits;

    friend auto operator<=>(const Decimal&, const Decimal&) = default; // NOLINT(modernize-use-nullptr): it has a 0
};

/// Unknown, or one of the types.
using Value = std::variant<std::monostate, bool, std::uint64_t, std::int64_t, Decimal, std::string>;

/// False for nothing, and for a number that is infinite or none.
bool IsKnown(const Value& value);
/// Empty texts are unknown.
inline Value TextValue(std::string text) {
    return text.empty() ? Value() : Value(std::move(text));
}

enum class Type {
    TEXT,
    VERDICT, ///< a text that says how something does: tables mark it
    INTEGER,
    BYTES, ///< an integer that tables show in units that fit
    DECIMAL,
    FLAG,
};

/// Where a table shows a column.
enum class Place {
    HEADING,  ///< above the rows that have it in common
    ALWAYS,   ///< names: never left out
    TABLE,    ///< where there is room for it
    WIDE,     ///< with `-o wide`
    DETAILED, ///< nowhere but in `show`
};

struct ColumnInfo {
    const char* key;     ///< in JSON; snake_case, with the unit where there is one
    const char* heading; ///< in tables, with the unit
    Type type;
    Place place;
    const char* group;       ///< in `show`
    const char* description; ///< in the schema
};

/// Records of one kind.
class Records {
public:
    virtual ~Records() = default;
    virtual const char* Kind() const = 0; ///< "port"
    virtual std::size_t Size() const = 0;
    virtual std::size_t ColumnCount() const = 0;
    virtual const ColumnInfo& Column(std::size_t column) const = 0;
    virtual Value At(std::size_t record, std::size_t column) const = 0;
};

/// A column of records of one type.
template <typename Record> struct ColumnOf : ColumnInfo { Value (*value)(const Record& record); };

/// Records of one type, which stay elsewhere.
template <typename Record> class RecordsOf final : public Records {
public:
    RecordsOf(const char* kind, std::span<const ColumnOf<Record>> columns, std::vector<const Record*> records)
        : mKind(kind), mColumns(columns), mRecords(std::move(records)) {}

    const char* Kind() const override { return mKind; }
    std::size_t Size() const override { return mRecords.size(); }
    std::size_t ColumnCount() const override { return mColumns.size(); }
    const ColumnInfo& Column(std::size_t column) const override { return mColumns[column]; }
    Value At(std::size_t record, std::size_t column) const override {
        return mColumns[column].value(*mRecords[record]);
    }

private:
    const char* mKind;
    std::span<const ColumnOf<Record>> mColumns;
    std::vector<const Record*> mRecords;
};

/// A value as a text: "true" or "false" for a flag, empty if unknown. Zero has no sign.
std::string TextOf(const Value& value);

} // namespace orfc
