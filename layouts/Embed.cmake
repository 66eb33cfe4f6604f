# Writes OUTPUT, a C++ file holding every layout file given in FILES (paths below ROOT) as text,
# with the lookup by designer name. Run at build time: cmake -DROOT=... -DOUTPUT=... -P Embed.cmake
file(GLOB_RECURSE files RELATIVE ${ROOT} ${ROOT}/*.yaml)
list(SORT files)
set(body "")
set(entries "")
set(index 0)
foreach(file ${files})
  file(READ ${ROOT}/${file} content)
  get_filename_component(designer ${file} NAME_WE)
  string(APPEND body "constexpr char kText${index}[] = R\"trellin_layout(${content})trellin_layout\";\n")
  string(APPEND entries "    {\"${designer}\", \"${file}\", std::string_view(kText${index}, sizeof kText${index} - 1)},\n")
  math(EXPR index "${index} + 1")
endforeach()
set(source "// Generated from the files under layouts/ at build time; do not edit.
#include \"layouts/EmbeddedLayouts.h\"

#include <array>

namespace trellin::layouts {
namespace {

${body}
constexpr std::array<EmbeddedLayout, ${index}> kLayouts = {{
${entries}}};

}  // namespace

std::optional<EmbeddedLayout> FindEmbeddedLayout(std::string_view designer) {
  for (const auto& layout : kLayouts) {
    if (layout.designer == designer) return layout;
  }
  return std::nullopt;
}

std::span<const EmbeddedLayout> AllEmbeddedLayouts() { return kLayouts; }

}  // namespace trellin::layouts
")
# Rewrite only on change, so that an unchanged set of layouts recompiles nothing.
if(EXISTS ${OUTPUT})
  file(READ ${OUTPUT} old)
  if(old STREQUAL source)
    return()
  endif()
endif()
file(WRITE ${OUTPUT} "${source}")
