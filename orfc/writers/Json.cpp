#include "Json.h"

#include "Utf8.h"
#include "Version.h"
#include "Writer.h"

namespace orfc {

using nlohmann::ordered_json;

namespace {

constexpr std::uint64_t LARGEST_EXACT = std::uint64_t{1} << 53; ///< beyond it readers that use doubles lose digits

std::string Hexadecimal(std::string_view bytes) {
    constexpr char DIGITS[] = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        text += {DIGITS[byte >> 4], DIGITS[byte & 0xF]};
    }
    return text;
}

ordered_json JsonOf(const Value& value) {
    struct Converter {
        ordered_json operator()(std::monostate) const { return nullptr; }
        ordered_json operator()(bool flag) const { return flag; }
        ordered_json operator()(std::uint64_t number) const { return number; }
        ordered_json operator()(std::int64_t number) const { return number; }
        ordered_json operator()(const Decimal& number) const {
            // With the digits that the value has: the shortest text that reads as that number.
            return std::stod(TextOf(number));
        }
        ordered_json operator()(const std::string& text) const { return text; }
    };
    return IsKnown(value) ? std::visit(Converter{}, value) : ordered_json();
}

ordered_json RecordOf(const Records& records, std::size_t record) {
    ordered_json json = {{"kind", records.Kind()}};
    for (std::size_t column = 0; column < records.ColumnCount(); ++column) {
        const std::string key = records.Column(column).key;
        const Value value = records.At(record, column);
        json[key] = JsonOf(value);
        if (const auto* number = std::get_if<std::uint64_t>(&value); number != nullptr && *number > LARGEST_EXACT) {
            json[key + "_text"] = std::to_string(*number);
        }
        if (const auto* text = std::get_if<std::string>(&value); text != nullptr && !IsUtf8(*text)) {
            json[key + "_hex"] = Hexadecimal(*text);
        }
    }
    return json;
}

const char* TypeName(Type type) {
    switch (type) {
    case Type::TEXT:
    case Type::VERDICT:
        return "string";
    case Type::INTEGER:
    case Type::BYTES:
        return "integer";
    case Type::DECIMAL:
        return "number";
    case Type::FLAG:
        return "boolean";
    }
    return nullptr;
}

ordered_json SchemaOf(const Records& records) {
    ordered_json properties = {{"kind", {{"const", records.Kind()}}}};
    ordered_json required = {"kind"};
    for (std::size_t at = 0; at < records.ColumnCount(); ++at) {
        const ColumnInfo& column = records.Column(at);
        properties[column.key] = {{"description", column.description}, {"type", {TypeName(column.type), "null"}}};
        required.push_back(column.key);
    }
    return {{"type", "object"},
            {"properties", properties},
            {"required", required},
            {"patternProperties", {{"_(text|hex)$", {{"type", "string"}}}}},
            {"additionalProperties", false}};
}

} // namespace

std::string DumpJson(const ordered_json& json, int indent) {
    return json.dump(indent, ' ', true, ordered_json::error_handler_t::replace);
}

void WriteJson(const Answer& answer, const Style& style, std::FILE* out) {
    const char* const lineEnd = style.isCompact ? "" : "\n";
    ordered_json messages = answer.messages;
    const ordered_json tool = {{"name", "orfc"},
                               {"version", TOOL_VERSION},
                               {"arguments", answer.arguments},
                               {"library", answer.library.empty() ? ordered_json() : ordered_json(answer.library)}};
    std::fprintf(out,
                 "{\"json_format_version\":[%d,%d],%s\"tool\":%s,%s\"command\":%s,%s\"ok\":%s,%s\"messages\":%s,%s",
                 JSON_FORMAT_VERSION[0], JSON_FORMAT_VERSION[1], lineEnd, DumpJson(tool).c_str(), lineEnd,
                 DumpJson(answer.command).c_str(), lineEnd, answer.isOk ? "true" : "false", lineEnd,
                 DumpJson(messages).c_str(), lineEnd);
    std::fputs("\"records\":[", out);
    // Record by record: a host may have many thousands.
    const char* separator = "";
    for (const Records* records : answer.records) {
        for (std::size_t record = 0; record < records->Size(); ++record) {
            std::fprintf(out, "%s%s%s", separator, lineEnd, DumpJson(RecordOf(*records, record)).c_str());
            separator = ",";
        }
    }
    std::fprintf(out, "%s]}\n", lineEnd);
}

ordered_json SchemaOf(const std::vector<const Records*>& kinds) {
    ordered_json definitions = ordered_json::object();
    ordered_json anyRecord = ordered_json::array();
    for (const Records* records : kinds) {
        if (definitions.contains(records->Kind())) {
            continue;
        }
        definitions[records->Kind()] = SchemaOf(*records);
        anyRecord.push_back({{"$ref", std::string("#/definitions/") + records->Kind()}});
    }
    const ordered_json texts = {{"type", "array"}, {"items", {{"type", "string"}}}};
    const ordered_json properties = {
        {"json_format_version",
         {{"description", "The first number moves when a reader must, the second when keys are added"},
          {"const", JSON_FORMAT_VERSION}}},
        {"tool",
         {{"type", "object"},
          {"properties",
           {{"name", {{"const", "orfc"}}},
            {"version", {{"type", "string"}}},
            {"arguments", texts},
            {"library", {{"type", {"string", "null"}}}}}},
          {"required", {"name", "version", "arguments", "library"}},
          {"additionalProperties", false}}},
        {"command", {{"type", "string"}}},
        {"ok", {{"description", "false if the command failed"}, {"type", "boolean"}}},
        {"messages", texts},
        {"records", {{"type", "array"}, {"items", {{"anyOf", anyRecord}}}}},
    };
    ordered_json required = ordered_json::array();
    for (const auto& [key, value] : properties.items()) {
        required.push_back(key);
    }
    return {
        {"$schema", "http://json-schema.org/draft-07/schema#"},
        {"title", "What orfc writes with -o json"},
        {"description", "Every key is in every record, null where the value is unknown. A "
                        "text that is no UTF-8 has its bytes in KEY_hex too, an integer above 2^53 its digits in "
                        "KEY_text."},
        {"type", "object"},
        {"properties", properties},
        {"required", required},
        {"additionalProperties", false},
        {"definitions", definitions},
    };
}

ordered_json DescribeColumns(const std::vector<const Records*>& kinds) {
    ordered_json described = ordered_json::object();
    for (const Records* records : kinds) {
        ordered_json columns = ordered_json::array();
        for (std::size_t at = 0; at < records->ColumnCount(); ++at) {
            const ColumnInfo& column = records->Column(at);
            columns.push_back({{"key", column.key},
                               {"heading", column.heading},
                               {"type", TypeName(column.type)},
                               {"description", column.description}});
        }
        described[records->Kind()] = columns;
    }
    return described;
}

} // namespace orfc
