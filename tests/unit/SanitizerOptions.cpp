#ifdef __SANITIZE_ADDRESS__
/// An allocation above 3 GiB, or one that fails, returns null, as it may without the sanitizer.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1:max_allocation_size_mb=3072";
}
#endif
