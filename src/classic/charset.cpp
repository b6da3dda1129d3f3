#include "charset.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <string_view>
#include <typeinfo>

#include "base/byte_class.h"
#include "base/numbers.h"
#include "base/search.h"
#include "classic/text_view.h"
#include "hostroutines.h"
#include "rw/rwcollectables.h"

using namespace pagescan::internal;

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

// "nbsp" is the ordinary blank: hosts compare the decoded text.
constexpr Entity kSpaces[] = {{"nbsp", ' '}};
constexpr Entity kMarkup[] = {{"quot", '"'}, {"amp", '&'}, {"lt", '<'}, {"gt", '>'}};

// All of them, in the order of the dictionary.
constexpr auto kEntities = [] {
  std::array<Entity, std::size(kSpaces) + std::size(kLatin1Names) + std::size(kMarkup)> all{};
  auto* next = std::copy(std::begin(kSpaces), std::end(kSpaces), all.begin());
  unsigned char code = kFirstLatin1;
  for (const std::string_view name : kLatin1Names) *next++ = {name, code++};
  std::copy(std::begin(kMarkup), std::end(kMarkup), next);
  return all;
}();
static_assert(kEntities.size() == 100);

constexpr std::size_t kBuckets = 113;
constexpr char kPattern[] = "&#?[a-zA-Z0-9]+;";

constexpr std::size_t kLongestName = [] {
  std::size_t longest = 0;
  for (const Entity& entity : kEntities) longest = std::max(longest, entity.name.size());
  return longest;
}();

void add(RWHashDictionary& table, const Entity& entity) {
  const char byte = static_cast<char>(entity.code);
  auto key = std::make_unique<RWCollectableString>(stringOf(entity.name));
  auto value = std::make_unique<RWCollectableString>(RWCString(&byte, 1));
  table.insertKeyAndValue(key.get(), value.get());
  key.release();
  value.release();
}

// The bytes of a name and its ";" as a number, the first one lowest.
using NameWord = std::uint64_t;
static_assert(kLongestName < sizeof(NameWord));

constexpr NameWord wordOf(std::string_view name) {
  NameWord word = toByte(';');
  for (std::size_t i = name.size(); i-- > 0;) word = word << 8 | toByte(name[i]);
  return word;
}

// The entities by their names as numbers: open addressing, 0 where a place is free.
class EntitiesByWord {
 public:
  constexpr EntitiesByWord() {
    for (const Entity& entity : kEntities) {
      const NameWord name = wordOf(entity.name);
      places_[placeOf(name)] = {name, static_cast<char>(entity.code)};
    }
  }

  // Null for a name that is not among them.
  const char* find(NameWord name) const {
    const Place& place = places_[placeOf(name)];
    return place.name == 0 ? nullptr : &place.byte;
  }
  const char* find(std::string_view name) const {
    return name.size() > kLongestName ? nullptr : find(wordOf(name));
  }

 private:
  struct Place {
    NameWord name = 0;
    char byte = 0;
  };
  static constexpr std::size_t kPlaces = 509;

  // Where the name is, or could be.
  constexpr std::size_t placeOf(NameWord name) const {
    std::size_t place = name % kPlaces;
    while (places_[place].name != name && places_[place].name != 0) place = (place + 1) % kPlaces;
    return place;
  }

  std::array<Place, kPlaces> places_{};
};

constexpr EntitiesByWord kEntitiesByWord;

bool isPlainString(const RWCollectable* object) {
  return object && typeid(*object) == typeid(RWCollectableString);
}

struct NamedReference {
  std::size_t length;  // 0 where there is none
  char byte;
};

// The reference to an entity at `at`, a "&". None is found close to the end.
NamedReference readEntity(const char* at, const char* end) {
  NameWord word;
  if (end - at <= static_cast<std::ptrdiff_t>(sizeof word)) return {};
  std::memcpy(&word, at + 1, sizeof word);
  constexpr NameWord kLowBits = ~NameWord{0} / 255 * 0x7f;  // all but the top one of each byte
  const NameWord rest = word ^ ~NameWord{0} / 255 * toByte(';');
  const NameWord semicolons = ~(((rest & kLowBits) + kLowBits) | rest | kLowBits);
  if (semicolons == 0) return {};
  const int bits = std::countr_zero(semicolons) + 1;  // of the name and its ";"
  const char* byte = kEntitiesByWord.find(word & ~NameWord{0} >> (64 - bits));
  return byte ? NamedReference{static_cast<std::size_t>(bits) / 8 + 1, *byte} : NamedReference{};
}

// A reference as the pattern finds it, "&" and ";" included.
class Reference {
 public:
  explicit Reference(std::string_view text) : text_(text) {}

  bool isNumeric() const { return text_[1] == '#'; }
  std::string_view name() const { return text_.substr(1, text_.size() - 2); }

  // Of a numeric one: whether it is hexadecimal, and what stands between "&#" or "&#x" and ";".
  bool isHexadecimal() const { return toLower(text_[2]) == 'x'; }
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
  for (const Entity& entity : kEntities) add(*this, entity);
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

namespace {

// Puts bytes in the place of longer pieces of a text, from its begin to its end.
class Shortener {
 public:
  explicit Shortener(RWCString& text) : text_(text) {}

  void replace(std::size_t at, std::size_t length, char byte) {
    if (!bytes_) bytes_ = &text_(0);
    keepUpTo(at);
    bytes_[written_++] = byte;
    copied_ = at + length;
  }

  void finish() {
    if (!bytes_) return;
    keepUpTo(text_.length());
    text_.resize(written_);
  }

 private:
  void keepUpTo(std::size_t end) {
    std::memmove(bytes_ + written_, bytes_ + copied_, end - copied_);
    written_ += end - copied_;
  }

  RWCString& text_;
  char* bytes_ = nullptr;    // writable once a piece was replaced
  std::size_t written_ = 0;  // bytes that are final
  std::size_t copied_ = 0;   // bytes of the text that they stand for
};

}  // namespace

// Whether the dictionary holds what its constructor put there, and nothing else.
bool CTQCharSet::isAsBuilt() const {
  if (entries() != kEntities.size()) return false;
  RWHashDictionaryIterator next(*this);
  while (const RWCollectable* key = next()) {
    const RWCollectable* value = next.value();
    if (!isPlainString(key) || !isPlainString(value)) return false;
    const char* byte = kEntitiesByWord.find(viewOf(static_cast<const RWCollectableString&>(*key)));
    if (!byte || (static_cast<const RWCollectableString&>(*value))(0) != *byte) return false;
  }
  return true;
}

// The dictionary has the last word: a host may have filled it anew. A text of many references makes
// it worth while to look whether none has, and then to read those to entities by the table.
void CTQCharSet::convert(RWCString& text) {
  constexpr int kMany = 16;
  int references = 0;
  bool usesTable = false;
  Decoder decoder(*this);
  Shortener result(text);
  for (std::size_t at = text.index('&'); at != RWCString::npos;) {
    auto [length, byte] = usesTable ? readEntity(text.data() + at, endOf(text)) : NamedReference{};
    bool isDecoded = length > 0;
    if (!isDecoded) {
      at = text.index(*pattern, &length, at);
      if (at == RWCString::npos) break;
      isDecoded = decoder.decode(Reference(viewOf(text).substr(at, length)), byte);
      if (++references == kMany) usesTable = isAsBuilt();
    }
    if (isDecoded) result.replace(at, length, byte);
    at = text.index('&', at + length);
  }
  result.finish();
}

namespace {

// Built before the static objects of any host that links the static library.
__attribute__((init_priority(101))) CTQCharSet singletonCTQCharSet;

}  // namespace
