# The program switchsim is linked with the C and C++ runtime alone: cmake -DREADELF=readelf -DPROGRAM=file -P ...
# readelf reads programs of any machine.
execute_process(COMMAND ${READELF} --wide --dynamic ${PROGRAM} OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\\(NEEDED\\)[^\n]*" needed "${listing}")
list(TRANSFORM needed REPLACE ".*\\[(.*)\\]" "\\1")
if(NOT "${needed}" MATCHES "(^|;)libc\\.so\\.")
  message(FATAL_ERROR "${PROGRAM}: expected libc among the libraries that it is linked with, but they are: ${needed}")
endif()
list(FILTER needed EXCLUDE REGEX "^(lib(c|m|gcc_s|stdc\\+\\+)|ld[^/]*)\\.so\\.[0-9]+$")
list(FILTER needed EXCLUDE REGEX "^lib([atl]san|ubsan)\\.so\\.[0-9]+$") # of a build for a sanitizer
if(needed)
  message(FATAL_ERROR "${PROGRAM} is linked with ${needed}")
endif()
