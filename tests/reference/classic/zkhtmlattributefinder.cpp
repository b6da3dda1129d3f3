#include "reference/classic/zkhtmlattributefinder.h"

#include <cstddef>
#include <optional>

#include "reference/classic/regexp.h"
#include "reference/classic/strings.h"
#include "reference/classic/zkhtmlparseutils.h"

namespace reference {

namespace {

enum class Next { pass, stop };

class Finder {
 public:
  Finder(const std::string& text, unsigned long& pos, std::map<std::string, std::string>& values,
         std::map<std::string, int>& offsets)
      : text_(text), pos_(pos), values_(values), offsets_(offsets) {}

  // Reads one attribute from the position on.
  Next pass() {
    nameStart_.reset();
    nameEnd_.reset();
    const std::size_t len = text_.length();
    if (pos_ >= len) return Next::stop;
    std::size_t i = pos_;
    while (i < len) {
      const char c = text_[i];
      if (isBlank(c) || c == '"') {
        if (nameStart_ && !nameEnd_) nameEnd_ = i;
        ++i;
      } else if (c == '>') {
        if (!nameStart_) return Next::stop;
        if (!nameEnd_) nameEnd_ = i;
        recordWithoutValue();
        return Next::stop;
      } else if (c == '=') {
        if (!nameStart_) return Next::stop;
        if (!nameEnd_) nameEnd_ = i;
        return recordWithValue(i);
      } else if (isLetter(c) || isDigit(c) || c == '-') {
        if (nameEnd_) {
          recordWithoutValue();
          return Next::pass;
        }
        if (!nameStart_) nameStart_ = i;
        ++i;
      } else {
        const std::size_t f = search(text_, "[>\\t\\r\\n ]", i).position;
        if (f == npos) break;
        if (text_[f] == '>') {
          if (isComplete()) recordWithoutValue();
          return Next::stop;
        }
        i = f + 1;
      }
    }
    // The end of the text, or no end of a run of unexpected bytes.
    if (!isComplete()) return Next::stop;
    recordWithoutValue();
    return Next::pass;
  }

 private:
  bool isComplete() const { return nameStart_ && nameEnd_; }

  void recordWithoutValue() {
    pos_ = *nameEnd_;
    store("", -1);
  }

  Next recordWithValue(std::size_t equals) {
    std::string value;
    unsigned long valueStart = 0;
    unsigned long furthest = 0;
    if (!htmlGetStringValue(text_, value, equals, valueStart, furthest, text_.length())) {
      return Next::stop;
    }
    pos_ = furthest;
    store(value, static_cast<int>(valueStart));
    return Next::pass;
  }

  // The presence test is on the name as written; an insertion under a key that is present is
  // refused.
  void store(const std::string& value, int offset) {
    const std::string written = text_.substr(*nameStart_, *nameEnd_ - *nameStart_);
    if (values_.count(written) != 0) return;
    values_.emplace(lowered(written), value);
    offsets_.emplace(lowered(written), offset);
  }

  const std::string& text_;
  unsigned long& pos_;
  std::map<std::string, std::string>& values_;
  std::map<std::string, int>& offsets_;
  std::optional<std::size_t> nameStart_;
  std::optional<std::size_t> nameEnd_;
};

}  // namespace

void FindAttributes(const std::string& text, unsigned long& pos,
                    std::map<std::string, std::string>& values,
                    std::map<std::string, int>& offsets) {
  values.clear();
  offsets.clear();
  htmlSkipWhiteSpaces(text, text.length(), pos);
  Finder finder(text, pos, values, offsets);
  while (finder.pass() == Next::pass) {
  }
}

}  // namespace reference
