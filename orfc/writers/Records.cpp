#include "Failure.h"
#include "Writer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>
#include <set>

namespace orfc {

namespace {

std::optional<std::size_t> IndexOf(const Records& records, std::string_view key) {
    for (std::size_t column = 0; column < records.ColumnCount(); ++column) {
        if (records.Column(column).key == key) {
            return column;
        }
    }
    return std::nullopt;
}

/// The key of a column to sort by, without the "-" of the descending order.
std::string_view SortKey(std::string_view key) {
    return key.substr(key.starts_with('-') ? 1 : 0);
}

} // namespace

bool IsKnown(const Value& value) {
    const auto* const number = std::get_if<Decimal>(&value);
    return value.index() != 0 && (number == nullptr || std::isfinite(number->value));
}

std::string TextOf(const Value& value) {
    struct Converter {
        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(bool flag) const { return flag ? "true" : "false"; }
        std::string operator()(std::uint64_t number) const { return std::to_string(number); }
        std::string operator()(std::int64_t number) const { return std::to_string(number); }
        std::string operator()(const Decimal& number) const {
            char text[400]; // the largest number has 309 digits before the point
            std::snprintf(text, sizeof text, "%.*f", number.digits, number.value);
            const bool isZero = text[std::strspn(text, "-0.")] == '\0';
            return text + (isZero && *text == '-' ? 1 : 0);
        }
        std::string operator()(const std::string& text) const { return text; }
    };
    return IsKnown(value) ? std::visit(Converter{}, value) : std::string();
}

void CheckColumns(const std::vector<const Records*>& all, const Style& style, std::string_view sort) {
    std::vector<std::string_view> keys(style.columns.begin(), style.columns.end());
    if (!sort.empty()) {
        keys.push_back(SortKey(sort));
    }
    for (const std::string_view key : keys) {
        if (std::any_of(all.begin(), all.end(), [&](const Records* records) { return IndexOf(*records, key); })) {
            continue;
        }
        std::string known;
        std::set<std::string_view> listed;
        for (const Records* records : all) {
            for (std::size_t column = 0; column < records->ColumnCount(); ++column) {
                const char* const other = records->Column(column).key;
                known += listed.insert(other).second ? (known.empty() ? "" : ", ") + std::string(other) : "";
            }
        }
        throw Failure("no column is named " + std::string(key) + "; there are " + known, Failure::USAGE);
    }
}

std::vector<std::size_t> ChosenColumns(const Records& records, const Style& style, Place last) {
    std::vector<std::size_t> columns;
    for (const std::string& key : style.columns) {
        if (const std::optional<std::size_t> column = IndexOf(records, key)) {
            columns.push_back(*column);
        }
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
    std::iota(mOrder.begin(), mOrder.end(), std::size_t{0});
    const std::optional<std::size_t> column = IndexOf(records, SortKey(key));
    if (!column) {
        return;
    }
    const bool isDescending = key.starts_with('-');
    std::vector<Value> values;
    values.reserve(records.Size());
    for (std::size_t record = 0; record < records.Size(); ++record) {
        values.push_back(records.At(record, *column));
    }
    std::stable_sort(mOrder.begin(), mOrder.end(), [&](std::size_t left, std::size_t right) {
        if (!IsKnown(values[left]) || !IsKnown(values[right])) {
            return IsKnown(values[left]) && !IsKnown(values[right]);
        }
        return isDescending ? values[right] < values[left] : values[left] < values[right];
    });
}

} // namespace orfc
