cmake_minimum_required(VERSION 3.25)

# Holds what the test programs noted as emitted against the schema: a class that is declared and never emitted fails.
# cmake -DSCHEMA=folder -DEMITTED=folder -DPROGRAMS=names -P schema_coverage.cmake
set(emitted)
foreach(program IN LISTS PROGRAMS)
  if(EXISTS ${EMITTED}/${program}) # some look at tables only
    file(STRINGS ${EMITTED}/${program} lines)
    list(APPEND emitted ${lines})
  endif()
endforeach()

set(missing)
file(GLOB files ${SCHEMA}/*.mof)
list(FILTER files EXCLUDE REGEX "/(dmtf|interop).mof$") # the standard's own classes
foreach(file IN LISTS files)
  file(STRINGS ${file} classes REGEX "^class ")
  foreach(line IN LISTS classes)
    string(REGEX REPLACE "^(class [A-Za-z0-9_]+).*" "\\1" class "${line}")
    if(NOT class IN_LIST emitted)
      list(APPEND missing "${class}")
    endif()
  endforeach()
endforeach()

if(missing)
  list(JOIN missing "\n  " missing)
  message(FATAL_ERROR "no test emitted\n  ${missing}")
endif()
