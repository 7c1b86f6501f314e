/// Modules: identity, diagnostics with thresholds, verdicts by the standards' arithmetic.
#include "Command.h"

#include <algorithm>

namespace orfc {

namespace {

using decoders::Celsius;
using decoders::Milliamperes;
using decoders::Milliwatts;
using decoders::Reading;
using decoders::Verdict;
using decoders::Volts;

/// A value or one of its thresholds.
enum Part { VALUE, LOW_ALARM, LOW_WARNING, HIGH_WARNING, HIGH_ALARM };

template <typename Unit> std::optional<Unit> PartOf(const Monitored<Unit>& value, Part part) {
    if (!value) {
        return std::nullopt;
    }
    if (part == VALUE) {
        return value->value;
    }
    if (!value->thresholds) {
        return std::nullopt;
    }
    const decoders::Thresholds<Unit>& thresholds = *value->thresholds;
    return part == LOW_ALARM      ? thresholds.lowAlarm
           : part == LOW_WARNING  ? thresholds.lowWarning
           : part == HIGH_WARNING ? thresholds.highWarning
                                  : thresholds.highAlarm;
}

/// Where a module has its values; those of a lane are none where it hasn't that many.
const Monitored<Celsius>& Temperature(const Transceiver& module) {
    return module.temperature;
}
const Monitored<Volts>& Voltage(const Transceiver& module) {
    return module.voltage;
}
const Lane& LaneOf(const Transceiver& module, std::size_t number) {
    static const Lane NONE;
    return number < module.lanes.size() ? module.lanes[number] : NONE;
}
template <auto Member, std::size_t Number> const auto& OfLane(const Transceiver& module) {
    return LaneOf(module, Number).*Member;
}
constexpr auto BIAS = OfLane<&Lane::bias, 0>;
constexpr auto TRANSMIT_POWER = OfLane<&Lane::transmitPower, 0>;
constexpr auto RECEIVE_POWER = OfLane<&Lane::receivePower, 0>;

/// Both ends of a link.
const Transceiver& Near(const Port& port) {
    return port.transceiver;
}
const Transceiver& Far(const Port& port) {
    return port.farEnd.transceiver;
}

template <auto End, auto Get, Part part, int digits> Value PartValue(const Port& port) {
    const auto value = PartOf(Get(End(port)), part);
    return value ? Value(Decimal{value->value, digits}) : Value();
}
/// The same of a power in dBm; none without light.
template <auto End, auto Get, Part part> Value DbmValue(const Port& port) {
    const auto power = PartOf(Get(End(port)), part);
    const auto dbm = power ? decoders::DbmOf(*power) : std::nullopt;
    return dbm ? Value(Decimal{dbm->value, 2}) : Value();
}
template <auto End, auto Get> Value VerdictValue(const Port& port) {
    const auto& value = Get(End(port));
    const auto verdict = value ? value->Judged() : std::nullopt;
    return verdict ? Value(VerdictText(*verdict)) : Value();
}

/// Loss over the fibre in dB: what one end sends against what the other receives. None without light.
std::optional<double> LossOf(const Transceiver& from, const Transceiver& to) {
    const auto dbm = [](const Monitored<Milliwatts>& power) {
        return power ? decoders::DbmOf(power->value) : std::nullopt;
    };
    const auto sent = dbm(TRANSMIT_POWER(from));
    const auto received = dbm(RECEIVE_POWER(to));
    return sent && received ? std::optional(sent->value - received->value) : std::nullopt;
}
template <auto From, auto To> Value LossValue(const Port& port) {
    const std::optional<double> loss = LossOf(From(port), To(port));
    return loss ? Value(Decimal{*loss, 2}) : Value();
}

template <Literal name> Value FarCounterValue(const Port& port) {
    const auto counter = port.farEnd.counters.find(std::string_view(name.text));
    return counter != port.farEnd.counters.end() ? Value(counter->second) : Value();
}

/// A text of the identity, which an unread or empty bay hasn't.
Value IdentityValue(const Port& port, const std::string& text) {
    const ModuleState state = port.transceiver.state;
    return state == ModuleState::READ || state == ModuleState::BAD ? TextValue(text) : Value();
}
Value LengthValue(const Port& port, unsigned decoders::LinkLengths::*length) {
    const unsigned metres = port.transceiver.identity.lengths.*length;
    return metres != 0 ? Value(std::uint64_t{metres}) : Value();
}

std::string OuiText(const std::array<std::uint8_t, 3>& oui) {
    char text[12];
    std::snprintf(text, sizeof text, "%02x:%02x:%02x", oui[0], oui[1], oui[2]);
    return (oui[0] | oui[1] | oui[2]) != 0 ? text : std::string();
}
std::string DateText(const std::optional<decoders::Date>& date) {
    char text[40] = "";
    if (date) {
        std::snprintf(text, sizeof text, "%04d-%02d-%02d", date->year, date->month, date->day);
    }
    return text;
}
Value ChecksumValue(const Port& port, decoders::Checksum checksum) {
    const ModuleState state = port.transceiver.state;
    if ((state != ModuleState::READ && state != ModuleState::BAD) || checksum == decoders::Checksum::UNREAD) {
        return {};
    }
    return checksum == decoders::Checksum::VALID;
}

std::string FamilyText(decoders::ModuleFamily family) {
    return family == decoders::ModuleFamily::SFP ? "SFP" : family == decoders::ModuleFamily::QSFP ? "QSFP" : "";
}

// clang-format off
#define ORFC_PARTS(name, unit, group, what, value, low_alarm, low_warning, high_warning, high_alarm) \
    {{name "_" unit, "", Type::DECIMAL, Place::DETAILED, group, what}, value}, \
    {{name "_low_alarm_" unit, "", Type::DECIMAL, Place::DETAILED, group, "Low alarm threshold of it"}, low_alarm}, \
    {{name "_low_warning_" unit, "", Type::DECIMAL, Place::DETAILED, group, "Low warning threshold of it"}, low_warning}, \
    {{name "_high_warning_" unit, "", Type::DECIMAL, Place::DETAILED, group, "High warning threshold of it"}, high_warning}, \
    {{name "_high_alarm_" unit, "", Type::DECIMAL, Place::DETAILED, group, "High alarm threshold of it"}, high_alarm}
#define ORFC_READING(end, name, unit, group, what, get, digits) \
    ORFC_PARTS(name, unit, group, what, (PartValue<end, get, VALUE, digits>), (PartValue<end, get, LOW_ALARM, digits>), \
               (PartValue<end, get, LOW_WARNING, digits>), (PartValue<end, get, HIGH_WARNING, digits>), (PartValue<end, get, HIGH_ALARM, digits>))
#define ORFC_POWER(end, name, group, what, get) \
    ORFC_READING(end, name, "milliwatts", group, what " in mW", get, 4), \
    ORFC_PARTS(name, "dbm", group, what " in dBm; unknown without light", (DbmValue<end, get, VALUE>), (DbmValue<end, get, LOW_ALARM>), \
               (DbmValue<end, get, LOW_WARNING>), (DbmValue<end, get, HIGH_WARNING>), (DbmValue<end, get, HIGH_ALARM>))
#define ORFC_VERDICT(end, name, group, get) \
    {{name "_verdict", "", Type::VERDICT, Place::DETAILED, group, "Verdict: ok, or the threshold that is crossed"}, (VerdictValue<end, get>)}
#define ORFC_LANE(number, index) \
    {{"bias_lane_" number "_milliamperes", "", Type::DECIMAL, Place::DETAILED, "Lane " number, "Laser bias current of lane " number}, (PartValue<Near, OfLane<&Lane::bias, index>, VALUE, 3>)}, \
    {{"transmit_power_lane_" number "_milliwatts", "", Type::DECIMAL, Place::DETAILED, "Lane " number, "Transmitted power of lane " number " in mW"}, (PartValue<Near, OfLane<&Lane::transmitPower, index>, VALUE, 4>)}, \
    {{"transmit_power_lane_" number "_dbm", "", Type::DECIMAL, Place::DETAILED, "Lane " number, "Transmitted power of lane " number " in dBm"}, (DbmValue<Near, OfLane<&Lane::transmitPower, index>, VALUE>)}, \
    {{"receive_power_lane_" number "_milliwatts", "", Type::DECIMAL, Place::DETAILED, "Lane " number, "Received power of lane " number " in mW"}, (PartValue<Near, OfLane<&Lane::receivePower, index>, VALUE, 4>)}, \
    {{"receive_power_lane_" number "_dbm", "", Type::DECIMAL, Place::DETAILED, "Lane " number, "Received power of lane " number " in dBm"}, (DbmValue<Near, OfLane<&Lane::receivePower, index>, VALUE>)}

/// What either end's module measures, with its thresholds and verdicts.
#define ORFC_MODULE(end, prefix, group, temperature, voltage, bias, transmit, receive) \
    ORFC_READING(end, prefix "temperature", "celsius", group("Temperature"), temperature, Temperature, 1), \
    ORFC_VERDICT(end, prefix "temperature", group("Temperature"), Temperature), \
    ORFC_READING(end, prefix "voltage", "volts", group("Supply"), voltage, Voltage, 3), \
    ORFC_VERDICT(end, prefix "voltage", group("Supply"), Voltage), \
    ORFC_READING(end, prefix "bias", "milliamperes", group("Laser"), bias, BIAS, 3), \
    ORFC_VERDICT(end, prefix "bias", group("Laser"), BIAS), \
    ORFC_POWER(end, prefix "transmit_power", group("Transmitter"), transmit, TRANSMIT_POWER), \
    ORFC_VERDICT(end, prefix "transmit_power", group("Transmitter"), TRANSMIT_POWER), \
    ORFC_POWER(end, prefix "receive_power", group("Receiver"), receive, RECEIVE_POWER), \
    ORFC_VERDICT(end, prefix "receive_power", group("Receiver"), RECEIVE_POWER)
#define ORFC_OWN_GROUP(name) name
#define ORFC_FAR_GROUP(name) "Far end"
#define ORFC_FAR_COUNTER(name, what) \
    {{"far_" name, "", Type::INTEGER, Place::DETAILED, "Far end", what}, FarCounterValue<name>}

constexpr ColumnOf<Port> TRANSCEIVER[] = {
    {{"port", "PORT", Type::TEXT, Place::ALWAYS, "Module", "Identifier of the port that the module is plugged into"}, [](const Port& p) { return TextValue(p.identifier); }},
    {{"health", "HEALTH", Type::VERDICT, Place::TABLE, "Module", "ok, warning or alarm, the worst of its values; empty, unread, unknown kind, bad checksum, not ready, or no diagnostics"}, [](const Port& p) { return TextValue(HealthOf(p.transceiver)); }},
    {{"family", "FAMILY", Type::TEXT, Place::WIDE, "Module", "SFP or QSFP"}, [](const Port& p) { return IdentityValue(p, FamilyText(p.transceiver.family)); }},
    {{"identifier", "FORM", Type::TEXT, Place::WIDE, "Module", "Form factor"}, [](const Port& p) { return IdentityValue(p, std::string(decoders::IdentifierName(p.transceiver.identity.identifier))); }},
    {{"connector", "CONNECTOR", Type::TEXT, Place::WIDE, "Module", "Kind of connector"}, [](const Port& p) { return IdentityValue(p, std::string(decoders::ConnectorName(p.transceiver.identity.connector))); }},
    {{"vendor", "VENDOR", Type::TEXT, Place::TABLE, "Module", "Vendor"}, [](const Port& p) { return IdentityValue(p, p.transceiver.identity.vendor); }},
    {{"part_number", "PART", Type::TEXT, Place::TABLE, "Module", "Part number"}, [](const Port& p) { return IdentityValue(p, p.transceiver.identity.partNumber); }},
    {{"revision", "REVISION", Type::TEXT, Place::WIDE, "Module", "Revision"}, [](const Port& p) { return IdentityValue(p, p.transceiver.identity.revision); }},
    {{"serial_number", "SERIAL", Type::TEXT, Place::TABLE, "Module", "Serial number"}, [](const Port& p) { return IdentityValue(p, p.transceiver.identity.serialNumber); }},
    {{"vendor_oui", "OUI", Type::TEXT, Place::WIDE, "Module", "IEEE company id of the vendor"}, [](const Port& p) { return IdentityValue(p, OuiText(p.transceiver.identity.oui)); }},
    {{"date", "DATE", Type::TEXT, Place::WIDE, "Module", "Date of manufacture, year-month-day"}, [](const Port& p) { return IdentityValue(p, DateText(p.transceiver.identity.date)); }},
    {{"wavelength_nanometres", "nm", Type::DECIMAL, Place::WIDE, "Module", "Wavelength of the laser"}, [](const Port& p) { return p.transceiver.identity.wavelength ? Value(Decimal{p.transceiver.identity.wavelength->value, 2}) : Value(); }},
    {{"signaling_rate_megabaud", "MBd", Type::INTEGER, Place::WIDE, "Module", "Nominal signaling rate"}, [](const Port& p) { return p.transceiver.identity.signalingRate ? Value(std::uint64_t{*p.transceiver.identity.signalingRate}) : Value(); }},
    {{"length_single_mode_metres", "SMF m", Type::INTEGER, Place::WIDE, "Module", "Longest link over single-mode fibre"}, [](const Port& p) { return LengthValue(p, &decoders::LinkLengths::singleMode); }},
    {{"length_om1_metres", "OM1 m", Type::INTEGER, Place::DETAILED, "Module", "Longest link over OM1 fibre"}, [](const Port& p) { return LengthValue(p, &decoders::LinkLengths::om1); }},
    {{"length_om2_metres", "OM2 m", Type::INTEGER, Place::DETAILED, "Module", "Longest link over OM2 fibre"}, [](const Port& p) { return LengthValue(p, &decoders::LinkLengths::om2); }},
    {{"length_om3_metres", "OM3 m", Type::INTEGER, Place::DETAILED, "Module", "Longest link over OM3 fibre"}, [](const Port& p) { return LengthValue(p, &decoders::LinkLengths::om3); }},
    {{"length_om4_metres", "OM4 m", Type::INTEGER, Place::DETAILED, "Module", "Longest link over OM4 fibre"}, [](const Port& p) { return LengthValue(p, &decoders::LinkLengths::om4); }},
    {{"length_cable_metres", "CABLE m", Type::INTEGER, Place::DETAILED, "Module", "Length of the attached cable"}, [](const Port& p) { return LengthValue(p, &decoders::LinkLengths::cable); }},
    {{"base_checksum_valid", "CC_BASE", Type::FLAG, Place::DETAILED, "Module", "Whether the checksum of the first fields is right"}, [](const Port& p) { return ChecksumValue(p, p.transceiver.identity.baseChecksum); }},
    {{"extended_checksum_valid", "CC_EXT", Type::FLAG, Place::DETAILED, "Module", "Whether the checksum of the other fields is right"}, [](const Port& p) { return ChecksumValue(p, p.transceiver.identity.extendedChecksum); }},
    {{"diagnostics_checksum_valid", "CC_DMI", Type::FLAG, Place::DETAILED, "Module", "Whether the checksum of the thresholds and calibration constants is right"}, [](const Port& p) { return ChecksumValue(p, p.transceiver.diagnosticsChecksum); }},
    ORFC_MODULE(Near, "", ORFC_OWN_GROUP, "Temperature of the module", "Supply voltage", "Laser bias current, of lane 1", "Transmitted power, of lane 1,", "Received power, of lane 1,"),
    {{"receive_power_is_average", "", Type::FLAG, Place::DETAILED, "Receiver", "Whether the received power is the average; otherwise it is the optical modulation amplitude"}, [](const Port& p) { return p.transceiver.hasDiagnostics ? Value(p.transceiver.isAverageReceivePower) : Value(); }},
    ORFC_LANE("2", 1),
    ORFC_LANE("3", 2),
    ORFC_LANE("4", 3),
    {{"far_health", "FAR HEALTH", Type::VERDICT, Place::DETAILED, "Far end", "How the module at the far end of the link does, with --far"}, [](const Port& p) { return p.farEnd.isRead ? TextValue(HealthOf(p.farEnd.transceiver)) : Value(); }},
    {{"far_port_name", "FAR PORT", Type::TEXT, Place::DETAILED, "Far end", "Worldwide name of the port at the far end"}, [](const Port& p) { return TextValue(WwnText(p.farEnd.portName)); }},
    {{"far_node_name", "FAR NODE", Type::TEXT, Place::DETAILED, "Far end", "Worldwide node name of the far end"}, [](const Port& p) { return TextValue(WwnText(p.farEnd.nodeName)); }},
    {{"far_vendor", "FAR VENDOR", Type::TEXT, Place::DETAILED, "Far end", "Vendor of the far module"}, [](const Port& p) { return TextValue(p.farEnd.transceiver.identity.vendor); }},
    {{"far_part_number", "FAR PART", Type::TEXT, Place::DETAILED, "Far end", "Part number of the far module"}, [](const Port& p) { return TextValue(p.farEnd.transceiver.identity.partNumber); }},
    {{"far_serial_number", "FAR SERIAL", Type::TEXT, Place::DETAILED, "Far end", "Serial number of the far module"}, [](const Port& p) { return TextValue(p.farEnd.transceiver.identity.serialNumber); }},
    {{"far_speed_gbps", "FAR Gb/s", Type::INTEGER, Place::DETAILED, "Far end", "Speed of the link in Gb/s, as the far end has it"}, [](const Port& p) { return p.farEnd.speed ? Value(std::uint64_t{*p.farEnd.speed}) : Value(); }},
    {{"loss_to_far_db", "", Type::DECIMAL, Place::DETAILED, "Far end", "Loss over the fibre to the far end in dB"}, LossValue<Near, Far>},
    {{"loss_from_far_db", "", Type::DECIMAL, Place::DETAILED, "Far end", "Loss over the fibre from the far end in dB"}, LossValue<Far, Near>},
    ORFC_MODULE(Far, "far_", ORFC_FAR_GROUP, "Temperature of the far module", "Supply voltage of the far module", "Laser bias current of the far module", "Power that the far module transmits,", "Power that the far module receives,"),
    ORFC_FAR_COUNTER("link_failure_count", "Link failures that the far end counts"),
    ORFC_FAR_COUNTER("loss_of_sync_count", "Losses of synchronization that it counts"),
    ORFC_FAR_COUNTER("loss_of_signal_count", "Losses of signal that it counts"),
    ORFC_FAR_COUNTER("prim_seq_protocol_err_count", "Primitive sequence protocol errors that it counts"),
    ORFC_FAR_COUNTER("invalid_tx_word_count", "Invalid transmission words that it counts"),
    ORFC_FAR_COUNTER("invalid_crc_count", "Frames with an invalid CRC that it counts"),
    ORFC_FAR_COUNTER("fec_corrected_blocks", "Blocks that its forward error correction has corrected"),
    ORFC_FAR_COUNTER("fec_uncorrectable_blocks", "Blocks that it could not correct"),
    {{"far_buffer_credits", "", Type::INTEGER, Place::DETAILED, "Far end", "Buffer-to-buffer credits of the far port"}, [](const Port& p) { return p.farEnd.bufferCredits ? Value(std::uint64_t{*p.farEnd.bufferCredits}) : Value(); }},
    {{"far_attached_buffer_credits", "", Type::INTEGER, Place::DETAILED, "Far end", "Credits of this port, as the far end has them"}, [](const Port& p) { return p.farEnd.attachedBufferCredits ? Value(std::uint64_t{*p.farEnd.attachedBufferCredits}) : Value(); }},
};

/// A value of a module as people read it: one row with its thresholds.
struct ReadingRow {
    struct End {
        Value value, dbm;
        std::string verdict;
    };
    const Port* port;
    std::string what;
    End near, far;
    Value lowAlarm, lowWarning, highWarning, highAlarm; ///< of the near end
};

#define ORFC_READING_OF(end, prefix, head) \
    {{prefix "value", head "VALUE", Type::DECIMAL, Place::TABLE, "", ""}, [](const ReadingRow& r) { return r.end.value; }}, \
    {{prefix "dbm", head "dBm", Type::DECIMAL, Place::TABLE, "", ""}, [](const ReadingRow& r) { return r.end.dbm; }}, \
    {{prefix "verdict", head "VERDICT", Type::VERDICT, Place::TABLE, "", ""}, [](const ReadingRow& r) { return TextValue(r.end.verdict); }}

constexpr ColumnOf<ReadingRow> READING[] = {
    {{"port", "PORT", Type::TEXT, Place::HEADING, "", ""}, [](const ReadingRow& r) { return TextValue(r.port->identifier); }},
    {{"host", "HOST", Type::TEXT, Place::HEADING, "", ""}, [](const ReadingRow& r) { return TextValue(r.port->kernelName); }},
    {{"vendor", "VENDOR", Type::TEXT, Place::HEADING, "", ""}, [](const ReadingRow& r) { return IdentityValue(*r.port, r.port->transceiver.identity.vendor); }},
    {{"part_number", "PART", Type::TEXT, Place::HEADING, "", ""}, [](const ReadingRow& r) { return IdentityValue(*r.port, r.port->transceiver.identity.partNumber); }},
    {{"serial_number", "SERIAL", Type::TEXT, Place::HEADING, "", ""}, [](const ReadingRow& r) { return IdentityValue(*r.port, r.port->transceiver.identity.serialNumber); }},
    {{"health", "HEALTH", Type::VERDICT, Place::HEADING, "", ""}, [](const ReadingRow& r) { return TextValue(HealthOf(r.port->transceiver)); }},
    {{"reading", "READING", Type::TEXT, Place::ALWAYS, "", ""}, [](const ReadingRow& r) { return TextValue(r.what); }},
    ORFC_READING_OF(near, "", ""),
    ORFC_READING_OF(far, "far_", "FAR "),
    {{"low_alarm", "LOW ALARM", Type::DECIMAL, Place::TABLE, "", ""}, [](const ReadingRow& r) { return r.lowAlarm; }},
    {{"low_warning", "LOW WARNING", Type::DECIMAL, Place::TABLE, "", ""}, [](const ReadingRow& r) { return r.lowWarning; }},
    {{"high_warning", "HIGH WARNING", Type::DECIMAL, Place::TABLE, "", ""}, [](const ReadingRow& r) { return r.highWarning; }},
    {{"high_alarm", "HIGH ALARM", Type::DECIMAL, Place::TABLE, "", ""}, [](const ReadingRow& r) { return r.highAlarm; }},
};
// clang-format on

template <typename Unit> Value DbmOf(const Monitored<Unit>& value) {
    if constexpr (std::is_same_v<Unit, Milliwatts>) {
        const auto dbm = value ? decoders::DbmOf(value->value) : std::nullopt;
        return dbm ? Value(Decimal{dbm->value, 2}) : Value();
    }
    return {};
}
template <typename Unit> std::string JudgedText(const Monitored<Unit>& value) {
    const auto verdict = value ? value->Judged() : std::nullopt;
    return verdict ? VerdictText(*verdict) : std::string();
}

/// A row with what is known of either end; none where nothing is.
template <typename Unit>
void AddReading(const Port& port, const std::string& what, const Monitored<Unit>& near, const Monitored<Unit>& far,
                int digits, std::vector<ReadingRow>& rows) {
    const auto part = [digits](const Monitored<Unit>& value, Part which) {
        const auto found = PartOf(value, which);
        return found ? Value(Decimal{found->value, digits}) : Value();
    };
    const auto end = [&part](const Monitored<Unit>& value) {
        return ReadingRow::End{part(value, VALUE), DbmOf(value), JudgedText(value)};
    };
    if (near || far) {
        rows.push_back({&port, what, end(near), end(far), part(near, LOW_ALARM), part(near, LOW_WARNING),
                        part(near, HIGH_WARNING), part(near, HIGH_ALARM)});
    }
}

/// The loss over the fibre, a value without thresholds.
void AddLoss(const Port& port, const char* what, std::optional<double> loss, std::vector<ReadingRow>& rows) {
    if (loss) {
        rows.push_back({&port, what, {Decimal{*loss, 2}, {}, {}}, {}, {}, {}, {}, {}});
    }
}

std::vector<ReadingRow> ReadingsOf(const std::vector<const Port*>& ports) {
    std::vector<ReadingRow> rows;
    for (const Port* port : ports) {
        const std::size_t before = rows.size();
        const Transceiver& near = Near(*port);
        const Transceiver& far = Far(*port);
        AddReading(*port, "temperature C", near.temperature, far.temperature, 1, rows);
        AddReading(*port, "supply V", near.voltage, far.voltage, 3, rows);
        const std::size_t lanes = std::max(near.lanes.size(), far.lanes.size());
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            const std::string suffix = lanes > 1 ? " lane " + std::to_string(lane + 1) : "";
            const Lane& nearLane = LaneOf(near, lane);
            const Lane& farLane = LaneOf(far, lane);
            AddReading(*port, "bias mA" + suffix, nearLane.bias, farLane.bias, 3, rows);
            AddReading(*port, "transmit mW" + suffix, nearLane.transmitPower, farLane.transmitPower, 4, rows);
            AddReading(*port, "receive mW" + suffix, nearLane.receivePower, farLane.receivePower, 4, rows);
        }
        AddLoss(*port, "loss to far end dB", LossOf(near, far), rows);
        AddLoss(*port, "loss from far end dB", LossOf(far, near), rows);
        if (rows.size() == before) {
            rows.push_back({port, "none", {}, {}, {}, {}, {}, {}});
        }
    }
    return rows;
}

} // namespace

std::span<const ColumnOf<Port>> TransceiverColumns() {
    return TRANSCEIVER;
}

std::string VerdictText(Verdict verdict) {
    switch (verdict) {
    case Verdict::OK:
        return "ok";
    case Verdict::LOW_WARNING:
        return "low warning";
    case Verdict::HIGH_WARNING:
        return "high warning";
    case Verdict::LOW_ALARM:
        return "low alarm";
    case Verdict::HIGH_ALARM:
        return "high alarm";
    }
    return {};
}

std::string HealthOf(const Transceiver& transceiver) {
    switch (transceiver.state) {
    case ModuleState::UNREAD:
        return "unread";
    case ModuleState::EMPTY:
        return "empty";
    case ModuleState::BAD:
        return "bad checksum";
    case ModuleState::UNDECODED:
        return "unknown kind";
    case ModuleState::READ:
        break;
    }
    if (!transceiver.hasDiagnostics) {
        return "no diagnostics";
    }
    if (!transceiver.isReady) {
        return "not ready";
    }
    if (transceiver.diagnosticsChecksum == decoders::Checksum::INVALID) {
        return "bad checksum";
    }
    const std::optional<Verdict> worst = transceiver.WorstVerdict();
    return !worst                                                              ? "no thresholds"
           : *worst == Verdict::OK                                             ? "ok"
           : *worst == Verdict::LOW_WARNING || *worst == Verdict::HIGH_WARNING ? "warning"
                                                                               : "alarm";
}

Shown ShowTransceivers(const Request& request) {
    Shown shown;
    const std::vector<const Port*> ports = PortsOf(request);
    shown.Add(TRANSCEIVER_KIND, TransceiverColumns(), ports, Shown::For::MACHINES);
    shown.AddRows<ReadingRow>("reading", READING, ReadingsOf(ports), Shown::For::PEOPLE);
    return shown;
}

} // namespace orfc
