#include "StagedSettings.h"

#include "FileOps.h"
#include "OwnFile.h"

#include <cstdio>
#include <vector>

StagedFile::StagedFile(const StagedGroup& group, const char* identifier)
    : mGroup(group), mPath(TavuString("/tmp/") + group.name + "_" + identifier) {}

ResultCode StagedFile::Find(bool& isPresent) const {
    const int present = FileOps::IsFilePresent(mPath);
    isPresent = present == 1;
    return present < 0 ? RC_FILE_ERROR : RC_SUCCESS;
}

ResultCode StagedFile::FindPending(bool& isPending) const {
    const ResultCode code = Find(isPending);
    if (code == RC_SUCCESS && !isPending) {
        TraceStep(TRACE_DEBUG, "%s file not present", mPath.c_str());
    }
    return code;
}

bool StagedFile::Load() {
    const bool isRead = ReadOwnFile(mPath.c_str(), mContent);
    if (!isRead) {
        TraceStep(TRACE_DEBUG, "%s can't be read", mPath.c_str());
        mContent.clear();
    }
    return isRead;
}

bool StagedFile::Read(const char* key, TavuString& value) const {
    std::vector<char> text(mGroup.maxValue + 1); // a value that fills its size is not terminated
    if (FileOps::FindKeyValue(mContent, key, text.data(), mGroup.maxValue, '=') != FileOps::KEY_FOUND) {
        return false;
    }
    value = text.data();
    return true;
}

ResultCode StagedFile::Merge(const StagedValues& values) const {
    for (const auto& [key, value] : values) {
        if (FileOps::UpdateKeyValueInFile(mPath, key, value) != 0) {
            TraceStep(TRACE_DEBUG, "file ops failed");
            return RC_FILE_ERROR;
        }
    }
    return RC_SUCCESS;
}

void StagedFile::Delete() const {
    FileOps::DeleteFile(mPath);
}

ResultCode StagedFile::Create(const StagedValues& values) const {
    const ResultCode code = [&] {
        const TracedCall traced(mGroup.createFunction);
        return Merge(values);
    }();
    if (code != RC_SUCCESS) {
        TraceStep(TRACE_DEBUG, "%s failed", mGroup.createFunction);
    }
    return code;
}

void Commit::Finish() const {
    const bool isOut = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    if (isOut) {
        file->Delete();
    }
}
