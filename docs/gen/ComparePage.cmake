# Fails when PAGE is not what PROGRAM prints.
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
file(READ ${PAGE} page)
if(NOT printed STREQUAL page)
    message(FATAL_ERROR "${PAGE} is not what ${PROGRAM} prints; build the target docs_values")
endif()
