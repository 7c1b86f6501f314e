#include "DiagnosticParameters.h"

namespace decoders {

using namespace rdp_descriptors;

namespace {

/// Keeps the first of each kind.
template <typename Record> void Keep(std::optional<Record>& place, Record record) {
    if (!place) {
        place = record;
    }
}

RdpTransceiver TransceiverOf(Bytes value) {
    const std::uint16_t flags = value.BigU16(10);
    const auto bit = [flags](unsigned number) { return (flags >> number & 1) != 0; };
    const unsigned laser = flags & 0xF;
    return {
        .temperature = CelsiusFrom256ths(value.BigS16(0)),
        .voltage = VoltsFrom100Microvolts(value.BigU16(2)),
        .bias = MilliamperesFrom2Microamperes(value.BigU16(4)),
        .transmitPower = MilliwattsFromTenthMicrowatts(value.BigU16(6)),
        .receivePower = MilliwattsFromTenthMicrowatts(value.BigU16(8)),
        .flags = flags,
        .laser = laser <= 3 ? static_cast<RdpLaser>(laser) : RdpLaser::UNKNOWN,
        .isOptical = bit(4),
        .areDiagnosticsValid = !bit(5),
        .isSfpPlus = (flags >> 6 & 0xF) == 1,
        .isFecActive = bit(15),
    };
}

RdpPortSpeed PortSpeedOf(Bytes value) {
    RdpPortSpeed speed{value.BigU16(0), value.BigU16(2), std::nullopt};
    const std::vector<unsigned> speeds = RdpSpeedsOf(speed.operating);
    if (std::has_single_bit(speed.operating) && speeds.size() == 1) {
        speed.operatingSpeed = speeds.front();
    }
    return speed;
}

RdpLinkErrors LinkErrorsOf(Bytes value) {
    return {
        .linkFailures = value.BigU32(0),
        .lossesOfSync = value.BigU32(4),
        .lossesOfSignal = value.BigU32(8),
        .primitiveSequenceProtocolErrors = value.BigU32(12),
        .invalidTransmissionWords = value.BigU32(16),
        .invalidCrcs = value.BigU32(20),
        .portType = static_cast<RdpPortType>(value.BigU32(24) >> 30),
    };
}

void ReadOpticalElement(Bytes value, RdpThresholds& thresholds) {
    const auto keep = [value](auto& place, auto unit) {
        Keep(place, {unit(value.BigU16(0)), unit(value.BigU16(2)), unit(value.BigU16(4)), unit(value.BigU16(6))});
    };
    switch (value.BigU32(8) >> 28) { // the bits below tell which thresholds are crossed
    case 1:
        Keep(thresholds.temperature, {CelsiusFrom256ths(value.BigS16(0)), CelsiusFrom256ths(value.BigS16(2)),
                                      CelsiusFrom256ths(value.BigS16(4)), CelsiusFrom256ths(value.BigS16(6))});
        break;
    case 2:
        keep(thresholds.voltage, VoltsFrom100Microvolts);
        break;
    case 3:
        keep(thresholds.bias, MilliamperesFrom2Microamperes);
        break;
    case 4:
        keep(thresholds.transmitPower, MilliwattsFromTenthMicrowatts);
        break;
    case 5:
        keep(thresholds.receivePower, MilliwattsFromTenthMicrowatts);
        break;
    default:
        break;
    }
}

RdpOpticalProduct OpticalProductOf(Bytes value) {
    const auto text = [value](std::size_t offset, std::size_t size) {
        return std::string(value.PaddedText(offset, size));
    };
    return {
        .vendor = text(VENDOR_NAME, VENDOR_NAME_SIZE),
        .partNumber = text(PART_NUMBER, PART_NUMBER_SIZE),
        .serialNumber = text(SERIAL_NUMBER, SERIAL_NUMBER_SIZE),
        .revision = text(REVISION, REVISION_SIZE),
        .dateCode = text(DATE_CODE, DATE_CODE_SIZE),
    };
}

/// A kind of descriptor: its minimum size, and how to decode it.
struct Kind {
    std::uint32_t tag;
    std::size_t size;
    void (*read)(Bytes value, DiagnosticParameters& result);
};
constexpr Kind KINDS[] = {
    {LINK_SERVICE_REQUEST, 4, [](Bytes value, DiagnosticParameters& to) { Keep(to.request, value.BigU32(0)); }},
    {TRANSCEIVER, 12, [](Bytes value, DiagnosticParameters& to) { Keep(to.transceiver, TransceiverOf(value)); }},
    {PORT_SPEED, 4, [](Bytes value, DiagnosticParameters& to) { Keep(to.speed, PortSpeedOf(value)); }},
    {LINK_ERRORS, 28, [](Bytes value, DiagnosticParameters& to) { Keep(to.linkErrors, LinkErrorsOf(value)); }},
    {PORT_NAMES, 16,
     [](Bytes value, DiagnosticParameters& to) {
         to.portNames.push_back({value.BigU64(0), value.BigU64(8)});
     }},
    {FEC_STATUS, 8,
     [](Bytes value, DiagnosticParameters& to) {
         Keep(to.fecStatus, {value.BigU32(0), value.BigU32(4)});
     }},
    {BUFFER_CREDITS, 12,
     [](Bytes value, DiagnosticParameters& to) {
         Keep(to.bufferCredits, {value.BigU32(0), value.BigU32(4), value.BigU32(8)});
     }},
    {OPTICAL_ELEMENT, 12, [](Bytes value, DiagnosticParameters& to) { ReadOpticalElement(value, to.thresholds); }},
    {OPTICAL_PRODUCT, 60, [](Bytes value, DiagnosticParameters& to) { Keep(to.product, OpticalProductOf(value)); }},
};

} // namespace

std::vector<unsigned> RdpSpeedsOf(std::uint16_t bits) {
    std::vector<unsigned> speeds;
    for (std::size_t index = 0; index < std::size(SPEEDS); ++index) {
        if ((bits >> (FIRST_SPEED_BIT + index) & 1) != 0) {
            speeds.push_back(SPEEDS[index]);
        }
    }
    std::sort(speeds.begin(), speeds.end());
    return speeds;
}

DiagnosticParameters DecodeRdpPayload(Bytes payload) {
    DiagnosticParameters result;
    const std::size_t listLength = payload.BigU32(0);
    const Bytes list = payload.Sub(LIST_OFFSET, listLength);
    result.isWhole = payload.Holds(0, LIST_OFFSET) && listLength <= payload.size();
    std::size_t at = 0;
    while (list.Holds(at, VALUE_OFFSET)) {
        const std::uint32_t tag = list.BigU32(at);
        const std::size_t length = list.BigU32(at + 4);
        const std::size_t start = at + VALUE_OFFSET;
        if (!list.Holds(start, length)) {
            result.isWhole = false;
            return result;
        }
        const auto* const kind =
            std::find_if(std::begin(KINDS), std::end(KINDS), [tag](const Kind& row) { return row.tag == tag; });
        if (kind == std::end(KINDS)) {
            result.unknownTags.push_back(tag);
        } else if (length < kind->size) {
            result.isWhole = false;
        } else {
            kind->read(list.Sub(start, length), result);
        }
        at = start + length;
    }
    // A list length that counts its own bytes reaches four bytes beyond the descriptors.
    const Bytes rest = list.Sub(at);
    if (std::any_of(rest.begin(), rest.end(), [](std::uint8_t byte) { return byte != 0; })) {
        result.isWhole = false;
    }
    return result;
}

} // namespace decoders
