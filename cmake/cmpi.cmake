# The CMPI headers: `cmpi` is what the provider is built against (a packaged set if there is one), `cmpi_own` is the set
# in cmpi/, which the broker and the simulator always use.
add_library(cmpi_own INTERFACE)
target_include_directories(cmpi_own INTERFACE ${PROJECT_SOURCE_DIR}/cmpi)

if(NOT CMPI_INCLUDE_DIR)
  find_path(packaged_cmpi cmpidt.h PATH_SUFFIXES cmpi NO_CACHE)
  if(packaged_cmpi)
    set(CMPI_INCLUDE_DIR ${packaged_cmpi})
  endif()
endif()

add_library(cmpi INTERFACE)
if(CMPI_INCLUDE_DIR)
  if(NOT EXISTS ${CMPI_INCLUDE_DIR}/cmpift.h)
    message(FATAL_ERROR "CMPI_INCLUDE_DIR=${CMPI_INCLUDE_DIR}: expected cmpidt.h and cmpift.h there")
  endif()
  message(STATUS "CMPI headers: ${CMPI_INCLUDE_DIR}")
  target_include_directories(cmpi SYSTEM INTERFACE ${CMPI_INCLUDE_DIR})
  target_compile_definitions(cmpi INTERFACE CMPI_PLATFORM_LINUX_GENERIC_GNU)
else()
  message(STATUS "CMPI headers: our own")
  target_link_libraries(cmpi INTERFACE cmpi_own)
endif()
