#include "RefusedBlock.h"

#include <cerrno>

namespace {

std::size_t s_refusedSize = 0;

} // namespace

// The underlying `calloc`: the address sanitizer has its own allocator.
#ifdef __SANITIZE_ADDRESS__
#define PLAIN_CALLOC __interceptor_calloc
#else
#define PLAIN_CALLOC __libc_calloc
#endif

extern "C" void* PLAIN_CALLOC(std::size_t count, std::size_t size) noexcept;

extern "C" void* calloc(std::size_t count, std::size_t size) noexcept {
    if (s_refusedSize != 0 && count == s_refusedSize && size == 1) {
        errno = ENOMEM;
        return nullptr;
    }
    return PLAIN_CALLOC(count, size);
}

RefusedBlock::RefusedBlock(std::size_t size) {
    s_refusedSize = size;
}
RefusedBlock::~RefusedBlock() {
    s_refusedSize = 0;
}
