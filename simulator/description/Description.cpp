#include "description/Description.h"

#include "caller/Functions.h"
#include "description/Files.h"
#include "description/Records.h"

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

namespace sim {
namespace {

/// How deep templates may use templates; deeper is taken for a circle.
constexpr int deepestTemplate = 16;
/// Most uses of templates by templates in one description: each may multiply those inside it.
constexpr std::size_t mostNestedUses = 50000;
/// Most entries that "Repeat" makes.
constexpr std::uint64_t mostRepeats = 65536;

std::string indexed(const std::string& path, std::size_t index) {
    return path + "/" + std::to_string(index);
}

void mergeOver(Json& base, Json&& over);

/// Moves a value over the member with this key; objects are merged member by member.
void mergeMember(Json& base, const std::string& key, Json&& value) {
    const auto present = base.find(key);
    if (present == base.end()) {
        appendMember(base, key, std::move(value));
    } else if (present->is_object() && value.is_object()) {
        mergeOver(*present, std::move(value));
    } else {
        *present = std::move(value);
    }
}

/// Moves the members of `over` over those of `base`.
void mergeOver(Json& base, Json&& over) {
    for (auto member = over.begin(); member != over.end(); ++member) {
        mergeMember(base, member.key(), std::move(member.value()));
    }
}

template <class Record> std::vector<Record> readRecords(const Json& list, const std::string& path) {
    if (!list.is_array()) {
        throw Refusal(path, "must be a list");
    }
    std::vector<Record> records;
    for (std::size_t i = 0; i < list.size(); ++i) {
        ObjectReader reader(list[i], indexed(path, i));
        Record record{};
        reader.fields(fieldsOf<Record>(), &record);
        reader.finish();
        records.push_back(record);
    }
    return records;
}

template <class Record> Json writeRecords(const std::vector<Record>& records) {
    Json list = Json::array();
    for (const Record& record : records) {
        list.push_back(writeRecord(fieldsOf<Record>(), &record));
    }
    return list;
}

/// Reads a list of records when the key is there; null stands for an empty list.
template <class Record> void readList(ObjectReader& reader, const char* key, std::vector<Record>& records) {
    const Json* list = reader.take(key);
    if (list != nullptr) {
        records = list->is_null() ? std::vector<Record>() : readRecords<Record>(*list, reader.at(key));
    }
}

/// The keys of a port that are neither record fields nor answers but change at run time.
void readChangedLists(ObjectReader& reader, Port& port) {
    readList(reader, "CongestionStatistics", port.congestion);
    if (const Json* entries = reader.take("FwPrivateStatistics")) {
        port.privateStatistics.reset();
        if (!entries->is_null()) {
            port.privateStatistics =
                readRecords<_VEXAPI_FWPRIVATESTATSEntry>(*entries, reader.at("FwPrivateStatistics"));
        }
    }
}

/// Calls `read(element, path, index)` for each element of a list and gives the results. A list that is null or
/// absent gives none.
template <class Read> auto readEach(ObjectReader& reader, const char* key, Read read) {
    using Element = decltype(read(Json(), std::string(), std::size_t{0}));
    std::optional<std::vector<Element>> elements;
    const Json* list = reader.take(key);
    if (list == nullptr || list->is_null()) {
        return elements;
    }
    const std::string path = reader.at(key);
    if (!list->is_array()) {
        throw Refusal(path, "must be a list or null");
    }
    elements.emplace();
    for (std::size_t i = 0; i < list->size(); ++i) {
        elements->push_back(read((*list)[i], indexed(path, i), i));
    }
    return elements;
}

/// Reads one description; keeps what all its parts share.
class HostReader {
public:
    explicit HostReader(const std::string& path) : files_(path) {}

    std::unique_ptr<Host> read();

private:
    void readTop(Json top, Host& host);
    Adapter readAdapter(const Json& json, const std::string& path, std::size_t index);
    PhyPort readPhyPort(const Json& json, const std::string& path, const Adapter& adapter, std::size_t index);
    Port readPort(const Json& json, const std::string& path, const Adapter& adapter);
    void readDiagnostics(ObjectReader& reader, Port& port);
    void readBlobs(ObjectReader& reader, Port& port);
    void readStatuses(ObjectReader& reader, Port& port);
    void readTargets(ObjectReader& reader, Port& port);
    Target readTarget(const Json& json, const std::string& path, const Port& port, std::size_t index);
    void readLuns(ObjectReader& reader, Target& target);
    void checkName(const Port& port, const std::string& path);
    void completeStatistics(Port& port);

    struct Template {
        std::string name;
        Json value; ///< as it is written
        bool isUsed = false;
        std::optional<Json> resolved; ///< once it has been used
        int height = 0;               ///< how deep it uses other templates
        std::size_t uses = 0;         ///< how many uses of templates it is made of
    };

    /// The template of this name, or null.
    Template* findTemplate(const Json& name);
    /// Lays the templates that objects use under them.
    void resolve(Json& json, const std::string& path, int depth = 0);
    /// The value of a template, resolved, for a use at this depth.
    Json resolved(Template& used, int depth);
    Bytes readBlob(const Json& json, const std::string& path, std::size_t most);

    Files files_;
    std::vector<Template> templates_;
    std::size_t nestedUses_ = 0;
    int deepestUse_ = 0; ///< of those met so far, or within the template that is being resolved
    std::set<std::string> names_;
    bool duplicatesAllowed_ = false;
};

HostReader::Template* HostReader::findTemplate(const Json& name) {
    const auto* const text = name.get_ptr<const std::string*>();
    const auto found = std::find_if(templates_.begin(), templates_.end(), [&](const Template& candidate) {
        return text != nullptr && candidate.name == *text;
    });
    return found == templates_.end() ? nullptr : &*found;
}

Json HostReader::resolved(Template& used, int depth) {
    deepestUse_ = std::max(deepestUse_, depth + used.height);
    // A template that would break a limit is resolved once more, to refuse the use that breaks it.
    if (used.resolved && depth + used.height < deepestTemplate && nestedUses_ + used.uses <= mostNestedUses) {
        nestedUses_ += used.uses;
        return *used.resolved;
    }
    const std::size_t usesBefore = nestedUses_;
    const int deepestBefore = std::exchange(deepestUse_, depth);
    Json value = used.value;
    resolve(value, "/Templates/" + used.name, depth);
    used.height = deepestUse_ - depth;
    used.uses = nestedUses_ - usesBefore;
    deepestUse_ = std::max(deepestUse_, deepestBefore);
    used.resolved = value;
    return value;
}

void HostReader::resolve(Json& json, const std::string& path, int depth) {
    if (json.is_array()) {
        for (std::size_t i = 0; i < json.size(); ++i) {
            resolve(json[i], indexed(path, i), depth);
        }
        return;
    }
    if (!json.is_object()) {
        return;
    }
    if (depth == deepestTemplate) {
        throw Refusal(path, "its templates use each other in a circle");
    }
    const auto use = json.find("Use");
    Json whole = Json::object();
    if (use != json.end()) {
        for (const Json& name : use->is_array() ? *use : Json::array({*use})) {
            Template* const used = findTemplate(name);
            if (used == nullptr) {
                throw Refusal(path + "/Use", "names no template: " + name.dump());
            }
            used->isUsed = true;
            if (depth > 0 && ++nestedUses_ > mostNestedUses) {
                throw Refusal(path, "templates use templates more than " + std::to_string(mostNestedUses) + " times");
            }
            mergeOver(whole, resolved(*used, depth + 1));
        }
    }
    for (auto member = json.begin(); member != json.end(); ++member) {
        if (member == use) {
            continue;
        }
        if (member->is_structured()) {
            resolve(*member, path + "/" + member.key(), depth);
        }
        if (use != json.end()) {
            mergeMember(whole, member.key(), std::move(*member));
        }
    }
    if (use != json.end()) {
        json = std::move(whole);
    }
}

Bytes HostReader::readBlob(const Json& json, const std::string& path, std::size_t most) {
    Bytes bytes;
    if (json.is_string()) {
        const auto& name = json.get_ref<const std::string&>();
        try {
            bytes = files_.blob(name);
        } catch (const std::runtime_error& error) {
            throw Refusal(path, "the file \"" + name + "\" " + error.what());
        }
    } else {
        ObjectReader reader(json, path);
        if (const Json* raw = reader.take("bytes")) {
            bytes = readBytes(*raw, path + "/bytes");
        } else if (const Json* file = reader.take("file"); file != nullptr && file->is_string()) {
            bytes = readBlob(*file, path + "/file", most);
        } else {
            throw Refusal(path, "must be a file name, {\"bytes\": ...} or {\"file\": ..., \"patch\": ...}");
        }
        if (const Json* patch = reader.take("patch")) {
            requireObject(*patch, path + "/patch");
            for (auto piece = patch->begin(); piece != patch->end(); ++piece) {
                const std::string at = path + "/patch/" + piece.key();
                if (piece.key().empty() || piece.key().find_first_not_of("0123456789") != std::string::npos ||
                    piece.key().size() > 5) {
                    throw Refusal(at, "is no offset in decimal");
                }
                const Bytes over = readBytes(piece.value(), at);
                const std::size_t offset = std::stoul(piece.key());
                bytes.resize(std::max(bytes.size(), offset + over.size()));
                std::copy(over.begin(), over.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
            }
        }
        reader.finish();
    }
    if (bytes.size() > most) {
        throw Refusal(path, "has " + std::to_string(bytes.size()) + " bytes, more than " + std::to_string(most));
    }
    return bytes;
}

void HostReader::readLuns(ObjectReader& reader, Target& target) {
    const auto runs = readEach(reader, "Luns", [](const Json& json, const std::string& path, std::size_t index) {
        ObjectReader lunReader(json, path);
        _tagVEXAPI_SDMLun lun{};
        lun.LunNumber = static_cast<VX_UINT16>(index);
        lun.BlockSize = 512;
        lunReader.fields(fieldsOf<_tagVEXAPI_SDMLun>(), &lun);
        if (json.contains("WorldwideId") && !json.contains("WorldwideIdLength")) {
            lun.WorldwideIdLength = static_cast<VX_UINT8>(readBytes(json["WorldwideId"], path).size());
        }
        const std::uint64_t repeat = lunReader.number("Repeat", 1, mostRepeats);
        lunReader.finish();
        if (lun.LunNumber + repeat > 65536) {
            throw Refusal(path, "the last LUN number is above 65535");
        }
        return std::pair(lun, repeat);
    });
    for (auto [lun, repeat] : runs.value_or(std::vector<std::pair<_tagVEXAPI_SDMLun, std::uint64_t>>())) {
        for (std::uint64_t i = 0; i < repeat; ++i) {
            target.luns.push_back(lun);
            ++lun.LunNumber;
            // The identifier counts up with the number, carrying to the left.
            std::size_t last = std::min<std::size_t>(lun.WorldwideIdLength, sizeof lun.WorldwideId);
            while (last > 0 && ++lun.WorldwideId[--last] == 0) {
            }
        }
    }
}

Target HostReader::readTarget(const Json& json, const std::string& path, const Port& port, std::size_t index) {
    ObjectReader reader(json, path);
    Target target;
    target.record.TargetNumber = static_cast<VX_UINT16>(index);
    target.record.ScmVirtualLane = 2;   // normal
    target.record.ScmThrottleState = 1; // none
    // Byte 2 bit 1 and byte 4 bit 0 together: online.
    target.record.TargetFlags[2] = 0x02;
    target.record.TargetFlags[4] = 0x01;
    reader.fields(fieldsOf<_tagVEXAPI_SDMTarget>(), &target.record);
    target.linkSpeed = static_cast<VX_UINT32>(reader.number("LinkSpeed", port.record.PortSpeed, 0xFFFFFFFF));
    if (const Json* statistics = reader.take("Statistics")) {
        ObjectReader counters(*statistics, reader.at("Statistics"));
        counters.fields(fieldsOf<__STATISTICS>(), &target.statistics);
        counters.finish();
    }
    readLuns(reader, target);
    if (!json.contains("LunCount")) {
        target.record.LunCount = static_cast<VX_UINT32>(target.luns.size());
    }
    reader.finish();
    return target;
}

void HostReader::readTargets(ObjectReader& reader, Port& port) {
    auto targets = readEach(reader, "Targets", [&](const Json& json, const std::string& path, std::size_t index) {
        return readTarget(json, path, port, index);
    });
    port.targets = std::move(targets).value_or(std::vector<Target>());
}

void HostReader::readDiagnostics(ObjectReader& reader, Port& port) {
    _VEXAPI_LoopbackTestResult passedLoop{};
    storeText(passedLoop.TestStatus, sizeof passedLoop.TestStatus, "Success");
    port.loopback = {passedLoop};
    readList(reader, "Loopback", port.loopback);

    _VEXAPI_ECHO_RESULTS echo{};
    echo.FrameSent = 1;
    echo.FrameReceived = 1;
    echo.ResponseLength = 252;
    echo.ResponseTime = 1;
    storeText(echo.EchoStatus, sizeof echo.EchoStatus, "Echo accepted");
    port.echo = {echo};
    readList(reader, "Echo", port.echo);

    std::vector<_VEXAPI_ReadWriteBufferTestResult> passed;
    for (const Target& target : port.targets) {
        _VEXAPI_ReadWriteBufferTestResult node{};
        storeText(node.TestStatus, sizeof node.TestStatus, "Success");
        std::copy_n(target.record.PortId, sizeof node.PortId, node.PortId);
        passed.push_back(node);
    }
    if (passed.empty()) {
        passed.emplace_back();
        storeText(passed.back().TestStatus, sizeof passed.back().TestStatus, "No target");
    }
    port.readWriteBuffer = {passed};
    if (const Json* calls = reader.take("ReadWriteBuffer")) {
        const std::string path = reader.at("ReadWriteBuffer");
        if (!calls->is_array()) {
            throw Refusal(path, "must be a list of lists");
        }
        port.readWriteBuffer.clear();
        for (std::size_t i = 0; i < calls->size(); ++i) {
            port.readWriteBuffer.push_back(
                readRecords<_VEXAPI_ReadWriteBufferTestResult>((*calls)[i], indexed(path, i)));
        }
    }
    const std::pair<const char*, bool> lists[] = {{"Loopback", port.loopback.empty()},
                                                  {"Echo", port.echo.empty()},
                                                  {"ReadWriteBuffer", port.readWriteBuffer.empty()}};
    for (const auto& [key, empty] : lists) {
        if (empty) {
            throw Refusal(reader.at(key), "needs the result of at least one call");
        }
    }
}

void HostReader::readBlobs(ObjectReader& reader, Port& port) {
    if (const Json* image = reader.take("Transceiver"); image != nullptr && !image->is_null()) {
        const Bytes bytes = readBlob(*image, reader.at("Transceiver"), port.transceiver.size());
        std::copy(bytes.begin(), bytes.end(), port.transceiver.begin());
    }
    if (const Json* vpd = reader.take("Vpd"); vpd != nullptr && !vpd->is_null()) {
        port.vpd = readBlob(*vpd, reader.at("Vpd"), 65536);
    }
    if (const Json* dump = reader.take("FirmwareDump"); dump != nullptr && !dump->is_null()) {
        port.firmwareDump = readBlob(*dump, reader.at("FirmwareDump"), 64 << 20);
    }
    if (const Json* payload = reader.take("RdpPayload"); payload != nullptr && !payload->is_null()) {
        port.rdpPayload = readBlob(*payload, reader.at("RdpPayload"), 508);
    }
}

void HostReader::readStatuses(ObjectReader& reader, Port& port) {
    const Json* statuses = reader.take("Statuses");
    if (statuses == nullptr) {
        return;
    }
    ObjectReader known(*statuses, reader.at("Statuses"));
    for (std::size_t function = 0; function < functionNames().size(); ++function) {
        const std::string_view name = functionNames()[function];
        if (const Json* status = known.take(name)) {
            port.statuses.emplace_back(function,
                                       static_cast<VX_UINT32>(readNumber(*status, known.at(name), 0xFFFFFFFF)));
        }
    }
    known.finish();
}

void HostReader::checkName(const Port& port, const std::string& path) {
    const std::string name = nameOf(port);
    if (port.record.ProtocolType >= 2) {
        return;
    }
    if (name == "00:00:00:00:00:00:00:00") {
        throw Refusal(path, "has no WWPN");
    }
    if (!names_.insert(name).second && !duplicatesAllowed_) {
        throw Refusal(path + "/WWPN", "the name " + name + " is taken by another port");
    }
}

/// Without a list of its own a port has a node for itself and one for each target, all counters zero.
void HostReader::completeStatistics(Port& port) {
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

Port HostReader::readPort(const Json& json, const std::string& path, const Adapter& adapter) {
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
    reader.fields(fieldsOf<_vexapi_protocol_t>(), &record);

    PortAnswers& answers = port.answers;
    answers.Temperature = 48;
    answers.PersonalityChangeAllowed = 1;
    answers.Fec = 1;
    answers.CongestionFeature = 1;
    answers.RebootAfterChange = 1;
    answers.NvramDefaults = factoryNvram();
    answers.DPortResult.HbaPortStatus = 1;
    answers.DPortResult.ElecLbStatus = 1;
    answers.DPortResult.OptLbStatus = 1;
    answers.DPortResult.LinkTrafficStatus = 1;
    answers.DPortResult.Mbx1 = 0x4000;
    std::copy_n(record.HostNQN, sizeof record.HostNQN, answers.NvmeBoot.HostNQN);
    std::copy_n(record.HostId, sizeof record.HostId, answers.NvmeBoot.HostId);
    const Field* defaults = findField(fieldsOf<PortAnswers>(), "NvramDefaults");
    if (const Json* value = reader.take(defaults->key)) {
        readField(*value, reader.at(defaults->key), *defaults, &answers);
    }
    answers.Nvram = answers.NvramDefaults;
    reader.fields(fieldsOf<PortAnswers>(), &answers);

    readTargets(reader, port);
    if (!json.contains("TargetCount")) {
        record.TargetCount = static_cast<VX_UINT32>(port.targets.size());
    }
    completeStatistics(port);
    port.privateStatistics.emplace(1);
    readChangedLists(reader, port);
    readDiagnostics(reader, port);
    readBlobs(reader, port);
    readStatuses(reader, port);
    reader.finish();
    checkName(port, path);
    return port;
}

PhyPort HostReader::readPhyPort(const Json& json, const std::string& path, const Adapter& adapter, std::size_t index) {
    ObjectReader reader(json, path);
    PhyPort phyPort;
    phyPort.record.PortNumber = static_cast<VX_UINT8>(index);
    reader.fields(fieldsOf<_vexapi_phy_port_t>(), &phyPort.record);
    phyPort.ports = readEach(reader, "Protocols", [&](const Json& port, const std::string& at, std::size_t) {
        return readPort(port, at, adapter);
    });
    reader.finish();
    return phyPort;
}

Adapter HostReader::readAdapter(const Json& json, const std::string& path, std::size_t) {
    ObjectReader reader(json, path);
    Adapter adapter;
    adapter.record.AdapterType = 2;
    adapter.record.VendorId = 0x1D0C;
    adapter.record.SubVendorId = 0x1D0C;
    storeText(adapter.record.Manufacturer, sizeof adapter.record.Manufacturer, "Orvane Corporation");
    reader.fields(fieldsOf<_vexapi_adapter_t>(), &adapter.record);
    adapter.phyPorts = readEach(reader, "PhyPorts", [&](const Json& phyPort, const std::string& at, std::size_t i) {
        return readPhyPort(phyPort, at, adapter, i);
    });
    reader.finish();
    return adapter;
}

void HostReader::readTop(Json top, Host& host) {
    requireObject(top, ""); // an object, before anything is looked up in it
    if (const auto templates = top.find("Templates"); templates != top.end()) {
        requireObject(*templates, "/Templates");
        for (auto item = templates->begin(); item != templates->end(); ++item) {
            templates_.push_back({item.key(), std::move(item.value()), false, {}, 0, 0});
        }
        top.erase(templates);
    }
    resolve(top, "");
    ObjectReader reader(top, "");
    duplicatesAllowed_ = reader.number("AllowDuplicateNames", 0, 1) != 0;
    host.bfsMode = static_cast<VX_UINT8>(reader.number("BfsMode", 1, 4));
    if (host.bfsMode == 0 || host.bfsMode == 3) {
        throw Refusal("/BfsMode", "must be 1, 2 or 4");
    }
    if (!top.contains("Adapters")) {
        throw Refusal("", "has no key \"Adapters\"");
    }
    host.adapters = readEach(reader, "Adapters", [&](const Json& adapter, const std::string& at, std::size_t i) {
        return readAdapter(adapter, at, i);
    });
    reader.finish();
    for (const Template& unused : templates_) {
        if (!unused.isUsed) {
            throw Refusal("/Templates/" + unused.name, "is used nowhere");
        }
    }
}

std::unique_ptr<Host> HostReader::read() {
    auto host = std::make_unique<Host>();
    try {
        readTop(parseJson(files_.description()), *host);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(files_.name() + ": " + error.what());
    }
    host->digest = files_.digest();
    host->link();
    return host;
}

} // namespace

std::unique_ptr<Host> readHost(const std::string& path) {
    return HostReader(path).read();
}

void readChangedHost(const Json& object, const std::string& path, Host& host) {
    ObjectReader reader(object, path);
    host.bfsMode = static_cast<VX_UINT8>(reader.number("BfsMode", host.bfsMode, 4));
    reader.finish();
}

void readChangedAdapter(const Json& object, const std::string& path, Adapter& adapter) {
    ObjectReader reader(object, path);
    reader.fields(fieldsOf<_vexapi_adapter_t>(), &adapter.record);
    reader.finish();
}

void readChangedPort(const Json& object, const std::string& path, Port& port) {
    ObjectReader reader(object, path);
    reader.fields(fieldsOf<_vexapi_protocol_t>(), &port.record);
    reader.fields(fieldsOf<PortAnswers>(), &port.answers);
    readChangedLists(reader, port);
    if (const Json* image = reader.take("Transceiver")) {
        const Bytes bytes = readBytes(*image, reader.at("Transceiver"));
        if (bytes.size() != port.transceiver.size()) {
            throw Refusal(reader.at("Transceiver"), "must have 512 bytes");
        }
        std::copy(bytes.begin(), bytes.end(), port.transceiver.begin());
    }
    if (const Json* speeds = reader.take("LinkSpeeds")) {
        ObjectReader byName(*speeds, reader.at("LinkSpeeds"));
        for (Target& target : port.targets) {
            target.linkSpeed =
                static_cast<VX_UINT32>(byName.number(bytesText(target.record.PortName), target.linkSpeed, 0xFFFFFFFF));
        }
        byName.finish();
    }
    reader.finish();
}

Json writeChangedHost(const std::string&, const Host& host) {
    return host.bfsMode;
}

Json writeChangedAdapter(const std::string& key, const Adapter& adapter) {
    const Field* field = findField(fieldsOf<_vexapi_adapter_t>(), key);
    return field == nullptr ? Json() : writeField(*field, &adapter.record);
}

Json writeChangedPort(const std::string& key, const Port& port) {
    if (const Field* field = findField(fieldsOf<_vexapi_protocol_t>(), key)) {
        return writeField(*field, &port.record);
    }
    if (const Field* field = findField(fieldsOf<PortAnswers>(), key)) {
        return writeField(*field, &port.answers);
    }
    if (key == "CongestionStatistics") {
        return writeRecords(port.congestion);
    }
    if (key == "FwPrivateStatistics") {
        return port.privateStatistics ? writeRecords(*port.privateStatistics) : Json();
    }
    if (key == "Transceiver") {
        return bytesText(port.transceiver);
    }
    Json speeds = Json::object(); // "LinkSpeeds"
    for (const Target& target : port.targets) {
        speeds[bytesText(target.record.PortName)] = target.linkSpeed;
    }
    return speeds;
}

} // namespace sim
