#include "Library.h"

#include "Version.h"

#include <cstdio>
#include <dlfcn.h>
#include <link.h>

namespace orfc {

namespace {

constexpr char FILE_NAME[] = "libvexapi_fconly.so";
constexpr VX_UINT32 TOOL_ID = 11; ///< that of `orfc-esxcli`, which every library knows

/// Path of the file that a handle of `dlopen` refers to.
std::string PathOf(void* library) {
    const link_map* map = nullptr;
    return dlinfo(library, RTLD_DI_LINKMAP, &map) == 0 ? map->l_name : "";
}

std::filesystem::path FolderOfProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

void* Open(const std::string& choice) {
    if (choice.empty()) {
        return dlopen(FILE_NAME, RTLD_NOW | RTLD_LOCAL);
    }
    if (choice != "linux" && choice != "simulator") {
        // A name without a slash would be searched for where the loader looks.
        return dlopen(std::filesystem::absolute(choice).c_str(), RTLD_NOW | RTLD_LOCAL);
    }
    for (const std::filesystem::path& candidate : LibraryCandidates(choice)) {
        if (std::filesystem::exists(candidate)) {
            return dlopen(candidate.c_str(), RTLD_NOW | RTLD_LOCAL);
        }
    }
    throw Failure("library " + choice + ": not installed");
}

void TakeMessage(void* messages, const char* line) {
    static_cast<std::vector<std::string>*>(messages)->emplace_back(line);
}

} // namespace

std::vector<std::filesystem::path> LibraryCandidates(const std::string& name) {
    const std::filesystem::path here = FolderOfProgram();
    std::vector<std::filesystem::path> candidates = {here / name / FILE_NAME,
                                                     std::filesystem::path(ORFC_LIBRARY_FOLDER) / name / FILE_NAME};
    if (name == "simulator") { // beside the program in a build
        candidates.insert(candidates.begin() + 1, here / FILE_NAME);
    }
    return candidates;
}

Library::Library(const std::string& choice) {
    void* const library = Open(choice); // never closed: a library may leave threads behind
    if (library == nullptr) {
        const char* const error = dlerror();
        throw Failure(std::string("library ") + (error != nullptr ? error : choice));
    }
    mPath = PathOf(library);
// NOLINTBEGIN(bugprone-macro-parentheses): members
#define ORFC_LOOK_UP(name)                                                                                             \
    name = reinterpret_cast<decltype(name)>(dlsym(library, #name));                                                    \
    if (name == nullptr) {                                                                                             \
        throw Failure(mPath + ": has no function " #name);                                                             \
    }
#define ORFC_LOOK_UP_OPTIONAL(name) name = reinterpret_cast<decltype(name)>(dlsym(library, #name));
    VEXAPI_FUNCTIONS(ORFC_LOOK_UP)
    VEXAPI_EXTENSIONS(ORFC_LOOK_UP_OPTIONAL)
#undef ORFC_LOOK_UP
// NOLINTEND(bugprone-macro-parentheses)
#undef ORFC_LOOK_UP_OPTIONAL
}

Session::Session(const Library& library, VEXAPI_EXT_SCOPE scope) : mLibrary(library) {
    if (library.VEXAPI_ExtSetMessageHandler != nullptr) {
        library.VEXAPI_ExtSetMessageHandler(TakeMessage, &mMessages);
    }
    if (library.VEXAPI_ExtSetScope != nullptr) {
        scope.Size = sizeof scope;
        library.VEXAPI_ExtSetScope(&scope);
    }
    if (const VX_UINT32 status = library.VEXAPI_Initialize(0, 0); status != 0) {
        char number[16];
        std::snprintf(number, sizeof number, "0x%x", status);
        EndMessages();
        throw Failure(library.Path() + ": doesn't start, status " + number +
                      (mMessages.empty() ? "" : ": " + mMessages.front()));
    }
    library.VEXAPI_SetToolID(TOOL_ID);
    library.VEXAPI_SetToolVersion(TOOL_VERSION_MAJOR, TOOL_VERSION_MINOR, TOOL_VERSION_PATCH, 0);
}

Session::~Session() {
    mLibrary.VEXAPI_Uninitialize();
    EndMessages();
}

void Session::EndMessages() const {
    if (mLibrary.VEXAPI_ExtSetMessageHandler != nullptr) {
        mLibrary.VEXAPI_ExtSetMessageHandler(nullptr, nullptr);
    }
}

} // namespace orfc
