/// @file
/// The memory of an SFP module (SFF-8472): two-wire addresses A0h and A2h, 256 bytes each.
#pragma once

#include "ModuleIdentity.h"
#include "Readings.h"

namespace decoders {

/// Field offsets, in the standard's notation.
namespace sff8472 {

// Address A0h.
inline constexpr std::size_t IDENTIFIER = 0;
inline constexpr std::size_t CONNECTOR = 2;
inline constexpr std::size_t ETHERNET_10G_COMPLIANCE = 3;
inline constexpr std::size_t ETHERNET_COMPLIANCE = 6;
inline constexpr std::size_t LINK_LENGTH = 7;      ///< and transmitter technology
inline constexpr std::size_t TRANSMITTER_TECH = 8; ///< and cable technology
inline constexpr std::size_t TRANSMISSION_MEDIA = 9;
inline constexpr std::size_t FC_SPEED = 10;
inline constexpr std::size_t SIGNALING_RATE = 12; ///< 100 MBd; FFh: see `SIGNALING_RATE_MAX`
inline constexpr std::size_t RATE_IDENTIFIER = 13;
inline constexpr std::size_t LENGTH_SMF_KM = 14; ///< 1 km
inline constexpr std::size_t LENGTH_SMF = 15;    ///< 100 m
inline constexpr std::size_t LENGTH_OM2 = 16;    ///< 10 m
inline constexpr std::size_t LENGTH_OM1 = 17;    ///< 10 m
inline constexpr std::size_t LENGTH_OM4 = 18;    ///< 10 m; copper: 1 m
inline constexpr std::size_t LENGTH_OM3 = 19;    ///< 10 m
inline constexpr std::size_t VENDOR_NAME = 20;
inline constexpr std::size_t EXTENDED_COMPLIANCE = 36;
inline constexpr std::size_t VENDOR_OUI = 37;
inline constexpr std::size_t PART_NUMBER = 40;
inline constexpr std::size_t REVISION = 56;
inline constexpr std::size_t WAVELENGTH = 60; ///< 1 nm; cables: compliance codes
inline constexpr std::size_t FC_SPEED_2 = 62;
inline constexpr std::size_t CC_BASE = 63; ///< of bytes 0 to 62
inline constexpr std::size_t OPTIONS = 64;
inline constexpr std::size_t SIGNALING_RATE_MAX = 66; ///< the rate in 250 MBd if the nominal rate is FFh
inline constexpr std::size_t SERIAL_NUMBER = 68;
inline constexpr std::size_t DATE_CODE = 84;
inline constexpr std::size_t MONITORING_TYPE = 92;
inline constexpr std::size_t COMPLIANCE = 94;
inline constexpr std::size_t CC_EXT = 95; ///< of bytes 64 to 94
inline constexpr std::size_t VENDOR_SPECIFIC = 96;

/// Lengths of the text fields.
inline constexpr std::size_t VENDOR_NAME_SIZE = 16;
inline constexpr std::size_t PART_NUMBER_SIZE = 16;
inline constexpr std::size_t REVISION_SIZE = 4;
inline constexpr std::size_t SERIAL_NUMBER_SIZE = 16;
inline constexpr std::size_t DATE_CODE_SIZE = 8;

/// Bits of `MONITORING_TYPE`.
inline constexpr unsigned DIAGNOSTICS_IMPLEMENTED = 0x40;
inline constexpr unsigned INTERNALLY_CALIBRATED = 0x20;
inline constexpr unsigned EXTERNALLY_CALIBRATED = 0x10;
inline constexpr unsigned AVERAGE_RECEIVE_POWER = 0x08; ///< else the optical modulation amplitude

// Address A2h.
/// Offsets of a monitored value and its thresholds.
struct MonitoredField {
    std::size_t value;
    std::size_t highAlarm, lowAlarm, highWarning, lowWarning;
};
inline constexpr MonitoredField TEMPERATURE = {96, 0, 2, 4, 6};         ///< signed, 1/256 degree Celsius
inline constexpr MonitoredField VOLTAGE = {98, 8, 10, 12, 14};          ///< 100 microvolts
inline constexpr MonitoredField BIAS = {100, 16, 18, 20, 22};           ///< 2 microamperes
inline constexpr MonitoredField TRANSMIT_POWER = {102, 24, 26, 28, 30}; ///< 0.1 microwatt
inline constexpr MonitoredField RECEIVE_POWER = {104, 32, 34, 36, 38};  ///< 0.1 microwatt

/// Constants of external calibration. Slopes are unsigned, 1/256; offsets are signed, in the unit of the value.
inline constexpr std::size_t RX_POWER_4 =
    56; ///< coefficient of the fourth power; four bytes each, down to the constant
inline constexpr std::size_t RX_POWER_0 = 72;
inline constexpr std::size_t BIAS_SLOPE = 76;
inline constexpr std::size_t BIAS_OFFSET = 78;
inline constexpr std::size_t TRANSMIT_POWER_SLOPE = 80;
inline constexpr std::size_t TRANSMIT_POWER_OFFSET = 82;
inline constexpr std::size_t TEMPERATURE_SLOPE = 84;
inline constexpr std::size_t TEMPERATURE_OFFSET = 86;
inline constexpr std::size_t VOLTAGE_SLOPE = 88;
inline constexpr std::size_t VOLTAGE_OFFSET = 90;

inline constexpr std::size_t CC_DMI = 95; ///< of bytes 0 to 94
inline constexpr std::size_t STATUS = 110;
inline constexpr unsigned DATA_NOT_READY = 0x01; ///< in `STATUS`

} // namespace sff8472

/// Decodes address A0h. Never fails: what wasn't read is empty, unknown or unread.
ModuleIdentity DecodeSfpIdentity(Bytes a0);

enum class Calibration {
    INTERNAL, ///< the module reports values
    EXTERNAL, ///< it reports raw numbers and the constants to convert them
};

/// Values and thresholds, with calibration applied.
struct SfpDiagnostics {
    Calibration calibration;
    bool isReady;               ///< false while the module has no valid values yet
    bool isAverageReceivePower; ///< else the receive power is the optical modulation amplitude
    Reading<Celsius> temperature;
    Reading<Volts> voltage;
    Reading<Milliamperes> bias;
    Reading<Milliwatts> transmitPower;
    /// None if a calibration constant is infinite or NaN.
    std::optional<Reading<Milliwatts>> receivePower;
    Checksum checksum; ///< of thresholds and calibration constants
};

/// Returns none if byte 92 of A0h says that the module has no diagnostics, and if A2h ends before its status byte,
/// 110.
///
/// A module that claims both kinds of calibration counts as externally calibrated: neutral constants do no harm.
/// One that claims neither counts as internally calibrated.
std::optional<SfpDiagnostics> DecodeSfpDiagnostics(Bytes a0, Bytes a2);

} // namespace decoders
