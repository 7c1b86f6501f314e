/// @file
/// Failing allocations of zeroed memory: the fault of a report without a block.
#pragma once

#include <cstddef>

/// Every zeroed allocation of exactly `size` bytes fails during its lifetime.
class RefusedBlock {
public:
    explicit RefusedBlock(std::size_t size);
    ~RefusedBlock();
    RefusedBlock(const RefusedBlock&) = delete;
    RefusedBlock& operator=(const RefusedBlock&) = delete;
};
