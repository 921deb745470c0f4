# What a host application gets: both libraries, their headers, and a package for find_package(vexrocproc).
include(CMakePackageConfigHelpers)

install(TARGETS vexcommon920r vexrocproc920r EXPORT vexrocproc-targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    # The host headers are included as "host/Record.h": they live under a folder of the library's own name.
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vexroc920)
set_target_properties(vexrocproc920r PROPERTIES INSTALL_RPATH "$ORIGIN")
install(EXPORT vexrocproc-targets NAMESPACE vexrocproc:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vexrocproc)

write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/vexrocprocConfigVersion.cmake COMPATIBILITY SameMajorVersion)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/vexrocprocConfig.cmake
    "include(\${CMAKE_CURRENT_LIST_DIR}/vexrocproc-targets.cmake)\n")
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/vexrocprocConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/vexrocprocConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vexrocproc)
