#include "caller/Faults.h"

#include "caller/Functions.h"

#include <charconv>
#include <stdexcept>

namespace sim {
namespace {

[[noreturn]] void refuse(std::string_view item, const std::string& reason) {
    throw std::runtime_error("VEXAPI_SIM_FAULTS: \"" + std::string(item) + "\": " + reason);
}

/// A decimal or 0x number that makes up the whole text.
template <class Number> bool parseNumber(std::string_view text, Number& number) {
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        base = 16;
        text.remove_prefix(2);
    }
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number, base);
    return parsed.ec == std::errc() && parsed.ptr == text.data() + text.size() && !text.empty();
}

Fault parseFault(std::string_view item, std::string_view what, std::size_t function) {
    if (what == "null") {
        if (!givesPointer(function)) {
            refuse(item, "this function hands out no pointer that could be null");
        }
        return {Fault::Kind::Null, statusOk};
    }
    if (what == "nullhead") {
        if (functionNames()[function] != "VEXAPI_GetAdapterList") {
            refuse(item, "only VEXAPI_GetAdapterList gives a list whose head could be null");
        }
        return {Fault::Kind::NullHead, statusOk};
    }
    Fault fault{Fault::Kind::Value, statusOk};
    if (!parseNumber(what, fault.status)) {
        refuse(item, "the status is neither a 32-bit number nor \"null\"");
    }
    return fault;
}

} // namespace

Faults::Faults(std::string_view list) : calls_(functionNames().size(), 0) {
    while (!list.empty()) {
        const std::string_view item = list.substr(0, list.find(','));
        list.remove_prefix(std::min(list.size(), item.size() + 1));
        const std::size_t equals = item.find('=');
        if (equals == std::string_view::npos) {
            refuse(item, "is not NAME=STATUS or NAME@N=STATUS");
        }
        std::string_view name = item.substr(0, equals);
        std::uint64_t call = 0;
        if (const std::size_t at = name.find('@'); at != std::string_view::npos) {
            if (!parseNumber(name.substr(at + 1), call) || call == 0) {
                refuse(item, "the number of the call is none, calls are counted from 1");
            }
            name = name.substr(0, at);
        }
        const std::size_t function = functionIndex(name);
        if (function == functionNames().size()) {
            refuse(item, "is no function of the library");
        }
        items_.push_back({function, call, parseFault(item, item.substr(equals + 1), function)});
    }
}

std::optional<Fault> Faults::next(std::size_t function) {
    if (function >= calls_.size()) {
        return std::nullopt;
    }
    const std::uint64_t call = ++calls_[function];
    std::optional<Fault> always;
    std::optional<Fault> thisCall;
    for (const Item& item : items_) {
        if (item.function == function && item.call == 0) {
            always = item.fault;
        } else if (item.function == function && item.call == call) {
            thisCall = item.fault;
        }
    }
    return thisCall ? thisCall : always;
}

} // namespace sim
