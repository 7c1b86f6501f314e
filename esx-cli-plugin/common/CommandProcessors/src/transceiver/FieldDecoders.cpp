#include "FieldDecoders.h"

#include "BoundedText.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

/// ASCII only, regardless of the locale: bytes above 127 are neither letters nor digits.
bool IsAlphanumeric(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

template <typename Test>
const char* GetCodeTexts(VX_UINT8 byte, const SfpTable* table, DecodedText& destination, bool accumulate, Test test) {
    if (byte == 0) {
        destination[0] = '\0';
        return destination;
    }
    bool isFirst = true;
    for (; table->Value != END_OF_CODES; ++table) {
        if (test(byte, table->Value)) {
            if (isFirst || !accumulate) {
                destination[0] = '\0';
            }
            strcat_s(destination, sizeof destination, table->Text);
            strcat_s(destination, sizeof destination, ", ");
            isFirst = false;
        }
    }
    return TrimBuf(destination, ',');
}

} // namespace

char* RTrimBuf(char* text, char character) {
    if (text != nullptr && character != '\0') {
        std::size_t length = std::strlen(text);
        while (length > 1 && text[length - 1] == character) {
            text[--length] = '\0';
        }
    }
    return text;
}

char* LTrimBuf(char* text, char character) {
    if (text != nullptr && character != '\0') {
        *std::remove(text, text + std::strlen(text), character) = '\0';
    }
    return text;
}

char* TrimBuf(char* text, char character) {
    return LTrimBuf(RTrimBuf(text, character), character);
}

const FieldTable* FieldTableOf(const ModuleImage& image) {
    return image.IsQsfp() ? FieldIndxTableQSFP : FieldIndxTable;
}

const FieldTable* FieldAt(const ModuleImage& image, std::size_t offset) {
    const FieldTable* row = FieldTableOf(image);
    while (row->Offset != END_OF_FIELDS && !(row->Offset == offset && offset < image.size())) {
        ++row;
    }
    return row;
}

const char* GetAsciiData(const FieldTable* row, const ModuleImage& image, DecodedText& destination) {
    const std::string_view text = image.Text(row->Offset, std::min<std::size_t>(row->Size, sizeof destination - 1));
    *std::copy(text.begin(), text.end(), destination) = '\0';
    if (std::none_of(text.begin(), text.end(), IsAlphanumeric)) {
        std::strcpy(destination, "0");
    }
    return destination;
}

const char* GetBitDataCodeTable(VX_UINT8 byte, const SfpTable* table, DecodedText& destination, bool accumulate) {
    return GetCodeTexts(byte, table, destination, accumulate,
                        [](VX_UINT8 value, VX_UINT16 mask) { return (value & mask) != 0; });
}

const char* GetByteDataCodeTable(VX_UINT8 byte, const SfpTable* table, DecodedText& destination, bool accumulate) {
    return GetCodeTexts(byte, table, destination, accumulate,
                        [](VX_UINT8 value, VX_UINT16 code) { return value == code; });
}
