/// @file
/// Any bytes as a payload of diagnostic parameters, in a buffer of exactly their size.
#include "RDPPayload.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    constexpr std::size_t MAX_PAYLOAD = 508;
    const std::vector<VX_UINT8> payload(bytes, bytes + (size < MAX_PAYLOAD ? size : MAX_PAYLOAD));
    std::vector<char> text(16384);
    RDPReport report(text.data(), text.size());
    bool isVendorMatch = false;
    ParseRDPDataBuffer(payload.data(), payload.size(), report, isVendorMatch);
    if (strnlen(text.data(), text.size()) == text.size()) {
        std::abort();
    }
    return 0;
}
