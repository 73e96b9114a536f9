#include "tools/link_safety.h"

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <set>

#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "persist/docio.h"

namespace vt {

const char* const kLinkRefused =
    "This link leads to a program, a script or a desktop entry. A document may not start programs, so it "
    "was not opened.";
const char* const kLinkMissing = "The file of this link cannot be found.";
const char* const kSampleRefused = "This button can only open documents of the program (.vtd).";

namespace {

std::set<std::string> g_trusted;  // documents whose links the user allowed

std::string Lower(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return s;
}

bool StartsWith(const std::string& s, const char* prefix) { return s.rfind(prefix, 0) == 0; }

std::string Extension(const std::filesystem::path& p) {
  std::string e = p.extension().string();
  if (!e.empty() && e[0] == '.') e.erase(0, 1);
  return Lower(e);
}

// Kinds the desktop shows rather than runs.
bool ViewableExtension(const std::string& ext) {
  static const std::set<std::string> kinds = {
      "vtd", "pdf", "txt", "htm", "html", "rtf", "odt", "ods", "odp", "doc", "docx", "xls", "xlsx", "ppt",
      "pptx", "csv", "bmp", "jpg", "jpeg", "gif", "png", "tif", "tiff", "webp", "svg", "avi", "mp4", "ogg"};
  return kinds.count(ext) > 0;
}

// The file begins like a program or a script.
bool LooksRunnable(const std::filesystem::path& p) {
  std::ifstream in(p, std::ios::binary);
  char head[4] = {0, 0, 0, 0};
  in.read(head, 4);
  const std::streamsize n = in.gcount();
  if (n >= 2 && head[0] == '#' && head[1] == '!') return true;
  if (n >= 4 && head[0] == 0x7F && head[1] == 'E' && head[2] == 'L' && head[3] == 'F') return true;
  if (n >= 2 && head[0] == 'M' && head[1] == 'Z') return true;
  return false;
}

bool Executable(const std::filesystem::path& p) {
  struct stat st {};
  if (::stat(p.c_str(), &st) != 0) return false;
  return (st.st_mode & (S_IXUSR | S_IXGRP | S_IXOTH)) != 0;
}

void Say(const char* text) { host().MsgBox(text, "Note", MsgButtons::OK, MsgIcon::Exclamation); }

}  // namespace

LinkKind ClassifyLink(const std::string& target) {
  std::string t = target;
  while (!t.empty() && std::isspace(static_cast<unsigned char>(t.back()))) t.pop_back();
  while (!t.empty() && std::isspace(static_cast<unsigned char>(t.front()))) t.erase(0, 1);
  if (t.empty()) return LinkKind::Missing;
  const std::string low = Lower(t);
  if (StartsWith(low, "http://") || StartsWith(low, "https://") || StartsWith(low, "www.")) {
    // An address is handed over as text; control characters have no place in it.
    for (unsigned char c : t)
      if (c < 0x20 || c == 0x7F) return LinkKind::Refused;
    return LinkKind::WebAddress;
  }
  if (StartsWith(low, "mailto:")) return LinkKind::MailAddress;
  // Any other scheme (file:, javascript:, a handler of some program) is not
  // for a document to choose.
  const size_t colon = t.find(':');
  if (colon != std::string::npos && colon > 1 && t.find('/') > colon) return LinkKind::Refused;
  std::error_code ec;
  std::filesystem::path p(t);
  if (!std::filesystem::exists(p, ec)) return LinkKind::Missing;
  std::filesystem::path real = std::filesystem::canonical(p, ec);
  if (ec) return LinkKind::Missing;
  if (!std::filesystem::is_regular_file(real, ec)) return LinkKind::Refused;
  // The name the user sees and the name the link leads to must both be of a
  // kind that is shown, not run.
  if (!ViewableExtension(Extension(p)) || !ViewableExtension(Extension(real))) return LinkKind::Refused;
  if (Executable(real) || LooksRunnable(real)) return LinkKind::Refused;
  return LinkKind::Document;
}

std::string ResolveButtonPath(const std::string& para1, int pathType) {
  std::string p = para1;
  std::replace(p.begin(), p.end(), '\\', '/');
  if (pathType == 1) return p;
  while (!p.empty() && p.front() == '/') p.erase(0, 1);
  return ProgramPath(p);
}

bool OpenLinkSafely(const std::string& target) {
  const LinkKind kind = ClassifyLink(target);
  if (kind == LinkKind::Refused) {
    Say(kLinkRefused);
    return false;
  }
  if (kind == LinkKind::Missing) {
    Say(kLinkMissing);
    return false;
  }
  if (!g_trusted.count(CurrentFilePath)) {
    const std::string ask = "This document wants to open\n" + target + "\nOpen it?";
    if (host().MsgBox(ask, "Note", MsgButtons::YesNo, MsgIcon::Question) != MsgResult::Yes) return false;
    g_trusted.insert(CurrentFilePath);
  }
  std::string t = target;
  if (kind == LinkKind::WebAddress && StartsWith(Lower(t), "www.")) t = "http://" + t;
  if (kind == LinkKind::Document) {
    std::error_code ec;
    std::filesystem::path real = std::filesystem::canonical(t, ec);
    if (!ec) t = real.string();
  }
  return host().OpenPath(t);
}

bool OpenSampleDocument(const std::string& path) {
  std::error_code ec;
  std::filesystem::path p(path);
  if (Extension(p) != "vtd") {
    Say(kSampleRefused);
    return false;
  }
  if (!std::filesystem::is_regular_file(p, ec)) {
    Say(kLinkMissing);
    return false;
  }
  std::string text;
  if (!ReadDocumentFile(p.string(), text) || text.empty()) return false;
  OpenDocumentText(text);
  // The sample is shown, not adopted: Save asks where to write.
  CurrentFilePath.clear();
  return true;
}

void ResetLinkTrust() { g_trusted.clear(); }

}  // namespace vt
