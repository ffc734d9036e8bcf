# For find_package(horivo_map CONFIG) in the unpacked ZIP, in any folder. Targets, whose last names are
# also the names of the components:
#   horivo_map::horivo_map    the DLL and its header, for MinGW and Microsoft's compiler
#   horivo_map::horivo_host   the services for hosts (static, C++20), for MinGW only
# horivo_map_RUNTIME_FILES are the files that must be beside a program: the DLL, the map picture, the
# picture of the buttons. horivo_map_RUNTIME_DIR is their folder.
cmake_minimum_required(VERSION 3.21)

# Why this build cannot use the package. CMake shows the reason when find_package fails.
set(horivo_map_refusal "")
# On Windows for ARM, CMAKE_SYSTEM_PROCESSOR may be that of the machine. Microsoft's compiler knows its
# target.
set(horivo_map_processor "${CMAKE_C_COMPILER_ARCHITECTURE_ID}${CMAKE_CXX_COMPILER_ARCHITECTURE_ID}")
if(NOT horivo_map_processor)
  set(horivo_map_processor "${CMAKE_SYSTEM_PROCESSOR}")
endif()
if(NOT WIN32)
  set(horivo_map_refusal "horivo_map.dll is for Windows; this build is for ${CMAKE_SYSTEM_NAME}")
elseif(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(horivo_map_refusal "horivo_map.dll is for 64-bit programs; this build makes a 32-bit one")
elseif(horivo_map_processor MATCHES "(ARM|arm|aarch)")
  set(horivo_map_refusal "horivo_map.dll is for x86-64 processors; this build is for ARM")
endif()

set(horivo_map_components horivo_map)
if(MINGW)
  list(APPEND horivo_map_components horivo_host)
endif()
foreach(component IN LISTS horivo_map_FIND_COMPONENTS)
  if(component IN_LIST horivo_map_components)
    set(horivo_map_${component}_FOUND TRUE)
  elseif(horivo_map_FIND_REQUIRED_${component} AND NOT horivo_map_refusal)
    set(horivo_map_refusal "for this compiler the package has no component ${component}, only: \
${horivo_map_components}")
  endif()
endforeach()

if(horivo_map_refusal)
  set(horivo_map_FOUND FALSE)
  set(horivo_map_NOT_FOUND_MESSAGE ${horivo_map_refusal})
  return()
endif()

get_filename_component(horivo_map_root ${CMAKE_CURRENT_LIST_DIR}/../../.. ABSOLUTE)
set(horivo_map_RUNTIME_DIR ${horivo_map_root}/bin)
set(horivo_map_RUNTIME_FILES horivo_map.dll map.jpg buttons.png)
list(TRANSFORM horivo_map_RUNTIME_FILES PREPEND ${horivo_map_RUNTIME_DIR}/)

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
