/// @file
/// Settings of a port: NVRAM, boot, buffer-to-buffer credit recovery, forward error correction.
#include "functions/Image.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

using namespace sim;

namespace {

constexpr VX_UINT8 noName[8] = {};

/// A boot target in the NVRAM record.
struct BootTarget {
    VX_UINT8 (_VEXAPI_HBAParameters::*name)[8];
    VX_UINT16 _VEXAPI_HBAParameters::*lun;
};
constexpr BootTarget bootTargets[] = {
    {&_VEXAPI_HBAParameters::BootPortName, &_VEXAPI_HBAParameters::BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt1BootPortName, &_VEXAPI_HBAParameters::Alt1BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt2BootPortName, &_VEXAPI_HBAParameters::Alt2BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt3BootPortName, &_VEXAPI_HBAParameters::Alt3BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt4BootPortName, &_VEXAPI_HBAParameters::Alt4BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt5BootPortName, &_VEXAPI_HBAParameters::Alt5BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt6BootPortName, &_VEXAPI_HBAParameters::Alt6BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt7BootPortName, &_VEXAPI_HBAParameters::Alt7BootLunNumber},
};

/// The boot settings beside the targets.
constexpr VX_UINT32 _VEXAPI_HBAParameters::*bootSwitches[] = {
    &_VEXAPI_HBAParameters::DisableBIOS,          &_VEXAPI_HBAParameters::EnableSelectableBoot,
    &_VEXAPI_HBAParameters::EnableSelectiveLogin, &_VEXAPI_HBAParameters::EnableSelectiveLUN,
    &_VEXAPI_HBAParameters::ForceWorldLogin,      &_VEXAPI_HBAParameters::EnableFabricAssignBootLun,
};

/// Refuses a boot target that the port doesn't see. An empty name clears the entry.
void checkBootTarget(Port& port, const VX_UINT8 (&name)[8], std::uint32_t lun) {
    if (std::memcmp(name, noName, sizeof name) == 0) {
        return;
    }
    const Target* target = findTarget(port, name);
    if (target == nullptr || !hasLun(*target, lun)) {
        throw Failure{statusNoSuchTarget,
                      "the port sees no LUN " + std::to_string(lun) + " of " + bytesText(name) + " to boot from"};
    }
}

void checkSettingsUnlocked(const Port& port) {
    if (port.answers.Lockdown.ConfigLockdown != 0 && port.answers.Lockdown.ConfigStatus == 0) {
        throw Failure{statusLockedDown, "the configuration is locked down"};
    }
}

/// Changes one answer of a port; `make` changes it.
template <class Make> void changeAnswer(Call& call, Port& port, const char* key, Make make) {
    call.change([&](Change& change) {
        change.touch(port, key);
        make();
        change.pending(port);
    });
}

/// The NVRAM image: a line "KEY VALUE" for each field, values as in descriptions.
_VEXAPI_HBAParameters parametersOf(const Image& image, _VEXAPI_HBAParameters parameters) {
    for (const auto& [key, text] : image.values) {
        const Field* field = findField(fieldsOf<_VEXAPI_HBAParameters>(), key);
        if (field == nullptr) {
            throw Failure{statusFileNotValid, "the image has the unknown line \"" + key + "\""};
        }
        try {
            const bool number = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
            readField(number ? Json::parse(text, nullptr, false) : Json(text), key, *field, &parameters);
        } catch (const Refusal& refusal) {
            throw Failure{statusDataInvalid, refusal.what()};
        }
    }
    return parameters;
}

} // namespace

VX_UINT32 VEXAPI_UpdateAdapterNVRAMFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.pointer(path, "path");
        call.argument("path", path);
        call.begin();
        checkSettingsUnlocked(port);
        const Image image = readImage(path, "NVRAM");
        changeAnswer(call, port, "Nvram", [&] { port.answers.Nvram = parametersOf(image, port.answers.Nvram); });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetHBAParamsInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters, VX_HBA_AUX* auxiliary) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(parameters, "parameters");
        call.cleared(auxiliary, "auxiliary");
        call.begin();
        *parameters = port.answers.Nvram;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_UpdateHBAParameters(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.record("parameters", parameters);
        call.begin();
        checkSettingsUnlocked(port);
        changeAnswer(call, port, "Nvram", [&] { port.answers.Nvram = *parameters; });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_RestoreDefaultNVRAM(VX_PORT_HANDLE* handle) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.begin();
        checkSettingsUnlocked(port);
        changeAnswer(call, port, "Nvram", [&] { port.answers.Nvram = port.answers.NvramDefaults; });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_SaveSingleAdapterNVRAMToFile(VX_PORT_HANDLE* handle, const char* path) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.pointer(path, "path");
        call.argument("path", path);
        call.begin();
        std::string text = "ORFC-IMAGE NVRAM " + nameOf(port) + "\n";
        for (const Field& field : fieldsOf<_VEXAPI_HBAParameters>()) {
            const Json value = writeField(field, &port.answers.Nvram);
            text += std::string(field.key) + " " + (value.is_string() ? value.get<std::string>() : value.dump()) + "\n";
        }
        std::FILE* file = std::fopen(path, "we");
        if (file == nullptr) {
            throw Failure{statusFileNotOpened, std::strerror(errno)};
        }
        const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
        if (std::fclose(file) != 0 || !written) {
            throw Failure{statusFileNotOpened, "the file can't be written"};
        }
        return statusOk;
    });
}

VX_UINT8 VEXAPI_GetBfsConfigMode(void) {
    VX_UINT8 mode = 0;
    return answerValue(__func__, mode, [&](Call& call) {
        const Host& host = call.session().host();
        call.begin();
        mode = host.bfsMode;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_SetBfsConfigMode(VX_UINT8 mode) {
    return answer(__func__, [&](Call& call) {
        Host& host = call.session().host();
        call.fixed("mode", mode, {1, 2, 4});
        call.begin();
        call.change([&](Change& change) {
            change.touch(host, "BfsMode");
            host.bfsMode = mode;
        });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetBootDeviceInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters, void* reserved) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(parameters, "parameters");
        if (reserved != nullptr) {
            throw Mistake{"reserved isn't null"};
        }
        call.begin();
        *parameters = port.answers.Nvram;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_SetBootDeviceInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.record("parameters", parameters);
        call.begin();
        checkSettingsUnlocked(port);
        changeAnswer(call, port, "Nvram", [&] {
            _VEXAPI_HBAParameters& nvram = port.answers.Nvram;
            for (const auto& [name, lun] : bootTargets) {
                const bool same =
                    std::memcmp(nvram.*name, parameters->*name, sizeof noName) == 0 && nvram.*lun == parameters->*lun;
                if (!same) { // an entry whose target has gone may stay
                    checkBootTarget(port, parameters->*name, parameters->*lun);
                }
                std::copy_n(parameters->*name, sizeof noName, nvram.*name);
                nvram.*lun = parameters->*lun;
            }
            for (const auto member : bootSwitches) {
                nvram.*member = parameters->*member;
            }
            nvram.NVMeEnable = parameters->NVMeEnable;
        });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetNVMeBootDeviceEntries(VX_PORT_HANDLE* handle, _VEXAPI_FcNVMeBootParams* parameters) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(parameters, "parameters");
        call.begin();
        *parameters = port.answers.NvmeBoot;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_SetNVMeBootDeviceEntries(VX_PORT_HANDLE* handle, _VEXAPI_FcNVMeBootParams* parameters) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.record("parameters", parameters);
        call.begin();
        checkSettingsUnlocked(port);
        changeAnswer(call, port, "NvmeBoot", [&] {
            // The host's own identity isn't the caller's to change.
            for (std::size_t i = 0; i < std::size(parameters->BootEntry); ++i) {
                const VX_NVME_BOOT_ENTRY& entry = parameters->BootEntry[i];
                VX_NVME_BOOT_ENTRY& held = port.answers.NvmeBoot.BootEntry[i];
                if (std::memcmp(held.TargetWWPN, entry.TargetWWPN, sizeof noName) != 0 ||
                    held.TargetNSID != entry.TargetNSID) {
                    checkBootTarget(port, entry.TargetWWPN, entry.TargetNSID);
                }
                held = entry;
            }
        });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_FCGetBBCSupportInfoEx(VX_PORT_HANDLE* handle, VX_UINT8* status, VX_UINT8* configured, VX_UINT8* state,
                                       VX_UINT8* negotiated, char* reason, VX_UINT32 reasonSize) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.pointer(status, "status");
        call.pointer(configured, "configured");
        call.pointer(state, "state");
        call.pointer(negotiated, "negotiated");
        call.fixed("reasonSize", reasonSize, {sizeof(CreditInfo::Reason)});
        call.cleared(reason, reasonSize, "reason");
        call.begin();
        const CreditInfo& credit = port.answers.CreditRecovery;
        *status = credit.Status;
        *configured = credit.Configured;
        *state = credit.State;
        *negotiated = credit.Negotiated;
        std::memcpy(reason, credit.Reason, sizeof credit.Reason);
        return statusOk;
    });
}

VX_UINT32 VEXAPI_FCSetBBCSupportInfo(VX_PORT_HANDLE* handle, VX_UINT8 status, VX_UINT8 configured) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.fixed("status", status, {0, 1});
        call.argument("configured", configured);
        if (configured > 15) {
            throw Mistake{"configured may not be above 15"};
        }
        call.begin();
        checkSettingsUnlocked(port);
        changeAnswer(call, port, "CreditRecovery", [&] {
            port.answers.CreditRecovery.Status = status;
            port.answers.CreditRecovery.Configured = configured;
        });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_FCGetFECSupportInfo(VX_PORT_HANDLE* handle, VX_UINT32* status) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.pointer(status, "status");
        call.begin();
        *status = port.answers.Fec;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_FCSetFECSupportInfo(VX_PORT_HANDLE* handle, VX_UINT32 status) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.fixed("status", status, {0, 1});
        call.begin();
        checkSettingsUnlocked(port);
        changeAnswer(call, port, "Fec", [&] { port.answers.Fec = status; });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_ResetFECCounters(VX_PORT_HANDLE* handle) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.begin();
        call.change([&](Change& change) {
            change.touch(port, "FwPrivateStatistics");
            if (port.privateStatistics) {
                std::fill(port.privateStatistics->begin(), port.privateStatistics->end(),
                          _VEXAPI_FWPRIVATESTATSEntry{});
            }
        });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetFWPrivateStats(VX_PORT_HANDLE* handle, _VEXAPI_FWPRIVATESTATSEntry** entries, VX_UINT32* count) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.pointer(entries, "entries");
        call.pointer(count, "count");
        const bool asked = call.begin() != Asked::Answer;
        *entries = nullptr;
        *count = asked ? 1 : 0;
        if (asked || !port.privateStatistics) {
            return statusOk;
        }
        const std::size_t size = port.privateStatistics->size() * sizeof(_VEXAPI_FWPRIVATESTATSEntry);
        auto* copy = static_cast<_VEXAPI_FWPRIVATESTATSEntry*>(std::malloc(std::max<std::size_t>(1, size)));
        if (copy == nullptr) {
            throw std::bad_alloc();
        }
        std::copy(port.privateStatistics->begin(), port.privateStatistics->end(), copy);
        *entries = copy;
        *count = static_cast<VX_UINT32>(port.privateStatistics->size());
        return statusOk;
    });
}
