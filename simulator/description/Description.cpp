#include "description/Description.h"

#include "caller/Functions.h"
#include "description/Files.h"
#include "description/Records.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

namespace sim {
namespace {

/// How deep templates may nest; anything deeper is reported as a cycle.
constexpr int DEEPEST_TEMPLATE = 16;
/// Limit on uses of templates by templates in one description: nesting can multiply them exponentially.
constexpr std::size_t MOST_NESTED_USES = 50000;
/// Limit of "Repeat".
constexpr std::uint64_t MOST_REPEATS = 65536;
/// Limit of 64-bit counters.
constexpr std::uint64_t LARGEST = std::numeric_limits<std::uint64_t>::max();

/// LUNs as one element of the list describes them.
struct LunRun {
    _tagVEXAPI_SDMLun first;
    VEXAPI_EXT_LUN kernel;
    std::uint64_t repeat;
};

std::string Indexed(const std::string& path, std::size_t index) {
    return path + "/" + std::to_string(index);
}

void MergeOver(Json& base, Json&& over);

/// Sets a member to a value; two objects are merged recursively.
void MergeMember(Json& base, const std::string& key, Json&& value) {
    const auto present = base.find(key);
    if (present == base.end()) {
        AppendMember(base, key, std::move(value));
    } else if (present->is_object() && value.is_object()) {
        MergeOver(*present, std::move(value));
    } else {
        *present = std::move(value);
    }
}

/// Merges the members of `over` into `base`.
void MergeOver(Json& base, Json&& over) {
    for (auto member = over.begin(); member != over.end(); ++member) {
        MergeMember(base, member.key(), std::move(member.value()));
    }
}

template <class Record> std::vector<Record> ReadRecords(const Json& list, const std::string& path) {
    if (!list.is_array()) {
        throw Refusal(path, "must be a list");
    }
    std::vector<Record> records;
    for (std::size_t i = 0; i < list.size(); ++i) {
        ObjectReader reader(list[i], Indexed(path, i));
        Record record{};
        reader.Fields(FieldsOf<Record>(), &record);
        reader.Finish();
        records.push_back(record);
    }
    return records;
}

template <class Record> Json WriteRecords(const std::vector<Record>& records) {
    Json list = Json::array();
    for (const Record& record : records) {
        list.push_back(WriteRecord(FieldsOf<Record>(), &record));
    }
    return list;
}

/// Reads a list of records if the key is present; null means an empty list.
template <class Record> void ReadList(ObjectReader& reader, const char* key, std::vector<Record>& records) {
    const Json* list = reader.Take(key);
    if (list != nullptr) {
        records = list->is_null() ? std::vector<Record>() : ReadRecords<Record>(*list, reader.At(key));
    }
}

/// Reads a record if the key is present.
template <class Record> void ReadOne(ObjectReader& reader, const char* key, Record& record) {
    if (const Json* value = reader.Take(key)) {
        ObjectReader fields(*value, reader.At(key));
        fields.Fields(FieldsOf<Record>(), &record);
        fields.Finish();
    }
}

/// Reads "Counters": a value by name, or `{"value", "step"}`.
void ReadCounters(ObjectReader& reader, KernelCounters& counters) {
    const Json* object = reader.Take("Counters");
    if (object == nullptr) {
        return;
    }
    const ObjectReader names(*object, reader.At("Counters"));
    for (auto member = object->begin(); member != object->end(); ++member) {
        const std::string at = names.At(member.key());
        KernelCounters::Counter counter{};
        if (member.key().size() >= sizeof counter.start.Name) {
            throw Refusal(at, "is longer than " + std::to_string(sizeof counter.start.Name - 1) + " bytes");
        }
        StoreText(counter.start.Name, sizeof counter.start.Name, member.key());
        if (member->is_object()) {
            ObjectReader moving(*member, at);
            counter.start.Value = moving.Number("value", 0, LARGEST);
            counter.step = moving.Number("step", 0, LARGEST);
            moving.Finish();
        } else {
            counter.start.Value = ReadNumber(*member, at, LARGEST);
        }
        counters.counters.push_back(counter);
    }
}

/// Reads the lists of a port that change at run time.
void ReadChangedLists(ObjectReader& reader, Port& port) {
    ReadList(reader, "CongestionStatistics", port.congestion);
    if (const Json* entries = reader.Take("FwPrivateStatistics")) {
        port.privateStatistics.reset();
        if (!entries->is_null()) {
            port.privateStatistics =
                ReadRecords<_VEXAPI_FWPRIVATESTATSEntry>(*entries, reader.At("FwPrivateStatistics"));
        }
    }
}

/// Returns `read(element, path, index)` for each element of a list, or nothing if the list is null or absent.
template <class Read> auto ReadEach(ObjectReader& reader, const char* key, Read read) {
    using Element = decltype(read(Json(), std::string(), std::size_t{0}));
    std::optional<std::vector<Element>> elements;
    const Json* list = reader.Take(key);
    if (list == nullptr || list->is_null()) {
        return elements;
    }
    const std::string path = reader.At(key);
    if (!list->is_array()) {
        throw Refusal(path, "must be a list or null");
    }
    elements.emplace();
    for (std::size_t i = 0; i < list->size(); ++i) {
        elements->push_back(read((*list)[i], Indexed(path, i), i));
    }
    return elements;
}

/// Reads one description and holds what all of its parts share.
class HostReader {
public:
    explicit HostReader(const std::string& path) : mFiles(path) {}

    std::unique_ptr<Host> Read();

private:
    void ReadTop(Json top, Host& host);
    Adapter ReadAdapter(const Json& json, const std::string& path, std::size_t index);
    PhyPort ReadPhyPort(const Json& json, const std::string& path, const Adapter& adapter, std::size_t index);
    Port ReadPort(const Json& json, const std::string& path, const Adapter& adapter);
    void ReadDiagnostics(ObjectReader& reader, Port& port);
    void ReadBlobs(ObjectReader& reader, Port& port);
    void ReadStatuses(ObjectReader& reader, Port& port);
    void ReadTargets(ObjectReader& reader, Port& port);
    Target ReadTarget(const Json& json, const std::string& path, const Port& port, std::size_t index);
    void ReadLuns(ObjectReader& reader, Target& target);
    void CheckName(const Port& port, const std::string& path);
    void CompleteStatistics(Port& port);

    struct Template {
        std::string name;
        Json value; ///< as written
        bool isUsed = false;
        std::optional<Json> resolved; ///< set by the first use
        int height = 0;               ///< how deep the templates that it uses nest
        std::size_t uses = 0;         ///< of other templates, nested ones included
    };

    /// The template of this name, or null.
    Template* FindTemplate(const Json& name);
    /// Expands the templates that a value uses, in place.
    void Resolve(Json& json, const std::string& path, int depth = 0);
    /// The expanded value of a template that is used at this depth.
    Json Resolved(Template& used, int depth);
    Bytes ReadBlob(const Json& json, const std::string& path, std::size_t most);

    Files mFiles;
    std::vector<Template> mTemplates;
    std::size_t mNestedUses = 0;
    int mDeepestUse = 0; ///< so far, in the template that is being expanded
    std::set<std::string> mNames;
    bool mDuplicatesAllowed = false;
};

HostReader::Template* HostReader::FindTemplate(const Json& name) {
    const auto* const text = name.get_ptr<const std::string*>();
    const auto found = std::find_if(mTemplates.begin(), mTemplates.end(), [&](const Template& candidate) {
        return text != nullptr && candidate.name == *text;
    });
    return found == mTemplates.end() ? nullptr : &*found;
}

Json HostReader::Resolved(Template& used, int depth) {
    mDeepestUse = std::max(mDeepestUse, depth + used.height);
    // If a limit would be exceeded, expand it again, so that the error names the use that exceeds it.
    if (used.resolved && depth + used.height < DEEPEST_TEMPLATE && mNestedUses + used.uses <= MOST_NESTED_USES) {
        mNestedUses += used.uses;
        return *used.resolved;
    }
    const std::size_t usesBefore = mNestedUses;
    const int deepestBefore = std::exchange(mDeepestUse, depth);
    Json value = used.value;
    Resolve(value, "/Templates/" + used.name, depth);
    used.height = mDeepestUse - depth;
    used.uses = mNestedUses - usesBefore;
    mDeepestUse = std::max(mDeepestUse, deepestBefore);
    used.resolved = value;
    return value;
}

void HostReader::Resolve(Json& json, const std::string& path, int depth) {
    if (json.is_array()) {
        for (std::size_t i = 0; i < json.size(); ++i) {
            Resolve(json[i], Indexed(path, i), depth);
        }
        return;
    }
    if (!json.is_object()) {
        return;
    }
    if (depth == DEEPEST_TEMPLATE) {
        throw Refusal(path, "its templates use each other in a circle");
    }
    const auto use = json.find("Use");
    Json whole = Json::object();
    if (use != json.end()) {
        for (const Json& name : use->is_array() ? *use : Json::array({*use})) {
            Template* const used = FindTemplate(name);
            if (used == nullptr) {
                throw Refusal(path + "/Use", "names no template: " + name.dump());
            }
            used->isUsed = true;
            if (depth > 0 && ++mNestedUses > MOST_NESTED_USES) {
                throw Refusal(path, "templates use templates more than " + std::to_string(MOST_NESTED_USES) + " times");
            }
            MergeOver(whole, Resolved(*used, depth + 1));
        }
    }
    for (auto member = json.begin(); member != json.end(); ++member) {
        if (member == use) {
            continue;
        }
        if (member->is_structured()) {
            Resolve(*member, path + "/" + member.key(), depth);
        }
        if (use != json.end()) {
            MergeMember(whole, member.key(), std::move(*member));
        }
    }
    if (use != json.end()) {
        json = std::move(whole);
    }
}

Bytes HostReader::ReadBlob(const Json& json, const std::string& path, std::size_t most) {
    Bytes bytes;
    if (json.is_string()) {
        const auto& name = json.get_ref<const std::string&>();
        try {
            bytes = mFiles.Blob(name);
        } catch (const std::runtime_error& error) {
            throw Refusal(path, "the file \"" + name + "\" " + error.what());
        }
    } else {
        ObjectReader reader(json, path);
        if (const Json* raw = reader.Take("bytes")) {
            bytes = ReadBytes(*raw, path + "/bytes");
        } else if (const Json* file = reader.Take("file"); file != nullptr && file->is_string()) {
            bytes = ReadBlob(*file, path + "/file", most);
        } else {
            throw Refusal(path, "must be a file name, {\"bytes\": ...} or {\"file\": ..., \"patch\": ...}");
        }
        if (const Json* patch = reader.Take("patch")) {
            RequireObject(*patch, path + "/patch");
            for (auto piece = patch->begin(); piece != patch->end(); ++piece) {
                const std::string at = path + "/patch/" + piece.key();
                if (piece.key().empty() || piece.key().find_first_not_of("0123456789") != std::string::npos ||
                    piece.key().size() > 5) {
                    throw Refusal(at, "is no offset in decimal");
                }
                const Bytes over = ReadBytes(piece.value(), at);
                const std::size_t offset = std::stoul(piece.key());
                bytes.resize(std::max(bytes.size(), offset + over.size()));
                std::copy(over.begin(), over.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
            }
        }
        reader.Finish();
    }
    if (bytes.size() > most) {
        throw Refusal(path, "has " + std::to_string(bytes.size()) + " bytes, more than " + std::to_string(most));
    }
    return bytes;
}

void HostReader::ReadLuns(ObjectReader& reader, Target& target) {
    const auto runs = ReadEach(reader, "Luns", [](const Json& json, const std::string& path, std::size_t index) {
        ObjectReader lunReader(json, path);
        LunRun run{};
        _tagVEXAPI_SDMLun& lun = run.first;
        lun.LunNumber = static_cast<VX_UINT16>(index);
        lun.BlockSize = 512;
        lunReader.Fields(FieldsOf<_tagVEXAPI_SDMLun>(), &lun);
        if (json.contains("WorldwideId") && !json.contains("WorldwideIdLength")) {
            lun.WorldwideIdLength = static_cast<VX_UINT8>(ReadBytes(json["WorldwideId"], path).size());
        }
        ReadOne(lunReader, "Kernel", run.kernel);
        run.repeat = lunReader.Number("Repeat", 1, MOST_REPEATS);
        lunReader.Finish();
        if (lun.LunNumber + run.repeat > 65536) {
            throw Refusal(path, "the last LUN number is above 65535");
        }
        return run;
    });
    for (auto [lun, kernel, repeat] : runs.value_or(std::vector<LunRun>())) {
        target.kernelLuns[target.luns.size()] = kernel;
        for (std::uint64_t i = 0; i < repeat; ++i) {
            target.luns.push_back(lun);
            ++lun.LunNumber;
            // The identifier is incremented with the number, as a big-endian integer.
            std::size_t last = std::min<std::size_t>(lun.WorldwideIdLength, sizeof lun.WorldwideId);
            while (last > 0 && ++lun.WorldwideId[--last] == 0) {
            }
        }
    }
}

Target HostReader::ReadTarget(const Json& json, const std::string& path, const Port& port, std::size_t index) {
    ObjectReader reader(json, path);
    Target target;
    target.record.TargetNumber = static_cast<VX_UINT16>(index);
    target.record.ScmVirtualLane = 2;   // normal
    target.record.ScmThrottleState = 1; // none
    // Byte 2 bit 1 and byte 4 bit 0 together: online.
    target.record.TargetFlags[2] = 0x02;
    target.record.TargetFlags[4] = 0x01;
    reader.Fields(FieldsOf<_tagVEXAPI_SDMTarget>(), &target.record);
    target.linkSpeed = static_cast<VX_UINT32>(reader.Number("LinkSpeed", port.record.PortSpeed, 0xFFFFFFFF));
    ReadOne(reader, "Statistics", target.statistics);
    target.kernel.DeviceLossTimeout = VEXAPI_EXT_UNKNOWN;
    target.kernel.FastFailTimeout = VEXAPI_EXT_UNKNOWN;
    ReadOne(reader, "Kernel", target.kernel);
    ReadCounters(reader, target.kernelCounters);
    ReadLuns(reader, target);
    if (!json.contains("LunCount")) {
        target.record.LunCount = static_cast<VX_UINT32>(target.luns.size());
    }
    reader.Finish();
    return target;
}

void HostReader::ReadTargets(ObjectReader& reader, Port& port) {
    auto targets = ReadEach(reader, "Targets", [&](const Json& json, const std::string& path, std::size_t index) {
        return ReadTarget(json, path, port, index);
    });
    port.targets = std::move(targets).value_or(std::vector<Target>());
}

void HostReader::ReadDiagnostics(ObjectReader& reader, Port& port) {
    _VEXAPI_LoopbackTestResult passedLoop{};
    StoreText(passedLoop.TestStatus, sizeof passedLoop.TestStatus, "Success");
    port.loopback = {passedLoop};
    ReadList(reader, "Loopback", port.loopback);

    _VEXAPI_ECHO_RESULTS echo{};
    echo.FrameSent = 1;
    echo.FrameReceived = 1;
    echo.ResponseLength = 252;
    echo.ResponseTime = 1;
    StoreText(echo.EchoStatus, sizeof echo.EchoStatus, "Echo accepted");
    port.echo = {echo};
    ReadList(reader, "Echo", port.echo);

    std::vector<_VEXAPI_ReadWriteBufferTestResult> passed;
    for (const Target& target : port.targets) {
        _VEXAPI_ReadWriteBufferTestResult node{};
        StoreText(node.TestStatus, sizeof node.TestStatus, "Success");
        std::copy_n(target.record.PortId, sizeof node.PortId, node.PortId);
        passed.push_back(node);
    }
    if (passed.empty()) {
        passed.emplace_back();
        StoreText(passed.back().TestStatus, sizeof passed.back().TestStatus, "No target");
    }
    port.readWriteBuffer = {passed};
    if (const Json* calls = reader.Take("ReadWriteBuffer")) {
        const std::string path = reader.At("ReadWriteBuffer");
        if (!calls->is_array()) {
            throw Refusal(path, "must be a list of lists");
        }
        port.readWriteBuffer.clear();
        for (std::size_t i = 0; i < calls->size(); ++i) {
            port.readWriteBuffer.push_back(
                ReadRecords<_VEXAPI_ReadWriteBufferTestResult>((*calls)[i], Indexed(path, i)));
        }
    }
    const std::pair<const char*, bool> lists[] = {{"Loopback", port.loopback.empty()},
                                                  {"Echo", port.echo.empty()},
                                                  {"ReadWriteBuffer", port.readWriteBuffer.empty()}};
    for (const auto& [key, empty] : lists) {
        if (empty) {
            throw Refusal(reader.At(key), "needs the result of at least one call");
        }
    }
}

void HostReader::ReadBlobs(ObjectReader& reader, Port& port) {
    if (const Json* image = reader.Take("Transceiver"); image != nullptr && !image->is_null()) {
        const Bytes bytes = ReadBlob(*image, reader.At("Transceiver"), port.transceiver.size());
        std::copy(bytes.begin(), bytes.end(), port.transceiver.begin());
    }
    if (const Json* vpd = reader.Take("Vpd"); vpd != nullptr && !vpd->is_null()) {
        port.vpd = ReadBlob(*vpd, reader.At("Vpd"), 65536);
    }
    if (const Json* dump = reader.Take("FirmwareDump"); dump != nullptr && !dump->is_null()) {
        port.firmwareDump = ReadBlob(*dump, reader.At("FirmwareDump"), 64 << 20);
    }
    if (const Json* payload = reader.Take("RdpPayload"); payload != nullptr && !payload->is_null()) {
        port.rdpPayload = ReadBlob(*payload, reader.At("RdpPayload"), 508);
    }
}

void HostReader::ReadStatuses(ObjectReader& reader, Port& port) {
    const Json* statuses = reader.Take("Statuses");
    if (statuses == nullptr) {
        return;
    }
    ObjectReader known(*statuses, reader.At("Statuses"));
    for (std::size_t function = 0; function < FunctionNames().size(); ++function) {
        const std::string_view name = FunctionNames()[function];
        if (const Json* status = known.Take(name)) {
            port.statuses.emplace_back(function,
                                       static_cast<VX_UINT32>(ReadNumber(*status, known.At(name), 0xFFFFFFFF)));
        }
    }
    known.Finish();
}

void HostReader::CheckName(const Port& port, const std::string& path) {
    const std::string name = NameOf(port);
    if (port.record.ProtocolType >= 2) {
        return;
    }
    if (name == "00:00:00:00:00:00:00:00") {
        throw Refusal(path, "has no WWPN");
    }
    if (!mNames.insert(name).second && !mDuplicatesAllowed) {
        throw Refusal(path + "/WWPN", "the name " + name + " is taken by another port");
    }
}

/// The default: a node for the port and one for each target, all counters zero.
void HostReader::CompleteStatistics(Port& port) {
    _VEXAPI_SANCONGTMGMTV2 node{};
    std::copy_n(port.record.WWNN, 8, node.WWNN);
    std::copy_n(port.record.WWPN, 8, node.WWPN);
    node.EntryType = 0x80;
    port.congestion = {node};
    node.EntryType = 0;
    for (const Target& target : port.targets) {
        std::copy_n(target.record.NodeName, 8, node.WWNN);
        std::copy_n(target.record.PortName, 8, node.WWPN);
        port.congestion.push_back(node);
    }
}

Port HostReader::ReadPort(const Json& json, const std::string& path, const Adapter& adapter) {
    ObjectReader reader(json, path);
    Port port;
    _vexapi_protocol_t& record = port.record;
    record.ChipProperty.VendorId = adapter.record.VendorId;
    record.ChipProperty.SubVendorId = adapter.record.SubVendorId;
    record.ChipProperty.SubDeviceId = adapter.record.SubDeviceId;
    record.PciBusNumber = static_cast<VX_UINT8>(adapter.record.PciBusNumber);
    record.PortInterfaceType = 1;
    record.PortType = 1;
    record.PortState = 1;
    record.PortConnectionMode = 1;
    record.ScmThrottleState = 1;
    reader.Fields(FieldsOf<_vexapi_protocol_t>(), &record);

    PortAnswers& answers = port.answers;
    answers.Temperature = 48;
    answers.PersonalityChangeAllowed = 1;
    answers.Fec = 1;
    answers.CongestionFeature = 1;
    answers.RebootAfterChange = 1;
    answers.NvramDefaults = FactoryNvram();
    answers.Kernel.DeviceLossTimeout = VEXAPI_EXT_UNKNOWN;
    answers.DPortResult.HbaPortStatus = 1;
    answers.DPortResult.ElecLbStatus = 1;
    answers.DPortResult.OptLbStatus = 1;
    answers.DPortResult.LinkTrafficStatus = 1;
    answers.DPortResult.Mbx1 = 0x4000;
    std::copy_n(record.HostNQN, sizeof record.HostNQN, answers.NvmeBoot.HostNQN);
    std::copy_n(record.HostId, sizeof record.HostId, answers.NvmeBoot.HostId);
    const Field* defaults = FindField(FieldsOf<PortAnswers>(), "NvramDefaults");
    if (const Json* value = reader.Take(defaults->key)) {
        ReadField(*value, reader.At(defaults->key), *defaults, &answers);
    }
    answers.Nvram = answers.NvramDefaults;
    reader.Fields(FieldsOf<PortAnswers>(), &answers);

    ReadTargets(reader, port);
    if (!json.contains("TargetCount")) {
        record.TargetCount = static_cast<VX_UINT32>(port.targets.size());
    }
    CompleteStatistics(port);
    port.privateStatistics.emplace(1);
    ReadChangedLists(reader, port);
    ReadCounters(reader, port.kernelCounters);
    ReadDiagnostics(reader, port);
    ReadBlobs(reader, port);
    ReadStatuses(reader, port);
    reader.Finish();
    CheckName(port, path);
    return port;
}

PhyPort HostReader::ReadPhyPort(const Json& json, const std::string& path, const Adapter& adapter, std::size_t index) {
    ObjectReader reader(json, path);
    PhyPort phyPort;
    phyPort.record.PortNumber = static_cast<VX_UINT8>(index);
    reader.Fields(FieldsOf<_vexapi_phy_port_t>(), &phyPort.record);
    phyPort.ports = ReadEach(reader, "Protocols", [&](const Json& port, const std::string& at, std::size_t) {
        return ReadPort(port, at, adapter);
    });
    reader.Finish();
    return phyPort;
}

Adapter HostReader::ReadAdapter(const Json& json, const std::string& path, std::size_t) {
    ObjectReader reader(json, path);
    Adapter adapter;
    adapter.record.AdapterType = 2;
    adapter.record.VendorId = 0x1D0C;
    adapter.record.SubVendorId = 0x1D0C;
    StoreText(adapter.record.Manufacturer, sizeof adapter.record.Manufacturer, "Orvane Corporation");
    reader.Fields(FieldsOf<_vexapi_adapter_t>(), &adapter.record);
    adapter.phyPorts = ReadEach(reader, "PhyPorts", [&](const Json& phyPort, const std::string& at, std::size_t i) {
        return ReadPhyPort(phyPort, at, adapter, i);
    });
    reader.Finish();
    return adapter;
}

void HostReader::ReadTop(Json top, Host& host) {
    RequireObject(top, ""); // before any lookup
    if (const auto templates = top.find("Templates"); templates != top.end()) {
        RequireObject(*templates, "/Templates");
        for (auto item = templates->begin(); item != templates->end(); ++item) {
            mTemplates.push_back({item.key(), std::move(item.value()), false, {}, 0, 0});
        }
        top.erase(templates);
    }
    Resolve(top, "");
    ObjectReader reader(top, "");
    mDuplicatesAllowed = reader.Number("AllowDuplicateNames", 0, 1) != 0;
    host.bfsMode = static_cast<VX_UINT8>(reader.Number("BfsMode", 1, 4));
    if (host.bfsMode == 0 || host.bfsMode == 3) {
        throw Refusal("/BfsMode", "must be 1, 2 or 4");
    }
    if (!top.contains("Adapters")) {
        throw Refusal("", "has no key \"Adapters\"");
    }
    host.adapters = ReadEach(reader, "Adapters", [&](const Json& adapter, const std::string& at, std::size_t i) {
        return ReadAdapter(adapter, at, i);
    });
    reader.Finish();
    for (const Template& unused : mTemplates) {
        if (!unused.isUsed) {
            throw Refusal("/Templates/" + unused.name, "is used nowhere");
        }
    }
}

std::unique_ptr<Host> HostReader::Read() {
    auto host = std::make_unique<Host>();
    try {
        ReadTop(ParseJson(mFiles.Description()), *host);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(mFiles.Name() + ": " + error.what());
    }
    host->digest = mFiles.Digest();
    host->Link();
    return host;
}

} // namespace

std::unique_ptr<Host> ReadHost(const std::string& path) {
    return HostReader(path).Read();
}

void ReadChangedHost(const Json& object, const std::string& path, Host& host) {
    ObjectReader reader(object, path);
    host.bfsMode = static_cast<VX_UINT8>(reader.Number("BfsMode", host.bfsMode, 4));
    reader.Finish();
}

void ReadChangedAdapter(const Json& object, const std::string& path, Adapter& adapter) {
    ObjectReader reader(object, path);
    reader.Fields(FieldsOf<_vexapi_adapter_t>(), &adapter.record);
    reader.Finish();
}

void ReadChangedPort(const Json& object, const std::string& path, Port& port) {
    ObjectReader reader(object, path);
    reader.Fields(FieldsOf<_vexapi_protocol_t>(), &port.record);
    reader.Fields(FieldsOf<PortAnswers>(), &port.answers);
    ReadChangedLists(reader, port);
    if (const Json* image = reader.Take("Transceiver")) {
        const Bytes bytes = ReadBytes(*image, reader.At("Transceiver"));
        if (bytes.size() != port.transceiver.size()) {
            throw Refusal(reader.At("Transceiver"), "must have 512 bytes");
        }
        std::copy(bytes.begin(), bytes.end(), port.transceiver.begin());
    }
    if (const Json* speeds = reader.Take("LinkSpeeds")) {
        ObjectReader byName(*speeds, reader.At("LinkSpeeds"));
        for (Target& target : port.targets) {
            target.linkSpeed =
                static_cast<VX_UINT32>(byName.Number(BytesText(target.record.PortName), target.linkSpeed, 0xFFFFFFFF));
        }
        byName.Finish();
    }
    reader.Finish();
}

Json WriteChangedHost(const std::string&, const Host& host) {
    return host.bfsMode;
}

Json WriteChangedAdapter(const std::string& key, const Adapter& adapter) {
    const Field* field = FindField(FieldsOf<_vexapi_adapter_t>(), key);
    return field == nullptr ? Json() : WriteField(*field, &adapter.record);
}

Json WriteChangedPort(const std::string& key, const Port& port) {
    if (const Field* field = FindField(FieldsOf<_vexapi_protocol_t>(), key)) {
        return WriteField(*field, &port.record);
    }
    if (const Field* field = FindField(FieldsOf<PortAnswers>(), key)) {
        return WriteField(*field, &port.answers);
    }
    if (key == "CongestionStatistics") {
        return WriteRecords(port.congestion);
    }
    if (key == "FwPrivateStatistics") {
        return port.privateStatistics ? WriteRecords(*port.privateStatistics) : Json();
    }
    if (key == "Transceiver") {
        return BytesText(port.transceiver);
    }
    Json speeds = Json::object(); // "LinkSpeeds"
    for (const Target& target : port.targets) {
        speeds[BytesText(target.record.PortName)] = target.linkSpeed;
    }
    return speeds;
}

} // namespace sim
