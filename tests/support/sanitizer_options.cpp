// Tests ask for more memory than there is, to see what happens then: the sanitizer has to answer
// as the platform does, with null.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }
