#include "output/messages.h"

#include <algorithm>
#include <cstdio>

#include "output/utf8_text.h"

namespace pagescan::tool {

void tell(std::string_view message) {
  std::string line("pagescan: ");
  line.append(message).append("\n");
  std::fwrite(line.data(), 1, line.size(), stderr);
}

std::string shownName(const std::string& inputName) {
  return inputName == "-" ? "standard input" : printable(inputName);
}

void tellAbout(const std::string& inputName, std::string_view message) {
  tell(shownName(inputName) + ": " + std::string(message));
}

void tellOffsets(const std::string& inputName, const std::vector<std::size_t>& offsets,
                 const std::string& message) {
  constexpr std::size_t kMostNamed = 10;
  const std::size_t named = std::min(offsets.size(), kMostNamed);
  for (std::size_t i = 0; i < named; ++i) {
    tellAbout(inputName, "offset " + std::to_string(offsets[i]) + ": " + message);
  }
  if (named < offsets.size()) {
    tellAbout(inputName, "and " + std::to_string(offsets.size() - named) + " more of these");
  }
}

}  // namespace pagescan::tool
