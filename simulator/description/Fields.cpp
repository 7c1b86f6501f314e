#include "description/Fields.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>
#include <limits>
#include <nlohmann/json.hpp>

namespace sim {
namespace {

/// A count for messages: "6 entries".
std::string CountText(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what;
}

std::uint64_t TopOf(std::size_t size) {
    return size >= 8 ? std::numeric_limits<std::uint64_t>::max() : (std::uint64_t{1} << (8 * size)) - 1;
}

void StoreNumber(std::uint8_t* at, std::size_t size, std::uint64_t value, bool bigEndian) {
    for (std::size_t i = 0; i < size; ++i) {
        at[bigEndian ? size - 1 - i : i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

std::uint64_t LoadNumber(const std::uint8_t* at, std::size_t size, bool bigEndian) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        value |= std::uint64_t{at[bigEndian ? size - 1 - i : i]} << (8 * i);
    }
    return value;
}

std::int64_t ReadSigned(const Json& value, const std::string& path, std::size_t size) {
    const std::int64_t top = static_cast<std::int64_t>(TopOf(size) >> 1);
    const std::int64_t bottom = -top - 1;
    if (!value.is_number_integer()) {
        throw Refusal(path, "must be a whole number");
    }
    if (value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(top)) {
        throw Refusal(path, "must be " + std::to_string(bottom) + " to " + std::to_string(top));
    }
    const auto number = value.get<std::int64_t>();
    if (number < bottom || number > top) {
        throw Refusal(path, "must be " + std::to_string(bottom) + " to " + std::to_string(top));
    }
    return number;
}

/// A text, or `{"bytes": "aa:bb"}` for one that isn't UTF-8.
std::string ReadText(const Json& value, const std::string& path) {
    if (value.is_string()) {
        return value.get<std::string>();
    }
    if (value.is_object()) {
        ObjectReader reader(value, path);
        const Json* raw = reader.Take("bytes");
        reader.Finish();
        if (raw != nullptr) {
            const Bytes bytes = ReadBytes(*raw, path + "/bytes");
            return {bytes.begin(), bytes.end()};
        }
    }
    throw Refusal(path, "must be a text");
}

bool IsUtf8(const std::string& text) {
    try {
        static_cast<void>(Json(text).dump());
        return true;
    } catch (const Json::exception&) {
        return false;
    }
}

void ReadElements(const Json& value, const std::string& path, const Field& field, std::uint8_t* at) {
    if (!value.is_array()) {
        throw Refusal(path, "must be a list");
    }
    if (value.size() > field.count) {
        throw Refusal(path, "has more than " + CountText(field.count, "entries"));
    }
    for (std::size_t i = 0; i < value.size(); ++i) {
        const std::string element = path + "/" + std::to_string(i);
        if (field.kind == Kind::NUMBERS) {
            StoreNumber(at + i * field.size, field.size, ReadNumber(value[i], element, TopOf(field.size)), false);
        } else {
            ObjectReader reader(value[i], element);
            reader.Fields(field.table(), at + i * field.size);
            reader.Finish();
        }
    }
}

/// Builds a value from parser events. Refuses deep nesting and duplicate keys.
class JsonBuilder : public nlohmann::json_sax<Json> {
public:
    Json Take() { return std::move(mRoot); }

    bool null() override { return Add(nullptr); }
    bool boolean(bool value) override { return Add(value); }
    bool number_integer(number_integer_t value) override { return Add(value); }
    bool number_unsigned(number_unsigned_t value) override { return Add(value); }
    bool number_float(number_float_t value, const string_t& /*text*/) override { return Add(value); }
    bool string(string_t& value) override { return Add(std::move(value)); }
    bool binary(binary_t& value) override { return Add(std::move(value)); }
    bool start_object(std::size_t /*size*/) override { return Open(Json::object()); }
    bool start_array(std::size_t /*size*/) override { return Open(Json::array()); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }

    bool key(string_t& value) override {
        CheckDepth();
        if (mContainers.back()->contains(value)) {
            throw std::runtime_error("/: the key \"" + value + "\" stands twice in one object");
        }
        mKey = std::move(value);
        return true;
    }

    bool parse_error(std::size_t /*position*/, const std::string& /*token*/, const Json::exception& error) override {
        // Drop the prefix "[json.exception...] ".
        const std::string what = error.what();
        throw std::runtime_error("/: is no JSON: " + what.substr(what.find("] ") + 2));
    }

private:
    void CheckDepth() const {
        constexpr std::size_t DEEPEST = 64; // bounds the recursion over values
        if (mContainers.size() > DEEPEST) {
            throw std::runtime_error("/: is nested more than " + CountText(DEEPEST, "deep"));
        }
    }
    Json& Place(Json&& value) {
        CheckDepth();
        if (mContainers.empty()) {
            return mRoot = std::move(value);
        }
        Json& container = *mContainers.back();
        return container.is_object() ? AppendMember(container, std::move(mKey), std::move(value))
                                     : container.emplace_back(std::move(value));
    }
    bool Add(Json&& value) {
        Place(std::move(value));
        return true;
    }
    bool Open(Json&& container) {
        mContainers.push_back(&Place(std::move(container)));
        return true;
    }
    bool Close() {
        mContainers.pop_back();
        return true;
    }

    Json mRoot;
    std::string mKey;               ///< of the next value
    std::vector<Json*> mContainers; ///< open ones, outermost first; only the last one grows
};

} // namespace

static_assert(std::endian::native == std::endian::little, "records are stored in the order of a little-endian host");

Json ParseJson(const std::string& text) {
    JsonBuilder builder;
    Json::sax_parse(text, &builder, Json::input_format_t::json, true, true);
    return builder.Take();
}

Json& AppendMember(Json& object, std::string key, Json&& value) {
    auto& members = object.get_ref<Json::object_t&>();
    if (members.size() == members.capacity()) {
        // Members have const keys, so the vector would copy them, values included, when it grows.
        Json::object_t grown;
        grown.reserve(2 * members.size() + 8);
        for (auto& [name, held] : members) {
            grown.emplace_back(name, std::move(held));
        }
        members = std::move(grown);
    }
    return members.emplace_back(std::move(key), std::move(value)).second;
}

Refusal::Refusal(const std::string& path, const std::string& reason)
    : std::runtime_error((path.empty() ? std::string("/") : path) + ": " + reason), mPath(path), mReason(reason) {}

std::uint64_t ReadNumber(const Json& value, const std::string& path, std::uint64_t top) {
    std::uint64_t number = 0;
    if (value.is_number_unsigned()) {
        number = value.get<std::uint64_t>();
    } else if (value.is_number()) {
        throw Refusal(path, value.is_number_integer() ? "must not be negative" : "must be a whole number");
    } else if (value.is_string()) {
        const auto& text = value.get_ref<const std::string&>();
        const char* end = text.data() + text.size();
        const bool prefixed = text.starts_with("0x");
        const auto parsed = std::from_chars(text.data() + (prefixed ? 2 : 0), end, number, 16);
        if (!prefixed || parsed.ec != std::errc() || parsed.ptr != end) {
            throw Refusal(path, "must be a number or a text \"0x...\"");
        }
    } else {
        throw Refusal(path, "must be a number or a text \"0x...\"");
    }
    if (number > top) {
        throw Refusal(path, std::to_string(number) + " is above " + std::to_string(top));
    }
    return number;
}

Bytes ReadBytes(const Json& value, const std::string& path) {
    if (!value.is_string()) {
        throw Refusal(path, "must be a text of bytes \"aa:bb:...\"");
    }
    const auto& text = value.get_ref<const std::string&>();
    if (!text.empty() && text.size() % 3 != 2) {
        throw Refusal(path, "is no text of bytes \"aa:bb:...\"");
    }
    Bytes bytes;
    for (std::size_t i = 0; i < text.size(); i += 3) {
        std::uint8_t byte = 0;
        const char* at = text.data() + i;
        const auto parsed = std::from_chars(at, at + 2, byte, 16);
        if (parsed.ec != std::errc() || parsed.ptr != at + 2 || (i + 2 < text.size() && at[2] != ':')) {
            throw Refusal(path, "is no text of bytes \"aa:bb:...\"");
        }
        bytes.push_back(byte);
    }
    return bytes;
}

void ReadField(const Json& value, const std::string& path, const Field& field, void* record) {
    auto* at = static_cast<std::uint8_t*>(record) + field.offset;
    switch (field.kind) {
    case Kind::NUMBER:
    case Kind::NETWORK_ORDER:
        StoreNumber(at, field.size, ReadNumber(value, path, TopOf(field.size)), field.kind == Kind::NETWORK_ORDER);
        break;
    case Kind::SIGNED:
        StoreNumber(at, field.size, static_cast<std::uint64_t>(ReadSigned(value, path, field.size)), false);
        break;
    case Kind::OCTETS:
    case Kind::OCTETS_UP_TO: {
        const Bytes bytes = ReadBytes(value, path);
        if (field.kind == Kind::OCTETS ? bytes.size() != field.size : bytes.size() > field.size) {
            throw Refusal(path, "has " + CountText(bytes.size(), "bytes instead of ") +
                                    (field.kind == Kind::OCTETS ? "" : "at most ") + std::to_string(field.size));
        }
        std::memset(at, 0, field.size);
        std::copy(bytes.begin(), bytes.end(), at);
        break;
    }
    case Kind::TEXT: {
        const std::string text = ReadText(value, path);
        if (text.size() > field.size) {
            throw Refusal(path, "is longer than " + CountText(field.size, "bytes"));
        }
        StoreText(reinterpret_cast<char*>(at), field.size, text);
        break;
    }
    case Kind::RECORD:
        if (field.count == 1) {
            ObjectReader reader(value, path);
            reader.Fields(field.table(), at);
            reader.Finish();
            break;
        }
        [[fallthrough]];
    case Kind::NUMBERS:
        ReadElements(value, path, field, at);
        break;
    }
}

Json WriteField(const Field& field, const void* record) {
    const auto* at = static_cast<const std::uint8_t*>(record) + field.offset;
    switch (field.kind) {
    case Kind::NUMBER:
    case Kind::NETWORK_ORDER:
        return LoadNumber(at, field.size, field.kind == Kind::NETWORK_ORDER);
    case Kind::SIGNED: {
        // Shifting left and right again extends the sign to 64 bits.
        const unsigned unused = static_cast<unsigned>(64 - 8 * field.size);
        return static_cast<std::int64_t>(LoadNumber(at, field.size, false) << unused) >> unused;
    }
    case Kind::OCTETS:
    case Kind::OCTETS_UP_TO:
        return BytesText({at, field.size});
    case Kind::TEXT: {
        std::string text = BoundedText(reinterpret_cast<const char*>(at), field.size);
        if (IsUtf8(text)) {
            return text;
        }
        return Json{{"bytes", BytesText({at, text.size()})}};
    }
    case Kind::RECORD:
        if (field.count == 1) {
            return WriteRecord(field.table(), at);
        }
        [[fallthrough]];
    case Kind::NUMBERS: {
        Json list = Json::array();
        for (std::size_t i = 0; i < field.count; ++i) {
            const std::uint8_t* element = at + i * field.size;
            list.push_back(field.kind == Kind::RECORD ? WriteRecord(field.table(), element)
                                                      : Json(LoadNumber(element, field.size, false)));
        }
        return list;
    }
    }
    return nullptr;
}

Json WriteRecord(Table table, const void* record) {
    Json object = Json::object();
    for (const Field& field : table) {
        AppendMember(object, std::string(field.key), WriteField(field, record));
    }
    return object;
}

std::string BytesText(std::span<const std::uint8_t> bytes) {
    constexpr char DIGITS[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) {
            text += ':';
        }
        text += DIGITS[byte >> 4];
        text += DIGITS[byte & 15];
    }
    return text;
}

const Field* FindField(Table table, std::string_view key) {
    const auto found = std::find_if(table.begin(), table.end(), [&](const Field& field) { return field.key == key; });
    return found == table.end() ? nullptr : &*found;
}

std::string BoundedText(const char* text, std::size_t size) {
    return {text, strnlen(text, size)};
}

void StoreText(char* array, std::size_t size, std::string_view text) {
    std::memset(array, 0, size);
    std::memcpy(array, text.data(), std::min(size, text.size()));
}

void RequireObject(const Json& value, const std::string& path) {
    if (!value.is_object()) {
        throw Refusal(path, "must be an object");
    }
}

ObjectReader::ObjectReader(const Json& object, std::string path)
    : mObject(object), mPath(std::move(path)), mTaken(object.size(), false) {
    RequireObject(object, mPath);
}

const Json* ObjectReader::Take(std::string_view key) {
    std::size_t index = 0;
    for (auto member = mObject.begin(); member != mObject.end(); ++member, ++index) {
        if (member.key() == key) {
            mTaken[index] = true;
            return &member.value();
        }
    }
    return nullptr;
}

void ObjectReader::Fields(Table table, void* record) {
    std::size_t index = 0;
    for (auto member = mObject.begin(); member != mObject.end(); ++member, ++index) {
        if (const Field* field = FindField(table, member.key())) {
            mTaken[index] = true;
            try {
                ReadField(member.value(), "", *field, record);
            } catch (const Refusal& refusal) { // the path is only built for errors, since it costs as much as the value
                throw refusal.Below(At(field->key));
            }
        }
    }
}

std::uint64_t ObjectReader::Number(std::string_view key, std::uint64_t fallback, std::uint64_t top) {
    const Json* value = Take(key);
    return value == nullptr ? fallback : ReadNumber(*value, At(key), top);
}

void ObjectReader::Finish() const {
    std::size_t index = 0;
    for (auto member = mObject.begin(); member != mObject.end(); ++member, ++index) {
        if (!mTaken[index]) {
            throw Refusal(At(member.key()), "unknown key");
        }
    }
}

std::string ObjectReader::At(std::string_view key) const {
    std::string path = mPath + "/";
    for (const char c : key) { // a JSON pointer escapes "~" and "/"
        if (c == '~' || c == '/') {
            path += c == '~' ? "~0" : "~1";
        } else {
            path += c;
        }
    }
    return path;
}

} // namespace sim
