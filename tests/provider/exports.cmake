# Holds what libFCIPProvider.so exports against what it is meant to: cmake -DNM=nm -DLIBRARY=file -P exports.cmake
set(expected
    FCIPProvider_Create_AssociationMI
    FCIPProvider_Create_InstanceMI
    _broker
    fcip_print_entity
    fcip_print_link_entity_brief
    get_all_fcip_entities
    get_fcip_instance
    ipconf_linux_get_ip_stats
    ipconf_linux_get_ipv6_stats
    populate_fcip_statistics)

execute_process(COMMAND ${NM} -D --defined-only ${LIBRARY} OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^ \n]+\n" names "${listing}")
list(TRANSFORM names STRIP)
list(FILTER names EXCLUDE REGEX "^(_init|_fini|_edata|_end|__bss_start|__odr_asan.*)$") # the tools' own marks
list(SORT names)
if(NOT "${names}" STREQUAL "${expected}")
  message(FATAL_ERROR "${LIBRARY} exports\n  ${names}\nexpected\n  ${expected}")
endif()
