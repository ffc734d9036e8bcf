# One set of options for every target of the project: warnings are errors, and floating-point
# contraction is off so that native tests see the numbers that Windows sees.
add_library(horivo_options INTERFACE)
if(MSVC)
  target_compile_options(horivo_options INTERFACE /W4 /WX /permissive- /fp:precise /utf-8)
else()
  target_compile_options(
    horivo_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
                             -ffp-contract=off)
endif()
if(WIN32)
  target_compile_definitions(horivo_options INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0A00
                                                      WINVER=0x0A00)
endif()
if(MINGW)
  # The C++ runtime and the thread library are linked in: a host needs nothing but Windows.
  target_link_options(horivo_options INTERFACE -static)
  # Unwind tables and hardened images at no cost at run time.
  target_link_options(horivo_options INTERFACE -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
endif()
if(HORIVO_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(horivo_options INTERFACE ${sanitizers})
  target_link_options(horivo_options INTERFACE ${sanitizers})
endif()
if(HORIVO_SANITIZE_THREADS)
  target_compile_options(horivo_options INTERFACE -fsanitize=thread)
  target_link_options(horivo_options INTERFACE -fsanitize=thread)
endif()
