#pragma once

#include "Bytes.h"
#include "Family.h"

#include <map>

/// Keywords of vital product data and their values.
using VpdMap = std::map<TavuString, TavuString>;

/// Walks the items of PCI vital product data (PCI Local Bus Specification) into `map`; a later item replaces an
/// earlier one with the same keyword.
///
/// Required: this walk, which differs from that of PCI (see `decoders::DecodeVpd`); parsers depend on it.
/// Sections are headers without an end, small resources are keywords, and a keyword that begins with "x" ends the
/// walk, because that is the byte of the end tag. Only the start of an item is checked against `size`: a value may
/// extend beyond it, to the end of `buffer`.
void MapVpdData(decoders::Bytes buffer, std::size_t size, VpdMap& map);

/// Description of a keyword; empty if it is not reported.
const char* GetVPDKeyVal(const TavuString& key);

/// `port -s vpd`: an adapter's vital product data.
class PhysicalPortVPDCmdsProcessor final : public Family<PhysicalPortVPDCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode Get(const TavuStringArray& args, VpdMap*& map);
    static void DisplayVPDInfo(MultipleCmdsProcessor* self, VpdMap* const& map, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayVPDInfo, DisplayError>;
};
