/// @file
/// Bytes for decoders: made by hand, or read from the files of tests/data.
#pragma once

#include "Bytes.h"

#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

namespace decoders_test {

using Data = std::vector<std::uint8_t>;

/// A copy of the first `size` bytes, in an allocation of its own: a read past its end is caught.
inline Data Cut(const Data& data, std::size_t size) {
    return {data.begin(), data.begin() + static_cast<std::ptrdiff_t>(std::min(size, data.size()))};
}

/// `size` bytes, all zero at first.
struct Page : Data {
    explicit Page(std::size_t count = 256) : Data(count) {}

    Page& Set(std::size_t offset, std::initializer_list<int> bytes) {
        for (const int byte : bytes) {
            at(offset++) = static_cast<std::uint8_t>(byte);
        }
        return *this;
    }
    Page& Set(std::size_t offset, const std::string& text) {
        for (const char character : text) {
            at(offset++) = static_cast<std::uint8_t>(character);
        }
        return *this;
    }
    /// Two bytes, the high one first.
    Page& SetU16(std::size_t offset, unsigned value) {
        return Set(offset, {static_cast<int>(value >> 8 & 0xFF), static_cast<int>(value & 0xFF)});
    }
    Page& SetU32(std::size_t offset, std::uint32_t value) {
        return SetU16(offset, value >> 16).SetU16(offset + 2, value & 0xFFFF);
    }
};

/// The parts of a file, exactly as long as they are there: two digits a byte, and "#" comments, of which some begin a
/// part.
struct File {
    Data first;  ///< address A0h; or lower page and upper page 00h; or the whole
    Data second; ///< address A2h
};
inline File Load(const std::string& path) {
    File parts;
    std::ifstream file(TEST_DATA "/" + path);
    EXPECT_TRUE(file.is_open()) << path;
    Data* part = &parts.first;
    for (std::string line; std::getline(file, line);) {
        if (line == "# A2h") {
            part = &parts.second;
        } else if (!line.starts_with("#")) {
            std::istringstream words(line);
            for (std::string word; words >> word;) {
                part->push_back(static_cast<std::uint8_t>(std::stoul(word, nullptr, 16)));
            }
        }
    }
    return parts;
}
inline File LoadModule(const std::string& name) {
    return Load("transceivers/" + name + ".hex");
}

} // namespace decoders_test
