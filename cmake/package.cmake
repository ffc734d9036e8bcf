# Contents of the ZIP that tools/make_package.sh makes. The programs in `bin` run as they are. Hosts
# find `lib` and `include` with find_package(horivo_map CONFIG).
include(CMakePackageConfigHelpers)

# Import libraries: MinGW's linker makes its own; Microsoft's linker needs another one.
find_program(HORIVO_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14)
set(msvc_import_library ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/horivo_map.lib)
set(export_list ${PROJECT_SOURCE_DIR}/src/api/horivo_map.def)
if(MINGW AND HORIVO_DLLTOOL)
  add_custom_command(
    OUTPUT ${msvc_import_library}
    COMMAND ${HORIVO_DLLTOOL} -m i386:x86-64 -d ${export_list} -D horivo_map.dll
            -l ${msvc_import_library}
    DEPENDS ${export_list})
  add_custom_target(horivo_msvc_import_library DEPENDS ${msvc_import_library})
  install(FILES ${msvc_import_library} DESTINATION lib)
endif()

install(TARGETS horivo_map RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
if(MINGW)
  # C++ libraries can be used only with the compiler that built them.
  install(TARGETS horivo_host horivo_base ARCHIVE DESTINATION lib)
endif()
install(FILES include/horivo_map.h include/horivo_host.h DESTINATION include)

set(config_folder lib/cmake/horivo_map)
# ARCH_INDEPENDENT leaves it to horivo_mapConfig.cmake to refuse 32-bit builds, because that file can
# say why.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/generated/horivo_mapConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(FILES cmake/horivo_mapConfig.cmake
              ${PROJECT_BINARY_DIR}/generated/horivo_mapConfigVersion.cmake
        DESTINATION ${config_folder})
configure_file(cmake/horivo_map.pc.in ${PROJECT_BINARY_DIR}/generated/horivo_map.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/generated/horivo_map.pc DESTINATION lib/pkgconfig)

# The sample host with its data, beside the DLL.
install(TARGETS horivo_demo RUNTIME DESTINATION bin)
install(TARGETS res_en LIBRARY DESTINATION bin)
install(FILES assets/cities.tsv assets/city_names.tsv assets/map.jpg assets/buttons.png DESTINATION bin)
install(DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/City Photos" DESTINATION bin OPTIONAL)
foreach(language de en es fr ja ru)
  install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/horivo_demo_${language}.ini DESTINATION bin)
endforeach()

# Which C run-time library the static libraries need.
include(CheckCXXSymbolExists)
check_cxx_symbol_exists(_UCRT corecrt.h horivo_uses_ucrt)
set(c_runtime msvcrt)
if(horivo_uses_ucrt)
  set(c_runtime UCRT)
endif()
configure_file(cmake/lib_readme.txt.in ${PROJECT_BINARY_DIR}/generated/lib/README.txt @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/generated/lib/README.txt DESTINATION lib)

# Texts. The README of the repository names files that are not in the ZIP.
configure_file(cmake/package_readme.md.in ${PROJECT_BINARY_DIR}/generated/README.md @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/generated/README.md CHANGELOG.md LICENSE NOTICE.md DESTINATION .)
install(DIRECTORY examples licenses DESTINATION .)
install(FILES docs/host-guide.md docs/user-guide.md docs/file-formats.md docs/language-files.md
              docs/Doxyfile
        DESTINATION docs)
install(FILES docs/pictures/globe.jpg DESTINATION docs/pictures)

# Sources of the DLL and the services. Another build includes them with add_subdirectory or
# FetchContent.
install(FILES CMakeLists.txt LICENSE DESTINATION source)
install(DIRECTORY include src DESTINATION source)
install(FILES cmake/version.cmake cmake/compiler_options.cmake DESTINATION source/cmake)
install(PROGRAMS tools/set_load_config.py DESTINATION source/tools)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME horivo_map)
set(CPACK_PACKAGE_FILE_NAME horivo_map-${PROJECT_VERSION}-windows-x86_64)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
set(CPACK_STRIP_FILES ON)
include(CPack)
