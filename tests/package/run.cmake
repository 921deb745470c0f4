# Installs the build BUILD_DIR into WORK_DIR, builds the project beside this file against the copy, and runs it.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\n${output}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${WORK_DIR}/build -G Ninja
    -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix
    -DCMAKE_C_COMPILER=${C_COMPILER} -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
    "-DCMAKE_C_FLAGS=${C_FLAGS}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/consumer)

# By pkg-config, which the copy's own file tells where the copy is.
find_program(pkg_config pkg-config)
if(pkg_config)
    file(GLOB_RECURSE pc_file ${WORK_DIR}/prefix/*.pc)
    execute_process(COMMAND ${pkg_config} --cflags --libs ${pc_file} OUTPUT_VARIABLE flags
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND ${pkg_config} --variable=libdir ${pc_file} OUTPUT_VARIABLE libdir
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(arguments UNIX_COMMAND "-std=c++20 ${CXX_FLAGS} ${flags} -Wl,-rpath,${libdir}")
    run(${CXX_COMPILER} ${CMAKE_CURRENT_LIST_DIR}/consumer.cpp ${arguments} -o ${WORK_DIR}/pkg_config_consumer)
    run(${WORK_DIR}/pkg_config_consumer)
else()
    message("pkg-config is not installed: its file was not tried")
endif()

# As a part of the other project's own tree; once is enough, it compiles everything.
if(CXX_FLAGS STREQUAL "")
    run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/subdirectory -B ${WORK_DIR}/subdirectory -G Ninja
        -DVEXROCPROC_SOURCE_DIR=${SOURCE_DIR}
        -DCMAKE_C_COMPILER=${C_COMPILER} -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
        "-DCMAKE_C_FLAGS=${C_FLAGS}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
    run(${CMAKE_COMMAND} --build ${WORK_DIR}/subdirectory)
    run(${WORK_DIR}/subdirectory/consumer)
endif()
