#include "classic/blanking.h"

#include <cstring>
#include <string_view>

#include "base/delimiters.h"
#include "base/kernels.h"
#include "base/search.h"
#include "classic/text_view.h"

namespace pagescan::internal {
namespace {

constexpr std::string_view kParagraph = "<p>";
constexpr std::string_view kParagraphEnd = "</p>";
constexpr Delimiters kScript("<script", "</script>");
constexpr Delimiters kComment("<!--", "-->");

// Overwrites bytes of a text in place; the text is unshared before the first of them changes.
class Overwriter {
 public:
  explicit Overwriter(RWCString& text) : text_(text) {}

  void fill(std::size_t from, std::size_t to) {
    if (from < to) std::memset(bytes() + from, ' ', to - from);
  }

  // Makes an empty paragraph of a region, if there is room for one.
  void makeParagraph(std::size_t from, std::size_t to) {
    if (to - from < kParagraph.size() + kParagraphEnd.size()) return;
    fill(from, to);
    std::memcpy(bytes() + from, kParagraph.data(), kParagraph.size());
    std::memcpy(bytes() + to - kParagraphEnd.size(), kParagraphEnd.data(), kParagraphEnd.size());
  }

 private:
  char* bytes() {
    if (!bytes_) bytes_ = &text_(0);
    return bytes_;
  }

  RWCString& text_;
  char* bytes_ = nullptr;
};

// --- One kind of region after the other -------------------------------------------------------

struct Script {
  std::size_t start;
  std::size_t tagEnd;  // the first ">" after the opening delimiter
  std::size_t close;

  bool isEndless() const { return tagEnd >= close; }
  std::size_t end() const { return close + kScript.close().size(); }
};

Script scriptAt(std::size_t start, std::size_t close, const RWCString& text) {
  return {start, text.index('>', start + 1), close};
}

// The next script element at or after `pos`.
bool findScript(const RWCString& text, std::size_t pos, Script& script) {
  Region region{};
  if (!kScript.find(text.data() + pos, endOf(text), region)) return false;
  script = scriptAt(offsetIn(text, region.open), offsetIn(text, region.close), text);
  return true;
}

// A loop that no compiler may take out.
// GCOVR_EXCL_START: who gets here is killed and leaves no counts
[[noreturn]] void neverReturn() {
  for (volatile bool forever = true;;) static_cast<void>(forever);
}
// GCOVR_EXCL_STOP

void blankBody(const Script& script, Overwriter& overwriter) {
  if (script.isEndless()) neverReturn();
  overwriter.fill(script.tagEnd + 1, script.close);
}

void blankRegionsFrom(std::size_t pos, const Delimiters& delimiters, RWCString& text) {
  Overwriter overwriter(text);
  Region region{};
  while (pos < text.length() && delimiters.find(text.data() + pos, endOf(text), region)) {
    const std::size_t start = offsetIn(text, region.open);
    pos = offsetIn(text, region.close) + delimiters.close().size();
    overwriter.makeParagraph(start, pos);
  }
}

void blankScriptsFrom(std::size_t pos, RWCString& text) {
  Overwriter overwriter(text);
  for (Script script{}; findScript(text, pos, script); pos = script.end()) {
    blankBody(script, overwriter);
  }
}

// --- Both kinds at once -----------------------------------------------------------------------

// Goes through the delimiters of scripts and of comments in the order of the text. Comments do not
// see what stands in the body of a script; scripts do not mind comments.
class PageBlanker {
 public:
  explicit PageBlanker(RWCString& text) : text_(text), overwriter_(text) {}

  void run() {
    std::size_t pos = 0;
    while (findMark(pos) && takeMark(pos)) ++pos;
  }

 private:
  // Moves `pos` to the next place at which a delimiter may stand outside the body of a script.
  bool findMark(std::size_t& pos) const {
    const char* begin = text_.data();
    const char* end = endOf(text_);
    if (pos < bodyStart_) {
      pos = offsetIn(text_, kernels().findMark(begin + pos, begin + bodyStart_, end));
      if (pos < bodyStart_) return true;
    }
    if (pos < scriptsEnd_) pos = scriptsEnd_;
    pos = offsetIn(text_, kernels().findMark(begin + pos, end, end));
    return pos < text_.length();
  }

  // Handles what stands at `pos`; false when the rest was done in another way.
  bool takeMark(std::size_t pos) {
    switch (text_.data()[pos + 1]) {
      case '-':
        return closeComment(pos + kComment.close().size());
      case '!':
        if (comment_ == RWCString::npos && isAt(pos, kComment.open())) comment_ = pos;
        return true;
      case '/':
        if (pos < scriptsEnd_ || !isAt(pos, kScript.close())) return true;
        break;
      default:
        if (pos < scriptsEnd_ || !isAt(pos, kScript.open()) || takeScript(pos)) return true;
    }
    // Scripts are over: comments are left.
    blankRegionsFrom(commentsEnd_, kComment, text_);
    return false;
  }

  bool isAt(std::size_t pos, const CaselessText& delimiter) const {
    return equalsIgnoringCase(viewOf(text_).substr(pos, delimiter.size()), delimiter.text());
  }

  bool closeComment(std::size_t end) {
    if (comment_ == RWCString::npos) {
      blankScriptsFrom(scriptsEnd_, text_);
      return false;
    }
    overwriter_.makeParagraph(comment_, end);
    comment_ = RWCString::npos;
    commentsEnd_ = end;
    return true;
  }

  // Blanks the script that opens at `start`; false when it is not closed.
  bool takeScript(std::size_t start) {
    const char* end = endOf(text_);
    const char* closeAt = findIgnoringCase(text_.data() + start, end, kScript.close());
    if (closeAt == end) return false;
    const Script script = scriptAt(start, offsetIn(text_, closeAt), text_);
    blankBody(script, overwriter_);
    bodyStart_ = script.tagEnd + 1;
    scriptsEnd_ = script.end();
    return true;
  }

  RWCString& text_;
  Overwriter overwriter_;
  std::size_t comment_ = RWCString::npos;  // where the open comment began
  std::size_t commentsEnd_ = 0;            // after the last closed comment
  std::size_t bodyStart_ = 0;              // of the last script
  std::size_t scriptsEnd_ = 0;             // after the last script
};

}  // namespace

void blankRegions(RWCString& text, std::string_view open, std::string_view close) {
  blankRegionsFrom(0, Delimiters(open, close), text);
}

void blankScripts(RWCString& text) {
  blankScriptsFrom(0, text);
}

void blankScriptsAndComments(RWCString& text) {
  PageBlanker(text).run();
}

std::size_t findEndlessScript(const RWCString& text, std::size_t start) {
  Script script{};
  if (start > text.length()) return RWCString::npos;
  for (std::size_t pos = start; findScript(text, pos, script); pos = script.end()) {
    if (script.isEndless()) return script.start;
  }
  return RWCString::npos;
}

}  // namespace pagescan::internal
