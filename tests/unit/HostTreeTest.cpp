#include "HostTree.h"
#include "FakeLibrary.h"
#include "TraceLog.h"

#include <gtest/gtest.h>

#include <cstring>
#include <numeric>

namespace {

/// The last byte of every visited port's WWPN: its number in the host.
std::vector<int> Visited(const VX_ADAPTER_LIST& host, std::size_t most = 1000) {
    std::vector<int> numbers;
    ForEachFcPort(host, [&](_vexapi_adapter_t&, _vexapi_phy_port_t&, _vexapi_protocol_t& protocol) {
        numbers.push_back(protocol.WWPN[7]);
        return numbers.size() < most;
    });
    return numbers;
}

using Numbers = std::vector<int>;

class ForEachFcPortTest : public testing::Test {
protected:
    /// Two adapters with two ports each; the first port has two protocols. In list order: 1, 2, 3, 4, 5.
    void SetUp() override {
        for (auto& adapter : adapters) {
            adapter = &host.AddAdapter();
        }
        ports[0] = &host.AddPhyPort(*adapters[0]);
        host.AddProtocol(*ports[0]);
        second = &host.AddProtocol(*ports[0]);
        ports[1] = &host.AddPhyPort(*adapters[0]);
        host.AddProtocol(*ports[1]);
        for (int at : {2, 3}) {
            ports[at] = &host.AddPhyPort(*adapters[1]);
            host.AddProtocol(*ports[at]);
        }
    }

    HostBuilder host;
    _vexapi_adapter_t* adapters[2];
    _vexapi_phy_port_t* ports[4];
    _vexapi_protocol_t* second;
};

TEST_F(ForEachFcPortTest, VisitsInListOrder) {
    EXPECT_EQ(Visited(*host.List()), (Numbers{1, 2, 3, 4, 5}));
}

TEST_F(ForEachFcPortTest, GivesThePortItsOwners) {
    Numbers numbers;
    ForEachFcPort(*host.List(),
                  [&](_vexapi_adapter_t& adapter, _vexapi_phy_port_t& port, _vexapi_protocol_t& protocol) {
                      const int number = protocol.WWPN[7];
                      EXPECT_EQ(&adapter, adapters[number <= 3 ? 0 : 1]) << number;
                      EXPECT_EQ(&port, ports[number <= 2 ? 0 : number - 2]) << number;
                      return true;
                  });
}

TEST_F(ForEachFcPortTest, StopsWhenToldTo) {
    EXPECT_EQ(Visited(*host.List(), 1), (Numbers{1}));
    EXPECT_EQ(Visited(*host.List(), 2), (Numbers{1, 2}));
    EXPECT_EQ(Visited(*host.List(), 4), (Numbers{1, 2, 3, 4}));
}

TEST_F(ForEachFcPortTest, VisitsFcAndFcoeOnly) {
    const std::pair<VX_UINT32, bool> types[] = {{0, true}, {1, true}, {2, false}, {3, false}, {0xFFFFFFFF, false}};
    for (const auto& [type, isFc] : types) {
        second->ProtocolType = type;
        EXPECT_EQ(IsFcProtocol(*second), isFc) << type;
        EXPECT_EQ(Visited(*host.List()), isFc ? (Numbers{1, 2, 3, 4, 5}) : (Numbers{1, 3, 4, 5})) << type;
    }
}

TEST_F(ForEachFcPortTest, TakesANullHeadForAnEmptyList) {
    ports[0]->pProtocolList->pHead = nullptr;
    EXPECT_EQ(Visited(*host.List()), (Numbers{3, 4, 5}));
    adapters[0]->pPhyPortList->pHead = nullptr;
    EXPECT_EQ(Visited(*host.List()), (Numbers{4, 5}));
    host.List()->pHead = nullptr;
    EXPECT_EQ(Visited(*host.List()), Numbers{});
}

TEST_F(ForEachFcPortTest, TakesANullListForAnEmptyOne) {
    ports[3]->pProtocolList = nullptr;
    EXPECT_EQ(Visited(*host.List()), (Numbers{1, 2, 3, 4}));
    ports[0]->pProtocolList = nullptr;
    EXPECT_EQ(Visited(*host.List()), (Numbers{3, 4}));
    adapters[0]->pPhyPortList = nullptr;
    EXPECT_EQ(Visited(*host.List()), (Numbers{4}));
    adapters[1]->pPhyPortList = nullptr;
    EXPECT_EQ(Visited(*host.List()), Numbers{});
}

TEST(HostTreeTest, KnowsAVirtualPortByItsInterfaceType) {
    _vexapi_protocol_t protocol{};
    for (const unsigned type : {0u, 1u, 2u, 3u, 4u, 0x0103u}) {
        protocol.PortInterfaceType = static_cast<VX_UINT16>(type);
        EXPECT_EQ(IsVirtualPort(protocol), type == 3) << type;
    }
}

TEST(HandleWordTest, StandsAtByteFourInHostOrder) {
    VX_PORT_HANDLE handle{};
    for (unsigned at = 0; at < sizeof handle.opaque; ++at) {
        handle.opaque[at] = static_cast<VX_UINT8>(0xA0 + at);
    }
    const VX_UINT8 bytes[4] = {0xA4, 0xA5, 0xA6, 0xA7};
    VX_UINT32 word = 0;
    std::memcpy(&word, bytes, sizeof word);
    EXPECT_EQ(HandleWord(handle), word);
}

TEST(FormatWwnTest, WritesLowerCasePairs) {
    const VX_UINT8 name[8] = {0x00, 0x09, 0x0A, 0x9F, 0xA0, 0xF9, 0xCD, 0xFF};
    char text[25];
    std::memset(text, '~', sizeof text);
    FormatWwn(text, name);
    EXPECT_STREQ(text, "00:09:0a:9f:a0:f9:cd:ff");
    EXPECT_EQ(text[24], '~'); // 23 characters and a terminator
}

TEST(PortIdentifierTest, PutsThePrefixAheadOfTheWwpn) {
    const VX_UINT8 name[8] = {0x21, 0x00, 0x0a, 0xBB, 0xff, 0x11, 0x22, 0x33};
    EXPECT_STREQ(PortIdentifier(name).text, "FC_21:00:0a:bb:ff:11:22:33");
}

/// The WWPN of an identifier as text; empty for other text.
std::string Parsed(const std::string& text) {
    VX_UINT8 name[8] = {};
    return ParsePortIdentifier(text.c_str(), name) ? WwnOf(name) : "";
}

TEST(ParsePortIdentifierTest, ReadsWhatPortIdentifierWrites) {
    for (int byte = 0; byte < 256; ++byte) {
        VX_UINT8 name[8];
        for (int at = 0; at < 8; ++at) {
            name[at] = static_cast<VX_UINT8>(byte + 37 * at);
        }
        VX_UINT8 read[8] = {};
        ASSERT_TRUE(ParsePortIdentifier(PortIdentifier(name).text, read));
        EXPECT_EQ(std::memcmp(read, name, sizeof name), 0);
    }
}

TEST(ParsePortIdentifierTest, RefusesEveryOtherCharacterAnywhere) {
    const std::string good = "FC_21:00:0a:bb:ff:11:22:33";
    ASSERT_EQ(Parsed(good), good.substr(3));
    for (std::size_t at = 0; at < good.size(); ++at) {
        for (int byte = 1; byte < 256; ++byte) {
            std::string text = good;
            text[at] = static_cast<char>(byte);
            const bool isHex = std::string("0123456789abcdef").find(text[at]) != std::string::npos;
            const bool isDigitPlace = at >= 3 && at % 3 != 2;
            const bool isGood = isDigitPlace ? isHex : text[at] == good[at];
            EXPECT_EQ(Parsed(text), isGood ? text.substr(3) : "") << text;
        }
    }
}

TEST(ParsePortIdentifierTest, RefusesUpperCase) {
    EXPECT_EQ(Parsed("FC_21:00:0A:bb:ff:11:22:33"), "");
    EXPECT_EQ(Parsed("fc_21:00:0a:bb:ff:11:22:33"), "");
    EXPECT_EQ(Parsed("Fc_21:00:0a:bb:ff:11:22:33"), "");
}

TEST(ParsePortIdentifierTest, RefusesEveryOtherLength) {
    const std::string good = "FC_21:00:0a:bb:ff:11:22:33";
    for (std::size_t length = 0; length < good.size(); ++length) {
        // In an array of exactly its size, to detect reads past its end.
        const std::vector<char> text(good.c_str(), good.c_str() + length);
        std::vector<char> terminated = text;
        terminated.push_back('\0');
        terminated.shrink_to_fit();
        VX_UINT8 name[8] = {};
        EXPECT_FALSE(ParsePortIdentifier(terminated.data(), name)) << length;
    }
    EXPECT_EQ(Parsed(good + " "), "");
    EXPECT_EQ(Parsed(good + ":"), "");
    EXPECT_EQ(Parsed(good + "0"), "");
    EXPECT_EQ(Parsed(good + "_Target_21:00:0a:bb:ff:11:22:33"), "");
    EXPECT_EQ(Parsed(" " + good), "");
    EXPECT_EQ(Parsed("FC_2100:0a:bb:ff:11:22:33"), "");
    EXPECT_EQ(Parsed("FC_1:00:0a:bb:ff:11:22:33"), "");
    EXPECT_EQ(Parsed("FC_021:00:0a:bb:ff:11:22:33"), "");
    EXPECT_EQ(Parsed("21:00:0a:bb:ff:11:22:33"), "");
}

// ---- Lists of the library

struct Numbered {
    int number;
    Numbered* pNext;
};

/// `count` numbered entries; the last one leads to the entry `next`, or nowhere if there is none.
std::vector<Numbered> Chain(std::size_t count, std::size_t next) {
    std::vector<Numbered> entries(count);
    for (std::size_t at = 0; at < count; ++at) {
        const std::size_t successor = at + 1 < count ? at + 1 : next;
        entries[at] = {static_cast<int>(at), successor < count ? &entries[successor] : nullptr};
    }
    return entries;
}

/// Numbers from 0 on.
Numbers FirstNumbers(std::size_t count) {
    Numbers numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

TEST(ForEachEntryTest, VisitsEachEntryOnceAndTracesARing) {
    const TraceLog log("4");
    std::size_t rings = 0;
    // Lists of these lengths without an end, and with the last entry leading to each of them.
    for (const std::size_t count : {0, 1, 2, 3, 4, 7, 30}) {
        for (std::size_t next = 0; next <= count; ++next) {
            std::vector<Numbered> list = Chain(count, next);
            Numbers visited;
            EXPECT_TRUE(ForEachEntry(list.empty() ? nullptr : list.data(), [&](const Numbered& entry) {
                visited.push_back(entry.number);
                return visited.size() <= count;
            }));
            ASSERT_EQ(visited, FirstNumbers(count)) << count << " " << next;
            rings += next < count ? 1 : 0;
        }
    }
    EXPECT_EQ(TraceLog::Lines(), std::vector<std::string>(rings, "DEBUG: ::: The library's list has no end"));
}

TEST(ForEachEntryTest, LongRings) {
    for (const std::size_t count : {4095, 4096, 4097, 8193, 20000}) {
        for (const std::size_t next : {std::size_t{0}, std::size_t{1}, count / 2, count - 2, count - 1, count}) {
            std::vector<Numbered> list = Chain(count, next);
            std::size_t visited = 0;
            EXPECT_TRUE(ForEachEntry(list.data(), [&](const Numbered& entry) {
                EXPECT_EQ(entry.number, static_cast<int>(visited));
                return ++visited <= count;
            }));
            ASSERT_EQ(visited, count) << next;
        }
    }
}

TEST(ForEachEntryTest, EndsWithTheVisitor) {
    const TraceLog log("4");
    for (const std::size_t next : {0, 7, 10}) {
        std::vector<Numbered> list = Chain(10, next);
        for (int last = 0; last < 10; ++last) {
            int visited = 0;
            EXPECT_FALSE(ForEachEntry(list.data(), [&](const Numbered& entry) {
                ++visited;
                return entry.number != last;
            }));
            EXPECT_EQ(visited, last + 1);
        }
    }
    EXPECT_EQ(TraceLog::Lines(), std::vector<std::string>{});
}

TEST_F(ForEachFcPortTest, RingsOfEveryKindEnd) {
    adapters[1]->pNext = adapters[0];
    ports[1]->pNext = ports[0];
    second->pNext = second;
    EXPECT_EQ(Visited(*host.List()), (Numbers{1, 2, 3, 4, 5}));
}

} // namespace
