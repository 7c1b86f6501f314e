/// @file
/// Fault injection: the variable VEXAPI_SIM_FAULTS.
#pragma once

#include "caller/Status.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

/// The effect of a fault on a call.
struct Fault {
    enum class Kind { VALUE, NULL_POINTER, NULL_HEAD } kind;
    Status status; ///< of `Kind::Value`
};

/// A list "NAME=STATUS,NAME@N=STATUS,NAME=null,...". Counts calls for as long as it lives.
class Faults {
public:
    Faults() = default;
    /// Parses a list. Throws `std::runtime_error` with the item and the reason.
    explicit Faults(std::string_view list);

    /// Counts a call of a function and returns the fault that applies to it. A fault for this call overrides one
    /// for all calls; of two equal ones the later wins.
    std::optional<Fault> Next(std::size_t function);

private:
    struct Item {
        std::size_t function;
        std::uint64_t call; ///< 1-based; 0: every call
        Fault fault;
    };
    std::vector<Item> mItems;
    std::vector<std::uint64_t> mCalls;
};

} // namespace sim
