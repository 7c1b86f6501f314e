#include "StagedSettings.h"

#include "FileOps.h"
#include "TavuDebug.h"

StagedFile::StagedFile(const char* className, const char* group, const char* identifier, unsigned long maxValue)
    : mClassName(className), mGroup(group), mPath(TavuString("/tmp/") + group + "_" + identifier), mMaxValue(maxValue) {
}

bool StagedFile::IsPresent() const {
    return FileOps::IsFilePresent(mPath) == 1;
}

bool StagedFile::IsPending(const char* function) const {
    const bool isPending = IsPresent();
    if (!isPending) {
        TavuDebug::Print(TRACE_DEBUG, "%s::%s: %s file not present", mClassName, function, mPath.c_str());
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
            TavuDebug::Print(TRACE_DEBUG, "%s::%s: file ops failed", mClassName, __func__);
            return code;
        }
    }
    return 0;
}

void StagedFile::Delete() const {
    FileOps::DeleteFile(mPath);
}

VX_UINT32 StagedFile::CreateFailed(VX_UINT32 code) const {
    TavuDebug::Print(TRACE_DEBUG, "%s::StageSettings: Create%sFile failed", mClassName, mGroup);
    return code;
}

VX_UINT32 StagedFile::UpdateFailed(VX_UINT32 code) const {
    TavuDebug::Print(TRACE_DEBUG, "%s::StageSettings: Update%sInFile failed with uRet=%u", mClassName, mGroup, code);
    return code;
}
