/// @file
/// Any 512 bytes as a transceiver's image, through all of `dmi get`, and any bytes through the decoders.
#include "Capture.h"
#include "FakeLibrary.h"
#include "PhysicalPortDMICmdsProcessor.h"
#include "QsfpMemory.h"
#include "SfpMemory.h"
#include "VitalProductData.h"

#include <cstring>

namespace {

void DecodeAll(decoders::Bytes bytes) {
    constexpr std::size_t ADDRESS = 256;
    decoders::DecodeSfpIdentity(bytes);
    decoders::DecodeSfpDiagnostics(bytes.Sub(0, ADDRESS), bytes.Sub(ADDRESS));
    decoders::DecodeQsfpIdentity(bytes);
    decoders::DecodeQsfpDiagnostics(bytes.Sub(0, ADDRESS), bytes.Sub(ADDRESS));
    decoders::DecodeVpd(bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    DecodeAll({bytes, size});
    FakeLibrary& library = FakeLibrary::Get();
    static const std::string port = Id(library.host.AddPort());
    static const FamilyRow row = {"dmi", "-s", "", &PhysicalPortDMICmdsProcessor::FAMILY, nullptr, {}};
    static MultipleCmdsProcessor family(nullptr, row);
    library.calls.clear();
    library.onGetSFPData = [&](VX_PORT_HANDLE*, void* buffer) {
        std::memcpy(buffer, bytes, std::min(size, sizeof(_VEXAPI_SFP_DATA)));
        return 0u;
    };
    Capture capture;
    TavuStringArray args = {port.c_str()};
    const ResultCode code = row.family->leaves[0].run(&family, args, Serializer::FORMAT_XML);
    const std::string output = capture.Stop();
    if (code != RC_SUCCESS || !output.starts_with("<?xml") || !output.ends_with("</structure>\n</output>\n")) {
        std::abort();
    }
    return 0;
}
