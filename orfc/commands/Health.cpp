/// Verdicts over all objects: as records, in one line for checkers.
#include "Command.h"
#include "Utf8.h"
#include "Verdicts.h"

#include <algorithm>

namespace orfc {

namespace {

constexpr char STATE_FILE[] = "health.json";
constexpr char PLUGIN[] = "ORFC";
enum PluginStatus { PLUGIN_OK, PLUGIN_WARNING, PLUGIN_CRITICAL, PLUGIN_UNKNOWN };

const Port* PortOf(const Finding& finding) {
    return finding.object.port;
}

// clang-format off
constexpr ColumnOf<Finding> FINDING[] = {
    {{"verdict", "VERDICT", Type::VERDICT, Place::HEADING, "Health", "ok, warning, critical, or unknown if something couldn't be read"}, [](const Finding& f) { return TextValue(SeverityText(f.severity)); }},
    {{"reason", "REASON", Type::TEXT, Place::HEADING, "Health", "What is wrong, in words"}, [](const Finding& f) { return TextValue(f.Reason()); }},
    {{"rule", "rule", Type::TEXT, Place::HEADING, "Health", "The rule that applies, unknown if none does; health --explain tells what it means"}, [](const Finding& f) { return f.rule != nullptr ? TextValue(f.rule->name) : Value(); }},
    {{"subject", "SUBJECT", Type::TEXT, Place::TABLE, "Health", "What is judged: adapter, port, link, transceiver, target, path or LUN"}, [](const Finding& f) { return TextValue(SubjectText(f.object.subject)); }},
    {{"object", "OBJECT", Type::TEXT, Place::ALWAYS, "Health", "Its identifier, as in orfc-esxcli; the worldwide id of a LUN"}, [](const Finding& f) { return TextValue(f.object.Identifier()); }},
    {{"figures", "FIGURES", Type::TEXT, Place::TABLE, "Health", "The figures that led to the verdict"}, [](const Finding& f) { return TextValue(f.figures); }},
    {{"host", "HOST", Type::TEXT, Place::TABLE, "Health", "The kernel's name of its port"}, [](const Finding& f) { return PortOf(f) != nullptr ? TextValue(PortOf(f)->kernelName) : Value(); }},
    {{"port", "PORT", Type::TEXT, Place::WIDE, "Health", "Identifier of its port, unknown for an adapter and a LUN"}, [](const Finding& f) { return PortOf(f) != nullptr ? TextValue(PortOf(f)->identifier) : Value(); }},
};

/// How many objects of a subject have which verdict.
struct Summary {
    Subject subject;
    std::uint64_t counts[4] = {}; ///< by severity
};
template <Severity severity> Value CountValue(const Summary& summary) {
    return summary.counts[static_cast<int>(severity)];
}
constexpr ColumnOf<Summary> SUMMARY[] = {
    {{"objects", "OBJECTS", Type::TEXT, Place::ALWAYS, "", ""}, [](const Summary& s) { return TextValue(SubjectText(s.subject)); }},
    {{"ok", "OK", Type::INTEGER, Place::ALWAYS, "", ""}, CountValue<Severity::OK>},
    {{"warning", "WARNING", Type::INTEGER, Place::ALWAYS, "", ""}, CountValue<Severity::WARNING>},
    {{"critical", "CRITICAL", Type::INTEGER, Place::ALWAYS, "", ""}, CountValue<Severity::CRITICAL>},
    {{"unknown", "UNKNOWN", Type::INTEGER, Place::ALWAYS, "", ""}, CountValue<Severity::UNKNOWN>},
};
// clang-format on

/// Findings of one object follow one another.
std::vector<Summary> SummariesOf(const std::vector<Finding>& findings) {
    std::vector<Summary> summaries;
    for (std::size_t at = 0; at < findings.size();) {
        const Object& object = findings[at].object;
        Severity worst = Severity::OK;
        for (; at < findings.size() && findings[at].object == object; ++at) {
            worst = std::max(worst, findings[at].severity);
        }
        if (summaries.empty() || summaries.back().subject != object.subject) {
            summaries.push_back({object.subject});
        }
        ++summaries.back().counts[static_cast<int>(worst)];
    }
    return summaries;
}

/// A text in the line of a checker, in which a bar ends what people read.
std::string PluginText(const std::string& text) {
    std::string plain = LineText(text);
    std::replace(plain.begin(), plain.end(), '|', '/');
    return plain;
}

/// "'LABEL'=VALUEUNIT;WARNING;CRITICAL"; ranges from the low to the high threshold.
template <typename Unit, typename Number>
void AddMetric(const Port& port, const char* name, const Monitored<Unit>& value, Number number, std::string& data) {
    if (const std::string text = value ? TextOf(number(value->value)) : ""; !text.empty()) {
        data += " '" + port.identifier + " " + name + "'=" + text + ";";
        if (const auto& bounds = value->thresholds) {
            data += TextOf(number(bounds->lowWarning)) + ":" + TextOf(number(bounds->highWarning)) + ";" +
                    TextOf(number(bounds->lowAlarm)) + ":" + TextOf(number(bounds->highAlarm));
        } else {
            data += ";";
        }
    }
}

/// `bad` has the findings that aren't ok, the worst first.
Shown::Text PluginLine(const std::vector<Finding>& findings, const std::vector<Finding>& bad,
                       const std::vector<const Port*>& ports, bool isIncomplete) {
    constexpr std::size_t MOST_REASONS = 5;
    std::uint64_t counts[4] = {};
    for (const Summary& summary : SummariesOf(findings)) {
        for (std::size_t severity = 0; severity < std::size(counts); ++severity) {
            counts[severity] += summary.counts[severity];
        }
    }
    const auto count = [&counts](Severity severity) { return counts[static_cast<int>(severity)]; };
    const PluginStatus status = count(Severity::CRITICAL) != 0                  ? PLUGIN_CRITICAL
                                : count(Severity::WARNING) != 0                 ? PLUGIN_WARNING
                                : count(Severity::UNKNOWN) != 0 || isIncomplete ? PLUGIN_UNKNOWN
                                                                                : PLUGIN_OK;
    constexpr const char* WORDS[] = {"OK", "WARNING", "CRITICAL", "UNKNOWN"};
    std::string line = std::string(PLUGIN) + " " + WORDS[status] + " - ";
    std::string data;
    for (const Severity severity : {Severity::CRITICAL, Severity::WARNING, Severity::UNKNOWN, Severity::OK}) {
        const std::string number = std::to_string(count(severity));
        line += (data.empty() ? "" : ", ") + number + " " + SeverityText(severity);
        data += (data.empty() ? "" : " ") + std::string(SeverityText(severity)) + "=" + number;
    }
    for (std::size_t at = 0; at < std::min(bad.size(), MOST_REASONS); ++at) {
        line += (at == 0 ? ": " : "; ") +
                PluginText(bad[at].object.Identifier() + ": " + bad[at].Reason() + " (" + bad[at].figures + ")");
    }
    line += bad.size() > MOST_REASONS ? "; and " + std::to_string(bad.size() - MOST_REASONS) + " more" : "";
    const auto dbm = [](decoders::Milliwatts power) {
        const auto level = decoders::DbmOf(power);
        return level ? Value(Decimal{level->value, 2}) : Value();
    };
    const auto celsius = [](decoders::Celsius temperature) { return Value(Decimal{temperature.value, 1}); };
    for (const Port* port : ports) {
        const Transceiver& module = port->transceiver;
        AddMetric(*port, "temperature", module.temperature, celsius, data);
        for (std::size_t lane = 0; lane < module.lanes.size(); ++lane) {
            const std::string suffix = module.lanes.size() > 1 ? " lane " + std::to_string(lane + 1) : "";
            AddMetric(*port, ("transmit dBm" + suffix).c_str(), module.lanes[lane].transmitPower, dbm, data);
            AddMetric(*port, ("receive dBm" + suffix).c_str(), module.lanes[lane].receivePower, dbm, data);
        }
    }
    return {line + " | " + data + "\n", status};
}

/// Earlier readings, and where later runs find those of this one; nowhere if the earlier ones can't be read.
Readings EarlierReadings(const Request& request, std::string& file) {
    if (request.before != nullptr) {
        return ReadingsOf(*request.before, CurrentTime() - request.seconds, {});
    }
    if (file.empty()) {
        return {};
    }
    try {
        return LoadReadings(file);
    } catch (const Failure& failure) {
        request.messages->push_back(std::string("earlier readings: ") + failure.what());
        file.clear();
        return {};
    }
}

/// Whether an object is one of those that the names of a request denote.
bool IsMeant(const Object& object, const Selection& selection) {
    switch (object.subject) {
    case Subject::ADAPTER:
        return selection.adapters.contains(object.adapter);
    case Subject::TARGET:
        return selection.targets.contains(object.target);
    case Subject::PATH:
        return selection.luns.contains(object.path);
    case Subject::LUN:
        return std::any_of(object.lun->ways.begin(), object.lun->ways.end(),
                           [&](const Lun* way) { return selection.luns.contains(way); });
    default:
        return selection.ports.contains(object.port);
    }
}

} // namespace

Judgement JudgeAndRemember(const Request& request, const std::string& stateName) {
    const HealthOptions& options = *request.health;
    RuleBook rules = options.rules.empty() ? RuleBook() : RuleBook(options.rules);
    if (!options.part.empty()) {
        rules.Limit(options.part == TRANSCEIVERS_PART);
    }
    std::string file = request.before != nullptr ? std::string() : options.state.value_or(UsualStateFile(stateName));
    const Readings earlier = EarlierReadings(request, file);
    const Readings now = ReadingsOf(request.host, CurrentTime(), CurrentBoot());
    Health health = Judge(request.host, rules, now, earlier);
    if (const std::optional<Selection> selection = SelectionOf(request)) {
        std::erase_if(health.findings, [&](const Finding& finding) { return !IsMeant(finding.object, *selection); });
    }
    if (!file.empty()) {
        try {
            SaveReadings(file, now);
        } catch (const Failure& failure) {
            request.messages->push_back(std::string("readings aren't kept: ") + failure.what());
        }
    }
    return {std::move(rules), std::move(health)};
}

Shown ShowHealth(const Request& request) {
    Health health = request.health != nullptr ? JudgeAndRemember(request, STATE_FILE).health : Health();
    std::vector<Finding> bad;
    std::copy_if(health.findings.begin(), health.findings.end(), std::back_inserter(bad),
                 [](const Finding& finding) { return finding.severity != Severity::OK; });
    std::stable_sort(bad.begin(), bad.end(), [](const Finding& left, const Finding& right) {
        return left.severity != right.severity ? left.severity > right.severity : std::less<>()(left.rule, right.rule);
    });
    Shown shown;
    if (request.health != nullptr && request.health->isNagios) {
        shown.text = PluginLine(health.findings, bad, PortsOf(request), !request.host.messages.empty());
    }
    shown.Keep(std::make_shared<decltype(health.luns)>(health.luns));
    shown.AddRows<Finding>("verdict", FINDING, std::move(bad), Shown::For::PEOPLE);
    shown.AddRows<Summary>("summary", SUMMARY, SummariesOf(health.findings), Shown::For::PEOPLE);
    shown.AddRows<Finding>("verdict", FINDING, std::move(health.findings), Shown::For::MACHINES);
    return shown;
}

std::optional<Shown::Text> FailHealth(const HealthOptions& options, const std::string& failure) {
    return options.isNagios ? std::optional(Shown::Text{
                                  std::string(PLUGIN) + " UNKNOWN - " + PluginText(failure) + "\n", PLUGIN_UNKNOWN})
                            : std::nullopt;
}

} // namespace orfc
