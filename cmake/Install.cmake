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
install(DIRECTORY looks DESTINATION ${CMAKE_INSTALL_DATADIR}/streakfall FILES_MATCHING PATTERN *.json)
install(FILES docs/guide/guide-en.html docs/guide/guide-ja.html CHANGELOG.md
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/streakfall)
