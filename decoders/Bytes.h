/// @file
/// The one way to touch bytes that come from outside.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace decoders {

/// A view of bytes that it doesn't own. A byte outside reads as 0; texts and sub-views end where the view ends. So
/// no offset and no length can lead out of it, whatever the bytes themselves say. A caller to whom a zero and a
/// missing byte differ asks `Holds` first. Offsets and lengths are in bytes, of any size.
class Bytes {
public:
    static constexpr std::size_t REST = SIZE_MAX;

    constexpr Bytes() = default;
    constexpr Bytes(const std::uint8_t* bytes, std::size_t size) : mBytes(bytes, bytes != nullptr ? size : 0) {}
    constexpr Bytes(std::span<const std::uint8_t> bytes) : mBytes(bytes) {}

    constexpr std::size_t size() const { return mBytes.size(); }
    constexpr bool empty() const { return mBytes.empty(); }
    constexpr auto begin() const { return mBytes.begin(); }
    constexpr auto end() const { return mBytes.end(); }

    /// Whether the view has all of these bytes.
    constexpr bool Holds(std::size_t offset, std::size_t length) const {
        return offset <= size() && length <= size() - offset;
    }

    /// The bytes at `offset`, at most `length` of them and at most those that are there.
    constexpr Bytes Sub(std::size_t offset, std::size_t length = REST) const {
        const std::size_t start = std::min(offset, size());
        return mBytes.subspan(start, std::min(length, size() - start));
    }

    constexpr std::uint8_t operator[](std::size_t offset) const {
        return offset < size() ? mBytes[offset] : std::uint8_t{0};
    }

    /// Big-endian numbers, the order of modules and of Fibre Channel.
    constexpr std::uint16_t BigU16(std::size_t offset) const { return static_cast<std::uint16_t>(Big(offset, 2)); }
    constexpr std::int16_t BigS16(std::size_t offset) const { return static_cast<std::int16_t>(Big(offset, 2)); }
    constexpr std::uint32_t BigU32(std::size_t offset) const { return static_cast<std::uint32_t>(Big(offset, 4)); }
    constexpr std::uint64_t BigU64(std::size_t offset) const { return Big(offset, 8); }
    /// An IEEE 754 single, infinities and NaNs included.
    constexpr float BigSingle(std::size_t offset) const { return std::bit_cast<float>(BigU32(offset)); }

    /// Little-endian numbers, the order of PCI.
    constexpr std::uint16_t LittleU16(std::size_t offset) const {
        const Bytes field = Sub(offset, 2);
        return static_cast<std::uint16_t>(field[0] | field[1] << 8);
    }
    constexpr std::int16_t LittleS16(std::size_t offset) const { return static_cast<std::int16_t>(LittleU16(offset)); }

    /// The bytes of a field up to its first zero byte. Points into the view; the bytes may be any, not only ASCII.
    std::string_view Text(std::size_t offset, std::size_t length) const {
        const Bytes field = Sub(offset, length);
        const auto end = std::find(field.begin(), field.end(), 0);
        return {reinterpret_cast<const char*>(field.mBytes.data()), static_cast<std::size_t>(end - field.begin())};
    }
    /// The same without the blanks that pad it on the right.
    std::string_view PaddedText(std::size_t offset, std::size_t length) const {
        const std::string_view text = Text(offset, length);
        return text.substr(0, text.find_last_not_of(' ') + 1);
    }

    /// Sum of the bytes, modulo 256.
    constexpr std::uint8_t Sum() const {
        unsigned sum = 0;
        for (const std::uint8_t byte : mBytes) {
            sum += byte;
        }
        return static_cast<std::uint8_t>(sum);
    }

private:
    constexpr std::uint64_t Big(std::size_t offset, unsigned count) const {
        std::uint64_t number = 0;
        for (const std::uint8_t byte : Sub(offset, count)) {
            number = number << 8 | byte;
            --count;
        }
        return count < 8 ? number << 8 * count : number; // what is missing is zero bytes
    }

    std::span<const std::uint8_t> mBytes;
};

} // namespace decoders
