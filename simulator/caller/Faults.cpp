#include "caller/Faults.h"

#include "caller/Functions.h"

#include <charconv>
#include <stdexcept>

namespace sim {
namespace {

[[noreturn]] void Refuse(std::string_view item, const std::string& reason) {
    throw std::runtime_error("VEXAPI_SIM_FAULTS: \"" + std::string(item) + "\": " + reason);
}

/// Parses the whole text as a decimal or 0x number.
template <class Number> bool ParseNumber(std::string_view text, Number& number) {
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        base = 16;
        text.remove_prefix(2);
    }
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number, base);
    return parsed.ec == std::errc() && parsed.ptr == text.data() + text.size() && !text.empty();
}

Fault ParseFault(std::string_view item, std::string_view what, std::size_t function) {
    if (what == "null") {
        if (!GivesPointer(function)) {
            Refuse(item, "this function hands out no pointer that could be null");
        }
        return {Fault::Kind::NULL_POINTER, STATUS_OK};
    }
    if (what == "nullhead") {
        if (FunctionNames()[function] != "VEXAPI_GetAdapterList") {
            Refuse(item, "only VEXAPI_GetAdapterList gives a list whose head could be null");
        }
        return {Fault::Kind::NULL_HEAD, STATUS_OK};
    }
    Fault fault{Fault::Kind::VALUE, STATUS_OK};
    if (!ParseNumber(what, fault.status)) {
        Refuse(item, "the status is neither a 32-bit number nor \"null\"");
    }
    return fault;
}

} // namespace

Faults::Faults(std::string_view list) : mCalls(FunctionNames().size(), 0) {
    while (!list.empty()) {
        const std::string_view item = list.substr(0, list.find(','));
        list.remove_prefix(std::min(list.size(), item.size() + 1));
        const std::size_t equals = item.find('=');
        if (equals == std::string_view::npos) {
            Refuse(item, "is not NAME=STATUS or NAME@N=STATUS");
        }
        std::string_view name = item.substr(0, equals);
        std::uint64_t call = 0;
        if (const std::size_t at = name.find('@'); at != std::string_view::npos) {
            if (!ParseNumber(name.substr(at + 1), call) || call == 0) {
                Refuse(item, "the number of the call is none, calls are counted from 1");
            }
            name = name.substr(0, at);
        }
        const std::size_t function = FunctionIndex(name);
        if (function == FunctionNames().size()) {
            Refuse(item, "is no function of the library");
        }
        mItems.push_back({function, call, ParseFault(item, item.substr(equals + 1), function)});
    }
}

std::optional<Fault> Faults::Next(std::size_t function) {
    if (function >= mCalls.size()) {
        return std::nullopt;
    }
    const std::uint64_t call = ++mCalls[function];
    std::optional<Fault> always;
    std::optional<Fault> thisCall;
    for (const Item& item : mItems) {
        if (item.function == function && item.call == 0) {
            always = item.fault;
        } else if (item.function == function && item.call == call) {
            thisCall = item.fault;
        }
    }
    return thisCall ? thisCall : always;
}

} // namespace sim
