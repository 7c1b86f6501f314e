/// @file
/// Baseline of the long lists: `printf_loop target|lun` prints the output of `-t target list` or `-t lun list` for
/// the same host, with one plain `printf` per row.
#include "vexapi.h"

#include <stdio.h>
#include <string.h>

#define WWN "%02hhx:%02hhx:%02hhx:%02hhx:%02hhx:%02hhx:%02hhx:%02hhx"
#define BYTES(name) (name)[0], (name)[1], (name)[2], (name)[3], (name)[4], (name)[5], (name)[6], (name)[7]
#define ROW(list, field, number)                                                                                       \
    "<structure typeName=\"" list "\">\n<field name=\"" field "\">\n<string>FC_" WWN "_Target_" WWN number             \
    "</string></field>\n</structure>\n"

static void PrintTarget(const _vexapi_protocol_t* port, const _tagVEXAPI_SDMTarget* target, int withLuns) {
    if (!withLuns) {
        printf(ROW("TargetList", "Targets", ""), BYTES(port->WWPN), BYTES(target->PortName));
        return;
    }
    for (const _tagVEXAPI_SDMLun* lun = target->pLunList; lun != NULL; lun = lun->pNext) {
        printf(ROW("LunList", "LUNs/Namespaces", "_LUN_%u"), BYTES(port->WWPN), BYTES(target->PortName),
               (unsigned)lun->LunNumber);
    }
}

int main(int argc, char** argv) {
    const int withLuns = argc == 2 && strcmp(argv[1], "lun") == 0;
    if (VEXAPI_Initialize(0, 0) != 0) {
        return 1;
    }
    printf("<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n<list type=\"structure\">\n");
    for (const _vexapi_adapter_t* adapter = VEXAPI_GetAdapterList()->pHead; adapter != NULL; adapter = adapter->pNext) {
        for (const _vexapi_phy_port_t* port = adapter->pPhyPortList->pHead; port != NULL; port = port->pNext) {
            const _vexapi_protocol_t* protocol = port->pProtocolList->pHead;
            for (const _tagVEXAPI_SDMTarget* target = protocol->pTargetList; target != NULL; target = target->pNext) {
                PrintTarget(protocol, target, withLuns);
            }
        }
    }
    printf("</list>\n</output>\n");
    VEXAPI_Uninitialize();
    return 0;
}
