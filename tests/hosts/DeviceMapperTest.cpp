/// @file
/// The status of multipath targets, as the kernel's dm-mpath writes it.
#include "DeviceMapper.h"

#include <gtest/gtest.h>

namespace {

using host::MultipathPaths;
using Paths = std::vector<std::pair<std::string, std::string>>;

TEST(LinuxDeviceMapperTest, PathsOfAMap) {
    // Two features values and no handler's; two groups, of which the first is next and active; the round-robin selector
    // has values neither for groups nor for paths.
    EXPECT_EQ(MultipathPaths("2 0 0 0 2 1 A 0 1 0 8:16 A 0 E 0 1 0 8:32 F 3 "),
              (Paths{{"8:16", "active"}, {"8:32", "failed"}}));
    // A selector with two values for a path (service-time), and a path with a number of three digits.
    EXPECT_EQ(MultipathPaths("2 0 1 0 1 1 A 0 2 2 8:16 A 0 0 1 253:100 A 1 2048 1 "),
              (Paths{{"8:16", "active"}, {"253:100", "active"}}));
    // A hardware handler's arguments, a group that is bypassed, and one without paths.
    EXPECT_EQ(MultipathPaths("0 1 alua 3 0 D 0 1 0 8:0 F 0 E 0 0 0 A 1 x 1 1 65:0 A 0 7"),
              (Paths{{"8:0", "failed"}, {"65:0", "active"}}));
    EXPECT_EQ(MultipathPaths("2 0 0 0 0 0 "), Paths());
}

TEST(LinuxDeviceMapperTest, StatusesThatAreMalformed) {
    const std::string whole = "2 0 0 0 2 1 A 0 1 0 8:16 A 0 E 0 1 0 8:32 F 3 ";
    const Paths both = {{"8:16", "active"}, {"8:32", "failed"}};
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Paths paths = MultipathPaths(whole.substr(0, size));
        ASSERT_LE(paths.size(), 2u) << size;
        EXPECT_TRUE(std::equal(paths.begin(), paths.end(), both.begin())) << size;
    }
    for (const char* const status :
         {"", " ", "A", "99999999999999999999 0", "18446744073709551615 0 0 0", "-1 0 1 1 A 0 1 0 8:16",
          "0 0 18446744073709551615 1", "0 0 1 1 A 0 18446744073709551615 18446744073709551615",
          "0 0 1 1 A 0 1 0 8:16 B 0", "0 0 1 1 A 0 1 0 8:16"}) {
        EXPECT_EQ(MultipathPaths(status), Paths()) << status;
    }
    EXPECT_EQ(MultipathPaths("0 0 1 1 A 0 2 18446744073709551615 8:16 A 0 8:32 A"), (Paths{{"8:16", "active"}}));
}

} // namespace
