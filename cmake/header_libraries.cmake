# Header-only libraries from the distribution. They are linked into a folder of the build tree, so that a cross build
# sees them without seeing the rest of /usr/include.
function(add_header_library name folder)
  find_path(${name}_include ${folder} NO_CMAKE_FIND_ROOT_PATH NO_CACHE REQUIRED)
  set(staged ${CMAKE_BINARY_DIR}/headers/${name})
  file(MAKE_DIRECTORY ${staged})
  file(CREATE_LINK ${${name}_include}/${folder} ${staged}/${folder} SYMBOLIC)
  add_library(${name} INTERFACE)
  target_include_directories(${name} SYSTEM INTERFACE ${staged})
endfunction()
