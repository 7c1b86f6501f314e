/// @file
/// Settings staged between runs. Each run is a separate process, so a change that takes several commands is
/// collected in a cache file per port: `setFile` merges settings into it; `set` applies it to freshly read
/// settings, writes the adapter once, shows what was written and deletes the file.
#pragma once

#include "CmdLineParser.h"
#include "CommandRows.h"
#include "ResultCodes.h"
#include "TracedFunction.h"
#include "vexapi.h"

#include <map>
#include <optional>
#include <span>

/// Settings by key, in the order of writing.
using StagedValues = std::map<TavuString, TavuString>;

/// A group of settings. The functions are names in traces.
struct StagedGroup {
    const char* name; ///< prefix of its cache files' names
    const char* createFunction;
    const char* updateFunction;
    const char* readFunction;
    /// Longest value; longer ones are truncated.
    unsigned long maxValue = 512;
};

/// Rows of a group's commands. `Settings` completes their descriptions, as in "get Settings".
template <FixedText Settings>
consteval Command StagedGet(CommonFunction run, const DocumentRow& document,
                            std::span<const Argument> arguments = ONLY_PORT) {
    return {.names = Names<"get", "CmdGet">(),
            .description = JOINED<"get ", Settings>.data(),
            .run = run,
            .usage = "Usage: get\r\n",
            .arguments = arguments,
            .document = document,
            .reads = VEXAPI_EXT_PORT_DETAILS};
}
template <FixedText Settings>
consteval Command StagedSetFile(CommonFunction run, const DocumentRow& document, std::span<const Argument> arguments) {
    return {.names = Names<"setFile", "CmdSetFile">(),
            .description = JOINED<"set ", Settings, " in a local cache file">.data(),
            .run = run,
            .usage = "Usage: setFile\r\n",
            .arguments = arguments,
            .document = document,
            .changes = true};
}
template <FixedText Settings> consteval Command StagedSet(CommonFunction run, const DocumentRow& document) {
    return {.names = Names<"set", "CmdSet">(),
            .description = JOINED<"set ", Settings>.data(),
            .run = run,
            .usage = "Usage: set\r\n",
            .arguments = ONLY_PORT,
            .document = document,
            .changes = true};
}

/// The cache file of a port for one group of settings.
class StagedFile {
public:
    /// The file "/tmp/<group>_<identifier>", with the identifier as the user typed it.
    StagedFile(const StagedGroup& group, const char* identifier);

    /// Stores whether the file exists. Returns 0, or the result code if that can't be told.
    ResultCode Find(bool& isPresent) const;
    /// Same for a `set`, which traces that nothing is pending.
    ResultCode FindPending(bool& isPending) const;

    /// Reads the whole file for `Read`. If it can't be read completely, reads nothing, traces that and returns
    /// false.
    bool Load();
    /// Stores the value of a key. Returns false if the loaded file did not have it.
    bool Read(const char* key, TavuString& value) const;

    /// Writes the settings one by one. Returns 0, or the result code of the first failure; earlier settings stay
    /// written.
    ResultCode Merge(const StagedValues& values) const;
    /// Failures are only traced.
    void Delete() const;

    /// Creates the file from freshly read settings. Returns 0, or the result code of a failure, which it traces.
    ResultCode Create(const StagedValues& values) const;
    /// Calls `update(file)` to validate options and merge them. Returns 0, or the result code of a failure, which
    /// it traces.
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
    /// Loads the file and calls `overlay(file)` to apply it. Returns 0, or the result code if the file can't be
    /// read; nothing is applied then.
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

/// Row: a field of a record in a cache file.
template <typename Record> struct StagedKey {
    const char* key;
    TavuString (*write)(const Record& record);
    /// Parses and stores a value; out-of-range values are ignored.
    void (*read)(Record& record, const char* text);
};

/// A number in a field of any width. Numbers that `accepts` rejects are silently ignored when read, so that a
/// damaged file can't produce an invalid record.
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

/// Collects all fields of a record.
template <typename Record>
void CollectSettings(std::span<const StagedKey<Record>> keys, const Record& record, StagedValues& values) {
    for (const StagedKey<Record>& row : keys) {
        values[row.key] = row.write(record);
    }
}

/// Applies a cache file to a record. Fields whose keys are missing from the file are unchanged.
template <typename Record>
void ReadStagedFile(const StagedFile& file, std::span<const StagedKey<Record>> keys, Record& record) {
    for (const StagedKey<Record>& row : keys) {
        TavuString text;
        if (file.Read(row.key, text)) {
            row.read(record, text.c_str());
        }
    }
}

/// The steps of `setFile` after the fresh read. If there is no file, creates it from what `collect(values)`
/// collects. Then calls `update(file)` to validate and merge the command's options, and `overlay(file)` to apply
/// the file. A rejected update leaves the file as created here or by earlier commands.
template <typename Collect, typename Update, typename Overlay>
ResultCode StageSettings(StagedFile file, Collect collect, Update update, Overlay overlay) {
    bool isPresent = false;
    if (const ResultCode code = file.Find(isPresent); code != RC_SUCCESS) {
        return code;
    }
    if (!isPresent) {
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

/// Same for settings that are fields of one record.
template <typename Record, typename Update>
ResultCode StageSettings(StagedFile file, std::span<const StagedKey<Record>> keys, Record& record, Update update) {
    return StageSettings(
        std::move(file), [&](StagedValues& values) { CollectSettings(keys, record, values); }, update,
        [&](const StagedFile& staged) { ReadStagedFile(staged, keys, record); });
}

/// What a `set` does after writing its document.
struct Commit {
    bool isNothingPending = false;  ///< there is no cache file; nothing was written
    std::optional<StagedFile> file; ///< the file whose settings were written

    /// Deletes the file, unless writing the document failed.
    void Finish() const;
};

/// The steps of `set` after the fresh read: calls `overlay(file)` to apply the file, and `write()` to write the
/// settings and return a result code. On failure the file is kept, so that the command can be repeated.
template <typename Overlay, typename Write>
ResultCode CommitSettings(StagedFile file, Commit& commit, Overlay overlay, Write write) {
    bool isPending = false;
    if (const ResultCode code = file.FindPending(isPending); code != RC_SUCCESS) {
        return code;
    }
    commit.isNothingPending = !isPending;
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
