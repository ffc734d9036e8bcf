# A file's ring is decided by its name: the shell's files end in _win, everything else in src is
# core and builds on every platform. Each ring is one static library.
file(GLOB_RECURSE all_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/*.cpp)
set(core_sources ${all_sources})
list(FILTER core_sources EXCLUDE REGEX "_win\\.cpp$")
set(shell_sources ${all_sources})
list(FILTER shell_sources INCLUDE REGEX "_win\\.cpp$")
# The face holds what must be compiled into the DLL itself: its exports and its entry point.
set(face_sources ${shell_sources})
list(FILTER face_sources INCLUDE REGEX "/(exports|dll_main)_win\\.cpp$")
list(REMOVE_ITEM shell_sources ${face_sources})
# Services shared with the host application.
set(host_sources ${shell_sources})
list(FILTER host_sources INCLUDE REGEX "/src/host/")
list(REMOVE_ITEM shell_sources ${host_sources})

add_library(horivo_core STATIC ${core_sources})
target_include_directories(horivo_core PUBLIC ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/include)
target_link_libraries(horivo_core PUBLIC horivo_options)

if(WIN32)
  # The library's own header declares the functions for import; inside they are plain.
  target_compile_definitions(horivo_core PUBLIC HORIVO_MAP_BUILD
                                                HORIVO_PHOTO_SITE=L"${HORIVO_PHOTO_SITE}")

  add_library(horivo_host STATIC ${host_sources})
  target_include_directories(horivo_host PUBLIC ${CMAKE_SOURCE_DIR}/src
                                                ${CMAKE_SOURCE_DIR}/include)
  target_link_libraries(horivo_host PUBLIC horivo_options advapi32)

  add_library(horivo_shell STATIC ${shell_sources})
  target_link_libraries(horivo_shell PUBLIC horivo_core horivo_host gdiplus glu32 opengl32 gdi32
                                            user32 shell32 advapi32)

  # The core declares a few doors (pictures, code pages) that the shell opens.
  target_link_libraries(horivo_core INTERFACE horivo_shell)

  add_library(horivo_map SHARED ${face_sources} ${CMAKE_SOURCE_DIR}/src/interface/horivo_map.rc
                                ${CMAKE_SOURCE_DIR}/src/interface/horivo_map.def)
  target_link_libraries(horivo_map PRIVATE horivo_shell)
  target_include_directories(horivo_map INTERFACE ${CMAKE_SOURCE_DIR}/include)
  set_target_properties(horivo_map PROPERTIES PREFIX "")
endif()
