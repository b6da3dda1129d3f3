// DOCTYPE tokens: 13.2.5.53 to 13.2.5.68.
#include "reference/page/tokenizer.h"

namespace reference::page {

namespace {

bool isSpace(char32_t c) {
  return c == '\t' || c == '\n' || c == '\f' || c == ' ';
}

}  // namespace

void Tokenizer::startDoctype() {
  token_ = Token{};
  token_.kind = Token::Kind::doctype;
}

void Tokenizer::endDoctypeAtEndOfFile() {
  token_.forceQuirks = true;
  emitToken();
  emitEndOfFile();
}

// The doctype ends here, or goes on as bogus; it stands for quirks.
void Tokenizer::quirkyDoctype(State next) {
  token_.forceQuirks = true;
  if (next == State::data) {
    state_ = State::data;
    emitToken();
  } else {
    reconsumeIn(next);
  }
}

bool Tokenizer::stepDoctype() {
  switch (state_) {
    case State::doctype: {
      startDoctype();
      const char32_t c = consume();
      if (isSpace(c)) {
        state_ = State::beforeDoctypeName;
      } else if (c == kEndOfFile) {
        endDoctypeAtEndOfFile();
      } else {
        reconsumeIn(State::beforeDoctypeName);
      }
      return true;
    }
    case State::beforeDoctypeName: {
      const char32_t c = consume();
      if (isSpace(c)) return true;
      if (c == '>') {
        quirkyDoctype(State::data);
      } else if (c == kEndOfFile) {
        endDoctypeAtEndOfFile();
      } else {
        token_.hasName = true;
        reconsumeIn(State::doctypeName);
      }
      return true;
    }
    case State::doctypeName: {
      const char32_t c = consume();
      if (isSpace(c)) {
        state_ = State::afterDoctypeName;
      } else if (c == '>') {
        state_ = State::data;
        emitToken();
      } else if (c == kEndOfFile) {
        endDoctypeAtEndOfFile();
      } else {
        appendUtf8(token_.name, c == 0 ? kReplacement : toAsciiLower(c));
      }
      return true;
    }
    case State::afterDoctypeName: {
      if (nextAre("public", true) || nextAre("system", true)) {
        state_ = nextAre("public", true) ? State::afterDoctypePublicKeyword
                                         : State::afterDoctypeSystemKeyword;
        skip(6);
        return true;
      }
      const char32_t c = consume();
      if (isSpace(c)) return true;
      if (c == '>') {
        state_ = State::data;
        emitToken();
      } else if (c == kEndOfFile) {
        endDoctypeAtEndOfFile();
      } else {
        quirkyDoctype(State::bogusDoctype);
      }
      return true;
    }
    case State::bogusDoctype: {
      const char32_t c = consume();
      if (c == '>') {
        state_ = State::data;
        emitToken();
      } else if (c == kEndOfFile) {
        emitToken();
        emitEndOfFile();
      }
      return true;
    }
    default:
      return false;
  }
}

void Tokenizer::doctypeIdentifier(std::optional<std::string>& identifier, char32_t quote,
                                  State after) {
  const char32_t c = consume();
  if (c == quote) {
    state_ = after;
  } else if (c == '>') {
    quirkyDoctype(State::data);
  } else if (c == kEndOfFile) {
    endDoctypeAtEndOfFile();
  } else {
    appendUtf8(*identifier, c == 0 ? kReplacement : c);
  }
}

bool Tokenizer::stepDoctypePublic() {
  switch (state_) {
    case State::afterDoctypePublicKeyword:
    case State::beforeDoctypePublicIdentifier: {
      const char32_t c = consume();
      if (isSpace(c)) {
        state_ = State::beforeDoctypePublicIdentifier;
      } else if (c == '"' || c == '\'') {
        token_.publicIdentifier = "";
        state_ = c == '"' ? State::doctypePublicIdentifierDoubleQuoted
                          : State::doctypePublicIdentifierSingleQuoted;
      } else if (c == '>') {
        quirkyDoctype(State::data);
      } else if (c == kEndOfFile) {
        endDoctypeAtEndOfFile();
      } else {
        quirkyDoctype(State::bogusDoctype);
      }
      return true;
    }
    case State::doctypePublicIdentifierDoubleQuoted:
      doctypeIdentifier(token_.publicIdentifier, '"', State::afterDoctypePublicIdentifier);
      return true;
    case State::doctypePublicIdentifierSingleQuoted:
      doctypeIdentifier(token_.publicIdentifier, '\'', State::afterDoctypePublicIdentifier);
      return true;
    case State::afterDoctypePublicIdentifier:
    case State::betweenDoctypePublicAndSystemIdentifiers: {
      const char32_t c = consume();
      if (isSpace(c)) {
        state_ = State::betweenDoctypePublicAndSystemIdentifiers;
      } else if (c == '>') {
        state_ = State::data;
        emitToken();
      } else if (c == '"' || c == '\'') {
        token_.systemIdentifier = "";
        state_ = c == '"' ? State::doctypeSystemIdentifierDoubleQuoted
                          : State::doctypeSystemIdentifierSingleQuoted;
      } else if (c == kEndOfFile) {
        endDoctypeAtEndOfFile();
      } else {
        quirkyDoctype(State::bogusDoctype);
      }
      return true;
    }
    default:
      return false;
  }
}

bool Tokenizer::stepDoctypeSystem() {
  switch (state_) {
    case State::afterDoctypeSystemKeyword:
    case State::beforeDoctypeSystemIdentifier: {
      const char32_t c = consume();
      if (isSpace(c)) {
        state_ = State::beforeDoctypeSystemIdentifier;
      } else if (c == '"' || c == '\'') {
        token_.systemIdentifier = "";
        state_ = c == '"' ? State::doctypeSystemIdentifierDoubleQuoted
                          : State::doctypeSystemIdentifierSingleQuoted;
      } else if (c == '>') {
        quirkyDoctype(State::data);
      } else if (c == kEndOfFile) {
        endDoctypeAtEndOfFile();
      } else {
        quirkyDoctype(State::bogusDoctype);
      }
      return true;
    }
    case State::doctypeSystemIdentifierDoubleQuoted:
      doctypeIdentifier(token_.systemIdentifier, '"', State::afterDoctypeSystemIdentifier);
      return true;
    case State::doctypeSystemIdentifierSingleQuoted:
      doctypeIdentifier(token_.systemIdentifier, '\'', State::afterDoctypeSystemIdentifier);
      return true;
    case State::afterDoctypeSystemIdentifier: {
      const char32_t c = consume();
      if (isSpace(c)) return true;
      if (c == '>') {
        state_ = State::data;
        emitToken();
      } else if (c == kEndOfFile) {
        endDoctypeAtEndOfFile();
      } else {
        reconsumeIn(State::bogusDoctype);  // this does not stand for quirks
      }
      return true;
    }
    default:
      return false;
  }
}

}  // namespace reference::page
