#include "Fixture.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

std::string TextOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

Simulated::Simulated() {
    const char* base = std::getenv("TMPDIR");
    mFolder = std::string(base == nullptr ? "/tmp" : base) + "/simulator-test-XXXXXX";
    if (mkdtemp(mFolder.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    for (const char* name : {"VEXAPI_SIM_HOST", "VEXAPI_SIM_FAULTS", "VEXAPI_SIM_REBOOT"}) {
        unsetenv(name);
    }
    setenv("VEXAPI_SIM_STATE", Path("state").c_str(), 1);
    setenv("VEXAPI_SIM_JOURNAL", Path("journal").c_str(), 1);
}

Simulated::~Simulated() {
    unsetenv("VEXAPI_SIM_FAULTS"); // a fault could make the end fail
    OutputOf([] { End(); });
    std::filesystem::remove_all(mFolder);
    for (const char* name : {"VEXAPI_SIM_HOST", "VEXAPI_SIM_REBOOT", "VEXAPI_SIM_STATE", "VEXAPI_SIM_JOURNAL"}) {
        unsetenv(name);
    }
}

std::string Simulated::File(const std::string& name, const std::string& content) const {
    std::ofstream(Path(name), std::ios::binary) << content;
    return Path(name);
}

void Simulated::DescribeText(const std::string& text) const {
    setenv("VEXAPI_SIM_HOST", File("host.json", text).c_str(), 1);
}

VX_UINT32 Simulated::Start(VX_UINT32 debugLevel) {
    VX_UINT32 status = 0;
    output = OutputOf([&] { status = VEXAPI_Initialize(debugLevel, 0); });
    return status;
}

void Simulated::Restart() {
    End();
    ASSERT_EQ(Start(), 0U) << output;
}

_vexapi_protocol_t* Simulated::Port(unsigned index) {
    const VX_ADAPTER_LIST* adapters = VEXAPI_GetAdapterList();
    for (auto* adapter = adapters == nullptr ? nullptr : adapters->pHead; adapter != nullptr;
         adapter = adapter->pNext) {
        const VX_PHY_PORT_LIST* phyPorts = adapter->pPhyPortList;
        for (auto* phyPort = phyPorts == nullptr ? nullptr : phyPorts->pHead; phyPort != nullptr;
             phyPort = phyPort->pNext) {
            const VX_PROTOCOL_LIST* protocols = phyPort->pProtocolList;
            for (auto* one = protocols == nullptr ? nullptr : protocols->pHead; one != nullptr; one = one->pNext) {
                if (index-- == 0) {
                    return one;
                }
            }
        }
    }
    throw std::runtime_error("the host has no such port");
}

VX_UINT32 Simulated::Word(unsigned index) {
    VX_UINT32 word = 0;
    std::memcpy(&word, Port(index)->PortHandle.opaque + 4, sizeof word);
    return word;
}

std::vector<Json> Simulated::Journal() const {
    std::istringstream lines(TextOf(Path("journal")));
    std::vector<Json> journal;
    for (std::string line; std::getline(lines, line);) {
        journal.push_back(Json::parse(line));
    }
    return journal;
}

Json Simulated::LastCall() const {
    const std::vector<Json> lines = Journal();
    return lines.empty() ? Json() : lines.back();
}

void Simulated::Forget() const {
    std::filesystem::remove(Path("journal"));
}

std::string Simulated::OutputOf(const std::function<void()>& act) {
    // The library must print to the current C stream.
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* const saved = stdout;
    stdout = open_memstream(&text, &size);
    act();
    std::fclose(stdout);
    stdout = saved;
    std::string output(text, size);
    std::free(text);
    return output;
}

int Simulated::InProcess(const std::function<int()>& act) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        int result = 255;
        OutputOf([&] { result = act(); });
        _exit(result);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

Json SmallHost() {
    return Json::parse(R"({
      "Adapters": [{
        "Model": "ORV2742", "SerialNumber": "RFH1836M74420",
        "MultibootVersion": "1.90.68", "FlashFwVersion": "8.08.231",
        "PhyPorts": [
          {"PortNumber": 1, "Protocols": [{
            "WWNN": "20:00:00:24:ff:01:02:03", "WWPN": "21:00:00:24:ff:01:02:03", "PortSpeed": 50,
            "ChipProperty": {"DeviceId": "0x2261"}, "FeatureFlags": "0x04000000",
            "PrincipalFabricWWN": "10:00:88:94:71:00:00:01",
            "Targets": [
              {"NodeName": "50:06:0e:80:00:00:00:00", "PortName": "50:06:0e:80:00:00:00:01", "PortId": "01:02:03",
               "Luns": [{"LunNumber": 0}, {"LunNumber": 300}]},
              {"NodeName": "50:0a:09:80:00:00:00:00", "PortName": "50:0a:09:80:00:00:00:01", "PortId": "01:02:04",
               "TargetFlags": "00:00:02:00:01:08", "Luns": [{"LunNumber": 1, "LunFlags": 1}]}
            ]
          }]},
          {"PortNumber": 2, "Protocols": [{
            "WWPN": "21:00:00:24:ff:01:02:04", "PortSpeed": 22
          }]}
        ]
      }]
    })");
}

Json& PortOf(Json& host, unsigned index) {
    return host["Adapters"][0]["PhyPorts"][index]["Protocols"][0];
}
