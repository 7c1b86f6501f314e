#include "Utf8.h"
#include "Writer.h"

#include <algorithm>
#include <cstdint>

namespace orfc {

namespace {

/// "LinkFailureCount" of "link_failure_count": clients keep letters and digits of a name only.
std::string NameOf(std::string_view key) {
    std::string name;
    bool isStart = true;
    for (const char c : key) {
        if (c == '_') {
            isStart = true;
        } else {
            name += isStart && c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
            isStart = false;
        }
    }
    return name;
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : PrintableText(text)) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

/// Whether a column's values are whole numbers. Decimals are texts, since the framework knows no other numbers.
bool IsInteger(const ColumnInfo& column) {
    return column.type == Type::INTEGER || column.type == Type::BYTES;
}

/// An integer of 64 signed bits; -1 if unknown, since every field is in every record.
std::string IntegerText(const Value& value) {
    if (const auto* number = std::get_if<std::uint64_t>(&value)) {
        return std::to_string(std::min<std::uint64_t>(*number, INT64_MAX));
    }
    return IsKnown(value) ? TextOf(value) : "-1";
}

} // namespace

void WriteEsxcli(const Answer& answer, const Style& /*style*/, std::FILE* out) {
    std::fputs("<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n<list type=\"structure\">\n", out);
    for (const Records* records : answer.records) {
        const std::string structure = NameOf(records->Kind());
        for (std::size_t record = 0; record < records->Size(); ++record) {
            std::fprintf(out, "<structure typeName=\"%s\">\n", structure.c_str());
            for (std::size_t column = 0; column < records->ColumnCount(); ++column) {
                const ColumnInfo& info = records->Column(column);
                const Value value = records->At(record, column);
                const char* const type = IsInteger(info) ? "int" : "string";
                std::fprintf(out, "<field name=\"%s\"><%s>%s</%s></field>\n", NameOf(info.key).c_str(), type,
                             IsInteger(info) ? IntegerText(value).c_str() : Escaped(TextOf(value)).c_str(), type);
            }
            std::fputs("</structure>\n", out);
        }
    }
    std::fputs("</list>\n</output>\n", out);
}

} // namespace orfc
