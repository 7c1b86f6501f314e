/// @file
/// Any bytes as a diagnostic parameters payload, in a buffer of exactly their size.
#include "DiagnosticParameters.h"
#include "RDPPayload.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    constexpr std::size_t MAX_PAYLOAD = 508;
    const std::vector<VX_UINT8> payload(bytes, bytes + (size < MAX_PAYLOAD ? size : MAX_PAYLOAD));
    constexpr std::size_t REPORT_SIZE = 16384;
    ReportBlock report(REPORT_SIZE, ReportBlock::SizeRule::FULL);
    bool isVendorMatch = false;
    ParseRDPDataBuffer(decoders::Bytes(payload), report, isVendorMatch);
    if (strnlen(report.GetText(), REPORT_SIZE) == REPORT_SIZE) {
        std::abort();
    }
    decoders::DecodeRdpPayload(decoders::Bytes(payload));
    return 0;
}
