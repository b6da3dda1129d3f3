// Tags and attributes: 13.2.5.6 to 13.2.5.8, 13.2.5.32 to 13.2.5.40.
#include "reference/page/tokenizer.h"

namespace reference::page {

namespace {

// White space of the tokenizer; CR is gone by then.
bool isSpace(char32_t c) {
  return c == '\t' || c == '\n' || c == '\f' || c == ' ';
}

}  // namespace

bool Tokenizer::stepTag() {
  switch (state_) {
    case State::tagOpen: {
      const char32_t c = consume();
      if (c == '!') {
        state_ = State::markupDeclarationOpen;
      } else if (c == '/') {
        state_ = State::endTagOpen;
      } else if (isAsciiAlpha(c)) {
        startTag(Token::Kind::startTag, lessThanAt_);
        reconsumeIn(State::tagName);
      } else if (c == '?') {
        buffer_.clear();
        state_ = State::processingInstructionOpen;
      } else {
        emitCharacter(input_[at_ - 2]);
        reconsumeIn(State::data);
      }
      return true;
    }
    case State::endTagOpen: {
      const char32_t c = consume();
      if (isAsciiAlpha(c)) {
        startTag(Token::Kind::endTag, lessThanAt_);
        reconsumeIn(State::tagName);
      } else if (c == '>') {
        state_ = State::data;
      } else if (c == kEndOfFile) {
        emitCharacter(input_[at_ - 3]);
        emitCharacter(input_[at_ - 2]);
        emitEndOfFile();
      } else {
        startComment();
        reconsumeIn(State::bogusComment);
      }
      return true;
    }
    case State::tagName: {
      const char32_t c = consume();
      if (isSpace(c)) {
        state_ = State::beforeAttributeName;
      } else if (c == '/') {
        state_ = State::selfClosingStartTag;
      } else if (c == '>') {
        state_ = State::data;
        emitTag();
      } else if (c == kEndOfFile) {
        emitEndOfFile();
      } else {
        appendUtf8(token_.name, c == 0 ? kReplacement : toAsciiLower(c));
      }
      return true;
    }
    case State::selfClosingStartTag: {
      const char32_t c = consume();
      if (c == '>') {
        token_.selfClosing = true;
        state_ = State::data;
        emitTag();
      } else if (c == kEndOfFile) {
        emitEndOfFile();
      } else {
        reconsumeIn(State::beforeAttributeName);
      }
      return true;
    }
    default:
      return false;
  }
}

void Tokenizer::startAttribute() {
  Attribute started;
  started.tag = token_.begin;
  token_.attributes.push_back(started);
}

void Tokenizer::leaveAttributeName() {
  attribute().nameEnd = endOfPrevious();
  attribute().valueBegin = attribute().valueEnd = endOfPrevious();
}

void Tokenizer::appendToValue(char32_t c) {
  attribute().value.push_back({c == 0 ? kReplacement : c, current().begin, current().end});
}

bool Tokenizer::stepAttribute() {
  switch (state_) {
    case State::beforeAttributeName: {
      const char32_t c = consume();
      if (isSpace(c)) return true;
      if (c == '/' || c == '>' || c == kEndOfFile) {
        reconsumeIn(State::afterAttributeName);
        return true;
      }
      startAttribute();
      attribute().nameBegin = current().begin;
      if (c == '=') {
        attribute().name += '=';
        state_ = State::attributeName;
      } else {
        reconsumeIn(State::attributeName);
      }
      return true;
    }
    case State::attributeName: {
      const char32_t c = consume();
      if (isSpace(c) || c == '/' || c == '>' || c == kEndOfFile) {
        leaveAttributeName();
        reconsumeIn(State::afterAttributeName);
      } else if (c == '=') {
        leaveAttributeName();
        attribute().valueBegin = attribute().valueEnd = current().end;
        state_ = State::beforeAttributeValue;
      } else {
        appendUtf8(attribute().name, c == 0 ? kReplacement : toAsciiLower(c));
      }
      return true;
    }
    case State::afterAttributeName: {
      const char32_t c = consume();
      if (isSpace(c)) return true;
      if (c == '/') {
        state_ = State::selfClosingStartTag;
      } else if (c == '=') {
        attribute().valueBegin = attribute().valueEnd = current().end;
        state_ = State::beforeAttributeValue;
      } else if (c == '>') {
        state_ = State::data;
        emitTag();
      } else if (c == kEndOfFile) {
        emitEndOfFile();
      } else {
        startAttribute();
        attribute().nameBegin = current().begin;
        reconsumeIn(State::attributeName);
      }
      return true;
    }
    case State::beforeAttributeValue: {
      const char32_t c = consume();
      if (isSpace(c)) return true;
      if (c == '"' || c == '\'') {
        attribute().valueBegin = attribute().valueEnd = current().end;
        state_ = c == '"' ? State::attributeValueDoubleQuoted : State::attributeValueSingleQuoted;
      } else if (c == '>') {
        state_ = State::data;
        emitTag();
      } else {
        if (c != kEndOfFile) attribute().valueBegin = current().begin;
        reconsumeIn(State::attributeValueUnquoted);
      }
      return true;
    }
    case State::attributeValueDoubleQuoted:
    case State::attributeValueSingleQuoted: {
      const char32_t c = consume();
      if (c == (state_ == State::attributeValueDoubleQuoted ? U'"' : U'\'')) {
        attribute().valueEnd = current().begin;
        state_ = State::afterAttributeValueQuoted;
      } else if (c == '&') {
        startReference(state_);
      } else if (c == kEndOfFile) {
        emitEndOfFile();
      } else {
        appendToValue(c);
      }
      return true;
    }
    case State::attributeValueUnquoted: {
      const char32_t c = consume();
      if (isSpace(c)) {
        attribute().valueEnd = endOfPrevious();
        state_ = State::beforeAttributeName;
      } else if (c == '&') {
        startReference(state_);
      } else if (c == '>') {
        attribute().valueEnd = endOfPrevious();
        state_ = State::data;
        emitTag();
      } else if (c == kEndOfFile) {
        emitEndOfFile();
      } else {
        appendToValue(c);
      }
      return true;
    }
    case State::afterAttributeValueQuoted: {
      const char32_t c = consume();
      if (isSpace(c)) {
        state_ = State::beforeAttributeName;
      } else if (c == '/') {
        state_ = State::selfClosingStartTag;
      } else if (c == '>') {
        state_ = State::data;
        emitTag();
      } else if (c == kEndOfFile) {
        emitEndOfFile();
      } else {
        reconsumeIn(State::beforeAttributeName);
      }
      return true;
    }
    default:
      return false;
  }
}

}  // namespace reference::page
