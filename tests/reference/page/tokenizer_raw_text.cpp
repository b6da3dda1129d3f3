// Ends of RCDATA and RAWTEXT, and all states of script data: 13.2.5.9 to 13.2.5.31.
#include "reference/page/tokenizer.h"

namespace reference::page {

// "<" in text that only an end tag ends.
void Tokenizer::lessThan(State open, State text) {
  if (consume() == '/') {
    buffer_.clear();
    state_ = open;
  } else {
    emitCharacter(input_[at_ - 2]);
    reconsumeIn(text);
  }
}

// After "</".
void Tokenizer::endTagOpen(State name, State text) {
  if (isAsciiAlpha(consume())) {
    startTag(Token::Kind::endTag, lessThanAt_);
    reconsumeIn(name);
  } else {
    emitCharacter(input_[at_ - 3]);
    emitCharacter(input_[at_ - 2]);
    reconsumeIn(text);
  }
}

// The name after "</"; buffer_ holds it as written.
void Tokenizer::endTagName(State text) {
  const char32_t c = consume();
  if (endTagIsAppropriate() && (c == '\t' || c == '\n' || c == '\f' || c == ' ')) {
    state_ = State::beforeAttributeName;
  } else if (endTagIsAppropriate() && c == '/') {
    state_ = State::selfClosingStartTag;
  } else if (endTagIsAppropriate() && c == '>') {
    state_ = State::data;
    emitTag();
  } else if (isAsciiAlpha(c)) {
    appendUtf8(token_.name, toAsciiLower(c));
    buffer_.push_back(current());
  } else {
    emitCharacter(input_[at_ - 1 - buffer_.size() - 2]);
    emitCharacter(input_[at_ - 1 - buffer_.size() - 1]);
    emitBuffer();
    reconsumeIn(text);
  }
}

bool Tokenizer::stepRawTextEnd() {
  switch (state_) {
    case State::rcdataLessThan:
      lessThan(State::rcdataEndTagOpen, State::rcdata);
      return true;
    case State::rcdataEndTagOpen:
      endTagOpen(State::rcdataEndTagName, State::rcdata);
      return true;
    case State::rcdataEndTagName:
      endTagName(State::rcdata);
      return true;
    case State::rawtextLessThan:
      lessThan(State::rawtextEndTagOpen, State::rawtext);
      return true;
    case State::rawtextEndTagOpen:
      endTagOpen(State::rawtextEndTagName, State::rawtext);
      return true;
    case State::rawtextEndTagName:
      endTagName(State::rawtext);
      return true;
    case State::scriptDataEndTagOpen:
      endTagOpen(State::scriptDataEndTagName, State::scriptData);
      return true;
    case State::scriptDataEndTagName:
      endTagName(State::scriptData);
      return true;
    case State::scriptDataEscapedEndTagOpen:
      endTagOpen(State::scriptDataEscapedEndTagName, State::scriptDataEscaped);
      return true;
    case State::scriptDataEscapedEndTagName:
      endTagName(State::scriptDataEscaped);
      return true;
    default:
      return false;
  }
}

bool Tokenizer::stepScript() {
  switch (state_) {
    case State::scriptDataLessThan: {
      const char32_t c = consume();
      if (c == '/') {
        buffer_.clear();
        state_ = State::scriptDataEndTagOpen;
      } else if (c == '!') {
        state_ = State::scriptDataEscapeStart;
        emitCharacter(input_[at_ - 2]);
        emitCurrent();
      } else {
        emitCharacter(input_[at_ - 2]);
        reconsumeIn(State::scriptData);
      }
      return true;
    }
    case State::scriptDataEscapeStart:
      if (consume() == '-') {
        state_ = State::scriptDataEscapeStartDash;
        emitCurrent();
      } else {
        reconsumeIn(State::scriptData);
      }
      return true;
    case State::scriptDataEscapeStartDash:
      if (consume() == '-') {
        state_ = State::scriptDataEscapedDashDash;
        emitCurrent();
      } else {
        reconsumeIn(State::scriptData);
      }
      return true;
    default:
      return false;
  }
}

bool Tokenizer::stepScriptEscaped() {
  switch (state_) {
    case State::scriptDataEscaped:
    case State::scriptDataEscapedDash:
    case State::scriptDataEscapedDashDash: {
      const State from = state_;
      const char32_t c = consume();
      if (c == '-') {
        state_ = from == State::scriptDataEscaped ? State::scriptDataEscapedDash
                                                  : State::scriptDataEscapedDashDash;
        emitCurrent();
      } else if (c == '<') {
        lessThanAt_ = current().begin;
        state_ = State::scriptDataEscapedLessThan;
      } else if (c == '>' && from == State::scriptDataEscapedDashDash) {
        state_ = State::scriptData;
        emitCurrent();
      } else if (c == kEndOfFile) {
        emitEndOfFile();
      } else {
        state_ = State::scriptDataEscaped;
        if (c == 0) {
          emitReplacement();
        } else {
          emitCurrent();
        }
      }
      return true;
    }
    case State::scriptDataEscapedLessThan: {
      const char32_t c = consume();
      if (c == '/') {
        buffer_.clear();
        state_ = State::scriptDataEscapedEndTagOpen;
      } else if (isAsciiAlpha(c)) {
        bufferName_.clear();
        emitCharacter(input_[at_ - 2]);
        reconsumeIn(State::scriptDataDoubleEscapeStart);
      } else {
        emitCharacter(input_[at_ - 2]);
        reconsumeIn(State::scriptDataEscaped);
      }
      return true;
    }
    default:
      return false;
  }
}

// The name after "<" or "</" in escaped script data: "script" turns doubly escaped on or off.
void Tokenizer::doubleEscape(State yes, State no) {
  const char32_t c = consume();
  if (c == '\t' || c == '\n' || c == '\f' || c == ' ' || c == '/' || c == '>') {
    state_ = bufferName_ == "script" ? yes : no;
    emitCurrent();
  } else if (isAsciiAlpha(c)) {
    appendUtf8(bufferName_, toAsciiLower(c));
    emitCurrent();
  } else {
    reconsumeIn(no);
  }
}

bool Tokenizer::stepScriptDoubleEscaped() {
  switch (state_) {
    case State::scriptDataDoubleEscapeStart:
      doubleEscape(State::scriptDataDoubleEscaped, State::scriptDataEscaped);
      return true;
    case State::scriptDataDoubleEscapeEnd:
      // "script" turns it off: the roles are swapped.
      doubleEscape(State::scriptDataEscaped, State::scriptDataDoubleEscaped);
      return true;
    case State::scriptDataDoubleEscaped:
    case State::scriptDataDoubleEscapedDash:
    case State::scriptDataDoubleEscapedDashDash: {
      const State from = state_;
      const char32_t c = consume();
      if (c == kEndOfFile) {
        emitEndOfFile();
        return true;
      }
      if (c == '-') {
        state_ = from == State::scriptDataDoubleEscaped ? State::scriptDataDoubleEscapedDash
                                                        : State::scriptDataDoubleEscapedDashDash;
      } else if (c == '<') {
        state_ = State::scriptDataDoubleEscapedLessThan;
      } else if (c == '>' && from == State::scriptDataDoubleEscapedDashDash) {
        state_ = State::scriptData;
      } else {
        state_ = State::scriptDataDoubleEscaped;
      }
      if (c == 0) {
        emitReplacement();
      } else {
        emitCurrent();
      }
      return true;
    }
    case State::scriptDataDoubleEscapedLessThan:
      if (consume() == '/') {
        bufferName_.clear();
        state_ = State::scriptDataDoubleEscapeEnd;
        emitCurrent();
      } else {
        reconsumeIn(State::scriptDataDoubleEscaped);
      }
      return true;
    default:
      return false;
  }
}

}  // namespace reference::page
