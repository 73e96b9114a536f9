#include "tools/text_item.h"

#include "render/picture.h"
#include "render/text.h"

#include <GL/gl.h>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <map>
#include <memory>
#include <tuple>
#include <vector>

#include "document/document.h"
#include "document/globals.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "render/strokes.h"

namespace vt {

TextStyle TextToolStyle;
const int kTextFontSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72};
const int kTextFontSizeCount = static_cast<int>(sizeof(kTextFontSizes) / sizeof(kTextFontSizes[0]));

void ApplyTextToolStyle(CText& text) {
  text.FontName = TextToolStyle.FontName.empty() ? std::string("Arial") : TextToolStyle.FontName;
  text.FontSize = TextToolStyle.FontSize > 0 ? TextToolStyle.FontSize : 12;
  text.ForeColor = TextToolStyle.ForeColor;
}

float LastPressPctX() { return LastX / static_cast<float>(std::max(1, CanvasWidth)) * 100.0f; }
float LastPressPctY() { return 100.0f - LastY / static_cast<float>(std::max(1, CanvasHeight)) * 100.0f; }

namespace {

// ---- glyphs ---------------------------------------------------------------------------
// A face per font name and style, found through fontconfig; a text becomes a
// one-bit picture drawn with glBitmap, whose colour is the one current at the
// raster position.

struct Library {
  FT_Library lib = nullptr;
  Library() {
    if (FT_Init_FreeType(&lib) != 0) lib = nullptr;
  }
  ~Library() {
    if (lib) FT_Done_FreeType(lib);
  }
};

// The library and the faces live to the end of the program: nothing frees
// them at exit, so the order of static destruction cannot matter.
Library& FreeType() {
  static Library& l = *new Library;
  return l;
}

struct FaceHolder {
  FT_Face face = nullptr;
  ~FaceHolder() {
    if (face) FT_Done_Face(face);
  }
};

FT_Face FaceFor(const std::string& family, bool bold, bool italic) {
  static auto& faces = *new std::map<std::tuple<std::string, bool, bool>, std::unique_ptr<FaceHolder>>;
  auto key = std::make_tuple(family, bold, italic);
  auto it = faces.find(key);
  if (it != faces.end()) return it->second->face;
  auto holder = std::make_unique<FaceHolder>();
  static bool fcReady = FcInit() == FcTrue;
  if (fcReady && FreeType().lib) {
    FcPattern* pat = FcPatternCreate();
    if (pat) {
      FcPatternAddString(pat, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
      FcPatternAddInteger(pat, FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
      FcPatternAddInteger(pat, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
      FcPatternAddBool(pat, FC_OUTLINE, FcTrue);
      FcConfigSubstitute(nullptr, pat, FcMatchPattern);
      FcDefaultSubstitute(pat);
      FcResult result = FcResultNoMatch;
      FcPattern* match = FcFontMatch(nullptr, pat, &result);
      FcPatternDestroy(pat);
      if (match) {
        FcChar8* file = nullptr;
        int index = 0;
        if (FcPatternGetString(match, FC_FILE, 0, &file) == FcResultMatch && file) {
          if (FcPatternGetInteger(match, FC_INDEX, 0, &index) != FcResultMatch) index = 0;
          if (FT_New_Face(FreeType().lib, reinterpret_cast<const char*>(file), index, &holder->face) != 0)
            holder->face = nullptr;
        }
        FcPatternDestroy(match);
      }
    }
  }
  FT_Face f = holder->face;
  faces[key] = std::move(holder);
  return f;
}

struct TextBitmap {
  int width = 0, height = 0, descent = 0;
  std::vector<GLubyte> bits;  // rows bottom-up, each (width + 7) / 8 bytes
};

bool RenderText(const CText& t, TextBitmap& out) {
  FT_Face face = FaceFor(t.FontName.empty() ? std::string("Arial") : t.FontName, t.FontBold, t.FontItalic);
  if (!face || t.Content.empty()) return false;
  const int px = std::clamp(t.FontSize, 1, 400) * 96 / 72;
  if (FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(std::max(1, px))) != 0) return false;
  const int ascent = static_cast<int>(face->size->metrics.ascender >> 6);
  const int descent = static_cast<int>(-(face->size->metrics.descender >> 6));
  const int height = std::max(1, ascent + descent);
  // First the width, then the glyphs into a coverage picture (rows top-down).
  std::vector<unsigned> cps = CodePoints(t.Content);
  int width = 0;
  for (unsigned cp : cps)
    if (FT_Load_Char(face, cp, FT_LOAD_DEFAULT) == 0) width += static_cast<int>(face->glyph->advance.x >> 6);
  width = std::max(1, width + 2);
  std::vector<unsigned char> cover(static_cast<size_t>(width) * height, 0);
  int pen = 0;
  for (unsigned cp : cps) {
    if (FT_Load_Char(face, cp, FT_LOAD_RENDER) != 0) continue;
    const FT_GlyphSlot g = face->glyph;
    const FT_Bitmap& b = g->bitmap;
    for (unsigned row = 0; row < b.rows; ++row)
      for (unsigned col = 0; col < b.width; ++col) {
        const int x = pen + g->bitmap_left + static_cast<int>(col);
        const int y = ascent - g->bitmap_top + static_cast<int>(row);
        if (x < 0 || x >= width || y < 0 || y >= height) continue;
        unsigned char v = b.pixel_mode == FT_PIXEL_MODE_MONO
                              ? ((b.buffer[row * b.pitch + col / 8] >> (7 - col % 8)) & 1) * 255
                              : b.buffer[row * b.pitch + col];
        cover[static_cast<size_t>(y) * width + x] = std::max(cover[static_cast<size_t>(y) * width + x], v);
      }
    pen += static_cast<int>(g->advance.x >> 6);
  }
  auto line = [&](int y) {
    if (y < 0 || y >= height) return;
    for (int x = 0; x < pen && x < width; ++x) cover[static_cast<size_t>(y) * width + x] = 255;
  };
  if (t.FontUnderline) line(ascent + std::max(1, descent / 2));
  if (t.FontStrikeOut) line(ascent - ascent / 3);
  const int stride = (width + 7) / 8;
  out.width = width;
  out.height = height;
  out.descent = descent;
  out.bits.assign(static_cast<size_t>(stride) * height, 0);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      if (cover[static_cast<size_t>(y) * width + x] >= 110)
        out.bits[static_cast<size_t>(height - 1 - y) * stride + x / 8] |= static_cast<GLubyte>(0x80 >> (x % 8));
  return true;
}

void ReadText(RecordReader& r, int) {
  std::unique_ptr<CText> t = CText::Load(r);
  std::string key = t->ID;
  Doc.Texts.Add(std::move(t), key);
}

void ReadButton(RecordReader& r, int) {
  std::unique_ptr<CButton> b = CButton::Load(r);
  std::string key = b->ID;
  Doc.Buttons.Add(std::move(b), key);
}

}  // namespace

// ---- CText --------------------------------------------------------------------------------

bool CText::PickPct(float px, float py) const {
  return px >= PosX && px <= PosX + 15 && py >= PosY && py <= PosY + 3;
}

bool CText::Pick(const Position&, const Position&, const Position&) {
  return PickPct(LastPressPctX(), LastPressPctY());
}

void CText::Draw() {
  if (Hide) return;
  glColor3ub(ForeColor & 0xFF, (ForeColor >> 8) & 0xFF, (ForeColor >> 16) & 0xFF);
  TextBitmap bm;
  if (RenderText(*this, bm)) {
    const float w = static_cast<float>(std::max(1, CanvasWidth)), h = static_cast<float>(std::max(1, CanvasHeight));
    Wide = bm.width / w * 100.0f;
    Height = bm.height / h * 100.0f;
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glRasterPos3f(PosX, PosY, PosZ);
    if (CapturingPicture()) {
      PictureText t;
      t.text = Content;
      t.r = ForeColor & 0xFF;
      t.g = (ForeColor >> 8) & 0xFF;
      t.b = (ForeColor >> 16) & 0xFF;
      t.font = FontName.empty() ? std::string("Arial") : FontName;
      t.pixelSize = static_cast<float>(std::clamp(FontSize, 1, 400) * 96 / 72);
      t.bold = FontBold;
      t.italic = FontItalic;
      CaptureText(t, static_cast<float>(bm.descent));
    } else {
      DrawBitmapAt(PosX, PosY, PosZ, bm.width, bm.height, 0, 0, bm.bits.data());
    }
  } else {
    Wide = Height = 0;
  }
  if (Selected) {
    // The frame is fixed: it does not follow the length of the text.
    DrawSelectionFrame(PosX, PosY, 1.2f);
  }
}

std::string CText::Save() const {
  RecordWriter w(ID);
  w.Add(PosX).Add(PosY).Add(PosZ).Add(TType).AddFramed(Content).Add(static_cast<long>(ForeColor));
  w.AddFramed(FontName).Add(FontSize).Add(BoolField(Hide));
  return w.Close();
}

std::unique_ptr<CText> CText::Load(RecordReader& r) {
  auto t = std::make_unique<CText>();
  t->ID = r.OwnId();
  t->PosX = r.Single();
  t->PosY = r.Single();
  t->PosZ = r.Single();
  t->TType = r.Short();
  t->Content = r.FramedText();
  t->ForeColor = static_cast<std::uint32_t>(r.Long()) & 0xFFFFFFu;
  t->FontName = r.FramedText();
  t->FontSize = r.Int();
  t->Hide = r.Bool();
  return t;
}

void RegisterScreenItemReaders() {
  RegisterRecordReader("TT", &ReadText);
  RegisterRecordReader("BT", &ReadButton);
}

}  // namespace vt
