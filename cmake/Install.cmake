# What `cmake --install` puts where. The program finds its module by the way from its own folder,
# so an installed tree may be moved as a whole.
if(WIN32)
  install(CODE "message(FATAL_ERROR \"The Windows module is packed by scripts/package.\")")
  return()
endif()
include(GNUInstallDirs)

# A path that counts from the prefix, or the whole one it was given.
set(module_folder ${CMAKE_INSTALL_LIBDIR}/streakfall)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR
  BASE_DIRECTORY ${CMAKE_INSTALL_FULL_BINDIR} OUTPUT_VARIABLE way_to_libraries)
target_compile_definitions(tool_frames PRIVATE
  STREAKFALL_MODULE_FOLDER="${way_to_libraries}/streakfall")

if(STREAKFALL_SANITIZE)
  install(CODE "message(FATAL_ERROR \"A build with sanitizers is not for installing.\")")
  return()
endif()

# The program itself prints its manual page and the completions of shells.
set(manual_folder ${PROJECT_BINARY_DIR}/manual)
file(MAKE_DIRECTORY ${manual_folder})
set(manuals "")
function(made_by_program form file)
  add_custom_command(OUTPUT ${manual_folder}/${file}
    COMMAND streakfall manual ${form} > ${manual_folder}/${file}
    DEPENDS streakfall Q_Streakfall VERBATIM)
  list(APPEND manuals ${manual_folder}/${file})
  set(manuals ${manuals} PARENT_SCOPE)
endfunction()
made_by_program(man streakfall.1)
made_by_program(bash streakfall)
made_by_program(zsh _streakfall)
made_by_program(fish streakfall.fish)
add_custom_target(manuals ALL DEPENDS ${manuals})

set(STREAKFALL_ZSH_FOLDER ${CMAKE_INSTALL_DATADIR}/zsh/site-functions CACHE STRING
  "where the completion for zsh goes")

install(TARGETS streakfall)
install(TARGETS Q_Streakfall LIBRARY DESTINATION ${module_folder})
install(FILES ${manual_folder}/streakfall.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${manual_folder}/streakfall
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${manual_folder}/_streakfall DESTINATION ${STREAKFALL_ZSH_FOLDER})
install(FILES ${manual_folder}/streakfall.fish
  DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
install(PROGRAMS farm/streakfall.sbatch DESTINATION ${CMAKE_INSTALL_DATADIR}/streakfall)
install(DIRECTORY looks DESTINATION ${CMAKE_INSTALL_DATADIR}/streakfall FILES_MATCHING PATTERN *.json)
install(FILES docs/guide/guide-en.html docs/guide/guide-ja.html CHANGELOG.md docs/farm.md
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/streakfall)

# `cpack` in the build folder makes the Debian package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME streakfall)
set(CPACK_PACKAGE_CONTACT "QUVEX <streakfall@quvex.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "comic-style streak lines on pictures and sequences")
set(CPACK_PACKAGE_DESCRIPTION
"Draws parallel or fanned streak lines over pictures, each with its own
length, thickness, colour, soft ends and wobble, all from seeds, so that a
frame depends on its values and its number alone. Reads PNG, TIFF, JPEG and
EXR, writes PNG, TIFF and EXR, and has what a render farm needs.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebianTree.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebianArchive.cmake)
include(CPack)
