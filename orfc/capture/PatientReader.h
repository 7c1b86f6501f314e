/// @file
/// Reading of files whose driver may never answer.
#pragma once

#include <string>
#include <sys/types.h>

namespace orfc {

/// Reads files in a process of its own. One that gets stuck is given up, and another one reads the next file.
class PatientReader {
public:
    /// `root` is a folder's descriptor; paths are relative to it and can't leave it.
    explicit PatientReader(int root) : mRoot(root) {}
    PatientReader(const PatientReader&) = delete;
    ~PatientReader() { End(); }

    struct Outcome {
        std::string content = {};
        std::string failure = {}; ///< why it couldn't be read; empty if it was
        int error = 0;            ///< the errno of that, if it has one
    };
    Outcome Read(const std::string& path);

private:
    bool Start();
    void End();

    int mRoot;
    int mSocket = -1;
    pid_t mProcess = -1;
};

} // namespace orfc
