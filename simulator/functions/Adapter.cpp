/// @file
/// Flash and personality of an adapter.
#include "functions/Image.h"

#include <algorithm>
#include <cstring>
#include <ctime>

using namespace sim;

namespace {

/// The tool's id in the memo block.
constexpr char TOOL_ID_TEXT[4] = {'E', 'C', 'L', 'I'};

void SetComponent(VX_FLASH_COMPONENT& component, const std::string& version) {
    VX_UINT8 numbers[3] = {};
    ParseVersion(version, numbers);
    component.Major = numbers[0];
    component.Minor = numbers[1];
    component.Sub = numbers[2];
}

/// A line of a multi-boot image whose version goes to the records of the adapter and of the port. Lines of flash
/// components have the names of the record's fields.
struct VersionLine {
    const char* word;
    const char* adapterKey;
    const char* portKey;
};
constexpr VersionLine VERSION_LINES[] = {
    {"Firmware", "FlashFwVersion", "FlashFwVersion"},
    {"Bios", "BiosVersion", "BiosVersion"},
    {"Efi", "EfiVersion", "FlashEfiVersion"},
    {"FCode", "FCodeVersion", "FlashFCodeVersion"},
};

/// Stores a version in a field, as text or as numbers depending on the field's type.
template <class Record> void StoreVersion(Record& record, const char* key, const std::string& version) {
    const Field* field = FindField(FieldsOf<Record>(), key);
    auto* at = reinterpret_cast<VX_UINT8*>(&record) + field->offset;
    if (field->kind != Kind::TEXT) {
        ParseVersion(version, {at, field->size});
    } else if (version.size() < field->size) {
        StoreText(reinterpret_cast<char*>(at), field->size, version);
    } else {
        throw Failure{STATUS_DATA_INVALID, "the version \"" + version + "\" is too long"};
    }
}

VX_FLASH_COMPONENT& ComponentOf(_VEXAPI_FlashComponentVersion& components, const Field& field) {
    return *reinterpret_cast<VX_FLASH_COMPONENT*>(reinterpret_cast<VX_UINT8*>(&components) + field.offset);
}

/// Visits all ports of an adapter, which share its flash.
template <class Act> void EachPort(Host& host, const Adapter& adapter, Act act) {
    for (Port* port : host.ports) {
        if (port->adapter == &adapter) {
            act(*port);
        }
    }
}

/// Records the tool and the time of a flash update.
void StampMemo(VX_SFlashMemoBlock& memo, const Session& session) {
    std::memcpy(memo.Signature, "FMBS", 4);
    std::memcpy(memo.ToolId, TOOL_ID_TEXT, 4);
    for (int i = 0; i < 4; ++i) {
        memo.ToolVersion[i] = static_cast<VX_UINT8>(session.toolVersion[i]);
    }
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    memo.Year = static_cast<VX_UINT16>(local.tm_year + 1900);
    memo.Month = static_cast<VX_UINT8>(local.tm_mon + 1);
    memo.Day = static_cast<VX_UINT8>(local.tm_mday);
    memo.Hour = static_cast<VX_UINT8>(local.tm_hour);
    memo.Minute = static_cast<VX_UINT8>(local.tm_min);
    memo.Second = static_cast<VX_UINT8>(local.tm_sec);
}

void CheckFlashUnlocked(const Port& port) {
    if (port.answers.Lockdown.FirmwareLockdown != 0 && port.answers.Lockdown.FirmwareStatus == 0) {
        throw Failure{STATUS_LOCKED_DOWN, "firmware updates are locked down"};
    }
}

/// Applies a multi-boot image to an adapter and one of its ports. Throws `Failure`.
void ApplyMultiBoot(const Image& image, _vexapi_adapter_t& adapter, _vexapi_protocol_t& port, PortAnswers& answers) {
    std::size_t known = 0;
    const auto find = [&](std::string_view word) {
        const auto found = image.values.find(std::string(word));
        known += found == image.values.end() ? 0 : 1;
        return found == image.values.end() ? nullptr : &found->second;
    };
    VX_SFlashMemoBlock& memo = answers.MemoBlock;
    ParseVersion(image.version, memo.Mbi);
    StoreVersion(adapter, "MultibootVersion", image.version);
    for (const VersionLine& line : VERSION_LINES) {
        if (const std::string* version = find(line.word)) {
            StoreVersion(adapter, line.adapterKey, *version);
            StoreVersion(port, line.portKey, *version);
        }
    }
    for (const Field& field : FieldsOf<_VEXAPI_FlashComponentVersion>()) {
        if (const std::string* version = find(field.key)) {
            SetComponent(ComponentOf(answers.FlashComponents, field), *version);
        }
    }
    if (const std::string* version = find("FamilyFirmware")) {
        ParseVersion(*version, memo.FamilyFw);
    }
    if (const std::string* date = find("BuildDate")) {
        if (date->size() != sizeof memo.MbiBuildDate) {
            throw Failure{STATUS_DATA_INVALID, "\"" + *date + "\" is no date YYYYMMDD"};
        }
        std::memcpy(memo.MbiBuildDate, date->data(), sizeof memo.MbiBuildDate);
    }
    find("Reboot");
    if (known != image.values.size()) {
        throw Failure{STATUS_FILE_NOT_VALID, "the image has a line that is none of a multi-boot image's"};
    }
}

void WriteMultiBoot(Change& change, Session& session, Adapter& adapter, const Image& image) {
    for (const char* key : {"MultibootVersion", "FlashFwVersion", "BiosVersion", "EfiVersion", "FCodeVersion"}) {
        change.Touch(adapter, key);
    }
    EachPort(session.GetHost(), adapter, [&](Port& port) {
        for (const char* key : {"FlashFwVersion", "BiosVersion", "FlashEfiVersion", "FlashFCodeVersion",
                                "FlashComponents", "MemoBlock", "FlashPending"}) {
            change.Touch(port, key);
        }
        ApplyMultiBoot(image, adapter.record, port.record, port.answers);
        StampMemo(port.answers.MemoBlock, session);
        port.answers.FlashPending = 1;
        change.Pending(port, true);
    });
}

/// Updates a single component: board configuration, preload table or PEP configuration.
Status UpdateComponent(const char* function, VX_PORT_HANDLE* handle, const char* path, const char* kind,
                       VX_FLASH_COMPONENT _VEXAPI_FlashComponentVersion::*component) {
    return Answer(function, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.CheckPointer(path, "path");
        call.NoteArgument("path", path);
        call.Begin();
        CheckFlashUnlocked(port);
        const Image image = ReadImage(path, kind);
        VX_FLASH_COMPONENT written{};
        SetComponent(written, image.version);
        call.ChangeHost([&](Change& change) {
            EachPort(call.GetSession().GetHost(), *port.adapter, [&](Port& other) {
                change.Touch(other, "FlashComponents");
                other.answers.FlashComponents.*component = written;
                change.Touch(other, "MemoBlock");
                StampMemo(other.answers.MemoBlock, call.GetSession());
                change.Pending(other, true);
            });
        });
        return STATUS_OK;
    });
}

} // namespace

VX_UINT32 VEXAPI_GetFlashComponentVersion(VX_PORT_HANDLE* handle, _VEXAPI_FlashComponentVersion* versions) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(versions, "versions");
        call.Begin();
        *versions = port.answers.FlashComponents;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetAdapterFlashMemoBlock(VX_PORT_HANDLE* handle, VX_SFlashMemoBlock* block) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(block, "block");
        call.Begin();
        *block = port.answers.MemoBlock;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_doOptionROMUpdate(VX_PORT_HANDLE* handle, const char* path, VX_UINT32 reserved) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.CheckPointer(path, "path");
        call.NoteArgument("path", path);
        call.CheckFixed("reserved", reserved, {0});
        call.Begin();
        CheckFlashUnlocked(port);
        const Image image = ReadImage(path, "MBI");
        call.ChangeHost([&](Change& change) { WriteMultiBoot(change, call.GetSession(), *port.adapter, image); });
        return image.values.contains("Reboot") ? STATUS_REBOOT_NEEDED : STATUS_OK;
    });
}

VX_UINT32 VEXAPI_UpdateSpecificFlashRegionFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return UpdateComponent(__func__, handle, path, "BrdCfg", &_VEXAPI_FlashComponentVersion::FcBoardConfig);
}

VX_UINT32 VEXAPI_UpdateAdapterFirmwareTableFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return UpdateComponent(__func__, handle, path, "FWPreload", &_VEXAPI_FlashComponentVersion::PreloadFwArea);
}

VX_UINT32 VEXAPI_UpdateAdapterPEPCfgFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return UpdateComponent(__func__, handle, path, "PEPCfg", &_VEXAPI_FlashComponentVersion::PepBoardConfig);
}

VX_UINT32 VEXAPI_GetPersonalityType(VX_PORT_HANDLE* handle, unsigned char* personality) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckPointer(personality, "personality");
        call.Begin();
        *personality = port.answers.Personality;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_ChangePersonalityType(VX_PORT_HANDLE* handle, unsigned char personality) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.CheckFixed("personality", personality, {0, 1});
        call.Begin();
        call.ChangeHost([&](Change& change) {
            EachPort(call.GetSession().GetHost(), *port.adapter, [&](Port& other) {
                change.Touch(other, "Personality");
                other.answers.Personality = personality;
                change.Pending(other, true);
            });
        });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_CheckRowanPersonalityChangeOption(VX_PORT_HANDLE* handle) {
    VX_UINT32 allowed = 0;
    return AnswerValue(__func__, allowed, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.Begin();
        allowed = port.answers.PersonalityChangeAllowed;
        return STATUS_OK;
    });
}
