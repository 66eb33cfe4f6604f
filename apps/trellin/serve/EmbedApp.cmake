# Writes OUTPUT, a C++ file holding every file of the page app under ROOT as text, with the
# lookup by file name. Run at build time: cmake -DROOT=... -DOUTPUT=... -P EmbedApp.cmake
file(GLOB files RELATIVE ${ROOT} ${ROOT}/*)
list(SORT files)
set(body "")
set(entries "")
set(index 0)
foreach(file ${files})
  file(READ ${ROOT}/${file} content)
  string(APPEND body "constexpr char kApp${index}[] = R\"trellin_app(${content})trellin_app\";\n")
  string(APPEND entries "    {\"${file}\", std::string_view(kApp${index}, sizeof kApp${index} - 1)},\n")
  math(EXPR index "${index} + 1")
endforeach()
set(source "// Generated from the files under apps/trellin/serve/app/ at build time; do not edit.
#include \"apps/trellin/serve/AppFiles.h\"

#include <array>

namespace trellin::serve {
namespace {

${body}
constexpr std::array<AppFile, ${index}> kFiles = {{
${entries}}};

}  // namespace

std::optional<AppFile> FindAppFile(std::string_view name) {
  for (const auto& file : kFiles) {
    if (file.name == name) return file;
  }
  return std::nullopt;
}

}  // namespace trellin::serve
")
if(EXISTS ${OUTPUT})
  file(READ ${OUTPUT} old)
  if(old STREQUAL source)
    return()
  endif()
endif()
file(WRITE ${OUTPUT} "${source}")
