/// @file
/// The whole command tree as clients know it: every family and every leaf, in one place and in tree order.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace command_tree {

/// Families that are not built yet. A family that is built leaves this list; at the end the list is empty.
// clang-format off
inline const std::vector<std::string> ABSENT_FAMILIES = {
};
// clang-format on

/// A family: its path from the root, the option ahead of its name, its description, and the word in the
/// heading of its help. Its id and flags are 0, and it is not hidden.
struct FamilyRow {
    const char* path;
    const char* option;
    const char* description;
    const char* helpWord;
};

/// In the order in which their parents hold them.
inline constexpr FamilyRow FAMILIES[] = {
    {"adapter", "-t", "use this command to get/set/list Orvane adapters", "Adapter"},
    {"adapter info", "-s", "use this command to get Orvane Adapter info", "Adapter info"},
    {"adapter personality", "-s", "use this command to get/set Orvane Adapter personality", "Adapter personality"},
    {"adapter flashinfo", "-s", "use this command to get Orvane Adapter flash information", "Adapter flashinfo"},
    {"port", "-t", "use this command to get/set/list Orvane Ports", "Port"},
    {"port info", "-s", "use this command to get Orvane Fibre Channel Port's info", "port info"},
    {"port stats", "-s", "use this command to get Orvane Fibre Chanel Port Statistics", "port stats"},
    {"port dmi", "-s", "use this command to get Orvane Fibre Channel Port's SFP DMI info", "port dmi"},
    {"port vpd", "-s", "use this command to get Orvane Fibre Channel Port's VPD info", "VPD"},
    {"port hbaparams", "-s", "use this command to get/set Orvane Fibre Channel Port's HBA parameters", "hbaparams"},
    {"port bbcr", "-s", "use this command to get/set Orvane Fibre Channel Port's BBCR info", "BBCR"},
    {"port fec", "-s", "use this command to get/set Orvane Fibre Channel Port's FEC info", "FEC"},
    {"port bootconfig", "-s", "use this command to get/set Orvane Fibre Channel Port's Boot Config info",
     "Boot Config"},
    {"port bootconfigext", "-s", "use this command to get/set Orvane Fibre Channel Port's Boot Config info",
     "Boot Config"},
    {"port fwdump", "-s", "use this command to get Orvane Fibre Channel Port's Firmware Dump info", "Firmware Dump"},
    {"port beacon", "-s", "use this command to get/set Orvane Fibre Channel Port's Beacon info", "Beacon"},
    {"port scmstats", "-s",
     "use this command to get Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Statistics",
     "port scmstats"},
    {"port scmchk", "-s",
     "use this command to check Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Status",
     "port scmchk"},
    {"port scmprofile", "-s",
     "use this command to check Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Profile",
     "scmprofile"},
    {"port dportdiag", "-s", "use this command to get/set/run Diagnostic Port (DPort) on Orvane Fibre Channel Port",
     "DPortDiag"},
    {"port ctdiag", "-s", "use this command to run CT diagnostic through Orvane Fibre Channel Port", "CTDiag"},
    {"port fcping", "-s", "use this command to run FC Ping diagnostic through Orvane Fibre Channel Port", "FCPing"},
    {"port fcecho", "-s", "use this command to run FC Echo ELS diagnostic through Orvane Fibre Channel Port", "FCEcho"},
    {"port rdp", "-s", "use this command to get Read Diagnostic Parameters ELS info through Orvane Fibre Channel Port",
     "RDP"},
    {"port loopback", "-s", "use this command to run loopback diagnostic test through Orvane Fibre Channel Port",
     "LoopbackTest"},
    {"port rwbuffer", "-s",
     "use this command to run Read/Write Buffer Diagnostic test through Orvane Fibre Channel Port", "RWBuffer"},
    {"target", "-t", "use this command to get/list targets detected by Orvane adapters", "FC Target"},
    {"target info", "-v", "use this command to get Orvane FC Target info", "FC Target info"},
    {"target scmstats", "-v", "use this command to get Orvane FC Target SCM Statistics", "FC Target scmstats"},
    {"target scmchk", "-v", "use this command to get Orvane FC Target SCM Status", "FC Target scmchk"},
    {"target iidma", "-v", "use this command to get/set Orvane FC Target's Maximum Link Speed", "FC Target iidma"},
    {"target stats", "-v", "use this command to get Orvane FC Target Link Statistics", "FC Target stats"},
    {"lun", "-t", "use this command to get/list LUNs detected by Orvane adapters", "FC Target"},
    {"lun info", "-v", "use this command to get Orvane FC LUN info", "FC LUN info"},
};

/// Whose usage function a leaf carries.
enum class UsageOf {
    NOBODY, ///< nothing is ever printed but the document
    FAMILY, ///< its own family's
    FEC,    ///< that of `port fec`, whatever the leaf's family
};
inline constexpr UsageOf NO_USAGE = UsageOf::NOBODY;
inline constexpr UsageOf OWN_USAGE = UsageOf::FAMILY;
inline constexpr UsageOf FEC_USAGE = UsageOf::FEC;

/// A leaf: the path of its family (empty for the root), its name, id and description. Its flags are 0 and its
/// option is empty.
struct LeafRow {
    const char* family;
    const char* name;
    std::uint32_t id;
    const char* description;
    UsageOf usage;
    bool hidden = false;
};

/// In the order in which the families hold them; the leaves of a family stand ahead of its sub-families.
inline constexpr LeafRow LEAVES[] = {
    {"", "q", 1, "quit the program", OWN_USAGE},
    {"", "log", 2, "log all command input and output to a file", OWN_USAGE},
    {"", "version", 3, "display version of this program", OWN_USAGE},
    {"", "help", 0, "list of available commands", OWN_USAGE},
    {"", "?", 0, "list of available commands", OWN_USAGE, true},
    {"", "/h", 0, "list of available commands", OWN_USAGE, true},
    {"", "/help", 0, "list of available commands", OWN_USAGE, true},
    {"", "/?", 0, "list of available commands", OWN_USAGE, true},
    {"adapter", "list", 0, "Discover list of Orvane adapters", NO_USAGE},
    {"adapter", "update", 1, "Update firmware on the Orvane Adapter", NO_USAGE},
    {"adapter", "help", 2, "List of available commands", OWN_USAGE},
    {"adapter", "listcli", 3, "Discover list of Orvane adapters", OWN_USAGE},
    {"adapter", "updatecli", 4, "Update firmware on the Orvane Adapter", OWN_USAGE},
    {"adapter info", "get", 0, "get Orvane Adapter information", NO_USAGE},
    {"adapter info", "help", 1, "list of available commands", OWN_USAGE},
    {"adapter info", "getcli", 2, "get Orvane Adapter information", OWN_USAGE},
    {"adapter personality", "get", 0, "Get Orvane Adapter Personality", NO_USAGE},
    {"adapter personality", "set", 1, "Set Orvane Adapter Personality", NO_USAGE},
    {"adapter personality", "help", 2, "List of available commands", OWN_USAGE},
    {"adapter personality", "getcli", 3, "Get Orvane Adapter Personality", OWN_USAGE},
    {"adapter personality", "setcli", 4, "Set Orvane Adapter Personality", OWN_USAGE},
    {"adapter flashinfo", "get", 0, "get Orvane Adapter information", NO_USAGE},
    {"adapter flashinfo", "help", 1, "list of available commands", OWN_USAGE},
    {"adapter flashinfo", "getcli", 2, "get Orvane Adapter information", OWN_USAGE},
    {"port", "list", 0, "Discover list of Orvane physical ports", NO_USAGE},
    {"port", "updatenvram", 1, "Update NVRAM of Orvane physical port", NO_USAGE},
    {"port", "help", 2, "list of available commands", OWN_USAGE},
    {"port", "listcli", 3, "Discover list of Orvane physical ports", OWN_USAGE},
    {"port", "updatenvramcli", 4, "Update NVRAM of Orvane physical port", OWN_USAGE},
    {"port info", "get", 0, "get Orvane Physical Port information", NO_USAGE},
    {"port info", "help", 1, "list of available commands", OWN_USAGE},
    {"port info", "getcli", 2, "get Orvane Physical Port information", OWN_USAGE},
    {"port stats", "get", 0, "get Orvane Physical Port Statistics", NO_USAGE},
    {"port stats", "reset", 0, "reset Orvane Physical Port Statistics", NO_USAGE},
    {"port stats", "help", 1, "list of available commands", OWN_USAGE},
    {"port stats", "getcli", 2, "get Orvane Physical Port Statistics", OWN_USAGE},
    {"port stats", "resetcli", 3, "reset Orvane Physical Port Statistics", OWN_USAGE},
    {"port dmi", "get", 0, "Get Orvane Physical Port SFP DMI information", NO_USAGE},
    {"port dmi", "getraw", 1, "Get Orvane Physical Port SFP DMI information as raw hex data", NO_USAGE},
    {"port dmi", "update", 0, "Update Orvane Physical Port SFP DMI Firmware", NO_USAGE},
    {"port dmi", "help", 1, "List of available commands", OWN_USAGE},
    {"port dmi", "getcli", 2, "Get Orvane Physical Port SFP DMI information", OWN_USAGE},
    {"port dmi", "getrawcli", 3, "Get Orvane Physical Port SFP DMI information as raw hex data", OWN_USAGE},
    {"port dmi", "updatecli", 4, "Update Orvane Physical Port SFP DMI Firmware", OWN_USAGE},
    {"port vpd", "get", 0, "get Orvane VPD information", NO_USAGE},
    {"port vpd", "help", 1, "list of available commands", OWN_USAGE},
    {"port vpd", "getcli", 2, "get Orvane VPD information", OWN_USAGE},
    {"port hbaparams", "get", 0, "get Orvane HBA Parameters information", NO_USAGE},
    {"port hbaparams", "setFile", 1, "set Orvane HBA Parameters information in a local cache file", NO_USAGE},
    {"port hbaparams", "set", 2, "set Orvane HBA Parameters information", NO_USAGE},
    {"port hbaparams", "restoreDefaults", 3, "Restore default values of Orvane HBA Parameters", NO_USAGE},
    {"port hbaparams", "save", 4, "save Orvane HBA Parameters information in a text file", NO_USAGE},
    {"port hbaparams", "help", 5, "list of available commands", OWN_USAGE},
    {"port hbaparams", "getcli", 6, "get Orvane HBA Parameters information", OWN_USAGE},
    {"port hbaparams", "setFilecli", 7, "set Orvane HBA Parameters information in a local cache file", OWN_USAGE},
    {"port hbaparams", "setcli", 8, "set Orvane HBA Parameters information", OWN_USAGE},
    {"port hbaparams", "restoreDefaultscli", 9, "Restore default values of Orvane HBA Parameters", OWN_USAGE},
    {"port hbaparams", "savecli", 10, "Save Orvane HBA Parameters information in a file", OWN_USAGE},
    {"port bbcr", "get", 0, "get Orvane adapter's Buffer-to-Buffer Credit information", NO_USAGE},
    {"port bbcr", "setFile", 1, "set Orvane adapter's Buffer-to-Buffer Credit information in a local cache file",
     NO_USAGE},
    {"port bbcr", "set", 2, "set Orvane adapter's Buffer-to-Buffer Credit information", NO_USAGE},
    {"port bbcr", "help", 3, "list of available commands", OWN_USAGE},
    {"port bbcr", "getcli", 4, "get Orvane adapter's Buffer-to-Buffer Credit information", OWN_USAGE},
    {"port bbcr", "setFilecli", 5, "set Orvane adapter's Buffer-to-Buffer Credit information in a local cache file",
     OWN_USAGE},
    {"port bbcr", "setcli", 6, "set Orvane adapter's Buffer-to-Buffer Credit information", OWN_USAGE},
    {"port fec", "get", 0, "get Orvane adapter's FEC information", NO_USAGE},
    {"port fec", "set", 1, "set Orvane adapter's FEC information", NO_USAGE},
    {"port fec", "help", 2, "list of available commands", OWN_USAGE},
    {"port fec", "getcli", 3, "get Orvane adapter's FEC information", OWN_USAGE},
    {"port fec", "setcli", 4, "set Orvane adapter's FEC information", OWN_USAGE},
    {"port bootconfig", "get", 0, "get Orvane HBA Boot Config information", NO_USAGE},
    {"port bootconfig", "setFile", 1, "set Orvane HBA Boot Config information in a local cache file", NO_USAGE},
    {"port bootconfig", "set", 2, "set Orvane HBA Boot Config information", NO_USAGE},
    {"port bootconfig", "help", 3, "list of available commands", OWN_USAGE},
    {"port bootconfig", "getcli", 4, "get Orvane HBA Boot Config information", OWN_USAGE},
    {"port bootconfig", "setFilecli", 5, "set Orvane HBA Boot Config information in a local cache file", OWN_USAGE},
    {"port bootconfig", "setcli", 6, "set Orvane HBA Boot Config information", OWN_USAGE},
    {"port bootconfigext", "get", 0, "get Orvane HBA Boot Config information", NO_USAGE},
    {"port bootconfigext", "setFile", 1, "set Orvane HBA Boot Config information in a local cache file", NO_USAGE},
    {"port bootconfigext", "set", 2, "set Orvane HBA Boot Config information", NO_USAGE},
    {"port bootconfigext", "help", 3, "list of available commands", OWN_USAGE},
    {"port bootconfigext", "getcli", 4, "get Orvane HBA Boot Config information", OWN_USAGE},
    {"port bootconfigext", "setFilecli", 5, "set Orvane HBA Boot Config information in a local cache file", OWN_USAGE},
    {"port bootconfigext", "setcli", 6, "set Orvane HBA Boot Config information", OWN_USAGE},
    {"port fwdump", "get", 0, "get Orvane Firmware Dump information", NO_USAGE},
    {"port fwdump", "help", 1, "list of available commands", OWN_USAGE},
    {"port fwdump", "getcli", 2, "get Orvane Firmware Dump information", OWN_USAGE},
    {"port beacon", "get", 0, "get Orvane adapter's Beacon information", NO_USAGE},
    {"port beacon", "set", 1, "set Orvane adapter's Beacon information", NO_USAGE},
    {"port beacon", "help", 2, "list of available commands", OWN_USAGE},
    {"port beacon", "getcli", 3, "get Orvane adapter's Beacon information", FEC_USAGE},
    {"port beacon", "setcli", 4, "set Orvane adapter's Beacon information", FEC_USAGE},
    {"port scmstats", "get", 0, "get Orvane Physical Port SCM statistics", NO_USAGE},
    {"port scmstats", "clear", 1, "clear SCM statistics of all targets connected to Orvane Physical Port", NO_USAGE},
    {"port scmstats", "help", 2, "list of available commands", OWN_USAGE},
    {"port scmstats", "getcli", 3, "get Orvane Physical Port SCM information", OWN_USAGE},
    {"port scmstats", "clearcli", 4, "clear SCM statistics of all targets connected to Orvane Physical Port", NO_USAGE},
    {"port scmchk", "get", 0, "get Orvane Physical Port SAN Congetstion information", NO_USAGE},
    {"port scmchk", "help", 1, "list of available commands", OWN_USAGE},
    {"port scmchk", "getcli", 2, "get Orvane Physical Port SCM information", OWN_USAGE},
    {"port scmprofile", "get", 0, "get Orvane Physical Port FWCM Profile information", NO_USAGE},
    {"port scmprofile", "set", 1, "set Orvane Physical Port FWCM Profile information", NO_USAGE},
    {"port scmprofile", "help", 2, "list of available commands", OWN_USAGE},
    {"port scmprofile", "getcli", 3, "get Orvane Physical Port FWCM Profile information", OWN_USAGE},
    {"port scmprofile", "setcli", 4, "set Orvane Physical Port FWCM Profile information", OWN_USAGE},
    {"port dportdiag", "get", 0, "get Orvane adapter port's DPortDiag information", NO_USAGE},
    {"port dportdiag", "set", 1, "set Orvane adapter port's DPortDiag information", NO_USAGE},
    {"port dportdiag", "run", 2, "run DPortDiag on Orvane adapter port", NO_USAGE},
    {"port dportdiag", "help", 3, "list of available commands", OWN_USAGE},
    {"port dportdiag", "getcli", 4, "get Orvane adapter port's DPortDiag information", FEC_USAGE},
    {"port dportdiag", "setcli", 5, "set Orvane adapter port's DPortDiag information", FEC_USAGE},
    {"port dportdiag", "runcli", 6, "run DPortDiag on Orvane adapter port", NO_USAGE},
    {"port ctdiag", "run", 0, "run CTDiag test on Orvane adapter port", NO_USAGE},
    {"port ctdiag", "help", 1, "list of available commands", OWN_USAGE},
    {"port ctdiag", "runcli", 2, "run CTDiag Test on Orvane adapter port", NO_USAGE},
    {"port fcping", "run", 0, "run FCPing test on Orvane adapter port", NO_USAGE},
    {"port fcping", "help", 1, "list of available commands", OWN_USAGE},
    {"port fcping", "runcli", 2, "run FCPing Test on Orvane adapter port", NO_USAGE},
    {"port fcecho", "run", 0, "run FCEcho test on Orvane adapter port", NO_USAGE},
    {"port fcecho", "help", 1, "list of available commands", OWN_USAGE},
    {"port fcecho", "runcli", 2, "run FCEcho Test on Orvane adapter port", NO_USAGE},
    {"port rdp", "get", 0, "Read Diagnostic Parameters on Orvane adapter port", NO_USAGE},
    {"port rdp", "help", 1, "list of available commands", OWN_USAGE},
    {"port rdp", "runcli", 2, "Read Diagnostic Parameters on Orvane adapter port", NO_USAGE},
    {"port loopback", "run", 0, "run Loopback test on Orvane adapter port", NO_USAGE},
    {"port loopback", "help", 1, "list of available commands", OWN_USAGE},
    {"port loopback", "runcli", 2, "run Loopback Test on Orvane adapter port", NO_USAGE},
    {"port rwbuffer", "run", 0, "run Read Write Buffer test on Orvane adapter port", NO_USAGE},
    {"port rwbuffer", "help", 1, "list of available commands", OWN_USAGE},
    {"port rwbuffer", "runcli", 2, "run Read Write Buffer Test on Orvane adapter port", NO_USAGE},
    {"target", "list", 0, "Discover list of Orvane FC Targets", NO_USAGE},
    {"target", "help", 1, "list of available commands", OWN_USAGE},
    {"target", "listcli", 2, "Discover list of Orvane FC Targets", OWN_USAGE},
    {"target info", "get", 0, "get Orvane FC Target information", NO_USAGE},
    {"target info", "help", 1, "list of available commands", OWN_USAGE},
    {"target info", "getcli", 2, "get Orvane FC Target information", OWN_USAGE},
    {"target scmstats", "get", 0, "get Orvane FC Target information", NO_USAGE},
    {"target scmstats", "help", 1, "list of available commands", OWN_USAGE},
    {"target scmstats", "getcli", 2, "get Orvane FC Target information", OWN_USAGE},
    {"target scmchk", "get", 0, "get Orvane FC Target information", NO_USAGE},
    {"target scmchk", "help", 1, "list of available commands", OWN_USAGE},
    {"target scmchk", "getcli", 2, "get Orvane FC Target information", OWN_USAGE},
    {"target iidma", "get", 0, "get Orvane FC Target IIDMA Speed", NO_USAGE},
    {"target iidma", "set", 1, "set Orvane FC Target IIDMA Speed", NO_USAGE},
    {"target iidma", "help", 2, "list of available commands", OWN_USAGE},
    {"target iidma", "getcli", 3, "get Orvane FC Target IIDMA Speed", OWN_USAGE},
    {"target iidma", "setcli", 4, "set Orvane FC Target IIDMA Speed", OWN_USAGE},
    {"target stats", "get", 0, "get Orvane FC Target information", NO_USAGE},
    {"target stats", "help", 1, "list of available commands", OWN_USAGE},
    {"target stats", "getcli", 2, "get Orvane FC Target information", OWN_USAGE},
    {"lun", "list", 0, "Discover list of Orvane FC LUNs", NO_USAGE},
    {"lun", "help", 1, "list of available commands", OWN_USAGE},
    {"lun", "listcli", 2, "Discover list of Orvane FC LUNs", OWN_USAGE},
    {"lun info", "get", 0, "get Orvane FC LUN information", NO_USAGE},
    {"lun info", "help", 1, "list of available commands", OWN_USAGE},
    {"lun info", "getcli", 2, "get Orvane FC LUN information", OWN_USAGE},
};

} // namespace command_tree
