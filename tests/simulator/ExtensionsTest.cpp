// The optional functions: what the operating system knows, counters, scope, messages.
#include "Functions.h"

#include <cstring>

namespace {

/// Starts with `SmallHost`, after `edit` has changed it.
class Extensions : public Functions {
protected:
    void StartWithChanged(const std::function<void(Json&)>& edit) {
        Json host = SmallHost();
        edit(host);
        Describe(host);
        ASSERT_EQ(Start(), 0U) << output;
    }
    static _tagVEXAPI_SDMTarget* Target() { return Port()->pTargetList; }

    static VEXAPI_EXT_PORT PortKnown(unsigned index = 0) {
        auto record = Sized<VEXAPI_EXT_PORT>();
        EXPECT_EQ(VEXAPI_ExtGetPort(Handle(index), &record), 0U);
        return record;
    }
    static VEXAPI_EXT_TARGET TargetKnown(const _tagVEXAPI_SDMTarget* target) {
        auto record = Sized<VEXAPI_EXT_TARGET>();
        EXPECT_EQ(VEXAPI_ExtGetTarget(Handle(), target, &record), 0U);
        return record;
    }
    static VEXAPI_EXT_LUN LunKnown(const _tagVEXAPI_SDMLun* lun) {
        auto record = Sized<VEXAPI_EXT_LUN>();
        EXPECT_EQ(VEXAPI_ExtGetLun(Handle(), Target(), lun, &record), 0U);
        return record;
    }
    /// Counters by name, read with room for four.
    static Json Counters(const _tagVEXAPI_SDMTarget* target = nullptr) {
        VEXAPI_EXT_COUNTER counters[4]{};
        VX_UINT32 count = 4;
        EXPECT_EQ(VEXAPI_ExtGetCounters(Handle(), target, counters, &count), 0U);
        Json values = Json::object();
        for (VX_UINT32 i = 0; i < std::min(count, 4U); ++i) {
            values[counters[i].Name] = counters[i].Value;
        }
        return values;
    }
    void ExpectMistake(VX_UINT32 status, const std::string& reason) const {
        EXPECT_EQ(status, CALLERS_MISTAKE) << reason;
        EXPECT_EQ(LastCall().value("mistake", ""), reason);
    }
};

TEST_F(Extensions, WhatTheDescriptionTells) {
    StartWithChanged([](Json& host) {
        PortOf(host)["Kernel"] = Json::parse(R"({"KernelName": "host2", "Device": "0000:3b:00.0", "Driver": "fc",
            "State": "Linkdown", "Speed": "16 Gbit", "SymbolicName": "a name", "DeviceLossTimeout": 45})");
        Json& target = PortOf(host)["Targets"][0];
        target["Kernel"] = Json::parse(R"({"KernelName": "rport-2:0-1", "State": "Blocked", "Roles": "FCP Target",
            "DeviceLossTimeout": 60, "FastFailTimeout": 5})");
        target["Luns"][1]["Kernel"] = Json::parse(R"({"Address": "2:0:1:300", "Device": "sdb", "State": "offline",
            "AccessState": "standby", "WorldwideId": "naa.60", "Map": "mpatha", "MapDevice": "dm-0",
            "MapId": "mpath-360", "MapState": "active", "MapPathState": "failed"})");
    });
    const VEXAPI_EXT_PORT port = PortKnown();
    EXPECT_STREQ(port.KernelName, "host2");
    EXPECT_STREQ(port.Device, "0000:3b:00.0");
    EXPECT_STREQ(port.Driver, "fc");
    EXPECT_STREQ(port.State, "Linkdown");
    EXPECT_STREQ(port.Speed, "16 Gbit");
    EXPECT_STREQ(port.SymbolicName, "a name");
    EXPECT_EQ(port.DeviceLossTimeout, 45U);
    const VEXAPI_EXT_TARGET target = TargetKnown(Target());
    EXPECT_EQ(LastCall()["arguments"], Json::parse(R"({"target": "50:06:0e:80:00:00:00:01"})"));
    EXPECT_STREQ(target.KernelName, "rport-2:0-1");
    EXPECT_STREQ(target.State, "Blocked");
    EXPECT_STREQ(target.Roles, "FCP Target");
    EXPECT_EQ(target.DeviceLossTimeout, 60U);
    EXPECT_EQ(target.FastFailTimeout, 5U);
    const VEXAPI_EXT_LUN lun = LunKnown(Target()->pLunList->pNext);
    EXPECT_EQ(LastCall()["arguments"], Json::parse(R"({"target": "50:06:0e:80:00:00:00:01", "lun": 300})"));
    EXPECT_STREQ(lun.Address, "2:0:1:300");
    EXPECT_STREQ(lun.Device, "sdb");
    EXPECT_STREQ(lun.State, "offline");
    EXPECT_STREQ(lun.AccessState, "standby");
    EXPECT_STREQ(lun.WorldwideId, "naa.60");
    EXPECT_STREQ(lun.Map, "mpatha");
    EXPECT_STREQ(lun.MapDevice, "dm-0");
    EXPECT_STREQ(lun.MapId, "mpath-360");
    EXPECT_STREQ(lun.MapState, "active");
    EXPECT_STREQ(lun.MapPathState, "failed");
}

/// Expects zeros after the first `known` bytes, and unknown numbers in `numbers` words of those.
template <class Record> void ExpectUnknown(const Record& record, std::size_t numbers) {
    auto expected = Sized<Record>();
    for (std::size_t i = 1; i <= numbers; ++i) {
        (&expected.Size)[i] = VEXAPI_EXT_UNKNOWN;
    }
    EXPECT_EQ(std::memcmp(&record, &expected, sizeof record), 0);
}

TEST_F(Extensions, WhatItDoesNotTellIsUnknown) {
    StartWith();
    ExpectUnknown(PortKnown(), 1);
    ExpectUnknown(TargetKnown(Target()), 2);
    ExpectUnknown(LunKnown(Target()->pLunList), 0);
    EXPECT_EQ(Counters(), Json::object());
    EXPECT_EQ(Counters(Target()), Json::object());
}

TEST_F(Extensions, FillsWhatTheSizeCovers) {
    StartWith(R"({"Kernel": {"KernelName": "host2", "Device": "0000:3b:00.0", "DeviceLossTimeout": 45}})");
    // Of an older caller, whose record ends after KernelName.
    auto older = Sized<VEXAPI_EXT_PORT>(offsetof(VEXAPI_EXT_PORT, Device));
    std::strcpy(older.Device, "its own");
    EXPECT_EQ(VEXAPI_ExtGetPort(Handle(), &older), 0U);
    EXPECT_EQ(older.Size, offsetof(VEXAPI_EXT_PORT, Device));
    EXPECT_EQ(older.DeviceLossTimeout, 45U);
    EXPECT_STREQ(older.KernelName, "host2");
    EXPECT_STREQ(older.Device, "its own");
    // Of a newer one.
    struct {
        VEXAPI_EXT_PORT port;
        char more[8];
    } newer{Sized<VEXAPI_EXT_PORT>(sizeof(VEXAPI_EXT_PORT) + 8), "unknown"};
    EXPECT_EQ(VEXAPI_ExtGetPort(Handle(), &newer.port), 0U);
    EXPECT_STREQ(newer.port.Device, "0000:3b:00.0");
    EXPECT_STREQ(newer.more, "unknown");
}

TEST_F(Extensions, SizesThatCannotBe) {
    StartWith();
    for (const VX_UINT32 size : {0U, 3U, 5U, 9U, VX_UINT32{sizeof(VEXAPI_EXT_PORT) - 1}}) {
        auto port = Sized<VEXAPI_EXT_PORT>(size);
        ExpectMistake(VEXAPI_ExtGetPort(Handle(), &port), "Size of port may not be " + std::to_string(size));
    }
    VEXAPI_EXT_TARGET target{};
    ExpectMistake(VEXAPI_ExtGetTarget(Handle(), Target(), &target), "Size of record may not be 0");
    VEXAPI_EXT_LUN lun{};
    ExpectMistake(VEXAPI_ExtGetLun(Handle(), Target(), Target()->pLunList, &lun), "Size of record may not be 0");
    const VEXAPI_EXT_SCOPE scope{};
    ExpectMistake(VEXAPI_ExtSetScope(&scope), "Size of scope may not be 0");
}

TEST_F(Extensions, NullPointersAndRecordsThatAreNotCleared) {
    StartWith();
    const auto* lun = Target()->pLunList;
    ExpectMistake(VEXAPI_ExtGetPort(Handle(), nullptr), "port is null");
    ExpectMistake(VEXAPI_ExtGetTarget(Handle(), nullptr, nullptr), "target is null");
    ExpectMistake(VEXAPI_ExtGetTarget(Handle(), Target(), nullptr), "record is null");
    ExpectMistake(VEXAPI_ExtGetLun(Handle(), nullptr, lun, nullptr), "target is null");
    ExpectMistake(VEXAPI_ExtGetLun(Handle(), Target(), nullptr, nullptr), "lun is null");
    ExpectMistake(VEXAPI_ExtGetLun(Handle(), Target(), lun, nullptr), "record is null");
    ExpectMistake(VEXAPI_ExtGetCounters(Handle(), nullptr, nullptr, nullptr), "count is null");
    VX_UINT32 count = 1;
    ExpectMistake(VEXAPI_ExtGetCounters(Handle(), nullptr, nullptr, &count), "counters is null");
    VEXAPI_EXT_COUNTER counter{.Name = {}, .Value = 1};
    ExpectMistake(VEXAPI_ExtGetCounters(Handle(), nullptr, &counter, &count), "counters isn't cleared");
    auto port = Sized<VEXAPI_EXT_PORT>();
    port.SymbolicName[255] = 1;
    ExpectMistake(VEXAPI_ExtGetPort(Handle(), &port), "port isn't cleared");
    auto target = Sized<VEXAPI_EXT_TARGET>();
    target.DeviceLossTimeout = 1;
    ExpectMistake(VEXAPI_ExtGetTarget(Handle(), Target(), &target), "record isn't cleared");
    auto record = Sized<VEXAPI_EXT_LUN>();
    record.MapPathState[31] = 1;
    ExpectMistake(VEXAPI_ExtGetLun(Handle(), Target(), lun, &record), "record isn't cleared");
}

TEST_F(Extensions, RecordsOfOthers) {
    StartWith();
    auto target = Sized<VEXAPI_EXT_TARGET>();
    const _tagVEXAPI_SDMTarget copy = *Target();
    ExpectMistake(VEXAPI_ExtGetTarget(Handle(), &copy, &target), "the target is none of the port's");
    ExpectMistake(VEXAPI_ExtGetTarget(Handle(1), Target(), &target), "the target is none of the port's");
    VX_UINT32 count = 0;
    ExpectMistake(VEXAPI_ExtGetCounters(Handle(1), Target(), nullptr, &count), "the target is none of the port's");
    auto record = Sized<VEXAPI_EXT_LUN>();
    const _tagVEXAPI_SDMLun* lun = Target()->pLunList;
    const auto* within = reinterpret_cast<const _tagVEXAPI_SDMLun*>(reinterpret_cast<const char*>(lun) + 8);
    const _tagVEXAPI_SDMLun* const others[] = {Target()->pNext->pLunList, lun + 2, within};
    for (const auto* other : others) {
        ExpectMistake(VEXAPI_ExtGetLun(Handle(), Target(), other, &record), "the LUN is none of the target's");
    }
}

TEST_F(Extensions, RunsOfLunsCountUp) {
    StartWithChanged([](Json& host) {
        PortOf(host)["Targets"][0]["Luns"] = Json::parse(R"([
            {"Repeat": 1000, "Kernel": {"Address": "2:0:1:0", "Device": "sdy", "State": "running",
             "WorldwideId": "naa.60ff", "Map": "mpatha", "MapDevice": "dm-9", "MapId": "mpath-360fe"}},
            {"LunNumber": 2000, "Repeat": 2, "Kernel": {"Device": "nvme9n1", "WorldwideId": "t10.Z", "Map": "sd1"}},
            {"LunNumber": 3000, "Repeat": 2}])");
    });
    const _tagVEXAPI_SDMLun* lun = Target()->pLunList;
    struct Expected {
        int lun;
        const char* address;
        const char* device;
        const char* worldwideId;
        const char* map;
        const char* mapDevice;
        const char* mapId;
    };
    // sda has number 1, sdz 26, sdaa 27, sdzz 26 + 26 * 26 = 702, sdaaa 703; sdy is 25.
    const Expected all[] = {
        {0, "2:0:1:0", "sdy", "naa.60ff", "mpatha", "dm-9", "mpath-360fe"},
        {1, "2:0:1:1", "sdz", "naa.6100", "mpathb", "dm-10", "mpath-360ff"},
        {2, "2:0:1:2", "sdaa", "naa.6101", "mpathc", "dm-11", "mpath-36100"},
        {25, "2:0:1:25", "sdax", "naa.6118", "mpathz", "dm-34", "mpath-36117"},
        {26, "2:0:1:26", "sday", "naa.6119", "mpathaa", "dm-35", "mpath-36118"},
        {677, "2:0:1:677", "sdzz", "naa.63a4", "mpathzb", "dm-686", "mpath-363a3"},
        {678, "2:0:1:678", "sdaaa", "naa.63a5", "mpathzc", "dm-687", "mpath-363a4"},
        {2000, "", "nvme9n1", "t10.Z", "sd1", "", ""},
        {2001, "", "nvme9n2", "t10.Z", "sd2", "", ""},
        {3001, "", "", "", "", "", ""},
    };
    for (const Expected& expected : all) {
        while (lun->LunNumber != expected.lun) {
            lun = lun->pNext;
            ASSERT_NE(lun, nullptr);
        }
        const VEXAPI_EXT_LUN record = LunKnown(lun);
        EXPECT_STREQ(record.Address, expected.address);
        EXPECT_STREQ(record.Device, expected.device);
        EXPECT_STREQ(record.WorldwideId, expected.worldwideId);
        EXPECT_STREQ(record.Map, expected.map);
        EXPECT_STREQ(record.MapDevice, expected.mapDevice);
        EXPECT_STREQ(record.MapId, expected.mapId);
        EXPECT_STREQ(record.State, expected.lun < 1000 ? "running" : "");
    }
}

TEST_F(Extensions, CountersOfPortsAndTargets) {
    StartWithChanged([](Json& host) {
        PortOf(host)["Counters"] = Json::parse(R"({"tx_frames": "0xffffffffffffffff", "rx_frames": 7, "nos": 0})");
        PortOf(host)["Targets"][1]["Counters"] = Json::parse(R"({"fpin_li": 3})");
    });
    EXPECT_EQ(Counters(), Json::parse(R"({"tx_frames": 18446744073709551615, "rx_frames": 7, "nos": 0})"));
    EXPECT_EQ(Counters(Target()), Json::object());
    EXPECT_EQ(Counters(Target()->pNext), Json::parse(R"({"fpin_li": 3})"));
    // Too little room: the first ones, and how many there are.
    VEXAPI_EXT_COUNTER counters[2]{};
    VX_UINT32 count = 1;
    EXPECT_EQ(VEXAPI_ExtGetCounters(Handle(), nullptr, counters, &count), 0U);
    EXPECT_EQ(count, 3U);
    EXPECT_STREQ(counters[0].Name, "tx_frames");
    EXPECT_STREQ(counters[1].Name, "");
    count = 0;
    EXPECT_EQ(VEXAPI_ExtGetCounters(Handle(), nullptr, nullptr, &count), 0U);
    EXPECT_EQ(count, 3U);
}

TEST_F(Extensions, CountersThatMove) {
    StartWith(R"({"Counters": {"rx_frames": {"value": 1000, "step": 50}, "nos": {"step": 1}, "crc": {"value": 4}}})");
    // Other tests of this process may have called.
    VX_UINT64 calls = Counters()["nos"];
    const auto expect = [&] {
        ++calls;
        EXPECT_EQ(Counters(), (Json{{"rx_frames", 1000 + 50 * calls}, {"nos", calls}, {"crc", 4}}));
    };
    VX_UINT32 count = 0; // only asks how many there are
    EXPECT_EQ(VEXAPI_ExtGetCounters(Handle(), nullptr, nullptr, &count), 0U);
    expect();
    expect();
    Restart(); // a session is no reason for counters to begin again
    expect();
}

TEST_F(Extensions, ScopeIsAcceptedAndLeavesNothingOut) {
    StartWith();
    auto scope = Sized<VEXAPI_EXT_SCOPE>();
    scope.Parts = VEXAPI_EXT_LUNS;
    std::memcpy(scope.PortName, Port(1)->WWPN, 8);
    scope.TargetName[7] = 5;
    scope.HasLunNumber = 1;
    scope.LunNumber = 300;
    EXPECT_EQ(VEXAPI_ExtSetScope(&scope), 0U);
    const Json logged = LastCall()["records"]["scope"];
    EXPECT_EQ(logged["Parts"], 0x40);
    EXPECT_EQ(logged["PortName"], "21:00:00:24:ff:01:02:04");
    EXPECT_EQ(logged["TargetName"], "00:00:00:00:00:00:00:05");
    EXPECT_EQ(logged["HasLunNumber"], 1);
    EXPECT_EQ(logged["LunNumber"], 300);
    Restart();
    EXPECT_EQ(Target()->LunCount, 2U);
    EXPECT_EQ(Port()->PortSpeed, 50U);
    EXPECT_EQ(VEXAPI_ExtSetScope(nullptr), 0U);
    EXPECT_FALSE(LastCall().contains("records"));
}

TEST_F(Extensions, ScopesThatCannotBe) {
    auto scope = Sized<VEXAPI_EXT_SCOPE>();
    scope.Parts = 0x100;
    ExpectMistake(VEXAPI_ExtSetScope(&scope), "Parts of scope may not be 256");
    scope.Parts = 0;
    scope.HasLunNumber = 2;
    ExpectMistake(VEXAPI_ExtSetScope(&scope), "HasLunNumber of scope may not be 2");
    scope.Size = offsetof(VEXAPI_EXT_SCOPE, Parts); // which isn't covered then
    EXPECT_EQ(VEXAPI_ExtSetScope(&scope), 0U);
}

TEST_F(Extensions, MessagesGoToTheHandler) {
    std::vector<std::string> lines;
    const auto keep = [](void* context, const char* line) {
        static_cast<std::vector<std::string>*>(context)->emplace_back(line);
    };
    DescribeText("[]");
    testing::internal::CaptureStderr();
    EXPECT_EQ(VEXAPI_ExtSetMessageHandler(keep, &lines), 0U);
    EXPECT_EQ(LastCall()["arguments"], Json::parse(R"({"handler": "given"})"));
    EXPECT_EQ(Start(), REFUSED);
    const std::string line = "the description is refused: " + Path("host.json") + ": /: must be an object";
    EXPECT_EQ(lines, std::vector<std::string>{line});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(output.find("the description is refused"), std::string::npos) << output;
    End();

    testing::internal::CaptureStderr();
    EXPECT_EQ(VEXAPI_ExtSetMessageHandler(nullptr, nullptr), 0U);
    EXPECT_EQ(LastCall()["arguments"], Json::parse(R"({"handler": "none"})"));
    EXPECT_EQ(Start(), REFUSED);
    EXPECT_EQ(lines.size(), 1U);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "vexapi simulator: " + line + "\n");
    EXPECT_TRUE(output.starts_with("vexapi simulator: " + line + "\n")) << output;
}

} // namespace
