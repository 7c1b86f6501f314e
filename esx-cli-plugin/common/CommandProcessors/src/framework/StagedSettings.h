/// @file
/// Settings on their way between runs. Each run is a process of its own, so a change that takes several
/// commands travels through a cache file of the port: `setFile` merges settings into it, `set` lays it over a
/// fresh read, writes the adapter once and deletes it.
#pragma once

#include "TavuString.h"
#include "vexapi.h"

#include <map>
#include <span>

/// Settings by key, in the order in which they are written.
using StagedValues = std::map<TavuString, TavuString>;

/// The number in a text as options and cache files take it: base 10, the low 32 bits. A text that is no
/// number reads as 0, and "-1" as the largest one: users rely on it, and no stricter parse is wanted.
VX_UINT32 ParseNumber(const char* text);

/// A port's cache file of one group of settings.
class StagedFile {
public:
    /// The file "/tmp/<group>_<identifier>", with the identifier as the user typed it.
    StagedFile(const char* group, const char* identifier);

    bool IsPresent() const;
    /// True, with the value stored, when the file has the key.
    bool Read(const char* key, TavuString& value) const;
    /// Writes the settings one by one. 0, or the result code of the first that fails; those before it stay.
    VX_UINT32 Merge(const StagedValues& values) const;
    /// A failure is only traced.
    void Delete() const;

private:
    TavuString mPath;
};

/// A field of a record in a cache file, as a row.
template <typename Record> struct StagedKey {
    const char* key;
    TavuString (*write)(const Record& record);
    /// Stores the value of a text; one that is out of range changes nothing.
    void (*read)(Record& record, const char* text);
};

/// A number in a field of any width. `accepts` tells which numbers are taken when read; all others are
/// dropped without a word, so that a damaged file can't make an illegal record.
template <typename Record, auto field, auto accepts> constexpr StagedKey<Record> NumberKey(const char* key) {
    return {key,
            [](const Record& record) {
                TavuString text;
                text.Format("%d", static_cast<int>(record.*field));
                return text;
            },
            [](Record& record, const char* text) {
                const VX_UINT32 number = ParseNumber(text);
                if (accepts(number)) {
                    record.*field = static_cast<std::remove_reference_t<decltype(record.*field)>>(number);
                }
            }};
}

/// Accepts the numbers below `limit`.
template <VX_UINT32 limit> bool IsBelow(VX_UINT32 number) {
    return number < limit;
}

/// Makes a cache file of all fields of a record.
template <typename Record>
VX_UINT32 CreateStagedFile(const StagedFile& file, std::span<const StagedKey<Record>> keys, const Record& record) {
    StagedValues values;
    for (const StagedKey<Record>& row : keys) {
        values[row.key] = row.write(record);
    }
    return file.Merge(values);
}

/// Lays a cache file over a record. A key that the file doesn't have leaves its field as it is.
template <typename Record>
void ReadStagedFile(const StagedFile& file, std::span<const StagedKey<Record>> keys, Record& record) {
    for (const StagedKey<Record>& row : keys) {
        TavuString text;
        if (file.Read(row.key, text)) {
            row.read(record, text.c_str());
        }
    }
}

/// The course of `setFile` behind the fresh read: makes the file of the record if there is none, lets
/// `update(file)` validate and merge the command's options, and lays the file over the record. A refusal
/// leaves the file with the record as it was read, or as earlier commands left it.
template <typename Record, typename Update>
VX_UINT32 StageSettings(const StagedFile& file, std::span<const StagedKey<Record>> keys, Record& record,
                        Update update) {
    VX_UINT32 code = file.IsPresent() ? 0 : CreateStagedFile(file, keys, record);
    if (code == 0) {
        code = update(file);
    }
    if (code == 0) {
        ReadStagedFile(file, keys, record);
    }
    return code;
}
