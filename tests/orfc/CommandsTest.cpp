/// @file
/// The commands: which records they answer with, and what the columns are called.
#include "Command.h"
#include "Failure.h"

#include <gtest/gtest.h>
#include <map>
#include <regex>

using namespace orfc;

namespace {

const CommandRow& CommandOf(const std::string& name) {
    for (const CommandRow& row : Commands()) {
        if (row.name == name) {
            return row;
        }
    }
    throw std::out_of_range(name);
}

/// A command's answer: the values of a column of the records of a kind, with blanks between them.
class Answered {
public:
    Answered(const std::string& command, const Request& request) : mShown(CommandOf(command).run(request)) {
        mShown.Fill(mAnswer);
    }
    std::string Column(const std::string& kind, const std::string& key) const {
        std::string text;
        for (const Records* records : mAnswer.records) {
            for (std::size_t column = 0; column < records->ColumnCount(); ++column) {
                if (records->Kind() == kind && records->Column(column).key == key) {
                    for (std::size_t record = 0; record < records->Size(); ++record) {
                        const Value value = records->At(record, column);
                        text += (text.empty() ? "" : " ") + (IsKnown(value) ? TextOf(value) : "-");
                    }
                }
            }
        }
        return text;
    }

private:
    Shown mShown;
    Answer mAnswer;
};

/// One adapter with a physical port for each of "A" and "B", which see the same storage port, with a LUN in a map and
/// one without a name.
struct CommandsTest : testing::Test {
    CommandsTest() : mHost(MakeHost()) {}

    static Host MakeHost() {
        Host host;
        Adapter& adapter = host.adapters.emplace_back();
        adapter.identifier = "Adapter_M_S";
        adapter.portCount = 2;
        for (unsigned number = 1; number <= 2; ++number) {
            Port& port = host.ports.emplace_back();
            port.adapter = &adapter;
            port.portName = 0x2100000000000000 + number;
            port.fabricName = 0x1000000000000000 + number;
            port.identifier = "FC_" + WwnText(port.portName);
            port.kernelName = "host" + std::to_string(number);
            port.state = "online";
            port.firmwareVersion = "9.1";
            port.physicalPort = number;
            port.targetCount = 1;
            port.lunCount = 2;
            port.counters = {{"rx_frames", 1000 * number}, {"tx_frames", 10}};
            Target& target = host.targets.emplace_back();
            target.port = &port;
            target.portName = 0x5000000000000001;
            target.identifier = port.identifier + "_Target_" + WwnText(target.portName);
            target.kernelName = "rport-" + std::to_string(number);
            target.protocol = "FCP";
            target.counters = {{"fpin_cn", 5}};
            for (unsigned lunNumber = 0; lunNumber < 2; ++lunNumber) {
                Lun& lun = host.luns.emplace_back();
                lun.target = &target;
                lun.number = lunNumber;
                lun.identifier = target.identifier + "_LUN_" + std::to_string(lunNumber);
                lun.worldwideId = lunNumber == 0 ? "naa.6001" : "";
                lun.size = 1024;
                lun.device = "sd" + std::string(1, static_cast<char>('a' + 2 * (number - 1) + lunNumber));
            }
        }
        return host;
    }

    Host mHost;
};

// ---- What the records are made of

/// Every kind with its columns, from all commands.
std::map<std::string, std::vector<ColumnInfo>> Kinds() {
    std::map<std::string, std::vector<ColumnInfo>> kinds;
    const Host nothing;
    for (const CommandRow& command : Commands()) {
        if (command.isCapture) {
            continue; // writes a file
        }
        Answer answer;
        const Shown shown = command.run({nothing, {}});
        shown.Fill(answer);
        for (const Records* records : answer.records) {
            std::vector<ColumnInfo> columns;
            for (std::size_t column = 0; column < records->ColumnCount(); ++column) {
                columns.push_back(records->Column(column));
            }
            EXPECT_EQ(records->Size(), 0u) << command.name;
            const auto [known, isNew] = kinds.emplace(records->Kind(), columns);
            EXPECT_TRUE(isNew || known->second.size() == columns.size()) << records->Kind();
        }
    }
    return kinds;
}

TEST(ColumnsTest, KeysAreWordsAndUniqueInEveryFormat) {
    const std::regex word("[a-z][a-z0-9]*(_[a-z0-9]+)*");
    for (const auto& [kind, columns] : Kinds()) {
        std::set<std::string> names = {"kind"};
        for (const ColumnInfo& column : columns) {
            EXPECT_TRUE(std::regex_match(column.key, word)) << kind << " " << column.key;
            std::string name = column.key; // as clients of esxcli documents see it
            name.erase(std::remove(name.begin(), name.end(), '_'), name.end());
            EXPECT_TRUE(names.insert(name).second) << kind << " " << column.key;
            EXPECT_FALSE(std::string(column.key).ends_with("_text") || std::string(column.key).ends_with("_hex"));
        }
    }
}

TEST(ColumnsTest, EachIsDescribed) {
    for (const auto& [kind, columns] : Kinds()) {
        for (const ColumnInfo& column : columns) {
            EXPECT_STRNE(column.description, "") << kind << " " << column.key;
            EXPECT_STRNE(column.group, "") << kind << " " << column.key;
            EXPECT_TRUE(column.place == Place::DETAILED || *column.heading != '\0') << kind << " " << column.key;
        }
    }
}

/// A number's key ends with its unit, or it has none.
TEST(ColumnsTest, DecimalsHaveUnits) {
    const std::regex unit(
        ".*_(celsius|volts|milliamperes|milliwatts|dbm|nanometres|per_second|percent|milliseconds|db)");
    for (const auto& [kind, columns] : Kinds()) {
        for (const ColumnInfo& column : columns) {
            EXPECT_TRUE(column.type != Type::DECIMAL || std::regex_match(column.key, unit))
                << kind << " " << column.key;
            EXPECT_TRUE(column.type != Type::BYTES || std::string(column.key).ends_with("_bytes")) << column.key;
        }
    }
}

TEST(ColumnsTest, ListsBeginWithNamesThatStay) {
    for (const CommandRow& command : Commands()) {
        const Host nothing;
        if (command.isCapture) {
            continue; // writes a file
        }
        Answer answer;
        const Shown shown = command.run({nothing, {}});
        shown.Fill(answer);
        bool hasName = command.isExposition;
        for (std::size_t column = 0; !hasName && column < answer.ForTables()[0]->ColumnCount(); ++column) {
            hasName |= answer.ForTables()[0]->Column(column).place == Place::ALWAYS;
        }
        EXPECT_TRUE(hasName) << command.name;
    }
}

// ---- Which records

TEST_F(CommandsTest, AllObjects) {
    EXPECT_EQ(Answered("adapters", {mHost, {}}).Column("adapter", "adapter"), "Adapter_M_S");
    EXPECT_EQ(Answered("ports", {mHost, {}}).Column("port", "host"), "host1 host2");
    EXPECT_EQ(Answered("targets", {mHost, {}}).Column("target", "remote_port"), "rport-1 rport-2");
    EXPECT_EQ(Answered("luns", {mHost, {}}).Column("lun", "device"), "sda sdb sdc sdd");
    EXPECT_EQ(Answered("transceivers", {mHost, {}}).Column("transceiver", "health"), "unread unread");
}

TEST_F(CommandsTest, NamedObjectsAndTheirRelatives) {
    EXPECT_EQ(Answered("adapters", {mHost, {"sdb"}}).Column("adapter", "adapter"), "Adapter_M_S");
    EXPECT_EQ(Answered("ports", {mHost, {"sdd"}}).Column("port", "host"), "host2");
    EXPECT_EQ(Answered("ports", {mHost, {"host2", "sda", "host2"}}).Column("port", "host"), "host1 host2");
    EXPECT_EQ(Answered("targets", {mHost, {"host1"}}).Column("target", "remote_port"), "rport-1");
    EXPECT_EQ(Answered("luns", {mHost, {"host2"}}).Column("lun", "device"), "sdc sdd");
    EXPECT_EQ(Answered("luns", {mHost, {"naa.6001"}}).Column("lun", "device"), "sda sdc");
    EXPECT_THROW(Answered("luns", {mHost, {"host1", "host9"}}), Failure);
}

TEST_F(CommandsTest, ShowShowsTheNamedAlone) {
    const Answered port("show", {mHost, {"host1"}});
    EXPECT_EQ(port.Column("port", "host"), "host1");
    EXPECT_EQ(port.Column("settings", "port"), "FC_21:00:00:00:00:00:00:01");
    EXPECT_EQ(port.Column("transceiver", "port"), "FC_21:00:00:00:00:00:00:01");
    EXPECT_EQ(port.Column("counter", "counter"), "rx_frames tx_frames");
    EXPECT_EQ(port.Column("adapter", "adapter") + port.Column("target", "port") + port.Column("lun", "port"), "");
    const Answered target("show", {mHost, {"rport-2", "sda"}});
    EXPECT_EQ(target.Column("target", "remote_port"), "rport-2");
    EXPECT_EQ(target.Column("counter", "counter"), "fpin_cn");
    EXPECT_EQ(target.Column("lun", "device"), "sda");
    EXPECT_EQ(target.Column("port", "host"), "");
}

TEST_F(CommandsTest, Overview) {
    mHost.ports[1].pathsDown = 2;
    const Answered overview("", {mHost, {}});
    EXPECT_EQ(overview.Column("overview", "port"), "FC_21:00:00:00:00:00:00:01 FC_21:00:00:00:00:00:00:02");
    EXPECT_EQ(overview.Column("overview", "firmware_version"), "9.1 9.1"); // the version alone
    EXPECT_EQ(overview.Column("overview", "luns"), "2 2");
    EXPECT_EQ(overview.Column("overview", "paths_down"), "0 2");
}

// ---- Counters

TEST_F(CommandsTest, CountersOfPortsAndThenOfTheirTargets) {
    const Answered all("counters", {mHost, {}});
    EXPECT_EQ(all.Column("counter", "counter"), "rx_frames tx_frames fpin_cn rx_frames tx_frames fpin_cn");
    EXPECT_EQ(all.Column("counter", "target"), "- - 50:00:00:00:00:00:00:01 - - 50:00:00:00:00:00:00:01");
    EXPECT_EQ(all.Column("counter", "value"), "1000 10 5 2000 10 5");
    EXPECT_EQ(all.Column("counter", "increase"), "- - - - - -");
    EXPECT_EQ(Answered("counters", {mHost, {"host2"}}).Column("counter", "value"), "2000 10 5");
}

TEST_F(CommandsTest, WhatMovedInACounter) {
    const Host before = MakeHost();
    mHost.ports[0].counters["rx_frames"] += 25;
    mHost.targets[1].counters["fpin_cn"] += 1;
    const Answered moved("counters", {mHost, {}, &before, 2.5});
    EXPECT_EQ(moved.Column("counter", "counter"), "rx_frames fpin_cn");
    EXPECT_EQ(moved.Column("counter", "value"), "1025 6");
    EXPECT_EQ(moved.Column("counter", "increase"), "25 1");
    EXPECT_EQ(moved.Column("counter", "increase_per_second"), "10.0 0.4"); // 25 / 2.5, 1 / 2.5
    EXPECT_EQ(Answered("counters", {before, {}, &before, 1}).Column("counter", "counter"), "");
}

TEST_F(CommandsTest, CountersThatWentBackOrAreNew) {
    const Host before = MakeHost();
    mHost.ports[0].counters["rx_frames"] = 0;
    mHost.ports[0].counters["lip_count"] = 7; // not known before
    mHost.ports[1].counters["rx_frames"] = UINT64_MAX;
    const Answered moved("counters", {mHost, {}, &before, 1});
    EXPECT_EQ(moved.Column("counter", "value"), "0 18446744073709551615");
    EXPECT_EQ(moved.Column("counter", "increase"), "- 18446744073709549615"); // 2^64 - 1 - 2000
    EXPECT_EQ(moved.Column("counter", "increase_per_second").substr(0, 2), "- ");
}

/// Objects that weren't there before have moved nothing yet.
TEST_F(CommandsTest, CountersOfNewObjects) {
    Host before = MakeHost();
    before.ports[0].identifier = before.targets[1].identifier = "other";
    for (Port& port : mHost.ports) {
        port.counters["tx_frames"] = 20;
    }
    mHost.targets[1].counters["fpin_cn"] = 6;
    const Answered moved("counters", {mHost, {}, &before, 1});
    EXPECT_EQ(moved.Column("counter", "port"), "FC_21:00:00:00:00:00:00:02");
    EXPECT_EQ(moved.Column("counter", "counter"), "tx_frames");
}

// ---- Paths

TEST_F(CommandsTest, PathsByVolume) {
    const Answered paths("paths", {mHost, {}});
    EXPECT_EQ(paths.Column("path", "worldwide_id"), "naa.6001 naa.6001 - -");
    EXPECT_EQ(paths.Column("path", "volume"),
              "naa.6001 naa.6001 FC_21:00:00:00:00:00:00:01_Target_50:00:00:00:00:00:00:01_LUN_1 "
              "FC_21:00:00:00:00:00:00:02_Target_50:00:00:00:00:00:00:01_LUN_1");
    EXPECT_EQ(paths.Column("path", "paths"), "2 2 1 1");
    EXPECT_EQ(paths.Column("path", "redundancy"), "redundant redundant one path one path");
    EXPECT_EQ(paths.Column("path", "verdict"), "ok ok ok ok");
}

/// Whole volumes, with the ways that weren't named.
TEST_F(CommandsTest, PathsOfNamedObjects) {
    EXPECT_EQ(Answered("paths", {mHost, {"sda"}}).Column("path", "device"), "sda sdc");
    EXPECT_EQ(Answered("paths", {mHost, {"host2"}}).Column("path", "device"), "sda sdc sdd");
    EXPECT_EQ(Answered("paths", {mHost, {"sdb"}}).Column("path", "device"), "sdb");
}

TEST_F(CommandsTest, Verdicts) {
    const auto verdicts = [&] { return Answered("paths", {mHost, {"naa.6001"}}).Column("path", "verdict"); };
    const auto redundancy = [&] {
        return Answered("paths", {mHost, {"sda"}}).Column("path", "redundancy").substr(0, 10);
    };
    Lun& way = mHost.luns[0];
    way.accessState = "standby";
    EXPECT_EQ(verdicts(), "standby ok");
    EXPECT_EQ(redundancy(), "redundant ");
    way.accessState = "transitioning";
    EXPECT_EQ(verdicts(), "transitioning ok");
    way.mapPathState = "failed";
    EXPECT_EQ(verdicts(), "down in map ok");
    EXPECT_EQ(redundancy(), "one path o");
    way.accessState = "unavailable";
    EXPECT_EQ(verdicts(), "access down ok");
    way.state = "offline";
    EXPECT_EQ(verdicts(), "device down ok");
    mHost.targets[0].kernelState = "Blocked";
    EXPECT_EQ(verdicts(), "remote port down ok");
    mHost.ports[0].state = "offline";
    EXPECT_EQ(verdicts(), "link down ok");
    way.mapId = "mpath-36002"; // told whatever else is wrong
    EXPECT_EQ(verdicts(), "wrong map ok");
    mHost.ports[1].state = "offline";
    EXPECT_EQ(redundancy(), "no path no");
}

// ---- The rows of the commands

TEST(CommandRowsTest, EachHasAnExampleOfItself) {
    for (const CommandRow& row : Commands()) {
        ASSERT_FALSE(row.examples.empty()) << row.name;
        for (const char* example : row.examples) {
            const std::string start = *row.name == '\0' ? "orfc" : std::string("orfc ") + row.name;
            EXPECT_TRUE(std::string(example).starts_with(start)) << example;
        }
        EXPECT_STRNE(row.summary, "");
        EXPECT_TRUE(*row.name == '\0' || *row.description != '\0');
    }
}

} // namespace
