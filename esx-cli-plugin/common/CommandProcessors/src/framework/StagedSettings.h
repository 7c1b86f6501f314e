/// @file
/// Settings on their way between runs. Each run is a process of its own, so a change that takes several
/// commands travels through a cache file of the port: `setFile` merges settings into it, `set` lays it over a
/// fresh read, writes the adapter once and deletes it.
#pragma once

#include "CmdLineParser.h"
#include "TracedFunction.h"
#include "vexapi.h"

#include <map>
#include <span>

/// Settings by key, in the order in which they are written.
using StagedValues = std::map<TavuString, TavuString>;

/// A port's cache file of one group of settings.
class StagedFile {
public:
    /// Longest value that is read, unless a group has a shorter limit of its own; what is longer is cut there.
    static constexpr unsigned long MAX_VALUE = 512;

    /// The file "/tmp/<group>_<identifier>", with the identifier as the user typed it. Traces name what is done
    /// with it by its settings, such as "BBCR"; the name must outlive the file.
    StagedFile(const char* group, const char* settings, const char* identifier, unsigned long maxValue = MAX_VALUE);
    /// The same for settings that are named like their group.
    StagedFile(const char* group, const char* identifier) : StagedFile(group, group, identifier) {}

    bool IsPresent() const;
    /// The same for a `set`, which traces that nothing is pending.
    bool IsPending() const;
    /// True, with the value stored, when the file has the key.
    bool Read(const char* key, TavuString& value) const;
    /// Writes the settings one by one. 0, or the result code of the first that fails; those before it stay.
    VX_UINT32 Merge(const StagedValues& values) const;
    /// A failure is only traced.
    void Delete() const;

    /// Makes the file of settings that were just read. 0, or the result code of the failure, which it traces.
    VX_UINT32 Create(const StagedValues& values) const;
    /// Lets `update(file)` validate options and merge them. 0, or the result code of the failure, which it traces.
    template <typename Merge> VX_UINT32 Update(Merge update) const {
        const TavuString function = TavuString("Update") + mSettings + "InFile";
        const VX_UINT32 code = [&] {
            const TracedFunction traced(function.c_str());
            return update(*this);
        }();
        if (code != 0) {
            TraceStep(TRACE_DEBUG, "%s failed with uRet=%u", function.c_str(), code);
        }
        return code;
    }

private:
    const char* mSettings;
    TavuString mPath;
    unsigned long mMaxValue;
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

/// Gathers all fields of a record.
template <typename Record>
void CollectSettings(std::span<const StagedKey<Record>> keys, const Record& record, StagedValues& values) {
    for (const StagedKey<Record>& row : keys) {
        values[row.key] = row.write(record);
    }
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

/// The course of `setFile` behind the fresh read: makes the file of what `collect(values)` gathers if there is
/// none, lets `update(file)` validate and merge the command's options, and then `overlay(file)` take what the
/// file holds. A refusal leaves the file with the settings as they were read, or as earlier commands left it.
template <typename Collect, typename Update, typename Overlay>
VX_UINT32 StageSettings(const StagedFile& file, Collect collect, Update update, Overlay overlay) {
    if (!file.IsPresent()) {
        StagedValues values;
        collect(values);
        if (const VX_UINT32 code = file.Create(values); code != 0) {
            return code;
        }
    }
    if (const VX_UINT32 code = file.Update(update); code != 0) {
        return code;
    }
    overlay(file);
    return 0;
}

/// The same for settings that are the fields of one record.
template <typename Record, typename Update>
VX_UINT32 StageSettings(const StagedFile& file, std::span<const StagedKey<Record>> keys, Record& record,
                        Update update) {
    return StageSettings(
        file, [&](StagedValues& values) { CollectSettings(keys, record, values); }, update,
        [&](const StagedFile& staged) { ReadStagedFile(staged, keys, record); });
}
