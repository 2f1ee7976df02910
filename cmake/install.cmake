# What cmake --install puts where, by component; the packages of packaging/packages.cmake are made of these:
#   provider     the library where CIM servers look for CMPI providers; MOF and registration for them
#   cmpihost     the command line and WBEM server, with the schema that it reads
#   switchdump   the diagnostic dumps as a program
#   simulator    the simulated switch, its own provider, the product linked with it, and its scenarios; not for a switch
#   development  what providers are built with
set(FCIP_PROVIDER_DIR ${CMAKE_INSTALL_LIBDIR}/cmpi CACHE STRING "Where the CIM server looks for providers, below the prefix")
set(simulator_folder ${CMAKE_INSTALL_LIBDIR}/switchsim)

# Servers' tools copy the one file that they are given.
file(GLOB mof_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/schema/*.mof)
set(flat_schema ${PROJECT_BINARY_DIR}/flat/fcip.mof)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/flat)
add_custom_command(OUTPUT ${flat_schema} VERBATIM
  COMMAND awk -f ${PROJECT_SOURCE_DIR}/schema/flatten.awk ${PROJECT_SOURCE_DIR}/schema/fcip.mof > ${flat_schema}
  DEPENDS ${PROJECT_SOURCE_DIR}/schema/flatten.awk ${mof_files})
add_custom_target(flat_schema ALL DEPENDS ${flat_schema})

# install_schema(FOLDER COMPONENT): the classes and their registration
function(install_schema folder component)
  install(FILES ${flat_schema} DESTINATION ${folder} COMPONENT ${component})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/schema/registration DESTINATION ${folder} COMPONENT ${component})
endfunction()

# install_documents(PACKAGE COMPONENT): what each Debian package has to tell
set(changes ${PROJECT_BINARY_DIR}/flat/changelog.gz)
add_custom_command(OUTPUT ${changes} VERBATIM
  COMMAND gzip -9 --no-name --stdout ${PROJECT_SOURCE_DIR}/packaging/changelog > ${changes}
  DEPENDS ${PROJECT_SOURCE_DIR}/packaging/changelog)
add_custom_target(changes ALL DEPENDS ${changes})
function(install_documents package component)
  install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
  install(FILES ${changes} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} RENAME changelog.Debian.gz
          COMPONENT ${component})
endfunction()

install(TARGETS FCIPProvider LIBRARY DESTINATION ${FCIP_PROVIDER_DIR} COMPONENT provider)
install_documents(fcip-cim-provider provider)
install_schema(${CMAKE_INSTALL_DATADIR}/fcip-cim-provider/schema provider)

if(FCIP_BUILD_HOST)
  install(TARGETS cmpihost RUNTIME COMPONENT cmpihost)
  install_documents(cmpihost cmpihost)
  set(host_schema ${CMAKE_INSTALL_DATADIR}/cmpihost/schema)
  install_schema(${host_schema} cmpihost)
  foreach(file dmtf.mof interop.mof qualifiers.mof deviations.txt views.toml)
    install(FILES schema/${file} DESTINATION ${host_schema} COMPONENT cmpihost)
  endforeach()
  install(FILES packaging/cmpihost.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME cmpihost
          COMPONENT cmpihost)
  install(FILES packaging/cmpihost.service DESTINATION lib/systemd/system COMPONENT cmpihost)

  install(FILES cmpi/cmpidt.h cmpi/cmpift.h cmpi/cmpimacs.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/cmpihost
          COMPONENT development)
  configure_file(packaging/cmpihost.pc.in ${PROJECT_BINARY_DIR}/development/cmpihost.pc @ONLY)
  configure_file(packaging/cmpihost-config.cmake.in ${PROJECT_BINARY_DIR}/development/cmpihost-config.cmake @ONLY)
  include(CMakePackageConfigHelpers)
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/development/cmpihost-config-version.cmake
                                   COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
  install(FILES ${PROJECT_BINARY_DIR}/development/cmpihost.pc DESTINATION ${CMAKE_INSTALL_DATADIR}/pkgconfig
          COMPONENT development)
  install(FILES ${PROJECT_BINARY_DIR}/development/cmpihost-config.cmake
                ${PROJECT_BINARY_DIR}/development/cmpihost-config-version.cmake
          DESTINATION ${CMAKE_INSTALL_DATADIR}/cmake/cmpihost COMPONENT development)
  install_documents(cmpihost-dev development)
  install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/cmpihost-dev/examples COMPONENT development)
endif()
if(FCIP_BUILD_SIMULATOR)
  install(TARGETS switchsim switchsimProvider FCIPProvider LIBRARY DESTINATION ${simulator_folder} COMPONENT simulator)
  if(FCIP_PLATFORM_LIBRARIES STREQUAL "switchsim")
    install(FILES simulator/provider/switchsimProvider.reg DESTINATION ${simulator_folder} COMPONENT simulator)
  endif()
  install(TARGETS switchsim_program RUNTIME COMPONENT simulator)
  install_documents(switchsim simulator)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/scenarios DESTINATION ${CMAKE_INSTALL_DATADIR}/switchsim COMPONENT simulator
          FILES_MATCHING PATTERN *.toml)
endif()
if(FCIP_BUILD_SWITCHDUMP)
  install(TARGETS switchdump RUNTIME COMPONENT switchdump)
endif()

# Where the programs find the libraries: the simulator is beside its provider; a switch's own are where the system looks.
# cmpihost takes the provider that is linked with the simulator, if that is installed: the other waits for a CIM server
# that brings a platform.
file(RELATIVE_PATH provider_to_simulator /${FCIP_PROVIDER_DIR} /${simulator_folder})
file(RELATIVE_PATH programs_to_simulator /${CMAKE_INSTALL_BINDIR} /${simulator_folder})
file(RELATIVE_PATH programs_to_provider /${CMAKE_INSTALL_BINDIR} /${FCIP_PROVIDER_DIR})
if(FCIP_BUILD_SIMULATOR)
  set_target_properties(FCIPProvider PROPERTIES INSTALL_RPATH "$ORIGIN;$ORIGIN/${provider_to_simulator}")
  set(provider_folder ${programs_to_simulator})
else()
  set_target_properties(FCIPProvider PROPERTIES INSTALL_RPATH "")
  set(provider_folder ${programs_to_provider})
endif()
if(FCIP_BUILD_HOST)
  set_target_properties(cmpihost PROPERTIES INSTALL_RPATH "")
  file(RELATIVE_PATH programs_to_schema /${CMAKE_INSTALL_BINDIR} /${host_schema})
  set_property(SOURCE host/cli/options.cpp TARGET_DIRECTORY cmpihost_library APPEND PROPERTY COMPILE_DEFINITIONS
               CMPIHOST_PROVIDER_FOLDERS="${programs_to_simulator}","${programs_to_provider}")
  set_property(SOURCE host/cli/schema_files.cpp TARGET_DIRECTORY cmpihost_library APPEND PROPERTY COMPILE_DEFINITIONS
               CMPIHOST_SCHEMA_FOLDER="${programs_to_schema}")
endif()
if(FCIP_BUILD_SWITCHDUMP)
  set_target_properties(switchdump PROPERTIES INSTALL_RPATH "$ORIGIN/${provider_folder}")
endif()
