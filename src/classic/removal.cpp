// The functions of zkhtmlparseutils.h that shorten a text: tags, elements and event handlers go.
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "base/attribute_scan.h"
#include "base/forward_search.h"
#include "base/search.h"
#include "classic/text_view.h"
#include "zkhtmlparseutils.h"

using namespace pagescan::internal;

void tqRemoveFirstSingleTag(RWCString& text, RWCString tag) {
  const std::size_t start = text.index(tag, 0, RWCString::ignoreCase);
  if (start == RWCString::npos) return;
  const std::size_t tagEnd = text.index('>', start + tag.length());
  if (tagEnd == RWCString::npos) return;
  text.remove(start, tagEnd - start + 1);
}

namespace {

constexpr std::string_view kComment = "<!--";
constexpr std::string_view kCommentEnd = "-->";

// Writes the text with its elements emptied, piece by piece.
class ElementEmptier {
 public:
  ElementEmptier(const RWCString& tag, const RWCString& text)
      : openTag_("<" + tag),
        closeTag_("</" + tag + ">"),
        closeText_(viewOf(closeTag_)),
        replacement_((openTag_ + ">").append(closeTag_)),
        at_(text.data()),
        end_(endOf(text)),
        copied_(at_),
        openTags_(end_, TextFinder(viewOf(openTag_))),
        comments_(end_, TextFinder(kComment)),
        commentEnds_(end_, TextFinder(kCommentEnd)) {}

  // Returns false when there was nothing to empty.
  bool run() {
    while (step()) {
    }
    if (!found_) return false;
    copyUpTo(end_);
    return true;
  }

  RWCString& result() { return result_; }

 private:
  // Handles the next comment or opening tag; false when the work ends there. A prefix of a longer
  // name will do for the tag.
  bool step() {
    const char* openTag = openTags_.from(at_);
    const char* comment = comments_.from(at_);
    if (comment < openTag) return passComment(comment);
    return openTag != end_ && empty(openTag);
  }

  bool passComment(const char* comment) {
    const char* commentEnd = commentEnds_.from(comment + kComment.size());
    if (commentEnd == end_) return false;
    at_ = commentEnd + 1;
    return true;
  }

  bool empty(const char* lt) {
    const char* nameEnd = lt + openTag_.length();
    const char* closeAt = findCloseTag(nameEnd);
    if (closeAt == end_) return false;
    const char* resumeAt = endOfCommentHolding(nameEnd, closeAt);
    if (resumeAt) closeAt = findCloseTag(resumeAt);
    if (closeAt == end_) return false;
    copyUpTo(lt);
    result_.append(replacement_);
    found_ = true;
    at_ = copied_ = closeAt + closeTag_.length();
    return true;
  }

  const char* findCloseTag(const char* from) const {
    return findIgnoringCase(from, end_, closeText_);
  }

  // The end of the first comment that begins before `closeAt`, when it ends after it.
  const char* endOfCommentHolding(const char* from, const char* closeAt) {
    const char* comment = comments_.from(from);
    if (comment > closeAt) return nullptr;
    const char* commentEnd = commentEnds_.from(comment);
    return commentEnd != end_ && commentEnd > closeAt ? commentEnd : nullptr;
  }

  void copyUpTo(const char* to) {
    result_.append(copied_, static_cast<std::size_t>(to - copied_));
    copied_ = to;
  }

  const RWCString openTag_;
  const RWCString closeTag_;
  const CaselessText closeText_;
  const RWCString replacement_;
  const char* at_;
  const char* end_;
  const char* copied_;
  ForwardTextSearch openTags_;
  ForwardTextSearch comments_;
  ForwardTextSearch commentEnds_;
  bool found_ = false;
  RWCString result_;
};

// The message and the end of a failed assertion, in every build: NDEBUG must not take it away, and
// hosts rely on the place that it names.
// GCOVR_EXCL_START: who gets here is aborted and leaves no counts
[[noreturn]] void failOnLongTag() {
  std::fputs(
      "zkhtmlparseutils:489: void tqSkipTagBody(const RWCString&, RWCString&): "
      "Assertion `0' failed.\n",
      stderr);
  std::abort();
}
// GCOVR_EXCL_STOP

constexpr std::size_t kLongestOpenTag = 255;

// A NUL byte in a page never fits, and "<!" always counts as a comment or declaration.
bool canOpenElement(std::string_view tag) {
  return !tag.empty() && tag.front() != '!' && tag.find('\0') == std::string_view::npos;
}

}  // namespace

void tqSkipTagBody(const RWCString& tag, RWCString& text) {
  if (tag.length() + 1 > kLongestOpenTag) failOnLongTag();
  if (!canOpenElement(viewOf(tag))) return;
  ElementEmptier emptier(tag, text);
  if (emptier.run()) text.swap(emptier.result());
}

namespace {

struct Handler {
  CaselessText name;
  std::string_view replacement;
};

constexpr Handler kHandlers[] = {
    {"onload", "onload=\"\""},
    {"onmouseover", "onmouseover=\"\""},
    {"onmouseout", "onmouseout=\"\""},
};

// The next place at which the handler's name is followed by "=", with `equals` at that byte.
const char* findHandler(const char* from, const char* end, const CaselessText& name,
                        const char*& equals) {
  for (const char* at = from;; ++at) {
    at = findIgnoringCase(at, end, name);
    if (at == end) return end;
    equals = skipWhiteSpace(at + name.text().size(), end);
    if (equals < end && *equals == '=') return at;
  }
}

// Where the replaced attribute ends: after its value and a closing double quote, or at the end of
// the text when the value does not end.
const char* endOfAttribute(const char* equals, const char* end) {
  const ScannedValue value = scanValue(equals + 1, end);
  if (value.kind != ScannedValue::whole) return end;
  return *value.end == '"' ? value.end + 1 : value.end;
}

void emptyHandler(const Handler& handler, RWCString& text) {
  const char* end = endOf(text);
  const char* equals = nullptr;
  const char* copied = text.data();
  const char* at = findHandler(copied, end, handler.name, equals);
  if (at == end) return;
  RWCString result;
  for (; at != end; at = findHandler(copied, end, handler.name, equals)) {
    result.append(copied, static_cast<std::size_t>(at - copied));
    result.append(handler.replacement.data(), handler.replacement.size());
    copied = endOfAttribute(equals, end);
  }
  result.append(copied, static_cast<std::size_t>(end - copied));
  text.swap(result);
}

}  // namespace

void tqSkipOnloadAttribute(RWCString& text) {
  RWCString result = text;  // all three phases or none, should memory run out
  for (const Handler& handler : kHandlers) emptyHandler(handler, result);
  text.swap(result);
}
