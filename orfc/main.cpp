/// @file
/// `orfc`: the Fibre Channel side of a host, for people and scripts.
///
/// Exit status: 0 all is well, 1 the command failed, 2 usage, 3 something couldn't be read, which is told on standard
/// error, and the rest is complete.
#include "Options.h"
#include "PrivateFolder.h"
#include "Rules.h"
#include "Utf8.h"

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>

namespace orfc {

namespace {

constexpr int INCOMPLETE = 3;

using Clock = std::chrono::steady_clock;

/// Tells of something in one line on standard error. Nothing in it reaches a terminal raw.
void Tell(std::string_view text) {
    std::fprintf(stderr, "orfc: %s\n", LineText(text).c_str());
}

/// Standard output for this program alone: what a library prints goes nowhere.
std::FILE* TakeStandardOutput() {
    const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    std::FILE* const out = own >= 0 ? fdopen(own, "w") : nullptr;
    if (out == nullptr || nowhere < 0 || dup2(nowhere, STDOUT_FILENO) < 0) {
        throw Failure(std::string("standard output: ") + std::strerror(errno));
    }
    close(nowhere);
    return out;
}

std::optional<std::size_t> TerminalWidth(int file) {
    winsize size{};
    return isatty(file) != 0 && ioctl(file, TIOCGWINSZ, &size) == 0 && size.ws_col != 0
               ? std::optional<std::size_t>(size.ws_col)
               : std::nullopt;
}

/// Whether the host is shown more than once.
bool IsRepeated(const Options& options) {
    return options.command->repeats == Repeats::READINGS && options.interval != 0;
}

/// Of readings; 0: no end.
unsigned long CountOf(const Options& options) {
    const bool isCompared = options.command->repeats == Repeats::COMPARISON && options.interval != 0;
    return isCompared ? 2 : IsRepeated(options) ? options.count : 1;
}

Style StyleOf(const Options& options, int file) {
    const char* const noColor = std::getenv("NO_COLOR");
    Style style;
    style.columns = options.columns;
    style.hasHeadings = !options.hasNoHeadings;
    style.isWide = options.format == Format::WIDE;
    style.isColored = options.color == "always" ||
                      (options.color == "auto" && isatty(file) != 0 && (noColor == nullptr || *noColor == '\0'));
    style.isCompact = IsRepeated(options);
    style.width = TerminalWidth(file);
    return style;
}

/// Writes out what is left. A reader that has gone has seen enough: the program ends.
void Flush(std::FILE* out) {
    if (std::fflush(out) != 0 || std::ferror(out) != 0) {
        if (errno == EPIPE) {
            std::_Exit(0);
        }
        throw Failure(std::string("standard output: ") + std::strerror(errno));
    }
}

void Write(const Answer& answer, const Options& options, const Style& style, std::FILE* out) {
    switch (options.format) {
    case Format::TABLE:
    case Format::WIDE:
        options.command->isDetailed ? WriteDetails(answer, style, out) : WriteTable(answer, style, out);
        break;
    case Format::JSON:
        WriteJson(answer, style, out);
        break;
    case Format::CSV:
        WriteCsv(answer, style, out);
        break;
    case Format::ESXCLI:
        WriteEsxcli(answer, style, out);
        break;
    }
    Flush(out);
}

/// Tells on a terminal's standard error what is done when it takes long, and wipes that at its end. From a thread of
/// its own, since a single call of the library may be what takes long.
class Progress {
public:
    Progress() {
        if (isatty(STDERR_FILENO) != 0) {
            mThread = std::thread([this] { Show(); });
        }
    }
    Progress(const Progress&) = delete;
    ~Progress() {
        if (mThread.joinable()) {
            {
                const std::lock_guard lock(mMutex);
                mIsOver = true;
            }
            mEnd.notify_one();
            mThread.join();
        }
    }
    void operator()(std::string text) {
        const std::lock_guard lock(mMutex);
        mText = std::move(text);
    }

private:
    void Show() {
        constexpr std::chrono::milliseconds PATIENCE(1000), PERIOD(200);
        std::unique_lock lock(mMutex);
        if (IsOverAfter(lock, PATIENCE)) {
            return;
        }
        do {
            // A line that wraps couldn't be wiped.
            const std::size_t room = TerminalWidth(STDERR_FILENO).value_or(mText.size() + 1) - 1;
            std::fprintf(stderr, "\r%s\033[K", mText.substr(0, room).c_str());
        } while (!IsOverAfter(lock, PERIOD));
        std::fputs("\r\033[K", stderr);
    }
    bool IsOverAfter(std::unique_lock<std::mutex>& lock, std::chrono::milliseconds time) {
        return mEnd.wait_for(lock, time, [this] { return mIsOver; });
    }

    std::mutex mMutex;
    std::condition_variable mEnd;
    std::string mText = "reading the host";
    bool mIsOver = false;
    std::thread mThread;
};

/// Starts a session, which may be what takes long, and reads the host.
Host ReadWithProgress(const Library& library, const Wanted& wanted, std::optional<Session>& session) {
    Progress progress;
    session.emplace(library, ScopeOf(wanted));
    return ReadHost(*session, wanted,
                    [&progress](const std::string& identifier) { progress("reading " + identifier); });
}

/// What a command needs of the host, for the named objects only. Any object may have a name, so the names are read
/// before.
Wanted WantedOf(const Options& options, const Library& library) {
    Wanted wanted = options.command->wanted;
    for (const Part& part : options.command->parts) {
        wanted = part.name == options.health.part ? part.wanted : wanted;
    }
    wanted.farEnds = options.isFar;
    if (options.format != Format::TABLE || !options.columns.empty() || !options.sort.empty()) {
        wanted = wanted | options.command->wantedInFull;
    }
    if (!options.names.empty()) {
        const Wanted names = {.portDetails = true, .targets = true, .luns = true};
        wanted = wanted | names;
        std::optional<Session> session;
        const Host host = ReadWithProgress(library, names, session);
        Request request{host, options.names};
        if (options.command->repeats == Repeats::FRAMES) { // what follows the port needn't be a name of this host
            request.names.resize(1);
        }
        for (const Port* port : PortsOf(request)) {
            wanted.ports.insert(port->portName);
        }
    }
    return wanted;
}

/// What ports of a host came or went since it was read before, one line each.
std::vector<std::string> Changes(const Host& before, const Host& now) {
    std::vector<std::string> changes;
    const auto tell = [&](const auto& some, const auto& others, const char* what) {
        std::set<std::string_view> known;
        for (const auto& object : others) {
            known.insert(object.identifier);
        }
        for (const auto& object : some) {
            if (!known.contains(object.identifier)) {
                changes.push_back(object.identifier + ": " + what);
            }
        }
    };
    tell(before.ports, now.ports, "has gone");
    tell(now.ports, before.ports, "is new");
    tell(before.targets, now.targets, "has gone");
    tell(now.targets, before.targets, "is new");
    return changes;
}

/// The folder of a root, unpacked into `folder` if it is a capture.
std::string OpenRoot(const std::string& root, const std::string& folder) {
    if (!IsCapture(root)) {
        return root;
    }
    Tell(OpenCapture(root, folder));
    return folder;
}

/// Writes a capture and tells of it. Returns the exit status.
int Capture(const Options& options, const std::string& folder) {
    if (options.library == "simulator") {
        throw Failure("capture: reads the kernel's files, not a library", Failure::USAGE);
    }
    CaptureOptions capture = options.capture;
    if (options.root) {
        capture.root = *options.root;
    }
    for (const CommandRow& command : Commands()) {
        if (command.run != nullptr && !command.needsNames && !command.isExposition) {
            capture.commands.emplace_back(command.name);
        }
    }
    if (!options.library.empty()) {
        capture.libraryWords = {"--library", options.library};
    }
    const CaptureReport report = CaptureHost(capture, folder);
    std::printf("%s\n", report.summary.c_str());
    Flush(stdout);
    std::for_each(report.messages.begin(), report.messages.end(), Tell);
    return report.messages.empty() ? 0 : INCOMPLETE;
}

/// Reads and shows the host, once or at every tick. Returns the exit status.
class Run {
public:
    /// `folder` is one for a captured host.
    Run(const Options& options, std::vector<std::string> arguments, std::string folder)
        : mOptions(options), mFolder(std::move(folder)), mOut(TakeStandardOutput()),
          mStyle(StyleOf(options, fileno(mOut))) {
        mAnswer.command = options.command->name;
        mAnswer.arguments = std::move(arguments);
    }
    ~Run() { std::fclose(mOut); }
    Run(const Run&) = delete;

    int operator()() {
        try {
            const Library library(UseRoot());
            mAnswer.library = library.Path();
            const Wanted wanted = WantedOf(mOptions, library);
            bool isComplete = true;
            std::optional<int> status;
            const unsigned long count = CountOf(mOptions);
            std::optional<Host> before;
            Clock::time_point last;
            for (unsigned long reading = 1;; ++reading) {
                const Clock::time_point now = Clock::now();
                std::optional<Session> session;
                Host host = ReadWithProgress(library, wanted, session);
                isComplete = isComplete && host.messages.empty();
                if (before) {
                    for (std::string& change : Changes(*before, host)) {
                        host.messages.push_back(std::move(change));
                    }
                }
                const double seconds = std::chrono::duration<double>(now - last).count();
                const std::size_t told = host.messages.size();
                constexpr double USUAL_INTERVAL = 1;
                if (reading == count || IsRepeated(mOptions)) {
                    status = Show({host, mOptions.names, before ? &*before : nullptr, seconds, &*session,
                                   &host.messages, mOptions.interval != 0 ? mOptions.interval : USUAL_INTERVAL,
                                   mOptions.count, &mOptions.health});
                }
                isComplete = isComplete && host.messages.size() == told;
                if (reading == count) {
                    break;
                }
                before = std::move(host);
                last = now;
                std::this_thread::sleep_until(now + std::chrono::duration_cast<Clock::duration>(
                                                        std::chrono::duration<double>(mOptions.interval)));
            }
            return status.value_or(isComplete ? 0 : INCOMPLETE);
        } catch (const Failure& failure) {
            Tell(failure.what());
            if (mOptions.format == Format::JSON && std::ferror(mOut) == 0) { // scripts read an answer in any case
                mAnswer.isOk = false;
                mAnswer.messages = {failure.what()};
                mAnswer.records.clear();
                WriteJson(mAnswer, mStyle, mOut);
            }
            return TellFailure(failure);
        }
    }

private:
    /// What the command prints of its failure. Returns the exit status.
    int TellFailure(const Failure& failure) {
        const auto text = mOptions.command->fail != nullptr && std::ferror(mOut) == 0
                              ? mOptions.command->fail(mOptions.health, failure.what())
                              : std::nullopt;
        if (text) {
            std::fputs(text->text.c_str(), mOut);
            Flush(mOut);
        }
        return text && text->status ? *text->status : static_cast<int>(failure.status);
    }

    /// Makes a folder the root of the library, and returns the library to use.
    std::string UseRoot() const {
        if (!mOptions.root) {
            return mOptions.library;
        }
        if (mOptions.root->empty() || mOptions.library == "simulator") {
            throw Failure(mOptions.root->empty() ? "--root names nothing" : "the simulator reads no --root",
                          Failure::USAGE);
        }
        const std::string root = OpenRoot(*mOptions.root, mFolder);
        if (access((root + "/sys/class/.").c_str(), X_OK) != 0) {
            throw Failure(root + ": no sys/class in it: " + std::strerror(errno));
        }
        setenv("VEXAPI_SYSFS_ROOT", root.c_str(), 1);
        return mOptions.library.empty() ? "linux" : mOptions.library;
    }

    /// Only commands that send frames take long by themselves.
    Shown RunWithProgress(Request request) {
        std::optional<Progress> progress;
        if (mOptions.command->repeats == Repeats::FRAMES) {
            progress.emplace();
            request.onProgress = [&progress](const std::string& text) { (*progress)(text); };
        }
        return mOptions.command->run(request);
    }

    /// Returns the exit status if it isn't the usual one.
    std::optional<int> Show(const Request& request) {
        Shown shown = RunWithProgress(request);
        if (!mOptions.sort.empty()) {
            shown.Sort(mOptions.sort);
        }
        Answer answer = mAnswer;
        answer.messages = request.host.messages;
        if (shown.text) {
            std::fputs(shown.text->text.c_str(), mOut);
            Flush(mOut);
            TellAll(answer.messages);
            return shown.text->status;
        }
        shown.Fill(answer);
        const bool isTable = mOptions.format == Format::TABLE || mOptions.format == Format::WIDE;
        CheckColumns(isTable && !mOptions.command->isDetailed ? answer.ForTables() : answer.records, mStyle,
                     mOptions.sort);
        if (request.before != nullptr && IsRepeated(mOptions) && mOptions.format != Format::JSON) {
            std::fputs(mOptions.format == Format::CSV ? "\r\n" : "\n", mOut);
        }
        Write(answer, mOptions, mStyle, mOut);
        TellAll(answer.messages);
        if (request.host.ports.empty() && *mOptions.command->name == '\0') {
            Tell("no Fibre Channel port; is the driver of the adapter loaded? "
                 "orfc --library simulator shows a simulated host");
        }
        return std::nullopt;
    }

    static void TellAll(const std::vector<std::string>& messages) {
        std::for_each(messages.begin(), messages.end(), Tell);
    }

    const Options& mOptions;
    std::string mFolder;
    std::FILE* mOut;
    Style mStyle;
    Answer mAnswer;
};

/// Prints what is known of the program without a host.
void PrintSpecial(Special special) {
    const Host nothing;
    std::vector<Shown> all;
    Answer kinds;
    nlohmann::ordered_json commandKinds = nlohmann::ordered_json::object();
    for (const CommandRow& command : Commands()) {
        if (command.run == nullptr) {
            continue;
        }
        Answer own;
        all.push_back(command.run(Request{nothing}));
        all.back().Fill(own);
        for (const Records* records : own.records) {
            commandKinds[command.name].push_back(records->Kind());
            kinds.records.push_back(records);
        }
    }
    nlohmann::ordered_json json = special == Special::SCHEMA ? SchemaOf(kinds.records) : DescribeCommandLine();
    if (special == Special::DESCRIPTION) {
        json["kinds"] = DescribeColumns(kinds.records);
        json["records"] = commandKinds;
    }
    std::printf("%s\n", DumpJson(json, 1).c_str());
    Flush(stdout);
}

int Main(int count, char* words[]) {
    int status = 0;
    std::optional<Options> options = ParseOptions(count, words, status);
    if (!options) {
        Flush(stdout);
        return status;
    }
    if (options->special == Special::EXPLANATION) {
        const std::string& rules = options->health.rules;
        std::printf("%s", (rules.empty() ? RuleBook() : RuleBook(rules)).Explain(options->explained).c_str());
        Flush(stdout);
        return 0;
    }
    if (options->special != Special::NONE) {
        PrintSpecial(options->special);
        return 0;
    }
    const auto run = [&](const std::string& folder) {
        return options->command->isCapture ? Capture(*options, folder)
                                           : Run(*options, {words, words + count}, folder)();
    };
    const bool needsFolder = options->command->isCapture || (options->root && IsCapture(*options->root));
    return needsFolder ? RunInPrivateFolder(run) : run({});
}

} // namespace

} // namespace orfc

int main(int count, char* words[]) {
    std::signal(SIGPIPE, SIG_IGN); // NOLINT(bugprone-signal-handler): a write tells of it
    try {
        return orfc::Main(count, words);
    } catch (const orfc::Failure& failure) {
        orfc::Tell(failure.what());
        return failure.status;
    } catch (const std::exception& error) {
        orfc::Tell(error.what());
        return orfc::Failure::FAILED;
    }
}
