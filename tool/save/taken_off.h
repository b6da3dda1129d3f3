// TakenOff: attributes that would keep a browser from reading the copies that a page names.
#ifndef PAGESCAN_TOOL_SAVE_TAKEN_OFF_H
#define PAGESCAN_TOOL_SAVE_TAKEN_OFF_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "pagescan/edits.h"
#include "pagescan/page.h"

namespace pagescan::tool {

// The places beyond the standard ones that a page is to be read with for that. Not fetched, of the
// kind identifier.
const Places& placesOfInterest();

class TakenOff {
 public:
  // `page` was read with placesOfInterest() and must outlive the object.
  // takesEncoding  whether what the page says of its encoding goes, too
  TakenOff(const Page& page, bool takesEncoding) : page_(page), takesEncoding_(takesEncoding) {}

  // Looks at each reference of the page.
  // isCopy  whether it names a copy from now on
  void look(const Reference& reference, bool isCopy);

  // What takes the attributes off.
  std::vector<ByteEdit> edits();

  // What edits() took off, for people: "3 integrity attributes taken off".
  std::vector<std::string> messages() const;

 private:
  const Page& page_;
  bool takesEncoding_;
  std::map<std::uint32_t, unsigned> tags_;  // bits of attributes, by the "<" of the tag
  std::array<std::size_t, 5> counts_ = {};  // of what was taken off
};

}  // namespace pagescan::tool

#endif
