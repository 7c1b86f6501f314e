/// @file
/// The management library, loaded at run time.
#pragma once

#include "Failure.h"
#include "extensions.h"
#include "functions.h"

#include <filesystem>
#include <string>
#include <vector>

namespace orfc {

/// The functions of a library under their own names. Optional ones are null where the library lacks them.
struct LibraryFunctions {
#define ORFC_MEMBER(name) decltype(&::name) name; // NOLINT(bugprone-macro-parentheses): a member's name
    VEXAPI_FUNCTIONS(ORFC_MEMBER)
    VEXAPI_EXTENSIONS(ORFC_MEMBER)
#undef ORFC_MEMBER
};

/// A loaded library. It may print on standard output, so the caller keeps its own output elsewhere.
class Library : public LibraryFunctions {
public:
    /// `choice` is "linux", "simulator", the path of a library, or empty for the one that the loader finds. Throws
    /// `Failure`.
    explicit Library(const std::string& choice);
    /// Same with functions that the caller has.
    Library(const LibraryFunctions& functions, std::string path)
        : LibraryFunctions(functions), mPath(std::move(path)) {}

    /// Path of the file that serves.
    const std::string& Path() const { return mPath; }

private:
    std::string mPath;
};

/// The time between the start and the end of a library.
class Session {
public:
    /// Starts the library, to read what `scope` says. Throws `Failure`.
    Session(const Library& library, VEXAPI_EXT_SCOPE scope);
    Session(const Session&) = delete;
    ~Session();

    /// The library's functions.
    const Library* operator->() const { return &mLibrary; }
    /// What couldn't be read so far, one line each.
    std::vector<std::string>& Messages() { return mMessages; }

private:
    void EndMessages() const;

    const Library& mLibrary;
    std::vector<std::string> mMessages;
};

/// Paths at which the library of a name may be, in the order in which they are tried.
std::vector<std::filesystem::path> LibraryCandidates(const std::string& name);

} // namespace orfc
