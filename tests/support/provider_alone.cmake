# Builds the provider and nothing else, as for a switch: against another set of CMPI headers, as a CIM server's
# development package has one, and linked with libraries of others that answer the platform calls:
#
#   cmake -DSOURCE=folder -DHEADERS=folder -DMAIN_BUILD=folder -DBUILD=folder -DCOMPILER=c++ -P provider_alone.cmake
#
# First these libraries are the simulator of the main build, and the provider is asked through our broker for what the
# provider of that build answers. Then they are a stub with all platform functions, and one that lacks one of them.
file(REMOVE_RECURSE ${BUILD})
set(ENV{CCACHE_DISABLE} 1) # it may tell the headers by other paths than the compiler

# configure LIBRARIES [OPTION...]
function(configure libraries)
  execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} -G Ninja -DBUILD_TESTING=OFF -DFCIP_BUILD_HOST=OFF
                          -DFCIP_BUILD_SIMULATOR=OFF -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=-O0
                          -DCMAKE_CXX_FLAGS_DEBUG= -DCMPI_INCLUDE_DIR=${HEADERS} -DFCIP_PLATFORM_LIBRARIES=${libraries}
                          ${ARGN}
                  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Builds everything that there is to build.
function(build failed_variable output_variable)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --parallel
                  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE failed)
  set(${failed_variable} ${failed} PARENT_SCOPE)
  set(${output_variable} "${output}" PARENT_SCOPE)
endfunction()

configure(${MAIN_BUILD}/lib/libswitchsim.so)
build(failed output)
if(failed)
  message(FATAL_ERROR "${output}")
endif()

# Nothing but the provider is built, and no library of others is looked for.
file(GLOB products RELATIVE ${BUILD} ${BUILD}/bin/* ${BUILD}/lib/* ${BUILD}/headers/*)
if(NOT products STREQUAL "lib/libFCIPProvider.so;lib/libFCIPProvider.so.1;lib/libFCIPProvider.so.1.0.0")
  message(FATAL_ERROR "built: ${products}, expected libFCIPProvider.so and its versioned names")
endif()
file(STRINGS ${BUILD}/lib/libFCIPProvider.so version REGEX "libFCIPProvider 1\\.0\\.0")
if(NOT version)
  message(FATAL_ERROR "the library does not tell its version")
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

# What services.h declares, as functions that do nothing, and the two variables.
execute_process(COMMAND awk -f ${SOURCE}/tests/support/platform_stub.awk ${SOURCE}/platform/services.h
                OUTPUT_VARIABLE stub COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\\(void\\)" functions "${stub}")
list(LENGTH functions count)
if(count LESS 40)
  message(FATAL_ERROR "services.h declares ${count} functions, expected 40 and more")
endif()

# Links the provider with the stub, without the functions named.
function(link_with_stub failed_variable output_variable)
  set(text "${stub}")
  foreach(name ${ARGN})
    string(REPLACE "void ${name}(void) {}\n" "" text "${text}")
  endforeach()
  file(WRITE ${BUILD}/stub.c "${text}")
  execute_process(COMMAND ${COMPILER} -x c -shared -fPIC -o ${BUILD}/libswitch.so ${BUILD}/stub.c COMMAND_ERROR_IS_FATAL ANY)
  configure(${BUILD}/libswitch.so -DFCIP_BUILD_SWITCHDUMP=ON)
  file(REMOVE ${BUILD}/lib/libFCIPProvider.so.1.0.0)
  build(failed output)
  set(${failed_variable} ${failed} PARENT_SCOPE)
  set(${output_variable} "${output}" PARENT_SCOPE)
endfunction()

link_with_stub(failed output)
if(failed)
  message(FATAL_ERROR "with a library of all platform functions:\n${output}")
endif()
execute_process(COMMAND ${BUILD}/bin/switchdump --scenario a.toml ERROR_VARIABLE error RESULT_VARIABLE status)
if(NOT status EQUAL 1 OR NOT error STREQUAL "switchdump: --scenario: this switch is none that is simulated\n")
  message(FATAL_ERROR "switchdump with a switch's libraries ended with ${status}:\n${error}")
endif()
link_with_stub(failed output fcip_get_link_entry)
if(NOT failed OR NOT output MATCHES "undefined reference to `fcip_get_link_entry'")
  message(FATAL_ERROR "with a library that lacks fcip_get_link_entry:\n${output}")
endif()
