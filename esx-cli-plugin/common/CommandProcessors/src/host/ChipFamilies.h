/// @file
/// Predicates that classify chips into families by their PCI ids. Chips of vendors other than 0x1D0C belong to no
/// family. The sets overlap deliberately: 0x8031, for example, is both a 10G chip and a Rowan.
#pragma once

#include "vexapi.h"

bool Is4GAdapter(__CHIPPROPERTY chip);
bool Is8GAdapter(__CHIPPROPERTY chip);
bool Is10GAdapter(__CHIPPROPERTY chip);
bool IsBirchAdapter(__CHIPPROPERTY chip);
bool IsRowanAdapter(__CHIPPROPERTY chip);
bool IsRowanFCAdapter(__CHIPPROPERTY chip);
bool IsRowanCNAAdapter(__CHIPPROPERTY chip);
bool IsHazelAdapter(__CHIPPROPERTY chip);
bool IsWillowAdapter(__CHIPPROPERTY chip);
bool IsLarchAdapter(__CHIPPROPERTY chip);
bool IsAlderAdapter(__CHIPPROPERTY chip);
bool IsDellAdapter(__CHIPPROPERTY chip);
bool Is64GAdapter(__CHIPPROPERTY chip);
bool IsEncryptionAdapter(__CHIPPROPERTY chip);
bool Is16GN4FCOnlyAdapter(__CHIPPROPERTY chip);
bool IsCedarAdapter(__CHIPPROPERTY chip);
bool IsMapleAdapter(__CHIPPROPERTY chip);
bool IsMezz32GAdapter(__CHIPPROPERTY chip);
bool IsMezz16GAdapter(__CHIPPROPERTY chip);

/// Whether the fabric can assign port names and boot LUNs to an adapter.
bool HasFabricAssignment(__CHIPPROPERTY chip);

/// The UEFI-capable chips: Larch, Alder and Birch.
bool IsUefiCapableAdapter(__CHIPPROPERTY chip);
