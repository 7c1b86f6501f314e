/// @file
/// Settings on their way between runs. Each run is a process of its own, so a change that takes several
/// commands travels through a cache file of the port: `setFile` merges settings into it, `set` lays it over a
/// fresh read, writes the adapter once, shows what was written and deletes the file.
#pragma once

#include "CmdLineParser.h"
#include "ResultCodes.h"
#include "TracedFunction.h"
#include "vexapi.h"

#include <map>
#include <optional>
#include <span>

/// Settings by key, in the order in which they are written.
using StagedValues = std::map<TavuString, TavuString>;

/// A group of settings. The functions are those that traces name.
struct StagedGroup {
    const char* name; ///< begins the names of its cache files
    const char* createFunction;
    const char* updateFunction;
    const char* readFunction;
    /// Longest value that is read; what is longer is cut there.
    unsigned long maxValue = 512;
};

/// A port's cache file of one group of settings.
class StagedFile {
public:
    /// The file "/tmp/<group>_<identifier>", with the identifier as the user typed it.
    StagedFile(const StagedGroup& group, const char* identifier);

    bool IsPresent() const;
    /// The same for a `set`, which traces that nothing is pending.
    bool IsPending() const;

    /// Reads the whole file for `Read`. False, with nothing read and a trace, when it can't be read to its end.
    bool Load();
    /// True, with the value stored, when the file had the key when it was loaded.
    bool Read(const char* key, TavuString& value) const;

    /// Writes the settings one by one. 0, or the result code of the first that fails; those before it stay.
    ResultCode Merge(const StagedValues& values) const;
    /// A failure is only traced.
    void Delete() const;

    /// Makes the file of settings that were just read. 0, or the result code of the failure, which it traces.
    ResultCode Create(const StagedValues& values) const;
    /// Lets `update(file)` validate options and merge them. 0, or the result code of the failure, which it traces.
    template <typename Merge> ResultCode Update(Merge update) {
        const ResultCode code = [&] {
            const TracedCall traced(mGroup.updateFunction);
            return Load() ? update(*this) : RC_FILE_ERROR;
        }();
        if (code != RC_SUCCESS) {
            TraceStep(TRACE_DEBUG, "%s failed with uRet=%u", mGroup.updateFunction, VX_UINT32{code});
        }
        return code;
    }
    /// Loads the file and lets `overlay(file)` take what it holds. 0, or the result code of a file that can't be
    /// read, with nothing taken.
    template <typename Overlay> ResultCode ReadBack(Overlay overlay) {
        const TracedCall traced(mGroup.readFunction);
        if (!Load()) {
            return RC_FILE_ERROR;
        }
        overlay(*this);
        return RC_SUCCESS;
    }

private:
    StagedGroup mGroup;
    TavuString mPath;
    TavuString mContent;
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

/// The course of `setFile` after the fresh read: makes the file of what `collect(values)` gathers if there is
/// none, lets `update(file)` validate and merge the command's options, and then `overlay(file)` take what the
/// file holds. A refusal leaves the file with the settings as they were read, or as earlier commands left it.
template <typename Collect, typename Update, typename Overlay>
ResultCode StageSettings(StagedFile file, Collect collect, Update update, Overlay overlay) {
    if (!file.IsPresent()) {
        StagedValues values;
        collect(values);
        if (const ResultCode code = file.Create(values); code != RC_SUCCESS) {
            return code;
        }
    }
    if (const ResultCode code = file.Update(update); code != RC_SUCCESS) {
        return code;
    }
    return file.ReadBack(overlay);
}

/// The same for settings that are the fields of one record.
template <typename Record, typename Update>
ResultCode StageSettings(StagedFile file, std::span<const StagedKey<Record>> keys, Record& record, Update update) {
    return StageSettings(
        std::move(file), [&](StagedValues& values) { CollectSettings(keys, record, values); }, update,
        [&](const StagedFile& staged) { ReadStagedFile(staged, keys, record); });
}

/// What a `set` leaves to be done when its document is out.
struct Commit {
    bool isNothingPending = false;  ///< there is no cache file, and nothing was written
    std::optional<StagedFile> file; ///< whose settings were written

    /// Deletes the file, unless the document didn't get out.
    void Finish() const;
};

/// The course of `set` after the fresh read: lets `overlay(file)` take what the file holds, and `write()` write it
/// and give a result code. A failure keeps the file, so that the command can be repeated.
template <typename Overlay, typename Write>
ResultCode CommitSettings(StagedFile file, Commit& commit, Overlay overlay, Write write) {
    commit.isNothingPending = !file.IsPending();
    if (commit.isNothingPending) {
        return RC_SUCCESS;
    }
    ResultCode code = file.ReadBack(overlay);
    if (code == RC_SUCCESS) {
        code = write();
    }
    commit.file = std::move(file);
    return code;
}
