#include "BoundedText.h"

#include <algorithm>

int strcat_s(char* dest, unsigned long size, const char* text) {
    if (dest == nullptr || text == nullptr || size == 0) {
        return COPY_INVALID;
    }
    const std::size_t used = strnlen(dest, size);
    if (used == size) {
        return COPY_INVALID;
    }
    const std::size_t added = std::strlen(text);
    if (added >= size - used) {
        return COPY_TOO_LONG;
    }
    std::memcpy(dest + used, text, added + 1);
    return COPY_DONE;
}

int strncpy_s(char* dest, unsigned long size, const char* source, unsigned long count) {
    if (dest == nullptr || source == nullptr || size == 0) {
        return COPY_INVALID;
    }
    const std::size_t limit = count == COPY_WHAT_FITS ? size - 1 : count;
    const std::size_t length = strnlen(source, limit);
    if (length >= size) {
        dest[0] = '\0';
        return COPY_INVALID;
    }
    std::memcpy(dest, source, length);
    dest[length] = '\0';
    return COPY_DONE;
}
