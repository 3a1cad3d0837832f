# Writes the header that tells a build which commit it is of: of a checkout by asking git, of an
# archive that git made by what git wrote there. Run as a script in every build; the file is touched
# only when it changes.
#
#   cmake -DSOURCE=... -DOUTPUT=... -P Commit.cmake
file(STRINGS ${SOURCE}/cmake/commit.txt archived LIMIT_COUNT 1)
if(archived MATCHES "^([0-9a-f]+) ([0-9-]+)$")
  set(date ${CMAKE_MATCH_2})
  string(SUBSTRING ${CMAKE_MATCH_1} 0 12 commit)
else()
  set(git git -C ${SOURCE})
  execute_process(COMMAND ${git} describe --always --dirty --abbrev=12 --exclude=*
    OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  execute_process(COMMAND ${git} log -1 --format=%cs
    OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(NOT commit)
    set(commit unknown)
  endif()
endif()

set(text "// Of this build.
#pragma once

inline constexpr char kCommit[] = \"${commit}\";    // with -dirty behind it when files differ from it
inline constexpr char kCommitDate[] = \"${date}\";  // empty when unknown
")
if(EXISTS ${OUTPUT})
  file(READ ${OUTPUT} present)
endif()
if(NOT text STREQUAL "${present}")
  file(WRITE ${OUTPUT} "${text}")
endif()
