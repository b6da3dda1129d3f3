#include "reference/page/tokenizer.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace reference::page {

Text withNormalizedNewlines(const Text& input) {
  Text output;
  for (std::size_t i = 0; i < input.size(); ++i) {
    Char c = input[i];
    if (c.code == '\r') {
      c.code = '\n';
      if (i + 1 < input.size() && input[i + 1].code == '\n') c.end = input[++i].end;
    }
    output.push_back(c);
  }
  return output;
}

Tokenizer::Tokenizer(const Text& input, TokenSink& sink)
    : input_(withNormalizedNewlines(input)), sink_(sink) {}

void Tokenizer::run() {
  while (!done_) step();
}

void Tokenizer::step() {
  static constexpr bool (Tokenizer::*kSteps[])() = {
      &Tokenizer::stepText,          &Tokenizer::stepTag,
      &Tokenizer::stepAttribute,     &Tokenizer::stepRawTextEnd,
      &Tokenizer::stepScript,        &Tokenizer::stepScriptEscaped,
      &Tokenizer::stepComment,       &Tokenizer::stepScriptDoubleEscaped,
      &Tokenizer::stepCommentEnd,    &Tokenizer::stepDoctype,
      &Tokenizer::stepDoctypePublic, &Tokenizer::stepDoctypeSystem,
      &Tokenizer::stepInstruction,   &Tokenizer::stepCdata,
      &Tokenizer::stepReference,     &Tokenizer::stepNumericReference};
  for (const auto stepOf : kSteps) {
    if ((this->*stepOf)()) return;
  }
}

char32_t Tokenizer::consume() {
  const std::size_t index = at_++;
  return index < input_.size() ? input_[index].code : kEndOfFile;
}

void Tokenizer::reconsumeIn(State state) {
  --at_;
  state_ = state;
}

// Where the character before the current one ends.
std::uint32_t Tokenizer::endOfPrevious() const {
  return input_[at_ - 2].end;
}

bool Tokenizer::nextAre(std::string_view letters, bool ignoringCase) const {
  for (std::size_t i = 0; i < letters.size(); ++i) {
    if (at_ + i >= input_.size()) return false;
    const char32_t c = input_[at_ + i].code;
    const auto wanted = static_cast<unsigned char>(letters[i]);
    if (c != wanted && !(ignoringCase && toAsciiLower(c) == toAsciiLower(char32_t{wanted}))) {
      return false;
    }
  }
  return true;
}

// --- Emitting ---------------------------------------------------------------------------------

void Tokenizer::startTag(Token::Kind kind, std::uint32_t begin) {
  token_ = Token{};
  token_.kind = kind;
  token_.begin = begin;
}

bool Tokenizer::endTagIsAppropriate() const {
  return !lastStartTag_.empty() && token_.name == lastStartTag_;
}

void Tokenizer::emitToken() {
  Token token = std::move(token_);
  token_ = Token{};
  sink_.process(token);
}

void Tokenizer::emitTag() {
  // The first of attributes with one name is the tag's, the others are dropped.
  std::vector<Attribute> kept;
  for (Attribute& candidate : token_.attributes) {
    const bool repeated = std::any_of(kept.begin(), kept.end(), [&](const Attribute& earlier) {
      return earlier.name == candidate.name;
    });
    if (!repeated) kept.push_back(std::move(candidate));
  }
  token_.attributes = std::move(kept);
  if (token_.kind == Token::Kind::startTag) lastStartTag_ = token_.name;
  emitToken();
}

void Tokenizer::emitEndOfFile() {
  done_ = true;
  token_ = Token{};
  emitToken();
}

void Tokenizer::emitCharacter(Char character) {
  Token token;
  token.kind = Token::Kind::character;
  token.character = character;
  sink_.process(token);
}

void Tokenizer::emitReplacement() {
  emitCharacter({kReplacement, current().begin, current().end});
}

void Tokenizer::emitBuffer() {
  for (const Char& c : Text(buffer_)) emitCharacter(c);
}

// --- Text: 13.2.5.1 to 13.2.5.5 ---------------------------------------------------------------

bool Tokenizer::stepText() {
  if (state_ > State::plaintext) return false;
  const bool hasReferences = state_ == State::data || state_ == State::rcdata;
  const char32_t c = consume();
  if (c == kEndOfFile) {
    emitEndOfFile();
  } else if (c == '&' && hasReferences) {
    startReference(state_);
  } else if (c == '<' && state_ != State::plaintext) {
    lessThanAt_ = current().begin;
    state_ = state_ == State::data      ? State::tagOpen
             : state_ == State::rcdata  ? State::rcdataLessThan
             : state_ == State::rawtext ? State::rawtextLessThan
                                        : State::scriptDataLessThan;
  } else if (c == 0 && state_ != State::data) {
    emitReplacement();
  } else {
    emitCurrent();  // in the data state NUL, too: tree construction drops or replaces it
  }
  return true;
}

// --- CDATA sections: 13.2.5.69 to 13.2.5.71 ---------------------------------------------------

bool Tokenizer::stepCdata() {
  switch (state_) {
    case State::cdataSection: {
      const char32_t c = consume();
      if (c == ']') {
        state_ = State::cdataSectionBracket;
        buffer_ = {current()};
      } else if (c == kEndOfFile) {
        emitEndOfFile();
      } else {
        emitCurrent();
      }
      return true;
    }
    case State::cdataSectionBracket:
      if (consume() == ']') {
        buffer_.push_back(current());
        state_ = State::cdataSectionEnd;
      } else {
        emitBuffer();
        reconsumeIn(State::cdataSection);
      }
      return true;
    case State::cdataSectionEnd: {
      const char32_t c = consume();
      if (c == ']') {
        emitCharacter(buffer_.front());
        buffer_ = {buffer_.back(), current()};
      } else if (c == '>') {
        state_ = State::data;
      } else {
        emitBuffer();
        reconsumeIn(State::cdataSection);
      }
      return true;
    }
    default:
      return false;
  }
}

}  // namespace reference::page
