#include "PhysicalPortSCMProfileCmdsProcessor.h"

#include "CmdLineParser.h"
#include "CongestionAccess.h"
#include "CongestionReport.h"
#include "ReportTexts.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortSCMProfileCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"PortFWCMProfile", "Congestion Profile", "CongestionProfileList"}, 1024, ReportBlock::SizeRule::SPACE_LEFT};
constexpr char OUT_DRIVER_SETTINGS[] = "Driver_Settings";
constexpr char OUT_NVRAM[] = "NVRAM";

/// Required: a port whose firmware lacks the feature reads "Failed, Unknown", and the text for a virtual port has a
/// capital letter that the other congestion commands don't have; parsers depend on both.
constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, NVRAM read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_CFG_UPDATE_FAILED, "Failed, NVRAM update failed"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
    {RC_MUTUALLY_EXCLUSIVE, "Failed, Restore and Activation command-line options are mutually exclusive"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
    {RC_READ_ONLY_MODE, "Failed, Read-Only parameter"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, Feature not supported for virtual port"},
};

constexpr LibraryCall READ_PROFILE = {"VEXAPI_GetSCMRProfile", "", "Get SCMR Profile failed", RC_CFG_READ_FAILED};
constexpr LibraryCall CHANGE_PROFILE = {"VEXAPI_SetSCMRProfile", " before set", "Update SCMR Profile failed",
                                        RC_CFG_UPDATE_FAILED};
constexpr LibraryCall READ_BACK = {"VEXAPI_GetSCMRProfile", "", "Get SCMR Profile failed after set",
                                   RC_CFG_READ_FAILED};

/// `ControlFlag`: what controls the profile. Any value but 0 is NVRAM.
constexpr VX_UINT8 CONTROL_DRIVER = 0;
constexpr VX_UINT8 CONTROL_NVRAM = 1;

/// `Profile`, in reports and in "--activation".
constexpr CodeText ACTIVATIONS[] = {
    {0, "Monitor_Only"}, {1, "Conservative"}, {2, "Moderate"}, {3, "Aggressive"}, {4, "Defensive"},
};

ResultCode AdmitPort(const TavuStringArray& args, PortEntry& entry) {
    return AdmitCongestion(ADMIT_PROFILE, "phy port", GetPhyPortFromPortString, args, entry);
}

ResultCode RefuseValue(const char* option, const TavuString& value) {
    TraceStep(TRACE_DEBUG, "%s=%s not supported", option, value.c_str());
    return RC_INVALID_PARAMETER;
}

constexpr CodeText RESTORE_WORDS[] = {{0, OUT_DRIVER_SETTINGS}};
constexpr Argument SET_ARGUMENTS[] = {
    PORT_ARGUMENT,
    {"--restore", "-r", "gives the profile back to the driver", ArgumentKind::WORD, false, RESTORE_WORDS},
    {"--activation", "-a", "level of the profile in NVRAM", ArgumentKind::WORD, false, ACTIVATIONS},
};

} // namespace

constexpr Command PhysicalPortSCMProfileCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane Physical Port FWCM Profile information",
     .run = CmdGetCommon,
     .usage = "Usage: get\r\n",
     .arguments = ONLY_PORT,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_PORT_DETAILS},
    {.names = Names<"set", "CmdSet">(),
     .description = "set Orvane Physical Port FWCM Profile information",
     .run = CmdSetCommon,
     .usage = "Usage: set\r\n",
     .arguments = SET_ARGUMENTS,
     .document = ReportDocument(OUT_SHAPE.names),
     .changes = true},
};

constinit const FamilyDescription PhysicalPortSCMProfileCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "scmprofile",
    .leaves = LEAVES_OF<PhysicalPortSCMProfileCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

ResultCode PhysicalPortSCMProfileCmdsProcessor::Get(const TavuStringArray& args, PortProfile& port) {
    const ResultCode code = AdmitPort(args, port.entry);
    return code == RC_SUCCESS ? ReadProfile(READ_PROFILE, port) : code;
}

/// Reads the profile back: the document shows the port's current one, not the requested one. Without options, it is
/// written as read.
ResultCode PhysicalPortSCMProfileCmdsProcessor::Set(const TavuStringArray& args, PortProfile& port) {
    ResultCode code = Get(args, port);
    if (code == RC_SUCCESS) {
        code = ApplyOptions(args, port.profile);
    }
    if (code == RC_SUCCESS) {
        code = CallLibrary(CHANGE_PROFILE,
                           [&] { return VEXAPI_SetSCMRProfile(&port.entry.protocol->PortHandle, &port.profile); });
    }
    return code == RC_SUCCESS ? ReadProfile(READ_BACK, port) : code;
}

ResultCode PhysicalPortSCMProfileCmdsProcessor::ReadProfile(const LibraryCall& call, PortProfile& port) {
    port.profile = {};
    return CallLibrary(call, [&] { return VEXAPI_GetSCMRProfile(&port.entry.protocol->PortHandle, &port.profile); });
}

/// Checks both values before rejecting the use of both options. Restoring keeps the level, and bytes of unknown
/// meaning are never changed.
ResultCode PhysicalPortSCMProfileCmdsProcessor::ApplyOptions(const TavuStringArray& args,
                                                             _VEXAPI_SCMRProfile& profile) {
    TavuString value;
    const bool isRestore = CmdLineParser::GetOption(args, OptionOf(SET_ARGUMENTS, "--restore"), value);
    if (isRestore) {
        if (value.CompareNoCase(OUT_DRIVER_SETTINGS) != 0) {
            return RefuseValue("restore", value);
        }
        profile.ControlFlag = CONTROL_DRIVER;
    }
    const bool isActivation = CmdLineParser::GetOption(args, OptionOf(SET_ARGUMENTS, "--activation"), value);
    if (isActivation) {
        VX_UINT32 level = 0;
        if (!FindWord(ACTIVATIONS, value.c_str(), level)) {
            return RefuseValue("activation", value);
        }
        profile.ControlFlag = CONTROL_NVRAM;
        profile.Profile = static_cast<VX_UINT8>(level);
    }
    if (isRestore && isActivation) {
        TraceStep(TRACE_DEBUG, "Mutually exclusive parameters");
        return RC_MUTUALLY_EXCLUSIVE;
    }
    TraceStep(TRACE_INFORMATION, "Congestion_Profile_ControlFlag=%d", profile.ControlFlag);
    TraceStep(TRACE_INFORMATION, "Congestion_Profile_Profile=%d", profile.Profile);
    return RC_SUCCESS;
}

void PhysicalPortSCMProfileCmdsProcessor::DisplaySCMProfile(MultipleCmdsProcessor* self, const PortProfile& port,
                                                            eOutputFormat format) {
    const _VEXAPI_SCMRProfile& profile = port.profile;
    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        AddPortNames(block, *port.entry.protocol);
        block.Line("FWCM Configuration Status", profile.Disabled == 0 ? OUT_TRUE : OUT_FALSE);
        block.Line("FWCM Profile Management", profile.ControlFlag == CONTROL_DRIVER ? OUT_DRIVER_SETTINGS : OUT_NVRAM);
        block.Line("FWCM Profile Activation", TextOf(ACTIVATIONS, profile.Profile, OUT_UNKNOWN));
    });
}
