# A file's ring is decided by its name: the shell's files end in _win, everything else in src is
# core and builds on every platform. Each ring is one static library.
file(GLOB_RECURSE all_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/*.cpp)
if(NOT WIN32)
  list(FILTER all_sources EXCLUDE REGEX "_win\\.cpp$")
endif()
if(NOT MINGW)
  # What its compiler and linker leave to the program; others bring it along.
  list(FILTER all_sources EXCLUDE REGEX "/(stack_guard|load_config|exception_memory)_win\\.cpp$")
endif()
# What every ring stands on, and the services shared with the host application: two libraries of
# their own, because a host links them without core and shell.
set(base_sources ${all_sources})
list(FILTER base_sources INCLUDE REGEX "/src/base/")
set(host_sources ${all_sources})
list(FILTER host_sources INCLUDE REGEX "/src/host/")
list(REMOVE_ITEM all_sources ${base_sources} ${host_sources})

set(core_sources ${all_sources})
list(FILTER core_sources EXCLUDE REGEX "_win\\.cpp$")
set(shell_sources ${all_sources})
list(FILTER shell_sources INCLUDE REGEX "_win\\.cpp$")
# The face holds what must be compiled into the DLL itself: its exports and its entry point.
set(face_sources ${shell_sources})
list(FILTER face_sources INCLUDE REGEX
     "/(exports|dll_main|load_config|exception_memory)_win\\.cpp$")
list(REMOVE_ITEM shell_sources ${face_sources})

add_library(horivo_base STATIC ${base_sources})
target_include_directories(horivo_base PUBLIC ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/include)
target_link_libraries(horivo_base PUBLIC horivo_options)
if(MINGW)
  # Functions with buffers notice when one has run over; see src/base/stack_guard_win.cpp.
  target_compile_options(horivo_base PUBLIC -fstack-protector-strong)
endif()

add_library(horivo_host STATIC ${host_sources})
target_link_libraries(horivo_host PUBLIC horivo_base)

add_library(horivo_core STATIC ${core_sources})
target_link_libraries(horivo_core PUBLIC horivo_base)

if(WIN32)
  # The library's own header declares the functions for import; inside they are plain.
  target_compile_definitions(horivo_core PUBLIC HORIVO_MAP_BUILD
                                                HORIVO_PHOTO_SITE=L"${HORIVO_PHOTO_SITE}")
  target_link_libraries(horivo_base PUBLIC shell32)
  target_link_libraries(horivo_host PUBLIC advapi32)

  add_library(horivo_shell STATIC ${shell_sources})
  target_link_libraries(horivo_shell PUBLIC horivo_core horivo_host gdiplus glu32 opengl32 gdi32
                                            user32 shell32 advapi32)

  # The core declares a few doors (pictures, photo files) that the shell opens.
  target_link_libraries(horivo_core INTERFACE horivo_shell)

  string(REPLACE . , horivo_version_numbers ${PROJECT_VERSION}.0)
  configure_file(${CMAKE_SOURCE_DIR}/src/interface/horivo_map.rc.in
                 ${CMAKE_BINARY_DIR}/generated/horivo_map.rc @ONLY)
  add_library(horivo_map SHARED ${face_sources} ${CMAKE_BINARY_DIR}/generated/horivo_map.rc
                                ${CMAKE_SOURCE_DIR}/src/interface/horivo_map.def)
  target_link_libraries(horivo_map PRIVATE horivo_shell)
  target_include_directories(horivo_map INTERFACE ${CMAKE_SOURCE_DIR}/include)
  set_target_properties(horivo_map PROPERTIES PREFIX "")
  if(MINGW)
    add_custom_command(
      TARGET horivo_map POST_BUILD
      COMMAND ${CMAKE_SOURCE_DIR}/tools/set_load_config.py ${CMAKE_NM} $<TARGET_FILE:horivo_map>
      VERBATIM)
  elseif(MSVC)
    # 0x800: what it is linked to is looked for in the system's folder alone.
    target_link_options(horivo_map PRIVATE /DEPENDENTLOADFLAG:0x800)
  endif()
endif()
