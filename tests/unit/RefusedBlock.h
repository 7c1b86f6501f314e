/// @file
/// Cleared memory that can't be had: the fault of a report that gets no block.
#pragma once

#include <cstddef>

/// Every cleared allocation of exactly `size` bytes fails during its lifetime.
class RefusedBlock {
public:
    explicit RefusedBlock(std::size_t size);
    ~RefusedBlock();
    RefusedBlock(const RefusedBlock&) = delete;
    RefusedBlock& operator=(const RefusedBlock&) = delete;
};
