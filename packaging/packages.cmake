# What cpack makes Debian packages of (./dev package): build-package/provider has what CIM servers load, built without
# simulator and with FCIP_GUARD_RESULTS, and build everything else.
#
#   cpack --config packaging/packages.cmake -B build-package
get_filename_component(sources ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME fcip-cim-provider)
set(CPACK_PACKAGE_DESCRIPTION "CIM provider for the FCIP side of a Fibre Channel switch")
set(CPACK_PACKAGE_VENDOR "FCIP CIM provider developers")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "FCIP CIM provider developers <fcip-cim-provider@example.org>")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/changelog entry LIMIT_COUNT 1)
string(REGEX REPLACE ".*\\((.*)-.*" "\\1" CPACK_PACKAGE_VERSION "${entry}")
set(CPACK_PACKAGE_FILE_NAME packages)

# Build folder, project, list of components, place; each list follows by its name.
set(CPACK_INSTALL_CMAKE_PROJECTS ${sources}/build-package/provider fcip-cim-provider of_provider /
                                 ${sources}/build fcip-cim-provider of_others /)
set(CPACK_COMPONENTS_OF_PROVIDER provider)
set(CPACK_COMPONENTS_OF_OTHERS simulator switchdump cmpihost development)
set(CPACK_CMAKE_GENERATOR Ninja)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_OF_PROVIDER} ${CPACK_COMPONENTS_OF_OTHERS})
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# package(GROUP NAME COMPONENT...): a package of these components
macro(package group name)
  foreach(component ${ARGN})
    string(TOUPPER ${component} upper)
    set(CPACK_COMPONENT_${upper}_GROUP ${group})
  endforeach()
  string(TOUPPER ${group} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  # Of these names cpack makes none up itself. It would run ldconfig, which looks into none of our folders.
  set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA postinst postrm)
endmacro()

package(provider_package fcip-cim-provider provider)
set(CPACK_COMPONENT_PROVIDER_PACKAGE_DESCRIPTION "CIM provider for the FCIP side of a Fibre Channel switch
A library that a CIM server loads through CMPI. It tells of the FCIP tunnels
of a switch: addresses, settings, ports and counters, as instances of fifteen
classes and nineteen association classes. It only reads.

The switch's own libraries are not part of it. Whoever loads it has to have
loaded them before; the package switchsim has a provider with a simulated
switch for machines that are none.")
set(CPACK_DEBIAN_PROVIDER_PACKAGE_PACKAGE_SUGGESTS cmpihost)

package(switchsim_package switchsim simulator switchdump)
set(CPACK_COMPONENT_SWITCHSIM_PACKAGE_DESCRIPTION "simulated Fibre Channel switch with FCIP tunnels
The platform of a switch as a library, described by a text file, with the
FCIP CIM provider linked to it and a provider of the switch's systems and
ports, so that management clients can be written where there is no switch.
The program switchsim checks such files and steers a running switch;
switchdump shows its FCIP profiles and links.

The package cmpihost serves it to WBEM clients.")
set(CPACK_DEBIAN_SWITCHSIM_PACKAGE_PACKAGE_RECOMMENDS cmpihost)

package(cmpihost_package cmpihost cmpihost)
set(CPACK_COMPONENT_CMPIHOST_PACKAGE_DESCRIPTION "broker for CMPI providers with command line and WBEM server
Loads a CMPI provider library as a CIM server does, and shows on the command
line what it answers, or serves it to WBEM clients over CIM-XML, HTTP and
HTTPS. A provider that crashes, loops or answers what its schema does not
declare is told.")
set(CPACK_DEBIAN_CMPIHOST_PACKAGE_PACKAGE_RECOMMENDS switchsim)
set(CPACK_DEBIAN_CMPIHOST_PACKAGE_PACKAGE_SUGGESTS "cmpihost-dev, sblim-wbemcli")

package(cmpihost_dev_package cmpihost-dev development)
set(CPACK_COMPONENT_CMPIHOST_DEV_PACKAGE_DESCRIPTION "headers for CMPI providers
The C headers of CMPI 1.00 with the macros that providers commonly use, files
for CMake and pkg-config, and an example of a provider.")
set(CPACK_DEBIAN_CMPIHOST_DEV_PACKAGE_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_CMPIHOST_DEV_PACKAGE_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_CMPIHOST_DEV_PACKAGE_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_CMPIHOST_DEV_PACKAGE_PACKAGE_RECOMMENDS cmpihost)
