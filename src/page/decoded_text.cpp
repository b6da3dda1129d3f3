#include "page/decoded_text.h"

#include <algorithm>
#include <limits>

#include "base/byte_class.h"
#include "base/words.h"
#include "encoding/decoder.h"
#include "encoding/decoder_of.h"
#include "encoding/utf8.h"
#include "url/utf8_reader.h"

namespace pagescan::internal {
namespace {

constexpr std::size_t kLongestText = std::numeric_limits<std::uint32_t>::max();

std::uint32_t offset32(std::size_t offset) {
  return static_cast<std::uint32_t>(offset);
}

// The bytes of the character that holds byte `at` of what `raw` decodes to.
Span characterOf(std::string_view raw, Encoding encoding, std::size_t at) {
  return withDecoderOf(encoding, [raw, at](auto decoder) {
    const auto* const start = reinterpret_cast<const Byte*>(raw.data());
    const Byte* const end = start + raw.size();
    const Byte* next = start;
    std::size_t decoded = 0;
    for (const Byte* character = start;; character = next) {
      char buffer[8];
      char* out = buffer;
      next = decoder.next(character, end, out);
      decoded += static_cast<std::size_t>(out - buffer);
      if (at < decoded || next == end) {
        return Span{static_cast<std::uint32_t>(character - start),
                    static_cast<std::uint32_t>(next - start)};
      }
    }
  });
}

// Characters as they stand before ASCII, as those of a page do. In gb18030 that matters: of an
// unfinished one the digits stay, while at the end of a page all of it is one U+FFFD.
std::string beforeAscii(std::string_view raw) {
  return std::string(raw) + ' ';
}

// Whether it matters what comes after bytes that end at `end`.
bool dependsOnNext(std::string_view source, std::size_t end, Encoding encoding) {
  return (encoding == Encoding::gb18030 || encoding == Encoding::gbk) && end < source.size();
}

// Decodes source[begin, end).
void appendCharacters(std::string& utf8, std::string_view source, std::size_t begin,
                      std::size_t end, Encoding encoding) {
  const std::string_view raw = source.substr(begin, end - begin);
  if (!dependsOnNext(source, end, encoding)) return appendDecoded(utf8, raw, encoding);
  appendDecoded(utf8, beforeAscii(raw), encoding);
  utf8.pop_back();
}

bool isOwnDecoding(std::string_view raw, Encoding encoding) {
  return encoding == Encoding::utf8 && isWellFormedUtf8(raw);
}

}  // namespace

void DecodedText::start(std::string_view source) {
  source_ = source;
  isOwn_ = false;
  own_.clear();
  runs_.clear();
}

void DecodedText::append(Run run, std::string_view utf8) {
  if (run.rawBegin == run.rawEnd || utf8.size() > kLongestText - text().size()) return;
  const bool isAsIs = run.spelling == Spelling::asIs;
  if (isAsIs && !runs_.empty() && runs_.back().spelling == Spelling::asIs &&
      runs_.back().rawEnd == run.rawBegin) {
    runs_.back().rawEnd = run.rawEnd;
  } else {
    if (!isOwn_ && (!isAsIs || !runs_.empty())) {
      own_ = text();
      isOwn_ = true;
    }
    run.text = offset32(text().size());
    runs_.push_back(run);
  }
  if (isOwn_) own_ += utf8;
}

void DecodedText::appendAsIs(std::size_t begin, std::size_t end) {
  append({0, offset32(begin), offset32(end), Spelling::asIs}, source_.substr(begin, end - begin));
}

void DecodedText::appendSpelled(std::size_t begin, std::size_t end, std::string_view utf8) {
  append({0, offset32(begin), offset32(end), Spelling::whole}, utf8);
}

void DecodedText::appendEncoded(std::size_t begin, std::size_t end, Encoding encoding) {
  if (isOwnDecoding(source_.substr(begin, end - begin), encoding)) return appendAsIs(begin, end);
  std::string utf8;
  appendCharacters(utf8, source_, begin, end, encoding);
  encoding_ = encoding;
  append({0, offset32(begin), offset32(end), Spelling::encoded}, utf8);
}

std::string_view DecodedText::text() const {
  if (isOwn_) return own_;
  if (runs_.empty()) return {};
  return source_.substr(runs_[0].rawBegin, runs_[0].rawEnd - runs_[0].rawBegin);
}

// The run that holds text()[at]: the last of those that begin there, since the others are empty.
const DecodedText::Run& DecodedText::runAt(std::size_t at) const {
  const auto isBefore = [](std::size_t offset, const Run& run) { return offset < run.text; };
  return *(std::upper_bound(runs_.begin(), runs_.end(), at, isBefore) - 1);
}

std::size_t DecodedText::rawBegin(std::size_t at) const {
  if (runs_.empty()) return 0;
  if (at >= text().size()) return runs_.back().rawEnd;
  const Run& run = runAt(at);
  if (run.spelling == Spelling::asIs) return run.rawBegin + (at - run.text);
  if (run.spelling == Spelling::whole) return run.rawBegin;
  return run.rawBegin + characterIn(run, at - run.text).begin;
}

std::size_t DecodedText::rawEnd(std::size_t at) const {
  if (runs_.empty()) return 0;
  if (at == 0) return runs_.front().rawBegin;
  const Run& run = runAt(std::min(at, text().size()) - 1);
  if (run.spelling == Spelling::asIs) return run.rawBegin + (at - run.text);
  if (run.spelling == Spelling::whole) return run.rawEnd;
  return run.rawBegin + characterIn(run, at - 1 - run.text).end;
}

// Where the character stands in a run that holds byte `at` of its text; from the run's start on.
Span DecodedText::characterIn(const Run& run, std::size_t at) const {
  const std::string_view raw = source_.substr(run.rawBegin, run.rawEnd - run.rawBegin);
  return dependsOnNext(source_, run.rawEnd, encoding_)
             ? characterOf(beforeAscii(raw), encoding_, at)
             : characterOf(raw, encoding_, at);
}

Span DecodedText::rawSpan(Span span) const {
  const std::size_t end = rawEnd(span.end);
  const std::size_t begin = span.begin < span.end ? rawBegin(span.begin) : end;
  return {offset32(begin), offset32(end)};
}

namespace {

constexpr ByteClass kAboveAscii = ByteClass::range('\x80', '\xFF');
constexpr ByteClass kSpecialInRawText = kAboveAscii | ByteClass::of({"\r\0", 2});
constexpr ByteClass kSpecialInText = kSpecialInRawText | ByteClass::of("&");

// The end of the characters above ASCII that begin at `at`. A byte below 0x30 is a character of its
// own wherever it stands; a letter, a digit or some signs may be the second half of one.
std::size_t findEncodedEnd(std::string_view page, std::size_t at, std::size_t end) {
  do {
    ++at;
  } while (at < end && toByte(page[at]) >= 0x30);
  return at;
}

// The first place that holds a special byte, or `end`.
std::size_t findSpecial(std::string_view page, std::size_t at, std::size_t end,
                        const ByteClass& special) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  constexpr std::uint64_t kHighs = kOnes << 7;
  // A special byte that is looked for in any case stands for "&" where that is none.
  const std::uint64_t ampersands = special.contains('&') ? kOnes * toByte('&') : 0;
  // Only the lowest marked byte is sure to be one.
  const auto marks = [](std::uint64_t word, std::uint64_t bytes) {
    const std::uint64_t difference = word ^ bytes;
    return (difference - kOnes) & ~difference;
  };
  for (; end - at >= sizeof(std::uint64_t); at += sizeof(std::uint64_t)) {
    const auto word = loadWord<std::uint64_t>(page.data() + at);
    const std::uint64_t found =
        (word | marks(word, ampersands) | marks(word, kOnes * '\r') | marks(word, 0)) & kHighs;
    if (found != 0) break;
  }
  while (at < end && !special.contains(page[at])) ++at;
  return at;
}

// The part of DecodedText that makes the text, for those who ask for no place in it.
class PlainText {
 public:
  PlainText(std::string_view source, std::string& text) : source_(source), text_(text) {}

  void appendAsIs(std::size_t begin, std::size_t end) { text_.append(source_, begin, end - begin); }
  void appendSpelled(std::size_t, std::size_t, std::string_view utf8) { text_ += utf8; }
  void appendEncoded(std::size_t begin, std::size_t end, Encoding encoding) {
    const std::string_view raw = source_.substr(begin, end - begin);
    if (isOwnDecoding(raw, encoding)) return appendAsIs(begin, end);
    appendCharacters(text_, source_, begin, end, encoding);
  }

 private:
  std::string_view source_;
  std::string& text_;
};

// Appends what begins at `at` with a special ASCII byte, and returns the place after it.
template <class Text>
std::size_t appendSpecial(Text& result, std::string_view page, std::size_t at, std::size_t end,
                          TextForm form) {
  if (page[at] == '\r') {
    const std::size_t next = at + 1 < end && page[at + 1] == '\n' ? at + 2 : at + 1;
    result.appendSpelled(at, next, "\n");
    return next;
  }
  std::string utf8;  // at most two characters: they stand in the object
  std::size_t length = 1;
  if (page[at] == '\0') {
    appendUtf8(utf8, kReplacementCharacter);
  } else {
    const auto context =
        form == TextForm::attributeValue ? ReferenceContext::attribute : ReferenceContext::text;
    const CharacterReference reference =
        readCharacterReference(page.data() + at, page.data() + end, context);
    if (reference.length == 0) {
      result.appendAsIs(at, at + 1);
      return at + 1;
    }
    appendUtf8(utf8, reference.first);
    if (reference.second != 0) appendUtf8(utf8, reference.second);
    length = reference.length;
  }
  result.appendSpelled(at, at + length, utf8);
  return at + length;
}

template <class Text>
void appendTo(Text& result, std::string_view page, std::size_t begin, std::size_t end,
              TextForm form, Encoding encoding) {
  const ByteClass& special = form == TextForm::rawText ? kSpecialInRawText : kSpecialInText;
  for (std::size_t at = begin; at < end;) {
    const std::size_t stop = findSpecial(page, at, end, special);
    result.appendAsIs(at, stop);
    if (stop == end) return;
    if (kAboveAscii.contains(page[stop])) {
      at = findEncodedEnd(page, stop, end);
      result.appendEncoded(stop, at, encoding);
    } else {
      at = appendSpecial(result, page, stop, end, form);
    }
  }
}

}  // namespace

void appendPiece(DecodedText& result, std::string_view page, std::size_t begin, std::size_t end,
                 TextForm form, Encoding encoding) {
  appendTo(result, page, begin, end, form, encoding);
}

void appendTextOf(std::string& result, std::string_view page, std::size_t begin, std::size_t end,
                  TextForm form, Encoding encoding) {
  PlainText text(page, result);
  appendTo(text, page, begin, end, form, encoding);
}

void decodeText(std::string_view raw, TextForm form, Encoding encoding, DecodedText& result) {
  result.start(raw);
  appendPiece(result, raw, 0, raw.size(), form, encoding);
}

void decodeAttributeValue(std::string_view raw, Encoding encoding, DecodedText& result) {
  decodeText(raw, TextForm::attributeValue, encoding, result);
}

}  // namespace pagescan::internal
