#include "VitalProductData.h"

namespace decoders {

namespace {

constexpr std::size_t KEYWORD_SIZE = 2;
constexpr std::string_view CHECKSUM_KEYWORD = "RV";

std::string StringOf(Bytes bytes) {
    return {bytes.begin(), bytes.end()};
}

/// Reads the keywords of a resource at `start`. Returns false if they don't fill it exactly.
bool ReadKeywords(Bytes data, std::size_t start, std::size_t length, std::vector<VpdKeyword>& keywords,
                  VpdChecksum* checksum) {
    const Bytes resource = data.Sub(start, length);
    std::size_t at = 0;
    while (resource.Holds(at, vpd::HEADER_SIZE)) {
        const std::size_t value = at + vpd::HEADER_SIZE;
        const std::size_t size = resource[at + KEYWORD_SIZE];
        keywords.push_back({StringOf(resource.Sub(at, KEYWORD_SIZE)), StringOf(resource.Sub(value, size))});
        if (checksum != nullptr && *checksum == VpdChecksum::ABSENT && keywords.back().name == CHECKSUM_KEYWORD) {
            const bool isValid = size != 0 && resource.Holds(value, 1) && data.Sub(0, start + value + 1).Sum() == 0;
            *checksum = isValid ? VpdChecksum::VALID : VpdChecksum::INVALID;
        }
        if (!resource.Holds(value, size)) {
            return false;
        }
        at = value + size;
    }
    return at == resource.size();
}

} // namespace

std::string_view VpdKeyword::Text() const {
    const Bytes bytes(reinterpret_cast<const std::uint8_t*>(value.data()), value.size());
    return bytes.PaddedText(0, Bytes::REST);
}

const VpdKeyword* VitalProductData::Find(std::string_view name) const {
    for (const std::vector<VpdKeyword>* keywords : {&readOnly, &readWrite}) {
        for (const VpdKeyword& keyword : *keywords) {
            if (keyword.name == name) {
                return &keyword;
            }
        }
    }
    return nullptr;
}

VitalProductData DecodeVpd(Bytes data) {
    constexpr unsigned LARGE = 0x80;
    constexpr unsigned SMALL_LENGTH = 0x07; // the tag is in the bits above
    VitalProductData result;
    bool isSound = true;
    std::size_t at = 0;
    while (at < data.size()) {
        const unsigned tag = data[at];
        if ((tag & LARGE) == 0) {
            if ((tag & ~SMALL_LENGTH) == vpd::END) {
                result.isWhole = isSound && data.Holds(at + 1, tag & SMALL_LENGTH);
                return result;
            }
            if (tag == 0) {
                return result;
            }
            at += 1 + (tag & SMALL_LENGTH);
            continue;
        }
        const std::size_t length = data.LittleU16(at + 1);
        const std::size_t start = at + vpd::HEADER_SIZE;
        switch (tag) {
        case vpd::IDENTIFIER_STRING:
            if (!result.identifier) {
                result.identifier = data.PaddedText(start, length);
            }
            break;
        case vpd::READ_ONLY:
            isSound = ReadKeywords(data, start, length, result.readOnly, &result.checksum) && isSound;
            break;
        case vpd::READ_WRITE:
            isSound = ReadKeywords(data, start, length, result.readWrite, nullptr) && isSound;
            break;
        default:
            break;
        }
        at = start + length;
    }
    return result;
}

} // namespace decoders
