/// @file
/// Sensors, statistics, transceiver, VPD, firmware dump and beacon of a port.
#include "functions/Image.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

using namespace sim;

namespace {

/* Offsets in an SFP image (SFF-8472, address A0h). */
constexpr std::size_t VENDOR_NAME_AT = 20;
constexpr std::size_t VENDOR_NAME_SIZE = 16;
constexpr std::size_t VENDOR_REVISION_AT = 56;
constexpr std::size_t VENDOR_REVISION_SIZE = 4;
constexpr std::size_t BASE_CHECKSUM_AT = 63; ///< low byte of the sum of the bytes before

/// The only vendor whose transceivers the library can update.
constexpr char UPDATABLE_VENDOR[] = "WTD";

std::string VendorOf(const Port& port) {
    std::string vendor(reinterpret_cast<const char*>(port.transceiver.data()) + VENDOR_NAME_AT, VENDOR_NAME_SIZE);
    vendor.erase(vendor.find_last_not_of(std::string_view(" \0", 2)) + 1);
    return vendor;
}

/// A counter that `VEXAPI_ResetDeviceStats` clears, and its key.
struct Counter {
    const char* key;
    VX_UINT32 _vexapi_protocol_t::*value;
};
constexpr Counter FIRMWARE_COUNTERS[] = {
    {"LinkFailureCount", &_vexapi_protocol_t::LinkFailureCount},
    {"LossOfSyncCount", &_vexapi_protocol_t::LossOfSyncCount},
    {"LossOfSignalCount", &_vexapi_protocol_t::LossOfSignalCount},
    {"PrimitiveSeqProtocolErrorCount", &_vexapi_protocol_t::PrimitiveSeqProtocolErrorCount},
    {"InvalidTxWordCount", &_vexapi_protocol_t::InvalidTxWordCount},
    {"InvalidCrcCount", &_vexapi_protocol_t::InvalidCrcCount},
};

} // namespace

VX_UINT32 VEXAPI_GetAdapterAsicBoardTemperature(VX_PORT_HANDLE* handle, _VEXAPI_BoardThermalTemp* temperature) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(temperature, "temperature");
        call.Begin();
        temperature->Temperature = port.answers.Temperature;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetLockdownStatus(VX_PORT_HANDLE* handle, VEXAPI_LOCKDOWNINFO* lockdown) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(lockdown, "lockdown");
        call.Begin();
        *lockdown = port.answers.Lockdown;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_ResetDeviceStats(VX_PORT_HANDLE* handle) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.Begin();
        call.ChangeHost([&](Change& change) {
            for (const Counter& counter : FIRMWARE_COUNTERS) {
                change.Touch(port, counter.key);
                port.record.*counter.value = 0;
            }
        });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetSFPData(VX_PORT_HANDLE* handle, void* buffer) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(buffer, sizeof(_VEXAPI_SFP_DATA), "buffer");
        call.Begin();
        std::memcpy(buffer, port.transceiver.data(), port.transceiver.size());
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_SfpModuleFirmwareUpdate(VX_PORT_HANDLE* handle, const char* path, VX_UINT32 option) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.CheckPointer(path, "path");
        call.NoteArgument("path", path);
        call.CheckFixed("option", option, {2});
        call.Begin();
        const Image image = ReadImage(path, "SFP");
        if (std::all_of(port.transceiver.begin(), port.transceiver.end(), [](VX_UINT8 byte) { return byte == 0; })) {
            throw Failure{STATUS_TRANSCEIVER_NOT_UPDATED, "the transceiver bay is empty"};
        }
        const std::string vendor = VendorOf(port);
        if (vendor != UPDATABLE_VENDOR) {
            throw Failure{STATUS_TRANSCEIVER_VENDOR_UNSUPPORTED, "the transceiver is made by \"" + vendor + "\""};
        }
        const auto wanted = image.values.find("Vendor");
        if (wanted != image.values.end() && wanted->second != vendor) {
            throw Failure{STATUS_TRANSCEIVER_VENDOR_MISMATCH, "the image is for \"" + wanted->second + "\""};
        }
        if (image.version.size() > VENDOR_REVISION_SIZE) {
            throw Failure{STATUS_DATA_INVALID, "the revision is longer than four characters"};
        }
        call.ChangeHost([&](Change& change) {
            change.Touch(port, "Transceiver");
            auto& bytes = port.transceiver;
            std::fill_n(bytes.begin() + VENDOR_REVISION_AT, VENDOR_REVISION_SIZE, VX_UINT8{' '});
            std::copy(image.version.begin(), image.version.end(), bytes.begin() + VENDOR_REVISION_AT);
            unsigned sum = 0;
            for (std::size_t i = 0; i < BASE_CHECKSUM_AT; ++i) {
                sum += bytes[i];
            }
            bytes[BASE_CHECKSUM_AT] = static_cast<VX_UINT8>(sum);
        });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetVpd(VX_UINT32 word, VX_UINT32 reserved, void* buffer, VX_UINT32* size) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(word);
        call.CheckFixed("reserved", reserved, {0});
        call.CheckPointer(size, "size");
        call.CheckFixed("size", *size, {1024});
        call.CheckCleared(buffer, *size, "buffer");
        call.Begin();
        const auto fits = static_cast<VX_UINT32>(std::min<std::size_t>(*size, port.vpd.size()));
        std::copy_n(port.vpd.begin(), fits, static_cast<VX_UINT8*>(buffer));
        *size = port.answers.VpdSize != 0 ? port.answers.VpdSize : fits;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_SDGetFwDump2(VX_UINT32 word, VX_UINT32 reserved, void** dump, VX_UINT32* size) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(word);
        call.CheckFixed("reserved", reserved, {0});
        call.CheckCleared(dump, "dump");
        call.CheckCleared(size, "size");
        if (call.Begin() != Asked::ANSWER) {
            *size = port.firmwareDump && !port.firmwareDump->empty() ? static_cast<VX_UINT32>(port.firmwareDump->size())
                                                                     : VX_UINT32{1};
            return STATUS_OK;
        }
        if (!port.firmwareDump) {
            throw Failure{STATUS_NO_DUMP, "there is no firmware dump"};
        }
        // Not null even if the dump is empty.
        void* copy = std::malloc(std::max<std::size_t>(1, port.firmwareDump->size()));
        if (copy == nullptr) {
            throw std::bad_alloc();
        }
        std::copy(port.firmwareDump->begin(), port.firmwareDump->end(), static_cast<VX_UINT8*>(copy));
        *dump = copy;
        *size = static_cast<VX_UINT32>(port.firmwareDump->size());
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_IsMezzAdapter(VX_PORT_HANDLE* handle, VX_UINT8* flag) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckPointer(flag, "flag");
        call.Begin();
        *flag = port.answers.Mezzanine;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetAdapterBeaconStatus(VX_PORT_HANDLE* handle, VEXAPI_BEACON_TYPE* state) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckPointer(state, "state");
        call.Begin();
        *state = port.answers.Beacon;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_UpdateAdapterBeaconStatus(VX_PORT_HANDLE* handle, VEXAPI_BEACON_TYPE state) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.CheckFixed("state", state, {0, 1});
        call.Begin();
        call.ChangeHost([&](Change& change) {
            change.Touch(port, "Beacon");
            port.answers.Beacon = state;
        });
        return STATUS_OK;
    });
}
