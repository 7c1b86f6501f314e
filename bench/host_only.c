/// @file
/// What the host of a measurement costs by itself: its records are made, walked once and released.
#include "vexapi.h"

#include <stddef.h>

int main(void) {
    unsigned ports = 0;
    if (VEXAPI_Initialize(0, 0) != 0) {
        return 1;
    }
    for (const _vexapi_adapter_t* adapter = VEXAPI_GetAdapterList()->pHead; adapter != NULL; adapter = adapter->pNext) {
        for (const _vexapi_phy_port_t* port = adapter->pPhyPortList->pHead; port != NULL; port = port->pNext) {
            ports += port->pProtocolList->pHead->WWPN[0] != 0;
        }
    }
    VEXAPI_Uninitialize();
    return ports > 0 ? 0 : 1;
}
