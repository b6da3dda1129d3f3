#include "output/messages.h"

#include <cstdio>

#include "commands/utf8_text.h"

namespace pagescan::tool {

void tell(std::string_view message) {
  std::string line("pagescan: ");
  line.append(message).append("\n");
  std::fwrite(line.data(), 1, line.size(), stderr);
}

void tellAbout(const std::string& inputName, std::string_view message) {
  const std::string shownName = inputName == "-" ? "standard input" : printable(inputName);
  tell(shownName + ": " + std::string(message));
}

}  // namespace pagescan::tool
