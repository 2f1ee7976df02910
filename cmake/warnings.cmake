# Warnings of every target of ours. Third-party headers come in as system headers.
add_library(strict INTERFACE)
target_compile_options(strict INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
  $<$<CXX_COMPILER_ID:GNU>:-Wno-format-truncation> # texts are cut on purpose, to the lengths that clients know
  $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>) # no part of -Wconversion elsewhere
