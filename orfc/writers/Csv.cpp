#include "Utf8.h"
#include "Writer.h"

namespace orfc {

namespace {

/// A field (RFC 4180): in quotes where it must be, quotes doubled.
std::string FieldOf(std::string text) {
    if (text.find_first_of("\",\r\n") == std::string::npos) {
        return text;
    }
    for (std::size_t at = text.find('"'); at != std::string::npos; at = text.find('"', at + 2)) {
        text.insert(at, 1, '"');
    }
    return '"' + text + '"';
}

} // namespace

/// One table for each kind of records that there are, with an empty line between them.
void WriteCsv(const Answer& answer, const Style& style, std::FILE* out) {
    const char* separator = "";
    for (const Records* records : answer.records) {
        const std::vector<std::size_t> columns = ChosenColumns(*records, style, Place::DETAILED);
        const bool isMissing = records->Size() == 0 && answer.records.size() > 1;
        if (columns.empty() || isMissing) {
            continue;
        }
        std::fputs(separator, out);
        separator = "\r\n";
        const auto writeLine = [&](auto textOf) {
            const char* comma = "";
            for (const std::size_t column : columns) {
                std::fprintf(out, "%s%s", comma, FieldOf(textOf(column)).c_str());
                comma = ",";
            }
            std::fputs("\r\n", out);
        };
        if (style.hasHeadings) {
            writeLine([&](std::size_t column) { return std::string(records->Column(column).key); });
        }
        for (std::size_t record = 0; record < records->Size(); ++record) {
            writeLine([&](std::size_t column) { return PrintableText(TextOf(records->At(record, column))); });
        }
    }
}

} // namespace orfc
