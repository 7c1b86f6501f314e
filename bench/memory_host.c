/// @file
/// The smallest host that the lists can be measured on: a library with the session functions only, over
/// adapters of two ports each that are generated in memory. `VEXAPI_BENCH_PORTS` says how many ports (2).
/// Ports are numbered, and so are their names.
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
        protocol->WWPN[0] = 0x21;
        for (unsigned byte = 0; byte < 4; ++byte) {
            protocol->WWPN[4 + byte] = (VX_UINT8)(index >> (24 - 8 * byte));
        }
    }
}

VX_UINT32 VEXAPI_Initialize(VX_UINT32 debugLevel, VX_UINT32 reserved) {
    (void)debugLevel;
    (void)reserved;
    const char* value = getenv("VEXAPI_BENCH_PORTS");
    const unsigned ports = value != NULL ? (unsigned)strtoul(value, NULL, 10) : PORTS_PER_ADAPTER;
    const unsigned units = (ports + PORTS_PER_ADAPTER - 1) / PORTS_PER_ADAPTER;
    struct Unit* unit = calloc(units, sizeof *unit);
    if (unit == NULL) {
        return 1;
    }
    for (unsigned i = 0; i < units; ++i) {
        const unsigned left = ports - i * PORTS_PER_ADAPTER;
        FillUnit(&unit[i], i, left < PORTS_PER_ADAPTER ? left : PORTS_PER_ADAPTER);
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
    return 0;
}
