/// @file
/// The files of a description: its text and its blobs.
#pragma once

#include "host/Host.h"

#include <map>
#include <span>
#include <string>
#include <string_view>

namespace sim {

/// A file that is built into the library.
struct EmbeddedFile {
    std::string_view name;
    std::string_view content;
};

/// The lab host's description and blobs, by name.
std::span<const EmbeddedFile> LabFiles();

/// Reads the files of one description from disk or from the library, each once.
class Files {
public:
    /// `path` is the description; empty: the lab host.
    explicit Files(std::string path);

    /// The description's name for messages.
    const std::string& Name() const { return mName; }
    /// The text of the description. Throws `std::runtime_error` with the reason.
    const std::string& Description();
    /// A blob by its path relative to the description. Files with the suffix ".hex" are parsed by `ParseHex`, others
    /// are read verbatim. Throws `std::runtime_error` with the reason.
    const Bytes& Blob(const std::string& name);
    /// Hash of everything read so far.
    std::string Digest() const;

private:
    std::string Load(const std::string& name);

    std::string mDirectory; ///< empty for the lab host
    std::string mName;
    std::string mFile;
    std::string mText;
    std::map<std::string, Bytes> mBlobs;
    std::uint64_t mHash;
};

/// Parses bytes of two hexadecimal digits, separated by white space. "#" starts a comment. The comments "# A0h",
/// "# A2h", "# lower page" and "# upper page" set the position to 0, 256, 0 and 128. Throws `std::runtime_error` with
/// the reason.
Bytes ParseHex(std::string_view text);
/// Reads a regular file of at most 64 MB. Throws `std::runtime_error` with the reason.
std::string ReadFile(const std::string& path);
/// 64-bit FNV-1a.
std::uint64_t HashOf(std::string_view text, std::uint64_t start = 14695981039346656037ULL);
/// A hash as 16 hexadecimal digits.
std::string HashText(std::uint64_t hash);

} // namespace sim
