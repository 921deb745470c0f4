# The report page: libraries from npm, bundled with the page's own script into one source file. Done while configuring,
# so that a build without npm, or without a network, still makes the program; its --report then says what is missing.
# Leaves the source to compile in report_page_source.
set(report_page_source picture/noPage.cpp)
set(page_dir ${CMAKE_CURRENT_SOURCE_DIR}/report/page)
set(page_build_dir ${CMAKE_CURRENT_BINARY_DIR}/page)
set(page_files package.json package-lock.json .npmrc bundle.mjs page.js page.css)
list(TRANSFORM page_files PREPEND ${page_dir}/ OUTPUT_VARIABLE page_paths)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${page_paths})

find_program(NPM npm)
find_program(NODE node)
if(NPM AND NODE)
    set(page_state "")
    foreach(path IN LISTS page_paths)
        file(SHA256 ${path} hash)
        string(APPEND page_state ${hash})
    endforeach()
    set(page_stamp ${page_build_dir}/bundled)
    set(bundled_state "")
    if(EXISTS ${page_stamp})
        file(READ ${page_stamp} bundled_state)
    endif()
    if(NOT bundled_state STREQUAL page_state)
        file(COPY ${page_paths} DESTINATION ${page_build_dir})
        execute_process(
            COMMAND ${NPM} ci --ignore-scripts --no-audit --no-fund --loglevel=error
                --fetch-retries=1 --fetch-retry-mintimeout=1000 --fetch-retry-maxtimeout=5000
            WORKING_DIRECTORY ${page_build_dir}
            OUTPUT_QUIET ERROR_VARIABLE page_message RESULT_VARIABLE page_result TIMEOUT 180)
        if(page_result EQUAL 0)
            execute_process(COMMAND ${NODE} bundle.mjs page.cpp WORKING_DIRECTORY ${page_build_dir}
                ERROR_VARIABLE page_message RESULT_VARIABLE page_result)
        endif()
        if(page_result EQUAL 0)
            file(WRITE ${page_stamp} ${page_state})
            set(bundled_state ${page_state})
        else()
            string(REGEX MATCH "[^\n]*" page_message "${page_message}")
            message(STATUS "Report page: npm could not fetch or bundle its libraries: ${page_message}")
        endif()
    endif()
    if(bundled_state STREQUAL page_state)
        set(report_page_source ${page_build_dir}/page.cpp)
        # One long text: compilers need not take it, those of the presets do.
        set_source_files_properties(${report_page_source} PROPERTIES COMPILE_OPTIONS -Wno-overlength-strings)
    endif()
else()
    message(STATUS "Report page: npm is not installed")
endif()
if(report_page_source STREQUAL picture/noPage.cpp)
    message(STATUS "Report page: left out; vexroc --report will say so")
endif()
