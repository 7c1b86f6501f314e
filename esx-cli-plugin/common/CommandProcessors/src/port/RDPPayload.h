/// @file
/// The payload of the Read Diagnostic Parameters (RDP) extended link service, as a text report. All numbers
/// of the payload are big-endian; it is read in words of four bytes. For the true values see
/// `decoders::DecodeRdpPayload`.
#pragma once

#include "Bytes.h"
#include "ReportBlock.h"
#include "vexapi.h"

/// A cursor over a payload. What lies at or behind the end reads as zero, so no length that the payload gives
/// can lead out of it.
class RDPCursor {
public:
    explicit RDPCursor(decoders::Bytes payload) : mPayload(payload) {}

    static constexpr VX_UINT32 WORD = 4; ///< bytes

    /// Word at the cursor, or `distance` bytes behind it.
    VX_UINT32 GetWord(VX_UINT32 distance = 0) const { return mPayload.BigU32(std::size_t{mOffset} + distance); }
    /// The whole words of value of the descriptor whose tag is at the cursor.
    decoders::Bytes Value() const;
    void Move(VX_UINT32 bytes) { mOffset += bytes; }
    void MoveTo(VX_UINT32 offset) { mOffset = offset; }
    /// False as soon as the cursor has left the payload or reached the end of the list of descriptors.
    bool IsBefore(VX_UINT32 listEnd) const { return mOffset < listEnd && IsInside(); }
    bool IsInside() const { return mOffset < mPayload.size(); }

private:
    decoders::Bytes mPayload;
    VX_UINT32 mOffset = 0;
};

/// Reports a payload, appending to `report`, a block of the size rule `FULL`. `isVendorMatch` tells whether the far
/// side's transceiver names a vendor of switches that some fabrics treat apart; nothing of the report depends on it.
///
/// Clients know this walk, which isn't that of FC-LS: it takes no notice of an unknown descriptor's length but goes on
/// word by word, so that a word inside that equals a known tag begins a descriptor there; and the length of the list
/// counts its own four bytes.
void ParseRDPDataBuffer(decoders::Bytes payload, ReportBlock& report, bool& isVendorMatch);

/// What the report makes of the payload's values otherwise than FC-LS has it. Voltage, bias and powers: see
/// ReportArithmetic.h.
namespace rdp {

/// "N … Gbps" for the set bits from 6 on; bits below it count for nothing. The text is only written when
/// `size` is above 127. Gives `text`.
char* DecodePortSpeedCapabilities(VX_UINT16 capabilities, char* text, std::size_t size);
/// Gbps of the lowest set bit, although only one may be set; 0 when it lies below 6.
int DecodePortOperatingSpeed(VX_UINT16 speed);

/// Degrees Celsius. They look at other bits than those that hold the whole degrees, which are the high byte, signed:
/// clients know these values.
float CalculateTemperatureHighAlarm(VX_UINT16 value);
float CalculateTemperatureLowAlarm(VX_UINT16 value);
float CalculateTemperatureHighWarning(VX_UINT16 value);
float CalculateTemperatureLowWarning(VX_UINT16 value);

} // namespace rdp
