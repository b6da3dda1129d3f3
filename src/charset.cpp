#include "charset.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <string_view>

#include "base/byte_class.h"
#include "base/numbers.h"
#include "base/search.h"
#include "hostroutines.h"
#include "rw/rwcollectables.h"
#include "text_view.h"

using namespace pagescan;

namespace {

struct Entity {
  std::string_view name;
  unsigned char code;
};

// The names of the bytes 161 to 255, in order.
constexpr std::string_view kLatin1Names[] = {
    "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",
    "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",
    "sup3",   "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",
    "frac14", "frac12", "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde", "Auml",
    "Aring",  "AElig",  "Ccedil", "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave", "Iacute",
    "Icirc",  "Iuml",   "ETH",    "Ntilde", "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",
    "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",   "Yacute", "THORN",  "szlig",
    "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",  "aelig",  "ccedil", "egrave",
    "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",   "eth",    "ntilde",
    "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave", "uacute",
    "ucirc",  "uuml",   "yacute", "thorn",  "yuml",
};
constexpr int kFirstLatin1 = 161;
static_assert(kFirstLatin1 + std::size(kLatin1Names) == 256);

// "nbsp" is the ordinary blank, deliberately: hosts compare the decoded text.
constexpr Entity kSpaces[] = {{"nbsp", ' '}};
constexpr Entity kMarkup[] = {{"quot", '"'}, {"amp", '&'}, {"lt", '<'}, {"gt", '>'}};

constexpr std::size_t kEntities = std::size(kSpaces) + std::size(kLatin1Names) + std::size(kMarkup);
static_assert(kEntities == 100);

constexpr std::size_t kBuckets = 113;
constexpr char kPattern[] = "&#?[a-zA-Z0-9]+;";

constexpr std::size_t kLongestName = [] {
  std::size_t longest = 0;
  for (const std::string_view name : kLatin1Names) longest = std::max(longest, name.size());
  for (const Entity& entity : kSpaces) longest = std::max(longest, entity.name.size());
  for (const Entity& entity : kMarkup) longest = std::max(longest, entity.name.size());
  return longest;
}();

void add(RWHashDictionary& table, std::string_view name, int code) {
  const char byte = static_cast<char>(code);
  auto key = std::make_unique<RWCollectableString>(stringOf(name));
  auto value = std::make_unique<RWCollectableString>(RWCString(&byte, 1));
  table.insertKeyAndValue(key.get(), value.get());
  key.release();
  value.release();
}

// A reference as the pattern finds it, "&" and ";" included.
class Reference {
 public:
  explicit Reference(std::string_view text) : text_(text) {}

  bool isNumeric() const { return text_[1] == '#'; }
  bool isHexadecimal() const { return isNumeric() && toLower(text_[2]) == 'x'; }

  std::string_view name() const { return text_.substr(1, text_.size() - 2); }

  // What stands between "&#" or "&#x" and ";".
  std::string_view digits() const {
    const std::size_t start = isHexadecimal() ? 3 : 2;
    return text_.substr(start, text_.size() - start - 1);
  }

 private:
  std::string_view text_;
};

// Up to two digits, up to the first byte that is none.
int readHexDigits(std::string_view digits) {
  int value = 0;
  for (const char c : digits) {
    if (hexDigitValue(c) < 0) break;
    value = value * 16 + hexDigitValue(c);
  }
  return value;
}

// Decodes the references of one text. The number of the last numeric one is kept: a reference that
// holds no number takes it over.
class Decoder {
 public:
  explicit Decoder(const CTQCharSet& table) : table_(table) {}

  // The byte that a reference stands for. False when it is to stay.
  bool decode(const Reference& reference, char& byte) {
    return reference.isNumeric() ? decodeNumber(reference, byte) : decodeName(reference, byte);
  }

 private:
  static constexpr int kLargest = 255;
  static constexpr std::size_t kMostHexDigits = 2;

  bool decodeName(const Reference& reference, char& byte) const {
    const std::string_view name = reference.name();
    if (name.size() > kLongestName) return false;
    const RWCollectableString key(stringOf(name));
    const auto* value = static_cast<const RWCollectableString*>(table_.findValue(&key));
    if (!value) return false;
    byte = (*value)(0);
    return true;
  }

  bool decodeNumber(const Reference& reference, char& byte) {
    const std::string_view digits = reference.digits();
    if (reference.isHexadecimal()) {
      if (digits.size() > kMostHexDigits) return false;
      number_ = readHexDigits(digits);
    } else {
      number_ = readInteger(digits.data(), digits.data() + digits.size()).value_or(number_);
    }
    if (number_ > kLargest) return false;
    byte = static_cast<char>(number_);
    return true;
  }

  const CTQCharSet& table_;
  int number_ = kLargest + 1;
};

}  // namespace

CTQCharSet* CTQCharSet::msSingleton = nullptr;

CTQCharSet::CTQCharSet(std::size_t buckets) : RWHashDictionary(buckets), pattern(nullptr) {}

// Delegates first, so that the destructor cleans up when memory runs out half-way.
CTQCharSet::CTQCharSet() : CTQCharSet(kBuckets) {
  pattern = new RWCRegexp(kPattern);
  for (const Entity& entity : kSpaces) add(*this, entity.name, entity.code);
  int code = kFirstLatin1;
  for (const std::string_view name : kLatin1Names) add(*this, name, code++);
  for (const Entity& entity : kMarkup) add(*this, entity.name, entity.code);
  if (msSingleton) pagescanLogError("CTQCharSet: a second instance takes the place of the first");
  msSingleton = this;
}

CTQCharSet::~CTQCharSet() {
  clearAndDestroy();
  delete pattern;
}

CTQCharSet* CTQCharSet::fsGetSingleton() {
  if (!msSingleton) pagescanLogError("CTQCharSet: there is no instance");
  return msSingleton;
}

void CTQCharSet::convert(RWCString& text) {
  Decoder decoder(*this);
  char* bytes = nullptr;    // writable once something was decoded
  std::size_t written = 0;  // bytes that are final
  std::size_t copied = 0;   // bytes of the text that they stand for
  std::size_t length = 0;
  const auto keepUpTo = [&](std::size_t end) {
    std::memmove(bytes + written, bytes + copied, end - copied);
    written += end - copied;
    copied = end;
  };
  for (std::size_t at = text.index(*pattern, &length, 0); at != RWCString::npos;
       at = text.index(*pattern, &length, at + 1)) {
    char byte = 0;
    if (!decoder.decode(Reference(viewOf(text).substr(at, length)), byte)) continue;
    if (!bytes) bytes = &text(0);
    keepUpTo(at);
    bytes[written++] = byte;
    copied += length;
  }
  if (!bytes) return;
  keepUpTo(text.length());
  text.resize(written);
}

namespace {

// Built before the static objects of any host that links the static library.
__attribute__((init_priority(101))) CTQCharSet singletonCTQCharSet;

}  // namespace
