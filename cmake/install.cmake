# What cmake --install puts where, by component:
#   provider   the library where CIM servers look for CMPI providers; MOF and registration beside each other
#   cmpihost   the command line
#   switchdump the diagnostic dumps as a program
#   simulator  libswitchsim and its scenarios; not for a switch
set(FCIP_PROVIDER_DIR ${CMAKE_INSTALL_LIBDIR}/cmpi CACHE STRING "Where the CIM server looks for providers, below the prefix")
set(data ${CMAKE_INSTALL_DATADIR}/fcip-cim-provider)

install(TARGETS FCIPProvider LIBRARY DESTINATION ${FCIP_PROVIDER_DIR} COMPONENT provider)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/schema DESTINATION ${data} COMPONENT provider
        FILES_MATCHING PATTERN *.mof PATTERN *.reg PATTERN deviations.txt PATTERN views.toml)
if(FCIP_BUILD_HOST)
  install(TARGETS cmpihost RUNTIME COMPONENT cmpihost)
endif()
if(FCIP_BUILD_SIMULATOR)
  install(TARGETS switchsim switchsim_program LIBRARY COMPONENT simulator RUNTIME COMPONENT simulator)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/scenarios DESTINATION ${data} COMPONENT simulator FILES_MATCHING PATTERN *.toml)
endif()
if(FCIP_BUILD_SWITCHDUMP)
  install(TARGETS switchdump RUNTIME COMPONENT switchdump)
endif()

# The installed provider finds the simulator, where it is linked with it, and the installed cmpihost the provider and
# its schema.
file(RELATIVE_PATH provider_to_libraries /${FCIP_PROVIDER_DIR} /${CMAKE_INSTALL_LIBDIR})
set_target_properties(FCIPProvider PROPERTIES INSTALL_RPATH "$ORIGIN/${provider_to_libraries}")
file(RELATIVE_PATH programs_to_provider /${CMAKE_INSTALL_BINDIR} /${FCIP_PROVIDER_DIR})
if(FCIP_BUILD_HOST)
  file(RELATIVE_PATH programs_to_schema /${CMAKE_INSTALL_BINDIR} /${data}/schema)
  target_compile_definitions(cmpihost_library PRIVATE CMPIHOST_PROVIDER_FOLDER="${programs_to_provider}"
                             CMPIHOST_SCHEMA_FOLDER="${programs_to_schema}")
endif()
if(FCIP_BUILD_SWITCHDUMP)
  set_target_properties(switchdump PROPERTIES INSTALL_RPATH
                        "$ORIGIN/../${CMAKE_INSTALL_LIBDIR};$ORIGIN/${programs_to_provider}")
endif()
