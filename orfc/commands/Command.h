/// @file
/// The commands: functions of a host, one row each.
#pragma once

#include "Host.h"
#include "HostCapture.h"
#include "Names.h"
#include "ReadHost.h"
#include "Writer.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace orfc {

/// A text as a template argument.
template <std::size_t Size> struct Literal {
    char text[Size];
    consteval Literal(const char (&literal)[Size]) { std::copy_n(literal, Size, text); } // NOLINT: a conversion
};

struct Judgement;

/// What the commands on health are asked for.
struct HealthOptions {
    std::string rules = {};                ///< file of rules; empty: those of the table
    std::optional<std::string> state = {}; ///< file of earlier readings, empty for none; the usual one if not given
    bool isNagios = false;
    std::string part = {};   ///< of metrics; empty: all
    std::string output = {}; ///< file of metrics; empty: standard output
};

using TellProgress = std::function<void(const std::string& text)>;

/// What a command works with.
struct Request {
    const Host& host;
    std::vector<std::string> names = {};          ///< of objects; empty: all
    const Host* before = nullptr;                 ///< the same host some time ago, for what moved since
    double seconds = 0;                           ///< since then
    Session* session = nullptr;                   ///< for commands that send frames
    std::vector<std::string>* messages = nullptr; ///< what they have to tell, one line each
    double interval = 0;                          ///< between frames, seconds
    unsigned long count = 0;                      ///< of frames; 0: the usual number
    const HealthOptions* health = nullptr;        ///< for commands on health
    TellProgress onProgress = {};                 ///< called with what a command is about
};

/// The records that a command answers with. They refer to the host and to rows that they keep themselves.
class Shown {
public:
    /// For every format, or only for machines or people.
    enum class For { ALL, MACHINES, PEOPLE };

    template <typename Record>
    void Add(const char* kind, std::span<const ColumnOf<Record>> columns, std::vector<const Record*> records,
             For readers = For::ALL) {
        Add(std::make_unique<RecordsOf<Record>>(kind, columns, std::move(records)), readers);
    }
    /// Same for rows that nobody else keeps.
    template <typename Record>
    void AddRows(const char* kind, std::span<const ColumnOf<Record>> columns, std::vector<Record> rows,
                 For readers = For::ALL) {
        auto kept = std::make_shared<std::vector<Record>>(std::move(rows));
        std::vector<const Record*> records;
        for (const Record& row : *kept) {
            records.push_back(&row);
        }
        mKept.push_back(std::move(kept));
        Add(kind, columns, std::move(records), readers);
    }
    void Add(std::unique_ptr<Records> records, For readers);

    /// Keeps what rows refer to.
    void Keep(std::shared_ptr<void> kept) { mKept.push_back(std::move(kept)); }

    /// Sorts by a column, which all sets have: see `SortedRecords`.
    void Sort(const std::string& key);
    void Fill(Answer& answer) const;

    /// A text that is printed instead of records, and the exit status if it isn't the usual one.
    struct Text {
        std::string text;
        std::optional<int> status = {};
    };
    std::optional<Text> text;

private:
    struct Set {
        std::unique_ptr<Records> records;
        For readers;
    };
    std::vector<Set> mSets;
    std::vector<std::shared_ptr<void>> mKept;
};

/// What an interval and a count are of.
enum class Repeats {
    NOTHING,
    READINGS,   ///< shown one after the other
    COMPARISON, ///< two readings, of which the second one is shown
    FRAMES
};

/// What a command can be limited to.
struct Part {
    const char* name;
    Wanted wanted;
};

struct CommandRow {
    const char* name; ///< empty: what the program shows without a command
    const char* summary;
    const char* description;
    std::span<const char* const> examples;
    Wanted wanted = {};       ///< what a table shows
    Wanted wantedInFull = {}; ///< what other formats have besides
    bool takesNames = false;
    bool needsNames = false;
    bool isDetailed = false; ///< shown by groups, a line for each value
    Repeats repeats = Repeats::NOTHING;
    bool hasFar = false;       ///< can ask the far ends of links
    bool hasRules = false;     ///< judges by rules
    bool isExposition = false; ///< prints a text for a collector instead of records
    bool isCapture = false;    ///< writes a capture instead of reading from a library: has no `run`
    std::span<const Part> parts = {};
    Shown (*run)(const Request& request) = nullptr;
    /// What is printed beside the message on standard error where the command fails.
    std::optional<Shown::Text> (*fail)(const HealthOptions& options, const std::string& failure) = nullptr;
};

std::span<const CommandRow> Commands();

/// What the names of a request denote. Throws `Failure`.
Selection FindAll(const Request& request);
/// Same with what is above and below it; none without names.
std::optional<Selection> SelectionOf(const Request& request);

/// The chosen ones of a host's objects, in its order.
template <typename Object>
std::vector<const Object*> InOrder(const std::deque<Object>& all, const std::set<const Object*>& chosen) {
    std::vector<const Object*> objects;
    for (const Object& object : all) {
        if (chosen.contains(&object)) {
            objects.push_back(&object);
        }
    }
    return objects;
}

/// The objects of a kind that a request is about, in the host's order.
std::vector<const Adapter*> AdaptersOf(const Request& request);
std::vector<const Port*> PortsOf(const Request& request);
std::vector<const Target*> TargetsOf(const Request& request);
std::vector<const Lun*> LunsOf(const Request& request);

/// Columns of each kind of record.
std::span<const ColumnOf<Adapter>> AdapterColumns();
std::span<const ColumnOf<Port>> PortColumns();
std::span<const ColumnOf<Port>> SettingsColumns();
std::span<const ColumnOf<Target>> TargetColumns();
std::span<const ColumnOf<Lun>> LunColumns();
std::span<const ColumnOf<Port>> TransceiverColumns();
inline constexpr char TRANSCEIVER_KIND[] = "transceiver";

// The commands, each in a source of its own name.
Shown ShowOverview(const Request& request);
Shown ShowTransceivers(const Request& request);
Shown ShowCounters(const Request& request);
Shown ShowPaths(const Request& request);
Shown ShowPing(const Request& request);
Shown ShowHealth(const Request& request);

Shown ShowMetrics(const Request& request);

/// The parts of metrics: what moves, and what takes long to read and seldom changes.
inline constexpr char COUNTERS_PART[] = "counters";
inline constexpr char TRANSCEIVERS_PART[] = "transceivers";

/// Judges the host of a request and keeps its readings for the next run, in a file that has this name unless the
/// request has another. What can't be read or kept is told in the request's messages.
Judgement JudgeAndRemember(const Request& request, const std::string& stateName);

/// The samples that tell of a failure, in the file of metrics if there is one.
std::optional<Shown::Text> FailMetrics(const HealthOptions& options, const std::string& failure);
/// The line of a checker that has no verdict, if one is asked for.
std::optional<Shown::Text> FailHealth(const HealthOptions& options, const std::string& failure);

/// Adds the counters of these ports and targets: those that moved, if there is an earlier reading.
void AddCounters(const Request& request, const std::vector<const Port*>& ports,
                 const std::vector<const Target*>& targets, Shown& shown);

/// "ok", "warning", "alarm", "empty", "bad checksum"…: how a module does, in one word.
std::string HealthOf(const Transceiver& transceiver);
/// "ok", "high alarm", …
std::string VerdictText(decoders::Verdict verdict);
/// "link down", "remote port down", …: of a path.
std::string StepText(Step step);

} // namespace orfc
