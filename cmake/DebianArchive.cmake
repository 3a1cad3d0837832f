# Takes the hour and the user's mask out of a Debian package's outermost archive, the one place where
# cpack lets them in: run by cpack, after it packed.
foreach(package ${CPACK_PACKAGE_FILES})
  set(work ${CPACK_TEMPORARY_DIRECTORY}/archive)
  file(MAKE_DIRECTORY ${work})
  execute_process(COMMAND ar t ${package} OUTPUT_VARIABLE members COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]+" members "${members}")
  execute_process(COMMAND ar x ${package} WORKING_DIRECTORY ${work} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${package})
  execute_process(COMMAND ar qcD ${package} ${members} WORKING_DIRECTORY ${work}
    COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${work})
endforeach()
