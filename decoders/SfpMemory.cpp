#include "SfpMemory.h"

#include <cmath>

namespace decoders {

using namespace sff8472;

namespace {

constexpr unsigned ACTIVE_CABLE = 0x08;  // in TRANSMITTER_TECH
constexpr unsigned PASSIVE_CABLE = 0x04; // in TRANSMITTER_TECH
constexpr unsigned BASE_T = 0x08;        // 1000BASE-T, in ETHERNET_COMPLIANCE

CableKind CableOf(Bytes a0) {
    const unsigned technology = a0[TRANSMITTER_TECH];
    if ((technology & PASSIVE_CABLE) != 0) {
        return CableKind::PASSIVE;
    }
    return (technology & ACTIVE_CABLE) != 0 ? CableKind::ACTIVE : CableKind::NONE;
}

std::optional<unsigned> SignalingRateOf(Bytes a0) {
    constexpr unsigned IN_OTHER_BYTE = 0xFF;
    const unsigned rate = a0[SIGNALING_RATE];
    const unsigned megabaud = rate == IN_OTHER_BYTE ? a0[SIGNALING_RATE_MAX] * 250U : rate * 100U;
    return megabaud != 0 ? std::optional(megabaud) : std::nullopt;
}

LinkLengths LengthsOf(Bytes a0, bool isCable) {
    LinkLengths lengths;
    if (isCable) {
        lengths.cable = a0[LENGTH_OM4]; // the other fields are attenuations
        return lengths;
    }
    constexpr unsigned MORE = 0xFF; // than 25.4 km: see the other byte
    const unsigned hundreds = a0[LENGTH_SMF];
    lengths.singleMode = hundreds != 0 && hundreds != MORE ? hundreds * 100U : a0[LENGTH_SMF_KM] * 1000U;
    lengths.om1 = a0[LENGTH_OM1] * 10U;
    lengths.om2 = a0[LENGTH_OM2] * 10U;
    lengths.om3 = a0[LENGTH_OM3] * 10U;
    if ((a0[ETHERNET_COMPLIANCE] & BASE_T) != 0) {
        lengths.cable = a0[LENGTH_OM4];
    } else {
        lengths.om4 = a0[LENGTH_OM4] * 10U;
    }
    return lengths;
}

/// value = slope x count + offset.
struct Line {
    double slope = 1;
    double offset = 0;
};

Line LineAt(Bytes a2, std::size_t slope, std::size_t offset) {
    return {a2.BigU16(slope) / 256.0, static_cast<double>(a2.BigS16(offset))};
}

/// The four thresholds, each converted by `valueAt(offset)`.
template <typename ValueAt>
auto ThresholdsAt(Bytes a2, const MonitoredField& field, ValueAt valueAt)
    -> std::optional<Thresholds<decltype(valueAt(0))>> {
    const std::size_t offsets[] = {field.highAlarm, field.lowAlarm, field.highWarning, field.lowWarning};
    if (std::all_of(std::begin(offsets), std::end(offsets), [a2](std::size_t at) { return a2.BigU16(at) == 0; })) {
        return std::nullopt;
    }
    return Thresholds<decltype(valueAt(0))>{valueAt(field.highAlarm), valueAt(field.lowAlarm),
                                            valueAt(field.highWarning), valueAt(field.lowWarning)};
}

template <typename ValueAt> auto ReadingAt(Bytes a2, const MonitoredField& field, ValueAt valueAt) {
    return Reading<decltype(valueAt(0))>{valueAt(field.value), ThresholdsAt(a2, field, valueAt)};
}

template <typename Value>
Reading<Value> LinearReading(Bytes a2, const MonitoredField& field, Line line, Value (*unit)(double count)) {
    return ReadingAt(a2, field, [&](std::size_t at) { return unit(line.slope * a2.BigU16(at) + line.offset); });
}

/// Coefficients of the powers of the raw number, from the fourth down.
using Polynomial = std::array<double, 5>;

Polynomial ReceivePolynomialOf(Bytes a2) {
    Polynomial factors{};
    for (std::size_t index = 0; index < factors.size(); ++index) {
        factors[index] = static_cast<double>(a2.BigSingle(RX_POWER_4 + 4 * index));
    }
    return factors;
}

/// Double precision: the fourth power of 65535 has 64 bits, and a single-precision coefficient has 24 of its own.
double Apply(const Polynomial& factors, double raw) {
    double sum = 0;
    for (const double factor : factors) {
        sum = sum * raw + factor;
    }
    return sum;
}

} // namespace

ModuleIdentity DecodeSfpIdentity(Bytes a0) {
    ModuleIdentity identity;
    identity.identifier = a0[IDENTIFIER];
    identity.connector = a0[CONNECTOR];
    identity.vendor = a0.PaddedText(VENDOR_NAME, VENDOR_NAME_SIZE);
    identity.oui = {a0[VENDOR_OUI], a0[VENDOR_OUI + 1], a0[VENDOR_OUI + 2]};
    identity.partNumber = a0.PaddedText(PART_NUMBER, PART_NUMBER_SIZE);
    identity.revision = a0.PaddedText(REVISION, REVISION_SIZE);
    identity.serialNumber = a0.PaddedText(SERIAL_NUMBER, SERIAL_NUMBER_SIZE);
    identity.dateCode = a0.PaddedText(DATE_CODE, DATE_CODE_SIZE);
    identity.date = ParseDateCode(identity.dateCode);
    identity.cable = CableOf(a0);
    const bool isCable = identity.cable != CableKind::NONE;
    identity.lengths = LengthsOf(a0, isCable);
    if (const std::uint16_t wavelength = a0.BigU16(WAVELENGTH); !isCable && wavelength != 0) {
        identity.wavelength = Nanometres{static_cast<double>(wavelength)};
    }
    identity.signalingRate = SignalingRateOf(a0);
    identity.baseChecksum = CheckSum(a0, 0, CC_BASE - 1);
    identity.extendedChecksum = CheckSum(a0, OPTIONS, CC_EXT - 1);
    return identity;
}

std::optional<SfpDiagnostics> DecodeSfpDiagnostics(Bytes a0, Bytes a2) {
    const unsigned type = a0[MONITORING_TYPE];
    if ((type & DIAGNOSTICS_IMPLEMENTED) == 0 || !a2.Holds(0, STATUS + 1)) {
        return std::nullopt;
    }
    const bool isExternal = (type & EXTERNALLY_CALIBRATED) != 0;
    const auto line = [&](std::size_t slope, std::size_t offset) {
        return isExternal ? LineAt(a2, slope, offset) : Line{};
    };

    const Line temperature = line(TEMPERATURE_SLOPE, TEMPERATURE_OFFSET);
    const Polynomial receive = isExternal ? ReceivePolynomialOf(a2) : Polynomial{0, 0, 0, 1, 0};
    SfpDiagnostics diagnostics{
        .calibration = isExternal ? Calibration::EXTERNAL : Calibration::INTERNAL,
        .isReady = (a2[STATUS] & DATA_NOT_READY) == 0,
        .isAverageReceivePower = (type & AVERAGE_RECEIVE_POWER) != 0,
        .temperature = ReadingAt(
            a2, TEMPERATURE,
            [&](std::size_t at) { return CelsiusFrom256ths(temperature.slope * a2.BigS16(at) + temperature.offset); }),
        .voltage = LinearReading(a2, VOLTAGE, line(VOLTAGE_SLOPE, VOLTAGE_OFFSET), VoltsFrom100Microvolts),
        .bias = LinearReading(a2, BIAS, line(BIAS_SLOPE, BIAS_OFFSET), MilliamperesFrom2Microamperes),
        .transmitPower = LinearReading(a2, TRANSMIT_POWER, line(TRANSMIT_POWER_SLOPE, TRANSMIT_POWER_OFFSET),
                                       MilliwattsFromTenthMicrowatts),
        .receivePower = std::nullopt,
        .checksum = CheckSum(a2, 0, CC_DMI - 1),
    };
    if (std::all_of(receive.begin(), receive.end(), [](double factor) { return std::isfinite(factor); })) {
        diagnostics.receivePower = ReadingAt(a2, RECEIVE_POWER, [&](std::size_t at) {
            return MilliwattsFromTenthMicrowatts(Apply(receive, a2.BigU16(at)));
        });
    }
    return diagnostics;
}

} // namespace decoders
