# Writes OUT, a C++ source with the files below FOLDER that FILES names (commas between them).
set(entries "")
string(REPLACE "," ";" names "${FILES}")
list(LENGTH names count)
foreach(name IN LISTS names)
  file(READ "${FOLDER}/${name}" text)
  string(FIND "${text}" ")page\"" end)
  if(NOT end EQUAL -1)
    message(FATAL_ERROR "${name} holds what ends a literal: )page\"")
  endif()
  string(APPEND entries "    PageFile{\"${name}\", R\"page(${text})page\"},\n")
endforeach()
file(WRITE "${OUT}" "#include <array>

#include \"PageFiles.h\"

namespace tool::panel {

namespace {

constexpr std::array<PageFile, ${count}> kFiles{
${entries}};

}  // namespace

std::span<const PageFile> pageFiles() { return kFiles; }

}  // namespace tool::panel
")
