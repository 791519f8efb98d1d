# Runs COMMAND in an empty FOLDER and compares what it prints with the file EXPECTED.

file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
execute_process(COMMAND ${COMMAND} WORKING_DIRECTORY ${FOLDER}
  OUTPUT_VARIABLE printed ERROR_VARIABLE complaint RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "It ended with ${result}:\n${printed}${complaint}")
endif()
file(READ ${EXPECTED} expected)
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "It printed:\n${printed}\ninstead of:\n${expected}")
endif()
file(REMOVE_RECURSE ${FOLDER})
