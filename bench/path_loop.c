/// @file
/// Asks the library for each LUN as the operating system knows it, and prints how many have a map. Nothing else is
/// read.
#include "extensions.h"

#include <stdio.h>

int main(void) {
    const VEXAPI_EXT_SCOPE scope = {.Size = sizeof scope, .Parts = VEXAPI_EXT_TARGETS | VEXAPI_EXT_LUNS};
    unsigned long mapped = 0;
    VEXAPI_ExtSetScope(&scope);
    if (VEXAPI_Initialize(0, 0) != 0) {
        return 1;
    }
    for (_vexapi_adapter_t* adapter = VEXAPI_GetAdapterList()->pHead; adapter != NULL; adapter = adapter->pNext) {
        for (_vexapi_phy_port_t* port = adapter->pPhyPortList->pHead; port != NULL; port = port->pNext) {
            for (_vexapi_protocol_t* protocol = port->pProtocolList->pHead; protocol != NULL;
                 protocol = protocol->pNext) {
                for (_tagVEXAPI_SDMTarget* target = protocol->pTargetList; target != NULL; target = target->pNext) {
                    for (_tagVEXAPI_SDMLun* lun = target->pLunList; lun != NULL; lun = lun->pNext) {
                        VEXAPI_EXT_LUN known = {.Size = sizeof known};
                        if (VEXAPI_ExtGetLun(&protocol->PortHandle, target, lun, &known) != 0) {
                            return 1;
                        }
                        mapped += known.Map[0] != '\0';
                    }
                }
            }
        }
    }
    VEXAPI_Uninitialize();
    return printf("%lu\n", mapped) > 0 ? 0 : 1;
}
