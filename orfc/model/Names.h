/// @file
/// Objects by name, in any spelling.
#pragma once

#include "Host.h"

#include <set>
#include <string_view>

namespace orfc {

/// Objects of a host that a command shows.
struct Selection {
    std::set<const Adapter*> adapters;
    std::set<const Port*> ports;
    std::set<const Target*> targets;
    std::set<const Lun*> luns;

    friend bool operator==(const Selection&, const Selection&) = default;
    bool IsEmpty() const { return adapters.empty() && ports.empty() && targets.empty() && luns.empty(); }
};

/// Finds the objects that `name` denotes. Accepted are
///
///  - identifiers, "FC_21:00:…";
///  - World Wide Names and worldwide ids, with or without colons and a prefix ("0x", "nn-", "pn-", "naa.", "eui."),
///    in either letter case;
///  - kernel names, "host2", "rport-2:0-1", "sdb", "/dev/sdb", "2:0:1:5", "nvme0n1";
///  - maps, by name, device or id;
///  - the beginning of any of these, if all names that begin so denote the same.
///
/// A name may denote several objects: a storage port that two ports see is two targets, a LUN one for each path.
/// Throws `Failure` if nothing has the name, and tells the nearest that exist; if a beginning is that of several names,
/// tells which.
Selection Find(const Host& host, std::string_view name);

/// A name and what goes by it: an object of this kind, or several.
struct KnownName {
    std::string name;
    const char* kind; ///< "adapter", "port", "target" or "lun"
};
/// The names of all objects, each once for a kind, in the host's order.
std::vector<KnownName> NamesOf(const Host& host);

/// Adds to a selection what is above or below its members: their ports, targets and LUNs, and those that they are of.
Selection WithRelatives(const Host& host, const Selection& selection);

} // namespace orfc
