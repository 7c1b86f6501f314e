/// @file
/// The whole command tree: one row per family. The commands of a family are the rows of its class.
#pragma once

#include "AdapterCmdsProcessor.h"
#include "AdapterFlashInfoCmdsProcessor.h"
#include "AdapterInfoCmdsProcessor.h"
#include "AdapterPersonalityCmdsProcessor.h"
#include "FCLunCmdsProcessor.h"
#include "FCLunInfoCmdsProcessor.h"
#include "FCTargetCmdsProcessor.h"
#include "FCTargetIIDMACmdsProcessor.h"
#include "FCTargetInfoCmdsProcessor.h"
#include "FCTargetSCMChkCmdsProcessor.h"
#include "FCTargetSCMStatsCmdsProcessor.h"
#include "FCTargetStatsCmdsProcessor.h"
#include "PhysicalPortBBCRCmdsProcessor.h"
#include "PhysicalPortBeaconCmdsProcessor.h"
#include "PhysicalPortBootConfigCmdsProcessor.h"
#include "PhysicalPortBootConfigExtCmdsProcessor.h"
#include "PhysicalPortCTDiagCmdsProcessor.h"
#include "PhysicalPortCmdsProcessor.h"
#include "PhysicalPortDMICmdsProcessor.h"
#include "PhysicalPortDPortDiagCmdsProcessor.h"
#include "PhysicalPortFCEchoCmdsProcessor.h"
#include "PhysicalPortFCPingCmdsProcessor.h"
#include "PhysicalPortFCStatsCmdsProcessor.h"
#include "PhysicalPortFECCmdsProcessor.h"
#include "PhysicalPortFwDumpCmdsProcessor.h"
#include "PhysicalPortHBAParamsCmdsProcessor.h"
#include "PhysicalPortInfoCmdsProcessor.h"
#include "PhysicalPortLoopbackCmdsProcessor.h"
#include "PhysicalPortRDPCmdsProcessor.h"
#include "PhysicalPortRWBufferCmdsProcessor.h"
#include "PhysicalPortSCMChkCmdsProcessor.h"
#include "PhysicalPortSCMProfileCmdsProcessor.h"
#include "PhysicalPortSCMStatsCmdsProcessor.h"
#include "PhysicalPortVPDCmdsProcessor.h"

/// Makes the program's row of a family, which needs only the leaves of the commands.
struct ProgramRows {
    template <typename Family>
    static constexpr FamilyRow Row(const char* name, const char* option, const char* description,
                                   std::span<const FamilyRow> subFamilies = {}) {
        return {name, option, description, &Family::FAMILY, nullptr, subFamilies};
    }
};

/// Same with the full description of the commands, for what is generated from the tree.
struct DescribedRows {
    template <typename Family>
    static constexpr FamilyRow Row(const char* name, const char* option, const char* description,
                                   std::span<const FamilyRow> subFamilies = {}) {
        return {name, option, description, &Family::FAMILY, Family::COMMANDS, subFamilies};
    }
};

// clang-format off
template <typename Rows> struct CommandTree {
    static constexpr FamilyRow ADAPTER[] = {
        Rows::template Row<AdapterInfoCmdsProcessor>("info", "-s", "use this command to get Orvane Adapter info"),
        Rows::template Row<AdapterPersonalityCmdsProcessor>("personality", "-s", "use this command to get/set Orvane Adapter personality"),
        Rows::template Row<AdapterFlashInfoCmdsProcessor>("flashinfo", "-s", "use this command to get Orvane Adapter flash information"),
    };

    static constexpr FamilyRow PORT[] = {
        Rows::template Row<PhysicalPortInfoCmdsProcessor>("info", "-s", "use this command to get Orvane Fibre Channel Port's info"),
        Rows::template Row<PhysicalPortFCStatsCmdsProcessor>("stats", "-s", "use this command to get Orvane Fibre Chanel Port Statistics"),
        Rows::template Row<PhysicalPortDMICmdsProcessor>("dmi", "-s", "use this command to get Orvane Fibre Channel Port's SFP DMI info"),
        Rows::template Row<PhysicalPortVPDCmdsProcessor>("vpd", "-s", "use this command to get Orvane Fibre Channel Port's VPD info"),
        Rows::template Row<PhysicalPortHBAParamsCmdsProcessor>("hbaparams", "-s", "use this command to get/set Orvane Fibre Channel Port's HBA parameters"),
        Rows::template Row<PhysicalPortBBCRCmdsProcessor>("bbcr", "-s", "use this command to get/set Orvane Fibre Channel Port's BBCR info"),
        Rows::template Row<PhysicalPortFECCmdsProcessor>("fec", "-s", "use this command to get/set Orvane Fibre Channel Port's FEC info"),
        Rows::template Row<PhysicalPortBootConfigCmdsProcessor>("bootconfig", "-s", "use this command to get/set Orvane Fibre Channel Port's Boot Config info"),
        Rows::template Row<PhysicalPortBootConfigExtCmdsProcessor>("bootconfigext", "-s", "use this command to get/set Orvane Fibre Channel Port's Boot Config info"),
        Rows::template Row<PhysicalPortFwDumpCmdsProcessor>("fwdump", "-s", "use this command to get Orvane Fibre Channel Port's Firmware Dump info"),
        Rows::template Row<PhysicalPortBeaconCmdsProcessor>("beacon", "-s", "use this command to get/set Orvane Fibre Channel Port's Beacon info"),
        Rows::template Row<PhysicalPortSCMStatsCmdsProcessor>("scmstats", "-s", "use this command to get Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Statistics"),
        Rows::template Row<PhysicalPortSCMChkCmdsProcessor>("scmchk", "-s", "use this command to check Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Status"),
        Rows::template Row<PhysicalPortSCMProfileCmdsProcessor>("scmprofile", "-s", "use this command to check Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Profile"),
        Rows::template Row<PhysicalPortDPortDiagCmdsProcessor>("dportdiag", "-s", "use this command to get/set/run Diagnostic Port (DPort) on Orvane Fibre Channel Port"),
        Rows::template Row<PhysicalPortCTDiagCmdsProcessor>("ctdiag", "-s", "use this command to run CT diagnostic through Orvane Fibre Channel Port"),
        Rows::template Row<PhysicalPortFCPingCmdsProcessor>("fcping", "-s", "use this command to run FC Ping diagnostic through Orvane Fibre Channel Port"),
        Rows::template Row<PhysicalPortFCEchoCmdsProcessor>("fcecho", "-s", "use this command to run FC Echo ELS diagnostic through Orvane Fibre Channel Port"),
        Rows::template Row<PhysicalPortRDPCmdsProcessor>("rdp", "-s", "use this command to get Read Diagnostic Parameters ELS info through Orvane Fibre Channel Port"),
        Rows::template Row<PhysicalPortLoopbackCmdsProcessor>("loopback", "-s", "use this command to run loopback diagnostic test through Orvane Fibre Channel Port"),
        Rows::template Row<PhysicalPortRWBufferCmdsProcessor>("rwbuffer", "-s", "use this command to run Read/Write Buffer Diagnostic test through Orvane Fibre Channel Port"),
    };

    static constexpr FamilyRow TARGET[] = {
        Rows::template Row<FCTargetInfoCmdsProcessor>("info", "-v", "use this command to get Orvane FC Target info"),
        Rows::template Row<FCTargetSCMStatsCmdsProcessor>("scmstats", "-v", "use this command to get Orvane FC Target SCM Statistics"),
        Rows::template Row<FCTargetSCMChkCmdsProcessor>("scmchk", "-v", "use this command to get Orvane FC Target SCM Status"),
        Rows::template Row<FCTargetIIDMACmdsProcessor>("iidma", "-v", "use this command to get/set Orvane FC Target's Maximum Link Speed"),
        Rows::template Row<FCTargetStatsCmdsProcessor>("stats", "-v", "use this command to get Orvane FC Target Link Statistics"),
    };

    static constexpr FamilyRow LUN[] = {
        Rows::template Row<FCLunInfoCmdsProcessor>("info", "-v", "use this command to get Orvane FC LUN info"),
    };

    static constexpr FamilyRow ROOT[] = {
        Rows::template Row<AdapterCmdsProcessor>("adapter", "-t", "use this command to get/set/list Orvane adapters", ADAPTER),
        Rows::template Row<PhysicalPortCmdsProcessor>("port", "-t", "use this command to get/set/list Orvane Ports", PORT),
        Rows::template Row<FCTargetCmdsProcessor>("target", "-t", "use this command to get/list targets detected by Orvane adapters", TARGET),
        Rows::template Row<FCLunCmdsProcessor>("lun", "-t", "use this command to get/list LUNs detected by Orvane adapters", LUN),
    };
};
// clang-format on
