/// @file
/// The tables of all records in descriptions, state files and journals.
#pragma once

#include "description/Fields.h"
#include "host/Host.h"

namespace sim {

template <> Table FieldsOf<__CHIPPROPERTY>();
template <> Table FieldsOf<_vexapi_adapter_t>();
template <> Table FieldsOf<_vexapi_phy_port_t>();
template <> Table FieldsOf<_vexapi_protocol_t>();
template <> Table FieldsOf<_tagVEXAPI_SDMTarget>();
template <> Table FieldsOf<_tagVEXAPI_SDMLun>();
template <> Table FieldsOf<VX_FLASH_COMPONENT>();
template <> Table FieldsOf<_VEXAPI_FlashComponentVersion>();
template <> Table FieldsOf<VX_SFlashMemoBlock>();
template <> Table FieldsOf<VEXAPI_LOCKDOWNINFO>();
template <> Table FieldsOf<_VEXAPI_HBAParameters>();
template <> Table FieldsOf<VX_NVME_BOOT_ENTRY>();
template <> Table FieldsOf<_VEXAPI_FcNVMeBootParams>();
template <> Table FieldsOf<CreditInfo>();
template <> Table FieldsOf<_VEXAPI_FWPRIVATESTATSEntry>();
template <> Table FieldsOf<_VEXAPI_SANCONGTMGMTV2>();
template <> Table FieldsOf<_VEXAPI_SCMRProfile>();
template <> Table FieldsOf<__STATISTICS>();
template <> Table FieldsOf<VX_PORT_SELECTOR>();
template <> Table FieldsOf<DiagTestParams>();
template <> Table FieldsOf<_VEXAPI_LoopbackTestResult>();
template <> Table FieldsOf<_VEXAPI_ReadWriteBufferTestResult>();
template <> Table FieldsOf<_VEXAPI_ECHO_RESULTS>();
template <> Table FieldsOf<_VEXAPI_DiagnosticsDPortResult>();
template <> Table FieldsOf<VEXAPI_EXT_SCOPE>();
template <> Table FieldsOf<VEXAPI_EXT_PORT>();
template <> Table FieldsOf<VEXAPI_EXT_TARGET>();
template <> Table FieldsOf<VEXAPI_EXT_LUN>();

template <> Table FieldsOf<PortAnswers>();

} // namespace sim
