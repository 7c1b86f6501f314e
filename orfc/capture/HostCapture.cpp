#include "HostCapture.h"

#include "Collect.h"
#include "Failure.h"
#include "Version.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace orfc {

namespace {

using nlohmann::json;

constexpr char DESCRIPTION[] = "capture.json";
constexpr char OUTPUT[] = "output/";
constexpr char FORMAT[] = "orfc-capture";
constexpr int VERSION = 1;
constexpr std::chrono::seconds BETWEEN_STATISTICS(1);

std::string TimeText(const char* format) {
    const std::time_t now = std::time(nullptr);
    tm parts{};
    gmtime_r(&now, &parts);
    char text[64];
    return {text, std::strftime(text, sizeof text, format, &parts)};
}

/// The text of a file with one line.
std::string LineOf(const Entries& entries, const char* path) {
    const auto found = entries.find(path);
    const std::string text = found != entries.end() ? found->second.content : "";
    return text.substr(0, text.find('\n'));
}

std::string HostName(const CaptureOptions& options, const Entries& entries) {
    char name[256] = "";
    if (options.root == "/" && gethostname(name, sizeof name - 1) == 0) {
        return name;
    }
    const std::string known = LineOf(entries, "etc/hostname");
    return known.empty() ? "unknown" : known;
}

/// What this program prints with the words of a command line on a captured tree. Empty, with a message, if it fails.
std::string OutputOf(std::vector<std::string> words, const std::string& folder, std::vector<std::string>& messages) {
    constexpr int INCOMPLETE = 3;
    words.insert(words.begin(), {"orfc", "--root", "."});
    int ends[2];
    const pid_t process = pipe2(ends, O_CLOEXEC) == 0 ? fork() : -1;
    if (process < 0) {
        throw Failure(std::string("no process: ") + std::strerror(errno));
    }
    if (process == 0) {
        std::vector<char*> arguments;
        arguments.reserve(words.size() + 1);
        for (std::string& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        dup2(ends[1], STDOUT_FILENO);
        dup2(open("/dev/null", O_RDWR | O_CLOEXEC), STDERR_FILENO);
        if (chdir(folder.c_str()) == 0) {
            execv("/proc/self/exe", arguments.data());
        }
        std::_Exit(Failure::FAILED);
    }
    close(ends[1]);
    std::string output;
    char portion[65536];
    for (ssize_t count = 1; count > 0;) {
        count = read(ends[0], portion, sizeof portion);
        output.append(portion, count > 0 ? static_cast<std::size_t>(count) : 0);
        count = count < 0 && errno == EINTR ? 1 : count;
    }
    close(ends[0]);
    int status = 0;
    waitpid(process, &status, 0);
    if (!WIFEXITED(status) || (WEXITSTATUS(status) != 0 && WEXITSTATUS(status) != INCOMPLETE)) {
        messages.push_back("the output of orfc " + words[3] + " isn't in it: the command fails");
        return {};
    }
    return output;
}

/// Adds what each command prints.
void AddOutput(const CaptureOptions& options, const std::string& folder, Entries& entries,
               std::vector<std::string>& messages) {
    for (const std::string& command : options.commands) {
        for (const char* const format : {"table", "json"}) {
            std::vector<std::string> words = {"-o", format};
            if (!command.empty()) {
                words.insert(words.begin(), command);
            }
            words.insert(words.end(), options.libraryWords.begin(), options.libraryWords.end());
            const std::string name = std::string(OUTPUT) + (command.empty() ? "overview" : command) +
                                     (std::string_view(format) == "json" ? ".json" : ".txt");
            entries[name] = {Entry::FILE, OutputOf(std::move(words), folder, messages)};
        }
    }
}

} // namespace

CaptureReport CaptureHost(const CaptureOptions& options, const std::string& folder) {
    Collection collection = CollectHost(options.root);
    Entries& entries = collection.entries;
    const auto read = std::chrono::steady_clock::now();
    CaptureReport report;
    Unpack(entries, folder);
    AddOutput(options, folder, entries, report.messages);
    if (!collection.statistics.empty()) {
        std::this_thread::sleep_until(read + BETWEEN_STATISTICS);
        CollectLater(options.root, collection);
    }
    const std::string host = HostName(options, entries);
    const std::string file =
        options.file.empty() ? "orfc-" + host + TimeText("-%Y%m%dT%H%M%SZ") + ".tar.xz" : options.file;
    json missing = json::array();
    for (const Collection::Missing& one : collection.missing) {
        missing.push_back({{"file", one.file}, {"reason", one.reason}});
        if (!one.isUsual) {
            report.messages.push_back(one.file + ": " + one.reason);
        }
    }
    const json description = {{"format", FORMAT},
                              {"version", VERSION},
                              {"host", host},
                              {"time", TimeText("%Y-%m-%d %H:%M:%S UTC")},
                              {"kernel", LineOf(entries, "proc/sys/kernel/osrelease")},
                              {"tool", TOOL_VERSION},
                              {"seconds_between_statistics", BETWEEN_STATISTICS.count()},
                              {"missing", missing}};
    entries[DESCRIPTION] = {Entry::FILE, description.dump(1, ' ', true, json::error_handler_t::replace) + "\n"};
    const std::size_t size = WriteArchive(file, entries, options.isForced);
    report.summary = file + ": " + std::to_string(size) + " bytes, " + std::to_string(entries.size()) + " entries, " +
                     std::to_string(missing.size()) + " of what was found couldn't be read";
    return report;
}

bool IsCapture(const std::string& root) {
    struct stat information {};
    return stat(root.c_str(), &information) == 0 && !S_ISDIR(information.st_mode);
}

std::string OpenCapture(const std::string& file, const std::string& folder) {
    Entries entries = ReadArchive(file);
    const auto found = entries.find(DESCRIPTION);
    std::string described;
    try {
        const json description = json::parse(found != entries.end() ? found->second.content : "");
        if (description.at("format") != FORMAT) {
            throw Failure(file + ": is no capture");
        }
        if (description.at("version") != VERSION) {
            throw Failure(file + ": written by a newer orfc");
        }
        described = file + " is a capture of " + description.at("host").get<std::string>() + ", " +
                    description.at("time").get<std::string>();
    } catch (const json::exception&) {
        throw Failure(file + ": is no capture");
    }
    std::erase_if(entries, [](const auto& entry) { // for people alone
        return entry.first.starts_with(LATER) || entry.first.starts_with(OUTPUT);
    });
    Unpack(entries, folder);
    return described;
}

} // namespace orfc
