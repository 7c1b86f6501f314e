/// @file
/// Any bytes as the kernel's account of a request, 20 bytes, and the answer to it: to an echo, a request for diagnostic
/// parameters, and a query to the directory.
#include "DiagnosticParameters.h"
#include "LinkServices.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

/// Answers every request with the same bytes, and reports what they say.
class BytesKernel : public host::Kernel {
public:
    BytesKernel(const std::uint8_t* bytes, std::size_t size) : mBytes(bytes, bytes + size) {
        mBytes.resize(std::max(mBytes.size(), HEAD)); // missing ones are zero
    }

    int Open(const std::string& /*name*/) override { return 1; }
    void Close(int /*descriptor*/) override {}
    std::uint64_t Now() override { return 0; }
    int Submit(int /*descriptor*/, sg_io_v4& exchange) override {
        exchange.response_len = std::min<std::uint32_t>(mBytes[1], exchange.max_response_len);
        std::memcpy(Pointer(exchange.response), &mBytes[4], exchange.response_len);
        std::memcpy(Pointer(exchange.din_xferp), mBytes.data() + HEAD,
                    std::min<std::size_t>(mBytes.size() - HEAD, exchange.din_xfer_len));
        return mBytes[0];
    }

private:
    static constexpr std::size_t HEAD = 20; ///< an errno, the size of the account, two bytes unused, the account

    static void* Pointer(std::uint64_t address) { return reinterpret_cast<void*>(address); }

    std::vector<std::uint8_t> mBytes;
};

/// A failure has words, which fit.
void Check(const host::Outcome& outcome) {
    if (outcome.text.size() > host::MAX_OUTCOME_TEXT ||
        (outcome.kind != host::Outcome::ACCEPTED && outcome.text.empty()) || (outcome.isAnswered && !outcome.isSent)) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    constexpr std::size_t MAX_FRAME = 2112;
    BytesKernel kernel(bytes, size);
    for (const bool isRemotePort : {false, true}) {
        const host::Peer peer{&kernel, 1, isRemotePort, 0x010203};
        Check(host::SendEcho(peer, 256));
        std::uint32_t portId = 0;
        std::uint64_t fabricPort = 0;
        Check(host::QueryPortId(peer, 1, portId));
        Check(host::QueryFabricPort(peer, 1, fabricPort));
        std::vector<std::uint8_t> payload;
        const host::Outcome outcome = host::ReadDiagnosticParameters(peer, 1, payload);
        Check(outcome);
        if (portId > 0xFFFFFF || payload.size() > MAX_FRAME || (outcome.kind == outcome.ACCEPTED && payload.empty())) {
            std::abort();
        }
        decoders::DecodeRdpPayload(decoders::Bytes(payload));
    }
    return 0;
}
