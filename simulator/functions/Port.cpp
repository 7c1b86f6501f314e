/// @file
/// Reports and actions of a port: sensors, statistics, transceiver, VPD, firmware dump, beacon.
#include "functions/Image.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

using namespace sim;

namespace {

/* Where an SFP image (SFF-8472, address A0h) holds what an update looks at and changes. */
constexpr std::size_t vendorNameAt = 20;
constexpr std::size_t vendorNameSize = 16;
constexpr std::size_t vendorRevisionAt = 56;
constexpr std::size_t vendorRevisionSize = 4;
constexpr std::size_t baseChecksumAt = 63; ///< low byte of the sum of all bytes before it

/// The only transceiver vendor whose firmware the library can update.
constexpr char updatableVendor[] = "WTD";

std::string vendorOf(const Port& port) {
    std::string vendor(reinterpret_cast<const char*>(port.transceiver.data()) + vendorNameAt, vendorNameSize);
    vendor.erase(vendor.find_last_not_of(std::string_view(" \0", 2)) + 1);
    return vendor;
}

/// Counters that `VEXAPI_ResetDeviceStats` clears, with their keys.
struct Counter {
    const char* key;
    VX_UINT32 _vexapi_protocol_t::*value;
};
constexpr Counter firmwareCounters[] = {
    {"LinkFailureCount", &_vexapi_protocol_t::LinkFailureCount},
    {"LossOfSyncCount", &_vexapi_protocol_t::LossOfSyncCount},
    {"LossOfSignalCount", &_vexapi_protocol_t::LossOfSignalCount},
    {"PrimitiveSeqProtocolErrorCount", &_vexapi_protocol_t::PrimitiveSeqProtocolErrorCount},
    {"InvalidTxWordCount", &_vexapi_protocol_t::InvalidTxWordCount},
    {"InvalidCrcCount", &_vexapi_protocol_t::InvalidCrcCount},
};

} // namespace

VX_UINT32 VEXAPI_GetAdapterAsicBoardTemperature(VX_PORT_HANDLE* handle, _VEXAPI_BoardThermalTemp* temperature) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(temperature, "temperature");
        call.begin();
        temperature->Temperature = port.answers.Temperature;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetLockdownStatus(VX_PORT_HANDLE* handle, VEXAPI_LOCKDOWNINFO* lockdown) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(lockdown, "lockdown");
        call.begin();
        *lockdown = port.answers.Lockdown;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_ResetDeviceStats(VX_PORT_HANDLE* handle) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.begin();
        call.change([&](Change& change) {
            for (const Counter& counter : firmwareCounters) {
                change.touch(port, counter.key);
                port.record.*counter.value = 0;
            }
        });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetSFPData(VX_PORT_HANDLE* handle, void* buffer) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(buffer, sizeof(_VEXAPI_SFP_DATA), "buffer");
        call.begin();
        std::memcpy(buffer, port.transceiver.data(), port.transceiver.size());
        return statusOk;
    });
}

VX_UINT32 VEXAPI_SfpModuleFirmwareUpdate(VX_PORT_HANDLE* handle, const char* path, VX_UINT32 option) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.pointer(path, "path");
        call.argument("path", path);
        call.fixed("option", option, {2});
        call.begin();
        const Image image = readImage(path, "SFP");
        if (std::all_of(port.transceiver.begin(), port.transceiver.end(), [](VX_UINT8 byte) { return byte == 0; })) {
            throw Failure{statusTransceiverNotUpdated, "the transceiver bay is empty"};
        }
        const std::string vendor = vendorOf(port);
        if (vendor != updatableVendor) {
            throw Failure{statusTransceiverVendorUnsupported, "the transceiver is made by \"" + vendor + "\""};
        }
        const auto wanted = image.values.find("Vendor");
        if (wanted != image.values.end() && wanted->second != vendor) {
            throw Failure{statusTransceiverVendorMismatch, "the image is for \"" + wanted->second + "\""};
        }
        if (image.version.size() > vendorRevisionSize) {
            throw Failure{statusDataInvalid, "the revision is longer than four characters"};
        }
        call.change([&](Change& change) {
            change.touch(port, "Transceiver");
            auto& bytes = port.transceiver;
            std::fill_n(bytes.begin() + vendorRevisionAt, vendorRevisionSize, VX_UINT8{' '});
            std::copy(image.version.begin(), image.version.end(), bytes.begin() + vendorRevisionAt);
            unsigned sum = 0;
            for (std::size_t i = 0; i < baseChecksumAt; ++i) {
                sum += bytes[i];
            }
            bytes[baseChecksumAt] = static_cast<VX_UINT8>(sum);
        });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetVpd(VX_UINT32 word, VX_UINT32 reserved, void* buffer, VX_UINT32* size) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(word);
        call.fixed("reserved", reserved, {0});
        call.pointer(size, "size");
        call.fixed("size", *size, {1024});
        call.cleared(buffer, *size, "buffer");
        call.begin();
        const auto fits = static_cast<VX_UINT32>(std::min<std::size_t>(*size, port.vpd.size()));
        std::copy_n(port.vpd.begin(), fits, static_cast<VX_UINT8*>(buffer));
        *size = port.answers.VpdSize != 0 ? port.answers.VpdSize : fits;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_SDGetFwDump2(VX_UINT32 word, VX_UINT32 reserved, void** dump, VX_UINT32* size) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(word);
        call.fixed("reserved", reserved, {0});
        call.cleared(dump, "dump");
        call.cleared(size, "size");
        if (call.begin() != Asked::Answer) {
            *size = port.firmwareDump && !port.firmwareDump->empty() ? static_cast<VX_UINT32>(port.firmwareDump->size())
                                                                     : VX_UINT32{1};
            return statusOk;
        }
        if (!port.firmwareDump) {
            throw Failure{statusNoDump, "there is no firmware dump"};
        }
        // An empty dump has an address, too.
        void* copy = std::malloc(std::max<std::size_t>(1, port.firmwareDump->size()));
        if (copy == nullptr) {
            throw std::bad_alloc();
        }
        std::copy(port.firmwareDump->begin(), port.firmwareDump->end(), static_cast<VX_UINT8*>(copy));
        *dump = copy;
        *size = static_cast<VX_UINT32>(port.firmwareDump->size());
        return statusOk;
    });
}

VX_UINT32 VEXAPI_IsMezzAdapter(VX_PORT_HANDLE* handle, VX_UINT8* flag) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.pointer(flag, "flag");
        call.begin();
        *flag = port.answers.Mezzanine;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetAdapterBeaconStatus(VX_PORT_HANDLE* handle, VEXAPI_BEACON_TYPE* state) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.pointer(state, "state");
        call.begin();
        *state = port.answers.Beacon;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_UpdateAdapterBeaconStatus(VX_PORT_HANDLE* handle, VEXAPI_BEACON_TYPE state) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.fixed("state", state, {0, 1});
        call.begin();
        call.change([&](Change& change) {
            change.touch(port, "Beacon");
            port.answers.Beacon = state;
        });
        return statusOk;
    });
}
