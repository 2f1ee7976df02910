# Manual pages, from what the programs say about themselves and from docs/scenarios.md. Programs are asked, so that they
# have to run here: without emulator and without sanitizer.
find_program(HELP2MAN help2man REQUIRED)
set(manual_folder ${PROJECT_BINARY_DIR}/man)
file(MAKE_DIRECTORY ${manual_folder})

# Their date is that of the newest entry of the changelog.
set(changelog ${PROJECT_SOURCE_DIR}/packaging/changelog)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
file(STRINGS ${changelog} trailer REGEX "^ -- " LIMIT_COUNT 1)
string(REGEX REPLACE ".*>  " "" trailer "${trailer}")
execute_process(COMMAND date --utc --date=${trailer} +%Y-%m-%d COMMAND_ERROR_IS_FATAL ANY
                OUTPUT_VARIABLE manual_date OUTPUT_STRIP_TRAILING_WHITESPACE)

# install_manual_page(FILE FOLDER COMPONENT): compressed, as Debian has them
function(install_manual_page page folder component)
  add_custom_command(OUTPUT ${page}.gz COMMAND gzip -9 --no-name --stdout ${page} > ${page}.gz DEPENDS ${page} VERBATIM)
  set_property(GLOBAL APPEND PROPERTY manual_pages ${page}.gz)
  install(FILES ${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/${folder} COMPONENT ${component})
endfunction()

# add_manual_page(PROGRAM TARGET COMPONENT): section 1
function(add_manual_page program target component)
  set(page ${manual_folder}/${program}.1)
  set(more ${PROJECT_SOURCE_DIR}/packaging/man/${program}.h2m)
  add_custom_command(OUTPUT ${page} VERBATIM
    COMMAND ${HELP2MAN} --no-info --section=1 --locale=C --version-string=${PROJECT_VERSION} --source=${PROJECT_NAME}
            --manual=${PROJECT_NAME} --include=${more} $<TARGET_FILE:${target}> |
            sed "/^.TH/s/\"[A-Z][a-z]* [0-9]*\"/${manual_date}/" > ${page}
    DEPENDS ${target} ${more})
  install_manual_page(${page} man1 ${component})
endfunction()

if(FCIP_BUILD_HOST)
  add_manual_page(cmpihost cmpihost cmpihost)
endif()
if(FCIP_BUILD_SWITCHDUMP)
  add_manual_page(switchdump switchdump switchdump)
endif()
if(FCIP_BUILD_SIMULATOR)
  add_manual_page(switchsim switchsim_program simulator)

  set(page ${manual_folder}/switchsim-scenario.5)
  set(converter ${PROJECT_SOURCE_DIR}/packaging/man/from_markdown.awk)
  add_custom_command(OUTPUT ${page} VERBATIM
    COMMAND awk -f ${converter} -v name=switchsim-scenario -v section=5 -v date=${manual_date} -v source=${PROJECT_NAME}
            -v version=${PROJECT_VERSION} "-vabout=description of a simulated switch"
            ${PROJECT_SOURCE_DIR}/docs/scenarios.md > ${page}
    DEPENDS ${converter} ${PROJECT_SOURCE_DIR}/docs/scenarios.md)
  install_manual_page(${page} man5 simulator)
endif()
get_property(pages GLOBAL PROPERTY manual_pages)
add_custom_target(manual ALL DEPENDS ${pages})
