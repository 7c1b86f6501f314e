#include "StagedSettings.h"

#include "FileOps.h"

#include <cstdlib>

namespace {

constexpr unsigned long VALUE_SIZE = 512;

} // namespace

VX_UINT32 ParseNumber(const char* text) {
    return static_cast<VX_UINT32>(std::strtoul(text, nullptr, 10));
}

StagedFile::StagedFile(const char* group, const char* identifier) {
    mPath = TavuString("/tmp/") + group + "_" + identifier;
}

bool StagedFile::IsPresent() const {
    return FileOps::IsFilePresent(mPath) == 1;
}

bool StagedFile::Read(const char* key, TavuString& value) const {
    char text[VALUE_SIZE + 1] = {}; // a value that fills its size has no terminator of its own
    if (FileOps::read_key_value(mPath.c_str(), key, text, VALUE_SIZE, '=') != FileOps::KEY_FOUND) {
        return false;
    }
    value = text;
    return true;
}

VX_UINT32 StagedFile::Merge(const StagedValues& values) const {
    for (const auto& [key, value] : values) {
        if (const VX_UINT32 code = FileOps::UpdateKeyValueInFile(mPath, key, value); code != 0) {
            return code;
        }
    }
    return 0;
}

void StagedFile::Delete() const {
    FileOps::DeleteFile(mPath);
}
