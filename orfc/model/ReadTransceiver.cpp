#include "ReadTransceiver.h"

#include "DiagnosticParameters.h"
#include "QsfpMemory.h"
#include "SfpMemory.h"

#include <algorithm>

namespace orfc {

namespace {

constexpr std::size_t PAGE = 256;

bool IsZero(decoders::Bytes memory) {
    return std::all_of(memory.begin(), memory.end(), [](unsigned byte) { return byte == 0; });
}

void TakeDiagnostics(const decoders::SfpDiagnostics& values, Transceiver& transceiver) {
    transceiver.temperature = values.temperature;
    transceiver.voltage = values.voltage;
    transceiver.lanes = {{values.bias, values.transmitPower, values.receivePower}};
    transceiver.diagnosticsChecksum = values.checksum;
    if (values.checksum == decoders::Checksum::INVALID) {
        const auto distrust = [](auto&... readings) { ((readings ? readings->thresholds.reset() : void()), ...); };
        Lane& lane = transceiver.lanes.front();
        distrust(transceiver.temperature, transceiver.voltage, lane.bias, lane.transmitPower, lane.receivePower);
    }
}

void TakeDiagnostics(const decoders::QsfpDiagnostics& values, Transceiver& transceiver) {
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
    if (transceiver.state != ModuleState::READ || !diagnostics) {
        return;
    }
    transceiver.hasDiagnostics = true;
    transceiver.isReady = diagnostics->isReady;
    transceiver.isAverageReceivePower = diagnostics->isAverageReceivePower;
    if (diagnostics->isReady) {
        TakeDiagnostics(*diagnostics, transceiver);
    }
}

} // namespace

Transceiver DecodeTransceiver(decoders::Bytes image) {
    Transceiver transceiver;
    if (IsZero(image)) {
        transceiver.state = ModuleState::EMPTY;
        return transceiver;
    }
    transceiver.family = decoders::FamilyOf(image);
    switch (transceiver.family) {
    case decoders::ModuleFamily::SFP: {
        const decoders::Bytes a0 = image.Sub(0, PAGE);
        const decoders::Bytes a2 = image.Sub(PAGE, PAGE);
        const decoders::Bytes read = IsZero(a2) ? decoders::Bytes() : a2; // a library may have A0h only
        Take(decoders::DecodeSfpIdentity(a0), decoders::DecodeSfpDiagnostics(a0, read), transceiver);
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

FarEnd DecodeFarEnd(decoders::Bytes payload) {
    const decoders::DiagnosticParameters parameters = decoders::DecodeRdpPayload(payload);
    FarEnd far;
    far.isRead = true;
    Transceiver& module = far.transceiver;
    if (const auto& values = parameters.transceiver) {
        module.state = ModuleState::READ;
        module.hasDiagnostics = values->isOptical;
        module.isReady = values->areDiagnosticsValid;
        if (module.hasDiagnostics && module.isReady) {
            const decoders::RdpThresholds& thresholds = parameters.thresholds;
            module.temperature = {values->temperature, thresholds.temperature};
            module.voltage = {values->voltage, thresholds.voltage};
            module.lanes = {{{{values->bias, thresholds.bias}},
                             {{values->transmitPower, thresholds.transmitPower}},
                             {{values->receivePower, thresholds.receivePower}}}};
        }
    }
    if (const auto& product = parameters.product) {
        module.identity.vendor = product->vendor;
        module.identity.partNumber = product->partNumber;
        module.identity.serialNumber = product->serialNumber;
    }
    if (!parameters.portNames.empty()) {
        far.portName = parameters.portNames.front().portName;
        far.nodeName = parameters.portNames.front().nodeName;
    }
    if (const auto& speed = parameters.speed) {
        far.speed = speed->operatingSpeed;
        far.supportedSpeeds = decoders::RdpSpeedsOf(speed->capabilities);
    }
    if (const auto& errors = parameters.linkErrors) {
        far.counters = {{"link_failure_count", errors->linkFailures},
                        {"loss_of_sync_count", errors->lossesOfSync},
                        {"loss_of_signal_count", errors->lossesOfSignal},
                        {"prim_seq_protocol_err_count", errors->primitiveSequenceProtocolErrors},
                        {"invalid_tx_word_count", errors->invalidTransmissionWords},
                        {"invalid_crc_count", errors->invalidCrcs}};
    }
    if (const auto& fec = parameters.fecStatus) {
        far.counters.emplace("fec_corrected_blocks", fec->correctedBlocks);
        far.counters.emplace("fec_uncorrectable_blocks", fec->uncorrectableBlocks);
    }
    if (const auto& credits = parameters.bufferCredits) {
        far.bufferCredits = credits->portCredits;
        far.attachedBufferCredits = credits->attachedPortCredits;
    }
    return far;
}

} // namespace orfc
