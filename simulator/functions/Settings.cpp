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

constexpr VX_UINT8 NO_NAME[8] = {};

/// A boot target in the NVRAM record.
struct BootTarget {
    VX_UINT8 (_VEXAPI_HBAParameters::*name)[8];
    VX_UINT16 _VEXAPI_HBAParameters::*lun;
};
constexpr BootTarget BOOT_TARGETS[] = {
    {&_VEXAPI_HBAParameters::BootPortName, &_VEXAPI_HBAParameters::BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt1BootPortName, &_VEXAPI_HBAParameters::Alt1BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt2BootPortName, &_VEXAPI_HBAParameters::Alt2BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt3BootPortName, &_VEXAPI_HBAParameters::Alt3BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt4BootPortName, &_VEXAPI_HBAParameters::Alt4BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt5BootPortName, &_VEXAPI_HBAParameters::Alt5BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt6BootPortName, &_VEXAPI_HBAParameters::Alt6BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt7BootPortName, &_VEXAPI_HBAParameters::Alt7BootLunNumber},
};

/// The boot settings other than the targets.
constexpr VX_UINT32 _VEXAPI_HBAParameters::*BOOT_SWITCHES[] = {
    &_VEXAPI_HBAParameters::DisableBIOS,          &_VEXAPI_HBAParameters::EnableSelectableBoot,
    &_VEXAPI_HBAParameters::EnableSelectiveLogin, &_VEXAPI_HBAParameters::EnableSelectiveLUN,
    &_VEXAPI_HBAParameters::ForceWorldLogin,      &_VEXAPI_HBAParameters::EnableFabricAssignBootLun,
};

/// Throws `Failure` if the port doesn't see a boot target. An empty name clears the entry.
void CheckBootTarget(Port& port, const VX_UINT8 (&name)[8], std::uint32_t lun) {
    if (std::memcmp(name, NO_NAME, sizeof name) == 0) {
        return;
    }
    const Target* target = FindTarget(port, name);
    if (target == nullptr || !HasLun(*target, lun)) {
        throw Failure{STATUS_NO_SUCH_TARGET,
                      "the port sees no LUN " + std::to_string(lun) + " of " + BytesText(name) + " to boot from"};
    }
}

void CheckSettingsUnlocked(const Port& port) {
    if (port.answers.Lockdown.ConfigLockdown != 0 && port.answers.Lockdown.ConfigStatus == 0) {
        throw Failure{STATUS_LOCKED_DOWN, "the configuration is locked down"};
    }
}

/// Changes one answer of a port by `make`.
template <class Make> void ChangeAnswer(Call& call, Port& port, const char* key, Make make) {
    call.ChangeHost([&](Change& change) {
        change.Touch(port, key);
        make();
        change.Pending(port);
    });
}

/// Applies an NVRAM image, whose lines are "KEY VALUE" with the keys and values of descriptions.
_VEXAPI_HBAParameters ParametersOf(const Image& image, _VEXAPI_HBAParameters parameters) {
    for (const auto& [key, text] : image.values) {
        const Field* field = FindField(FieldsOf<_VEXAPI_HBAParameters>(), key);
        if (field == nullptr) {
            throw Failure{STATUS_FILE_NOT_VALID, "the image has the unknown line \"" + key + "\""};
        }
        try {
            const bool number = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
            ReadField(number ? Json::parse(text, nullptr, false) : Json(text), key, *field, &parameters);
        } catch (const Refusal& refusal) {
            throw Failure{STATUS_DATA_INVALID, refusal.what()};
        }
    }
    return parameters;
}

} // namespace

VX_UINT32 VEXAPI_UpdateAdapterNVRAMFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.CheckPointer(path, "path");
        call.NoteArgument("path", path);
        call.Begin();
        CheckSettingsUnlocked(port);
        const Image image = ReadImage(path, "NVRAM");
        ChangeAnswer(call, port, "Nvram", [&] { port.answers.Nvram = ParametersOf(image, port.answers.Nvram); });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetHBAParamsInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters, VX_HBA_AUX* auxiliary) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(parameters, "parameters");
        call.CheckCleared(auxiliary, "auxiliary");
        call.Begin();
        *parameters = port.answers.Nvram;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_UpdateHBAParameters(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.NoteRecord("parameters", parameters);
        call.Begin();
        CheckSettingsUnlocked(port);
        ChangeAnswer(call, port, "Nvram", [&] { port.answers.Nvram = *parameters; });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_RestoreDefaultNVRAM(VX_PORT_HANDLE* handle) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.Begin();
        CheckSettingsUnlocked(port);
        ChangeAnswer(call, port, "Nvram", [&] { port.answers.Nvram = port.answers.NvramDefaults; });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_SaveSingleAdapterNVRAMToFile(VX_PORT_HANDLE* handle, const char* path) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckPointer(path, "path");
        call.NoteArgument("path", path);
        call.Begin();
        std::string text = "ORFC-IMAGE NVRAM " + NameOf(port) + "\n";
        for (const Field& field : FieldsOf<_VEXAPI_HBAParameters>()) {
            const Json value = WriteField(field, &port.answers.Nvram);
            text += std::string(field.key) + " " + (value.is_string() ? value.get<std::string>() : value.dump()) + "\n";
        }
        std::FILE* file = std::fopen(path, "we");
        if (file == nullptr) {
            throw Failure{STATUS_FILE_NOT_OPENED, std::strerror(errno)};
        }
        const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
        if (std::fclose(file) != 0 || !written) {
            throw Failure{STATUS_FILE_NOT_OPENED, "the file can't be written"};
        }
        return STATUS_OK;
    });
}

VX_UINT8 VEXAPI_GetBfsConfigMode(void) {
    VX_UINT8 mode = 0;
    return AnswerValue(__func__, mode, [&](Call& call) {
        const Host& host = call.GetSession().GetHost();
        call.Begin();
        mode = host.bfsMode;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_SetBfsConfigMode(VX_UINT8 mode) {
    return Answer(__func__, [&](Call& call) {
        Host& host = call.GetSession().GetHost();
        call.CheckFixed("mode", mode, {1, 2, 4});
        call.Begin();
        call.ChangeHost([&](Change& change) {
            change.Touch(host, "BfsMode");
            host.bfsMode = mode;
        });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetBootDeviceInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters, void* reserved) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(parameters, "parameters");
        if (reserved != nullptr) {
            throw Mistake{"reserved isn't null"};
        }
        call.Begin();
        *parameters = port.answers.Nvram;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_SetBootDeviceInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.NoteRecord("parameters", parameters);
        call.Begin();
        CheckSettingsUnlocked(port);
        ChangeAnswer(call, port, "Nvram", [&] {
            _VEXAPI_HBAParameters& nvram = port.answers.Nvram;
            for (const auto& [name, lun] : BOOT_TARGETS) {
                const bool same =
                    std::memcmp(nvram.*name, parameters->*name, sizeof NO_NAME) == 0 && nvram.*lun == parameters->*lun;
                if (!same) { // an unchanged entry may name a target that is gone
                    CheckBootTarget(port, parameters->*name, parameters->*lun);
                }
                std::copy_n(parameters->*name, sizeof NO_NAME, nvram.*name);
                nvram.*lun = parameters->*lun;
            }
            for (const auto member : BOOT_SWITCHES) {
                nvram.*member = parameters->*member;
            }
            nvram.NVMeEnable = parameters->NVMeEnable;
        });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetNVMeBootDeviceEntries(VX_PORT_HANDLE* handle, _VEXAPI_FcNVMeBootParams* parameters) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(parameters, "parameters");
        call.Begin();
        *parameters = port.answers.NvmeBoot;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_SetNVMeBootDeviceEntries(VX_PORT_HANDLE* handle, _VEXAPI_FcNVMeBootParams* parameters) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.NoteRecord("parameters", parameters);
        call.Begin();
        CheckSettingsUnlocked(port);
        ChangeAnswer(call, port, "NvmeBoot", [&] {
            // The host's identity is read-only.
            for (std::size_t i = 0; i < std::size(parameters->BootEntry); ++i) {
                const VX_NVME_BOOT_ENTRY& entry = parameters->BootEntry[i];
                VX_NVME_BOOT_ENTRY& held = port.answers.NvmeBoot.BootEntry[i];
                if (std::memcmp(held.TargetWWPN, entry.TargetWWPN, sizeof NO_NAME) != 0 ||
                    held.TargetNSID != entry.TargetNSID) {
                    CheckBootTarget(port, entry.TargetWWPN, entry.TargetNSID);
                }
                held = entry;
            }
        });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_FCGetBBCSupportInfoEx(VX_PORT_HANDLE* handle, VX_UINT8* status, VX_UINT8* configured, VX_UINT8* state,
                                       VX_UINT8* negotiated, char* reason, VX_UINT32 reasonSize) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckPointer(status, "status");
        call.CheckPointer(configured, "configured");
        call.CheckPointer(state, "state");
        call.CheckPointer(negotiated, "negotiated");
        call.CheckFixed("reasonSize", reasonSize, {sizeof(CreditInfo::Reason)});
        call.CheckCleared(reason, reasonSize, "reason");
        call.Begin();
        const CreditInfo& credit = port.answers.CreditRecovery;
        *status = credit.Status;
        *configured = credit.Configured;
        *state = credit.State;
        *negotiated = credit.Negotiated;
        std::memcpy(reason, credit.Reason, sizeof credit.Reason);
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_FCSetBBCSupportInfo(VX_PORT_HANDLE* handle, VX_UINT8 status, VX_UINT8 configured) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.CheckFixed("status", status, {0, 1});
        call.NoteArgument("configured", configured);
        if (configured > 15) {
            throw Mistake{"configured may not be above 15"};
        }
        call.Begin();
        CheckSettingsUnlocked(port);
        ChangeAnswer(call, port, "CreditRecovery", [&] {
            port.answers.CreditRecovery.Status = status;
            port.answers.CreditRecovery.Configured = configured;
        });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_FCGetFECSupportInfo(VX_PORT_HANDLE* handle, VX_UINT32* status) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckPointer(status, "status");
        call.Begin();
        *status = port.answers.Fec;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_FCSetFECSupportInfo(VX_PORT_HANDLE* handle, VX_UINT32 status) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.CheckFixed("status", status, {0, 1});
        call.Begin();
        CheckSettingsUnlocked(port);
        ChangeAnswer(call, port, "Fec", [&] { port.answers.Fec = status; });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_ResetFECCounters(VX_PORT_HANDLE* handle) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.Begin();
        call.ChangeHost([&](Change& change) {
            change.Touch(port, "FwPrivateStatistics");
            if (port.privateStatistics) {
                std::fill(port.privateStatistics->begin(), port.privateStatistics->end(),
                          _VEXAPI_FWPRIVATESTATSEntry{});
            }
        });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetFWPrivateStats(VX_PORT_HANDLE* handle, _VEXAPI_FWPRIVATESTATSEntry** entries, VX_UINT32* count) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckPointer(entries, "entries");
        call.CheckPointer(count, "count");
        const bool asked = call.Begin() != Asked::ANSWER;
        *entries = nullptr;
        *count = asked ? 1 : 0;
        if (asked || !port.privateStatistics) {
            return STATUS_OK;
        }
        const std::size_t size = port.privateStatistics->size() * sizeof(_VEXAPI_FWPRIVATESTATSEntry);
        auto* copy = static_cast<_VEXAPI_FWPRIVATESTATSEntry*>(std::malloc(std::max<std::size_t>(1, size)));
        if (copy == nullptr) {
            throw std::bad_alloc();
        }
        std::copy(port.privateStatistics->begin(), port.privateStatistics->end(), copy);
        *entries = copy;
        *count = static_cast<VX_UINT32>(port.privateStatistics->size());
        return STATUS_OK;
    });
}
