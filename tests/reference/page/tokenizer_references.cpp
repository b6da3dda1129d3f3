// Character references: 13.2.5.77 to 13.2.5.85.
#include <utility>

#include "reference/page/named_references.h"
#include "reference/page/tokenizer.h"

namespace reference::page {

namespace {

// The table of the numeric character reference end state: windows-1252 for C1 controls.
char32_t replacedC1(char32_t code) {
  static constexpr char32_t kCodes[32] = {
      0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
  return code >= 0x80 && code <= 0x9F ? kCodes[code - 0x80] : code;
}

}  // namespace

// After "&".
void Tokenizer::startReference(State from) {
  returnState_ = from;
  state_ = State::characterReference;
  buffer_ = {current()};
}

bool Tokenizer::inAttributeValue() const {
  return returnState_ == State::attributeValueDoubleQuoted ||
         returnState_ == State::attributeValueSingleQuoted ||
         returnState_ == State::attributeValueUnquoted;
}

// "Flush code points consumed as a character reference".
void Tokenizer::flushReference() {
  if (!inAttributeValue()) {
    emitBuffer();
    return;
  }
  for (const Char& c : buffer_) attribute().value.push_back(c);
}

// All that was consumed stands for these code points.
void Tokenizer::replaceReference(std::u32string_view codes) {
  const std::uint32_t begin = buffer_.front().begin;
  const std::uint32_t end = buffer_.back().end;
  buffer_.clear();
  for (const char32_t code : codes) buffer_.push_back({code, begin, end});
}

// The longest name of the table that stands here.
void Tokenizer::namedReference() {
  const std::size_t start = at_;
  std::string name;
  std::size_t matched = 0;
  std::u32string_view codes;
  for (std::size_t i = start; i < input_.size(); ++i) {
    const char32_t c = input_[i].code;
    if (!isAsciiAlphanumeric(c) && c != ';') break;
    name += static_cast<char>(c);
    if (name.size() > 40) break;  // no name is that long
    const auto found = namedReferences().find(name);
    if (found == namedReferences().end()) continue;
    matched = name.size();
    codes = found->second;
  }
  if (matched == 0) {
    flushReference();
    state_ = State::ambiguousAmpersand;
    return;
  }
  for (std::size_t i = 0; i < matched; ++i) {
    consume();
    buffer_.push_back(current());
  }
  const char32_t next = at_ < input_.size() ? input_[at_].code : kEndOfFile;
  const bool staysAsWritten =
      inAttributeValue() && current().code != ';' && (next == '=' || isAsciiAlphanumeric(next));
  if (!staysAsWritten) replaceReference(codes);
  flushReference();
  state_ = returnState_;
}

bool Tokenizer::stepReference() {
  switch (state_) {
    case State::characterReference: {
      const char32_t c = consume();
      if (isAsciiAlphanumeric(c)) {
        reconsumeIn(State::namedCharacterReference);
      } else if (c == '#') {
        buffer_.push_back(current());
        state_ = State::numericCharacterReference;
      } else {
        flushReference();
        reconsumeIn(returnState_);
      }
      return true;
    }
    case State::namedCharacterReference:
      namedReference();
      return true;
    case State::ambiguousAmpersand: {
      const char32_t c = consume();
      if (!isAsciiAlphanumeric(c)) {
        reconsumeIn(returnState_);
      } else if (inAttributeValue()) {
        appendToValue(c);
      } else {
        emitCurrent();
      }
      return true;
    }
    default:
      return false;
  }
}

bool Tokenizer::stepNumericReference() {
  switch (state_) {
    case State::numericCharacterReference: {
      referenceCode_ = 0;
      const char32_t c = consume();
      if (c == 'x' || c == 'X') {
        buffer_.push_back(current());
        state_ = State::hexadecimalCharacterReferenceStart;
      } else {
        reconsumeIn(State::decimalCharacterReferenceStart);
      }
      return true;
    }
    case State::hexadecimalCharacterReferenceStart:
    case State::decimalCharacterReferenceStart: {
      const bool hex = state_ == State::hexadecimalCharacterReferenceStart;
      const char32_t c = consume();
      if (hex ? isAsciiHexDigit(c) : isAsciiDigit(c)) {
        reconsumeIn(hex ? State::hexadecimalCharacterReference : State::decimalCharacterReference);
      } else {
        flushReference();
        reconsumeIn(returnState_);
      }
      return true;
    }
    case State::hexadecimalCharacterReference:
    case State::decimalCharacterReference: {
      const bool hex = state_ == State::hexadecimalCharacterReference;
      const char32_t c = consume();
      if (hex ? isAsciiHexDigit(c) : isAsciiDigit(c)) {
        buffer_.push_back(current());
        // Beyond U+10FFFF all numbers are the same.
        if (referenceCode_ <= 0x10FFFF)
          referenceCode_ = referenceCode_ * (hex ? 16 : 10) + hexValue(c);
      } else if (c == ';') {
        buffer_.push_back(current());
        state_ = State::numericCharacterReferenceEnd;
      } else {
        reconsumeIn(State::numericCharacterReferenceEnd);
      }
      return true;
    }
    case State::numericCharacterReferenceEnd: {
      const char32_t code = numericReferenceCode();
      replaceReference(std::u32string_view(&code, 1));
      flushReference();
      state_ = returnState_;
      return true;
    }
    default:
      return false;
  }
}

char32_t Tokenizer::numericReferenceCode() const {
  const bool isSurrogate = referenceCode_ >= 0xD800 && referenceCode_ <= 0xDFFF;
  if (referenceCode_ == 0 || referenceCode_ > 0x10FFFF || isSurrogate) return kReplacement;
  return replacedC1(referenceCode_);
}

}  // namespace reference::page
