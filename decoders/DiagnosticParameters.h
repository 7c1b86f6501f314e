/// @file
/// The payload of the Read Diagnostic Parameters (RDP) extended link service (FC-LS), in which the far end of a
/// link describes its transceiver and port. All numbers are big-endian.
#pragma once

#include "Bytes.h"
#include "Readings.h"

#include <optional>
#include <string>
#include <vector>

namespace decoders {

/// Descriptor tags and the standard sizes of their values, in bytes.
namespace rdp_descriptors {

inline constexpr std::uint32_t LINK_SERVICE_REQUEST = 0x00000001;
inline constexpr std::uint32_t TRANSCEIVER = 0x00010000;
inline constexpr std::uint32_t PORT_SPEED = 0x00010001;
inline constexpr std::uint32_t LINK_ERRORS = 0x00010002;
inline constexpr std::uint32_t PORT_NAMES = 0x00010003;
inline constexpr std::uint32_t FEC_STATUS = 0x00010005;
inline constexpr std::uint32_t BUFFER_CREDITS = 0x00010006;
inline constexpr std::uint32_t OPTICAL_ELEMENT = 0x00010007;
inline constexpr std::uint32_t OPTICAL_PRODUCT = 0x00010008;

inline constexpr std::size_t LIST_OFFSET = 4;  ///< of the first descriptor, after the list's length
inline constexpr std::size_t VALUE_OFFSET = 8; ///< in a descriptor, after its tag and its length

/// Speeds in Gbps for the bits of a speed field, from `FIRST_SPEED_BIT` up.
inline constexpr unsigned FIRST_SPEED_BIT = 6;
inline constexpr unsigned SPEEDS[] = {256, 128, 64, 32, 16, 8, 10, 4, 2, 1};

/// Offsets and sizes of the fields of an optical product's value.
inline constexpr std::size_t VENDOR_NAME = 0, VENDOR_NAME_SIZE = 16;
inline constexpr std::size_t PART_NUMBER = 16, PART_NUMBER_SIZE = 16;
inline constexpr std::size_t SERIAL_NUMBER = 32, SERIAL_NUMBER_SIZE = 16;
inline constexpr std::size_t REVISION = 48, REVISION_SIZE = 4;
inline constexpr std::size_t DATE_CODE = 52, DATE_CODE_SIZE = 8;

} // namespace rdp_descriptors

enum class RdpLaser { UNKNOWN, SHORT_WAVE, LONG_WAVE_1310_NM, LONG_WAVE_1550_NM };

struct RdpTransceiver {
    Celsius temperature;
    Volts voltage;
    Milliamperes bias;
    Milliwatts transmitPower;
    Milliwatts receivePower;
    std::uint16_t flags;      ///< source of the five members below
    RdpLaser laser;           ///< bits 0 to 3
    bool isOptical;           ///< bit 4
    bool areDiagnosticsValid; ///< bit 5 clear: the values above are valid
    bool isSfpPlus;           ///< bits 6 to 9 are 1
    bool isFecActive;         ///< bit 15
};

struct RdpPortSpeed {
    std::uint16_t capabilities; ///< raw; see `RdpSpeedsOf`
    std::uint16_t operating;    ///< raw
    /// In Gbps. None unless exactly one speed bit is set: the speed is unknown or not negotiated.
    std::optional<unsigned> operatingSpeed;
};
/// Speeds in Gbps of the set bits of a speed field, in ascending order.
std::vector<unsigned> RdpSpeedsOf(std::uint16_t bits);

enum class RdpPortType {
    UNKNOWN,
    FIBRE_CHANNEL, ///< an FC-FS PN_Port or PF_Port
    ETHERNET,      ///< a lossless Ethernet MAC
    RESERVED,
};

/// Counters of the link error status block. They wrap at 32 bits.
struct RdpLinkErrors {
    std::uint32_t linkFailures;
    std::uint32_t lossesOfSync;
    std::uint32_t lossesOfSignal;
    std::uint32_t primitiveSequenceProtocolErrors;
    std::uint32_t invalidTransmissionWords;
    std::uint32_t invalidCrcs;
    RdpPortType portType;
};

/// World Wide Names, most significant byte first; 0 for none.
struct RdpPortNames {
    std::uint64_t nodeName;
    std::uint64_t portName;
};

struct RdpFecStatus {
    std::uint32_t correctedBlocks;
    std::uint32_t uncorrectableBlocks;
};

struct RdpBufferCredits {
    std::uint32_t portCredits;
    std::uint32_t attachedPortCredits;
    std::uint32_t roundTripNanoseconds; ///< nominal
};

/// Thresholds of the transceiver, each from its own descriptor.
struct RdpThresholds {
    std::optional<Thresholds<Celsius>> temperature;
    std::optional<Thresholds<Volts>> voltage;
    std::optional<Thresholds<Milliamperes>> bias;
    std::optional<Thresholds<Milliwatts>> transmitPower;
    std::optional<Thresholds<Milliwatts>> receivePower;
};

/// Texts end at the first zero byte; padding is removed.
struct RdpOpticalProduct {
    std::string vendor;
    std::string partNumber;
    std::string serialNumber;
    std::string revision;
    std::string dateCode;
};

/// The descriptors of a payload; the first of each kind, unless several make sense.
struct DiagnosticParameters {
    std::optional<std::uint32_t> request; ///< first word of the request that this answers
    std::optional<RdpTransceiver> transceiver;
    std::optional<RdpPortSpeed> speed;
    std::optional<RdpLinkErrors> linkErrors;
    std::vector<RdpPortNames> portNames; ///< of the port, then of the attached port, if present
    std::optional<RdpFecStatus> fecStatus;
    std::optional<RdpBufferCredits> bufferCredits;
    RdpThresholds thresholds;
    std::optional<RdpOpticalProduct> product;
    std::vector<std::uint32_t> unknownTags; ///< of unknown descriptors, which are skipped by length
    /// False if a length exceeds the payload or the list, or a descriptor is too short for its kind.
    bool isWhole = true;
};

/// Decodes a payload, which begins with the length of its descriptor list. By the standard, that counts the bytes
/// after it; a length that includes its own four bytes is accepted too. Descriptors that are truncated or too short
/// for their kind are left out; excess bytes of longer ones are ignored.
DiagnosticParameters DecodeRdpPayload(Bytes payload);

} // namespace decoders
