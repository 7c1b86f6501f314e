#include "FieldDecoders.h"

#include "BoundedText.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

/// ASCII only, whatever the locale: bytes above 127 are neither letters nor digits.
bool IsAlphanumeric(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

bool IsSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

char ToLower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// 0 to 15, or -1.
int DigitValue(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    const char lower = ToLower(character);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// The first field of the image for which `isWanted(row)` holds, or the end row. The end row and the headings lie
/// behind every image.
template <typename IsWanted> const FieldTable* FindField(const ModuleImage& image, IsWanted isWanted) {
    const FieldTable* row = FieldTableOf(image);
    while (row->Offset != END_OF_FIELDS && !(row->Offset < image.Size() && isWanted(*row))) {
        ++row;
    }
    return row;
}

/// `count` bytes from the field's first on as hexadecimal digits without separators.
void GetHexDigits(const FieldTable* row, const ModuleImage& image, VX_UINT16 count, DecodedText& destination) {
    char* end = destination;
    for (VX_UINT16 index = 0; index < count; ++index) {
        GetByteData(row, image, count, index, end, 3);
        end += 2;
    }
}

template <typename Test>
const char* GetCodeTexts(const FieldTable* row, const ModuleImage& image, const SfpTable* table,
                         DecodedText& destination, bool accumulate, Test test) {
    if (row == nullptr) {
        return nullptr;
    }
    const VX_UINT8 byte = image[row->Offset];
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

int hexToDec(const char* text) {
    if (text == nullptr) {
        return 0;
    }
    VX_UINT32 value = 0;
    VX_UINT32 place = 1;
    for (const char* at = text + std::strlen(text); at != text;) {
        --at;
        if (IsSpace(*at)) {
            continue;
        }
        const int digit = DigitValue(*at);
        if (digit < 0) {
            return 0;
        }
        value += static_cast<VX_UINT32>(digit) * place;
        place *= 16;
    }
    return static_cast<int>(value);
}

int striscmp(const char* first, const char* second) {
    if (first == nullptr || second == nullptr) {
        return -1;
    }
    if (*first == '\0') {
        return -2;
    }
    if (*second == '\0') {
        return -3;
    }
    const std::size_t length = std::strlen(first);
    if (length != std::strlen(second)) {
        return -4;
    }
    const auto isSame = [](char left, char right) { return ToLower(left) == ToLower(right); };
    return std::equal(first, first + length, second, isSame) ? 0 : -1;
}

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

const FieldTable* GetFieldEntry(const ModuleImage& image, const char* name) {
    return FindField(image, [name](const FieldTable& row) { return striscmp(row.Name, name) == 0; });
}

const char* GetFieldData(const ModuleImage& image, const SfpTable* table, eFieldType type, VX_UINT16 offset,
                         DecodedText& destination) {
    const FieldTable* row = FindField(image, [offset](const FieldTable& field) { return field.Offset == offset; });
    if (row->Offset == END_OF_FIELDS) {
        return destination;
    }
    switch (type) {
    case FieldBitCode:
        return GetBitDataCodeTable(row, image, table, destination, true);
    case FieldHex4:
        GetHexDigits(row, image, 4, destination);
        return destination;
    case FieldHex2:
        GetHexDigits(row, image, 2, destination);
        return destination;
    case FieldAscii:
        return GetAsciiData(row, image, destination);
    default:
        return destination;
    }
}

const char* GetAsciiData(const FieldTable* row, const ModuleImage& image, DecodedText& destination) {
    const std::size_t length = std::min<std::size_t>(row->Size, sizeof destination - 1);
    for (std::size_t index = 0; index < length; ++index) {
        destination[index] = static_cast<char>(image[row->Offset + index]);
    }
    destination[length] = '\0';
    if (std::none_of(destination, destination + std::strlen(destination), IsAlphanumeric)) {
        std::strcpy(destination, "0");
    }
    return destination;
}

const char* GetByteData(const FieldTable* row, const ModuleImage& image, VX_UINT16 /*count*/, VX_UINT16 index,
                        char* destination, std::size_t size) {
    std::snprintf(destination, size, "%02x", image[std::size_t{row->Offset} + index]);
    return destination;
}

const char* GetBitDataCodeTable(const FieldTable* row, const ModuleImage& image, const SfpTable* table,
                                DecodedText& destination, bool accumulate) {
    return GetCodeTexts(row, image, table, destination, accumulate,
                        [](VX_UINT8 byte, VX_UINT16 mask) { return (byte & mask) != 0; });
}

const char* GetByteDataCodeTable(const FieldTable* row, const ModuleImage& image, const SfpTable* table,
                                 DecodedText& destination, bool accumulate) {
    return GetCodeTexts(row, image, table, destination, accumulate,
                        [](VX_UINT8 byte, VX_UINT16 value) { return byte == value; });
}

int GetSFPTableBitValue(const ModuleImage& image, const char* name, VX_UINT8 mask) {
    return (image[GetFieldEntry(image, name)->Offset] & mask) != 0 ? 1 : 0;
}

int GetRawData(const FieldTable* row, const ModuleImage& image) {
    return row->Size == 0 ? 0 : image[std::size_t{row->Offset} + row->Size - 1];
}

int getDataValue(const ModuleImage& image, const char* name) {
    return GetRawData(GetFieldEntry(image, name), image);
}
