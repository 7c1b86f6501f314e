/// Metrics in the text format of Prometheus.
#include "Command.h"
#include "Exposition.h"
#include "Files.h"
#include "Verdicts.h"

#include <algorithm>
#include <sys/stat.h>

namespace orfc {

namespace {

using Type = Exposition::Type;
using Labels = Exposition::Labels;
using Value = std::optional<double>;

constexpr mode_t READABLE = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH; ///< by the exporter's user too

bool HasPart(const HealthOptions& options, const char* part) {
    return options.part.empty() || options.part == part;
}

template <typename Number> Value ValueOf(const std::optional<Number>& number) {
    return number ? Value(static_cast<double>(*number)) : std::nullopt;
}

/// The labels of everything that is of a port. The node exporter has the name as 16 digits, too.
Labels LabelsOf(const Port& port) {
    std::string digits = WwnText(port.portName);
    std::erase(digits, ':');
    return {{"port", port.identifier}, {"port_name", digits}};
}
Labels With(Labels labels, const char* name, const std::string& value) {
    labels.emplace_back(name, value);
    return labels;
}

// ---- What moves

/// A counter by the kernel's name, in base units.
void AddCounter(const std::string& prefix, std::string name, std::uint64_t value, const Labels& labels,
                Exposition& exposition) {
    constexpr double MEGABYTE = 1 << 20; // as drivers count
    const std::string help = "The operating system's counter " + name + ".";
    std::replace_if(
        name.begin(), name.end(), [](char c) { return (c < 'a' || c > 'z') && (c < '0' || c > '9'); }, '_');
    auto number = static_cast<double>(value);
    if (name == "seconds_since_last_reset") {
        exposition.Add(prefix + "since_reset_seconds", Type::GAUGE, help, labels, number);
        return;
    }
    if (name.ends_with("_count")) {
        name.resize(name.size() - std::string_view("_count").size());
    }
    if (const std::size_t unit = name.rfind("megabytes"); unit != std::string::npos) {
        name.replace(unit, std::string_view("mega").size(), "");
        number *= MEGABYTE;
    }
    exposition.Add(prefix + name + "_total", Type::COUNTER, help, labels, number);
}

void AddPorts(const Host& host, Exposition& exposition) {
    constexpr double GIGABIT = 1e9 / 8; // bytes
    for (const Port& port : host.ports) {
        const Labels labels = LabelsOf(port);
        Labels info = labels;
        info.insert(info.end(), {{"adapter", port.adapter->identifier},
                                 {"model", port.adapter->model},
                                 {"serial_number", port.adapter->serialNumber},
                                 {"fc_host", port.kernelName},
                                 {"driver", port.driver},
                                 {"driver_version", port.driverVersion},
                                 {"firmware_version", port.firmwareVersion},
                                 {"fabric", WwnText(port.fabricName)},
                                 {"switch", WwnText(port.switchName)}});
        exposition.Add("orfc_port_info", Type::GAUGE, "A port, by its labels.", info, 1);
        exposition.Add("orfc_port_up", Type::GAUGE, "Whether the link of the port is online.", labels,
                       port.state.empty() ? std::nullopt : Value(port.IsOnline()));
        exposition.Add("orfc_port_speed_bytes_per_second", Type::GAUGE, "Nominal speed of the link, 2e9 for 16 Gb/s.",
                       labels, port.speed ? Value(*port.speed * GIGABIT) : std::nullopt);
        for (const auto& [name, value] : port.counters) {
            AddCounter("orfc_port_", name, value, labels, exposition);
        }
    }
    for (const Target& target : host.targets) {
        const Labels labels = With(LabelsOf(*target.port), "target_port_name", WwnText(target.portName));
        for (const auto& [name, value] : target.counters) {
            AddCounter("orfc_target_", name, value, labels, exposition);
        }
    }
}

/// Numbers of targets and paths over each port, by state.
void AddTargets(const Host& host, Exposition& exposition) {
    std::map<const Port*, std::map<std::string, std::size_t>> targets, paths;
    for (const Port& port : host.ports) {
        targets[&port] = {{"up", 0}, {"down", 0}};
        paths[&port] = {{"up", 0}};
    }
    for (const Target& target : host.targets) {
        ++targets[target.port][target.IsDown() ? "down" : "up"];
    }
    for (const Lun& path : host.luns) {
        const std::optional<Step> step = path.DownAt();
        ++paths[path.target->port][step ? StepText(*step) : "up"];
    }
    for (const Port& port : host.ports) {
        for (const auto& [state, count] : targets[&port]) {
            exposition.Add("orfc_targets", Type::GAUGE, "Targets that the port sees, by state.",
                           With(LabelsOf(port), "state", state), static_cast<double>(count));
        }
        for (const auto& [state, count] : paths[&port]) {
            exposition.Add("orfc_paths", Type::GAUGE,
                           "Paths to LUNs and namespaces over the port, by state: up, or the step at which they are "
                           "down.",
                           With(LabelsOf(port), "state", state), static_cast<double>(count));
        }
    }
}

// ---- What takes long to read

/// A reading of a module as a sample, its thresholds and its verdict. `convert` makes the unit's base unit of it.
template <typename Unit, typename Convert>
void AddReading(const char* name, const char* unit, const char* what, const Monitored<Unit>& reading,
                const Labels& labels, Convert convert, Exposition& exposition) {
    if (!reading) {
        return;
    }
    const std::string metric = std::string("orfc_transceiver_") + name;
    exposition.Add(metric + "_" + unit, Type::GAUGE, std::string(what) + ".", labels, convert(reading->value));
    if (const auto& bounds = reading->thresholds) {
        const auto add = [&](const Unit& bound, const char* severity, const char* side) {
            exposition.Add(metric + "_threshold_" + unit, Type::GAUGE, std::string("Thresholds of it: ") + what + ".",
                           With(With(labels, "severity", severity), "bound", side), convert(bound));
        };
        add(bounds->lowAlarm, "alarm", "low");
        add(bounds->lowWarning, "warning", "low");
        add(bounds->highWarning, "warning", "high");
        add(bounds->highAlarm, "alarm", "high");
        const decoders::Verdict verdict = *reading->Judged();
        const bool isWarning = verdict == decoders::Verdict::LOW_WARNING || verdict == decoders::Verdict::HIGH_WARNING;
        exposition.Add("orfc_transceiver_verdict", Type::GAUGE,
                       "Verdict over a reading: 0 ok, 1 past a warning threshold, 2 past an alarm threshold.",
                       With(labels, "reading", name),
                       verdict == decoders::Verdict::OK ? 0
                       : isWarning                      ? 1
                                                        : 2);
    }
}

void AddTransceivers(const Host& host, Exposition& exposition) {
    constexpr double MILLI = 1e-3;
    const auto plain = [](const auto& value) { return Value(value.value); };
    const auto amperes = [](const decoders::Milliamperes& bias) { return Value(bias.value * MILLI); };
    const auto dbm = [](const decoders::Milliwatts& power) {
        const auto level = decoders::DbmOf(power);
        return level ? Value(level->value) : std::nullopt;
    };
    for (const Port& port : host.ports) {
        const Labels labels = LabelsOf(port);
        const Transceiver& module = port.transceiver;
        if (module.state == ModuleState::READ) {
            Labels info = labels;
            info.insert(info.end(), {{"vendor", module.identity.vendor},
                                     {"part_number", module.identity.partNumber},
                                     {"serial_number", module.identity.serialNumber},
                                     {"revision", module.identity.revision}});
            exposition.Add("orfc_transceiver_info", Type::GAUGE, "A module, by its labels.", info, 1);
        }
        exposition.Add("orfc_transceiver_present", Type::GAUGE, "Whether a module is plugged in.", labels,
                       module.state == ModuleState::UNREAD ? std::nullopt : Value(module.state != ModuleState::EMPTY));
        AddReading("temperature", "celsius", "Temperature of the module", module.temperature, labels, plain,
                   exposition);
        AddReading("supply", "volts", "Supply voltage of the module", module.voltage, labels, plain, exposition);
        for (std::size_t lane = 0; lane < module.lanes.size(); ++lane) {
            const Labels own = With(labels, "lane", std::to_string(lane + 1));
            AddReading("bias", "amperes", "Laser bias current", module.lanes[lane].bias, own, amperes, exposition);
            AddReading("transmit_power", "dbm", "Transmitted power, without a sample where there is no light",
                       module.lanes[lane].transmitPower, own, dbm, exposition);
            AddReading("receive_power", "dbm", "Received power, without a sample where there is no light",
                       module.lanes[lane].receivePower, own, dbm, exposition);
        }
        const PortSettings& settings = port.settings;
        exposition.Add("orfc_port_board_temperature_celsius", Type::GAUGE, "Temperature of the port's board.", labels,
                       ValueOf(settings.temperature));
        exposition.Add("orfc_port_fec_enabled", Type::GAUGE, "Whether forward error correction is on.", labels,
                       ValueOf(settings.fec));
        exposition.Add("orfc_port_fec_corrected_errors_total", Type::COUNTER,
                       "Errors that forward error correction has corrected.", labels,
                       ValueOf(settings.correctedFecErrors));
        exposition.Add("orfc_port_fec_uncorrected_errors_total", Type::COUNTER,
                       "Errors that forward error correction could not correct.", labels,
                       ValueOf(settings.uncorrectedFecErrors));
        exposition.Add("orfc_port_credit_recovery_enabled", Type::GAUGE, "Whether credit recovery is in use.", labels,
                       ValueOf(settings.isCreditRecoveryRunning));
    }
}

// ---- Health, and the run itself

/// Findings by rule and by what they have in common, so that a thousand paths are one sample for each port.
void AddHealth(const Health& health, const RuleBook& rules, Exposition& exposition) {
    std::map<const Rule*, std::map<Labels, double>> counts;
    for (const Finding& finding : health.findings) {
        if (finding.rule != nullptr) {
            const Object& object = finding.object;
            Labels labels = object.port != nullptr ? LabelsOf(*object.port) : Labels();
            if (object.subject == Subject::ADAPTER) {
                labels = With(std::move(labels), "adapter", object.adapter->identifier);
            }
            ++counts[finding.rule][std::move(labels)];
        }
    }
    for (const RuleBook::Entry& entry : rules.Entries()) {
        if (!entry.isOn) {
            continue;
        }
        const Rule& rule = *entry.rule;
        const Labels labels = {
            {"rule", rule.name}, {"severity", SeverityText(rule.severity)}, {"subject", SubjectText(rule.subject)}};
        double all = 0;
        for (const auto& [own, count] : counts[&rule]) {
            Labels joined = labels;
            joined.insert(joined.end(), own.begin(), own.end());
            exposition.Add("orfc_health_findings", Type::GAUGE,
                           "Objects to which a rule of orfc health applies, of a port or adapter, no sample where "
                           "there is none.",
                           joined, count);
            all += count;
        }
        exposition.Add("orfc_health_rule_findings", Type::GAUGE,
                       "Objects to which a rule of orfc health applies, of the whole host.", labels, all);
    }
}

/// How the run did: `isWhole(what)` for each thing that it reads.
template <typename IsWhole> void AddRun(const HealthOptions& options, IsWhole isWhole, Exposition& exposition) {
    for (const char* part : {COUNTERS_PART, TRANSCEIVERS_PART}) {
        if (HasPart(options, part)) {
            const Labels labels = {{"what", part}};
            exposition.Add("orfc_scrape_success", Type::GAUGE, "Whether everything could be read.", labels,
                           isWhole(part) ? 1 : 0);
            exposition.Add("orfc_last_run_timestamp_seconds", Type::GAUGE, "When this was read, since the epoch.",
                           labels, CurrentTime());
        }
    }
}

/// Replaces the file, or returns the text for standard output.
std::string Deliver(const HealthOptions& options, const Exposition& exposition) {
    if (options.output.empty()) {
        return exposition.Text();
    }
    LockedFile(options.output).Replace(exposition.Text(), READABLE);
    return {};
}

} // namespace

Shown ShowMetrics(const Request& request) {
    Shown shown;
    if (request.health == nullptr) { // no records, so no columns
        return shown;
    }
    const HealthOptions& options = *request.health;
    Exposition exposition;
    if (HasPart(options, COUNTERS_PART)) {
        AddPorts(request.host, exposition);
        AddTargets(request.host, exposition);
    }
    if (HasPart(options, TRANSCEIVERS_PART)) {
        AddTransceivers(request.host, exposition);
    }
    const Judgement judged = JudgeAndRemember(request, options.part.empty() ? std::string("metrics.json")
                                                                            : "metrics-" + options.part + ".json");
    AddHealth(judged.health, judged.rules, exposition);
    const auto isOfModule = [](const std::string& message) {
        return message.find(": transceiver: ") != std::string::npos;
    };
    const std::vector<std::string>& messages = request.host.messages;
    AddRun(
        options,
        [&](const char* part) {
            return !options.part.empty()       ? messages.empty()
                   : part == TRANSCEIVERS_PART ? std::none_of(messages.begin(), messages.end(), isOfModule)
                                               : std::all_of(messages.begin(), messages.end(), isOfModule);
        },
        exposition);
    shown.text = {Deliver(options, exposition)};
    return shown;
}

std::optional<Shown::Text> FailMetrics(const HealthOptions& options, const std::string&) {
    Exposition exposition;
    AddRun(
        options, [](const char*) { return false; }, exposition);
    try {
        return Shown::Text{Deliver(options, exposition)};
    } catch (const Failure&) { // which may be what failed
        return std::nullopt;
    }
}

} // namespace orfc
