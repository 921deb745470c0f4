# What a host application gets: both libraries, their headers, a package for find_package(vexrocproc) and pkg-config,
# and the licences.
include(CMakePackageConfigHelpers)

install(TARGETS vexcommon920r vexrocproc920r EXPORT vexrocproc-targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    # The host headers are included as "host/Record.h": they live under a folder of the library's own name.
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vexroc920 COMPONENT development)
set_target_properties(vexrocproc920r PROPERTIES INSTALL_RPATH "$ORIGIN")
install(EXPORT vexrocproc-targets NAMESPACE vexrocproc:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vexrocproc
    COMPONENT development)

write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/vexrocprocConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/vexrocprocConfig.cmake
    "include(\${CMAKE_CURRENT_LIST_DIR}/vexrocproc-targets.cmake)\n")
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/vexrocprocConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/vexrocprocConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vexrocproc COMPONENT development)

# An installed copy may be moved: the paths start where the .pc file lies.
file(RELATIVE_PATH prefix_from_pkgconfig ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/vexrocproc.pc.in vexrocproc.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vexrocproc.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT development)

# Debian packages take their licences from cmake/packages.cmake, each under its own name.
install(FILES LICENSE cmake/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT licences)
