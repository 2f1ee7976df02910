# Warnings of every target of ours. Third-party headers come in as system headers.
add_library(strict INTERFACE)
target_compile_options(strict INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
  $<$<CXX_COMPILER_ID:GNU>:-Wno-format-truncation> # texts are cut on purpose, to the lengths that clients know
  $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>) # no part of -Wconversion elsewhere
# Compiled together, names of one file shadow those of another, and types in unnamed namespaces seem to be in a header.
if(CMAKE_UNITY_BUILD)
  target_compile_options(strict INTERFACE -Wno-shadow $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-subobject-linkage>)
endif()
