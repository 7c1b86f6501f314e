#include "Rules.h"

#include "Failure.h"
#include "Files.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <set>

namespace orfc {

namespace {

using decoders::Verdict;
using Figures = std::optional<std::string>;

// ---- Figures

std::string NumberText(double number, int digits = 2) {
    char text[400]; // the largest number has 309 digits before the point
    std::snprintf(text, sizeof text, "%.*f", digits, number);
    return text;
}
/// With no more digits than it needs, as in a file of rules.
std::string BoundText(double bound) {
    char text[40];
    std::snprintf(text, sizeof text, "%g", bound);
    return text;
}
std::string SpeedText(unsigned speed) {
    return std::to_string(speed) + " Gb/s";
}
std::string SecondsText(double seconds) {
    return NumberText(seconds, seconds < 10 ? 1 : 0) + " s";
}
void Append(std::string& text, const std::string& more) {
    text += (text.empty() ? "" : ", ") + more;
}
Figures UnlessEmpty(std::string text) {
    return text.empty() ? Figures() : Figures(std::move(text));
}

// ---- Adapters and ports

bool IsLink(const Port& port) {
    return port.interface != "virtual";
}

Figures SpeedsDiffer(const Object& object, const Evidence& evidence) {
    std::string text;
    std::set<unsigned> speeds;
    for (const Port& port : evidence.host.ports) {
        if (port.adapter == object.adapter && IsLink(port) && port.IsOnline() && port.speed) {
            speeds.insert(*port.speed);
            Append(text, port.identifier + " " + SpeedText(*port.speed));
        }
    }
    return speeds.size() > 1 ? Figures(text) : Figures();
}

/// Of a text that most like ports have in common: this port's, if it is another.
Figures DiffersFromMost(const Object& object, const Evidence& evidence, std::string Port::*member) {
    const std::string& own = object.port->*member;
    std::map<std::string_view, std::size_t> counts;
    for (const Port& port : evidence.host.ports) {
        if (port.adapter->model == object.adapter->model && !(port.*member).empty()) {
            ++counts[port.*member];
        }
    }
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto& left, const auto& right) { return left.second < right.second; });
    if (own.empty() || most->first == own) {
        return {};
    }
    return own + ", " + std::string(most->first) + " on " + std::to_string(most->second) + " like ports";
}
Figures FirmwareDiffers(const Object& object, const Evidence& evidence) {
    return DiffersFromMost(object, evidence, &Port::firmwareVersion);
}
Figures DriverDiffers(const Object& object, const Evidence& evidence) {
    return DiffersFromMost(object, evidence, &Port::driverVersion);
}

Figures BoardIsHot(const Object& object, const Evidence& evidence) {
    const std::optional<int> celsius = object.port->settings.temperature;
    return celsius && *celsius > evidence.bounds[0]
               ? Figures(std::to_string(*celsius) + " C, bound " + BoundText(evidence.bounds[0]) + " C")
               : Figures();
}

// ---- Links

/// An empty bay has no link to lose.
Figures LinkIsDown(const Object& object, const Evidence&) {
    const Port& port = *object.port;
    const bool isDown = port.state == "offline" && port.transceiver.state != ModuleState::EMPTY;
    return isDown ? Figures(port.linkState.empty() ? port.state : port.linkState) : Figures();
}

Figures LinkIsSlow(const Object& object, const Evidence&) {
    const Port& port = *object.port;
    unsigned best = 0;
    for (const unsigned speed : port.supportedSpeeds) {
        const std::vector<unsigned>& far = port.farEnd.supportedSpeeds;
        best = std::find(far.begin(), far.end(), speed) != far.end() ? std::max(best, speed) : best;
    }
    return port.speed && *port.speed < best ? Figures(SpeedText(*port.speed) + ", both ends can " + SpeedText(best))
                                            : Figures();
}

bool IsError(std::string_view name) {
    constexpr std::string_view ERRORS[] = {
        "dumped_frames",          "error_frames",         "invalid_crc_count",  "invalid_tx_word_count",
        "link_failure_count",     "loss_of_signal_count", "loss_of_sync_count", "prim_seq_protocol_err_count",
        "controller_error_count", "device_error_count"};
    const bool isSignal = name.starts_with("fpin_li") || name.starts_with("fpin_dn");
    return isSignal || std::find(std::begin(ERRORS), std::end(ERRORS), name) != std::end(ERRORS);
}
/// Signals that congestion is over have a name of their own.
bool IsCongestion(std::string_view name) {
    return (name.starts_with("fpin_cn") || name.starts_with("fpin_pn") || name.starts_with("cn_sig_")) &&
           !name.ends_with("_clear");
}

std::uint64_t MovementOf(const std::string& name, const Counters& before, const Counters& now, bool wasReset) {
    const auto fresh = now.find(name);
    const auto old = before.find(name);
    return fresh == now.end() ? 0 : IncreaseOf(old != before.end() ? old->second : 0, fresh->second, wasReset);
}

/// The counters of a kind that moved by more than `bound` since the last reading, and by how much.
Figures Moved(const Counters& before, const Counters& now, const Evidence& evidence,
              bool (*isMeant)(std::string_view)) {
    std::string text;
    const bool wasReset = WasReset(*evidence.before, *evidence.now);
    for (const auto& [name, value] : now) {
        const std::uint64_t increase = isMeant(name) ? MovementOf(name, before, now, wasReset) : 0;
        if (increase > 0 && static_cast<double>(increase) > evidence.bounds[0]) {
            Append(text, name + " +" + std::to_string(increase));
        }
    }
    return text.empty() ? Figures() : Figures(text + " in " + SecondsText(evidence.seconds));
}
template <auto isMeant> Figures PortCountersMoved(const Object&, const Evidence& evidence) {
    return evidence.before != nullptr ? Moved(evidence.before->counters, evidence.now->counters, evidence, isMeant)
                                      : Figures();
}
Figures TargetIsCongested(const Object& object, const Evidence& evidence) {
    static const Counters NONE;
    if (evidence.before == nullptr) {
        return {};
    }
    const auto before = evidence.before->targets.find(object.target->identifier);
    const bool isKnown = before != evidence.before->targets.end();
    return isKnown ? Moved(before->second, object.target->counters, evidence, IsCongestion) : Figures();
}

/// A counter that moved by at least bound 0, and by more than bound 1 in a minute.
Figures Rate(const char* name, const Evidence& evidence) {
    if (evidence.before == nullptr) {
        return {};
    }
    const auto increase = static_cast<double>(
        MovementOf(name, evidence.before->counters, evidence.now->counters, WasReset(*evidence.before, *evidence.now)));
    const double perMinute = 60 * increase / evidence.seconds;
    const bool isMuch = increase > 0 && increase >= evidence.bounds[0] && perMinute > evidence.bounds[1];
    return isMuch
               ? Figures(std::string(name) + " +" + NumberText(increase, 0) + " in " + NumberText(evidence.seconds, 0) +
                         " s, " + NumberText(perMinute, 1) + " per minute, bound " + BoundText(evidence.bounds[1]))
               : Figures();
}
Figures CrcRate(const Object&, const Evidence& evidence) {
    return Rate("invalid_crc_count", evidence);
}
Figures SyncLossRate(const Object&, const Evidence& evidence) {
    return Rate("loss_of_sync_count", evidence);
}

Figures CreditRecoveryIsOff(const Object& object, const Evidence&) {
    const Port& port = *object.port;
    const PortSettings& settings = port.settings;
    const bool isOff =
        port.IsOnline() && settings.creditRecovery.value_or(false) && !settings.isCreditRecoveryRunning.value_or(true);
    return isOff
               ? Figures("configured here" +
                         (settings.creditRecoveryReason.empty() ? std::string() : ": " + settings.creditRecoveryReason))
               : Figures();
}

Figures FecIsOff(const Object& object, const Evidence& evidence) {
    const Port& port = *object.port;
    const bool isOff =
        port.IsOnline() && port.speed && *port.speed >= evidence.bounds[0] && !port.settings.fec.value_or(true);
    return isOff ? Figures("off at " + SpeedText(*port.speed)) : Figures();
}

// ---- Transceivers

Figures ModuleIsBad(const Object& object, const Evidence&) {
    const Transceiver& module = object.port->transceiver;
    return module.state == ModuleState::BAD                            ? Figures("of the identity")
           : module.diagnosticsChecksum == decoders::Checksum::INVALID ? Figures("of the thresholds")
                                                                       : Figures();
}

template <typename Unit> std::string ReadingText(const Unit& value, int digits, const char* unit) {
    return NumberText(value.value, digits) + unit;
}
std::string ReadingText(const decoders::Milliwatts& power, int, const char*) {
    const auto dbm = decoders::DbmOf(power);
    return dbm ? NumberText(dbm->value) + " dBm" : "0 mW";
}

template <typename Unit>
void AppendPast(const char* name, const Monitored<Unit>& value, int digits, const char* unit, bool isAlarm,
                std::string& text) {
    const auto verdict = value ? value->Judged() : std::nullopt;
    if (!verdict || *verdict == Verdict::OK) {
        return;
    }
    const bool isOfAlarm = *verdict == Verdict::LOW_ALARM || *verdict == Verdict::HIGH_ALARM;
    const bool isLow = *verdict == Verdict::LOW_ALARM || *verdict == Verdict::LOW_WARNING;
    if (isOfAlarm == isAlarm) {
        const decoders::Thresholds<Unit>& thresholds = *value->thresholds;
        const Unit& bound = isAlarm ? (isLow ? thresholds.lowAlarm : thresholds.highAlarm)
                                    : (isLow ? thresholds.lowWarning : thresholds.highWarning);
        Append(text, std::string(name) + " " + ReadingText(value->value, digits, unit) +
                         (isLow ? " below " : " above ") + ReadingText(bound, digits, unit));
    }
}

Figures ReadingsPast(const Transceiver& module, bool isAlarm) {
    std::string text;
    AppendPast("temperature", module.temperature, 1, " C", isAlarm, text);
    AppendPast("supply", module.voltage, 3, " V", isAlarm, text);
    for (const Lane& lane : module.lanes) {
        AppendPast("bias", lane.bias, 3, " mA", isAlarm, text);
        AppendPast("transmit power", lane.transmitPower, 2, "", isAlarm, text);
        AppendPast("receive power", lane.receivePower, 2, "", isAlarm, text);
    }
    return UnlessEmpty(text);
}
template <bool isAlarm> Figures NearReadings(const Object& object, const Evidence&) {
    return ReadingsPast(object.port->transceiver, isAlarm);
}
template <bool isAlarm> Figures FarReadings(const Object& object, const Evidence&) {
    return ReadingsPast(object.port->farEnd.transceiver, isAlarm);
}

Figures TransmitPowerFalls(const Object&, const Evidence& evidence) {
    if (evidence.before == nullptr || evidence.before->module != evidence.now->module) {
        return {};
    }
    std::string text;
    const std::size_t lanes = std::min(evidence.before->powers.size(), evidence.now->powers.size());
    for (std::size_t number = 0; number < lanes; ++number) {
        const std::vector<Reading::Power>& kept = evidence.before->powers[number];
        const std::vector<Reading::Power>& now = evidence.now->powers[number];
        const auto most = std::max_element(kept.begin(), kept.end(),
                                           [](const auto& left, const auto& right) { return left.dbm < right.dbm; });
        if (!now.empty() && most != kept.end() && most->dbm - now.front().dbm > evidence.bounds[0]) {
            Append(text, NumberText(now.front().dbm) + " dBm, was " + NumberText(most->dbm) + " dBm");
        }
    }
    return UnlessEmpty(text);
}

// ---- Targets, paths and LUNs

Figures TargetIsDown(const Object& object, const Evidence&) {
    const Target& target = *object.target;
    return target.IsDown() ? Figures(target.kernelState.empty() ? target.state : target.kernelState) : Figures();
}
Figures TargetIsMarginal(const Object& object, const Evidence&) {
    return object.target->kernelState == "Marginal" ? Figures(object.target->kernelState) : Figures();
}

Figures PathIsDown(const Object& object, const Evidence&) {
    const std::optional<Step> step = object.path->DownAt();
    if (!step) {
        return {};
    }
    const Lun& path = *object.path;
    switch (*step) {
    case Step::LINK:
        return "link " + (object.port->linkState.empty() ? object.port->state : object.port->linkState);
    case Step::REMOTE_PORT:
        return "remote port " +
               (object.target->kernelState.empty() ? object.target->state : object.target->kernelState);
    case Step::DEVICE:
        return "device " + path.state;
    case Step::ACCESS:
        return "access " + path.accessState;
    case Step::MAP:
        return "in map " + (path.mapPathState == "failed" ? path.mapPathState : path.mapState);
    }
    return {};
}
Figures PathIsInForeignMap(const Object& object, const Evidence&) {
    const Lun& path = *object.path;
    return path.IsForeignInMap() ? Figures(path.worldwideId + " in " + path.map + ", " + path.mapId) : Figures();
}

/// A tape has one path, whatever the cabling.
template <Redundancy redundancy> Figures Redundant(const Object& object, const Evidence&) {
    const Volume& lun = *object.lun;
    if (lun.Judge() != redundancy || (redundancy != Redundancy::NO_PATH && lun.ways.front()->target->type == "tape")) {
        return {};
    }
    std::string text = std::to_string(lun.WaysUp()) + " of " + std::to_string(lun.ways.size()) + " paths up";
    for (const Lun* way : lun.ways) {
        if (redundancy != Redundancy::NO_PATH && !way->DownAt()) {
            const Port& port = *way->target->port;
            return text + ", " +
                   (redundancy == Redundancy::ONE_FABRIC ? "fabric " + WwnText(port.fabricName) : port.identifier);
        }
    }
    return text;
}

// ---- The table

constexpr Bound HOT[] = {{"celsius", 80, "temperature of the board in degrees Celsius"}};
constexpr Bound TOO_HOT[] = {{"celsius", 95, "temperature of the board in degrees Celsius"}};
constexpr Bound GROWTH[] = {{"increase", 0, "increase since the last reading"}};
constexpr Bound RATE[] = {{"increase", 5, "least increase since the last reading"},
                          {"per_minute", 1, "increase for each minute"}};
constexpr Bound FEC_SPEED[] = {{"gbps", 16, "speed of the link from which on the standard has error correction"}};
constexpr Bound FALL[] = {{"db", 1.5, "fall in dB below the highest power of the last 32 days"}};

constexpr Rule RULES[] = {
    {"speed-differs",
     Subject::ADAPTER,
     Severity::WARNING,
     {},
     "ports of one adapter run at different speeds",
     "Links of an adapter usually lead to like switches. One that negotiated a lower speed has a worse cable or "
     "module, or another switch port.",
     "Compare the modules and the switch ports of the links; set the slower switch port to the speed of the other.",
     SpeedsDiffer},
    {"firmware-differs",
     Subject::PORT,
     Severity::WARNING,
     {},
     "other firmware than most ports of this model",
     "Ports that share a load should fail and recover alike.",
     "Update the adapter's flash, and restart the host for it to run.",
     FirmwareDiffers,
     IS_SLOW},
    {"driver-differs",
     Subject::PORT,
     Severity::WARNING,
     {},
     "another driver version than most ports of this model",
     "One host has one version of a driver, unless a port was set up by another module.",
     "Install the same driver for all, and load it anew.",
     DriverDiffers,
     IS_SLOW},
    {"board-hot", Subject::PORT, Severity::WARNING, HOT, "the board is hot",
     "Heat shortens the life of chips and modules.", "Look at the fans, the air flow and the temperature of the room.",
     BoardIsHot, IS_SLOW},
    {"board-too-hot", Subject::PORT, Severity::CRITICAL, TOO_HOT, "the board is too hot",
     "The adapter may throttle or stop.", "Cool the host at once, or take the load off it.", BoardIsHot, IS_SLOW},
    {"link-down",
     Subject::LINK,
     Severity::CRITICAL,
     {},
     "the link is down",
     "Nothing is reached over this port. A port whose bay is empty isn't meant.",
     "Look at the cable, at the module's receive power (orfc transceivers) and at the switch port. Switch the rule off "
     "where ports are kept unused.",
     LinkIsDown},
    {"link-slow",
     Subject::LINK,
     Severity::WARNING,
     {},
     "slower than both ends can",
     "The link negotiated less than the highest speed that both ends offer. What the far end offers is known with "
     "--far.",
     "Look at both modules and the cable, and for a fixed speed at the switch port or in the adapter's settings.",
     LinkIsSlow},
    {"errors-growing", Subject::LINK, Severity::WARNING, GROWTH, "error counters grow",
     "Since the last reading the port counted errors, or the fabric told of some on its link. A link that is taken "
     "down on purpose counts some too.",
     "Look at the receive power of both ends, clean or change the cable, then the modules, one at a time.",
     PortCountersMoved<IsError>, COMPARES_READINGS},
    {"crc-rate", Subject::LINK, Severity::CRITICAL, RATE, "many frames with a wrong CRC",
     "Frames are damaged on the way to this port: commands are repeated, and take seconds.",
     "Clean or change the cable, then the module at the far end, then this one.", CrcRate, COMPARES_READINGS},
    {"sync-loss-rate", Subject::LINK, Severity::CRITICAL, RATE, "synchronization is lost often",
     "The receiver loses the bit stream: the light is too weak, or the link flaps.",
     "Look at the receive power and at the cable; a speed that is fixed at one end only does the same.", SyncLossRate,
     COMPARES_READINGS},
    {"congestion", Subject::LINK, Severity::WARNING, GROWTH, "the fabric signals congestion",
     "Frames wait for credit: this port, or one that it talks to, doesn't take them fast enough.",
     "Look for a slow target or an oversubscribed link between switches (orfc counters).",
     PortCountersMoved<IsCongestion>, COMPARES_READINGS},
    {"credit-recovery-off",
     Subject::LINK,
     Severity::WARNING,
     {},
     "credit recovery is configured and not in use",
     "Credits that a link loses are gone until the next reset, and the link slows down.",
     "Switch credit recovery on at the switch port; after a change here, restart the host.",
     CreditRecoveryIsOff,
     IS_SLOW},
    {"fec-off", Subject::LINK, Severity::WARNING, FEC_SPEED, "forward error correction is off",
     "From 16 Gb/s on both ends have it, and from 32 Gb/s on the link needs it: without it bit errors become lost "
     "frames.",
     "Switch it on (orfc-esxcli -t port -s fec set), and at the switch port.", FecIsOff, IS_SLOW},
    {"module-bad",
     Subject::TRANSCEIVER,
     Severity::WARNING,
     {},
     "a checksum of the module is wrong",
     "What the module tells of itself can't be trusted.",
     "Plug it anew; if that doesn't help, change it.",
     ModuleIsBad,
     IS_SLOW},
    {"module-warning",
     Subject::TRANSCEIVER,
     Severity::WARNING,
     {},
     "a reading is past its warning threshold",
     "The module's maker sets the thresholds. Past a warning it works, with less margin than it was made for.",
     "For power look at both ends (--far), and clean or change the cable; for heat at the fans. Plan to change the "
     "module.",
     NearReadings<false>,
     IS_SLOW},
    {"module-alarm",
     Subject::TRANSCEIVER,
     Severity::CRITICAL,
     {},
     "a reading is past its alarm threshold",
     "The module works beyond what its maker allows, or it gets no light.",
     "For receive power look at the cable and the far end (--far); else change the module.",
     NearReadings<true>,
     IS_SLOW},
    {"far-module-warning",
     Subject::TRANSCEIVER,
     Severity::WARNING,
     {},
     "a reading of the far module is past its warning threshold",
     "As for module-warning, at the other end of the link. Known with --far.",
     "For power look at this end and the cable, else plan to change the module at the switch.",
     FarReadings<false>,
     IS_SLOW},
    {"far-module-alarm",
     Subject::TRANSCEIVER,
     Severity::CRITICAL,
     {},
     "a reading of the far module is past its alarm threshold",
     "As for module-alarm, at the other end of the link. Known with --far.",
     "For receive power look at the cable and this end's transmit power; else change the module at the switch.",
     FarReadings<true>,
     IS_SLOW},
    {"transmit-power-falling", Subject::TRANSCEIVER, Severity::WARNING, FALL, "the transmit power falls",
     "A laser that loses power against its own earlier readings nears its end.",
     "Plan to change the module. One that was changed begins anew.", TransmitPowerFalls, COMPARES_READINGS | IS_SLOW},
    {"target-down",
     Subject::TARGET,
     Severity::CRITICAL,
     {},
     "the target is down",
     "This port doesn't reach the storage port.",
     "Look at the link, the zoning and the storage port. After the loss timeout the kernel gives the target up.",
     TargetIsDown},
    {"target-marginal",
     Subject::TARGET,
     Severity::WARNING,
     {},
     "the target is marginal",
     "The fabric told of errors on the way to the storage port, so multipathing avoids it.",
     "Look at the counters of the fabric's links to the storage.",
     TargetIsMarginal},
    {"target-congested", Subject::TARGET, Severity::WARNING, GROWTH, "the fabric signals congestion at the target",
     "The storage port takes or gives frames too slowly, or gets more than its link carries.",
     "Spread the load over more storage ports.", TargetIsCongested, COMPARES_READINGS},
    {"path-down",
     Subject::PATH,
     Severity::WARNING,
     {},
     "the path is down",
     "The figures name the first step that is down: link, remote port, device, access or map.",
     "orfc paths shows all paths to the LUN and the state of each step.",
     PathIsDown},
    {"path-in-wrong-map",
     Subject::PATH,
     Severity::CRITICAL,
     {},
     "the path is in the map of another LUN",
     "Two LUNs are one device to the host: data may be destroyed.",
     "Stop writing to the device. Take the path out of the map, then look why the LUN behind it changed.",
     PathIsInForeignMap},
    {"lun-no-path",
     Subject::LUN,
     Severity::CRITICAL,
     {},
     "no path to the LUN works",
     "The LUN can't be used.",
     "orfc paths shows at which step each path is down.",
     Redundant<Redundancy::NO_PATH>},
    {"lun-one-path",
     Subject::LUN,
     Severity::WARNING,
     {},
     "one path to the LUN works",
     "The next failure takes the LUN away.",
     "Bring the other paths up, or zone and map the LUN to a second port. Switch the rule off on hosts that have one.",
     Redundant<Redundancy::ONE_PATH>},
    {"lun-one-port",
     Subject::LUN,
     Severity::WARNING,
     {},
     "all paths to the LUN that work lead through one port",
     "Without that port or its cable the LUN is gone.",
     "Zone and map the LUN to a second port.",
     Redundant<Redundancy::ONE_PORT>},
    {"lun-one-fabric",
     Subject::LUN,
     Severity::WARNING,
     {},
     "all paths to the LUN that work lead through one fabric",
     "Without that fabric the LUN is gone.",
     "Zone and map the LUN in the second fabric.",
     Redundant<Redundancy::ONE_FABRIC>},
};

// ---- Files of rules

/// "3:14" of a place in a text.
std::string PlaceText(const std::string& text, std::size_t at) {
    const std::string_view before = std::string_view(text).substr(0, at);
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') + 1; // 0 in the first line
    return std::to_string(lines + 1) + ":" + std::to_string(before.size() - lineStart + 1);
}

/// Refuses keys that stand twice, of which the library would take the last.
nlohmann::json ParseRules(const std::string& file, const std::string& text) {
    std::set<std::pair<int, std::string>> known;
    const auto watch = [&](int depth, nlohmann::json::parse_event_t event, nlohmann::json& parsed) {
        if (event == nlohmann::json::parse_event_t::object_start) {
            std::erase_if(known, [depth](const auto& key) { return key.first > depth; });
        } else if (event == nlohmann::json::parse_event_t::key &&
                   !known.emplace(depth, parsed.get<std::string>()).second) {
            throw Failure(file + ": " + parsed.get<std::string>() + " stands there twice", Failure::USAGE);
        }
        return true;
    };
    try {
        return nlohmann::json::parse(text, watch);
    } catch (const nlohmann::json::parse_error& error) {
        throw Failure(file + ":" + PlaceText(text, error.byte == 0 ? 0 : error.byte - 1) + ": is no JSON",
                      Failure::USAGE);
    } catch (const nlohmann::json::exception&) { // a number that is too large
        throw Failure(file + ": is no JSON", Failure::USAGE);
    }
}

void ChangeBounds(const nlohmann::json& changes, const std::string& place, RuleBook::Entry& entry) {
    for (const auto& change : changes.items()) {
        const std::span<const Bound> bounds = entry.rule->bounds;
        const auto bound =
            std::find_if(bounds.begin(), bounds.end(), [&](const Bound& it) { return it.name == change.key(); });
        if (bound == bounds.end() || !change.value().is_number()) {
            throw Failure(place + "/" + change.key() +
                              (bound == bounds.end() ? ": the rule has no such bound" : ": is no number"),
                          Failure::USAGE);
        }
        entry.bounds[static_cast<std::size_t>(bound - bounds.begin())] = change.value().get<double>();
    }
}

} // namespace

const char* SubjectText(Subject subject) {
    constexpr const char* TEXTS[] = {"adapter", "port", "link", "transceiver", "target", "path", "LUN"};
    return TEXTS[static_cast<int>(subject)];
}

const char* SeverityText(Severity severity) {
    constexpr const char* TEXTS[] = {"ok", "unknown", "warning", "critical"};
    return TEXTS[static_cast<int>(severity)];
}

std::string Object::Identifier() const {
    switch (subject) {
    case Subject::ADAPTER:
        return adapter->identifier;
    case Subject::TARGET:
        return target->identifier;
    case Subject::PATH:
        return path->identifier;
    case Subject::LUN:
        return lun->worldwideId.empty() ? lun->ways.front()->identifier : lun->worldwideId;
    default:
        return port->identifier;
    }
}

std::span<const Rule> Rules() {
    return RULES;
}

RuleBook::RuleBook() {
    for (const Rule& rule : RULES) {
        Entry& entry = mEntries.emplace_back(Entry{&rule, true, {}});
        for (const Bound& bound : rule.bounds) {
            entry.bounds.push_back(bound.value);
        }
    }
}

RuleBook::RuleBook(const std::string& file) : RuleBook() {
    const nlohmann::json changes = ParseRules(file, ReadText(file));
    if (!changes.is_object()) {
        throw Failure(file + ": is no object", Failure::USAGE);
    }
    for (const auto& change : changes.items()) {
        const std::string place = file + ": " + change.key();
        const auto entry = std::find_if(mEntries.begin(), mEntries.end(),
                                        [&](const Entry& it) { return it.rule->name == change.key(); });
        if (entry == mEntries.end()) {
            throw Failure(place + ": no rule has this name", Failure::USAGE);
        }
        if (change.value().is_boolean()) {
            entry->isOn = change.value().get<bool>();
        } else if (change.value().is_object()) {
            ChangeBounds(change.value(), place, *entry);
        } else {
            throw Failure(place + ": is neither true, false nor an object of bounds", Failure::USAGE);
        }
    }
}

void RuleBook::Limit(bool areSlow) {
    for (Entry& entry : mEntries) {
        entry.isOn = entry.isOn && entry.rule->Is(IS_SLOW) == areSlow;
    }
}

std::string RuleBook::Explain(const std::string& name) const {
    std::string known;
    for (const Entry& entry : mEntries) {
        const Rule& rule = *entry.rule;
        Append(known, rule.name);
        if (rule.name != name) {
            continue;
        }
        std::string text = name + ": " + rule.text + "\n" + SeverityText(rule.severity) + ", of each " +
                           SubjectText(rule.subject) +
                           (rule.Is(COMPARES_READINGS) ? ", against earlier readings" : "") +
                           (entry.isOn ? "" : ", switched off") + "\n";
        for (std::size_t at = 0; at < rule.bounds.size(); ++at) {
            text += "  " + std::string(rule.bounds[at].name) + " " + BoundText(entry.bounds[at]) + ": " +
                    rule.bounds[at].description + "\n";
        }
        return text + "\n" + rule.meaning + "\n" + rule.remedy + "\n";
    }
    throw Failure("no rule is named " + name + "; there are " + known, Failure::USAGE);
}

} // namespace orfc
