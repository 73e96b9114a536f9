// One frame of a document without a window: what vantrel-cli render does,
// kept in the core so that tests run the same code.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vt {

class OffscreenContext;

struct HeadlessRender {
  std::string documentPath;
  std::string pngPath;
  int width = 800;
  int height = 600;
  bool space = false;  // switch to the space view after opening
};

// Makes an offscreen context of the size, starts the program in it, opens the
// document through File-Open as the program does, draws one frame as the
// canvas would and writes it as PNG. The context is gone afterwards.
//
// A document is refused, with nothing written, when its file cannot be read,
// its byte frame is damaged, its text does not begin with the scene record
// "GL", or a record in it cannot be read. On failure `error` holds one line.
// Messages the program showed on the way (a font it could not create) are
// appended to `messages`.
bool RenderDocumentToPng(const HeadlessRender& request, std::string& error, std::vector<std::string>* messages = nullptr);

// What both headless outputs share: reads the document at `path` (refused as
// above), makes an offscreen context of the size, starts the program in it with
// a host of its own (File-Open answers with the path), reads the document and
// then calls `work`, which draws and writes what it makes, or sets `error` and
// gives false. The caller's host is back and the context gone afterwards.
bool RunOnHeadlessDocument(const std::string& path, int width, int height,
                           const std::function<bool(OffscreenContext& context, std::string& error)>& work,
                           std::string& error, std::vector<std::string>* messages = nullptr);

}  // namespace vt
