/// @file
/// Binds record fields to JSON keys. A record is described by a table with one row per field; reading
/// (description, state) and writing (state, journal) walk the same table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace sim {

using Json = nlohmann::ordered_json;
using Bytes = std::vector<std::uint8_t>;

enum class Kind {
    NUMBER,        ///< unsigned, 8 to 64 bits, host order: a number or "0x..."
    SIGNED,        ///< signed, 8 to 64 bits, host order
    NETWORK_ORDER, ///< unsigned, stored big-endian; written as the plain number
    NUMBERS,       ///< array of unsigned numbers: a list
    OCTETS,        ///< "aa:bb:...", exactly as many as the field has
    OCTETS_UP_TO,  ///< the same with fewer bytes allowed, the rest is zero
    TEXT,          ///< text that may fill its array, then without terminator
    RECORD,        ///< one record or an array of records
};

struct Field;
using Table = std::span<const Field>;

/// One row: where a field of a record lies and how it is written.
struct Field {
    std::string_view key;
    Kind kind;
    std::size_t offset; ///< bytes
    std::size_t size;   ///< bytes of one element for `Numbers` and `Record`, of the whole otherwise
    std::size_t count;  ///< elements
    Table (*table)();   ///< of `Record`
};

/// The table of a record type. One specialisation for each record, in Records.cpp.
template <class Record> Table FieldsOf();

/// Makes the row of a member from its type.
template <class Member> constexpr Field Row(std::string_view key, std::size_t offset) {
    using Element = std::remove_all_extents_t<Member>;
    constexpr std::size_t COUNT = std::is_array_v<Member> ? std::extent_v<Member> : 1;
    if constexpr (std::is_class_v<Element>) {
        return {key, Kind::RECORD, offset, sizeof(Element), COUNT, &FieldsOf<Element>};
    } else if constexpr (std::is_array_v<Member>) {
        constexpr Kind KIND = std::is_same_v<Element, char>           ? Kind::TEXT
                              : std::is_same_v<Element, std::uint8_t> ? Kind::OCTETS
                                                                      : Kind::NUMBERS;
        if constexpr (KIND == Kind::NUMBERS) {
            return {key, KIND, offset, sizeof(Element), COUNT, nullptr};
        } else {
            return {key, KIND, offset, sizeof(Member), 1, nullptr};
        }
    } else {
        return {key, std::is_signed_v<Member> ? Kind::SIGNED : Kind::NUMBER, offset, sizeof(Member), 1, nullptr};
    }
}

/// The same row with another kind than the member's type tells.
constexpr Field As(Kind kind, Field field) {
    field.kind = kind;
    return field;
}

#define SIM_FIELD(record, member) ::sim::Row<decltype(record::member)>(#member, offsetof(record, member))

/// Why an input was refused: `what()` is "path: reason", the path a JSON pointer.
class Refusal : public std::runtime_error {
public:
    Refusal(const std::string& path, const std::string& reason);

    /// The same refusal, its path continuing `path`.
    Refusal Below(const std::string& path) const { return {path + mPath, mReason}; }

private:
    std::string mPath;
    std::string mReason;
};

/// Parses JSON, comments allowed, and refuses what parsers pass over: a key that stands twice in an object.
/// Throws `std::runtime_error`.
Json ParseJson(const std::string& text);

/// Appends a member whose key the object lacks, and gives its value. Unlike the object's own insertion, this never
/// copies the values of other members.
Json& AppendMember(Json& object, std::string key, Json&& value);

/// Reads one JSON object and refuses what it doesn't know.
class ObjectReader {
public:
    /// Refuses anything but an object. The object must outlive the reader.
    ObjectReader(const Json& object, std::string path);

    /// The value of a key, which becomes a known one, or null when it is absent.
    const Json* Take(std::string_view key);
    /// Reads the rows whose keys are present into the record; the other fields keep what they hold.
    void Fields(Table table, void* record);
    /// A number of at most `top`; `fallback` when the key is absent.
    std::uint64_t Number(std::string_view key, std::uint64_t fallback, std::uint64_t top);
    /// Refuses the first key that nobody took.
    void Finish() const;
    /// The path of a member, for messages.
    std::string At(std::string_view key) const;

private:
    const Json& mObject;
    std::string mPath;
    std::vector<bool> mTaken;
};

/// Refuses anything but an object.
void RequireObject(const Json& value, const std::string& path);
/// Reads one value into the field of a record. Throws `Refusal`.
void ReadField(const Json& value, const std::string& path, const Field& field, void* record);
/// Reads a number or "0x..." text of at most `top`. Throws `Refusal`.
std::uint64_t ReadNumber(const Json& value, const std::string& path, std::uint64_t top);
/// Reads "aa:bb:...". Throws `Refusal`.
Bytes ReadBytes(const Json& value, const std::string& path);

/// The value of one field as JSON.
Json WriteField(const Field& field, const void* record);
/// All fields of a record as a JSON object.
Json WriteRecord(Table table, const void* record);
/// "aa:bb:..."
std::string BytesText(std::span<const std::uint8_t> bytes);
/// The row with this key, or null.
const Field* FindField(Table table, std::string_view key);

/// The text of an array that may lack its terminator.
std::string BoundedText(const char* text, std::size_t size);
/// Copies a text into an array; the rest is zeroed. A text that fills it has no terminator.
void StoreText(char* array, std::size_t size, std::string_view text);

} // namespace sim
