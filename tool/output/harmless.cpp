#include "output/harmless.h"

#include <algorithm>

#include "output/messages.h"
#include "zkhtmlparseutils.h"

namespace pagescan::tool {

namespace {

constexpr char kOpening[] = "<SCRIPT";
constexpr char kClosing[] = "</SCRIPT>";
constexpr std::size_t kClosingLength = sizeof(kClosing) - 1;

// Whether nothing but white space stands in [begin, end).
bool isBlank(const RWCString& text, std::size_t begin, std::size_t end) {
  return std::all_of(text.data() + begin, text.data() + end, htmlIsWhiteSpace);
}

}  // namespace

void blankNulBytes(const std::string& inputName, RWCString& text) {
  const std::size_t first = text.index('\0');
  std::size_t count = 0;
  for (std::size_t at = first; at != RWCString::npos; at = text.index('\0', at + 1)) {
    text(at) = ' ';
    ++count;
  }
  if (count != 0) {
    tellAbout(inputName, std::to_string(count) + (count == 1 ? " NUL byte" : " NUL bytes") +
                             " taken for blanks, from offset " + std::to_string(first) + " on");
  }
}

void tellScriptsThatStay(const std::string& inputName, const RWCString& text) {
  std::vector<std::size_t> openings;
  std::size_t opening = text.index(kOpening, 0, RWCString::ignoreCase);
  while (opening != RWCString::npos) {
    const std::size_t tagEnd = text.index('>', opening);
    if (tagEnd == RWCString::npos) break;
    const std::size_t closing = text.index(kClosing, tagEnd, RWCString::ignoreCase);
    const bool hasEnd = closing != RWCString::npos;
    if (!isBlank(text, tagEnd + 1, hasEnd ? closing : text.length())) openings.push_back(opening);
    opening = hasEnd ? text.index(kOpening, closing, RWCString::ignoreCase) : RWCString::npos;
  }
  tellOffsets(inputName, openings, "this script stays as it is");
}

HiddenScripts::HiddenScripts(const std::string& inputName, RWCString& text) {
  std::size_t opening = tqFindEndlessScript(text);
  while (opening != RWCString::npos) {
    const std::size_t closing = text.index(kClosing, opening, RWCString::ignoreCase);
    hide(text, opening, closing);
    // What stands before is settled: blanking would go on from here.
    opening = tqFindEndlessScript(text, closing + kClosingLength);
  }
  tellOffsets(inputName, openings_,
              "<SCRIPT without its \">\" before </SCRIPT> is not taken for a tag");
}

// Every opening tag on the way to the closing one lacks its ">" just as the first does. The
// closing tag would be a stray one, which ends the blanking of all scripts after it.
void HiddenScripts::hide(RWCString& text, std::size_t opening, std::size_t closing) {
  while (opening < closing) {
    text(opening) = ' ';
    openings_.push_back(opening);
    opening = text.index(kOpening, opening, RWCString::ignoreCase);
  }
  text(closing) = ' ';
  closings_.push_back(closing);
}

void HiddenScripts::showIn(RWCString& text) const {
  for (const std::size_t at : openings_) text(at) = '<';
  for (const std::size_t at : closings_) text(at) = '<';
}

}  // namespace pagescan::tool
