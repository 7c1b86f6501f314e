/// @file
/// Baseline of the host in a measurement: creates its records, walks them once and releases them.
#include "vexapi.h"

#include <stddef.h>

int main(void) {
    unsigned ports = 0;
    unsigned luns = 0;
    if (VEXAPI_Initialize(0, 0) != 0) {
        return 1;
    }
    for (const _vexapi_adapter_t* adapter = VEXAPI_GetAdapterList()->pHead; adapter != NULL; adapter = adapter->pNext) {
        for (const _vexapi_phy_port_t* port = adapter->pPhyPortList->pHead; port != NULL; port = port->pNext) {
            ports += port->pProtocolList->pHead->WWPN[0] != 0;
            const _tagVEXAPI_SDMTarget* target = port->pProtocolList->pHead->pTargetList;
            for (; target != NULL; target = target->pNext) {
                for (const _tagVEXAPI_SDMLun* lun = target->pLunList; lun != NULL; lun = lun->pNext) {
                    luns += lun->LunNumber;
                }
            }
        }
    }
    VEXAPI_Uninitialize();
    return ports > 0 && luns != ~0U ? 0 : 1;
}
