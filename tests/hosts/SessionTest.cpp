/// @file
/// The library's functions on a small tree.
#include "Api.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

namespace {

namespace fs = std::filesystem;

/// A tree of one port, host0.
class LinuxSessionTest : public testing::Test {
protected:
    void SetUp() override {
        std::string name = fs::temp_directory_path() / "tree-XXXXXX";
        mRoot = mkdtemp(name.data());
        fs::create_directories(Host() / "statistics");
        Write("port_name", "0x2100000000000001");
        setenv("VEXAPI_SYSFS_ROOT", mRoot.c_str(), 1);
    }

    void TearDown() override {
        VEXAPI_Uninitialize();
        fs::remove_all(mRoot);
    }

    fs::path Host() const { return mRoot / "sys/class/fc_host/host0"; }

    void Write(const char* path, const char* text) const { std::ofstream(Host() / path) << text << '\n'; }

    /// The library's record of the port.
    static _vexapi_protocol_t& Port() {
        return *VEXAPI_GetAdapterList()->pHead->pPhyPortList->pHead->pProtocolList->pHead;
    }

private:
    fs::path mRoot;
};

TEST_F(LinuxSessionTest, ClearingReadsTheCountersAgain) {
    Write("statistics/fcp_input_requests", "0x10");
    Write("statistics/fcp_output_requests", "0x20");
    Write("statistics/fcp_input_megabytes", "0x7");
    Write("statistics/invalid_crc_count", "0x5");
    Write("statistics/reset_statistics", "");
    ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
    EXPECT_EQ(Port().IoCount, 0x30u);
    EXPECT_EQ(Port().InvalidCrcCount, 5u);

    // What the kernel shows after the write.
    Write("statistics/fcp_output_requests", "0x2");
    Write("statistics/fcp_input_megabytes", "0x0");
    Write("statistics/invalid_crc_count", "0x0");
    EXPECT_EQ(VEXAPI_ResetDeviceStats(&Port().PortHandle), 0u);
    EXPECT_EQ(Port().IoCount, 0x12u);
    EXPECT_EQ(Port().MegaBytesCount, 0u);
    EXPECT_EQ(Port().InvalidCrcCount, 0u);
    std::string written;
    std::getline(std::ifstream(Host() / "statistics/reset_statistics"), written);
    EXPECT_EQ(written, "1");
}

TEST_F(LinuxSessionTest, WhatCantBeClearedStays) {
    Write("statistics/invalid_crc_count", "0x5");
    ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
    Write("statistics/invalid_crc_count", "0x6");
    EXPECT_EQ(VEXAPI_ResetDeviceStats(&Port().PortHandle), 118u); // not supported by the driver
    EXPECT_EQ(Port().InvalidCrcCount, 5u);
    fs::create_symlink("reset", Host() / "statistics/reset_statistics");
    Write("statistics/reset", "");
    EXPECT_NE(VEXAPI_ResetDeviceStats(&Port().PortHandle), 0u); // links aren't followed
    EXPECT_EQ(fs::file_size(Host() / "statistics/reset"), 1u);
}

TEST_F(LinuxSessionTest, AHandleOfNoPortIsRefused) {
    ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
    VX_PORT_HANDLE handle = Port().PortHandle;
    ++handle.opaque[4];
    EXPECT_NE(VEXAPI_ResetDeviceStats(&handle), 0u);
    handle = {};
    EXPECT_NE(VEXAPI_ResetDeviceStats(&handle), 0u);
    VEXAPI_Uninitialize();
    EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
}

} // namespace
