#include "classic/url_cleaning.h"

#include <algorithm>

#include "base/byte_class.h"
#include "base/link_scan.h"
#include "base/numbers.h"
#include "base/search.h"

namespace pagescan::internal {
namespace {

constexpr std::string_view kScriptScheme = "javascript:";
constexpr std::string_view kBlank = "%20";
constexpr ByteClass kToClean = kHtmlWhiteSpace | ByteClass::of("%");

std::string_view trimmed(std::string_view url) {
  const char* end = url.data() + url.size();
  const char* begin = skipWhiteSpace(url.data(), end);
  end = findEndOfLastNotOf(begin, end, kHtmlWhiteSpace);
  return {begin, static_cast<std::size_t>(end - begin)};
}

bool isScript(std::string_view url) {
  return equalsIgnoringCase(url.substr(0, kScriptScheme.size()), kScriptScheme);
}

// Builds the clean text run by run.
class Cleaner {
 public:
  Cleaner(std::string_view url, bool decodePercent, ScratchText& result)
      : at_(url.data()),
        end_(url.data() + url.size()),
        keepsBlanks_(isScript(url)),
        decodes_(decodePercent),
        result_(result) {}

  void run() {
    while (at_ < end_) {
      copyRun();
      if (at_ < end_) takeSpecial();
    }
  }

 private:
  void copyRun() {
    const char* stop = findFirstOf(at_, end_, kToClean);
    const std::string_view run(at_, static_cast<std::size_t>(stop - at_));
    if (decodes_ && run.find('?') != std::string_view::npos) decodes_ = false;
    result_.append(run);
    at_ = stop;
  }

  void takeSpecial() {
    const char byte = *at_;
    if (byte == '%') {
      takePercent();
      return;
    }
    ++at_;
    if (byte == ' ' && keepsBlanks_) {
      result_.append(' ');
    } else if (byte == ' ') {
      result_.append(kBlank);
    }
  }

  // An escape takes three bytes, or what is left of them, however many of them are digits.
  void takePercent() {
    if (!decodes_) {
      result_.append(*at_++);
      return;
    }
    const char first = byteAt(1);
    const char second = byteAt(2);
    at_ = end_ - at_ < 3 ? end_ : at_ + 3;
    const int value = readHexEscape(first, second);
    if (value == ' ') {
      result_.append(kBlank);
    } else {
      result_.append(static_cast<char>(value));
    }
  }

  char byteAt(std::ptrdiff_t distance) const {
    return end_ - at_ > distance ? at_[distance] : '\0';
  }

  const char* at_;
  const char* end_;
  bool keepsBlanks_;
  bool decodes_;  // off once the query has begun
  ScratchText& result_;
};

}  // namespace

std::string_view cleanUrl(std::string_view url, bool decodePercent, ScratchText& scratch) {
  if (!needsCleaning(url)) return url;
  url = trimmed(url);
  const char* end = url.data() + url.size();
  const char* first = decodePercent ? findFirstOf(url.data(), end, kToClean)
                                    : findFirstOf(url.data(), end, kHtmlWhiteSpace);
  if (first == end) return url;
  // Blanks grow, plain or escaped.
  const auto growing = std::count_if(first, end, [](char c) { return c == ' ' || c == '%'; });
  scratch.start(url.size() + (kBlank.size() - 1) * static_cast<std::size_t>(growing));
  Cleaner(url, decodePercent, scratch).run();
  return scratch.text();
}

}  // namespace pagescan::internal
