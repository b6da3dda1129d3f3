// Makes a copy of a page harmless: what would end or never end its reading is overwritten, byte
// for byte, so that every offset stays. What was done is told to the user.
#ifndef PAGESCAN_TOOL_HARMLESS_H
#define PAGESCAN_TOOL_HARMLESS_H

#include <cstddef>
#include <string>
#include <vector>

#include "rw/rwcstring.h"

namespace pagescan::tool {

// Overwrites each NUL byte, at which the parser would take the text to end, with a blank.
void blankNulBytes(const std::string& inputName, RWCString& text);

// Tells about each script whose body is not blank, in a text in which scripts have been blanked:
// one without an end, or one after the place where the blanking ended. Linear in the text.
void tellScriptsThatStay(const std::string& inputName, const RWCString& text);

// Script tags on which blanking the scripts of a text would not return: each "<SCRIPT" without its
// ">" before the next "</SCRIPT>", and that closing tag. While hidden, their "<" is a blank.
class HiddenScripts {
 public:
  // Hides them in `text`, in linear time.
  HiddenScripts(const std::string& inputName, RWCString& text);

  // Brings them back into a text whose offsets are still the same.
  void showIn(RWCString& text) const;

 private:
  void hide(RWCString& text, std::size_t opening, std::size_t closing);

  std::vector<std::size_t> openings_;
  std::vector<std::size_t> closings_;
};

}  // namespace pagescan::tool

#endif
