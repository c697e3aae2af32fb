# Fails unless the library exports REALPluginMain and nothing else: cmake -D nm=NM -D library=FILE -P exports.cmake
execute_process(COMMAND ${nm} -D --defined-only ${library} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(STRIP "${symbols}" symbols)
if(NOT symbols MATCHES "^[0-9a-f]+ T REALPluginMain$")
  message(FATAL_ERROR "The library exports:\n${symbols}")
endif()
