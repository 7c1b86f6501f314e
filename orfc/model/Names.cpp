#include "Names.h"

#include "Failure.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace orfc {

namespace {

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

bool DropPrefix(std::string_view& text, std::string_view prefix) {
    const bool isThere = text.starts_with(prefix);
    text.remove_prefix(isThere ? prefix.size() : 0);
    return isThere;
}

/// A name in lower case without the folder of a device.
std::string Plain(std::string_view name) {
    std::string lower = LowerCase(name);
    std::string_view text = lower;
    for (const std::string_view folder : {"/dev/mapper/", "/dev/disk/by-id/", "/dev/"}) {
        if (DropPrefix(text, folder)) {
            break;
        }
    }
    return std::string(text);
}

/// The digits of a name that is hexadecimal but for prefixes and colons between pairs; empty for any other. Of the two
/// names of a port, "nn-…:pn-…", those of the port name.
std::string Digits(std::string_view plain) {
    plain.remove_prefix(std::min(plain.find(":pn-") + 1, plain.size()));
    for (const std::string_view prefix : {"nn-", "pn-", "wwn-", "naa.", "eui."}) {
        if (DropPrefix(plain, prefix)) {
            break;
        }
    }
    DropPrefix(plain, "0x");
    std::string digits;
    std::size_t group = 0; // digits since the last colon
    for (const char c : plain) {
        if ((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f')) {
            digits += c;
            ++group;
        } else if (c == ':' && group == 2) {
            group = 0;
        } else {
            return {}; // "2:0:1:5" is an address
        }
    }
    return digits;
}

/// A name that an object has, as it is shown and as it is compared.
struct Name {
    std::string shown;
    std::string compared;
};

/// Calls `visit(name)` for each name of the object.
template <typename Visit> void VisitText(const std::string& text, Visit visit) {
    if (!text.empty()) {
        visit(Name{text, LowerCase(text)});
    }
}
template <typename Visit> void VisitWwn(Wwn name, Visit visit) {
    if (name != 0) {
        std::string text = WwnText(name);
        std::string digits = Digits(text);
        visit(Name{std::move(text), std::move(digits)});
    }
}
template <typename Visit> void VisitNames(const Adapter& adapter, Visit visit) {
    VisitText(adapter.identifier, visit);
    VisitText(adapter.serialNumber, visit);
}
template <typename Visit> void VisitNames(const Port& port, Visit visit) {
    VisitText(port.identifier, visit);
    VisitWwn(port.portName, visit);
    VisitWwn(port.nodeName, visit);
    VisitText(port.kernelName, visit);
}
template <typename Visit> void VisitNames(const Target& target, Visit visit) {
    VisitText(target.identifier, visit);
    VisitWwn(target.portName, visit);
    VisitWwn(target.nodeName, visit);
    VisitText(target.kernelName, visit);
}
template <typename Visit> void VisitNames(const Lun& lun, Visit visit) {
    VisitText(lun.identifier, visit);
    VisitText(lun.worldwideId, visit);
    if (std::string digits = Digits(LowerCase(lun.worldwideId)); !digits.empty()) {
        visit(Name{lun.worldwideId, std::move(digits)});
    }
    for (const std::string* text : {&lun.address, &lun.device, &lun.map, &lun.mapDevice, &lun.mapId}) {
        VisitText(*text, visit);
    }
}

/// Calls `visit(name, select)` for every name of every object; `select(selection)` selects the object.
template <typename Visit> void VisitHost(const Host& host, Visit visit) {
    const auto visitAll = [&](const auto& objects, auto member) {
        for (const auto& object : objects) {
            VisitNames(object, [&](const Name& name) {
                visit(name, [&](Selection& selection) { (selection.*member).insert(&object); });
            });
        }
    };
    visitAll(host.adapters, &Selection::adapters);
    visitAll(host.ports, &Selection::ports);
    visitAll(host.targets, &Selection::targets);
    visitAll(host.luns, &Selection::luns);
}

/// Number of single characters to insert, remove or replace between two texts (Levenshtein).
std::size_t Distance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t at = 0; at < left.size(); ++at) {
        std::size_t diagonal = std::exchange(row[0], at + 1);
        for (std::size_t column = 0; column < right.size(); ++column) {
            const std::size_t replaced = diagonal + (left[at] == right[column] ? 0 : 1);
            diagonal = row[column + 1];
            row[column + 1] = std::min({diagonal + 1, row[column] + 1, replaced});
        }
    }
    return row[right.size()];
}

constexpr std::size_t MAX_SUGGESTIONS = 3;

/// ": did you mean A or B?", with those that are near; empty for none.
std::string Suggestions(const Host& host, const std::string& plain, const std::string& digits) {
    std::multimap<std::size_t, std::string> near;
    VisitHost(host, [&](const Name& name, auto) {
        const std::size_t limit = name.compared.size() / 4 + 1;
        std::size_t distance = limit + 1;
        for (const std::string& text : {plain, digits}) {
            // Lengths that differ too much need no closer look: hosts have many thousands of names.
            if (!text.empty() &&
                std::max(text.size(), name.compared.size()) - std::min(text.size(), name.compared.size()) <= limit) {
                distance = std::min(distance, Distance(text, name.compared));
            }
        }
        const bool isKnown =
            std::any_of(near.begin(), near.end(), [&](const auto& it) { return it.second == name.shown; });
        if (distance <= limit && !isKnown) {
            near.emplace(distance, name.shown);
            if (near.size() > MAX_SUGGESTIONS) {
                near.erase(std::prev(near.end()));
            }
        }
    });
    std::string text;
    for (const auto& [distance, name] : near) {
        text += (text.empty() ? "; did you mean " : " or ") + name;
    }
    return text.empty() ? text : text + "?";
}

/// Where the selection is one object and what is below it, keeps the object and returns true: the identifier of a
/// port is the beginning of those of its targets and LUNs.
bool KeepTop(Selection& selection) {
    const auto keepOne = [](auto& objects, auto&... below) {
        if (objects.size() == 1) {
            (below.clear(), ...);
        }
        return objects.size() == 1;
    };
    auto& adapters = selection.adapters;
    auto& ports = selection.ports;
    auto& targets = selection.targets;
    auto& luns = selection.luns;
    if (!adapters.empty()) {
        return std::all_of(ports.begin(), ports.end(), [&](auto* port) { return adapters.contains(port->adapter); }) &&
               targets.empty() && luns.empty() && keepOne(adapters, ports);
    }
    if (!ports.empty()) {
        return std::all_of(targets.begin(), targets.end(),
                           [&](auto* target) { return ports.contains(target->port); }) &&
               std::all_of(luns.begin(), luns.end(), [&](auto* lun) { return ports.contains(lun->target->port); }) &&
               keepOne(ports, targets, luns);
    }
    if (!targets.empty()) {
        return std::all_of(luns.begin(), luns.end(), [&](auto* lun) { return targets.contains(lun->target); }) &&
               keepOne(targets, luns);
    }
    return luns.size() == 1;
}

} // namespace

Selection Find(const Host& host, std::string_view name) {
    const std::string plain = Plain(name);
    const std::string digits = Digits(plain);
    Selection exact;
    Selection beginning;
    std::map<std::string, Selection> begun; // names with this beginning, as they are shown
    VisitHost(host, [&](const Name& candidate, auto select) {
        for (const std::string& text : {plain, digits}) {
            if (text.empty()) {
                continue;
            }
            if (candidate.compared == text) {
                select(exact);
            } else if (candidate.compared.starts_with(text)) {
                select(beginning);
                select(begun[candidate.shown]);
            }
        }
    });
    if (!exact.IsEmpty()) {
        return exact;
    }
    if (beginning.IsEmpty()) {
        throw Failure("nothing is named " + std::string(name) + Suggestions(host, plain, digits));
    }
    const bool isUnique =
        std::all_of(begun.begin(), begun.end(), [&](const auto& it) { return it.second == beginning; });
    if (isUnique || KeepTop(beginning)) {
        return beginning;
    }
    std::string text;
    std::size_t count = 0;
    for (const auto& [candidate, objects] : begun) {
        if (count++ == MAX_SUGGESTIONS) {
            text += " and " + std::to_string(begun.size() - MAX_SUGGESTIONS) + " more";
            break;
        }
        text += (text.empty() ? "" : ", ") + candidate;
    }
    throw Failure(std::string(name) + " is ambiguous: " + text);
}

std::vector<KnownName> NamesOf(const Host& host) {
    std::vector<KnownName> names;
    std::set<std::pair<std::string, const char*>> known;
    const auto addAll = [&](const auto& objects, const char* kind) {
        for (const auto& object : objects) {
            VisitNames(object, [&](const Name& name) {
                if (known.emplace(name.shown, kind).second) {
                    names.push_back({name.shown, kind});
                }
            });
        }
    };
    addAll(host.adapters, "adapter");
    addAll(host.ports, "port");
    addAll(host.targets, "target");
    addAll(host.luns, "lun");
    return names;
}

Selection WithRelatives(const Host& host, const Selection& selection) {
    Selection all = selection;
    for (const Lun* lun : selection.luns) {
        all.targets.insert(lun->target);
    }
    for (const Target* target : all.targets) {
        all.ports.insert(target->port);
    }
    for (const Port* port : all.ports) {
        all.adapters.insert(port->adapter);
    }
    // Downwards from what was selected itself, not from what it is of.
    Selection below = selection;
    for (const Port& port : host.ports) {
        if (below.adapters.contains(port.adapter)) {
            below.ports.insert(&port);
        }
    }
    for (const Target& target : host.targets) {
        if (below.ports.contains(target.port)) {
            below.targets.insert(&target);
        }
    }
    for (const Lun& lun : host.luns) {
        if (below.targets.contains(lun.target)) {
            below.luns.insert(&lun);
        }
    }
    all.ports.merge(below.ports);
    all.targets.merge(below.targets);
    all.luns.merge(below.luns);
    return all;
}

} // namespace orfc
