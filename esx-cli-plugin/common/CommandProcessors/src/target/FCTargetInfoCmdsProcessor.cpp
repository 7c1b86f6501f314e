#include "FCTargetInfoCmdsProcessor.h"

#include "CongestionReport.h"
#include "ReportTexts.h"
#include "TargetIdentifiers.h"

namespace {

constexpr char CLASS_NAME[] = "FCTargetInfoCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"TargetInformation", "TargetInfo", "TargetInfoList"}, 4096, ReportBlock::SizeRule::SPACE_LEFT};
constexpr char OUT_DISABLED[] = "Disabled";
constexpr char OUT_ENABLED[] = "Enabled";
constexpr char OUT_TARGET[] = "Target";
constexpr char OUT_INITIATOR[] = "Initiator";
constexpr char OUT_BOTH_ROLES[] = "Initiator-Target";
constexpr char OUT_AUTH_PENDING[] = "Auth Pending";
constexpr char OUT_AUTH_FAILED[] = "Auth Failed";
constexpr char OUT_AUTH_COMPLETE[] = "Auth Complete";
constexpr char OUT_AUTH_UNKNOWN[] = "Auth Unknown";

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
};

/// SCSI peripheral device types other than disk, which is 0.
constexpr CodeText DEVICE_TYPES[] = {
    {1, "Tape"}, {4, "Optical"}, {5, "CDROM"}, {8, "Changer"}, {12, "RAID"}, {13, "SAF-TE"},
};

/// Bit of the port's `SecurityFlags`.
constexpr VX_UINT32 SECURITY_EXTENDED = 1;

/// Required: an NQN that fills its array loses its last character; parsers depend on it.
constexpr std::size_t MAX_NQN = sizeof(_tagVEXAPI_SDMTarget::StorageNqn) - 1;

/// Authentication between port and target.
struct Authentication {
    const char* remoteType = OUT_UNKNOWN;
    const char* sessionState = OUT_NA;
    const char* secureMode = OUT_DISABLED;
};

bool IsSamePort(const VX_UINT8 (&name)[8], const VX_UINT8 (&id)[3], const _tagVEXAPI_SDMTarget& target) {
    return IsSameWwn(name, target.PortName) && std::memcmp(id, target.PortId, sizeof id) == 0;
}

/// From the first authentication block.
Authentication AuthenticationByState(const _tagVEXAPI_SDMTarget& target) {
    static constexpr CodeText ROLES[] = {{1, OUT_TARGET}, {2, OUT_INITIATOR}, {3, OUT_BOTH_ROLES}};
    constexpr VX_UINT8 LAST_STEP = 5;
    Authentication result = {TextOf(ROLES, target.AuthRole, OUT_UNKNOWN), OUT_AUTH_UNKNOWN, OUT_DISABLED};
    if (target.AuthStatus == 0) {
        result.sessionState = target.AuthState < 2            ? OUT_NA
                              : target.AuthState <= LAST_STEP ? OUT_AUTH_PENDING
                                                              : OUT_AUTH_FAILED;
    } else if (target.AuthStatus == 1 && target.AuthState <= LAST_STEP) {
        result.sessionState = OUT_AUTH_COMPLETE;
        result.secureMode = OUT_ENABLED;
    }
    return result;
}

/// From the second authentication block.
Authentication AuthenticationBySession(const _tagVEXAPI_SDMTarget& target) {
    static constexpr CodeText ROLES[] = {{1, OUT_INITIATOR}, {2, OUT_TARGET}, {3, OUT_BOTH_ROLES}};
    static constexpr CodeText SESSION_STATES[] = {
        {0, OUT_NA},           {1, OUT_NA}, {2, OUT_AUTH_PENDING}, {3, OUT_AUTH_FAILED}, {4, OUT_AUTH_COMPLETE},
        {5, "Auth Terminate"},
    };
    constexpr VX_UINT8 ROLE_BITS = 0x03;
    constexpr VX_UINT8 IS_SECURE = 0x10;
    return {TextOf(ROLES, target.SecFlags & ROLE_BITS, OUT_UNKNOWN),
            TextOf(SESSION_STATES, target.SecSessionState, OUT_AUTH_UNKNOWN),
            (target.SecFlags & IS_SECURE) != 0 ? OUT_ENABLED : OUT_DISABLED};
}

/// Uses the second block if the port has extended security and the block is this target's, else the first one if it
/// is this target's.
Authentication AuthenticationOf(const _vexapi_protocol_t& protocol, const _tagVEXAPI_SDMTarget& target) {
    if ((protocol.SecurityFlags & SECURITY_EXTENDED) != 0 && IsSamePort(target.SecPortName, target.SecPortId, target)) {
        return AuthenticationBySession(target);
    }
    if (IsSamePort(target.AuthPortName, target.AuthPortId, target)) {
        return AuthenticationByState(target);
    }
    return {};
}

const char* ProductType(const _tagVEXAPI_SDMTarget& target) {
    if (target.DeviceType == 0) {
        return IsNvmeTarget(target) ? "NVMe Disk" : "FCP Disk";
    }
    return TextOf(DEVICE_TYPES, target.DeviceType, "Device");
}

const char* LoginStatus(const VX_UINT8 (&flags)[6]) {
    if ((flags[2] & 0x02) != 0 && (flags[4] & 0x01) != 0) {
        return "Online";
    }
    return (flags[0] & 0x40) != 0 ? "Unconfigured" : "Offline";
}

/// "LUN_0, LUN_1": the entries of the list, but no more than the target's count.
TavuString LunsText(const _tagVEXAPI_SDMTarget& target, const char* prefix) {
    TavuString text;
    VX_UINT32 left = target.LunCount;
    ForEachEntry(target.pLunList, [&](const _tagVEXAPI_SDMLun& lun) {
        if (left == 0) {
            return false;
        }
        --left;
        text += text.empty() ? "" : ", ";
        text += prefix;
        text += std::to_string(lun.LunNumber);
        return true;
    });
    return text;
}

} // namespace

constexpr Command FCTargetInfoCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane FC Target information",
     .run = CmdGetCommon,
     .usage = "Usage: get [port identifier]\r\n",
     .arguments = ONLY_TARGET,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_PORT_DETAILS | VEXAPI_EXT_TARGETS | VEXAPI_EXT_TARGET_DETAILS | VEXAPI_EXT_LUNS},
};

constinit const FamilyDescription FCTargetInfoCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FC Target info",
    .leaves = LEAVES_OF<FCTargetInfoCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

ResultCode FCTargetInfoCmdsProcessor::Get(const TavuStringArray& args, TargetEntry& entry) {
    return GetTargetFromTargetString(args, entry);
}

void FCTargetInfoCmdsProcessor::DisplayTargetInfo(MultipleCmdsProcessor* self, const TargetEntry& entry,
                                                  eOutputFormat format) {
    const _vexapi_protocol_t& protocol = *entry.protocol;
    const _tagVEXAPI_SDMTarget& target = *entry.target;
    const bool isNvme = IsNvmeTarget(target);
    const Authentication authentication = AuthenticationOf(protocol, target);

    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        block.Line("Target Node Name", WwnText(target.NodeName));
        block.Line("Target Port Name", WwnText(target.PortName));
        block.Line("Target Port ID", PortIdText(target.PortId));
        block.LineF("Target Number", "%u", target.TargetNumber);
        block.Line("Vendor ID", BoundedText(target.VendorId));
        block.Line("Product ID", BoundedText(target.ProductId));
        block.Line("Product Revision", isNvme ? BoundedText(target.NvmeRevision) : BoundedText(target.ProductRevision));
        block.Line("Product Type", ProductType(target));
        block.Line("Serial Number", BoundedText(target.SerialNumber));
        if (isNvme) {
            block.Line("Storage NQN", BoundedText(target.StorageNqn).substr(0, MAX_NQN));
            block.LineF("Storage Controller ID", "0x%x", target.StorageControllerId);
        }
        block.LineF(isNvme ? "Namespace Count" : "Lun Count", "%u", target.LunCount);
        // A line that doesn't fit is dropped whole: if there are too many LUNs, none is shown.
        block.UncutLine(isNvme ? "Namespaces" : "Luns", LunsText(target, isNvme ? "NSID_" : "LUN_"));
        block.Line("Remote Type", authentication.remoteType);
        block.Line("Session State", authentication.sessionState);
        block.Line("Secure Mode", authentication.secureMode);
        AddCongestionState(block, target.ScmCongState);
        AddVirtualLane(block, TARGET_LANE_RULE, protocol, target.ScmVirtualLane);
        AddThrottling(block, TARGET_THROTTLE_RULE, protocol, target.ScmThrottleState);
        block.Line("Status", LoginStatus(target.TargetFlags));
    });
}
