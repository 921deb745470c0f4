# Debian packages, made by cpack; tools/check_packages.sh makes and tries them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vexroc)
set(CPACK_PACKAGE_CONTACT "The vexroc authors <vexroc@localhost>")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_SECTION math)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # otherwise the first line of every description

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libvexrocproc920r-${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "ROC analysis component, shared libraries
Curves, areas with inference, and comparisons, for host applications and for callers of plain C functions.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvexrocproc920r-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "ROC analysis component, development files
Headers, CMake package and pkg-config file of the shared libraries.")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
if(VEXROC_BUILD_CLI)
    list(APPEND CPACK_COMPONENTS_ALL program)
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME vexroc)
    set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "ROC analysis at the command line
Areas, comparisons and curves from delimited text, SQLite and PostgreSQL; with manual pages and completions.")
    set(CPACK_COMPONENT_PROGRAM_DEPENDS runtime)
    # Opened when they are first needed: pictures as PDF and PNG, packed text, data from PostgreSQL.
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS "librsvg2-2, zlib1g, libarchive13, libpq5")
endif()
install(DIRECTORY bindings/python/vexroc DESTINATION lib/python3/dist-packages COMPONENT python EXCLUDE_FROM_ALL
    FILES_MATCHING PATTERN "*.py" PATTERN "py.typed" PATTERN __pycache__ EXCLUDE)
list(APPEND CPACK_COMPONENTS_ALL python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-vexroc)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.10), python3-numpy (>= 1:1.22)")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS python3-matplotlib)
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "ROC analysis for Python
The package vexroc: curves, areas, comparisons and whole analyses over lists, NumPy arrays and pandas columns.")
set(CPACK_COMPONENT_PYTHON_DEPENDS runtime)

# Debian has the licence itself in /usr/share/common-licenses.
foreach(component ${CPACK_COMPONENTS_ALL})
    string(TOUPPER ${component} name)
    install(FILES cmake/copyright DESTINATION share/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME}
        COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()
include(CPack)
