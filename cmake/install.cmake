# Components: runtime (what programs need), development (what compiling them needs), tools.
include(CMakePackageConfigHelpers)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/orvex-parse)

install(
  TARGETS orvex-parse orvex-platform
  EXPORT orvex-parse-targets
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
install(FILES include/orvex/parse.h platform/include/orvex/platform.h
              platform/include/orvex/stand_in.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orvex COMPONENT development)
install(DIRECTORY man/ DESTINATION ${CMAKE_INSTALL_MANDIR} COMPONENT development
        PATTERN man1 EXCLUDE PATTERN man5 EXCLUDE)
if(ORVEX_TOOLS)
  install(DIRECTORY man/ DESTINATION ${CMAKE_INSTALL_MANDIR} COMPONENT tools
          PATTERN man3 EXCLUDE PATTERN man7 EXCLUDE)
endif()

# find_package(orvex-parse)
install(EXPORT orvex-parse-targets NAMESPACE orvex-parse:: DESTINATION ${package_dir}
        COMPONENT development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/orvex-parse-config-version.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES cmake/orvex-parse-config.cmake
              ${PROJECT_BINARY_DIR}/orvex-parse-config-version.cmake
        DESTINATION ${package_dir} COMPONENT development)

# pkg-config: folders as seen from the file, which may be moved together with them.
file(RELATIVE_PATH include_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
     ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(cmake/orvex-parse.pc.in orvex-parse.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orvex-parse.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
