# What the module's file promises to every machine: one export, the system's own DLLs alone, and
# the usual hardening.
execute_process(COMMAND ${OBJDUMP} -p ${MODULE} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)

function(expect what actual wanted)
  if(NOT "${actual}" STREQUAL "${wanted}")
    message(FATAL_ERROR "${what}: \"${actual}\" instead of \"${wanted}\"")
  endif()
endfunction()

string(REGEX REPLACE "^.*\\[Ordinal/Name Pointer\\] Table[^\n]*\n" "" exports "${headers}")
string(REGEX REPLACE "\n\n.*$" "" exports "${exports}")
string(REGEX REPLACE "\\[ *[0-9]+\\][^\n]* |[\t ]|\n" "" exports "${exports}")
string(REGEX REPLACE "\\[0\\]" "" exports "${exports}")
expect("exports" "${exports}" "EntryPointFunc")

string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${headers}")
string(REPLACE "DLL Name: " "" imports "${imports}")
list(TRANSFORM imports TOUPPER)
list(SORT imports)
expect("imports" "${imports}" "KERNEL32.DLL;MSVCRT.DLL;USER32.DLL")

# What a thread runtime would leave in the host's process.
string(REGEX MATCH "AddVectoredExceptionHandler|SetUnhandledExceptionFilter|setlocale|CreateThread|_beginthread"
       intrusive "${headers}")
expect("imports that change the process" "${intrusive}" "")

string(REGEX MATCH "DllCharacteristics[\t ]+([0-9a-f]+)" ignored "${headers}")
math(EXPR hardening "0x${CMAKE_MATCH_1} & 0x160" OUTPUT_FORMAT HEXADECIMAL)
expect("high entropy, relocatable, no execution of data" "${hardening}" "0x160")
