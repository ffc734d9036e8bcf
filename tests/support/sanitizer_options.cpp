// How the sanitizers run in every program of tests and fuzzers, whatever starts it. There is no
// list of suppressions.

// Tests ask for more memory than there is, to see what happens then: the sanitizer has to answer
// as the platform does, with null. The rest is off by itself in one release or the other.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1:detect_leaks=1:detect_stack_use_after_return=1:"
           "strict_string_checks=1:check_initialization_order=1";
}

extern "C" const char* __ubsan_default_options();
extern "C" const char* __ubsan_default_options() { return "print_stacktrace=1"; }
