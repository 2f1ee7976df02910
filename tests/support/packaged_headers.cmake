# Builds the provider against another set of CMPI headers, as a CIM server's development package has one, and asks it
# through our broker for what the provider of this build answers:
# cmake -DSOURCE=folder -DHEADERS=folder -DMAIN_BUILD=folder -DBUILD=folder -P packaged_headers.cmake
file(REMOVE_RECURSE ${BUILD})
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} -G Ninja -DBUILD_TESTING=OFF -DCMAKE_BUILD_TYPE=Debug
                        -DCMAKE_CXX_FLAGS=-O0 -DCMAKE_CXX_FLAGS_DEBUG= -DCMPI_INCLUDE_DIR=${HEADERS}
                        -DFCIP_PLATFORM_LIBRARIES=${MAIN_BUILD}/lib/libswitchsim.so
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --parallel --target FCIPProvider
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

# Holds its answer to one request against that of this build's provider, and against `pattern`.
function(ask pattern)
  foreach(folder ${MAIN_BUILD} ${BUILD})
    execute_process(COMMAND ${MAIN_BUILD}/bin/cmpihost --provider ${folder}/lib/libFCIPProvider.so ${ARGN}
                    OUTPUT_VARIABLE answer_of_${folder} COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
  set(answer "${answer_of_${BUILD}}")
  if(NOT answer MATCHES "${pattern}" OR NOT answer STREQUAL "${answer_of_${MAIN_BUILD}}")
    message(FATAL_ERROR "asked for ${ARGN}, it answered\n${answer}\nexpected\n${answer_of_${MAIN_BUILD}}")
  endif()
endfunction()

set(ENV{SWITCHSIM_SCENARIO} ${SOURCE}/scenarios/single-tunnel.toml)
set(tunnel "ZANTO_FCIPProtocolEndPoint.Name=\"1_10.0.0.1_10.0.0.2\"")
ask("  1_10.0.0.1_10.0.0.2\n\n1 object\n" ein ZANTO_FCIPProtocolEndPoint)
ask("  TunnelID  .*\n\n1 object\n" ei ZANTO_FCIPProtocolEndPoint)
ask("  TunnelID  .*\n\n1 object\n" gi ${tunnel})
ask("^[^\n]*\n  TunnelID  uint16  1\n\n1 object\n" gi ${tunnel} TunnelID) # a property filter
ask("  Antecedent  reference  .*\n\n1 object\n" ri ${tunnel} --arc ZANTO_FCIPTCPEndpoint)
