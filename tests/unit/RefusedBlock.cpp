#include "RefusedBlock.h"

#include <cerrno>

namespace {

std::size_t refusedSize = 0;

} // namespace

#ifdef __SANITIZE_ADDRESS__

bool RefusedBlock::IsPossible() {
    return false;
}

#else

extern "C" void* __libc_calloc(std::size_t count, std::size_t size) noexcept;

extern "C" void* calloc(std::size_t count, std::size_t size) noexcept {
    if (refusedSize != 0 && count == refusedSize && size == 1) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_calloc(count, size);
}

bool RefusedBlock::IsPossible() {
    return true;
}

#endif

RefusedBlock::RefusedBlock(std::size_t size) {
    refusedSize = size;
}
RefusedBlock::~RefusedBlock() {
    refusedSize = 0;
}
