#include <cstdlib>
#include <string>

#include "cli/commands.h"

namespace vt::cli {

bool ParseSize(const std::string& text, int& w, int& h, long minSide, long maxSide) {
  const size_t x = text.find_first_of("xX");
  if (x == std::string::npos || x == 0 || x + 1 >= text.size()) return false;
  char* end = nullptr;
  const long lw = std::strtol(text.c_str(), &end, 10);
  if (end != text.c_str() + x) return false;
  const long lh = std::strtol(text.c_str() + x + 1, &end, 10);
  if (*end != '\0' || lw < minSide || lh < minSide || lw > maxSide || lh > maxSide) return false;
  w = static_cast<int>(lw);
  h = static_cast<int>(lh);
  return true;
}

}  // namespace vt::cli
