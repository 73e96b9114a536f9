// What a document from elsewhere may open. A link button opens web and mail
// addresses, and documents or pictures with the desktop's handler, after the
// user agreed once for the document; it never starts a program, a script or
// a desktop entry. A sample button opens only documents of the program, and
// never makes the opened document's path the one Save writes to.
#pragma once

#include <string>

namespace vt {

enum class LinkKind {
  WebAddress,   // http://, https://, www.
  MailAddress,  // mailto:
  Document,     // a file of a document or picture kind
  Refused,      // a program, a script, a desktop entry, another scheme
  Missing,      // a file that is not there
};

// Classifies a target (an address, or a path already resolved). For files it
// looks at the name after following links, and at the first bytes and the
// permission bits of the file.
LinkKind ClassifyLink(const std::string& target);

// The file of a button: PathType 1 takes Para1 as it is; any other value puts
// the program's folder in front. Backslashes become slashes.
std::string ResolveButtonPath(const std::string& para1, int pathType);

// Opens a link target through the host, with the checks above: a refused or
// missing target shows its message and opens nothing; the first opening for
// the current document asks the user. True when the host was asked to open.
bool OpenLinkSafely(const std::string& target);

// Opens a program document (".vtd") as the document; anything else is
// refused with a message. The opened document has no file path of its own.
bool OpenSampleDocument(const std::string& path);

// Forgets which documents the user allowed to open links.
void ResetLinkTrust();

extern const char* const kLinkRefused;
extern const char* const kLinkMissing;
extern const char* const kSampleRefused;

}  // namespace vt
