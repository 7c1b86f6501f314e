/// @file
/// Queries to the directory service.
#include "LinkTest.h"

namespace {

using namespace linux_test;

/// A CT_IU's header, and its data.
Data Directory(std::uint16_t code, const Data& data, std::uint8_t reason = 0, std::uint8_t explanation = 0) {
    return Data{1,
                0,
                0,
                0,
                0xFC,
                2,
                0,
                0,
                static_cast<std::uint8_t>(code >> 8),
                static_cast<std::uint8_t>(code),
                0,
                0,
                0,
                reason,
                explanation,
                0} +
           data;
}

TEST_F(LinuxLinkTest, ThePingAsksTheDirectoryForThePort) {
    mKernel.Answer(Directory(0x8002, Word(0x010500)));
    EXPECT_EQ(Transport(1), "1 of 1 answered");
    EXPECT_EQ(mStatus, 0u);
    const ScriptedKernel::Request& request = mKernel.requests.back();
    EXPECT_EQ(request.node, "fc_host0");
    EXPECT_EQ(request.code, 0x80000004u);
    // A byte, the address FFFFFCh, and the first three words of the payload as numbers.
    EXPECT_EQ(request.fields,
              Data({0, 0xFF, 0xFF, 0xFC}) + Native(0x01000000) + Native(0xFC020000) + Native(0x01210001));
    // Revision 1; directory service, name server; GID_PN with one word of answer; the port name.
    EXPECT_EQ(request.payload, Words({0x01000000, 0xFC020000, 0x01210001, 0, 0x50000000, 0x00000001}));

    AddRemotePort("rport-0:0-9", "0x2001000000000009", "0xfffffc", "Directory Server");
    host::EndLinkTests();
    mKernel.Answer(Directory(0x8002, Word(0x010500)));
    EXPECT_EQ(Transport(1), "1 of 1 answered");
    EXPECT_EQ(mKernel.requests.back().node, "rport-0:0-9");
    EXPECT_EQ(mKernel.requests.back().code, 0x40000002u);
    EXPECT_EQ(mKernel.requests.back().fields, Native(0x01000000) + Native(0xFC020000) + Native(0x01210001) + Data(4));
}

TEST_F(LinuxLinkTest, TheTraceAsksForTheFabricPorts) {
    mKernel.Answer(Directory(0x8002, Word(0x010500)));
    mKernel.Answer(Directory(0x8002, Words({0x20010000, 0x000000FF})));
    mKernel.Answer(Directory(0x8002, Words({0x20050000, 0x000000FF})));
    EXPECT_EQ(Transport(2), "1 of 1 answered: 010203, 20010000000000ff, 20050000000000ff, 010500");
    EXPECT_EQ(mStatus, 0u);
    ASSERT_EQ(mKernel.requests.size(), 3u);
    // GFPN_ID of both port ids, with two words of answer.
    EXPECT_EQ(mKernel.requests[1].payload, Words({0x01000000, 0xFC020000, 0x011C0002, 0, 0x010203}));
    EXPECT_EQ(mKernel.requests[2].payload, Words({0x01000000, 0xFC020000, 0x011C0002, 0, 0x010500}));
}

/// Three requests of 30 seconds would take longer than anyone waits.
TEST_F(LinuxLinkTest, ASlowDirectoryIsAskedNoFurther) {
    for (const auto& [seconds, requests] : {std::pair{4, 3}, {6, 2}, {11, 1}}) {
        mKernel.requests.clear();
        mKernel.script.clear();
        mKernel.step = static_cast<std::uint64_t>(seconds) * 1'000'000'000; // of each request
        mKernel.Answer(Directory(0x8002, Word(0x010500)));
        mKernel.Answer(Directory(0x8002, Words({0x20010000, 1})));
        mKernel.Answer(Directory(0x8002, Words({0x20010000, 2})));
        Transport(2);
        EXPECT_EQ(mKernel.requests.size(), static_cast<std::size_t>(requests));
        EXPECT_EQ(mStatus, requests == 3 ? 0 : NO_ANSWER);
        EXPECT_EQ(Output().find("Not sent: the directory service takes too long") == std::string::npos, requests == 3);
    }
}

TEST_F(LinuxLinkTest, WhatTheDirectoryRejects) {
    struct Row {
        Data answer;
        const char* text;
    };
    for (const Row& row : {
             Row{Directory(0x8001, {}, 0x09, 0x02), "Rejected: unable to perform request, port name not registered"},
             Row{Directory(0x8001, {}, 0x0D, 0x00), "Rejected: server not available"},
             Row{Directory(0x8002, {}), "Answer too short: 16 bytes"},
             Row{Directory(0x8002, {0, 1, 5}), "Answer too short: 19 bytes"},
             Row{Data(15), "Answer too short: 15 bytes"},
             Row{Directory(0x8003, {}), "Answer not understood: code 0x8003"},
         }) {
        mKernel.Answer(row.answer);
        EXPECT_EQ(Transport(2), "0 of 1 answered");
        EXPECT_EQ(mStatus, NO_ANSWER);
        EXPECT_EQ(Output(),
                  std::string("vexapi linux: host0: ") + row.text + "\nvexapi linux: host0: 0 of 1 answered\n");
    }
}

TEST_F(LinuxLinkTest, NothingIsChangedInAFabric) {
    for (const VX_UINT32 test : {1u, 2u}) {
        for (int i = 0; i < 3; ++i) {
            mKernel.Answer(Directory(0x8002, Words({0, 0x010500})));
        }
        Transport(test);
        mKernel.script.clear();
    }
    EXPECT_GE(mKernel.requests.size(), 4u);
    for (const ScriptedKernel::Request& request : mKernel.requests) {
        EXPECT_EQ(request.payload[8], 1); // FC-GS: commands from 0200h on register something
    }
}

} // namespace
