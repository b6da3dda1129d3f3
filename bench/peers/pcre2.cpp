// PCRE2 with its JIT: what a user with patterns would write.
#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "peers.h"

namespace pagescan::bench {
namespace {

// A pattern and the state of one search with it.
class Pattern {
 public:
  explicit Pattern(const char* text) {
    int error = 0;
    PCRE2_SIZE errorAt = 0;
    code_ = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text), PCRE2_ZERO_TERMINATED,
                          PCRE2_CASELESS | PCRE2_DOTALL, &error, &errorAt, nullptr);
    if (code_ == nullptr || pcre2_jit_compile(code_, PCRE2_JIT_COMPLETE) != 0) {
      throw std::runtime_error(text);
    }
    match_ = pcre2_match_data_create_from_pattern(code_, nullptr);
  }
  Pattern(const Pattern&) = delete;
  Pattern& operator=(const Pattern&) = delete;
  ~Pattern() {
    pcre2_match_data_free(match_);
    pcre2_code_free(code_);
  }

  // Calls use(*this) for each match in the text.
  template <typename Use>
  void forEachIn(std::string_view text, Use use) {
    const auto subject = reinterpret_cast<PCRE2_SPTR>(text.data());
    std::size_t at = 0;
    while (at <= text.size() &&
           pcre2_jit_match(code_, subject, text.size(), at, 0, match_, nullptr) > 0) {
      text_ = text;
      use(*this);
      const PCRE2_SIZE end = pcre2_get_ovector_pointer(match_)[1];
      at = end > at ? end : at + 1;
    }
  }

  // What a group of the latest match holds; empty when it took no part.
  std::string_view group(std::size_t number) const {
    const PCRE2_SIZE* const ends = pcre2_get_ovector_pointer(match_);
    if (number >= pcre2_get_ovector_count(match_) || ends[2 * number] == PCRE2_UNSET) return {};
    return text_.substr(ends[2 * number], ends[2 * number + 1] - ends[2 * number]);
  }

  // The text with each match replaced.
  std::string replacedIn(std::string_view text, std::string_view replacement) {
    std::string result(text.size() + text.size() / 8 + 64, '\0');
    PCRE2_SIZE length = result.size();
    const int count =
        pcre2_substitute(code_, reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), 0,
                         PCRE2_SUBSTITUTE_GLOBAL | PCRE2_SUBSTITUTE_UNSET_EMPTY, match_, nullptr,
                         reinterpret_cast<PCRE2_SPTR>(replacement.data()), replacement.size(),
                         reinterpret_cast<PCRE2_UCHAR*>(result.data()), &length);
    if (count < 0) throw std::runtime_error("PCRE2 cannot replace");
    result.resize(length);
    return result;
  }

 private:
  pcre2_code* code_;
  pcre2_match_data* match_;
  std::string_view text_;
};

struct Found {
  std::string tag;
  std::vector<std::pair<std::string, std::string>> attributes;
};

// First the tags, past comments and the bodies of scripts; then the attributes in each.
std::size_t parsePage(std::string_view page) {
  static Pattern tags(
      "<!--.*?-->|<(script)([^>]*)>.*?</script|"
      "<(base|body|table|td|th|applet|object|embed|frame|iframe|img|link|input|xml|\\?import)"
      "(?=[\\s>])([^>]*)");
  static Pattern attributes(
      "\\b(src|href|background|codebase|code|data|classid|rel|lowsrc|dynsrc|implementation)"
      "\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)'|([^\\s>]+))");
  std::vector<Found> found;
  tags.forEachIn(page, [&](const Pattern& tag) {
    const std::size_t kind = tag.group(1).empty() ? 3 : 1;
    if (tag.group(kind).empty()) return;
    Found record{std::string(tag.group(kind)), {}};
    attributes.forEachIn(tag.group(kind + 1), [&](const Pattern& attribute) {
      std::size_t value = 2;
      while (value < 4 && attribute.group(value).empty()) ++value;
      record.attributes.emplace_back(attribute.group(1), attribute.group(value));
    });
    if (!record.attributes.empty()) found.push_back(std::move(record));
  });
  return found.size();
}

std::size_t parseStyle(std::string_view sheet) {
  static Pattern urls("/\\*.*?\\*/|url\\(\\s*[\"']?([^\"')]*)|@import\\s+[\"']([^\"']*)");
  std::vector<std::string> found;
  urls.forEachIn(sheet, [&](const Pattern& url) {
    const std::size_t kind = url.group(1).empty() ? 2 : 1;
    if (!url.group(kind).empty()) found.emplace_back(url.group(kind));
  });
  return found.size();
}

std::size_t blankScripts(std::string_view page) {
  static Pattern scripts("(<script[^>]*>).*?(?=</script)|<!--.*?-->");
  return scripts.replacedIn(page, "$1").size();
}

std::size_t skipHandlers(std::string_view page) {
  static Pattern handlers(
      "(onload|onmouseover|onmouseout)\\s*=\\s*(?:\"[^\"]*\"|'[^']*'|[^\\s>]+)");
  return handlers.replacedIn(page, "$1=\"\"").size();
}

const PeerRegistration kPcre2({.name = "PCRE2",
                               .parsePage = parsePage,
                               .parseStyle = parseStyle,
                               .blankScripts = blankScripts,
                               .skipHandlers = skipHandlers});

}  // namespace
}  // namespace pagescan::bench
