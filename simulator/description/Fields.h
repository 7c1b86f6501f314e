/// @file
/// Maps record fields to JSON keys. Each record has a table with one row per field, which is used for reading
/// (description, state) and writing (state, journal).
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
    OCTETS,        ///< "aa:bb:...", exactly the size of the field
    OCTETS_UP_TO,  ///< the same or fewer, the rest zero
    TEXT,          ///< text, without a terminator if it fills the array
    RECORD,        ///< one record or an array of records
};

struct Field;
using Table = std::span<const Field>;

/// One row: location and format of a record's field.
struct Field {
    std::string_view key;
    Kind kind;
    std::size_t offset; ///< bytes
    std::size_t size;   ///< in bytes, of one element for `NUMBERS` and `RECORD`, of the whole field otherwise
    std::size_t count;  ///< elements
    Table (*table)();   ///< of a `RECORD`
};

/// The table of a record type. Specialized for each record in Records.cpp.
template <class Record> Table FieldsOf();

/// Deduces the row of a member from its type.
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

/// Overrides the kind of a row.
constexpr Field As(Kind kind, Field field) {
    field.kind = kind;
    return field;
}

/// Keeps the last byte of a text's array for the terminator.
constexpr Field Ended(Field field) {
    --field.size;
    return field;
}

#define SIM_FIELD(record, member) ::sim::Row<decltype(record::member)>(#member, offsetof(record, member))

/// Why an input was refused. `what()` is "PATH: REASON", with PATH a JSON pointer.
class Refusal : public std::runtime_error {
public:
    Refusal(const std::string& path, const std::string& reason);

    /// The same refusal with `path` prepended.
    Refusal Below(const std::string& path) const { return {path + mPath, mReason}; }

private:
    std::string mPath;
    std::string mReason;
};

/// Parses JSON with comments. Throws `std::runtime_error`, also for duplicate keys and deep nesting.
Json ParseJson(const std::string& text);

/// Appends a member with a new key and returns its value. Unlike insertion by the object itself, this never copies
/// the values of other members.
Json& AppendMember(Json& object, std::string key, Json&& value);

/// Reads a JSON object and refuses unknown keys.
class ObjectReader {
public:
    /// Throws `Refusal` if it isn't an object. The object must outlive the reader.
    ObjectReader(const Json& object, std::string path);

    /// Returns the value of a key and marks the key as known; null if it is absent.
    const Json* Take(std::string_view key);
    /// Reads the keys that have a row into the record; other fields are left unchanged.
    void Fields(Table table, void* record);
    /// A number of at most `top`, or `fallback` if the key is absent.
    std::uint64_t Number(std::string_view key, std::uint64_t fallback, std::uint64_t top);
    /// Throws `Refusal` for the first unknown key.
    void Finish() const;
    /// JSON pointer of a member, for messages.
    std::string At(std::string_view key) const;

private:
    const Json& mObject;
    std::string mPath;
    std::vector<bool> mTaken;
};

/// Throws `Refusal` if the value isn't an object.
void RequireObject(const Json& value, const std::string& path);
/// Reads a value into the field of a record. Throws `Refusal`.
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
/// Returns the row with this key, or null.
const Field* FindField(Table table, std::string_view key);

/// The text in an array, which has no terminator if it fills the array.
std::string BoundedText(const char* text, std::size_t size);
/// Copies a text into an array and zeroes the rest. A text that fills the array gets no terminator.
void StoreText(char* array, std::size_t size, std::string_view text);

} // namespace sim
