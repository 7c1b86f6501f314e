/// @file
/// The far end of a link: diagnostic parameters from a scripted library to what is shown beside the near end.
#include "Command.h"
#include "ScriptedLibrary.h"

#include <cmath>

using namespace orfc_test;

namespace {

using Texts = std::vector<std::string>;

/// A list of descriptors, after its length, big-endian.
std::vector<VX_UINT8> Payload(std::vector<std::uint32_t> words) {
    words.insert(words.begin(), static_cast<std::uint32_t>(4 * words.size()));
    std::vector<VX_UINT8> bytes;
    for (const std::uint32_t word : words) {
        for (const int shift : {24, 16, 8, 0}) {
            bytes.push_back(static_cast<VX_UINT8>(word >> shift));
        }
    }
    return bytes;
}

/// A port whose far end answers with a payload, and whose own module is scripted.
class FarEndTest : public ScriptedTest {
protected:
    FarEndTest() {
        Tree().AddPort();
        SucceedEverywhere();
        Fake().onDiagnosticsRDPTest = [this](VX_PORT_HANDLE*, void* buffer, VX_UINT32* size) {
            std::memcpy(buffer, payload.data(), std::min<std::size_t>(*size, payload.size()));
            *size = given.value_or(static_cast<VX_UINT32>(payload.size()));
            return status;
        };
    }

    Port ReadPort() {
        Wanted wanted = EVERYTHING;
        wanted.farEnds = true;
        const Host host = Read(wanted);
        messages = host.messages;
        return host.ports.front();
    }
    static Value At(const Port& port, const std::string& key) {
        for (const ColumnOf<Port>& column : TransceiverColumns()) {
            if (column.key == key) {
                return column.value(port);
            }
        }
        throw std::out_of_range(key);
    }
    static double Number(const Port& port, const std::string& key) {
        const Value value = At(port, key);
        return std::holds_alternative<Decimal>(value) ? std::get<Decimal>(value).value : std::nan("");
    }
    static std::string Text(const Port& port, const std::string& key) { return TextOf(At(port, key)); }

    /// A module that sends 1 mW and receives 0.4 mW.
    static void GiveLight(Port& port) {
        Lane& lane = port.transceiver.lanes.emplace_back();
        lane.transmitPower = {decoders::Milliwatts{1}, {}};
        lane.receivePower = {decoders::Milliwatts{0.4}, {}};
    }

    // 40.5 C is 10368, 2880h; 3.3 V 33000, 80E8h; 7.5 mA 3750, 0EA6h; 0.5 mW 5000, 1388h; 0.25 mW 2500, 09C4h. Optical,
    // an SFP+, short wave: 0051h. 32 of 16 and 32 Gb/s: 0600h, 0200h.
    std::vector<VX_UINT8> payload =
        Payload({0x00010000, 12, 0x288080E8, 0x0EA61388, 0x09C40051, 0x00010001, 4, 0x06000200, 0x00010003, 16,
                 0x20000000, 1, 0x20010000, 2, 0x00010006, 12, 32, 64, 412});
    std::optional<VX_UINT32> given; ///< the size that the library reports
    VX_UINT32 status = 0;
    Texts messages;
};

TEST_F(FarEndTest, WhatItTellsOfItself) {
    const Port port = ReadPort();
    EXPECT_EQ(messages, Texts{});
    EXPECT_EQ(Text(port, "far_health"), "no thresholds");
    EXPECT_EQ(Number(port, "far_temperature_celsius"), 40.5);
    EXPECT_NEAR(Number(port, "far_voltage_volts"), 3.3, 1e-9);
    EXPECT_NEAR(Number(port, "far_bias_milliamperes"), 7.5, 1e-9);
    EXPECT_NEAR(Number(port, "far_transmit_power_milliwatts"), 0.5, 1e-9);
    EXPECT_NEAR(Number(port, "far_transmit_power_dbm"), -3.0103, 1e-4); // 10 log 0.5
    EXPECT_NEAR(Number(port, "far_receive_power_dbm"), -6.0206, 1e-4);  // 10 log 0.25
    EXPECT_EQ(Text(port, "far_speed_gbps"), "32");
    EXPECT_EQ(Text(port, "far_node_name"), "20:00:00:00:00:00:00:01");
    EXPECT_EQ(Text(port, "far_port_name"), "20:01:00:00:00:00:00:02");
    EXPECT_EQ(Text(port, "far_buffer_credits"), "32");
    EXPECT_EQ(Text(port, "far_attached_buffer_credits"), "64");
    EXPECT_EQ(At(port, "loss_to_far_db"), Value()); // the near end has no module
}

/// Near: 1 mW sent, 0.4 mW received. Far: 0.5 mW sent, 0.25 mW received.
TEST_F(FarEndTest, LossInBothDirections) {
    Port port = ReadPort();
    GiveLight(port);
    EXPECT_NEAR(Number(port, "loss_to_far_db"), 6.0206, 1e-4);   // 0 dBm less -6.0206 dBm: 10 log (1 / 0.25)
    EXPECT_NEAR(Number(port, "loss_from_far_db"), 0.9691, 1e-4); // -3.0103 dBm less -3.9794 dBm: 10 log (0.5 / 0.4)
    port.transceiver.lanes[0].receivePower->value = decoders::Milliwatts{0}; // no light
    EXPECT_EQ(At(port, "loss_from_far_db"), Value());
    EXPECT_NEAR(Number(port, "loss_to_far_db"), 6.0206, 1e-4);
}

/// People see both ends in a row.
TEST_F(FarEndTest, SideBySide) {
    Host host;
    host.ports.push_back(ReadPort());
    Port& port = host.ports.front();
    port.transceiver.temperature = {decoders::Celsius{30}, {}};
    GiveLight(port);
    for (const CommandRow& row : Commands()) {
        if (row.name != std::string("transceivers")) {
            continue;
        }
        const Shown shown = row.run(Request{host, {port.identifier}});
        Answer answer;
        shown.Fill(answer);
        std::map<std::string, Texts> readings;
        for (const Records* records : answer.ForTables()) {
            for (std::size_t at = 0; at < records->Size(); ++at) {
                std::map<std::string, std::string> cells;
                for (std::size_t column = 0; column < records->ColumnCount(); ++column) {
                    const Value value = records->At(at, column);
                    cells[records->Column(column).key] = IsKnown(value) ? TextOf(value) : "-";
                }
                readings[cells["reading"]] = {cells["value"], cells["dbm"], cells["far_value"], cells["far_dbm"]};
            }
        }
        EXPECT_EQ(readings["temperature C"], (Texts{"30.0", "-", "40.5", "-"}));
        EXPECT_EQ(readings["supply V"], (Texts{"-", "-", "3.300", "-"}));
        EXPECT_EQ(readings["transmit mW"], (Texts{"1.0000", "0.00", "0.5000", "-3.01"}));
        EXPECT_EQ(readings["receive mW"], (Texts{"0.4000", "-3.98", "0.2500", "-6.02"}));
        EXPECT_EQ(readings["loss to far end dB"], (Texts{"6.02", "-", "-", "-"}));
        EXPECT_EQ(readings["loss from far end dB"], (Texts{"0.97", "-", "-", "-"}));
    }
}

TEST_F(FarEndTest, ARejectionIsTold) {
    status = 0x200000FB;
    const Port port = ReadPort();
    EXPECT_FALSE(port.farEnd.isRead);
    EXPECT_EQ(At(port, "far_health"), Value());
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_NE(messages[0].find(port.identifier + ": far end"), std::string::npos) << messages[0];
}

TEST_F(FarEndTest, NothingIsSentUnlessAskedFor) {
    const Host host = Read();
    EXPECT_FALSE(host.ports.front().farEnd.isRead);
    for (const std::string& call : Fake().calls) {
        EXPECT_EQ(call.find("RDP"), std::string::npos);
    }
}

/// Cut at every byte, by the library's size or its own: what is whole is shown, and nothing else.
TEST_F(FarEndTest, EveryTruncation) {
    const std::vector<VX_UINT8> whole = payload;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        payload.assign(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        const Port port = ReadPort();
        // The list's length, then descriptors of 20, 12, 24 and 20 bytes.
        EXPECT_EQ(At(port, "far_temperature_celsius") != Value(), size >= 24) << size;
        EXPECT_EQ(port.farEnd.speed.has_value(), size >= 36) << size;
        EXPECT_EQ(port.farEnd.portName != 0, size >= 60) << size;
        EXPECT_FALSE(port.farEnd.bufferCredits.has_value()) << size;
    }
    payload = whole;
    given = 0xFFFFFFFF; // a length that lies
    EXPECT_EQ(ReadPort().farEnd.bufferCredits, 32u);
}

} // namespace
