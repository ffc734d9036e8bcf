# The options of every target of the project. Floating-point contraction is off, so that native tests
# compute the same numbers as Windows.
add_library(horivo_options INTERFACE)
# Warnings are errors, but not in the build of a host, whose compiler may know other warnings.
set(warnings_are_errors "")
if(PROJECT_IS_TOP_LEVEL)
  set(warnings_are_errors $<IF:$<BOOL:${MSVC}>,/WX,-Werror>)
endif()
if(MSVC)
  target_compile_options(horivo_options INTERFACE /W4 ${warnings_are_errors} /permissive-
                                                  /fp:precise /utf-8 /guard:cf)
  target_link_options(horivo_options INTERFACE /GUARD:CF /CETCOMPAT)
else()
  target_compile_options(
    horivo_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                             ${warnings_are_errors} -ffp-contract=off)
  # Two builds of one commit are identical, whatever their folders are.
  target_compile_options(horivo_options INTERFACE -ffile-prefix-map=${PROJECT_BINARY_DIR}=build
                                                  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
endif()
if(WIN32)
  target_compile_definitions(horivo_options INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0A00
                                                      WINVER=0x0A00)
endif()
if(MINGW)
  # Links the C++ runtime and the thread library statically: a host needs nothing but Windows.
  target_link_options(horivo_options INTERFACE -static)
  # Security options that cost no time. GCC has no control-flow protection for Windows.
  target_link_options(horivo_options INTERFACE -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
  # No time of the link in the image, so that linking twice gives the same bytes.
  add_link_options(-Wl,--no-insert-timestamp)
endif()
if(HORIVO_SANITIZE)
  # GCC's "undefined" group does not include float-cast-overflow.
  set(sanitizers -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all
                 -fno-omit-frame-pointer)
  if(HORIVO_FUZZ)
    list(APPEND sanitizers -fsanitize=fuzzer-no-link)
  endif()
  target_compile_options(horivo_options INTERFACE ${sanitizers})
  target_link_options(horivo_options INTERFACE ${sanitizers})
  # Makes the standard library check its indices and iterators, too.
  target_compile_definitions(horivo_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(HORIVO_SANITIZE_THREADS)
  target_compile_options(horivo_options INTERFACE -fsanitize=thread)
  target_link_options(horivo_options INTERFACE -fsanitize=thread)
endif()
