/// @file
/// Failures on demand: the variable VEXAPI_SIM_FAULTS.
#pragma once

#include "caller/Status.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

/// What a fault makes of a call.
struct Fault {
    enum class Kind { VALUE, NULL_POINTER, NULL_HEAD } kind;
    Status status; ///< of `Kind::Value`
};

/// A list "NAME=STATUS,NAME@N=STATUS,NAME=null,...". Calls are counted for the life of the list.
class Faults {
public:
    Faults() = default;
    /// Parses a list. Throws `std::runtime_error` with the item and the reason.
    explicit Faults(std::string_view list);

    /// Counts a call of a function and gives the fault that it meets. A fault for this very call beats one
    /// for all calls; of two equal ones the later in the list wins.
    std::optional<Fault> Next(std::size_t function);

private:
    struct Item {
        std::size_t function;
        std::uint64_t call; ///< 1-based, 0: every call
        Fault fault;
    };
    std::vector<Item> mItems;
    std::vector<std::uint64_t> mCalls;
};

} // namespace sim
