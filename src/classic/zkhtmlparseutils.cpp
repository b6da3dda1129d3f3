#include "zkhtmlparseutils.h"

#include "base/attribute_scan.h"
#include "base/byte_class.h"
#include "base/search.h"
#include "base/url_scheme.h"
#include "classic/blanking.h"
#include "classic/text_view.h"
#include "classic/url_cleaning.h"

using namespace pagescan::internal;

// --- Scanning ---------------------------------------------------------------------------------

namespace {

constexpr ByteClass kWordEnds = kHtmlWhiteSpace | ByteClass::of("<>");
constexpr ByteClass kTagOrWordEnds = kHtmlWhiteSpace | ByteClass::of(">");
constexpr char kAnyTerminator = '~';

unsigned long boundedBy(const RWCString& text, unsigned long end) {
  return end < text.length() ? end : text.length();
}

// Steps over the byte at `pos` unseen, then to what `find` finds.
template <class Find>
bool stepTo(const RWCString& text, unsigned long end, unsigned long& pos, Find find) {
  end = boundedBy(text, end);
  ++pos;
  if (pos >= end) return false;
  pos = offsetIn(text, find(text.data() + pos, text.data() + end));
  return pos < end;
}

}  // namespace

bool htmlIsWhiteSpace(char c) {
  return kHtmlWhiteSpace.contains(c);
}

bool htmlSkipWhiteSpaces(RWCString& text, unsigned long end, unsigned long& pos) {
  return stepTo(text, end, pos, skipWhiteSpace);
}

bool htmlSkipNonWhiteSpaces(RWCString& text, unsigned long end, unsigned long& pos) {
  return stepTo(text, end, pos,
                [](const char* from, const char* to) { return findFirstOf(from, to, kWordEnds); });
}

bool htmlGetStringValue(RWCString& text, RWCString& value, unsigned long start,
                        unsigned long& valueStart, unsigned long& furthest, unsigned long end) {
  end = boundedBy(text, end);
  if (start + 1 >= end) return false;
  const ScannedValue scanned = scanValue(text.data() + (start + 1), text.data() + end);
  if (scanned.kind == ScannedValue::missing) return false;
  valueStart = offsetIn(text, scanned.begin);
  const unsigned long stop = offsetIn(text, scanned.end);
  value = stringOf(scanned.value());
  if (scanned.kind == ScannedValue::cut) return false;
  if (furthest < stop) furthest = stop;
  return true;
}

bool isElementOfType(const char* name, unsigned long nameLength, RWCString& text, unsigned long pos,
                     char terminator) {
  if (pos > text.length() || text.length() - pos < nameLength) return false;
  const char* at = text.data() + pos;
  if (compareIgnoringCase(at, name, nameLength) != 0) return false;
  return terminator == kAnyTerminator || at[nameLength] == terminator || at[nameLength] == '>';
}

void htmlFindNextAttribute_(RWCString& text, RWCString& name, RWCString& value, unsigned long& pos,
                            unsigned long& valueStart) {
  if (pos >= text.length()) return;
  const char* end = endOf(text);
  const ScannedName scanned = scanName(text.data() + pos, end);
  switch (scanned.kind) {
    case ScannedName::nothing:
    case ScannedName::cutName:
      return;
    case ScannedName::tagEnd:
      pos = offsetIn(text, scanned.next);
      return;
    case ScannedName::strayEquals: {
      const char* stop = findFirstOf(scanned.next, end, kTagOrWordEnds);
      if (stop < end && *stop == '>') pos = offsetIn(text, stop) + 1;
      return;
    }
    case ScannedName::bareName:
    case ScannedName::lastName:
      pos = offsetIn(text, scanned.next);
      name = stringOf(scanned.name());
      value = RWCString();
      return;
    case ScannedName::equals: {
      unsigned long readStart = 0;
      unsigned long readEnd = 0;
      const unsigned long equals = offsetIn(text, scanned.next);
      name = stringOf(scanned.name());
      if (!htmlGetStringValue(text, value, equals, readStart, readEnd, text.length())) return;
      valueStart = readStart;
      pos = readEnd;
      return;
    }
  }
}

// --- Blanking ---------------------------------------------------------------------------------

void tqOverwriteTagWithBlanks(RWCString& text, RWCString open, RWCString close) {
  blankRegions(text, viewOf(open), viewOf(close));
}

void tqOverwriteScriptWithBlanks(RWCString& text) {
  blankScripts(text);
}

std::size_t tqFindEndlessScript(const RWCString& text) {
  return findEndlessScript(text, 0);
}

std::size_t tqFindEndlessScript(const RWCString& text, std::size_t start) {
  return findEndlessScript(text, start);
}

// --- URLs -------------------------------------------------------------------------------------

void stripUrl(RWCString& url, bool decodePercent) {
  ScratchText scratch;
  const std::string_view clean = cleanUrl(viewOf(url), decodePercent, scratch);
  if (clean.data() == url.data() && clean.size() == url.length()) return;
  url = stringOf(clean);
}

int getProtocol(const RWCString& url, int& schemeLength) {
  const std::string_view scheme = schemeOf(viewOf(url));
  schemeLength = scheme.empty() ? -1 : static_cast<int>(scheme.size());
  return static_cast<int>(schemeCodeOf(scheme));
}
