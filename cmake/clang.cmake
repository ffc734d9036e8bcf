# Compiles for the same Windows target with Debian's clang and the headers and libraries of Debian's
# MinGW, to get the warnings of a second compiler.
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)

# clang finds neither the C++ headers nor the run-time libraries of that compiler by itself.
set(gcc_folder "")
execute_process(COMMAND x86_64-w64-mingw32-g++-posix -print-file-name=include
                OUTPUT_VARIABLE gcc_folder OUTPUT_STRIP_TRAILING_WHITESPACE)
get_filename_component(gcc_folder ${gcc_folder} DIRECTORY)
set(cxx_headers ${gcc_folder}/include/c++)
# The linker gets these flags, too. The first and last option silence its warning that it does not
# use them.
string(JOIN " " CMAKE_CXX_FLAGS_INIT
       "--start-no-unused-arguments -nostdinc++ --end-no-unused-arguments"
       "-isystem ${cxx_headers} -isystem ${cxx_headers}/x86_64-w64-mingw32")
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-L${gcc_folder}")
endforeach()
# The C++ library and the unwinder need the thread library, which must come after them. This is a
# cache variable, because CMake would replace an ordinary one by its own list.
set(CMAKE_CXX_STANDARD_LIBRARIES
    "-lstdc++ -lgcc_eh -lwinpthread -lkernel32 -luser32 -lgdi32 -lshell32 -lole32 -ladvapi32"
    CACHE STRING "Linked into every C++ program")
