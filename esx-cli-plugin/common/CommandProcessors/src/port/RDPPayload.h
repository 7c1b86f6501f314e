/// @file
/// The payload of the Read Diagnostic Parameters (RDP) extended link service, as a text report. All numbers
/// of the payload are big-endian; it is read in words of four bytes.
#pragma once

#include "vexapi.h"

#include <cstddef>

/// A text of bounded size. A piece that doesn't fit whole is left out without a word. A piece has at most 255
/// characters, and a zero byte among its characters ends it there.
class RDPReport {
public:
    /// `text` has `size` bytes, all zero, and must outlive the report.
    RDPReport(char* text, std::size_t size) : mText(text), mSize(size) {}

    void Append(const char* format, ...) __attribute__((format(printf, 2, 3)));

private:
    char* mText;
    std::size_t mSize;
};

/// A cursor over a payload. What lies at or behind the end reads as zero, so no length that the payload gives
/// can lead out of it.
class RDPCursor {
public:
    RDPCursor(const VX_UINT8* payload, std::size_t size) : mPayload(payload), mSize(size) {}

    static constexpr VX_UINT32 WORD = 4; ///< bytes

    /// Word at the cursor, or `distance` bytes behind it.
    VX_UINT32 GetWord(VX_UINT32 distance = 0) const;
    void Move(VX_UINT32 bytes) { mOffset += bytes; }
    void MoveTo(VX_UINT32 offset) { mOffset = offset; }
    /// False as soon as the cursor has left the payload or reached the end of the list of descriptors.
    bool IsBefore(VX_UINT32 listEnd) const { return mOffset < listEnd && IsInside(); }
    bool IsInside() const { return mOffset < mSize; }

private:
    const VX_UINT8* mPayload;
    std::size_t mSize;
    VX_UINT32 mOffset = 0;
};

/// Reports a payload of `size` bytes. `isVendorMatch` tells whether the far side's transceiver names a vendor
/// of switches that some fabrics treat apart; nothing of the report depends on it.
///
/// The walk takes no notice of an unknown descriptor's length: it goes on word by word, and a word inside that
/// equals a known tag begins a descriptor there.
void ParseRDPDataBuffer(const VX_UINT8* payload, std::size_t size, RDPReport& report, bool& isVendorMatch);

/// The arithmetic of the payload's values: single precision, in this order of steps.
namespace rdp {

/// "N … Gbps" for the set bits from 6 on; bits below it count for nothing. The text is only written when
/// `size` is above 127. Gives `text`.
char* DecodePortSpeedCapabilities(VX_UINT16 capabilities, char* text, std::size_t size);
/// Gbps of the lowest set bit; 0 when it lies below 6.
int DecodePortOperatingSpeed(VX_UINT16 speed);

float CalculateVoltage(VX_UINT16 value);   ///< V, of 100 microvolts
float CalculateTxBias(VX_UINT16 value);    ///< mA, of 2 microamperes
float CalculateTxRxPower(VX_UINT16 value); ///< mW, of 0.1 microwatts
/// Degrees Celsius. They look at other bits than those that hold the whole degrees: clients know these values.
float CalculateTemperatureHighAlarm(VX_UINT16 value);
float CalculateTemperatureLowAlarm(VX_UINT16 value);
float CalculateTemperatureHighWarning(VX_UINT16 value);
float CalculateTemperatureLowWarning(VX_UINT16 value);

} // namespace rdp
