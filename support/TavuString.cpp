#include "TavuString.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr char Lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

} // namespace

int CompareNoCase(const char* left, const char* right) {
    for (;; ++left, ++right) {
        const auto leftByte = static_cast<unsigned char>(Lower(*left));
        const auto rightByte = static_cast<unsigned char>(Lower(*right));
        if (leftByte != rightByte || leftByte == 0) {
            return leftByte - rightByte;
        }
    }
}

TavuString& TavuString::operator=(const char* text) {
    assign(text);
    return *this;
}

void TavuString::Format(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void TavuString::FormatV(const char* format, va_list arguments) {
    char buffer[MAX_FORMATTED + 1];
    buffer[0] = '\0';
    std::vsnprintf(buffer, sizeof buffer, format, arguments);
    assign(buffer);
}

void TavuString::MakeLower() {
    std::transform(begin(), end(), begin(), Lower);
}

TavuString TavuString::Tokenize(const char* delimiters, int& position) const {
    if (position < 0 || static_cast<std::size_t>(position) >= size()) {
        return {};
    }
    const std::size_t start = find_first_not_of(delimiters, static_cast<std::size_t>(position));
    if (start == npos) {
        position = static_cast<int>(size());
        return {};
    }
    const std::size_t end = std::min(find_first_of(delimiters, start), size());
    position = static_cast<int>(end) + 1;
    return substr(start, end - start);
}
