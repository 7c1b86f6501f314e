#include "Failure.h"
#include "Writer.h"

#include <algorithm>
#include <numeric>

namespace orfc {

namespace {

std::size_t IndexOf(const Records& records, std::string_view key) {
    std::string known;
    for (std::size_t column = 0; column < records.ColumnCount(); ++column) {
        if (records.Column(column).key == key) {
            return column;
        }
        known += (known.empty() ? "" : ", ") + std::string(records.Column(column).key);
    }
    throw Failure("no column is named " + std::string(key) + "; there are " + known, Failure::USAGE);
}

} // namespace

std::string TextOf(const Value& value) {
    struct Converter {
        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(bool flag) const { return flag ? "true" : "false"; }
        std::string operator()(std::uint64_t number) const { return std::to_string(number); }
        std::string operator()(std::int64_t number) const { return std::to_string(number); }
        std::string operator()(const Decimal& number) const {
            char text[400]; // the largest number has 309 digits before the point
            std::snprintf(text, sizeof text, "%.*f", number.digits, number.value);
            return text;
        }
        std::string operator()(const std::string& text) const { return text; }
    };
    return std::visit(Converter{}, value);
}

std::vector<std::size_t> ChosenColumns(const Records& records, const Style& style, Place last) {
    std::vector<std::size_t> columns;
    for (const std::string& key : style.columns) {
        columns.push_back(IndexOf(records, key));
    }
    if (style.columns.empty()) {
        for (std::size_t column = 0; column < records.ColumnCount(); ++column) {
            if (records.Column(column).place <= last) {
                columns.push_back(column);
            }
        }
    }
    return columns;
}

SortedRecords::SortedRecords(const Records& records, std::string_view key) : mRecords(records), mOrder(records.Size()) {
    const bool isDescending = key.starts_with('-');
    key.remove_prefix(isDescending ? 1 : 0);
    const std::size_t column = IndexOf(records, key);
    std::iota(mOrder.begin(), mOrder.end(), std::size_t{0});
    // What is unknown comes last in either direction.
    std::vector<Value> values;
    values.reserve(records.Size());
    for (std::size_t record = 0; record < records.Size(); ++record) {
        values.push_back(records.At(record, column));
    }
    std::stable_sort(mOrder.begin(), mOrder.end(), [&](std::size_t left, std::size_t right) {
        if (!IsKnown(values[left]) || !IsKnown(values[right])) {
            return IsKnown(values[left]) && !IsKnown(values[right]);
        }
        return isDescending ? values[right] < values[left] : values[left] < values[right];
    });
}

} // namespace orfc
