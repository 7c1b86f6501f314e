/// @file
/// The nodes of this machine.
#include "Bsg.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

TEST(LinuxSystemKernelTest, OnlyThePortsOwnDeviceIsOpened) {
    std::string name = fs::temp_directory_path() / "bsg-XXXXXX";
    const fs::path root = mkdtemp(name.data());
    fs::create_directories(root / "nodes");
    const auto classify = [&](const char* node, const char* device) {
        fs::create_directories(root / "class" / node);
        std::ofstream(root / "class" / node / "dev") << device << '\n';
    };
    host::SystemKernel kernel(root / "nodes", root / "class");
    EXPECT_EQ(kernel.Open("fc_host0"), -ENOSYS); // no class of such nodes
    classify("fc_host1", "248:1");
    EXPECT_EQ(kernel.Open("fc_host0"), -EOPNOTSUPP);
    EXPECT_EQ(kernel.Open("fc_host1"), -ENOENT);

    // What another could put in its place.
    std::ofstream(root / "nodes/fc_host1") << "a file";
    EXPECT_EQ(kernel.Open("fc_host1"), -ENODEV);
    for (const char* target : {"/dev/null", "/dev/missing", "fc_host1"}) {
        fs::remove_all(root / "nodes/fc_host1");
        fs::create_symlink(target, root / "nodes/fc_host1");
        EXPECT_EQ(kernel.Open("fc_host1"), -ENODEV) << target;
    }
    fs::remove_all(root / "nodes/fc_host1");
    fs::create_directory(root / "nodes/fc_host1");
    EXPECT_EQ(kernel.Open("fc_host1"), -ENODEV);
    fs::remove_all(root / "nodes/fc_host1");
    ASSERT_EQ(mkfifo((root / "nodes/fc_host1").c_str(), 0600), 0);
    EXPECT_EQ(kernel.Open("fc_host1"), -ENODEV); // without waiting for a reader

    // The folder itself; and a device of another number, /dev/null being 1:3.
    classify("null", "1:3");
    fs::create_symlink("/dev", root / "linked");
    EXPECT_EQ(host::SystemKernel(root / "linked", root / "class").Open("null"), -ENODEV);
    for (const char* device : {"1:5", "248:3", "1", "", "1:3:", "01:3"}) {
        classify("null", device);
        EXPECT_EQ(host::SystemKernel("/dev", root / "class").Open("null"), -ENODEV) << device;
    }
    classify("null", "1:3");
    host::SystemKernel devices("/dev", root / "class");
    const int descriptor = devices.Open("null");
    ASSERT_GE(descriptor, 0);
    EXPECT_NE(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
    sg_io_v4 exchange{};
    EXPECT_EQ(devices.Submit(descriptor, exchange), ENOTTY);
    devices.Close(descriptor);
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
    const std::uint64_t before = devices.Now();
    EXPECT_LT(before, devices.Now());
    fs::remove_all(root);
}

} // namespace
