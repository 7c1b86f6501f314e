/// @file
/// Reading of one of the kernel's files into a record.
#pragma once

#include "Messages.h"
#include "Sysfs.h"
#include "Values.h"

#include <cerrno>
#include <cstring>

namespace host {

template <class Record> struct Attribute {
    const char* path;                        ///< relative to the entry's folder
    const char* meaning;                     ///< for messages about malformed values
    VX_UINT32 parts;                         ///< read for any of these parts
    bool (*take)(Text text, Record& record); ///< false: the text is malformed
};

/// Whether a file has nothing to say. Kernels and drivers differ in the files that they have, and some fail if there is
/// no value.
constexpr bool IsSilent(int error) {
    return error == ENOENT || error == EINVAL || error == ENXIO;
}

/// Reads an attribute of an entry of a folder. False, and told unless the file is silent, if that fails.
template <class Record>
bool Take(const Folder& folder, const std::string& entry, const Attribute<Record>& attribute, Record& record) {
    const std::string path = entry + '/' + attribute.path;
    const Reading reading = folder.Read(path.c_str());
    if (reading.error != 0) {
        if (!IsSilent(reading.error)) {
            Tell(path, std::strerror(reading.error));
        }
        return false;
    }
    if (!attribute.take(reading.bytes, record)) {
        Tell(path, std::string("not understood as the ") + attribute.meaning);
        return false;
    }
    return true;
}

/// Reads the attributes of an entry that any of these parts needs.
template <class Record, std::size_t count>
void TakeAll(const Folder& folder, const std::string& entry, const Attribute<Record> (&attributes)[count],
             VX_UINT32 parts, Record& record) {
    for (const Attribute<Record>& attribute : attributes) {
        if ((attribute.parts & parts) != 0) {
            Take(folder, entry, attribute, record);
        }
    }
}

} // namespace host
