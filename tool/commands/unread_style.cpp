#include "commands/unread_style.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "output/bytes.h"
#include "output/messages.h"

namespace pagescan::tool {

namespace {

constexpr std::string_view kUrl = "url(";
constexpr std::string_view kImport = "@import";

// Goes through the places of style text that look like URLs.
class UnreadStyle {
 public:
  UnreadStyle(std::string_view css, const std::vector<int>& offsets)
      : css_(css), offset_(offsets.begin()), end_(offsets.end()) {}

  std::vector<std::size_t> find() {
    while ((at_ = css_.find_first_of("/uU@", at_)) != std::string_view::npos) {
      if (startsWith("/*")) {
        passComment();
      } else if (startsWith(kImport)) {
        takePlace(std::min(css_.find(';', at_), css_.size()));
      } else if (startsWith(kUrl)) {
        isLocal() ? void(at_ += kUrl.size()) : takePlace(at_ + kUrl.size() + 1);
      } else {
        ++at_;
      }
    }
    return unread_;
  }

 private:
  bool startsWith(std::string_view word) const {
    return std::equal(
        word.begin(), word.end(), css_.begin() + static_cast<std::ptrdiff_t>(at_),
        css_.begin() + static_cast<std::ptrdiff_t>(std::min(at_ + word.size(), css_.size())),
        [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b | 0x20 : b); });
  }

  void passComment() {
    const std::size_t end = css_.find("*/", at_ + 2);
    at_ = end == std::string_view::npos ? css_.size() : end + 2;
  }

  // Whether the url( at this place is empty or a fragment.
  bool isLocal() const {
    const std::size_t value = css_.find_first_not_of(" \t\r\n\f\"'", at_ + kUrl.size());
    return value == std::string_view::npos || css_[value] == '#' || css_[value] == ')';
  }

  // The place was read when a value begins between it and `last`.
  void takePlace(std::size_t last) {
    while (offset_ != end_ && static_cast<std::size_t>(*offset_) < at_) ++offset_;
    if (offset_ == end_ || static_cast<std::size_t>(*offset_) > last) unread_.push_back(at_);
    at_ = std::max(last, at_ + 1);
  }

  std::string_view css_;
  std::vector<int>::const_iterator offset_, end_;
  std::size_t at_ = 0;
  std::vector<std::size_t> unread_;
};

}  // namespace

void tellUnreadStyle(const std::string& inputName, const RWCString& css,
                     const std::vector<int>& offsets, std::size_t lead) {
  std::vector<std::size_t> unread = UnreadStyle(bytesOf(css), offsets).find();
  for (std::size_t& offset : unread) offset -= lead;
  tellOffsets(inputName, unread, "this url( or @import is not read");
}

}  // namespace pagescan::tool
