# Holds that libFCIPProvider.so calls nothing of the C++ library, and so neither allocates with operator new nor throws:
# it is called by C code. cmake -DNM=nm -DLIBRARY=file -P throws_nothing.cmake
execute_process(COMMAND ${NM} -D --undefined-only ${LIBRARY} OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^ \n]+\n" names "${listing}")
list(TRANSFORM names STRIP)
if(NOT names MATCHES "fcip_get_link_entry")
  message(FATAL_ERROR "${LIBRARY} is not read: no call of the platform in\n${listing}")
endif()
list(FILTER names INCLUDE REGEX "^(_Z|__cxa_)")
list(FILTER names EXCLUDE REGEX "^__cxa_finalize") # ends every library
if(names)
  message(FATAL_ERROR "${LIBRARY} calls of the C++ library\n  ${names}")
endif()
