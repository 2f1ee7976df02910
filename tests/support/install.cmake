# Installs into an empty folder and asks the installed cmpihost for the tunnels of the simulator's switch:
# cmake -DBUILD=folder -DPREFIX=folder [-DEMULATOR=command] -P install.cmake
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)

# The one file whose path ends so.
function(find_one variable ending)
  file(GLOB_RECURSE found ${PREFIX}/*)
  list(FILTER found INCLUDE REGEX "/${ending}$")
  list(LENGTH found count)
  if(NOT count EQUAL 1)
    message(FATAL_ERROR "installed as ${ending}: ${count} files, expected one\n${listing}")
  endif()
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

find_one(program bin/cmpihost)
find_one(dump bin/switchdump)
find_one(server_library cmpi/libFCIPProvider.so)
find_one(own_library switchsim/libFCIPProvider.so)
find_one(switch_library switchsim/libswitchsimProvider.so)
find_one(switch_registration switchsim/switchsimProvider.reg)
find_one(scenario switchsim/scenarios/two-site.toml)
foreach(folder share/fcip-cim-provider share/cmpihost)
  find_one(mof ${folder}/schema/fcip.mof)
  find_one(openpegasus ${folder}/schema/registration/openpegasus.mof)
  find_one(sfcb ${folder}/schema/registration/sfcb.reg)
endforeach()
find_one(deviations cmpihost/schema/deviations.txt)

set(ENV{SWITCHSIM_SCENARIO} ${scenario})
foreach(choice "" "--provider;${own_library}" "--provider;${server_library}")
  execute_process(COMMAND ${EMULATOR} ${program} ${choice} ein ZANTO_FCIPProtocolEndPoint OUTPUT_VARIABLE answer
                  COMMAND_ERROR_IS_FATAL ANY)
  if(NOT answer MATCHES "1_10.1.1.1_10.2.1.1")
    message(FATAL_ERROR "the installed cmpihost answered\n${answer}")
  endif()
endforeach()

# The switch's own provider comes with the default one, and with no other.
foreach(choice "" "--provider;${own_library}")
  execute_process(COMMAND ${EMULATOR} ${program} ${choice} ein --count ZANTO_PhysicalComputerSystem OUTPUT_VARIABLE answer
                  COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "\n.*" "" answer "${answer}")
  list(APPEND answers ${answer})
endforeach()
if(NOT answers STREQUAL "1;0")
  message(FATAL_ERROR "the installed cmpihost found so many switches, by default and with the provider alone: ${answers}")
endif()

execute_process(COMMAND ${EMULATOR} ${dump} OUTPUT_VARIABLE dumped COMMAND_ERROR_IS_FATAL ANY)
if(NOT dumped MATCHES "FCIP Profile 1")
  message(FATAL_ERROR "the installed switchdump printed\n${dumped}")
endif()

execute_process(COMMAND ${EMULATOR} ${program} classes OUTPUT_VARIABLE classes COMMAND_ERROR_IS_FATAL ANY)
if(NOT classes MATCHES "^ZANTO_FCIPProtocolEndPoint\n")
  message(FATAL_ERROR "the installed cmpihost lists the classes\n${classes}")
endif()
