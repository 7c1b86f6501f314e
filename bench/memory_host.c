/// @file
/// A minimal host for measuring the lists: a library with the session functions only (and those whose addresses the
/// program needs to start at all), over adapters with two ports each, generated in memory. `VEXAPI_BENCH_PORTS` is
/// the number of ports (default 2), `VEXAPI_BENCH_TARGETS` the number of targets per port and `VEXAPI_BENCH_LUNS`
/// the number of LUNs per target (default 0). The names of ports and targets, and the LUNs, are numbered.
#include "vexapi.h"

#include <stdio.h>
#include <stdlib.h>

enum { PORTS_PER_ADAPTER = 2 };

/// One adapter with its ports and their protocols.
struct Unit {
    _vexapi_adapter_t adapter;
    VX_PHY_PORT_LIST ports;
    _vexapi_phy_port_t port[PORTS_PER_ADAPTER];
    VX_PROTOCOL_LIST protocols[PORTS_PER_ADAPTER];
    _vexapi_protocol_t protocol[PORTS_PER_ADAPTER];
};

static VX_ADAPTER_LIST host;
/// The targets and LUNs of all ports; those of a port are contiguous.
static _tagVEXAPI_SDMTarget* allTargets;
static _tagVEXAPI_SDMLun* allLuns;

/// Value of an environment variable, or `fallback` if unset.
static unsigned Variable(const char* name, unsigned fallback) {
    const char* value = getenv(name);
    return value != NULL ? (unsigned)strtoul(value, NULL, 10) : fallback;
}

/// Makes a name of this kind and number.
static void FillName(VX_UINT8* name, VX_UINT8 kind, unsigned number) {
    name[0] = kind;
    for (unsigned byte = 0; byte < 4; ++byte) {
        name[4 + byte] = (VX_UINT8)(number >> (24 - 8 * byte));
    }
}

static void FillTargets(_vexapi_protocol_t* protocol, unsigned port, unsigned targets, unsigned luns) {
    for (unsigned i = 0; i < targets; ++i) {
        const size_t index = (size_t)port * targets + i;
        _tagVEXAPI_SDMTarget* target = &allTargets[index];
        FillName(target->PortName, 0x50, i);
        target->TargetNumber = (VX_UINT16)i;
        target->LunCount = luns;
        target->pNext = i + 1 < targets ? target + 1 : NULL;
        for (unsigned j = 0; j < luns; ++j) {
            _tagVEXAPI_SDMLun* lun = &allLuns[index * luns + j];
            lun->LunNumber = (VX_UINT16)j;
            lun->pNext = j + 1 < luns ? lun + 1 : NULL;
        }
        target->pLunList = luns > 0 ? &allLuns[index * luns] : NULL;
    }
    protocol->TargetCount = targets;
    protocol->pTargetList = targets > 0 ? &allTargets[(size_t)port * targets] : NULL;
}

static void FillUnit(struct Unit* unit, unsigned number, unsigned ports) {
    snprintf(unit->adapter.Model, sizeof unit->adapter.Model, "ORV2872");
    snprintf(unit->adapter.SerialNumber, sizeof unit->adapter.SerialNumber, "BFK%08u", number);
    unit->adapter.pPhyPortList = &unit->ports;
    unit->ports.Count = ports;
    unit->ports.pHead = unit->port;
    for (unsigned i = 0; i < ports; ++i) {
        _vexapi_protocol_t* protocol = &unit->protocol[i];
        const unsigned index = number * PORTS_PER_ADAPTER + i;
        unit->port[i].PortNumber = (VX_UINT8)i;
        unit->port[i].pProtocolList = &unit->protocols[i];
        unit->port[i].pNext = i + 1 < ports ? &unit->port[i + 1] : NULL;
        unit->protocols[i].Count = 1;
        unit->protocols[i].pHead = protocol;
        FillName(protocol->WWPN, 0x21, index);
        protocol->PortState = 1; // online
    }
}

VX_UINT32 VEXAPI_Initialize(VX_UINT32 debugLevel, VX_UINT32 reserved) {
    (void)debugLevel;
    (void)reserved;
    const unsigned ports = Variable("VEXAPI_BENCH_PORTS", PORTS_PER_ADAPTER);
    const unsigned targets = Variable("VEXAPI_BENCH_TARGETS", 0);
    const unsigned luns = Variable("VEXAPI_BENCH_LUNS", 0);
    const unsigned units = (ports + PORTS_PER_ADAPTER - 1) / PORTS_PER_ADAPTER;
    struct Unit* unit = calloc(units, sizeof *unit);
    allTargets = calloc((size_t)ports * targets + 1, sizeof *allTargets);
    allLuns = calloc((size_t)ports * targets * luns + 1, sizeof *allLuns);
    if (unit == NULL || allTargets == NULL || allLuns == NULL) {
        return 1;
    }
    for (unsigned i = 0; i < units; ++i) {
        const unsigned left = ports - i * PORTS_PER_ADAPTER;
        const unsigned present = left < PORTS_PER_ADAPTER ? left : PORTS_PER_ADAPTER;
        FillUnit(&unit[i], i, present);
        for (unsigned j = 0; j < present; ++j) {
            FillTargets(&unit[i].protocol[j], i * PORTS_PER_ADAPTER + j, targets, luns);
        }
        unit[i].adapter.pNext = i + 1 < units ? &unit[i + 1].adapter : NULL;
    }
    host.Count = units;
    host.pHead = units > 0 ? &unit[0].adapter : NULL;
    return 0;
}

VX_UINT32 VEXAPI_SetToolID(VX_UINT32 toolId) {
    (void)toolId;
    return 0;
}

VX_UINT32 VEXAPI_SetToolVersion(VX_UINT32 major, VX_UINT32 minor, VX_UINT32 sub, VX_UINT32 build) {
    (void)major;
    (void)minor;
    (void)sub;
    (void)build;
    return 0;
}

VX_ADAPTER_LIST* VEXAPI_GetAdapterList(void) {
    return &host;
}

VX_UINT32 VEXAPI_Uninitialize(void) {
    // A unit begins with its adapter.
    free(host.pHead);
    host.pHead = NULL;
    free(allTargets);
    free(allLuns);
    return 0;
}

// The program has these functions in a table and does not start without them; no measurement calls them.
static VX_UINT32 Refuse(const VX_PORT_HANDLE* handle, const char* path) {
    (void)handle;
    (void)path;
    return 1;
}

/// Every frame succeeds immediately and prints one line.
VX_UINT32 VEXAPI_DiagnosticsEchoElsTest(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count,
                                        VX_UINT32 stopOnError, VX_UINT32 destinationType,
                                        _VEXAPI_ECHO_RESULTS* result) {
    (void)handle;
    (void)name;
    (void)stopOnError;
    (void)destinationType;
    printf("echo\n");
    result->FrameSent = count;
    result->FrameReceived = count;
    return 0;
}

VX_UINT32 VEXAPI_UpdateSpecificFlashRegionFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return Refuse(handle, path);
}

VX_UINT32 VEXAPI_UpdateAdapterFirmwareTableFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return Refuse(handle, path);
}

VX_UINT32 VEXAPI_UpdateAdapterPEPCfgFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return Refuse(handle, path);
}
