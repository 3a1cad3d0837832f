# Makes of an installed tree what Debian wants of a package's: run by cpack, before it packs. What an
# archive has of times comes from SOURCE_DATE_EPOCH.
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr)
set(documents ${root}/share/doc/streakfall)

file(RENAME ${root}/share/zsh/site-functions ${root}/share/zsh/vendor-completions)
file(RENAME ${documents}/CHANGELOG.md ${documents}/NEWS)
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  string(TIMESTAMP now %s)
  set(ENV{SOURCE_DATE_EPOCH} ${now})
endif()
execute_process(COMMAND date -u -R -d @$ENV{SOURCE_DATE_EPOCH}
  OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(WRITE ${documents}/changelog
"streakfall (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium

  * What it holds is told in NEWS.gz.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
execute_process(COMMAND gzip -9n ${documents}/changelog ${documents}/NEWS
  ${root}/share/man/man1/streakfall.1 COMMAND_ERROR_IS_FATAL ANY)
file(WRITE ${documents}/copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: Streakfall
Upstream-Contact: ${CPACK_PACKAGE_CONTACT}

Files: *
Copyright: 2026 QUVEX
License: proprietary
 All rights reserved.
")
execute_process(COMMAND chmod -R u=rwX,go=rX ${root} COMMAND_ERROR_IS_FATAL ANY)
