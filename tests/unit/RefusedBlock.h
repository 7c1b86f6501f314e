/// @file
/// Cleared memory that can't be had: the fault of a report that gets no block.
#pragma once

#include <cstddef>

/// Every cleared allocation of exactly `size` bytes fails during its lifetime. Under the address sanitizer, which has
/// an allocator of its own, `IsPossible` is false and nothing fails.
class RefusedBlock {
public:
    explicit RefusedBlock(std::size_t size);
    ~RefusedBlock();
    RefusedBlock(const RefusedBlock&) = delete;
    RefusedBlock& operator=(const RefusedBlock&) = delete;

    static bool IsPossible();
};
