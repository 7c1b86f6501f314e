#include "ReadTransceiver.h"

#include "QsfpMemory.h"
#include "SfpMemory.h"

#include <algorithm>

namespace orfc {

namespace {

constexpr std::size_t PAGE = 256;

void TakeDiagnostics(const decoders::SfpDiagnostics& values, Transceiver& transceiver) {
    transceiver.isReady = values.isReady;
    transceiver.isAverageReceivePower = values.isAverageReceivePower;
    transceiver.temperature = values.temperature;
    transceiver.voltage = values.voltage;
    transceiver.lanes = {{values.bias, values.transmitPower, values.receivePower}};
}

void TakeDiagnostics(const decoders::QsfpDiagnostics& values, Transceiver& transceiver) {
    transceiver.isReady = values.isReady;
    transceiver.isAverageReceivePower = values.isAverageReceivePower;
    transceiver.temperature = values.temperature;
    transceiver.voltage = values.voltage;
    if (values.lanes) {
        for (const decoders::QsfpLane& lane : *values.lanes) {
            transceiver.lanes.push_back({lane.bias, lane.transmitPower, lane.receivePower});
        }
    }
}

template <typename Diagnostics>
void Take(decoders::ModuleIdentity identity, const Diagnostics& diagnostics, Transceiver& transceiver) {
    transceiver.identity = std::move(identity);
    transceiver.state =
        transceiver.identity.baseChecksum == decoders::Checksum::VALID ? ModuleState::READ : ModuleState::BAD;
    transceiver.hasDiagnostics = diagnostics.has_value();
    if (diagnostics && transceiver.state == ModuleState::READ) {
        TakeDiagnostics(*diagnostics, transceiver);
    }
}

} // namespace

Transceiver DecodeTransceiver(decoders::Bytes image) {
    Transceiver transceiver;
    if (std::all_of(image.begin(), image.end(), [](unsigned byte) { return byte == 0; })) {
        transceiver.state = ModuleState::EMPTY;
        return transceiver;
    }
    transceiver.family = decoders::FamilyOf(image);
    switch (transceiver.family) {
    case decoders::ModuleFamily::SFP: {
        const decoders::Bytes a0 = image.Sub(0, PAGE);
        Take(decoders::DecodeSfpIdentity(a0), decoders::DecodeSfpDiagnostics(a0, image.Sub(PAGE, PAGE)), transceiver);
        break;
    }
    case decoders::ModuleFamily::QSFP: {
        const decoders::Bytes memory = image.Sub(0, PAGE);
        Take(decoders::DecodeQsfpIdentity(memory), decoders::DecodeQsfpDiagnostics(memory), transceiver);
        break;
    }
    case decoders::ModuleFamily::OTHER:
        transceiver.state = ModuleState::UNDECODED;
        break;
    }
    return transceiver;
}

} // namespace orfc
