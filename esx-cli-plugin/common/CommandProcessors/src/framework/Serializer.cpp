#include "Serializer.h"

#include "ResultCodes.h"
#include "XmlText.h"

#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace {

constexpr char ASTERISKS[] = "****************************************************\n";

/// A number formatted by `Serializer::eIntType`.
class NumberCharacters {
public:
    NumberCharacters(Serializer::eOutputFormat format, unsigned long long value, Serializer::eIntType type) {
        switch (type) {
        case Serializer::INT_S32:
            Set(static_cast<int>(value));
            break;
        case Serializer::INT_U32:
            Set(static_cast<unsigned>(value));
            break;
        case Serializer::INT_S64:
            Set(static_cast<long long>(value));
            break;
        case Serializer::INT_U64:
            Set(value);
            break;
        case Serializer::INT_HEX: // hexadecimal in text only
            format == Serializer::FORMAT_XML ? Set(static_cast<int>(value)) : Set(static_cast<unsigned>(value), 16);
            break;
        }
    }
    const char* Get() const { return mCharacters; }

private:
    template <typename Number> void Set(Number value, int base = 10) {
        std::to_chars(mCharacters, std::end(mCharacters), value, base);
    }

    char mCharacters[24] = {};
};

/// Whether documents must be XML whatever the texts are.
bool IsXmlStrict() {
    const char* const value = std::getenv("ORFC_XML");
    return value != nullptr && std::strcmp(value, "strict") == 0;
}

const char* Word(bool value) {
    return value ? "true" : "false";
}

} // namespace

/// What one operation writes: its pieces reach standard output together, since a call for each would take longer than
/// all else.
class Serializer::Pieces {
public:
    explicit Pieces(const Serializer& out) : mFormat(out.mFormat), mIsStrict(out.mIsStrict) {}
    Pieces(const Pieces&) = delete;
    Pieces& operator=(const Pieces&) = delete;
    ~Pieces() { Flush(); }

    /// Writes `xml` or `text`, depending on the format; null writes nothing.
    Pieces& Put(const char* xml, const char* text) {
        if (const char* output = mFormat == FORMAT_XML ? xml : mFormat == FORMAT_TEXT ? text : nullptr) {
            Write(output);
        }
        return *this;
    }
    /// Writes a value or name, escaped if necessary; null writes nothing.
    Pieces& PutText(const char* text) {
        if (!mIsStrict || text == nullptr) {
            return Put(text, text);
        }
        TavuString escaped;
        AppendXmlText(escaped, text);
        return Put(escaped.c_str(), nullptr);
    }
    /// Writes the opening, name and closing for the format.
    Pieces& PutNamed(const char* xmlOpen, const char* xmlClose, const char* name, const char* textClose) {
        return Put(xmlOpen, nullptr).PutText(name).Put(xmlClose, textClose);
    }
    Pieces& PutFieldName(const char* name) { return PutNamed("<field name=\"", "\">\n", name, ": "); }

    VX_UINT32 Result() const {
        return mFormat == FORMAT_XML || mFormat == FORMAT_TEXT ? RC_SUCCESS : RC_INVALID_FORMAT;
    }

private:
    void Write(const char* text) {
        const std::size_t length = std::strlen(text);
        if (length > sizeof mPending - mSize) {
            Flush();
        }
        if (length > sizeof mPending) {
            fwrite_unlocked(text, 1, length, stdout);
            return;
        }
        std::memcpy(mPending + mSize, text, length);
        mSize += length;
    }
    void Flush() {
        if (mSize != 0) {
            fwrite_unlocked(mPending, 1, mSize, stdout);
        }
        mSize = 0;
    }

    const eOutputFormat mFormat;
    const bool mIsStrict;
    std::size_t mSize = 0;
    char mPending[512];
};

VX_UINT32 Serializer::begin_output(eOutputFormat format) {
    mFormat = format;
    mIsStrict = format == FORMAT_XML && IsXmlStrict();
    return Pieces(*this).Put("<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n", ASTERISKS).Result();
}

VX_UINT32 Serializer::end_output() {
    const VX_UINT32 result = Pieces(*this).Put("</output>\n", ASTERISKS).Result();
    mFormat = FORMAT_NONE;
    return result;
}

VX_UINT32 Serializer::begin_list_output(eListType type) {
    switch (type) {
    case LIST_STRING:
        return Pieces(*this).Put("<list type=\"string\">\n", nullptr).Result();
    case LIST_INT:
        return Pieces(*this).Put("<list type=\"int\">\n", nullptr).Result();
    case LIST_BOOL:
        return Pieces(*this).Put("<list type=\"bool\">\n", nullptr).Result();
    case LIST_STRUCTURE:
        return Pieces(*this).Put("<list type=\"structure\">\n", nullptr).Result();
    }
    return RC_INVALID_FORMAT;
}

VX_UINT32 Serializer::end_list_output() {
    return Pieces(*this).Put("</list>\n", nullptr).Result();
}

template <typename Values, typename TextOfValue>
VX_UINT32 Serializer::PutList(const char* xmlOpen, const char* xmlClose, const Values& values,
                              TextOfValue textOfValue) const {
    Pieces pieces(*this);
    for (const auto& value : values) {
        // In text, the last value has a comma too.
        pieces.Put(xmlOpen, nullptr).PutText(TavuString(textOfValue(value)).c_str()).Put(xmlClose, ",");
    }
    return pieces.Put(nullptr, "\n").Result();
}

VX_UINT32 Serializer::output_list(const std::vector<TavuString>& values) {
    return PutList("<string>", "</string>", values, [](const TavuString& value) { return value; });
}

VX_UINT32 Serializer::output_list(const std::vector<int>& values) {
    return PutList("<int>", "</int>", values,
                   [this](int value) { return NumberText(mFormat, static_cast<unsigned long long>(value), INT_S32); });
}

VX_UINT32 Serializer::output_list(const std::vector<bool>& values) {
    return PutList("<bool>", "</bool>", values, Word);
}

VX_UINT32 Serializer::begin_struct_output(const char* name) {
    return Pieces(*this).PutNamed("<structure typeName=\"", "\">\n", name, ":\n").Result();
}

VX_UINT32 Serializer::end_struct_output() {
    return Pieces(*this).Put("</structure>\n", nullptr).Result();
}

VX_UINT32 Serializer::begin_field_output(const char* name) {
    return Pieces(*this).PutFieldName(name).Result();
}

VX_UINT32 Serializer::end_field_output() {
    return Pieces(*this).Put("</field>\n", nullptr).Result();
}

VX_UINT32 Serializer::PutField(const char* name, const char* xmlOpen, const char* value, const char* xmlClose) const {
    return Pieces(*this).PutFieldName(name).Put(xmlOpen, nullptr).PutText(value).Put(xmlClose, "\n").Result();
}

VX_UINT32 Serializer::output_field(const char* name, const char* value) {
    return PutField(name, "<string>", value, "</string></field>\n");
}

VX_UINT32 Serializer::output_field(const char* name, unsigned long long value, eIntType type) {
    if (type > INT_HEX) {
        return Pieces(*this).PutFieldName(name).Put("</field>\n", nullptr).Result();
    }
    return PutField(name, "<int>", NumberCharacters(mFormat, value, type).Get(), "</int></field>\n");
}

TavuString Serializer::NumberText(eOutputFormat format, unsigned long long value, eIntType type) {
    return NumberCharacters(format, value, type).Get();
}

VX_UINT32 Serializer::output_field(const char* name, bool value) {
    return PutField(name, "<bool>", Word(value), "</bool></field>\n");
}

VX_UINT32 Serializer::output_string(unsigned length, const char* format, ...) {
    Pieces pieces(*this);
    if (pieces.Result() != RC_SUCCESS) {
        return pieces.Result();
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
    pieces.Put("<string>", nullptr).PutText(text).Put("</string>", nullptr);
    std::free(text);
    return pieces.Result();
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
