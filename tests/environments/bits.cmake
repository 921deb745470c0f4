# Compares what PROGRAM prints with the file KEPT. With other samples there is nothing to compare.
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE now COMMAND_ERROR_IS_FATAL ANY)
file(READ ${KEPT} kept)
string(REGEX MATCH "samples [^\n]*" samples "${kept}")
if(NOT now MATCHES "${samples}")
    message("skipped: exp or log of this C library makes other samples")
elseif(NOT now STREQUAL kept)
    message(FATAL_ERROR "These are not the bits in ${KEPT}:\n${now}A change of digits on purpose changes that file.")
endif()
