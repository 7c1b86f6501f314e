/// @file
/// Common arguments, target lookup and result texts of the tests that send something to a remote port.
#pragma once

#include "CodeTable.h"
#include "CommandRows.h"
#include "LibraryCall.h"
#include "Resolvers.h"

inline constexpr VX_UINT32 MAX_PING_COUNT = 65535;
inline constexpr CodeText PING_STOP_WORDS[] = {{1, OUT_TRUE}, {0, OUT_FALSE}};
inline constexpr Argument PING_NAME = {"wwpn", nullptr, "port name of the remote port", ArgumentKind::WWPN, true};
inline constexpr Argument PING_COUNT = {"count", nullptr, "number of frames", ArgumentKind::NUMBER, true,
                                        {},      1,       MAX_PING_COUNT};
inline constexpr Argument PING_STOP = {"stop", nullptr,        "whether to stop at the first error", ArgumentKind::WORD,
                                       true,   PING_STOP_WORDS};
inline constexpr Argument PING_ARGUMENTS[] = {PORT_ARGUMENT, PING_NAME, PING_COUNT, PING_STOP};

/// A test's arguments.
struct PingRequest {
    PortEntry entry;
    VX_UINT8 wwn[8] = {};
    char name[32] = {}; ///< the same as text, in normal form, for the library
    VX_UINT32 count = 0;
    VX_UINT32 stopOnError = 0; ///< 1 or 0
};

/// Resolves the port. Rejects a virtual port first, then one whose link is down.
ResultCode AdmitPingPort(const TavuStringArray& args, PingRequest& request);

/// Parses the words from `first` on: the remote name, the count, and whether to stop on an error ("true", or
/// anything else for no). Missing bytes of a name are zero. Returns `RC_INVALID_PARAMETER` for missing words and
/// for a count outside 1 to 65535.
ResultCode ReadPingWords(const TavuStringArray& args, std::size_t first, PingRequest& request);

/// True if the port sees a target with the requested name.
bool IsPingTarget(const PingRequest& request);

/// Size of a scratch buffer that the library requires; its content is not used.
inline constexpr VX_UINT32 PING_BUFFER_SIZE = 256;

/// "Test Result" or "Message" of a result code.
inline constexpr CodeText PING_RESULT_TEXTS[] = {
    {RC_SUCCESS, "Success"},
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, DPortDiag read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_CFG_UPDATE_FAILED, "Failed, DPortDiag update failed"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_TARGET_NOT_FOUND, "Failed, Target not found"},
    {RC_DIAG_TEST_FAILED, "Failed, Diagnostic test failed"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this port"},
    {RC_BFS_MODE, "Failed, Feature not supported in Boot-From-SAN mode"},
    {RC_LINK_UP_REQUIRED, "Failed, Feature requires link up"},
    {RC_UNSUPPORTED_SPEED, "Failed, Feature supported for speeds 16 Gbps and above"},
    {RC_UNSUPPORTED_MODE, "Failed, Port not in diagnostics mode"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, Feature not supported for virtual port"},
};
