/// @file
/// The tables of all records that descriptions, states and journal lines hold.
#pragma once

#include "description/Fields.h"
#include "host/Host.h"

namespace sim {

template <> Table fieldsOf<__CHIPPROPERTY>();
template <> Table fieldsOf<_vexapi_adapter_t>();
template <> Table fieldsOf<_vexapi_phy_port_t>();
template <> Table fieldsOf<_vexapi_protocol_t>();
template <> Table fieldsOf<_tagVEXAPI_SDMTarget>();
template <> Table fieldsOf<_tagVEXAPI_SDMLun>();
template <> Table fieldsOf<VX_FLASH_COMPONENT>();
template <> Table fieldsOf<_VEXAPI_FlashComponentVersion>();
template <> Table fieldsOf<VX_SFlashMemoBlock>();
template <> Table fieldsOf<VEXAPI_LOCKDOWNINFO>();
template <> Table fieldsOf<_VEXAPI_HBAParameters>();
template <> Table fieldsOf<VX_NVME_BOOT_ENTRY>();
template <> Table fieldsOf<_VEXAPI_FcNVMeBootParams>();
template <> Table fieldsOf<CreditInfo>();
template <> Table fieldsOf<_VEXAPI_FWPRIVATESTATSEntry>();
template <> Table fieldsOf<_VEXAPI_SANCONGTMGMTV2>();
template <> Table fieldsOf<_VEXAPI_SCMRProfile>();
template <> Table fieldsOf<__STATISTICS>();
template <> Table fieldsOf<VX_PORT_SELECTOR>();
template <> Table fieldsOf<DiagTestParams>();
template <> Table fieldsOf<_VEXAPI_LoopbackTestResult>();
template <> Table fieldsOf<_VEXAPI_ReadWriteBufferTestResult>();
template <> Table fieldsOf<_VEXAPI_ECHO_RESULTS>();
template <> Table fieldsOf<_VEXAPI_DiagnosticsDPortResult>();

template <> Table fieldsOf<PortAnswers>();

} // namespace sim
