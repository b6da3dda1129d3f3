#include "reference/classic/zkhtmlparseutils.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "reference/classic/regexp.h"
#include "reference/classic/scannumber.h"
#include "reference/classic/strings.h"

namespace reference {

namespace {

// Where a run of unexpected bytes ends.
const std::string kRunEnd = "[>\\t\\r\\n ]";

std::size_t indexIgnoringCase(const std::string& text, const std::string& pattern,
                              std::size_t start) {
  return index(text, pattern, start, Case::ignore);
}

}  // namespace

// ---- scanning

bool htmlIsWhiteSpace(char c) {
  return isBlank(c);
}

bool htmlSkipWhiteSpaces(const std::string& text, unsigned long end, unsigned long& pos) {
  end = std::min(end, text.length());
  do {
    ++pos;
    if (pos >= end) return false;
  } while (isBlank(text[pos]));
  return true;
}

bool htmlSkipNonWhiteSpaces(const std::string& text, unsigned long end, unsigned long& pos) {
  end = std::min(end, text.length());
  do {
    ++pos;
    if (pos >= end) return false;
  } while (!(isBlank(text[pos]) || text[pos] == '<' || text[pos] == '>'));
  return true;
}

bool htmlGetStringValue(const std::string& text, std::string& value, unsigned long start,
                        unsigned long& valueStart, unsigned long& furthest, unsigned long end) {
  end = std::min(end, text.length());
  unsigned long p = start;
  if (!htmlSkipWhiteSpaces(text, end, p)) return false;
  value.clear();
  if (text[p] == '"' || text[p] == '\'') {
    const char quote = text[p];
    ++p;
    valueStart = p;
    if (p >= end) return false;
    while (text[p] != quote) {
      value += text[p];
      ++p;
      if (p >= end) return false;
    }
  } else {
    valueStart = p;
    while (!isBlank(text[p]) && text[p] != '>') {
      value += text[p];
      ++p;
      if (p >= end) return false;
    }
  }
  furthest = std::max(furthest, p);
  return true;
}

bool isElementOfType(const char* name, unsigned long nameLength, const std::string& text,
                     unsigned long pos, char terminator) {
  if (pos > text.length()) return false;
  if (text.length() - pos < nameLength) return false;
  if (compareBounded(name, text.c_str() + pos, nameLength, Case::ignore) != 0) return false;
  const char c = byteAt(text, pos + nameLength);
  return c == terminator || terminator == '~' || c == '>';
}

void htmlFindNextAttribute_(const std::string& text, std::string& name, std::string& value,
                            unsigned long& pos, unsigned long& valueStart) {
  const std::size_t len = text.length();
  std::optional<std::size_t> nameStart;
  std::optional<std::size_t> nameEnd;
  const auto giveNameAlone = [&] {
    name = text.substr(*nameStart, *nameEnd - *nameStart);
    value.clear();
    pos = *nameEnd;
  };

  std::size_t i = pos;
  if (i >= len) return;
  while (i < len) {
    const char c = text[i];
    if (isBlank(c) || c == '"') {
      if (nameStart && !nameEnd) nameEnd = i;
      ++i;
    } else if (c == '>') {
      if (!nameStart) {
        pos = i + 1;
        return;
      }
      if (!nameEnd) nameEnd = i;
      return giveNameAlone();
    } else if (c == '=') {
      if (!nameStart) {
        const std::size_t f = search(text, kRunEnd, i).position;
        if (f != npos && text[f] == '>') pos = f + 1;
        return;
      }
      if (!nameEnd) nameEnd = i;
      name = text.substr(*nameStart, *nameEnd - *nameStart);
      unsigned long start = 0;
      unsigned long furthest = 0;
      if (htmlGetStringValue(text, value, i, start, furthest, len)) {
        valueStart = start;
        pos = furthest;
      }
      return;
    } else if (isLetter(c) || isDigit(c) || c == '-') {
      if (nameEnd) return giveNameAlone();
      if (!nameStart) nameStart = i;
      ++i;
    } else {
      const std::size_t f = search(text, kRunEnd, i).position;
      if (f == npos) return;
      if (text[f] == '>') {
        if (nameStart && nameEnd) return giveNameAlone();
        pos = f + 1;
        return;
      }
      i = f + 1;
    }
  }
  if (nameStart && nameEnd) giveNameAlone();
}

// ---- blanking and removal

void tqOverwriteTagWithBlanks(std::string& text, const std::string& open,
                              const std::string& close) {
  if (text.empty()) return;
  const std::size_t len0 = text.length();
  std::size_t pos = 0;
  while (pos < len0) {
    const std::size_t start = indexIgnoringCase(text, open, pos);
    if (pos + close.length() > text.length()) return;
    const std::size_t closeAt = indexIgnoringCase(text, close, pos);
    if (closeAt == npos) return;
    if (start == npos || closeAt <= start) return;
    const std::size_t span = closeAt + close.length() - start;
    if (span > 6) {
      text.erase(start, span);
      text.insert(start, "<p>" + std::string(span - 7, ' ') + "</p>");
    }
    pos = start + span;
  }
}

bool tqOverwriteScriptWithBlanks(std::string& text, std::size_t& endlessAt) {
  const std::string open = "<SCRIPT";
  const std::string close = "</SCRIPT>";
  endlessAt = npos;
  const std::size_t len0 = text.length();
  std::size_t pos = 0;
  while (pos < len0) {
    const std::size_t start = indexIgnoringCase(text, open, pos);
    if (pos + close.length() > text.length()) return true;
    const std::size_t closeAt = indexIgnoringCase(text, close, pos);
    if (closeAt == npos) return true;
    if (start == npos || closeAt <= start) return true;
    const std::size_t gt = index(text, ">", start + 1);
    if (gt >= closeAt) {
      // The library's call goes on with the same position and the same text, for ever.
      endlessAt = start;
      return false;
    }
    const std::size_t count = closeAt - 1 - gt;
    if (count > 0) {
      text.erase(gt + 1, count);
      text.insert(gt + 1, std::string(count, ' '));
    }
    pos = closeAt + close.length();
  }
  return true;
}

std::size_t tqFindEndlessScript(const std::string& text) {
  std::string copy = text;
  std::size_t endlessAt = npos;
  tqOverwriteScriptWithBlanks(copy, endlessAt);
  return endlessAt;
}

void tqRemoveFirstSingleTag(std::string& text, const std::string& tag) {
  const std::size_t start = indexIgnoringCase(text, tag, 0);
  if (start == npos) return;
  const std::size_t after = start + tag.length();
  if (after + 1 > text.length()) return;
  const std::size_t gt = index(text, ">", after);
  if (gt == npos) return;
  text.erase(start, gt - start + 1);
}

namespace {

// A NUL byte in the text's stretch is a mismatch, even where the opening tag holds one.
bool openTagStandsAt(const std::string& text, std::size_t lt, const std::string& openTag) {
  const std::string stretch = text.substr(lt, openTag.length());
  return stretch.find('\0') == npos && lowered(stretch) == lowered(openTag);
}

// The closing tag that ends the element at lt, outside the one comment honoured; npos if none.
std::size_t findElementEnd(const std::string& text, std::size_t lt, const std::string& tag) {
  const std::string closeTag = "</" + tag + ">";
  const std::size_t from = lt + tag.length() + 1;
  if (from + closeTag.length() > text.length()) return npos;
  const std::size_t closeAt = indexIgnoringCase(text, closeTag, from);
  if (closeAt == npos) return npos;
  if (lt + tag.length() + 5 > text.length()) return closeAt;
  const std::size_t comment = index(text, "<!--", from);
  if (comment == npos || comment >= closeAt) return closeAt;
  const std::size_t commentEnd = index(text, "-->", comment);
  if (commentEnd == npos || commentEnd <= closeAt) return closeAt;
  return indexIgnoringCase(text, closeTag, commentEnd);
}

}  // namespace

void tqSkipTagBody(const std::string& tag, std::string& text) {
  if (tag.empty()) return;
  const std::string openTag = "<" + tag;
  const std::string closeTag = "</" + tag + ">";
  const std::string replacement = openTag + ">" + closeTag;
  if (openTag.length() > 255) std::abort();
  std::size_t pos = 0;
  while (pos + 1 <= text.length()) {
    const std::size_t lt = index(text, "<", pos);
    if (lt == npos || text.length() - lt < openTag.length()) return;
    pos = lt + 1;
    if (text[lt + 1] == '!') {
      if (text.substr(lt + 2, 2) != "--") continue;
      if (lt + 7 > text.length()) return;
      const std::size_t commentEnd = index(text, "-->", lt + 4);
      if (commentEnd == npos) return;
      pos = commentEnd + 1;
      continue;
    }
    if (toLower(text[lt + 1]) != toLower(tag[0])) continue;
    if (!openTagStandsAt(text, lt, openTag)) continue;
    const std::size_t closeAt = findElementEnd(text, lt, tag);
    if (closeAt == npos) return;
    text.erase(lt, closeAt + closeTag.length() - lt);
    text.insert(lt, replacement);
    pos = lt + replacement.length();
  }
}

// ---- event handlers

namespace {

struct HandlerPhase {
  std::string literal;
  std::string pattern;
  std::string replacement;
};

const HandlerPhase kHandlerPhases[] = {
    {"onload", "[oO][nN][lL][oO][aA][dD][\n\r\t ]*=", "onload=\"\""},
    {"onmouseover", "[oO][nN][mM][oO][uU][sS][eE][oO][vV][eE][rR][\n\r\t ]*=", "onmouseover=\"\""},
    {"onmouseout", "[oO][nN][mM][oO][uU][sS][eE][oO][uU][tT][\n\r\t ]*=", "onmouseout=\"\""},
};

void runHandlerPhase(const HandlerPhase& phase, std::string& text, std::string& name,
                     std::string& value) {
  const std::size_t least = phase.literal.length();
  if (text.length() < least) return;
  unsigned long valueStart = npos;
  std::size_t i = 0;
  while (true) {
    const std::size_t literalAt = indexIgnoringCase(text, phase.literal, i);
    if (literalAt == npos) return;
    const std::size_t m = search(text, phase.pattern, literalAt).position;
    if (m == npos) return;
    unsigned long position = m;
    htmlFindNextAttribute_(text, name, value, position, valueStart);
    std::size_t end = text.length();
    const bool wholeValue = position != m;
    if (wholeValue) {
      end = valueStart + value.length();
      if (byteAt(text, end) == '"') ++end;
    }
    text.erase(m, end - m);
    text.insert(m, phase.replacement);
    i = m + phase.replacement.length();
    if (i >= text.length() || text.length() - i < least) return;
  }
}

}  // namespace

void tqSkipOnloadAttribute(std::string& text) {
  std::string name;
  std::string value;
  for (const HandlerPhase& phase : kHandlerPhases) runHandlerPhase(phase, text, name, value);
}

// ---- URLs

namespace {

void removeBlankEnds(std::string& url) {
  while (!url.empty() && isBlank(url.front())) url.erase(0, 1);
  while (!url.empty() && isBlank(url.back())) url.pop_back();
}

// Decodes the escape at i, or leaves its "%20"; gives the index to go on with.
std::size_t decodeEscape(std::string& url, std::size_t i) {
  int value = 0;
  scanHex(url.substr(i + 1, 2), value);
  if (value == 32) return i + 3;
  url.replace(i, 3, 1, static_cast<char>(value & 0xFF));
  return i + 1;
}

}  // namespace

void stripUrl(std::string& url, bool decodePercent) {
  removeBlankEnds(url);
  const bool script = lowered(url.substr(0, 11)) == "javascript:";
  bool inQuery = false;
  std::size_t i = 0;
  while (i < url.length()) {
    const char c = url[i];
    if (c == '\t' || c == '\n' || c == '\r') {
      url.erase(i, 1);
    } else if (c == ' ' && !script) {
      url.replace(i, 1, "%20");
      i += 3;
    } else if (c == '%' && decodePercent && !inQuery) {
      i = decodeEscape(url, i);
    } else {
      if (c == '?') inQuery = true;
      ++i;
    }
  }
}

int getProtocol(const std::string& url, int& schemeLength) {
  enum { kNone, kFtp, kFile, kHttp, kHttps, kMailto, kJavascript, kOther, kClsid };
  schemeLength = -1;
  const std::size_t colon = index(url, ":", 0);
  if (colon == npos) return kNone;
  if (!std::all_of(url.begin(), url.begin() + static_cast<std::ptrdiff_t>(colon), isLetter)) {
    return kNone;
  }
  schemeLength = static_cast<int>(colon + 1);
  const std::string scheme = lowered(url.substr(0, colon + 1));
  if (scheme == "ftp:") return kFtp;
  if (scheme == "file:") return kFile;
  if (scheme == "http:") return kHttp;
  if (scheme == "https:") return kHttps;
  if (scheme == "mailto:") return kMailto;
  if (scheme == "javascript:") return kJavascript;
  if (scheme == "clsid:") return kClsid;
  return kOther;
}

}  // namespace reference
