/// @file
/// The memory of a QSFP module (SFF-8636): a lower page of 128 bytes and upper pages of 128 bytes each, numbered
/// 128 to 255 in the standard.
#pragma once

#include "ModuleIdentity.h"
#include "Readings.h"

namespace decoders {

/// Field offsets, in the standard's notation.
namespace sff8636 {

// Lower page.
inline constexpr std::size_t REVISION_COMPLIANCE = 1;
inline constexpr std::size_t STATUS = 2;
inline constexpr unsigned DATA_NOT_READY = 0x01;  ///< in `STATUS`
inline constexpr std::size_t TEMPERATURE = 22;    ///< signed, 1/256 degree Celsius
inline constexpr std::size_t VOLTAGE = 26;        ///< 100 microvolts
inline constexpr std::size_t RECEIVE_POWER = 34;  ///< of the first of four lanes, 0.1 microwatt
inline constexpr std::size_t BIAS = 42;           ///< 2 microamperes
inline constexpr std::size_t TRANSMIT_POWER = 50; ///< 0.1 microwatt

// Upper page 00h.
inline constexpr std::size_t IDENTIFIER = 128;
inline constexpr std::size_t CONNECTOR = 130;
inline constexpr std::size_t ETHERNET_COMPLIANCE = 131;
inline constexpr std::size_t SIGNALING_RATE = 140; ///< 100 MBd; FFh: see `SIGNALING_RATE_250`
inline constexpr std::size_t LENGTH_SMF = 142;     ///< 1 km
inline constexpr std::size_t LENGTH_OM3 = 143;     ///< 2 m
inline constexpr std::size_t LENGTH_OM2 = 144;     ///< 1 m
inline constexpr std::size_t LENGTH_OM1 = 145;     ///< 1 m
inline constexpr std::size_t LENGTH_CABLE = 146;   ///< 1 m; 850 nm with a connector: OM4, 2 m
inline constexpr std::size_t DEVICE_TECHNOLOGY = 147;
inline constexpr std::size_t VENDOR_NAME = 148;
inline constexpr std::size_t VENDOR_OUI = 165;
inline constexpr std::size_t PART_NUMBER = 168;
inline constexpr std::size_t REVISION = 184;
inline constexpr std::size_t WAVELENGTH = 186; ///< 0.05 nm; copper: attenuations
inline constexpr std::size_t CC_BASE = 191;    ///< of bytes 128 to 190
inline constexpr std::size_t EXTENDED_COMPLIANCE = 192;
inline constexpr std::size_t SERIAL_NUMBER = 196;
inline constexpr std::size_t DATE_CODE = 212;
inline constexpr std::size_t MONITORING_TYPE = 220;
inline constexpr std::size_t SIGNALING_RATE_250 = 222; ///< 250 MBd
inline constexpr std::size_t CC_EXT = 223;             ///< of bytes 192 to 222

/// Lengths of the text fields.
inline constexpr std::size_t VENDOR_NAME_SIZE = 16;
inline constexpr std::size_t PART_NUMBER_SIZE = 16;
inline constexpr std::size_t REVISION_SIZE = 2;
inline constexpr std::size_t SERIAL_NUMBER_SIZE = 16;
inline constexpr std::size_t DATE_CODE_SIZE = 8;

/// Bits of `MONITORING_TYPE`. The first two were introduced in revision 2.8.
inline constexpr unsigned TEMPERATURE_MONITORED = 0x20;
inline constexpr unsigned VOLTAGE_MONITORED = 0x10;
inline constexpr unsigned AVERAGE_RECEIVE_POWER = 0x08; ///< else the optical modulation amplitude
inline constexpr unsigned TRANSMIT_POWER_MONITORED = 0x04;

// Upper page 03h: four thresholds each: high alarm, low alarm, high warning, low warning.
inline constexpr std::size_t TEMPERATURE_THRESHOLDS = 128;
inline constexpr std::size_t VOLTAGE_THRESHOLDS = 144;
inline constexpr std::size_t RECEIVE_POWER_THRESHOLDS = 176;
inline constexpr std::size_t BIAS_THRESHOLDS = 184;
inline constexpr std::size_t TRANSMIT_POWER_THRESHOLDS = 192;

} // namespace sff8636

/// Decodes the lower page followed by upper page 00h. Never fails: what wasn't read is empty, unknown or unread.
ModuleIdentity DecodeQsfpIdentity(Bytes memory);

struct QsfpLane {
    Reading<Milliwatts> receivePower;
    Reading<Milliamperes> bias;
    std::optional<Reading<Milliwatts>> transmitPower; ///< none when the module doesn't monitor it
};

/// The standard knows internal calibration only.
struct QsfpDiagnostics {
    bool isReady;                                 ///< false while the module has no valid values yet
    bool isAverageReceivePower;                   ///< else the receive power is the optical modulation amplitude
    std::optional<Reading<Celsius>> temperature;  ///< none when the module doesn't monitor it
    std::optional<Reading<Volts>> voltage;        ///< none when the module doesn't monitor it
    std::optional<std::array<QsfpLane, 4>> lanes; ///< none for copper
};

/// `memory` is the lower page followed by upper page 00h. `page03` is upper page 03h alone, beginning with the
/// standard's byte 128, or empty if it wasn't read: thresholds are then unknown.
///
/// Returns none for a passive copper cable, and if `memory` ends before byte 220, which tells what is monitored.
/// Before revision 2.8 a module can't report whether it monitors temperature and voltage; it is assumed to.
std::optional<QsfpDiagnostics> DecodeQsfpDiagnostics(Bytes memory, Bytes page03 = {});

} // namespace decoders
