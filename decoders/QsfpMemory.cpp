#include "QsfpMemory.h"

namespace decoders {

using namespace sff8636;

namespace {

constexpr unsigned VCSEL_850_NM = 0x0;
constexpr unsigned FIRST_COPPER = 0xA;
constexpr unsigned FIRST_ACTIVE_COPPER = 0xC;
constexpr std::uint8_t NO_SEPARABLE_CONNECTOR = 0x23;

unsigned TransmitterTechnologyOf(Bytes memory) {
    return memory[DEVICE_TECHNOLOGY] >> 4;
}

CableKind CableOf(Bytes memory) {
    const unsigned technology = TransmitterTechnologyOf(memory);
    if (technology < FIRST_COPPER) {
        return CableKind::NONE;
    }
    return technology < FIRST_ACTIVE_COPPER ? CableKind::PASSIVE : CableKind::ACTIVE;
}

std::optional<unsigned> SignalingRateOf(Bytes memory) {
    constexpr unsigned IN_OTHER_BYTE = 0xFF;
    const unsigned rate = memory[SIGNALING_RATE];
    const unsigned megabaud = rate == IN_OTHER_BYTE ? memory[SIGNALING_RATE_250] * 250U : rate * 100U;
    return megabaud != 0 ? std::optional(megabaud) : std::nullopt;
}

LinkLengths LengthsOf(Bytes memory) {
    LinkLengths lengths{
        .singleMode = memory[LENGTH_SMF] * 1000U,
        .om1 = memory[LENGTH_OM1],
        .om2 = memory[LENGTH_OM2],
        .om3 = memory[LENGTH_OM3] * 2U,
    };
    const bool isFibre = TransmitterTechnologyOf(memory) == VCSEL_850_NM && memory[CONNECTOR] != NO_SEPARABLE_CONNECTOR;
    if (isFibre) {
        lengths.om4 = memory[LENGTH_CABLE] * 2U;
    } else {
        lengths.cable = memory[LENGTH_CABLE];
    }
    return lengths;
}

/// Four thresholds on page 03h, each converted by `valueAt(page, offset)`.
template <typename ValueAt>
auto ReadingAt(Bytes memory, std::size_t value, Bytes page03, std::size_t thresholds, ValueAt valueAt) {
    using Value = decltype(valueAt(memory, value));
    constexpr std::size_t UPPER_PAGE = 128;
    const Bytes levels = page03.Sub(thresholds - UPPER_PAGE, 8);
    Reading<Value> reading{valueAt(memory, value), std::nullopt};
    if (levels.Holds(0, 8) && levels.BigU64(0) != 0) {
        reading.thresholds =
            Thresholds<Value>{valueAt(levels, 0), valueAt(levels, 2), valueAt(levels, 4), valueAt(levels, 6)};
    }
    return reading;
}

} // namespace

ModuleIdentity DecodeQsfpIdentity(Bytes memory) {
    ModuleIdentity identity;
    identity.identifier = memory[IDENTIFIER];
    identity.connector = memory[CONNECTOR];
    identity.vendor = memory.PaddedText(VENDOR_NAME, VENDOR_NAME_SIZE);
    identity.oui = {memory[VENDOR_OUI], memory[VENDOR_OUI + 1], memory[VENDOR_OUI + 2]};
    identity.partNumber = memory.PaddedText(PART_NUMBER, PART_NUMBER_SIZE);
    identity.revision = memory.PaddedText(REVISION, REVISION_SIZE);
    identity.serialNumber = memory.PaddedText(SERIAL_NUMBER, SERIAL_NUMBER_SIZE);
    identity.dateCode = memory.PaddedText(DATE_CODE, DATE_CODE_SIZE);
    identity.date = ParseDateCode(identity.dateCode);
    identity.cable = CableOf(memory);
    identity.lengths = LengthsOf(memory);
    const std::uint16_t wavelength = memory.BigU16(WAVELENGTH);
    if (identity.cable == CableKind::NONE && wavelength != 0) {
        identity.wavelength = Nanometres{wavelength / 20.0};
    }
    identity.signalingRate = SignalingRateOf(memory);
    identity.baseChecksum = CheckSum(memory, IDENTIFIER, CC_BASE - 1);
    identity.extendedChecksum = CheckSum(memory, EXTENDED_COMPLIANCE, CC_EXT - 1);
    return identity;
}

std::optional<QsfpDiagnostics> DecodeQsfpDiagnostics(Bytes memory, Bytes page03) {
    const CableKind cable = CableOf(memory);
    if (cable == CableKind::PASSIVE || !memory.Holds(0, MONITORING_TYPE + 1)) {
        return std::nullopt;
    }
    constexpr unsigned FIRST_TO_TELL = 8; // revision 2.8
    const unsigned type = memory[MONITORING_TYPE];
    const bool tells = memory[REVISION_COMPLIANCE] >= FIRST_TO_TELL;
    const auto milliwatts = [](Bytes page, std::size_t at) { return MilliwattsFromTenthMicrowatts(page.BigU16(at)); };

    QsfpDiagnostics diagnostics{
        .isReady = (memory[STATUS] & DATA_NOT_READY) == 0,
        .isAverageReceivePower = (type & AVERAGE_RECEIVE_POWER) != 0,
        .temperature = std::nullopt,
        .voltage = std::nullopt,
        .lanes = std::nullopt,
    };
    if (!tells || (type & TEMPERATURE_MONITORED) != 0) {
        diagnostics.temperature =
            ReadingAt(memory, TEMPERATURE, page03, TEMPERATURE_THRESHOLDS,
                      [](Bytes page, std::size_t at) { return CelsiusFrom256ths(page.BigS16(at)); });
    }
    if (!tells || (type & VOLTAGE_MONITORED) != 0) {
        diagnostics.voltage = ReadingAt(memory, VOLTAGE, page03, VOLTAGE_THRESHOLDS, [](Bytes page, std::size_t at) {
            return VoltsFrom100Microvolts(page.BigU16(at));
        });
    }
    if (cable != CableKind::NONE) {
        return diagnostics;
    }
    auto& lanes = diagnostics.lanes.emplace();
    for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
        lanes[lane].receivePower =
            ReadingAt(memory, RECEIVE_POWER + 2 * lane, page03, RECEIVE_POWER_THRESHOLDS, milliwatts);
        lanes[lane].bias = ReadingAt(memory, BIAS + 2 * lane, page03, BIAS_THRESHOLDS, [](Bytes page, std::size_t at) {
            return MilliamperesFrom2Microamperes(page.BigU16(at));
        });
        if ((type & TRANSMIT_POWER_MONITORED) != 0) {
            lanes[lane].transmitPower =
                ReadingAt(memory, TRANSMIT_POWER + 2 * lane, page03, TRANSMIT_POWER_THRESHOLDS, milliwatts);
        }
    }
    return diagnostics;
}

} // namespace decoders
