# What optimised builds have besides: they are hardened, and the same sources give the same bytes in whatever folder
# they are built. Not so where a sanitizer looks (it has checks of its own), and not so without optimisation, which
# _FORTIFY_SOURCE needs: the preset for the debugger, and PowerPC's for tests.
if(CMAKE_BUILD_TYPE MATCHES "^Rel" AND NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  set(FCIP_HARDENED TRUE)
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong
                      -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
  add_link_options(-Wl,-z,relro -Wl,-z,now)
  include(CheckPIESupported)
  check_pie_supported(LANGUAGES C CXX)
endif()
