#include "tools/name_rules.h"

#include "document/host.h"

namespace vt {

namespace {
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
}  // namespace

std::string ParameterNameError(std::string& name) {
  std::size_t a = 0, b = name.size();
  while (a < b && IsBlank(name[a])) ++a;
  while (b > a && IsBlank(name[b - 1])) --b;
  name = name.substr(a, b - a);
  if (name.empty()) return "Please input the name. ";
  if (name[0] < 'A' || name[0] > 'Z')
    return "The name is invalid, the first letter must be written in capitals. ";
  for (std::size_t i = 1; i < name.size(); ++i)
    if (!IsLetter(name[i]) && !IsDigit(name[i]) && name[i] != '_')
      return "The name is invalid, invalid character exists. The name must be composed of "
             "characters and numbers, the first letter must be written in capitals. ";
  return {};
}

bool CheckParameterName(std::string& name) {
  const std::string error = ParameterNameError(name);
  if (error.empty()) return true;
  host().MsgBox(error, "Note", MsgButtons::OK, MsgIcon::Exclamation);
  return false;
}

}  // namespace vt
