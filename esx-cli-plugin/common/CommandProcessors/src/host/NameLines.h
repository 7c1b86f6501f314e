/// @file
/// The lines with names of a port or target that begin most reports.
#pragma once

#include "ReportBlock.h"
#include "vexapi.h"

void AddPortNames(ReportBlock& block, const _vexapi_protocol_t& protocol);
void AddTargetNames(ReportBlock& block, const _tagVEXAPI_SDMTarget& target);
