# Compares what PROGRAM prints with the file KEPT, and with what it prints without what the C library has for newer
# processors.
foreach(processor own plain)
    if(processor STREQUAL "plain")
        set(ENV{GLIBC_TUNABLES} glibc.cpu.hwcaps=-FMA,-FMA4,-AVX2,-AVX,-AVX512F)
    endif()
    execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE now COMMAND_ERROR_IS_FATAL ANY)
    file(READ ${KEPT} kept)
    if(NOT now STREQUAL kept)
        message(FATAL_ERROR
            "On the ${processor} processor these are not the bits in ${KEPT}:\n${now}"
            "A change of digits on purpose changes that file.")
    endif()
endforeach()
