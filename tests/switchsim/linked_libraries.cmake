cmake_minimum_required(VERSION 3.25)

# A program that is linked with nothing but the compiler's and the system's own libraries.
# cmake -DREADELF=readelf -DPROGRAM=file -P linked_libraries.cmake
execute_process(COMMAND ${READELF} --wide --dynamic ${PROGRAM} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "Shared library: \\[[^]]+\\]" needed "${dynamic}")
if(NOT needed MATCHES "libc\\.so")
  message(FATAL_ERROR "${PROGRAM}: not even the C library was found among what it is linked with:\n${dynamic}")
endif()
foreach(line IN LISTS needed)
  if(NOT line MATCHES "\\[(libc|libm|libstdc\\+\\+|libgcc_s|ld[^]]*|libubsan|libasan|libtsan)\\.so")
    message(SEND_ERROR "${PROGRAM}: ${line}")
  endif()
endforeach()
