# Runs the generator when the build is configured, and again whenever a file of the dictionary or of the
# generator has changed or come. A mistake in the dictionary stops the build here, with its file and line.

find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)

function(larkmoor_generate sources folder)
  file(GLOB_RECURSE inputs CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/src/*.toml ${PROJECT_SOURCE_DIR}/generator/*.py)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${inputs})
  execute_process(
    COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/generator/generate.py
      --source ${PROJECT_SOURCE_DIR}/src --output ${folder}
    OUTPUT_VARIABLE files ERROR_VARIABLE messages RESULT_VARIABLE result)
  if(messages)
    message(NOTICE "${messages}")
  endif()
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "The data dictionary has mistakes; see above.")
  endif()
  string(STRIP "${files}" files)
  string(REPLACE "\n" ";" files "${files}")
  list(FILTER files INCLUDE REGEX "\\.cpp$")
  set(${sources} ${files} PARENT_SCOPE)
endfunction()
