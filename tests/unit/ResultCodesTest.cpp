#include "ResultCodes.h"

#include <gtest/gtest.h>

namespace {

/// Traces show the numbers, so they stay as they are.
TEST(ResultCodesTest, HaveTheirNumbers) {
    static constexpr struct {
        ResultCode code;
        VX_UINT32 number;
    } ROWS[] = {
        {RC_SUCCESS, 0},
        {RC_NO_USAGE, 2},
        {RC_INIT_FAILED, 3},
        {RC_PARAM_ERROR, 4},
        {RC_HELP_REQUESTED, 5},
        {RC_INVALID_PARAMETER, 6},
        {RC_CMD_NOT_FOUND, 7},
        {RC_INVALID_CMD, 8},
        {RC_EXIT, 9},
        {RC_QUIT, 10},
        {RC_FLASH_UPDATE_FAILED, 11},
        {RC_INVALID_FORMAT, 12},
        {RC_CFG_READ_FAILED, 13},
        {RC_HOST_NOT_FOUND, 14},
        {RC_NOT_SUPPORTED_BY_SWITCH, 15},
        {RC_IMAGE_COMPONENTS_INVALID, 16},
        {RC_INVALID_DATA, 17},
        {RC_INVALID_FIELD, 18},
        {RC_FILE_ERROR, 19},
        {RC_CFG_UPDATE_FAILED, 20},
        {RC_ADAPTER_NOT_FOUND, 21},
        {RC_FILE_OPEN_ERROR, 22},
        {RC_FILE_NOT_VALID, 23},
        {RC_DISABLED_FOR_USER, 24},
        {RC_FILE_READ_ERROR, 25},
        {RC_SSID_NOT_FOUND, 26},
        {RC_FILE_CORRUPTED, 27},
        {RC_TARGET_NOT_FOUND, 28},
        {RC_FILE_SIZE_INVALID, 29},
        {RC_CHECKSUM_ERROR, 30},
        {RC_SIGNATURE_ERROR, 31},
        {RC_FLASH_UPDATE_LOCKDOWN, 32},
        {RC_MAILBOX_ERROR, 33},
        {RC_DIAG_TEST_FAILED, 34},
        {RC_FEATURE_NOT_SUPPORTED, 35},
        {RC_NOT_SUPPORTED_FOR_NVME, 36},
        {RC_MUTUALLY_EXCLUSIVE, 37},
        {RC_STATS_READ_FAILED, 38},
        {RC_STATS_CLEAR_FAILED, 39},
        {RC_BFS_MODE, 40},
        {RC_VPD_FAILED, 41},
        {RC_NO_MEMORY, 42},
        {RC_LINK_UP_REQUIRED, 43},
        {RC_UNSUPPORTED_SPEED, 44},
        {RC_UNSUPPORTED_FW, 45},
        {RC_NO_DATA_AVAILABLE, 46},
        {RC_READ_ONLY_MODE, 47},
        {RC_UNSUPPORTED_MODE, 48},
        {RC_LIBRARY_FAILED, 50},
        {RC_NOT_SUPPORTED_FOR_VPORT, 51},
        {RC_FEATURE_DISABLED, 52},
        {RC_NO_BIOS, 53},
        {RC_NO_EFI, 54},
        {RC_NEED_ADD_FCP_PARAMS, 55},
        {RC_NEED_ADD_NVME_PARAMS, 56},
        {RC_SFP_VENDOR_UNSUPPORTED, 57},
        {RC_SFP_VENDOR_MISMATCHED, 58},
        {RC_SFP_FW_UPDATE_FAILED, 59},
    };
    for (const auto& row : ROWS) {
        EXPECT_EQ(VX_UINT32{row.code}, row.number);
    }
}

} // namespace
