/// @file
/// A port of a tree of sysfs, over a scripted kernel.
#pragma once

#include "Api.h"
#include "LinkTests.h"
#include "ScriptedKernel.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <initializer_list>
#include <utility>

namespace linux_test {

namespace fs = std::filesystem;

inline constexpr VX_UINT32 UNSUPPORTED = 118;
inline constexpr VX_UINT32 LINK_DOWN = 130;
inline constexpr VX_UINT32 NO_SUCH_PORT = 0x200000FA;
inline constexpr VX_UINT32 NO_ANSWER = 0x200000FB;
inline constexpr VX_UINT32 REMOTE_PORT = 2;
inline constexpr VX_UINT32 FABRIC = 3;

inline constexpr char TARGET[] = "50:00:00:00:00:00:00:01";
inline constexpr char INITIATOR[] = "21:00:00:00:00:00:00:02";
inline constexpr char FABRIC_NAME[] = "10:00:00:00:00:00:00:ff";

inline Data operator+(Data left, const Data& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}
inline Data Word(std::uint32_t word) {
    return {static_cast<std::uint8_t>(word >> 24), static_cast<std::uint8_t>(word >> 16),
            static_cast<std::uint8_t>(word >> 8), static_cast<std::uint8_t>(word)};
}
inline Data Words(std::initializer_list<std::uint32_t> words) {
    Data bytes;
    for (const std::uint32_t word : words) {
        bytes = bytes + Word(word);
    }
    return bytes;
}
/// A number in the byte order of this machine.
inline Data Native(std::uint32_t word) {
    Data bytes(sizeof word);
    std::memcpy(bytes.data(), &word, sizeof word);
    return bytes;
}

/// A port in a fabric, 01:02:03, that sees a target, 01:05:00, and an initiator, 01:06:00.
class LinuxLinkTest : public testing::Test {
protected:
    void SetUp() override {
        std::string name = fs::temp_directory_path() / "link-XXXXXX";
        mRoot = mkdtemp(name.data());
        Host("port_name", "0x2100000000000001");
        Host("port_state", "Online");
        Host("port_id", "0x010203");
        Host("port_type", "NPort (fabric via point-to-point)");
        Host("fabric_name", "0x10000000000000ff");
        Host("maxframe_size", "2048 bytes");
        AddRemotePort("rport-0:0-1", "0x5000000000000001", "0x010500", "FCP Target");
        AddRemotePort("rport-0:0-2", "0x2100000000000002", "0x010600", "FCP Initiator");
        AddRemotePort("rport-1:0-3", "0x5000000000000003", "0x010700", "FCP Target"); // another port's
        setenv("VEXAPI_SYSFS_ROOT", mRoot.c_str(), 1);
        ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
        host::SetKernel(&mKernel);
        mHandle = VEXAPI_GetAdapterList()->pHead->pPhyPortList->pHead->pProtocolList->pHead->PortHandle;
    }

    void TearDown() override {
        VEXAPI_Uninitialize();
        EXPECT_TRUE(mKernel.openResult < 0 || mKernel.opened.size() == mKernel.closed);
        host::SetKernel(nullptr);
        fs::remove_all(mRoot);
    }

    void Write(const std::string& path, const char* text) const {
        fs::create_directories((mRoot / "sys/class" / path).parent_path());
        std::ofstream(mRoot / "sys/class" / path) << text << '\n';
    }
    void Host(const char* attribute, const char* text) const { Write(std::string("fc_host/host0/") + attribute, text); }
    void Remote(const std::string& name, const char* attribute, const char* text) const {
        Write("fc_remote_ports/" + name + '/' + attribute, text);
    }
    void AddRemotePort(const std::string& name, const char* portName, const char* id, const char* roles) const {
        Remote(name, "port_name", portName);
        Remote(name, "port_id", id);
        Remote(name, "roles", roles);
        Remote(name, "port_state", "Online");
        Remote(name, "maxframe_size", "2048 bytes");
    }
    void Remove(const std::string& name) const { fs::remove_all(mRoot / "sys/class/fc_remote_ports" / name); }

    _VEXAPI_ECHO_RESULTS Echo(const char* name = TARGET, VX_UINT32 type = REMOTE_PORT) {
        _VEXAPI_ECHO_RESULTS result{};
        Call([&] { return VEXAPI_DiagnosticsEchoElsTest(&mHandle, name, 1, 0, type, &result); });
        return result;
    }
    /// The text in the buffer.
    std::string Ping(VX_UINT32 count, VX_UINT32 stopOnError, const char* name = TARGET) {
        char buffer[256] = {};
        mAnswered = 0;
        Call([&] {
            return VEXAPI_DiagnosticsFCPingTest(&mHandle, name, count, stopOnError, &mAnswered, buffer, sizeof buffer);
        });
        return buffer;
    }
    std::string Transport(VX_UINT32 testType, VX_UINT32 count = 1) {
        char buffer[256] = {};
        Call([&] {
            return VEXAPI_DiagnosticsCTCommand(&mHandle, TARGET, count, 0, &mAnswered, buffer, sizeof buffer, testType);
        });
        return buffer;
    }
    Data ReadParameters(VX_UINT32 size = 508) {
        Data buffer(size, 0xEE);
        Call([&] { return VEXAPI_DiagnosticsRDPTest(&mHandle, buffer.data(), &size); });
        buffer.resize(size);
        return buffer;
    }
    /// What the library has written since the last call.
    std::string Output() { return std::exchange(mOutput, ""); }

    fs::path mRoot;
    ScriptedKernel mKernel;
    VX_PORT_HANDLE mHandle{};
    VX_UINT32 mStatus = 0;
    VX_UINT32 mAnswered = 0;

private:
    template <class Function> void Call(Function function) {
        testing::internal::CaptureStdout();
        mStatus = function();
        mOutput += testing::internal::GetCapturedStdout();
    }

    std::string mOutput;
};

} // namespace linux_test
