/// @file
/// Text report of the payload of the Read Diagnostic Parameters (RDP) extended link service. All numbers of the
/// payload are big-endian; it is read in words of four bytes. For exact values see `decoders::DecodeRdpPayload`.
#pragma once

#include "Bytes.h"
#include "ReportBlock.h"
#include "vexapi.h"

/// A cursor over a payload. Bytes beyond the end read as zero, so no length in the payload can lead outside it.
class RDPCursor {
public:
    explicit RDPCursor(decoders::Bytes payload) : mPayload(payload) {}

    static constexpr VX_UINT32 WORD = 4; ///< bytes

    /// Word at the cursor, or `distance` bytes after it.
    VX_UINT32 GetWord(VX_UINT32 distance = 0) const { return mPayload.BigU32(std::size_t{mOffset} + distance); }
    /// The value of the descriptor whose tag is at the cursor, in whole words.
    decoders::Bytes Value() const;
    void Move(VX_UINT32 bytes) { mOffset += bytes; }
    void MoveTo(VX_UINT32 offset) { mOffset = offset; }
    /// False once the cursor has left the payload or reached the end of the descriptor list.
    bool IsBefore(VX_UINT32 listEnd) const { return mOffset < listEnd && IsInside(); }
    bool IsInside() const { return mOffset < mPayload.size(); }

private:
    decoders::Bytes mPayload;
    VX_UINT32 mOffset = 0;
};

/// Appends the report of a payload to `report`, a block with size rule `FULL`. `isVendorMatch` tells whether the
/// remote transceiver names a switch vendor that some fabrics treat specially; the report does not depend on it.
///
/// Required: this walk, which differs from that of FC-LS; parsers depend on it. The length of an unknown descriptor
/// is ignored: the walk continues word by word, and a word that equals a known tag starts a descriptor there. The
/// length of the list includes its own four bytes.
void ParseRDPDataBuffer(decoders::Bytes payload, ReportBlock& report, bool& isVendorMatch);

/// Conversions that differ from FC-LS. For voltage, bias and powers see ReportArithmetic.h.
namespace rdp {

/// "N … Gbps" for the set bits from 6 on; lower bits are ignored. The text is only written if `size` is above 127.
/// Returns `text`.
char* DecodePortSpeedCapabilities(VX_UINT16 capabilities, char* text, std::size_t size);
/// Gbps of the lowest set bit, although only one may be set; 0 if that is below bit 6.
int DecodePortOperatingSpeed(VX_UINT16 speed);

/// Degrees Celsius. Required: computed from other bits than the whole degrees, which are the high byte, signed;
/// parsers depend on the values.
float CalculateTemperatureHighAlarm(VX_UINT16 value);
float CalculateTemperatureLowAlarm(VX_UINT16 value);
float CalculateTemperatureHighWarning(VX_UINT16 value);
float CalculateTemperatureLowWarning(VX_UINT16 value);

} // namespace rdp
