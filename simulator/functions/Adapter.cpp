/// @file
/// The adapter's flash and personality.
#include "functions/Image.h"

#include <algorithm>
#include <cstring>
#include <ctime>

using namespace sim;

namespace {

/// The tool's id in the memo block. The simulator's one caller is a plugin of the host's command line.
constexpr char toolIdText[4] = {'E', 'C', 'L', 'I'};

void setComponent(VX_FLASH_COMPONENT& component, const std::string& version) {
    VX_UINT8 numbers[3] = {};
    parseVersion(version, numbers);
    component.Major = numbers[0];
    component.Minor = numbers[1];
    component.Sub = numbers[2];
}

/// A line of a multi-boot image whose version stands in the adapter's and in the port's record. The lines of
/// flash components are called like the fields of their record.
struct VersionLine {
    const char* word;
    const char* adapterKey;
    const char* portKey;
};
constexpr VersionLine versionLines[] = {
    {"Firmware", "FlashFwVersion", "FlashFwVersion"},
    {"Bios", "BiosVersion", "BiosVersion"},
    {"Efi", "EfiVersion", "FlashEfiVersion"},
    {"FCode", "FCodeVersion", "FlashFCodeVersion"},
};

/// Stores a version in a field of a record, as text or as numbers, whichever the field is.
template <class Record> void storeVersion(Record& record, const char* key, const std::string& version) {
    const Field* field = findField(fieldsOf<Record>(), key);
    auto* at = reinterpret_cast<VX_UINT8*>(&record) + field->offset;
    if (field->kind != Kind::Text) {
        parseVersion(version, {at, field->size});
    } else if (version.size() < field->size) {
        storeText(reinterpret_cast<char*>(at), field->size, version);
    } else {
        throw Failure{statusDataInvalid, "the version \"" + version + "\" is too long"};
    }
}

VX_FLASH_COMPONENT& componentOf(_VEXAPI_FlashComponentVersion& components, const Field& field) {
    return *reinterpret_cast<VX_FLASH_COMPONENT*>(reinterpret_cast<VX_UINT8*>(&components) + field.offset);
}

/// All protocol functions of an adapter: they share its flash.
template <class Act> void eachPort(Host& host, const Adapter& adapter, Act act) {
    for (Port* port : host.ports) {
        if (port->adapter == &adapter) {
            act(*port);
        }
    }
}

/// Says who wrote the flash, and when.
void stampMemo(VX_SFlashMemoBlock& memo, const Session& session) {
    std::memcpy(memo.Signature, "FMBS", 4);
    std::memcpy(memo.ToolId, toolIdText, 4);
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

void checkFlashUnlocked(const Port& port) {
    if (port.answers.Lockdown.FirmwareLockdown != 0 && port.answers.Lockdown.FirmwareStatus == 0) {
        throw Failure{statusLockedDown, "firmware updates are locked down"};
    }
}

/// Writes a multi-boot image into records of an adapter and one of its ports. Throws `Failure`.
void applyMultiBoot(const Image& image, _vexapi_adapter_t& adapter, _vexapi_protocol_t& port, PortAnswers& answers) {
    std::size_t known = 0;
    const auto find = [&](std::string_view word) {
        const auto found = image.values.find(std::string(word));
        known += found == image.values.end() ? 0 : 1;
        return found == image.values.end() ? nullptr : &found->second;
    };
    VX_SFlashMemoBlock& memo = answers.MemoBlock;
    parseVersion(image.version, memo.Mbi);
    storeVersion(adapter, "MultibootVersion", image.version);
    for (const VersionLine& line : versionLines) {
        if (const std::string* version = find(line.word)) {
            storeVersion(adapter, line.adapterKey, *version);
            storeVersion(port, line.portKey, *version);
        }
    }
    for (const Field& field : fieldsOf<_VEXAPI_FlashComponentVersion>()) {
        if (const std::string* version = find(field.key)) {
            setComponent(componentOf(answers.FlashComponents, field), *version);
        }
    }
    if (const std::string* version = find("FamilyFirmware")) {
        parseVersion(*version, memo.FamilyFw);
    }
    if (const std::string* date = find("BuildDate")) {
        if (date->size() != sizeof memo.MbiBuildDate) {
            throw Failure{statusDataInvalid, "\"" + *date + "\" is no date YYYYMMDD"};
        }
        std::memcpy(memo.MbiBuildDate, date->data(), sizeof memo.MbiBuildDate);
    }
    find("Reboot");
    if (known != image.values.size()) {
        throw Failure{statusFileNotValid, "the image has a line that is none of a multi-boot image's"};
    }
}

void writeMultiBoot(Change& change, Session& session, Adapter& adapter, const Image& image) {
    for (const char* key : {"MultibootVersion", "FlashFwVersion", "BiosVersion", "EfiVersion", "FCodeVersion"}) {
        change.touch(adapter, key);
    }
    eachPort(session.host(), adapter, [&](Port& port) {
        for (const char* key : {"FlashFwVersion", "BiosVersion", "FlashEfiVersion", "FlashFCodeVersion",
                                "FlashComponents", "MemoBlock", "FlashPending"}) {
            change.touch(port, key);
        }
        applyMultiBoot(image, adapter.record, port.record, port.answers);
        stampMemo(port.answers.MemoBlock, session);
        port.answers.FlashPending = 1;
        change.pending(port, true);
    });
}

/// The updates that write one component: board configuration, preload table, PEP configuration.
Status updateComponent(const char* function, VX_PORT_HANDLE* handle, const char* path, const char* kind,
                       VX_FLASH_COMPONENT _VEXAPI_FlashComponentVersion::*component) {
    return answer(function, [&](Call& call) {
        Port& port = call.port(handle);
        call.pointer(path, "path");
        call.argument("path", path);
        call.begin();
        checkFlashUnlocked(port);
        const Image image = readImage(path, kind);
        VX_FLASH_COMPONENT written{};
        setComponent(written, image.version);
        call.change([&](Change& change) {
            eachPort(call.session().host(), *port.adapter, [&](Port& other) {
                change.touch(other, "FlashComponents");
                other.answers.FlashComponents.*component = written;
                change.touch(other, "MemoBlock");
                stampMemo(other.answers.MemoBlock, call.session());
                change.pending(other, true);
            });
        });
        return statusOk;
    });
}

} // namespace

VX_UINT32 VEXAPI_GetFlashComponentVersion(VX_PORT_HANDLE* handle, _VEXAPI_FlashComponentVersion* versions) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(versions, "versions");
        call.begin();
        *versions = port.answers.FlashComponents;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetAdapterFlashMemoBlock(VX_PORT_HANDLE* handle, VX_SFlashMemoBlock* block) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(block, "block");
        call.begin();
        *block = port.answers.MemoBlock;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_doOptionROMUpdate(VX_PORT_HANDLE* handle, const char* path, VX_UINT32 reserved) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.pointer(path, "path");
        call.argument("path", path);
        call.fixed("reserved", reserved, {0});
        call.begin();
        checkFlashUnlocked(port);
        const Image image = readImage(path, "MBI");
        call.change([&](Change& change) { writeMultiBoot(change, call.session(), *port.adapter, image); });
        return image.values.contains("Reboot") ? statusRebootNeeded : statusOk;
    });
}

VX_UINT32 VEXAPI_UpdateSpecificFlashRegionFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return updateComponent(__func__, handle, path, "BrdCfg", &_VEXAPI_FlashComponentVersion::FcBoardConfig);
}

VX_UINT32 VEXAPI_UpdateAdapterFirmwareTableFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return updateComponent(__func__, handle, path, "FWPreload", &_VEXAPI_FlashComponentVersion::PreloadFwArea);
}

VX_UINT32 VEXAPI_UpdateAdapterPEPCfgFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return updateComponent(__func__, handle, path, "PEPCfg", &_VEXAPI_FlashComponentVersion::PepBoardConfig);
}

VX_UINT32 VEXAPI_GetPersonalityType(VX_PORT_HANDLE* handle, unsigned char* personality) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.pointer(personality, "personality");
        call.begin();
        *personality = port.answers.Personality;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_ChangePersonalityType(VX_PORT_HANDLE* handle, unsigned char personality) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.fixed("personality", personality, {0, 1});
        call.begin();
        call.change([&](Change& change) {
            eachPort(call.session().host(), *port.adapter, [&](Port& other) {
                change.touch(other, "Personality");
                other.answers.Personality = personality;
                change.pending(other, true);
            });
        });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_CheckRowanPersonalityChangeOption(VX_PORT_HANDLE* handle) {
    VX_UINT32 allowed = 0;
    return answerValue(__func__, allowed, [&](Call& call) {
        const Port& port = call.port(handle);
        call.begin();
        allowed = port.answers.PersonalityChangeAllowed;
        return statusOk;
    });
}
