#include "StagedSettings.h"

#include "FileOps.h"

StagedFile::StagedFile(const char* group, const char* settings, const char* identifier, unsigned long maxValue)
    : mSettings(settings), mPath(TavuString("/tmp/") + group + "_" + identifier), mMaxValue(maxValue) {}

bool StagedFile::IsPresent() const {
    return FileOps::IsFilePresent(mPath) == 1;
}

bool StagedFile::IsPending() const {
    const bool isPending = IsPresent();
    if (!isPending) {
        TraceStep(TRACE_DEBUG, "%s file not present", mPath.c_str());
    }
    return isPending;
}

bool StagedFile::Read(const char* key, TavuString& value) const {
    char text[MAX_VALUE + 1] = {}; // a value that fills its size has no terminator of its own
    if (FileOps::read_key_value(mPath.c_str(), key, text, mMaxValue, '=') != FileOps::KEY_FOUND) {
        return false;
    }
    value = text;
    return true;
}

VX_UINT32 StagedFile::Merge(const StagedValues& values) const {
    for (const auto& [key, value] : values) {
        if (const VX_UINT32 code = FileOps::UpdateKeyValueInFile(mPath, key, value); code != 0) {
            TraceStep(TRACE_DEBUG, "file ops failed");
            return code;
        }
    }
    return 0;
}

void StagedFile::Delete() const {
    FileOps::DeleteFile(mPath);
}

VX_UINT32 StagedFile::Create(const StagedValues& values) const {
    const TavuString function = TavuString("Create") + mSettings + "File";
    const VX_UINT32 code = [&] {
        const TracedFunction traced(function.c_str());
        return Merge(values);
    }();
    if (code != 0) {
        TraceStep(TRACE_DEBUG, "%s failed", function.c_str());
    }
    return code;
}
