/// @file
/// A folder for one run.
#pragma once

#include <functional>
#include <string>

namespace orfc {

/// Makes an empty folder that only this user may enter, runs `run` with it in a process of its own, and removes it
/// whatever becomes of that: also if it crashes, and after signals that end the program. Returns the exit status; a
/// signal that ended the run ends this process too. Throws `Failure` if the folder can't be made.
int RunInPrivateFolder(const std::function<int(const std::string& folder)>& run);

} // namespace orfc
