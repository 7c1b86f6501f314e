#include "NameLines.h"

#include "ReportTexts.h"

void AddPortNames(ReportBlock& block, const _vexapi_protocol_t& protocol) {
    block.Line("Node Name", WwnText(protocol.WWNN));
    block.Line("Port Name", WwnText(protocol.WWPN));
    block.Line("Port Id", PortIdText(protocol.PortId));
    block.Line("Port State", TextOf(PORT_STATE_TEXTS, protocol.PortState, OUT_UNKNOWN));
}

void AddTargetNames(ReportBlock& block, const _tagVEXAPI_SDMTarget& target) {
    block.Line("Node Name", WwnText(target.NodeName));
    block.Line("Port Name", WwnText(target.PortName));
    block.Line("Port Id", PortIdText(target.PortId));
    block.LineF("Target Number", "%u", target.TargetNumber);
}
