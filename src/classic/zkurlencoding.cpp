#include "zkurlencoding.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <string_view>
#include <utility>

#include "base/byte_class.h"
#include "base/kernels.h"
#include "base/percent.h"
#include "base/search.h"
#include "classic/text_view.h"
#include "classic/zkurlencoding_canonical.h"
#include "classic/zkurlencoding_tables.h"

using namespace pagescan::internal;

// --- The tables -------------------------------------------------------------------------------

namespace {

constexpr EncodedBytes kBrowserBytes = encodedBytes(kBrowser);
constexpr EncodedBytes kBrowserSignBytes = encodedBytes(kBrowserSign);
constexpr EncodedBytes kEscapeBytes = encodedBytes(kEscape);
constexpr EncodedBytes kEscapeURIBytes = encodedBytes(kEscapeURI);
constexpr EncodedBytes kURIComponentBytes = encodedBytes(kURIComponent);
constexpr EncodedBytes kChromeBytes = encodedBytes(kChrome);
constexpr EncodedBytes kChrome94Bytes = encodedBytes(kChrome94);
constexpr EncodedBytes kSiebelBytes = encodedBytes(kSiebel);

}  // namespace

constinit const char* persentEscape = kUsualPlaceholder.data();
constinit int persentEscapeLength = kUsualPlaceholder.size();

constinit CharArray UrlEncoding::cBrowserChars{kBrowserBytes.entries};
constinit CharArray UrlEncoding::cBrowserCharsSign{kBrowserSignBytes.entries};
constinit CharArray UrlEncoding::cEscapeChars{kEscapeBytes.entries};
constinit CharArray UrlEncoding::cEscapeURIChars{kEscapeURIBytes.entries};
constinit CharArray UrlEncoding::cEscapeURIComponentChars{kURIComponentBytes.entries};
constinit CharArray UrlEncoding::cChromeChars{kChromeBytes.entries};
constinit CharArray UrlEncoding::cChromeChars94{kChrome94Bytes.entries};
constinit CharArray UrlEncoding::cSiebelChars{kSiebelBytes.entries};

CharArray::~CharArray() = default;

// --- Filling a table of a host ----------------------------------------------------------------

namespace {

bool fill(CharArray& table, const EncodedBytes& bytes) {
  std::memcpy(table.entries, bytes.entries, sizeof table.entries);
  return true;
}

// Writes only what differs: the tables are complete from the start, so that filling them while the
// library is loaded changes nothing that another thread may be reading.
void updateEntry(char (&entry)[4], const char (&wanted)[4]) {
  if (std::memcmp(entry, wanted, sizeof entry) != 0) std::memcpy(entry, wanted, sizeof entry);
}

bool update(CharArray& table, const EncodedBytes& bytes) noexcept {
  for (std::size_t byte = 0; byte < 256; ++byte) {
    updateEntry(table.entries[byte], bytes.entries[byte]);
  }
  return true;
}

}  // namespace

bool UrlEncoding::FillASCII_chars(CharArray& table, bool upper) {
  escapeAllButLettersAndDigits(table.entries, upper ? kUpperDigits : kLowerDigits);
  return true;
}

bool UrlEncoding::FillBrowserSpecials(CharArray& table) {
  return fill(table, kBrowserBytes);
}

bool UrlEncoding::FillEscapeSpecials(CharArray& table) {
  return fill(table, kEscapeBytes);
}

bool UrlEncoding::FillEscapeURIComponentSpecials(CharArray& table) {
  return fill(table, kURIComponentBytes);
}

bool UrlEncoding::FillEscapeURISpecials(CharArray& table) {
  return fill(table, kEscapeURIBytes);
}

bool UrlEncoding::FillChromeSpecials(CharArray& table) {
  return fill(table, kChromeBytes);
}

bool UrlEncoding::FillChrome94Specials(CharArray& table) {
  return fill(table, kChrome94Bytes);
}

bool UrlEncoding::FillSiebelSpecials(CharArray& table) {
  return fill(table, kSiebelBytes);
}

void UrlEncoding::initAllArrays() {
  // GCOVR_EXCL_BR_START: whether another thread fills a table at the same time is up to chance
  [[maybe_unused]] static const bool areFilled =
      update(cBrowserChars, kBrowserBytes) && update(cEscapeChars, kEscapeBytes) &&
      update(cEscapeURIComponentChars, kURIComponentBytes) &&
      update(cEscapeURIChars, kEscapeURIBytes) && update(cChromeChars, kChromeBytes) &&
      update(cChromeChars94, kChrome94Bytes) && update(cSiebelChars, kSiebelBytes) &&
      update(cBrowserCharsSign, kBrowserSignBytes);
  // GCOVR_EXCL_BR_STOP
  updateEntry(cBrowserCharsSign.entries[toByte('@')], kBrowserSignBytes.entries[toByte('@')]);
}

UrlEncoding::UrlEncoding() {
  initAllArrays();
}

UrlEncoding::~UrlEncoding() = default;

namespace {

// Its construction is what fills the tables when the library is loaded.
[[maybe_unused]] UrlEncoding globalObject;

}  // namespace

// --- What encoding, decoding and the checks share ---------------------------------------------

namespace {

// The placeholder as it is now.
std::string_view placeholder() {
  if (persentEscape == nullptr || persentEscapeLength <= 0) return {};
  return {persentEscape, ::strnlen(persentEscape, static_cast<std::size_t>(persentEscapeLength))};
}

// Prepared for searching: hosts change the placeholder rarely.
constexpr SearchedText kUsualSearched(kUsualPlaceholder, SearchedText::exact);

bool isUsual(std::string_view escape) {
  return escape == kUsualPlaceholder;
}

UrlEncoding::EncodingType knownType(UrlEncoding::EncodingType type) {
  const bool isKnown = type >= UrlEncoding::eNone && type <= UrlEncoding::eSiebel;
  return isKnown ? type : UrlEncoding::eBrowser;
}

// Also where nothing is encoded.
bool plusIsBlank(UrlEncoding::EncodingType type) {
  const int known = knownType(type);
  return known == UrlEncoding::eNone || kFlavours[static_cast<std::size_t>(known) - 1].plusIsBlank;
}

// Builds a text piece by piece on the stack. A text of one piece costs its string one allocation
// and is only appended to it; a longer one is built in a string of its own, so that whatever fails,
// the target is as it was.
class TQDynamicString {
 public:
  // `expected` bytes need no second allocation.
  explicit TQDynamicString(std::size_t expected) : expected_(expected) {}
  TQDynamicString(const TQDynamicString&) = delete;
  TQDynamicString& operator=(const TQDynamicString&) = delete;
  virtual ~TQDynamicString() = default;

  // Room for that many bytes, a few at the least, begins at `out()`; what is written there counts
  // once its end was told.
  std::ptrdiff_t room() {
    if (kPiece - used_ < kLeastRoom) overflow();
    return static_cast<std::ptrdiff_t>(kPiece - used_);
  }
  char* out() { return piece_ + used_; }
  void wroteUpTo(const char* end) { used_ = static_cast<std::size_t>(end - piece_); }

  void append(std::string_view bytes) {
    if (kPiece - used_ < bytes.size()) overflow();
    if (bytes.size() > kPiece) {
      text_.append(bytes.data(), bytes.size());
    } else {
      std::copy(bytes.begin(), bytes.end(), piece_ + used_);
      used_ += bytes.size();
    }
  }

  void appendTo(RWCString& target) {
    if (text_.length() == 0) {
      target.append(piece_, used_);
    } else if (target.length() == 0) {
      replace(target);
    } else {
      flush();
      target.append(text_);
    }
  }

  void replace(RWCString& target) {
    if (text_.length() == 0) {
      target = RWCString(piece_, used_);
    } else {
      flush();
      target.swap(text_);
    }
  }

 private:
  static constexpr std::size_t kPiece = 4096;
  static constexpr std::size_t kLeastRoom = 64;

  void overflow() {
    if (text_.length() == 0) {
      text_.resize(expected_);
      text_.resize(0);
    }
    flush();
  }

  void flush() {
    text_.append(piece_, used_);
    used_ = 0;
  }

  RWCString text_;
  std::size_t expected_;
  std::size_t used_ = 0;
  char piece_[kPiece];
};

}  // namespace

// --- Encoding ---------------------------------------------------------------------------------

namespace {

constexpr UrlForms kForms[] = {
    urlForms(kBrowser),       // eNone has none of its own
    urlForms(kBrowser),       // eBrowser
    urlForms(kEscape),        // eEscape
    urlForms(kEscapeURI),     // eEscapeURI
    urlForms(kURIComponent),  // eEscapeURIComponent
    urlForms(kBrowserSign),   // eBrowserSign
    urlForms(kChrome),        // eChrome
    urlForms(kChrome94),      // eChrome94
    urlForms(kSiebel),        // eSiebel
};
constexpr UrlForms kPrintableForms = urlForms(printableBytes(), kUpperDigits);

void encodeBytes(const UrlForms& forms, const char* begin, const char* end,
                 TQDynamicString& result) {
  while (begin < end) {
    const std::ptrdiff_t run = std::min(end - begin, (result.room() - 4) / kEscapeLength);
    result.wroteUpTo(kernels().encodeUrl(forms, begin, begin + run, result.out()));
    begin += run;
  }
}

// The next placeholder in [begin, end), or `end`; an empty one is nowhere.
const char* findPlaceholder(const char* begin, const char* end, std::string_view escape) {
  if (escape.empty() || static_cast<std::size_t>(end - begin) < escape.size()) return end;
  return isUsual(escape) ? kernels().findText(begin, end, kUsualSearched.needle())
                         : findText(begin, end, escape);
}

}  // namespace

bool UrlEncoding::EncodeString(RWCString& source, RWCString& destination, EncodingType type) {
  const std::size_t length = source.length();
  if (length == 0) return false;
  if (type == eNone) {
    destination.append(source);
    return false;
  }
  const UrlForms& forms = kForms[knownType(type)];
  const std::string_view escape = placeholder();
  TQDynamicString result(length + length / 2);
  const char* at = source.data();
  const char* end = at + length;
  for (;;) {
    const char* found = findPlaceholder(at, end, escape);
    encodeBytes(forms, at, found, result);
    if (found == end) break;
    result.append("%");
    at = found + escape.size();
  }
  result.appendTo(destination);
  return true;
}

bool UrlEncoding::EncodeStringUnreadables(const char* source, unsigned long length,
                                          RWCString& output) {
  if (source == nullptr) return false;
  TQDynamicString result(length + length / 5);
  encodeBytes(kPrintableForms, source, source + length, result);
  result.replace(output);
  return true;
}

// --- Decoding ---------------------------------------------------------------------------------

bool UrlEncoding::DecodeString(RWCString& text, EncodingType type) {
  const char plus = plusIsBlank(type) ? ' ' : '+';
  const char* at = std::as_const(text).data();
  const char* end = at + text.length();
  if (!kernels().holdsEither(at, end, '%', plus == '+' ? '%' : '+')) return false;
  TQDynamicString result(text.length());
  bool isDecoded = false;
  bool hasPlaceholder = false;
  while (at < end) {
    const std::ptrdiff_t run = std::min(end - at, result.room());
    const UrlDecoding decoded = kernels().decodeUrl(at, at + run, result.out(), plus);
    result.wroteUpTo(decoded.out);
    isDecoded |= decoded.changed;
    at = decoded.source;
    if (at == end || *at != '%' || isEscape(at, end)) continue;
    const bool isCutOff = end - at < kEscapeLength;
    result.append(isCutOff ? "%" : placeholder());
    hasPlaceholder |= !isCutOff;
    ++at;
  }
  if (isDecoded || hasPlaceholder) result.replace(text);
  return isDecoded;
}

// --- Checks -----------------------------------------------------------------------------------

namespace {

// The rule itself: decodes and encodes each name and value.
bool isUnchangedByRoundTrip(std::string_view part, UrlEncoding::EncodingType type) {
  RWCString decoded = stringOf(part);
  UrlEncoding::DecodeString(decoded, type);
  RWCString encoded;
  UrlEncoding::EncodeString(decoded, encoded, type);
  return viewOf(encoded) == part;
}

bool isCanonicalByRoundTrip(std::string_view text, UrlEncoding::EncodingType type) {
  const char* end = text.data() + text.size();
  for (const char* item = text.data(); item < end;) {
    const char* itemEnd = findByte(item, end, '&');
    const char* nameEnd = findByte(item, itemEnd, '=');
    const char* value = nameEnd == itemEnd ? itemEnd : nameEnd + 1;
    if (!isUnchangedByRoundTrip({item, static_cast<std::size_t>(nameEnd - item)}, type)) {
      return false;
    }
    if (!isUnchangedByRoundTrip({value, static_cast<std::size_t>(itemEnd - value)}, type)) {
      return false;
    }
    item = itemEnd == end ? end : itemEnd + 1;
  }
  return true;
}

}  // namespace

bool UrlEncoding::CheckUrlDecoding(const RWCString& text, EncodingType type) {
  const EncodingType known = knownType(type);
  if (known == eNone || !isUsual(placeholder())) {
    return isCanonicalByRoundTrip(viewOf(text), known);
  }
  const FlavourSet candidate = 1U << (known - eBrowser);
  return canonicalFlavours(viewOf(text), candidate) != 0;
}

UrlEncoding::EncodingType UrlEncoding::CheckUrlDecoding(const RWCString& text) {
  if (!isUsual(placeholder())) {
    for (int type = eBrowser; type <= eSiebel; ++type) {
      const auto candidate = static_cast<EncodingType>(type);
      if (isCanonicalByRoundTrip(viewOf(text), candidate)) return candidate;
    }
    return eNone;
  }
  const FlavourSet found = canonicalFlavours(viewOf(text), kAllFlavours);
  return found == 0 ? eNone : static_cast<EncodingType>(eBrowser + std::countr_zero(found));
}
