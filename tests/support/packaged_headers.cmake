# Builds the provider against another set of CMPI headers, as a CIM server's development package has one:
# cmake -DSOURCE=folder -DHEADERS=folder -DBUILD=folder -P packaged_headers.cmake
file(REMOVE_RECURSE ${HEADERS} ${BUILD})
foreach(header cmpidt.h cmpift.h cmpimacs.h)
  file(READ ${SOURCE}/cmpi/${header} text)
  file(WRITE ${HEADERS}/${header} "${text}\n#define FROM_A_PACKAGE 1\n")
endforeach()

execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} -G Ninja -DBUILD_TESTING=OFF -DCMAKE_BUILD_TYPE=Debug
                        -DCMAKE_CXX_FLAGS=-O0 -DCMAKE_CXX_FLAGS_DEBUG= -DCMPI_INCLUDE_DIR=${HEADERS}
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --parallel --target fcip_objects
                OUTPUT_VARIABLE output RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "${output}")
endif()

# The headers that its objects were compiled with.
execute_process(COMMAND ninja -C ${BUILD} -t deps
                OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
if(NOT headers MATCHES "${HEADERS}/cmpift.h" OR headers MATCHES "${SOURCE}/cmpi/cmpift.h")
  message(FATAL_ERROR "the provider was compiled with\n${headers}")
endif()
