/// Counters of ports and targets, and what moved between two readings.
#include "Command.h"

#include <algorithm>

namespace orfc {

namespace {

struct CounterRow {
    std::string port;
    std::string target; ///< empty: the port's own
    std::string counter;
    std::uint64_t value;
    std::optional<std::uint64_t> increase; ///< none for the first reading, and for a counter that went back
    std::optional<double> perSecond;
};

// clang-format off
constexpr ColumnOf<CounterRow> COUNTER[] = {
    {{"port", "PORT", Type::TEXT, Place::HEADING, "Counter", "Identifier of the port"}, [](const CounterRow& r) { return TextValue(r.port); }},
    {{"target", "TARGET", Type::TEXT, Place::HEADING, "Counter", "Worldwide name of the storage port, unknown for the port's own counters"}, [](const CounterRow& r) { return TextValue(r.target); }},
    {{"counter", "COUNTER", Type::TEXT, Place::ALWAYS, "Counter", "Name of the counter"}, [](const CounterRow& r) { return TextValue(r.counter); }},
    {{"value", "VALUE", Type::INTEGER, Place::ALWAYS, "Counter", "What it counts now"}, [](const CounterRow& r) { return Value(r.value); }},
    {{"increase", "INCREASE", Type::INTEGER, Place::TABLE, "Counter", "Increase since the last reading, unknown for the first one and for a counter that went back"}, [](const CounterRow& r) { return r.increase ? Value(*r.increase) : Value(); }},
    {{"increase_per_second", "PER SECOND", Type::DECIMAL, Place::TABLE, "Counter", "The same for each second"}, [](const CounterRow& r) { return r.perSecond ? Value(Decimal{*r.perSecond, 1}) : Value(); }},
};
// clang-format on

const Counters* CountersOf(const Host* host, const std::string& identifier, bool isTarget) {
    const auto find = [&](const auto& objects) -> const Counters* {
        const auto object =
            std::find_if(objects.begin(), objects.end(), [&](const auto& it) { return it.identifier == identifier; });
        return object != objects.end() ? &object->counters : nullptr;
    };
    return host == nullptr ? nullptr : isTarget ? find(host->targets) : find(host->ports);
}

/// With an earlier reading, those that differ from it; otherwise all.
void AddRows(const Counters& counters, const Counters* before, const Request& request, const std::string& port,
             const std::string& target, std::vector<CounterRow>& rows) {
    for (const auto& [name, value] : counters) {
        CounterRow row{port, target, name, value, {}, {}};
        if (request.before != nullptr) {
            const auto known = before != nullptr ? before->find(name) : counters.end();
            if (before == nullptr || known == before->end() || known->second == value) {
                continue;
            }
            if (value > known->second) {
                row.increase = value - known->second;
                row.perSecond = static_cast<double>(*row.increase) / request.seconds;
            }
        }
        rows.push_back(std::move(row));
    }
}

} // namespace

void AddCounters(const Request& request, const std::vector<const Port*>& ports,
                 const std::vector<const Target*>& targets, Shown& shown) {
    std::vector<CounterRow> rows;
    for (const Port& port : request.host.ports) {
        if (std::find(ports.begin(), ports.end(), &port) != ports.end()) {
            AddRows(port.counters, CountersOf(request.before, port.identifier, false), request, port.identifier, "",
                    rows);
        }
        for (const Target* target : targets) {
            if (target->port == &port) {
                AddRows(target->counters, CountersOf(request.before, target->identifier, true), request,
                        port.identifier, WwnText(target->portName), rows);
            }
        }
    }
    shown.AddRows<CounterRow>("counter", COUNTER, std::move(rows));
}

Shown ShowCounters(const Request& request) {
    Shown shown;
    AddCounters(request, PortsOf(request), TargetsOf(request), shown);
    return shown;
}

} // namespace orfc
