/// @file
/// The lines that name a port or a target at the head of most reports on it.
#pragma once

#include "ReportBlock.h"
#include "vexapi.h"

void AddPortNames(ReportBlock& block, const _vexapi_protocol_t& protocol);
void AddTargetNames(ReportBlock& block, const _tagVEXAPI_SDMTarget& target);
