#include "platform/render/PdfFonts.h"

#include <fontconfig/fontconfig.h>
#include <hb-ot.h>
#include <hb-subset.h>
#include <hb.h>
#include <pango/pangofc-font.h>

#include <algorithm>
#include <cmath>

#include "platform/render/Render.h"

namespace trellin::render {
namespace {

constexpr char kCmapHex[] = "0123456789ABCDEF";

void AppendHex4(std::string& out, unsigned value) {
  for (int shift = 12; shift >= 0; shift -= 4) out += kCmapHex[(value >> shift) & 0xF];
}

// The UTF-8 text as UTF-16 code units in hexadecimal, for the ToUnicode map.
std::string Utf16Hex(std::string_view utf8) {
  std::string out;
  for (std::size_t i = 0; i < utf8.size();) {
    const auto b = [&](std::size_t k) {
      return i + k < utf8.size() ? static_cast<unsigned char>(utf8[i + k]) & 0x3Fu : 0u;
    };
    const auto lead = static_cast<unsigned char>(utf8[i]);
    unsigned code = lead;
    std::size_t length = 1;
    if (lead >= 0xF0) {
      code = (lead & 0x07u) << 18 | b(1) << 12 | b(2) << 6 | b(3), length = 4;
    } else if (lead >= 0xE0) {
      code = (lead & 0x0Fu) << 12 | b(1) << 6 | b(2), length = 3;
    } else if (lead >= 0xC0) {
      code = (lead & 0x1Fu) << 6 | b(1), length = 2;
    }
    if (code >= 0x10000) {
      code -= 0x10000;
      AppendHex4(out, 0xD800 | (code >> 10));
      AppendHex4(out, 0xDC00 | (code & 0x3FF));
    } else {
      AppendHex4(out, code);
    }
    i += length;
  }
  return out;
}

// The face's PostScript name with only the characters a PDF name may carry unescaped.
std::string PostScriptName(hb_face_t* face) {
  char buffer[128];
  unsigned size = sizeof buffer;
  const unsigned length =
      hb_ot_name_get_utf8(face, HB_OT_NAME_ID_POSTSCRIPT_NAME, HB_LANGUAGE_INVALID, &size, buffer);
  std::string name;
  for (unsigned i = 0; i < std::min<unsigned>(length, size); ++i) {
    const char c = buffer[i];
    if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
        c == '_' || c == '.' || c == '+') {
      name += c;
    }
  }
  return name.empty() ? "Font" : name;
}

std::int16_t Int16At(const char* data, unsigned length, unsigned at) {
  if (at + 2 > length) return 0;
  return static_cast<std::int16_t>(static_cast<unsigned char>(data[at]) << 8 |
                                   static_cast<unsigned char>(data[at + 1]));
}

bool HasTable(hb_face_t* face, hb_tag_t tag) {
  hb_blob_t* blob = hb_face_reference_table(face, tag);
  const bool has = hb_blob_get_length(blob) > 0;
  hb_blob_destroy(blob);
  return has;
}

bool Emboldened(PangoFont* font) {
  if (!PANGO_IS_FC_FONT(font)) return false;
  FcPattern* pattern = pango_fc_font_get_pattern(PANGO_FC_FONT(font));
  FcBool embolden = FcFalse;
  return pattern != nullptr &&
         FcPatternGetBool(pattern, FC_EMBOLDEN, 0, &embolden) == FcResultMatch && embolden;
}

}  // namespace

struct PdfFonts::Face {
  hb_face_t* face = nullptr;  // referenced
  hb_font_t* font = nullptr;  // at the face's own scale: advances in font units
  int object = 0;
  double per_unit = 1;        // thousandths of the size per font unit
  std::vector<float> widths;  // by glyph id; negative until asked for
  std::vector<bool> used;
  std::unordered_map<std::uint32_t, std::string> text;  // UTF-16 hex by glyph id

  ~Face() {
    if (font != nullptr) hb_font_destroy(font);
    if (face != nullptr) hb_face_destroy(face);
  }
};

PdfFonts::PdfFonts(PdfFile& file) : file_(file) {}

PdfFonts::~PdfFonts() {
  for (auto& [font, use] : uses_) g_object_unref(font);
}

PdfFonts::Face& PdfFonts::AddFace(PangoFont* font) {
  hb_face_t* face = hb_font_get_face(pango_font_get_hb_font(font));
  for (auto& known : faces_) {
    if (known->face == face) return *known;
  }
  auto added = std::make_unique<Face>();
  added->face = hb_face_reference(face);
  added->font = hb_font_create(face);
  const unsigned upem = std::max(hb_face_get_upem(face), 1u);
  hb_font_set_scale(added->font, static_cast<int>(upem), static_cast<int>(upem));
  added->per_unit = 1000.0 / upem;
  const unsigned glyphs = hb_face_get_glyph_count(face);
  added->widths.assign(glyphs, -1.0f);
  added->used.assign(glyphs, false);
  added->object = file_.Reserve();
  faces_.push_back(std::move(added));
  return *faces_.back();
}

const PdfFonts::Use& PdfFonts::Get(PangoFont* font) {
  if (auto it = uses_.find(font); it != uses_.end()) return it->second;
  Face& face = AddFace(font);
  Use use;
  use.face = static_cast<int>(
      std::find_if(faces_.begin(), faces_.end(), [&](auto& f) { return f.get() == &face; }) -
      faces_.begin());
  use.object = face.object;
  PangoFontDescription* description = pango_font_describe_with_absolute_size(font);
  use.size = static_cast<double>(pango_font_description_get_size(description)) / PANGO_SCALE;
  pango_font_description_free(description);
  use.embolden = Emboldened(font);
  // Held, so that the pointer keeps naming this font for as long as the set lives.
  g_object_ref(font);
  return uses_.emplace(font, use).first->second;
}

double PdfFonts::Width(int index, std::uint32_t glyph) {
  return GlyphWidth(*faces_[static_cast<std::size_t>(index)], glyph);
}

double PdfFonts::GlyphWidth(Face& face, std::uint32_t glyph) {
  if (glyph >= face.widths.size()) return 0;
  float& width = face.widths[glyph];
  if (width < 0) {
    width = static_cast<float>(hb_font_get_glyph_h_advance(face.font, glyph) * face.per_unit);
  }
  return width;
}

void PdfFonts::Shown(int index, std::uint32_t glyph, std::string_view text) {
  Face& face = *faces_[static_cast<std::size_t>(index)];
  if (glyph >= face.used.size()) return;
  face.used[glyph] = true;
  if (!text.empty() && glyph != 0 && face.text.find(glyph) == face.text.end()) {
    face.text.emplace(glyph, Utf16Hex(text));
  }
}

void PdfFonts::Finish() {
  for (auto& face : faces_) WriteFace(*face);
}

void PdfFonts::WriteFace(Face& face) {
  // A subset keeps the glyph ids the pages used, so that the pages written before it stay
  // right; the unused glyphs are left empty. Layout tables are of no use to a reader.
  hb_subset_input_t* input = hb_subset_input_create_or_fail();
  if (input == nullptr) throw RenderError("Cannot embed a font: no memory");
  hb_set_t* glyphs = hb_subset_input_glyph_set(input);
  hb_set_add(glyphs, 0);
  for (std::size_t g = 0; g < face.used.size(); ++g) {
    if (face.used[g]) hb_set_add(glyphs, static_cast<hb_codepoint_t>(g));
  }
  hb_subset_input_set_flags(input, HB_SUBSET_FLAGS_RETAIN_GIDS);
  hb_set_t* drop = hb_subset_input_set(input, HB_SUBSET_SETS_DROP_TABLE_TAG);
  for (hb_tag_t tag : {HB_TAG('G', 'S', 'U', 'B'), HB_TAG('G', 'P', 'O', 'S'),
                       HB_TAG('G', 'D', 'E', 'F'), HB_TAG('k', 'e', 'r', 'n')}) {
    hb_set_add(drop, tag);
  }
  hb_face_t* subset = hb_subset_or_fail(face.face, input);
  hb_subset_input_destroy(input);
  // Should subsetting fail, the whole font goes in.
  hb_blob_t* program =
      subset != nullptr ? hb_face_reference_blob(subset) : hb_face_reference_blob(face.face);
  if (subset != nullptr) hb_face_destroy(subset);
  unsigned program_length = 0;
  const char* program_data = hb_blob_get_data(program, &program_length);
  const bool truetype = HasTable(face.face, HB_TAG('g', 'l', 'y', 'f'));

  const int cid_font = file_.Reserve();
  const int descriptor = file_.Reserve();
  const int font_file = file_.Reserve();
  const int to_unicode = file_.Reserve();

  // Six letters that mark the font as a subset, different for each face of the file.
  std::string name;
  for (int i = 0, n = face.object; i < 6; ++i, n /= 26) name += static_cast<char>('A' + n % 26);
  name += '+';
  name += PostScriptName(face.face);

  file_.WriteStream(font_file, truetype ? "" : "/Subtype/OpenType",
                    std::string_view(program_data, program_length), true);
  hb_blob_destroy(program);

  std::string out;
  out = "<</Type/Font/Subtype/Type0/BaseFont/" + name + "/Encoding/Identity-H/DescendantFonts[" +
        std::to_string(cid_font) + " 0 R]/ToUnicode " + std::to_string(to_unicode) + " 0 R>>";
  file_.WriteObject(face.object, out);

  out = "<</Type/Font/Subtype/";
  out += truetype ? "CIDFontType2" : "CIDFontType0";
  out += "/BaseFont/" + name +
         "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/FontDescriptor " +
         std::to_string(descriptor) + " 0 R";
  if (truetype) out += "/CIDToGIDMap/Identity";
  out += "/W[";
  // Runs of consecutive glyphs share one array: "3[278 556 556]".
  for (std::size_t g = 0; g < face.used.size();) {
    if (!face.used[g] && g != 0) {
      ++g;
      continue;
    }
    out += std::to_string(g);
    out += '[';
    bool first = true;
    for (; g < face.used.size() && (face.used[g] || g == 0); ++g) {
      if (!first) out += ' ';
      first = false;
      pdf::AppendNumber(out, GlyphWidth(face, static_cast<std::uint32_t>(g)));
    }
    out += ']';
  }
  out += "]>>";
  file_.WriteObject(cid_font, out);

  hb_blob_t* head = hb_face_reference_table(face.face, HB_TAG('h', 'e', 'a', 'd'));
  unsigned head_length = 0;
  const char* head_data = hb_blob_get_data(head, &head_length);
  const double box[] = {Int16At(head_data, head_length, 36) * face.per_unit,
                        Int16At(head_data, head_length, 38) * face.per_unit,
                        Int16At(head_data, head_length, 40) * face.per_unit,
                        Int16At(head_data, head_length, 42) * face.per_unit};
  hb_blob_destroy(head);
  hb_position_t ascender = 0, descender = 0, cap_height = 0;
  hb_ot_metrics_get_position_with_fallback(face.font, HB_OT_METRICS_TAG_HORIZONTAL_ASCENDER,
                                           &ascender);
  hb_ot_metrics_get_position_with_fallback(face.font, HB_OT_METRICS_TAG_HORIZONTAL_DESCENDER,
                                           &descender);
  hb_ot_metrics_get_position_with_fallback(face.font, HB_OT_METRICS_TAG_CAP_HEIGHT, &cap_height);
  out = "<</Type/FontDescriptor/FontName/" + name + "/Flags 4/FontBBox[";
  for (int i = 0; i < 4; ++i) {
    if (i > 0) out += ' ';
    pdf::AppendNumber(out, std::round(box[i]));
  }
  out += "]/ItalicAngle ";
  pdf::AppendNumber(out, hb_style_get_value(face.font, HB_STYLE_TAG_SLANT_ANGLE));
  out += "/Ascent ";
  pdf::AppendNumber(out, std::round(ascender * face.per_unit));
  out += "/Descent ";
  pdf::AppendNumber(out, std::round(descender * face.per_unit));
  out += "/CapHeight ";
  pdf::AppendNumber(out, std::round(cap_height * face.per_unit));
  out += "/StemV 80/";
  out += truetype ? "FontFile2 " : "FontFile3 ";
  out += std::to_string(font_file) + " 0 R>>";
  file_.WriteObject(descriptor, out);

  std::vector<std::pair<std::uint32_t, const std::string*>> mapped;
  mapped.reserve(face.text.size());
  for (const auto& [glyph, text] : face.text) mapped.emplace_back(glyph, &text);
  std::sort(mapped.begin(), mapped.end());
  out =
      "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n"
      "/CIDSystemInfo<</Registry(Adobe)/Ordering(UCS)/Supplement 0>>def\n"
      "/CMapName/Adobe-Identity-UCS def\n/CMapType 2 def\n"
      "1 begincodespacerange\n<0000><FFFF>\nendcodespacerange\n";
  for (std::size_t i = 0; i < mapped.size(); i += 100) {
    const std::size_t end = std::min(mapped.size(), i + 100);
    out += std::to_string(end - i) + " beginbfchar\n";
    for (std::size_t k = i; k < end; ++k) {
      out += '<';
      AppendHex4(out, mapped[k].first);
      out += "><";
      out += *mapped[k].second;
      out += ">\n";
    }
    out += "endbfchar\n";
  }
  out += "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend\n";
  file_.WriteStream(to_unicode, "", out, true);
}

}  // namespace trellin::render
