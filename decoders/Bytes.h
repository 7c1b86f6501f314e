/// @file
/// Bounds-checked access to bytes from outside.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace decoders {

/// A non-owning view of bytes. Bytes outside the view read as 0; texts and sub-views end where the view ends. So no
/// offset or length can reach outside it, whatever the bytes themselves say. Callers that must tell a missing byte
/// from a zero check `Holds` first. Offsets and lengths are in bytes and may be of any size.
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

    /// Whether the view contains all of these bytes.
    constexpr bool Holds(std::size_t offset, std::size_t length) const {
        return offset <= size() && length <= size() - offset;
    }

    /// At most `length` bytes at `offset`, fewer at the end of the view.
    constexpr Bytes Sub(std::size_t offset, std::size_t length = REST) const {
        const std::size_t start = std::min(offset, size());
        return mBytes.subspan(start, std::min(length, size() - start));
    }

    constexpr std::uint8_t operator[](std::size_t offset) const {
        return offset < size() ? mBytes[offset] : std::uint8_t{0};
    }

    /// Big-endian numbers, as in modules and Fibre Channel.
    constexpr std::uint16_t BigU16(std::size_t offset) const { return static_cast<std::uint16_t>(Big(offset, 2)); }
    constexpr std::int16_t BigS16(std::size_t offset) const { return static_cast<std::int16_t>(Big(offset, 2)); }
    constexpr std::uint32_t BigU32(std::size_t offset) const { return static_cast<std::uint32_t>(Big(offset, 4)); }
    constexpr std::uint64_t BigU64(std::size_t offset) const { return Big(offset, 8); }
    /// An IEEE 754 single, infinities and NaNs included.
    constexpr float BigSingle(std::size_t offset) const { return std::bit_cast<float>(BigU32(offset)); }

    /// Little-endian numbers, as in PCI.
    constexpr std::uint16_t LittleU16(std::size_t offset) const {
        const Bytes field = Sub(offset, 2);
        return static_cast<std::uint16_t>(field[0] | field[1] << 8);
    }
    constexpr std::int16_t LittleS16(std::size_t offset) const { return static_cast<std::int16_t>(LittleU16(offset)); }

    /// The bytes of a field up to its first zero byte, not necessarily ASCII. Points into the view.
    std::string_view Text(std::size_t offset, std::size_t length) const {
        const Bytes field = Sub(offset, length);
        const auto end = std::find(field.begin(), field.end(), 0);
        return {reinterpret_cast<const char*>(field.mBytes.data()), static_cast<std::size_t>(end - field.begin())};
    }
    /// Same, without the trailing blanks that pad it.
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
        return count < 8 ? number << 8 * count : number; // missing bytes are zero
    }

    std::span<const std::uint8_t> mBytes;
};

} // namespace decoders
