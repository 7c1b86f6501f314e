#include "Serializer.h"

#include "ResultCodes.h"
#include "XmlText.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr char ASTERISKS[] = "****************************************************\n";

/// A number in XML and in text, formatted by `Serializer::eIntType`.
struct NumberTexts {
    char xml[24];
    char text[24];
};

NumberTexts FormatNumber(unsigned long long value, Serializer::eIntType type) {
    NumberTexts number{};
    const auto both = [&number](const char* format, auto typed) {
        std::snprintf(number.xml, sizeof number.xml, format, typed);
        std::memcpy(number.text, number.xml, sizeof number.text);
    };
    switch (type) {
    case Serializer::INT_S32:
        both("%d", static_cast<int>(value));
        break;
    case Serializer::INT_U32:
        both("%u", static_cast<unsigned>(value));
        break;
    case Serializer::INT_S64:
        both("%lld", static_cast<long long>(value));
        break;
    case Serializer::INT_U64:
        both("%llu", value);
        break;
    case Serializer::INT_HEX: // hexadecimal in text only
        std::snprintf(number.xml, sizeof number.xml, "%d", static_cast<int>(value));
        std::snprintf(number.text, sizeof number.text, "%x", static_cast<unsigned>(value));
        break;
    }
    return number;
}

/// Whether documents must be XML whatever the texts are.
bool IsXmlStrict() {
    const char* const value = std::getenv("ORFC_XML");
    return value != nullptr && std::strcmp(value, "strict") == 0;
}

const char* Word(bool value) {
    return value ? "true" : "false";
}

} // namespace

VX_UINT32 Serializer::Put(const char* xml, const char* text) const {
    if (!IsFormat()) {
        return RC_INVALID_FORMAT;
    }
    if (const char* output = mFormat == FORMAT_XML ? xml : text) {
        std::fputs(output, stdout);
    }
    return RC_SUCCESS;
}

VX_UINT32 Serializer::PutText(const char* text) const {
    if (!mIsStrict || text == nullptr) {
        return Put(text, text);
    }
    TavuString escaped;
    AppendXmlText(escaped, text);
    return Put(escaped.c_str(), nullptr);
}

VX_UINT32 Serializer::PutNamed(const char* xmlOpen, const char* xmlClose, const char* name,
                               const char* textClose) const {
    Put(xmlOpen, nullptr);
    PutText(name);
    return Put(xmlClose, textClose);
}

VX_UINT32 Serializer::begin_output(eOutputFormat format) {
    mFormat = format;
    mIsStrict = format == FORMAT_XML && IsXmlStrict();
    return Put("<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n", ASTERISKS);
}

VX_UINT32 Serializer::end_output() {
    const VX_UINT32 result = Put("</output>\n", ASTERISKS);
    mFormat = FORMAT_NONE;
    return result;
}

VX_UINT32 Serializer::begin_list_output(eListType type) {
    switch (type) {
    case LIST_STRING:
        return Put("<list type=\"string\">\n", nullptr);
    case LIST_INT:
        return Put("<list type=\"int\">\n", nullptr);
    case LIST_BOOL:
        return Put("<list type=\"bool\">\n", nullptr);
    case LIST_STRUCTURE:
        return Put("<list type=\"structure\">\n", nullptr);
    }
    return RC_INVALID_FORMAT;
}

VX_UINT32 Serializer::end_list_output() {
    return Put("</list>\n", nullptr);
}

template <typename Values, typename TextOfValue>
VX_UINT32 Serializer::PutList(const char* xmlType, const Values& values, TextOfValue textOfValue) const {
    if (!IsFormat()) {
        return RC_INVALID_FORMAT;
    }
    for (const auto& value : values) {
        const TavuString text = textOfValue(value);
        if (mFormat == FORMAT_XML) {
            std::printf("<%s>", xmlType);
            PutText(text.c_str());
            std::printf("</%s>", xmlType);
        } else {
            std::printf("%s,", text.c_str()); // the last value has a comma too
        }
    }
    return Put(nullptr, "\n");
}

VX_UINT32 Serializer::output_list(const std::vector<TavuString>& values) {
    return PutList("string", values, [](const TavuString& value) { return value; });
}

VX_UINT32 Serializer::output_list(const std::vector<int>& values) {
    return PutList("int", values, [](int value) {
        return TavuString(FormatNumber(static_cast<unsigned long long>(value), INT_S32).text);
    });
}

VX_UINT32 Serializer::output_list(const std::vector<bool>& values) {
    return PutList("bool", values, [](bool value) { return TavuString(Word(value)); });
}

VX_UINT32 Serializer::begin_struct_output(const char* name) {
    return PutNamed("<structure typeName=\"", "\">\n", name, ":\n");
}

VX_UINT32 Serializer::end_struct_output() {
    return Put("</structure>\n", nullptr);
}

VX_UINT32 Serializer::begin_field_output(const char* name) {
    return PutNamed("<field name=\"", "\">\n", name, ": ");
}

VX_UINT32 Serializer::end_field_output() {
    return Put("</field>\n", nullptr);
}

VX_UINT32 Serializer::output_field(const char* name, const char* value) {
    begin_field_output(name);
    Put("<string>", nullptr);
    PutText(value);
    return Put("</string></field>\n", "\n");
}

VX_UINT32 Serializer::output_field(const char* name, unsigned long long value, eIntType type) {
    begin_field_output(name);
    if (type > INT_HEX) {
        return end_field_output();
    }
    const NumberTexts number = FormatNumber(value, type);
    Put("<int>", nullptr);
    Put(number.xml, number.text);
    return Put("</int></field>\n", "\n");
}

TavuString Serializer::NumberText(eOutputFormat format, unsigned long long value, eIntType type) {
    const NumberTexts number = FormatNumber(value, type);
    return format == FORMAT_XML ? number.xml : number.text;
}

VX_UINT32 Serializer::output_field(const char* name, bool value) {
    begin_field_output(name);
    Put("<bool>", nullptr);
    Put(Word(value), Word(value));
    return Put("</bool></field>\n", "\n");
}

VX_UINT32 Serializer::output_string(unsigned length, const char* format, ...) {
    if (!IsFormat()) {
        return RC_INVALID_FORMAT;
    }
    const std::size_t size = std::size_t{length} + 1;
    auto* const text = static_cast<char*>(std::calloc(size, 1));
    if (text == nullptr) {
        return RC_NO_MEMORY;
    }
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, size, format, arguments);
    va_end(arguments);
    Put("<string>", nullptr);
    PutText(text);
    std::free(text);
    return Put("</string>", nullptr);
}

VX_UINT32 Serializer::output_text(const char* text) {
    TavuString printed;
    const std::size_t length = std::strlen(text);
    printed.reserve(length);
    for (std::size_t at = 0; at < length; ++at) {
        printed += text[at];
        at += text[at] == '%' && text[at + 1] == '%' ? 1 : 0; // a pair is one percent sign
    }
    return output_string(static_cast<unsigned>(length), "%s", printed.c_str());
}
