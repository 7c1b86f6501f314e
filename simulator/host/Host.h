/// @file
/// The simulated host: the records that callers see, and the answers of the other functions.
#pragma once

#include "Api.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace sim {

using Bytes = std::vector<std::uint8_t>;

// NOLINTBEGIN(readability-identifier-naming): keys of the description have the names of these fields.

/// The answer of `VEXAPI_FCGetBBCSupportInfoEx`.
struct CreditInfo {
    VX_UINT8 Status;     ///< 0 off, 1 on
    VX_UINT8 Configured; ///< count, 0 to 15
    VX_UINT8 State;      ///< 0 offline, 1 online
    VX_UINT8 Negotiated; ///< count
    char Reason[64];     ///< why it is offline
};

/// Answers of the functions for a port, apart from its record.
struct PortAnswers {
    _VEXAPI_FlashComponentVersion FlashComponents;
    VX_SFlashMemoBlock MemoBlock;
    VX_INT16 Temperature; ///< degrees Celsius
    VEXAPI_LOCKDOWNINFO Lockdown;
    VX_UINT8 Mezzanine;                ///< 1 for a mezzanine card
    VX_UINT32 Beacon;                  ///< 0 off, 1 on
    VX_UINT8 Personality;              ///< 0 FC, 1 CNA
    VX_UINT8 PersonalityChangeAllowed; ///< 1 if the user may change it
    _VEXAPI_HBAParameters NvramDefaults;
    _VEXAPI_HBAParameters Nvram;
    _VEXAPI_FcNVMeBootParams NvmeBoot;
    CreditInfo CreditRecovery;
    VX_UINT32 Fec; ///< 0 off, 1 on
    VX_UINT8 CongestionFeature;
    _VEXAPI_SCMRProfile CongestionProfile;
    VX_UINT32 DPortMode;
    _VEXAPI_DiagnosticsDPortResult DPortResult;
    VX_UINT32 VpdSize;          ///< reported size of the VPD; 0: its true size
    VX_UINT32 RdpSize;          ///< reported size of the RDP payload; 0: its true size
    VX_UINT8 RebootAfterChange; ///< 1 if changes take effect after a reboot
    VX_UINT8 RebootPending;     ///< a change waits for a reboot
    VX_UINT8 FlashPending;      ///< a flash image waits for a reboot
    VEXAPI_EXT_PORT Kernel;     ///< what the operating system knows
};

// NOLINTEND(readability-identifier-naming)

/// What the driver counts for a port or a target.
struct KernelCounters {
    struct Counter {
        VEXAPI_EXT_COUNTER start; ///< the value in the first call of the process
        VX_UINT64 step;           ///< added with each call
    };
    std::vector<Counter> counters;
};

struct Target {
    _tagVEXAPI_SDMTarget record{};
    VX_UINT32 linkSpeed = 0; ///< code of `PortSpeed`
    __STATISTICS statistics{};
    std::vector<_tagVEXAPI_SDMLun> luns;
    VEXAPI_EXT_TARGET kernel{};
    KernelCounters kernelCounters;
    /// What the operating system knows of LUNs, by the index of the first of a run. Names and addresses of the others
    /// count up from there.
    std::map<std::size_t, VEXAPI_EXT_LUN> kernelLuns;
};

struct Adapter;

/// One protocol function of a physical port.
struct Port {
    _vexapi_protocol_t record{};
    PortAnswers answers{};
    std::vector<Target> targets;
    std::vector<_VEXAPI_SANCONGTMGMTV2> congestion;
    std::optional<std::vector<_VEXAPI_FWPRIVATESTATSEntry>> privateStatistics; ///< unset: a null pointer
    std::array<VX_UINT8, 512> transceiver{};
    Bytes vpd;
    std::optional<Bytes> firmwareDump; ///< unset: no dump is available
    Bytes rdpPayload;
    /* Results of diagnostics, one per call in a session; the last one repeats. */
    std::vector<_VEXAPI_LoopbackTestResult> loopback;
    std::vector<std::vector<_VEXAPI_ReadWriteBufferTestResult>> readWriteBuffer;
    std::vector<_VEXAPI_ECHO_RESULTS> echo;
    std::size_t loopbackCalls = 0;
    std::size_t readWriteBufferCalls = 0;
    std::size_t echoCalls = 0;
    KernelCounters kernelCounters;
    /// Functions that fail for this port, by index, and their statuses.
    std::vector<std::pair<std::size_t, VX_UINT32>> statuses;

    Adapter* adapter = nullptr;
    std::uint32_t index = 0;
};

struct PhyPort {
    _vexapi_phy_port_t record{};
    VX_PROTOCOL_LIST list{};
    std::optional<std::vector<Port>> ports; ///< unset: a null list
};

struct Adapter {
    _vexapi_adapter_t record{};
    VX_PHY_PORT_LIST list{};
    std::optional<std::vector<PhyPort>> phyPorts; ///< unset: a null list
    std::uint32_t index = 0;
};

struct Host {
    VX_ADAPTER_LIST list{};
    std::optional<std::vector<Adapter>> adapters; ///< unset: a null list
    VX_UINT8 bfsMode = 1;                         ///< 1 BIOS, 2 UEFI, 4 NVMe
    std::vector<Port*> ports;                     ///< by index
    std::string digest;                           ///< of the description and its blobs

    Host() = default;
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// Links the records into the tree that callers walk, numbers the ports and creates their handles. No vector
    /// may grow afterwards.
    void Link();
    /// The port of a handle, or null if the handle is invalid.
    Port* Find(const VX_PORT_HANDLE& handle) const;
    /// The port of the word at byte 4 of a handle, or null.
    Port* Find(VX_UINT32 word) const;
};

/// The target with this port name, or null.
Target* FindTarget(Port& port, const VX_UINT8 (&name)[8]);
/// Whether a target has this LUN or namespace.
bool HasLun(const Target& target, std::uint32_t number);
/// Whether a target is an NVMe controller.
bool IsNvme(const Target& target);
/// The port's name as text, "21:00:...".
std::string NameOf(const Port& port);

/// Factory defaults of the NVRAM parameters.
_VEXAPI_HBAParameters FactoryNvram();

} // namespace sim
