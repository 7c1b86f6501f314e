#include "Command.h"

namespace orfc {

namespace {

Shown ShowAdapters(const Request& request) {
    Shown shown;
    shown.Add("adapter", AdapterColumns(), AdaptersOf(request));
    return shown;
}
Shown ShowPorts(const Request& request) {
    Shown shown;
    shown.Add("port", PortColumns(), PortsOf(request));
    return shown;
}
Shown ShowTargets(const Request& request) {
    Shown shown;
    shown.Add("target", TargetColumns(), TargetsOf(request));
    return shown;
}
Shown ShowLuns(const Request& request) {
    Shown shown;
    shown.Add("lun", LunColumns(), LunsOf(request));
    return shown;
}

/// The named objects themselves, with the modules of ports and all counters.
Shown ShowObjects(const Request& request) {
    const Selection selection = FindAll(request);
    Shown shown;
    shown.Add("adapter", AdapterColumns(), InOrder(request.host.adapters, selection.adapters));
    const std::vector<const Port*> ports = InOrder(request.host.ports, selection.ports);
    shown.Add("port", PortColumns(), ports);
    shown.Add("settings", SettingsColumns(), ports);
    shown.Add(TRANSCEIVER_KIND, TransceiverColumns(), ports);
    const std::vector<const Target*> targets = InOrder(request.host.targets, selection.targets);
    shown.Add("target", TargetColumns(), targets);
    shown.Add("lun", LunColumns(), InOrder(request.host.luns, selection.luns));
    AddCounters(request, ports, targets, shown);
    return shown;
}

// clang-format off
constexpr ColumnOf<KnownName> NAME[] = {
    {{"name", "NAME", Type::TEXT, Place::ALWAYS, "Name", "A name, as commands take it"}, [](const KnownName& n) { return TextValue(n.name); }},
    {{"object", "OBJECT", Type::TEXT, Place::ALWAYS, "Name", "What goes by it: adapter, port, target or lun"}, [](const KnownName& n) { return TextValue(n.kind); }},
};
// clang-format on

Shown ShowNames(const Request& request) {
    Shown shown;
    shown.AddRows<KnownName>("name", NAME, NamesOf(request.host));
    return shown;
}

constexpr const char* NAME_EXAMPLES[] = {"orfc names", "orfc names --columns name --no-headings"};
constexpr const char* OVERVIEW_EXAMPLES[] = {"orfc", "orfc --library simulator"};
constexpr const char* ADAPTER_EXAMPLES[] = {"orfc adapters", "orfc adapters -o json"};
constexpr const char* PORT_EXAMPLES[] = {"orfc ports", "orfc ports --columns port,state,speed_gbps",
                                         "orfc ports host2 -o json"};
constexpr const char* TARGET_EXAMPLES[] = {"orfc targets", "orfc targets 50060e80124a7c10"};
constexpr const char* LUN_EXAMPLES[] = {"orfc luns", "orfc luns sdb", "orfc luns --sort -size_bytes"};
constexpr const char* SHOW_EXAMPLES[] = {"orfc show host2", "orfc show 21:00:00:24:ff:7e:2d:94", "orfc show /dev/sdb"};
constexpr const char* TRANSCEIVER_EXAMPLES[] = {"orfc transceivers", "orfc transceivers host2 --far",
                                                "orfc transceivers --sort receive_power_dbm -o csv"};
constexpr const char* COUNTER_EXAMPLES[] = {"orfc counters host2", "orfc counters --interval 5 --count 12"};
constexpr const char* PING_EXAMPLES[] = {"orfc ping host2", "orfc ping host2 50:06:0e:80:12:4a:7c:10 --count 100",
                                         "orfc ping host2 --interval 0.1 -o json"};
constexpr const char* HEALTH_EXAMPLES[] = {"orfc health", "orfc health host2 --far", "orfc health --interval 10",
                                           "orfc health --explain link-down", "orfc health --nagios"};
constexpr const char* METRICS_EXAMPLES[] = {
    "orfc metrics", "orfc metrics --part counters --output /var/lib/prometheus/node-exporter/orfc-counters.prom"};
constexpr const char* CAPTURE_EXAMPLES[] = {"orfc capture", "orfc capture host.tar.xz"};
constexpr const char* PATH_EXAMPLES[] = {"orfc paths", "orfc paths mpatha", "orfc paths FC_21:00:00:24:ff:7e:2d:94"};

const Wanted TARGETS = {.targets = true, .luns = true};
const Wanted PATHS = {.portDetails = true, .targets = true, .luns = true};
const Wanted HEALTH = {
    .portDetails = true, .counters = true, .targets = true, .luns = true, .transceivers = true, .settings = true};
const Part METRICS_PARTS[] = {
    {COUNTERS_PART, {.portDetails = true, .counters = true, .targets = true, .luns = true, .modulesOfDownPorts = true}},
    {TRANSCEIVERS_PART, {.portDetails = true, .transceivers = true, .settings = true}}};
const Wanted EVERYTHING = {.portDetails = true,
                           .counters = true,
                           .targets = true,
                           .luns = true,
                           .transceivers = true,
                           .settings = true,
                           .vpd = true};

const CommandRow COMMANDS[] = {
    {.name = "",
     .summary = "the host on one screen",
     .description = "",
     .examples = OVERVIEW_EXAMPLES,
     .wanted = {.portDetails = true, .targets = true, .luns = true, .transceivers = true},
     .run = ShowOverview},
    {.name = "adapters",
     .summary = "adapters, one line each",
     .description = "Lists adapters: all, or those that are named or have what is named.",
     .examples = ADAPTER_EXAMPLES,
     .wanted = {},
     .wantedInFull = {.vpd = true},
     .takesNames = true,
     .run = ShowAdapters},
    {.name = "ports",
     .summary = "ports, one line each",
     .description = "Lists Fibre Channel and FCoE ports: all, or those that are named or lead to what is named.",
     .examples = PORT_EXAMPLES,
     .wanted = {.portDetails = true},
     .wantedInFull = {.counters = true},
     .takesNames = true,
     .run = ShowPorts},
    {.name = "targets",
     .summary = "targets, one line for each port that sees one",
     .description = "Lists targets: all, or those that are named, seen by what is named or have it.",
     .examples = TARGET_EXAMPLES,
     .wanted = TARGETS,
     .takesNames = true,
     .run = ShowTargets},
    {.name = "luns",
     .summary = "LUNs and namespaces, one line for each path",
     .description = "Lists LUNs and namespaces: all, or those that are named or reached over what is named.",
     .examples = LUN_EXAMPLES,
     .wanted = TARGETS,
     .takesNames = true,
     .run = ShowLuns},
    {.name = "show",
     .summary = "everything that is known of an object",
     .description = "Shows every known value of the named adapters, ports, targets and LUNs, with its key, by groups.",
     .examples = SHOW_EXAMPLES,
     .wanted = EVERYTHING,
     .takesNames = true,
     .needsNames = true,
     .isDetailed = true,
     .hasFar = true,
     .run = ShowObjects},
    {.name = "transceivers",
     .summary = "modules with their readings, thresholds and verdicts",
     .description = "Shows the module of each port: who made it, its readings with the four thresholds of each, power "
                    "in mW and dBm, and a verdict by the standards' arithmetic.",
     .examples = TRANSCEIVER_EXAMPLES,
     .wanted = {.portDetails = true, .transceivers = true},
     .takesNames = true,
     .hasFar = true,
     .run = ShowTransceivers},
    {.name = "counters",
     .summary = "counters, or what moves in them",
     .description = "Shows the counters of ports and targets; with an interval, those that moved in it.",
     .examples = COUNTER_EXAMPLES,
     .wanted = {.portDetails = true, .counters = true, .targets = true},
     .takesNames = true,
     .repeats = Repeats::READINGS,
     .run = ShowCounters},
    {.name = "paths",
     .summary = "LUNs by worldwide id, with every path to each",
     .description = "Shows LUNs by worldwide id and below each every path to it: the state of each step, from the link "
                    "to the multipath map, and a verdict. What is not redundant is marked.",
     .examples = PATH_EXAMPLES,
     .wanted = PATHS,
     .takesNames = true,
     .run = ShowPaths},
    {.name = "ping",
     .summary = "echo frames to remote ports",
     .description = "Sends echo frames (ELS ECHO) from the port that is named first to the remote ports that are named "
                    "after it, or to all that it sees, and tells how many came back unchanged, and when. Needs the "
                    "right to send frames.",
     .examples = PING_EXAMPLES,
     .wanted = PATHS,
     .takesNames = true,
     .needsNames = true,
     .repeats = Repeats::FRAMES,
     .run = ShowPing},
    {.name = "health",
     .summary = "a verdict for every object, with its reason",
     .description =
         "Judges every adapter, port, link, transceiver, target, path and LUN by rules and shows what isn't well: the "
         "reason in words, the figures that led to it, and the rule. Counters are compared with those of the last run, "
         "transmit power with the highest of 32 days; both are kept in a file, /var/lib/orfc/health.json for root and "
         "orfc/health.json below $XDG_STATE_HOME or ~/.local/state for others.",
     .examples = HEALTH_EXAMPLES,
     .wanted = HEALTH,
     .takesNames = true,
     .repeats = Repeats::COMPARISON,
     .hasFar = true,
     .hasRules = true,
     .run = ShowHealth,
     .fail = FailHealth},
    {.name = "metrics",
     .summary = "metrics for a collector",
     .description = "Writes ports, counters, transceivers, targets, paths and what health finds in the text format of "
                    "Prometheus: to standard output, or to a file for the node exporter's textfile collector, which is "
                    "replaced as a whole. What is unknown has no sample. Counters are compared with those of the last "
                    "run, as in health; those are kept in metrics.json or metrics-PART.json.",
     .examples = METRICS_EXAMPLES,
     .wanted = HEALTH,
     .hasRules = true,
     .isExposition = true,
     .parts = METRICS_PARTS,
     .run = ShowMetrics,
     .fail = FailMetrics},
    {.name = "names",
     .summary = "every name that an object goes by",
     .description = "Lists the names that commands take, and what goes by each.",
     .examples = NAME_EXAMPLES,
     .wanted = PATHS,
     .run = ShowNames},
    {.name = "capture",
     .summary = "the host in one file, to be shown elsewhere",
     .description =
         "Writes what the kernel tells of Fibre Channel ports, remote ports, LUNs and paths to a file, which "
         "--root takes in place of a folder: every command then shows this host as it was. Counters are read "
         "twice, a second apart. capture.json in it lists what couldn't be read, output/ has what the "
         "commands print. Without a name the file is named after the host and the time.",
     .examples = CAPTURE_EXAMPLES,
     .isCapture = true},
};

} // namespace

std::span<const CommandRow> Commands() {
    return COMMANDS;
}

void Shown::Add(std::unique_ptr<Records> records, For readers) {
    mSets.push_back({std::move(records), readers});
}

void Shown::Sort(const std::string& key) {
    for (Set& set : mSets) {
        auto sorted = std::make_unique<SortedRecords>(*set.records, key);
        mKept.push_back(std::move(set.records));
        set.records = std::move(sorted);
    }
}

void Shown::Fill(Answer& answer) const {
    for (const Set& set : mSets) {
        if (set.readers != For::PEOPLE) {
            answer.records.push_back(set.records.get());
        }
        if (set.readers != For::MACHINES) {
            answer.forPeople.push_back(set.records.get());
        }
    }
}

} // namespace orfc
