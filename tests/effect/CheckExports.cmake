# The module shows one symbol to the process around it, and takes no memory operator from there.
execute_process(COMMAND ${NM} -D --defined-only --format=posix ${MODULE}
  OUTPUT_VARIABLE defined COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" defined "${defined}")
list(TRANSFORM defined REPLACE " .*" "")
if(NOT defined STREQUAL "EntryPointFunc")
  message(FATAL_ERROR "${MODULE} exports: ${defined}")
endif()

execute_process(COMMAND ${NM} -D --undefined-only --format=posix ${MODULE}
  OUTPUT_VARIABLE undefined COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "(^|\n)_Z(nw|na|dl|da)[^\n]*" operators "${undefined}")
if(operators)
  message(FATAL_ERROR "${MODULE} takes from outside: ${operators}")
endif()
