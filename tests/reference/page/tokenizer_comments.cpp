// Comments and processing instructions: 13.2.5.41 to 13.2.5.52, 13.2.5.72 to 13.2.5.76.
#include <utility>

#include "reference/page/tokenizer.h"

namespace reference::page {

void Tokenizer::startComment() {
  token_ = Token{};
  token_.kind = Token::Kind::comment;
}

void Tokenizer::appendToData(char32_t c) {
  appendUtf8(token_.data, c == 0 ? kReplacement : c);
}

bool Tokenizer::stepComment() {
  switch (state_) {
    case State::markupDeclarationOpen:
      if (nextAre("--", false)) {
        skip(2);
        startComment();
        state_ = State::commentStart;
      } else if (nextAre("doctype", true)) {
        skip(7);
        state_ = State::doctype;
      } else if (nextAre("[CDATA[", false)) {
        skip(7);
        if (sink_.allowsCdataSection()) {
          state_ = State::cdataSection;
        } else {
          startComment();
          token_.data = "[CDATA[";
          state_ = State::bogusComment;
        }
      } else {
        startComment();
        state_ = State::bogusComment;
      }
      return true;
    case State::bogusComment: {
      const char32_t c = consume();
      if (c == '>') {
        state_ = State::data;
        emitToken();
      } else if (c == kEndOfFile) {
        emitToken();
        emitEndOfFile();
      } else {
        appendToData(c);
      }
      return true;
    }
    case State::commentStart: {
      const char32_t c = consume();
      if (c == '-') {
        state_ = State::commentStartDash;
      } else if (c == '>') {
        state_ = State::data;
        emitToken();
      } else {
        reconsumeIn(State::comment);
      }
      return true;
    }
    case State::comment: {
      const char32_t c = consume();
      if (c == '-') {
        state_ = State::commentEndDash;
      } else if (c == kEndOfFile) {
        emitToken();
        emitEndOfFile();
      } else {
        if (c == '<') state_ = State::commentLessThan;
        appendToData(c);
      }
      return true;
    }
    case State::commentLessThan: {
      const char32_t c = consume();
      if (c == '!') {
        appendToData(c);
        state_ = State::commentLessThanBang;
      } else if (c == '<') {
        appendToData(c);
      } else {
        reconsumeIn(State::comment);
      }
      return true;
    }
    case State::commentLessThanBang:
      if (consume() == '-') {
        state_ = State::commentLessThanBangDash;
      } else {
        reconsumeIn(State::comment);
      }
      return true;
    case State::commentLessThanBangDash:
      if (consume() == '-') {
        state_ = State::commentLessThanBangDashDash;
      } else {
        reconsumeIn(State::commentEndDash);
      }
      return true;
    case State::commentLessThanBangDashDash:
      consume();
      reconsumeIn(State::commentEnd);
      return true;
    default:
      return false;
  }
}

bool Tokenizer::stepCommentEnd() {
  switch (state_) {
    case State::commentStartDash:
    case State::commentEndDash: {
      const bool atStart = state_ == State::commentStartDash;
      const char32_t c = consume();
      if (c == '-') {
        state_ = State::commentEnd;
      } else if (c == '>' && atStart) {
        state_ = State::data;
        emitToken();
      } else if (c == kEndOfFile) {
        emitToken();
        emitEndOfFile();
      } else {
        token_.data += '-';
        reconsumeIn(State::comment);
      }
      return true;
    }
    case State::commentEnd: {
      const char32_t c = consume();
      if (c == '>') {
        state_ = State::data;
        emitToken();
      } else if (c == '!') {
        state_ = State::commentEndBang;
      } else if (c == '-') {
        token_.data += '-';
      } else if (c == kEndOfFile) {
        emitToken();
        emitEndOfFile();
      } else {
        token_.data += "--";
        reconsumeIn(State::comment);
      }
      return true;
    }
    case State::commentEndBang: {
      const char32_t c = consume();
      if (c == '-') {
        token_.data += "--!";
        state_ = State::commentEndDash;
      } else if (c == '>') {
        state_ = State::data;
        emitToken();
      } else if (c == kEndOfFile) {
        emitToken();
        emitEndOfFile();
      } else {
        token_.data += "--!";
        reconsumeIn(State::comment);
      }
      return true;
    }
    default:
      return false;
  }
}

// "Convert the temporary buffer to a comment".
void Tokenizer::bufferToComment() {
  startComment();
  token_.data = "?" + toUtf8(buffer_);
  reconsumeIn(State::bogusComment);
}

bool Tokenizer::stepInstruction() {
  switch (state_) {
    case State::processingInstructionOpen: {
      const char32_t c = consume();
      if (isAsciiAlpha(c) || c == '_') {
        reconsumeIn(State::processingInstructionTarget);
      } else if (c == kEndOfFile) {
        emitEndOfFile();
      } else {
        bufferToComment();
      }
      return true;
    }
    case State::processingInstructionTarget: {
      const char32_t c = consume();
      if (c == '\t' || c == '\n' || c == '\f' || c == ' ' || c == '?' || c == '>') {
        const std::string target = toUtf8(buffer_);
        if (isOneOf(toAsciiLower(target), {"xml", "xml-stylesheet"})) {
          bufferToComment();
          return true;
        }
        token_ = Token{};
        token_.kind = Token::Kind::instruction;
        token_.name = target;
        reconsumeIn(State::afterProcessingInstructionTarget);
      } else if (isAsciiAlphanumeric(c) || c == '-' || c == '_') {
        buffer_.push_back(current());
      } else if (c == kEndOfFile) {
        emitEndOfFile();
      } else {
        bufferToComment();
      }
      return true;
    }
    case State::afterProcessingInstructionTarget: {
      const char32_t c = consume();
      if (c == '\t' || c == '\n' || c == '\f' || c == ' ') return true;
      reconsumeIn(State::processingInstructionData);
      return true;
    }
    case State::processingInstructionData:
    case State::processingInstructionQuestionable: {
      const bool afterMark = state_ == State::processingInstructionQuestionable;
      const char32_t c = consume();
      if (c == '>') {
        state_ = State::data;
        emitToken();
      } else if (c == kEndOfFile) {
        emitEndOfFile();
      } else {
        if (afterMark) token_.data += '?';
        state_ =
            c == '?' ? State::processingInstructionQuestionable : State::processingInstructionData;
        if (c != '?') appendToData(c);
      }
      return true;
    }
    default:
      return false;
  }
}

}  // namespace reference::page
