# One set of options for every target of the project: warnings are errors, and floating-point
# contraction is off so that native tests see the numbers that Windows sees.
add_library(horivo_options INTERFACE)
if(MSVC)
  target_compile_options(horivo_options INTERFACE /W4 /WX /permissive- /fp:precise /utf-8
                                                  /guard:cf)
  target_link_options(horivo_options INTERFACE /GUARD:CF /CETCOMPAT)
else()
  target_compile_options(
    horivo_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
                             -ffp-contract=off)
  # Two builds of one commit are alike, wherever they were made.
  target_compile_options(horivo_options INTERFACE -ffile-prefix-map=${PROJECT_BINARY_DIR}=build
                                                  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
endif()
if(WIN32)
  target_compile_definitions(horivo_options INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0A00
                                                      WINVER=0x0A00)
endif()
if(MINGW)
  # The C++ runtime and the thread library are linked in: a host needs nothing but Windows.
  target_link_options(horivo_options INTERFACE -static)
  # Hardened images at no cost at run time. GCC has no control-flow protection for Windows.
  target_link_options(horivo_options INTERFACE -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
  # Linked twice, alike: no time of the link in the image.
  add_link_options(-Wl,--no-insert-timestamp)
endif()
if(HORIVO_SANITIZE)
  # Conversions of numbers out of range are not among GCC's undefined behaviour.
  set(sanitizers -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all
                 -fno-omit-frame-pointer)
  if(HORIVO_FUZZ)
    list(APPEND sanitizers -fsanitize=fuzzer-no-link)
  endif()
  target_compile_options(horivo_options INTERFACE ${sanitizers})
  target_link_options(horivo_options INTERFACE ${sanitizers})
  # The standard library checks its indices and iterators too.
  target_compile_definitions(horivo_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(HORIVO_SANITIZE_THREADS)
  target_compile_options(horivo_options INTERFACE -fsanitize=thread)
  target_link_options(horivo_options INTERFACE -fsanitize=thread)
endif()
