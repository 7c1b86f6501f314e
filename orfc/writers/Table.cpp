#include "Utf8.h"
#include "Writer.h"

#include <algorithm>

namespace orfc {

namespace {

constexpr std::string_view GAP = "  ";
constexpr std::string_view CONTINUATION = "\n    "; ///< of a line above rows
constexpr char UNKNOWN[] = "-";

/// "1.5T": a number of bytes with three digits at most.
std::string SizeText(std::uint64_t bytes) {
    constexpr char UNITS[] = {'B', 'K', 'M', 'G', 'T', 'P', 'E'};
    auto value = static_cast<double>(bytes);
    std::size_t unit = 0;
    while (value >= 1000 && unit + 1 < std::size(UNITS)) {
        value /= 1024;
        ++unit;
    }
    return TextOf(Decimal{value, unit == 0 || value >= 99.95 ? 0 : 1}) + UNITS[unit];
}

std::string CellText(const Records& records, std::size_t record, std::size_t column, bool isExact = false) {
    const Value value = records.At(record, column);
    const auto* number = std::get_if<std::uint64_t>(&value);
    if (records.Column(column).type == Type::BYTES && number != nullptr) {
        const std::string size = SizeText(*number);
        return isExact ? TextOf(value) + " (" + size + ")" : size;
    }
    if (const auto* flag = std::get_if<bool>(&value)) {
        return *flag ? "yes" : "no";
    }
    return PrintableText(TextOf(value));
}

bool IsNumeric(Type type) {
    return type == Type::INTEGER || type == Type::DECIMAL || type == Type::BYTES;
}

/// The colour of a verdict, by its words.
struct ColoredWord {
    std::string_view word;
    const char* color;
};
constexpr char RED[] = "\033[31m", YELLOW[] = "\033[33m", GREEN[] = "\033[32m", DEFAULT[] = "\033[0m";
constexpr ColoredWord COLORS[] = {
    {"alarm", RED},        {"critical", RED}, {"down", RED},       {"offline", RED},     {"no path", RED},
    {"bad", RED},          {"wrong", RED},    {"warning", YELLOW}, {"one ", YELLOW},     {"standby", YELLOW},
    {"not ready", YELLOW}, {"ok", GREEN},     {"online", GREEN},   {"redundant", GREEN},
};

std::string Colored(std::string text, const ColumnInfo& column, const Style& style) {
    if (style.isColored && column.type == Type::VERDICT) {
        for (const ColoredWord& row : COLORS) {
            if (text.find(row.word) != std::string::npos) {
                return row.color + text + DEFAULT;
            }
        }
    }
    return text;
}

/// What the rows below it have in common: the known values. A name in lower case is part of the text.
std::string HeadingOf(const Records& records, std::size_t record, const std::vector<std::size_t>& columns,
                      const Style& style) {
    std::string heading;
    std::size_t cells = 0; // of its last line
    for (const std::size_t column : columns) {
        const std::string text = CellText(records, record, column);
        if (text.empty()) {
            continue;
        }
        const ColumnInfo& info = records.Column(column);
        const std::string name = *info.heading >= 'a' && *info.heading <= 'z' ? info.heading + std::string(" ") : "";
        const std::size_t own = CellsOf(name) + CellsOf(text);
        const bool isFull = style.width && cells + GAP.size() + own > *style.width;
        heading += cells == 0 ? "" : isFull ? CONTINUATION : GAP;
        cells = own + (cells == 0 ? 0 : isFull ? CONTINUATION.size() - 1 : cells + GAP.size());
        heading += name + Colored(text, info, style);
    }
    return heading;
}

class Table {
public:
    Table(const Records& records, const Style& style, std::FILE* out) : mRecords(records), mStyle(style), mOut(out) {
        for (const std::size_t column : ChosenColumns(records, style, style.isWide ? Place::WIDE : Place::TABLE)) {
            const Place place = records.Column(column).place;
            const bool isChosen = !style.columns.empty();
            if (place == Place::HEADING && !isChosen) {
                mHeadings.push_back(column);
            } else if (isChosen || place == Place::ALWAYS || HasValue(column)) {
                mColumns.push_back(column);
            }
        }
        Measure();
        Fit();
    }

    void Write() const {
        if (mStyle.hasHeadings) {
            std::string line = mHeadings.empty() ? "" : std::string(GAP);
            for (std::size_t at = 0; at < mColumns.size(); ++at) {
                const ColumnInfo& column = mRecords.Column(mColumns[at]);
                Append(line, column.heading, column.heading, at);
            }
            Put(line);
        }
        std::string heading;
        for (std::size_t record = 0; record < mRecords.Size(); ++record) {
            std::string line;
            if (!mHeadings.empty()) {
                std::string own = HeadingOf(mRecords, record, mHeadings, mStyle);
                if (record == 0 || own != heading) {
                    Put(own);
                    heading = std::move(own);
                }
                line = GAP;
            }
            for (std::size_t at = 0; at < mColumns.size(); ++at) {
                const std::string text = Cell(record, at);
                Append(line, text, Colored(text, mRecords.Column(mColumns[at]), mStyle), at);
            }
            Put(line);
        }
    }

private:
    /// Whether the column is known of any record. Libraries without optional functions leave many unknown.
    bool HasValue(std::size_t column) const {
        std::size_t record = 0;
        while (record < mRecords.Size() && !IsKnown(mRecords.At(record, column))) {
            ++record;
        }
        return record < mRecords.Size();
    }

    std::string Cell(std::size_t record, std::size_t at) const {
        std::string text = CellText(mRecords, record, mColumns[at]);
        return text.empty() ? UNKNOWN : text;
    }

    void Measure() {
        for (std::size_t at = 0; at < mColumns.size(); ++at) {
            std::size_t width = mStyle.hasHeadings ? CellsOf(mRecords.Column(mColumns[at]).heading) : 0;
            for (std::size_t record = 0; record < mRecords.Size(); ++record) {
                width = std::max(width, CellsOf(Cell(record, at)));
            }
            mWidths.push_back(width);
        }
    }

    /// Leaves out columns from the right until a line fits, but no names.
    void Fit() {
        if (!mStyle.width || !mStyle.columns.empty() || mStyle.isWide) {
            return;
        }
        const auto lineWidth = [this] {
            std::size_t width = mHeadings.empty() ? 0 : GAP.size();
            for (std::size_t at = 0; at < mWidths.size(); ++at) {
                width += mWidths[at] + (at == 0 ? 0 : GAP.size());
            }
            return width;
        };
        for (std::size_t at = mColumns.size(); at-- > 0 && lineWidth() > *mStyle.width;) {
            if (mRecords.Column(mColumns[at]).place != Place::ALWAYS) {
                mColumns.erase(mColumns.begin() + static_cast<std::ptrdiff_t>(at));
                mWidths.erase(mWidths.begin() + static_cast<std::ptrdiff_t>(at));
            }
        }
    }

    /// Appends a cell, numbers to the right. The last one isn't padded.
    void Append(std::string& line, std::string_view text, std::string_view shown, std::size_t at) const {
        const std::size_t padding = mWidths[at] - CellsOf(text);
        line += at == 0 ? "" : GAP;
        if (IsNumeric(mRecords.Column(mColumns[at]).type)) {
            line.append(padding, ' ').append(shown);
        } else {
            line += shown;
            line.append(at + 1 < mColumns.size() ? padding : 0, ' ');
        }
    }

    void Put(const std::string& line) const {
        std::fwrite(line.data(), 1, line.size(), mOut);
        std::fputc('\n', mOut);
    }

    const Records& mRecords;
    const Style& mStyle;
    std::FILE* mOut;
    std::vector<std::size_t> mHeadings;
    std::vector<std::size_t> mColumns;
    std::vector<std::size_t> mWidths;
};

/// The groups of columns, in the order of their first.
std::vector<std::string_view> GroupsOf(const Records& records, const std::vector<std::size_t>& columns) {
    std::vector<std::string_view> groups;
    for (const std::size_t column : columns) {
        const std::string_view group = records.Column(column).group;
        if (std::find(groups.begin(), groups.end(), group) == groups.end()) {
            groups.push_back(group);
        }
    }
    return groups;
}

} // namespace

void WriteTable(const Answer& answer, const Style& style, std::FILE* out) {
    bool isFirst = true;
    for (const Records* records : answer.ForTables()) {
        if (records->Size() == 0 || ChosenColumns(*records, style, Place::TABLE).empty()) {
            continue;
        }
        if (!isFirst) {
            std::fputc('\n', out);
        }
        isFirst = false;
        Table(*records, style, out).Write();
    }
}

void WriteDetails(const Answer& answer, const Style& style, std::FILE* out) {
    bool isFirst = true;
    for (const Records* records : answer.records) {
        const std::vector<std::size_t> columns = ChosenColumns(*records, style, Place::DETAILED);
        if (records->Size() == 0 || columns.empty()) {
            continue;
        }
        if (records->Column(0).place == Place::HEADING) { // rows that belong together
            std::fputs(isFirst ? "" : "\n", out);
            isFirst = false;
            Table(*records, style, out).Write();
            continue;
        }
        std::size_t width = 0;
        for (const std::size_t column : columns) {
            width = std::max(width, CellsOf(records->Column(column).key));
        }
        for (std::size_t record = 0; record < records->Size(); ++record) {
            std::fputs(isFirst ? "" : "\n", out);
            isFirst = false;
            for (const std::string_view group : GroupsOf(*records, columns)) {
                bool hasTitle = false;
                for (const std::size_t column : columns) {
                    const ColumnInfo& info = records->Column(column);
                    const std::string text = CellText(*records, record, column, true);
                    if (info.group == group && !text.empty()) {
                        std::fprintf(out, "%s", hasTitle ? "" : (std::string(group) + "\n").c_str());
                        hasTitle = true;
                        std::fprintf(out, "  %-*s  %s\n", static_cast<int>(width), info.key,
                                     Colored(text, info, style).c_str());
                    }
                }
            }
        }
    }
}

} // namespace orfc
