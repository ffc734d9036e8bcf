# For find_package(horivo_map CONFIG) in the unpacked ZIP, in any folder. Targets:
#   horivo_map::horivo_map    the DLL and its header, for MinGW and Microsoft's compiler
#   horivo_map::horivo_host   the services for hosts (static, C++20), for MinGW only
# horivo_map_RUNTIME_DIR is the folder of the DLL, which must be copied beside a program.
get_filename_component(horivo_map_root ${CMAKE_CURRENT_LIST_DIR}/../../.. ABSOLUTE)
set(horivo_map_RUNTIME_DIR ${horivo_map_root}/bin)

if(NOT TARGET horivo_map::horivo_map)
  add_library(horivo_map::horivo_map SHARED IMPORTED)
  set(horivo_map_import_library libhorivo_map.dll.a)
  if(MSVC)
    set(horivo_map_import_library horivo_map.lib)
  endif()
  set_target_properties(
    horivo_map::horivo_map
    PROPERTIES IMPORTED_LOCATION ${horivo_map_RUNTIME_DIR}/horivo_map.dll
               IMPORTED_IMPLIB ${horivo_map_root}/lib/${horivo_map_import_library}
               INTERFACE_INCLUDE_DIRECTORIES ${horivo_map_root}/include)

  if(MINGW)
    add_library(horivo_map::horivo_host STATIC IMPORTED)
    set_target_properties(
      horivo_map::horivo_host
      PROPERTIES IMPORTED_LOCATION ${horivo_map_root}/lib/libhorivo_host.a
                 IMPORTED_LINK_INTERFACE_LANGUAGES CXX
                 INTERFACE_INCLUDE_DIRECTORIES ${horivo_map_root}/include
                 INTERFACE_COMPILE_FEATURES cxx_std_20
                 INTERFACE_LINK_LIBRARIES
                 "${horivo_map_root}/lib/libhorivo_base.a;shell32;advapi32;user32")
  endif()
  unset(horivo_map_import_library)
endif()
unset(horivo_map_root)
