/// @file
/// The files of a description: its text and the blobs that it names.
#pragma once

#include "host/Host.h"

#include <map>
#include <span>
#include <string>
#include <string_view>

namespace sim {

/// One file built into the library.
struct EmbeddedFile {
    std::string_view name;
    std::string_view content;
};

/// The lab host's description and blobs, by name.
std::span<const EmbeddedFile> labFiles();

/// Reads the files of one description, each once, from disk or from the library.
class Files {
public:
    /// The files of a description at `path`; the lab host's when `path` is empty.
    explicit Files(std::string path);

    /// What messages call the description.
    const std::string& name() const { return name_; }
    /// The description's own text. Throws `std::runtime_error` with the reason.
    const std::string& description();
    /// A blob, named relative to the description. Names that end in ".hex" hold bytes as text (see
    /// `parseHex`), all others are taken as they are. Throws `std::runtime_error` with the reason.
    const Bytes& blob(const std::string& name);
    /// Hash of everything read so far.
    std::string digest() const;

private:
    std::string load(const std::string& name);

    std::string directory_; ///< empty for the lab host
    std::string name_;
    std::string file_;
    std::string text_;
    std::map<std::string, Bytes> blobs_;
    std::uint64_t hash_;
};

/// Bytes as two hexadecimal digits each, separated by blanks or line ends. "#" begins a comment. The
/// comments "# A0h", "# A2h", "# lower page" and "# upper page" set the position to 0, 256, 0 and 128.
/// Throws `std::runtime_error` with the reason.
Bytes parseHex(std::string_view text);
/// Reads a regular file of at most 64 MB. Throws `std::runtime_error` with the reason.
std::string readFile(const std::string& path);
/// 64-bit FNV-1a.
std::uint64_t hashOf(std::string_view text, std::uint64_t start = 14695981039346656037ULL);
/// A hash as 16 hexadecimal digits.
std::string hashText(std::uint64_t hash);

} // namespace sim
