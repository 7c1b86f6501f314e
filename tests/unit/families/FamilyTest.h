/// @file
/// Base of the tests of command families: a host with one port, chips of each family, and the documents that
/// clients expect, in both formats.
#pragma once

#include "Capture.h"
#include "FakeLibrary.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <sys/resource.h>

namespace family_test {

using Calls = std::vector<std::string>;

/// Copies a text into a record's array. If it fills the array, there is no terminator.
template <std::size_t N> void SetText(char (&array)[N], const std::string& text) {
    std::memset(array, 0, N);
    std::memcpy(array, text.data(), std::min(N, text.size()));
}

template <std::size_t N> void SetBytes(VX_UINT8 (&array)[N], const std::array<int, N>& bytes) {
    for (std::size_t i = 0; i < N; ++i) {
        array[i] = static_cast<VX_UINT8>(bytes[i]);
    }
}

/// One chip for each distinguished family.
enum Chip { FOUR_G, EIGHT_G, ROWAN_FC, ROWAN_CNA, HAZEL, WILLOW, LARCH, ALDER, BIRCH, NO_FAMILY, OTHER_VENDOR };

struct ChipRow {
    Chip chip;
    const char* name;
    VX_UINT16 vendor;
    VX_UINT16 device;
};
inline constexpr ChipRow CHIPS[] = {
    {FOUR_G, "4G", 0x1D0C, 0x2432},
    {EIGHT_G, "8G", 0x1D0C, 0x2532},
    {ROWAN_FC, "Rowan FC", 0x1D0C, 0x2031},
    {ROWAN_CNA, "Rowan CNA", 0x1D0C, 0x8031},
    {HAZEL, "Hazel", 0x1D0C, 0x8001},
    {WILLOW, "Willow", 0x1D0C, 0x8021},
    {LARCH, "Larch", 0x1D0C, 0x2261},
    {ALDER, "Alder", 0x1D0C, 0x2071},
    {BIRCH, "Birch", 0x1D0C, 0x2281},
    {NO_FAMILY, "no family", 0x1D0C, 0x2300},
    {OTHER_VENDOR, "another vendor's chip with the device id of a Birch", 0x1D0D, 0x2281},
};

inline void SetChip(_vexapi_protocol_t& protocol, Chip chip) {
    for (const ChipRow& row : CHIPS) {
        if (row.chip == chip) {
            protocol.ChipProperty.VendorId = row.vendor;
            protocol.ChipProperty.DeviceId = row.device;
        }
    }
}

/// A field of a document. Numbers and texts differ in XML only.
struct Field {
    enum Kind { TEXT, NUMBER, BOOLEAN };
    std::string label;
    std::string value;
    Kind kind = TEXT;
};
inline Field Flag(const std::string& label, bool value) {
    return {label, value ? "true" : "false", Field::BOOLEAN};
}

/// Documents in a format.
class Format {
public:
    explicit Format(bool isXml) : mIsXml(isXml) {}

    /// The leaf that writes this format: "get" or "getcli".
    std::string Leaf(const std::string& name) const { return mIsXml ? name : name + "cli"; }
    bool IsXml() const { return mIsXml; }

    std::string FieldOf(const Field& field) const {
        static constexpr const char* TAGS[] = {"string", "int", "bool"};
        const std::string tag = TAGS[field.kind];
        return mIsXml ? "<field name=\"" + field.label + "\">\n<" + tag + ">" + field.value + "</" + tag + "></field>\n"
                      : field.label + ": " + field.value + "\n";
    }
    std::string FieldsOf(const std::vector<Field>& fields) const {
        std::string text;
        for (const Field& field : fields) {
            text += FieldOf(field);
        }
        return text;
    }
    std::string Structure(const std::string& name, const std::string& content) const {
        return mIsXml ? "<structure typeName=\"" + name + "\">\n" + content + "</structure>\n" : name + ":\n" + content;
    }
    std::string List(const std::string& content) const {
        return mIsXml ? "<list type=\"structure\">\n" + content + "</list>\n" : content;
    }
    std::string OpenField(const std::string& name, const std::string& content) const {
        return mIsXml ? "<field name=\"" + name + "\">\n" + content + "</field>\n" : name + ": " + content;
    }
    std::string Whole(const std::string& content) const {
        static constexpr char FRAME[] = "****************************************************\n";
        return mIsXml ? "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n" + content + "</output>\n"
                      : FRAME + content + FRAME;
    }

    /// A structure of fields.
    std::string Flat(const std::string& structure, const std::vector<Field>& fields) const {
        return Whole(Structure(structure, FieldsOf(fields)));
    }
    /// A structure of fields and a field with a list, which is `rows`.
    std::string Report(const std::string& structure, const std::vector<Field>& fields, const std::string& field,
                       const std::string& rows) const {
        return Whole(Structure(structure, FieldsOf(fields) + OpenField(field, List(rows))));
    }
    /// A report of lines in one text.
    std::string Block(const std::string& structure, const std::string& field, const std::string& list,
                      const std::string& text) const {
        return Report(structure, {{"Message", "Success"}}, field,
                      Structure(list, OpenField("Data", mIsXml ? "<string>" + text + "</string>" : text)));
    }

private:
    bool mIsXml;
};
inline const Format FORMATS[] = {Format(true), Format(false)};
inline const Format XML(true);
inline const Format TEXT(false);

/// The text of a block report in text form, between "Data: " and the closing line.
inline std::string BlockText(const std::string& output) {
    const std::size_t start = output.find("Data: ");
    const std::size_t end = output.rfind("****************************************************\n");
    return start == std::string::npos || end == std::string::npos ? "no block in: " + output
                                                                  : output.substr(start + 6, end - start - 6);
}

/// A report's lines, without their indentation of six blanks; the first has none.
inline std::vector<std::string> LinesOf(const std::string& block) {
    std::vector<std::string> lines;
    std::istringstream stream(block);
    for (std::string line; std::getline(stream, line);) {
        if (!lines.empty()) {
            line = line.starts_with("      ") ? line.substr(6) : "not indented: " + line;
        }
        lines.push_back(line);
    }
    return lines;
}

/// Prevents the process from opening files during its lifetime, so that no redirection can be opened.
class NoFiles {
public:
    NoFiles() { getrlimit(RLIMIT_NOFILE, &mBefore); }
    ~NoFiles() { setrlimit(RLIMIT_NOFILE, &mBefore); }
    NoFiles(const NoFiles&) = delete;
    NoFiles& operator=(const NoFiles&) = delete;
    void Begin() {
        rlimit none = mBefore;
        none.rlim_cur = 0;
        setrlimit(RLIMIT_NOFILE, &none);
    }

private:
    rlimit mBefore{};
};

/// A folder for the files of one test, deleted with its contents.
class TemporaryFolder {
public:
    TemporaryFolder() { mPath = mkdtemp(mPath.data()); }
    ~TemporaryFolder() { std::filesystem::remove_all(mPath); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string Path(const std::string& name) const { return mPath + "/" + name; }
    /// Writes a file and gives its path.
    std::string Write(const std::string& name, const std::string& content) const {
        std::ofstream(Path(name), std::ios::binary) << content;
        return Path(name);
    }

private:
    std::string mPath = "/tmp/families.XXXXXX";
};

/// A file's content; nullopt when it can't be read.
inline std::optional<std::string> ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

/// Library output, which must never reach a client.
inline void Chatter() {
    std::printf("library: working\n");
}

/// A host of one adapter, "Adapter_ORV2_S1", with one port.
class FamilyTest : public ::testing::Test {
protected:
    FamilyTest() {
        FakeLibrary::Reset();
        adapter = &Fake().host.AddAdapter();
        SetText(adapter->Model, "ORV2");
        SetText(adapter->SerialNumber, "S1");
        phyPort = &Fake().host.AddPhyPort(*adapter);
        port = &Fake().host.AddProtocol(*phyPort);
        SetChip(*port, BIRCH);
    }
    ~FamilyTest() override { FakeLibrary::Reset(); }

    static FakeLibrary& Fake() { return FakeLibrary::Get(); }
    static Calls PortCalls() { return Fake().PortCalls(); }
    /// Runs a command with an empty record of calls.
    static CommandRun Run(const std::string& line) {
        Fake().calls.clear();
        return RunCommand(line);
    }
    /// Runs a `port` command on the port: "-t port -s FAMILY LEAF ID REST".
    CommandRun RunPort(const std::string& family, const std::string& leaf, const std::string& rest = "") const {
        return Run("-t port -s " + family + " " + leaf + " " + Id(*port) + (rest.empty() ? "" : " " + rest));
    }
    /// The same for the `adapter` commands.
    static CommandRun RunAdapter(const std::string& family, const std::string& leaf, const std::string& rest = "") {
        return Run("-t adapter -s " + family + " " + leaf + " Adapter_ORV2_S1" + (rest.empty() ? "" : " " + rest));
    }
    /// A call with the port's handle, as the record has it.
    static std::string Call(const std::string& function, const std::string& rest = "") {
        return "VEXAPI_" + function + "(21:00:0a:0b:0c:0d:00:01" + (rest.empty() ? "" : ", " + rest) + ")";
    }
    /// Makes the adapter list unavailable.
    static void LoseHost() { Fake().host.hasList = false; }
    /// After the resolver, no file can be opened.
    static void LoseFiles(NoFiles& files) {
        Fake().onGetAdapterList = [&files] {
            files.Begin();
            return FakeLibrary::Get().host.List();
        };
    }

    _vexapi_adapter_t* adapter;
    _vexapi_phy_port_t* phyPort;
    _vexapi_protocol_t* port;
};

} // namespace family_test
