# What every target of the project is compiled with.
#
# Floating point is part of the product: the same seed gives the same bits on every machine.
# So multiply and add are never contracted, nothing is re-associated, and doubles live in SSE2
# registers. Instruction sets above the baseline are confined to files that are chosen at run
# time.
add_library(contract INTERFACE)
target_compile_options(contract INTERFACE
  -ffp-contract=off -fno-fast-math -msse2 -mfpmath=sse
  -fno-strict-aliasing
  -Wall -Wextra -Wpedantic -Wshadow -Werror)

set(STREAKFALL_SANITIZE "" CACHE STRING "sanitizers to build with, as the compiler's -fsanitize takes them")
if(STREAKFALL_SANITIZE)
  target_compile_options(contract INTERFACE
    -fsanitize=${STREAKFALL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(contract INTERFACE -fsanitize=${STREAKFALL_SANITIZE})
endif()

# Internal checks: on in debug and sanitizer builds, compiled away in release.
target_compile_definitions(contract INTERFACE
  $<$<CONFIG:Debug>:STREAKFALL_CHECKS=1>)

set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
