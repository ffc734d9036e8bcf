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
write_basic_package_version_file(${PROJECT_BINARY_DIR}/generated/horivo_mapConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES cmake/horivo_mapConfig.cmake
              ${PROJECT_BINARY_DIR}/generated/horivo_mapConfigVersion.cmake
        DESTINATION ${config_folder})

# The sample host with its data, beside the DLL.
install(TARGETS horivo_demo RUNTIME DESTINATION bin)
install(TARGETS res_en LIBRARY DESTINATION bin)
install(FILES assets/cities.tsv assets/city_names.tsv assets/map.jpg assets/buttons.png DESTINATION bin)
install(DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/City Photos" DESTINATION bin OPTIONAL)
foreach(language de en es fr ja ru)
  install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/horivo_demo_${language}.ini DESTINATION bin)
endforeach()

install(FILES README.md CHANGELOG.md LICENSE NOTICE.md DESTINATION .)
install(DIRECTORY docs examples DESTINATION .)
install(FILES licenses/unicode.txt DESTINATION licenses)
# The binaries contain parts of the compiler's runtime libraries, which need this notice.
set(runtime_notice /usr/share/doc/mingw-w64-common/copyright)
if(MINGW AND EXISTS ${runtime_notice})
  install(FILES ${runtime_notice} DESTINATION licenses RENAME mingw-w64.txt)
endif()

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME horivo_map)
set(CPACK_PACKAGE_FILE_NAME horivo_map-${PROJECT_VERSION}-windows-x86_64)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
set(CPACK_STRIP_FILES ON)
include(CPack)
