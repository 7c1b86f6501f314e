/// @file
/// The rules, each over a host that is well but for one thing: it applies, and applies no longer when that is mended.
#include "Failure.h"
#include "Verdicts.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>

using namespace orfc;

namespace {

constexpr double THEN = 1e9; ///< of the earlier reading, seconds since the epoch

/// A transceiver whose readings are in the middle of their thresholds.
Transceiver GoodModule() {
    Transceiver module;
    module.state = ModuleState::READ;
    module.family = decoders::ModuleFamily::SFP;
    module.hasDiagnostics = true;
    module.isReady = true;
    module.diagnosticsChecksum = decoders::Checksum::VALID;
    module.identity.serialNumber = "S1";
    module.temperature = {{decoders::Celsius{40}, {{{80}, {-10}, {70}, {0}}}}};
    module.lanes = {{{},
                     {{decoders::Milliwatts{1}, {{{2}, {0.1}, {1.5}, {0.2}}}}},
                     {{decoders::Milliwatts{0.5}, {{{2}, {0.1}, {1.5}, {0.2}}}}}}};
    return module;
}

/// An adapter with two ports in a fabric each, which see the same LUN.
struct HealthTest : testing::Test {
    HealthTest() {
        Adapter& adapter = mHost.adapters.emplace_back();
        adapter.identifier = "Adapter_M_S";
        adapter.model = "M";
        adapter.portCount = 2;
        for (unsigned number = 1; number <= 2; ++number) {
            Port& port = mHost.ports.emplace_back();
            port.adapter = &adapter;
            port.identifier = "FC_" + std::to_string(number);
            port.kernelName = "host" + std::to_string(number);
            port.physicalPort = number;
            port.fabricName = number;
            port.state = "online";
            port.linkState = "Online";
            port.interface = "physical";
            port.speed = 32;
            port.supportedSpeeds = {8, 16, 32};
            port.firmwareVersion = "9.1";
            port.driverVersion = "10.2";
            port.transceiver = GoodModule();
            port.farEnd.isRead = true;
            port.farEnd.supportedSpeeds = {16, 32};
            port.farEnd.transceiver = GoodModule();
            port.settings.temperature = 48;
            port.settings.fec = true;
            port.settings.creditRecovery = true;
            port.settings.isCreditRecoveryRunning = true;
            port.counters = {
                {"invalid_crc_count", 100}, {"loss_of_sync_count", 100}, {"fpin_cn", 7},
                {"fpin_cn_clear", 7},       {"rx_frames", 1000},         {"seconds_since_last_reset", 500}};
            Target& target = mHost.targets.emplace_back();
            target.port = &port;
            target.identifier = port.identifier + "_Target_1";
            target.state = "online";
            target.kernelState = "Online";
            target.counters = {{"fpin_cn", 3}, {"fpin_dn", 0}};
            Lun& lun = mHost.luns.emplace_back();
            lun.target = &target;
            lun.identifier = target.identifier + "_LUN_0";
            lun.worldwideId = "naa.6001";
            lun.state = "running";
            lun.mapId = "mpath-36001";
            lun.map = "mpatha";
        }
        mEarlier = ReadingsOf(mHost, THEN, "boot");
    }

    Port& First() { return mHost.ports.front(); }
    Target& FirstTarget() { return mHost.targets.front(); }
    Lun& FirstPath() { return mHost.luns.front(); }

    /// The rules that apply a minute after the earlier reading, each as "rule object: figures".
    std::vector<std::string> Applying(double seconds = 60, const RuleBook& rules = RuleBook()) const {
        std::vector<std::string> applying;
        const Health health = Judge(mHost, rules, ReadingsOf(mHost, THEN + seconds, mBoot), mEarlier);
        for (const Finding& finding : health.findings) {
            if (finding.severity != Severity::OK) {
                applying.push_back((finding.rule != nullptr ? finding.rule->name : "-") +
                                   (" " + finding.object.Identifier()) + ": " + finding.figures);
            }
        }
        return applying;
    }

    Host mHost;
    Readings mEarlier;
    std::string mBoot = "boot";
};

using Lines = std::vector<std::string>;

TEST_F(HealthTest, NothingIsWrongWithAGoodHost) {
    EXPECT_EQ(Applying(), Lines());
    // Each object has a verdict: an adapter, two ports, links, modules, targets and paths, and a LUN.
    const Health health = Judge(mHost, RuleBook(), mEarlier, {});
    EXPECT_EQ(health.findings.size(), 12u);
    EXPECT_EQ(health.Worst(), Severity::OK);
    EXPECT_EQ(health.findings.front().Reason(), "nothing is wrong");
}

/// What is broken, and what applies then. It is mended by giving the host back as it was.
struct Broken {
    const char* rule;
    std::function<void(HealthTest&)> breakIt;
    Lines applying;
};

/// A host outside of a test of its own.
struct Judged : HealthTest {
    void TestBody() override {}
};

const std::vector<Broken> BROKEN = {
    {"speed-differs",
     [](HealthTest& t) {
         t.First().speed = 16;
         t.First().farEnd.supportedSpeeds = {16};
     },
     {"speed-differs Adapter_M_S: FC_1 16 Gb/s, FC_2 32 Gb/s"}},
    // Two against one: a third port decides what most have.
    {"firmware-differs",
     [](HealthTest& t) {
         t.mHost.ports.push_back(t.mHost.ports.back());
         t.mHost.ports.back().identifier = "FC_3";
         t.First().firmwareVersion = "9.0";
     },
     {"firmware-differs FC_1: 9.0, 9.1 on 2 like ports"}},
    {"driver-differs",
     [](HealthTest& t) {
         t.mHost.ports.push_back(t.mHost.ports.back());
         t.mHost.ports.back().identifier = "FC_3";
         t.First().driverVersion = "10.1";
     },
     {"driver-differs FC_1: 10.1, 10.2 on 2 like ports"}},
    {"board-hot", [](HealthTest& t) { t.First().settings.temperature = 81; }, {"board-hot FC_1: 81 C, bound 80 C"}},
    {"board-too-hot",
     [](HealthTest& t) { t.First().settings.temperature = 96; },
     {"board-hot FC_1: 96 C, bound 80 C", "board-too-hot FC_1: 96 C, bound 95 C"}},
    {"link-down",
     [](HealthTest& t) {
         t.First().state = "offline";
         t.First().linkState = "Linkdown";
     },
     {"link-down FC_1: Linkdown", "path-down FC_1_Target_1_LUN_0: link Linkdown",
      "lun-one-path naa.6001: 1 of 2 paths up, FC_2"}},
    {"link-slow",
     [](HealthTest& t) {
         for (Port& port : t.mHost.ports) {
             port.speed = 16;
             port.farEnd.supportedSpeeds = {8, 16};
         }
         t.First().farEnd.supportedSpeeds = {16, 32, 64};
     },
     {"link-slow FC_1: 16 Gb/s, both ends can 32 Gb/s"}},
    {"errors-growing",
     [](HealthTest& t) {
         t.First().counters["error_frames"] = 2;
         t.First().counters["fpin_li_link_failure_count"] = 1;
     },
     {"errors-growing FC_1: error_frames +2, fpin_li_link_failure_count +1 in 60 s"}},
    {"crc-rate",
     [](HealthTest& t) { t.First().counters["invalid_crc_count"] = 105; },
     {"errors-growing FC_1: invalid_crc_count +5 in 60 s",
      "crc-rate FC_1: invalid_crc_count +5 in 60 s, 5.0 per minute, bound 1"}},
    {"sync-loss-rate",
     [](HealthTest& t) { t.First().counters["loss_of_sync_count"] = 106; },
     {"errors-growing FC_1: loss_of_sync_count +6 in 60 s",
      "sync-loss-rate FC_1: loss_of_sync_count +6 in 60 s, 6.0 per minute, bound 1"}},
    {"congestion",
     [](HealthTest& t) {
         t.First().counters["fpin_cn"] = 9;
         t.First().counters["cn_sig_alarm"] = 4;
     },
     {"congestion FC_1: cn_sig_alarm +4, fpin_cn +2 in 60 s"}},
    {"credit-recovery-off",
     [](HealthTest& t) {
         t.First().settings.isCreditRecoveryRunning = false;
         t.First().settings.creditRecoveryReason = "why";
     },
     {"credit-recovery-off FC_1: configured here: why"}},
    {"fec-off", [](HealthTest& t) { t.First().settings.fec = false; }, {"fec-off FC_1: off at 32 Gb/s"}},
    {"module-bad",
     [](HealthTest& t) { t.First().transceiver.state = ModuleState::BAD; },
     {"module-bad FC_1: of the identity"}},
    // 10 lg 0.15 = -8.24, 10 lg 0.2 = -6.99; 0.09: -10.46, 0.1: -10.
    {"module-warning",
     [](HealthTest& t) { t.First().transceiver.lanes[0].receivePower->value.value = 0.15; },
     {"module-warning FC_1: receive power -8.24 dBm below -6.99 dBm"}},
    {"module-alarm",
     [](HealthTest& t) {
         t.First().transceiver.lanes[0].receivePower->value.value = 0.09;
         t.First().transceiver.temperature->value.value = 75;
     },
     {"module-warning FC_1: temperature 75.0 C above 70.0 C",
      "module-alarm FC_1: receive power -10.46 dBm below -10.00 dBm"}},
    {"far-module-warning",
     [](HealthTest& t) { t.First().farEnd.transceiver.temperature->value.value = -1; },
     {"far-module-warning FC_1: temperature -1.0 C below 0.0 C"}},
    {"far-module-alarm",
     [](HealthTest& t) { t.First().farEnd.transceiver.lanes[0].receivePower->value.value = 0; },
     {"far-module-alarm FC_1: receive power 0 mW below -10.00 dBm"}},
    // It was 1 mW, 0 dBm; 10 lg 0.7 = -1.55.
    {"transmit-power-falling",
     [](HealthTest& t) { t.First().transceiver.lanes[0].transmitPower->value.value = 0.7; },
     {"transmit-power-falling FC_1: -1.55 dBm, was 0.00 dBm"}},
    {"target-down",
     [](HealthTest& t) { t.FirstTarget().kernelState = "Blocked"; },
     {"target-down FC_1_Target_1: Blocked", "path-down FC_1_Target_1_LUN_0: remote port Blocked",
      "lun-one-path naa.6001: 1 of 2 paths up, FC_2"}},
    {"target-marginal",
     [](HealthTest& t) { t.FirstTarget().kernelState = "Marginal"; },
     {"target-marginal FC_1_Target_1: Marginal"}},
    {"target-congested",
     [](HealthTest& t) { t.FirstTarget().counters["fpin_cn"] = 4; },
     {"target-congested FC_1_Target_1: fpin_cn +1 in 60 s"}},
    {"path-down",
     [](HealthTest& t) { t.FirstPath().state = "offline"; },
     {"path-down FC_1_Target_1_LUN_0: device offline", "lun-one-path naa.6001: 1 of 2 paths up, FC_2"}},
    {"path-in-wrong-map",
     [](HealthTest& t) { t.FirstPath().mapId = "mpath-36002"; },
     {"path-in-wrong-map FC_1_Target_1_LUN_0: naa.6001 in mpatha, mpath-36002"}},
    {"lun-no-path",
     [](HealthTest& t) {
         for (Lun& lun : t.mHost.luns) {
             lun.state = "blocked";
         }
     },
     {"path-down FC_1_Target_1_LUN_0: device blocked", "path-down FC_2_Target_1_LUN_0: device blocked",
      "lun-no-path naa.6001: 0 of 2 paths up"}},
    {"lun-one-path",
     [](HealthTest& t) {
         t.FirstPath().worldwideId = "naa.6002";
         t.FirstPath().mapId = "";
     },
     {"lun-one-path naa.6002: 1 of 1 paths up, FC_1", "lun-one-path naa.6001: 1 of 1 paths up, FC_2"}},
    {"lun-one-port",
     [](HealthTest& t) { t.First().physicalPort = 2; },
     {"lun-one-port naa.6001: 2 of 2 paths up, FC_1"}},
    {"lun-one-fabric",
     [](HealthTest& t) { t.First().fabricName = 2; },
     {"lun-one-fabric naa.6001: 2 of 2 paths up, fabric 00:00:00:00:00:00:00:02"}},
};

TEST(RulesTest, EachFiresAndRecovers) {
    std::set<std::string> broken;
    for (const Broken& row : BROKEN) {
        SCOPED_TRACE(row.rule);
        broken.insert(row.rule);
        Judged test;
        row.breakIt(test);
        const Lines applying = test.Applying();
        EXPECT_EQ(applying, row.applying);
        EXPECT_TRUE(std::any_of(applying.begin(), applying.end(), [&](const std::string& line) {
            return line.starts_with(row.rule + std::string(" "));
        }));
        // A state that lasts is told again; a movement is over when the counters rest.
        test.mEarlier = ReadingsOf(test.mHost, THEN, "boot");
        const auto rule = std::find_if(Rules().begin(), Rules().end(),
                                       [&](const Rule& it) { return it.name == std::string(row.rule); });
        EXPECT_EQ(test.Applying().empty(), rule->Is(COMPARES_READINGS));
        EXPECT_EQ(Judged().Applying(), Lines());
        // Switched off, it is silent.
        const std::string file = testing::TempDir() + "rules-off.json";
        std::ofstream(file) << "{\"" << row.rule << "\": false}";
        for (const std::string& line : test.Applying(60, RuleBook(file))) {
            EXPECT_FALSE(line.starts_with(row.rule + std::string(" ")));
        }
    }
    for (const Rule& rule : Rules()) {
        EXPECT_TRUE(broken.contains(rule.name)) << rule.name;
    }
    EXPECT_EQ(broken.size(), Rules().size());
}

// ---- What isn't wrong

TEST_F(HealthTest, WhatIsAtItsBoundHasNotCrossedIt) {
    First().settings.temperature = 80;
    First().counters["invalid_crc_count"] += 4; // fewer than 5
    FirstTarget().counters["fpin_dn"] = 1;      // not of congestion
    First().counters["fpin_cn_clear"] = 8;      // it is over
    EXPECT_EQ(Applying(), Lines{"errors-growing FC_1: invalid_crc_count +4 in 60 s"});
    First().counters["invalid_crc_count"] += 2; // 6 in 6 minutes are 1 for each
    EXPECT_EQ(Applying(360), Lines{"errors-growing FC_1: invalid_crc_count +6 in 360 s"});
}

TEST_F(HealthTest, EmptyBayHasNoLink) {
    Port port = First();
    port.identifier = "FC_3";
    port.state = "offline";
    port.transceiver = {};
    port.transceiver.state = ModuleState::EMPTY;
    mHost.ports.push_back(port);
    EXPECT_EQ(Applying(), Lines());
    mHost.ports.back().transceiver.state = ModuleState::UNREAD; // nobody knows
    EXPECT_EQ(Applying(), Lines{"link-down FC_3: Online"});
}

TEST_F(HealthTest, VirtualPortsShareLinkAndModule) {
    Port port = First();
    port.identifier = "FC_3";
    port.interface = "virtual";
    port.speed = 8;
    port.transceiver.state = ModuleState::BAD;
    mHost.ports.push_back(port);
    EXPECT_EQ(Applying(), Lines());
}

TEST_F(HealthTest, WhatIsUnknownIsNotWrong) {
    for (Port& port : mHost.ports) {
        Port unknown;
        unknown.adapter = port.adapter;
        unknown.identifier = port.identifier;
        port = std::move(unknown);
    }
    mHost.targets.clear();
    mHost.luns.clear();
    EXPECT_EQ(Applying(), Lines());
}

TEST_F(HealthTest, TapesHaveOnePath) {
    mHost.luns.pop_back();
    EXPECT_EQ(Applying(), Lines{"lun-one-path naa.6001: 1 of 1 paths up, FC_1"});
    FirstTarget().type = "tape";
    EXPECT_EQ(Applying(), Lines());
    FirstPath().state = "offline";
    EXPECT_EQ(Applying().back(), "lun-no-path naa.6001: 0 of 1 paths up");
}

TEST_F(HealthTest, UnreadObjectsAreUnknown) {
    mHost.messages = {"FC_1: transceiver: failed with status 5", "host2/speed: Input/output error",
                      "FC_1_Target_1: counters: failed with status 5", "something else"};
    EXPECT_EQ(Applying(),
              (Lines{"- FC_2: host2/speed: Input/output error", "- FC_1: FC_1: transceiver: failed with status 5",
                     "- FC_1_Target_1: FC_1_Target_1: counters: failed with status 5"}));
    EXPECT_EQ(Judge(mHost, RuleBook(), mEarlier, {}).Worst(), Severity::UNKNOWN);
}

// ---- Earlier readings

TEST_F(HealthTest, FirstReadingComparesWithNothing) {
    First().counters["error_frames"] = 50;
    mEarlier.clear();
    EXPECT_EQ(Applying(), Lines());
}

TEST_F(HealthTest, ClockThatWasSetBack) {
    First().counters["error_frames"] = 50;
    EXPECT_EQ(Applying(0), Lines());
    EXPECT_EQ(Applying(-3600), Lines());
}

TEST_F(HealthTest, CountersThatWentBackCountFromZero) {
    First().counters["invalid_crc_count"] = 3;
    EXPECT_EQ(Applying(), Lines{"errors-growing FC_1: invalid_crc_count +3 in 60 s"});
    First().counters["invalid_crc_count"] = 0;
    EXPECT_EQ(Applying(), Lines());
}

/// More than before, and all of it since the reset.
TEST_F(HealthTest, CountersThatWereResetAndPassedTheOldValue) {
    First().counters["invalid_crc_count"] = 103;
    First().counters["seconds_since_last_reset"] = 20;

    EXPECT_NE(Applying().front().find("invalid_crc_count +103"), std::string::npos);
}

TEST_F(HealthTest, RebootResetsCounters) {
    for (Port& port : mHost.ports) {
        port.counters = {{"invalid_crc_count", 101}};
    }
    for (Target& target : mHost.targets) {
        target.counters.clear();
    }
    EXPECT_NE(Applying().front().find("invalid_crc_count +1 "), std::string::npos);
    mBoot = "another";
    EXPECT_NE(Applying().front().find("invalid_crc_count +101 "), std::string::npos);
}

TEST(IncreaseTest, ResetsAndWraps) {
    constexpr std::uint64_t END = 0x100000000;
    EXPECT_EQ(IncreaseOf(5, 9, false), 4u);
    EXPECT_EQ(IncreaseOf(5, 5, false), 0u);
    EXPECT_EQ(IncreaseOf(9, 5, false), 5u) << "a reset";
    EXPECT_EQ(IncreaseOf(5, 9, true), 9u);
    EXPECT_EQ(IncreaseOf(END - 3, 2, false), 5u) << "a wrap";
    EXPECT_EQ(IncreaseOf(END - END / 16, 0, false), END / 16);
    EXPECT_EQ(IncreaseOf(END - END / 16 - 1, 0, false), 0u) << "too far from the end";
    EXPECT_EQ(IncreaseOf(END - 1, END / 16, false), END / 16) << "too far from the beginning";
    EXPECT_EQ(IncreaseOf(END, 1, false), 1u) << "a counter of 64 bits";
    EXPECT_EQ(IncreaseOf(END - 3, 2, true), 2u);
}

/// A file of readings in a folder of its own.
struct ReadingsTest : HealthTest {
    ReadingsTest()
        : mFolder(testing::TempDir() + "readings-" + testing::UnitTest::GetInstance()->current_test_info()->name()),
          mFile(mFolder / "folder/file.json") {
        std::filesystem::remove_all(mFolder);
    }
    ~ReadingsTest() override { std::filesystem::remove_all(mFolder); }
    std::filesystem::path mFolder;
    std::string mFile;
    static constexpr double DAY = 86400;
};

TEST_F(ReadingsTest, AreKept) {
    EXPECT_TRUE(LoadReadings(mFile).empty());
    SaveReadings(mFile, mEarlier);
    const Readings loaded = LoadReadings(mFile);
    ASSERT_EQ(loaded.size(), 2u);
    const Reading& reading = loaded.at("FC_1");
    EXPECT_EQ(reading.time, THEN);
    EXPECT_EQ(reading.boot, "boot");
    EXPECT_EQ(reading.counters, First().counters);
    EXPECT_EQ(reading.targets.at("FC_1_Target_1"), (Counters{{"fpin_cn", 3}})) << "no zeros";
    ASSERT_EQ(reading.powers.size(), 1u);
    EXPECT_EQ(reading.powers[0].front().dbm, 0);
}

TEST_F(ReadingsTest, OfOtherPortsStayForAMonth) {
    SaveReadings(mFile, mEarlier);
    mHost.ports.pop_back();
    mHost.targets.pop_back();
    SaveReadings(mFile, ReadingsOf(mHost, THEN + 31 * DAY, "boot"));
    EXPECT_EQ(LoadReadings(mFile).size(), 2u);
    SaveReadings(mFile, ReadingsOf(mHost, THEN + 33 * DAY, "boot"));
    EXPECT_EQ(LoadReadings(mFile).size(), 1u);
}

/// 0.1 dB a day: no day is worse than the one before by much, the month is.
TEST_F(ReadingsTest, SlowFallIsSeen) {
    for (int day = 0; day < 16; ++day) {
        First().transceiver.lanes[0].transmitPower->value.value = std::pow(10, -0.01 * day);
        for (const double hour : {0., 6., 12.}) {
            SaveReadings(mFile, ReadingsOf(mHost, THEN + day * DAY + hour * 3600, "boot"));
        }
    }
    mEarlier = LoadReadings(mFile);
    EXPECT_EQ(mEarlier.at("FC_1").powers[0].size(), 16u) << "one a day";
    First().transceiver.lanes[0].transmitPower->value.value = std::pow(10, -0.16); // -1.60 dBm
    EXPECT_EQ(Applying(16 * DAY), Lines{"transmit-power-falling FC_1: -1.60 dBm, was 0.00 dBm"});
    // Another module begins anew.
    First().transceiver.identity.serialNumber = "S2";
    EXPECT_EQ(Applying(16 * DAY), Lines());
    SaveReadings(mFile, ReadingsOf(mHost, THEN + 16 * DAY, "boot"));
    EXPECT_EQ(LoadReadings(mFile).at("FC_1").powers[0].size(), 1u);
}

TEST_F(ReadingsTest, ModuleThatIsNotReadKeepsItsPowers) {
    SaveReadings(mFile, mEarlier);
    First().transceiver = {};
    SaveReadings(mFile, ReadingsOf(mHost, THEN + DAY, "boot"));
    EXPECT_EQ(LoadReadings(mFile).at("FC_1").powers[0].size(), 1u);
}

TEST_F(ReadingsTest, PowersEndAfterDays) {
    for (int day = 0; day < 40; ++day) {
        SaveReadings(mFile, ReadingsOf(mHost, THEN + day * DAY, "boot"));
    }
    const std::vector<Reading::Power> powers = LoadReadings(mFile).at("FC_1").powers[0];
    EXPECT_EQ(powers.size(), 32u);
    EXPECT_EQ(powers.front().time, THEN + 8 * DAY);
    // Those from a time to come are forgotten.
    SaveReadings(mFile, ReadingsOf(mHost, THEN + 8 * DAY, "boot"));
    EXPECT_EQ(LoadReadings(mFile).at("FC_1").powers[0].size(), 1u);
}

} // namespace
