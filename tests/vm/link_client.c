/// @file
/// Pings and echoes any remote port, initiators included: `link_client PORT REMOTE_PORT COUNT`, by port names as
/// "20:00:…". The outcome goes to standard error, since the library writes to the other.
#include "vexapi.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static VX_PORT_HANDLE* FindPort(const char* name) {
    const VX_ADAPTER_LIST* const adapters = VEXAPI_GetAdapterList();
    for (_vexapi_adapter_t* adapter = adapters == NULL ? NULL : adapters->pHead; adapter; adapter = adapter->pNext) {
        for (_vexapi_phy_port_t* port = adapter->pPhyPortList->pHead; port; port = port->pNext) {
            for (_vexapi_protocol_t* each = port->pProtocolList->pHead; each; each = each->pNext) {
                char text[24];
                const VX_UINT8* const wwpn = each->WWPN;
                snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x:%02x:%02x", wwpn[0], wwpn[1], wwpn[2],
                         wwpn[3], wwpn[4], wwpn[5], wwpn[6], wwpn[7]);
                if (strcmp(text, name) == 0) {
                    return &each->PortHandle;
                }
            }
        }
    }
    return NULL;
}

int main(int argc, char** argv) {
    VEXAPI_Initialize(0, 0);
    VX_PORT_HANDLE* const port = argc == 4 ? FindPort(argv[1]) : NULL;
    if (port == NULL) {
        fprintf(stderr, "no such port\n");
        return 1;
    }
    const VX_UINT32 count = (VX_UINT32)strtoul(argv[3], NULL, 10);
    VX_UINT32 answered = 0;
    VX_UINT32 accepted = 0;
    char text[256] = "";
    const VX_UINT32 status =
        VEXAPI_DiagnosticsFCPingTest(port, argv[2], count, 0, &answered, text, (VX_UINT32)sizeof text);
    for (VX_UINT32 frame = 0; frame < count; ++frame) {
        _VEXAPI_ECHO_RESULTS result = {0};
        accepted += VEXAPI_DiagnosticsEchoElsTest(port, argv[2], 1, 0, 2, &result) == 0 && result.EchoFailed == 0;
    }
    fprintf(stderr, "%s, %u echoes accepted\n", text, accepted);
    VEXAPI_Uninitialize();
    return status != 0 || answered != count || accepted != count;
}
