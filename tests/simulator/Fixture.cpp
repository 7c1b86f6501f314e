#include "Fixture.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

std::string textOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

Simulated::Simulated() {
    const char* base = std::getenv("TMPDIR");
    folder_ = std::string(base == nullptr ? "/tmp" : base) + "/simulator-test-XXXXXX";
    if (mkdtemp(folder_.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    for (const char* name : {"VEXAPI_SIM_HOST", "VEXAPI_SIM_FAULTS", "VEXAPI_SIM_REBOOT"}) {
        unsetenv(name);
    }
    setenv("VEXAPI_SIM_STATE", path("state").c_str(), 1);
    setenv("VEXAPI_SIM_JOURNAL", path("journal").c_str(), 1);
}

Simulated::~Simulated() {
    unsetenv("VEXAPI_SIM_FAULTS"); // or the end itself could be made to fail
    outputOf([] { end(); });
    std::filesystem::remove_all(folder_);
    for (const char* name : {"VEXAPI_SIM_HOST", "VEXAPI_SIM_REBOOT", "VEXAPI_SIM_STATE", "VEXAPI_SIM_JOURNAL"}) {
        unsetenv(name);
    }
}

std::string Simulated::file(const std::string& name, const std::string& content) const {
    std::ofstream(path(name), std::ios::binary) << content;
    return path(name);
}

void Simulated::describeText(const std::string& text) const {
    setenv("VEXAPI_SIM_HOST", file("host.json", text).c_str(), 1);
}

VX_UINT32 Simulated::start(VX_UINT32 debugLevel) {
    VX_UINT32 status = 0;
    output = outputOf([&] { status = VEXAPI_Initialize(debugLevel, 0); });
    return status;
}

void Simulated::restart() {
    end();
    ASSERT_EQ(start(), 0U) << output;
}

_vexapi_protocol_t* Simulated::port(unsigned index) {
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

VX_UINT32 Simulated::word(unsigned index) {
    VX_UINT32 word = 0;
    std::memcpy(&word, port(index)->PortHandle.opaque + 4, sizeof word);
    return word;
}

std::vector<Json> Simulated::journal() const {
    std::istringstream lines(textOf(path("journal")));
    std::vector<Json> journal;
    for (std::string line; std::getline(lines, line);) {
        journal.push_back(Json::parse(line));
    }
    return journal;
}

Json Simulated::lastCall() const {
    const std::vector<Json> lines = journal();
    return lines.empty() ? Json() : lines.back();
}

void Simulated::forget() const {
    std::filesystem::remove(path("journal"));
}

std::string Simulated::outputOf(const std::function<void()>& act) {
    // The library must print through the C stream, whatever stream that is at the time.
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

int Simulated::inProcess(const std::function<int()>& act) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        int result = 255;
        outputOf([&] { result = act(); });
        _exit(result);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

Json smallHost() {
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

Json& portOf(Json& host, unsigned index) {
    return host["Adapters"][0]["PhyPorts"][index]["Protocols"][0];
}
