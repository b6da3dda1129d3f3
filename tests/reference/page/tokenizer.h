// The HTML Standard's tokenizer (13.2.5), state by state, a code point at a time.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_TOKENIZER_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_TOKENIZER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "reference/page/text.h"
#include "reference/page/token.h"

namespace reference::page {

// In the order of the standard.
enum class State {
  data,
  rcdata,
  rawtext,
  scriptData,
  plaintext,
  tagOpen,
  endTagOpen,
  tagName,
  rcdataLessThan,
  rcdataEndTagOpen,
  rcdataEndTagName,
  rawtextLessThan,
  rawtextEndTagOpen,
  rawtextEndTagName,
  scriptDataLessThan,
  scriptDataEndTagOpen,
  scriptDataEndTagName,
  scriptDataEscapeStart,
  scriptDataEscapeStartDash,
  scriptDataEscaped,
  scriptDataEscapedDash,
  scriptDataEscapedDashDash,
  scriptDataEscapedLessThan,
  scriptDataEscapedEndTagOpen,
  scriptDataEscapedEndTagName,
  scriptDataDoubleEscapeStart,
  scriptDataDoubleEscaped,
  scriptDataDoubleEscapedDash,
  scriptDataDoubleEscapedDashDash,
  scriptDataDoubleEscapedLessThan,
  scriptDataDoubleEscapeEnd,
  beforeAttributeName,
  attributeName,
  afterAttributeName,
  beforeAttributeValue,
  attributeValueDoubleQuoted,
  attributeValueSingleQuoted,
  attributeValueUnquoted,
  afterAttributeValueQuoted,
  selfClosingStartTag,
  bogusComment,
  markupDeclarationOpen,
  commentStart,
  commentStartDash,
  comment,
  commentLessThan,
  commentLessThanBang,
  commentLessThanBangDash,
  commentLessThanBangDashDash,
  commentEndDash,
  commentEnd,
  commentEndBang,
  doctype,
  beforeDoctypeName,
  doctypeName,
  afterDoctypeName,
  afterDoctypePublicKeyword,
  beforeDoctypePublicIdentifier,
  doctypePublicIdentifierDoubleQuoted,
  doctypePublicIdentifierSingleQuoted,
  afterDoctypePublicIdentifier,
  betweenDoctypePublicAndSystemIdentifiers,
  afterDoctypeSystemKeyword,
  beforeDoctypeSystemIdentifier,
  doctypeSystemIdentifierDoubleQuoted,
  doctypeSystemIdentifierSingleQuoted,
  afterDoctypeSystemIdentifier,
  bogusDoctype,
  cdataSection,
  cdataSectionBracket,
  cdataSectionEnd,
  processingInstructionOpen,
  processingInstructionTarget,
  afterProcessingInstructionTarget,
  processingInstructionData,
  processingInstructionQuestionable,
  characterReference,
  namedCharacterReference,
  ambiguousAmpersand,
  numericCharacterReference,
  hexadecimalCharacterReferenceStart,
  decimalCharacterReferenceStart,
  hexadecimalCharacterReference,
  decimalCharacterReference,
  numericCharacterReferenceEnd,
};

class TokenSink {
 public:
  TokenSink() = default;
  TokenSink(const TokenSink&) = delete;
  TokenSink& operator=(const TokenSink&) = delete;
  virtual ~TokenSink() = default;

  virtual void process(Token& token) = 0;

  // Whether "<![CDATA[" opens a CDATA section here: the adjusted current node is foreign.
  virtual bool allowsCdataSection() const = 0;
};

// Each CR LF as one LF that both bytes spell, each other CR as LF (13.2.3.5).
Text withNormalizedNewlines(const Text& input);

class Tokenizer {
 public:
  Tokenizer(const Text& input, TokenSink& sink);

  void setState(State state) { state_ = state; }
  void setLastStartTag(std::string name) { lastStartTag_ = std::move(name); }

  // Hands out all tokens, the end-of-file token last.
  void run();

 private:
  static constexpr char32_t kEndOfFile = 0xFFFFFFFF;

  // One step each: consume a character, act on it. They return whether the state is theirs.
  void step();
  bool stepText();
  bool stepTag();
  bool stepAttribute();
  bool stepRawTextEnd();
  bool stepScript();
  bool stepScriptEscaped();
  bool stepScriptDoubleEscaped();
  bool stepComment();
  bool stepCommentEnd();
  bool stepDoctype();
  bool stepDoctypePublic();
  bool stepDoctypeSystem();
  bool stepInstruction();
  bool stepCdata();
  bool stepReference();
  bool stepNumericReference();

  // The next input character; also when there is none left, so that it can be reconsumed.
  char32_t consume();
  void reconsumeIn(State state);
  const Char& current() const { return input_[at_ - 1]; }
  std::uint32_t endOfPrevious() const;
  bool nextAre(std::string_view letters, bool ignoringCase) const;
  void skip(std::size_t count) { at_ += count; }

  void startTag(Token::Kind kind, std::uint32_t begin);
  bool endTagIsAppropriate() const;
  void emitTag();
  void emitEndOfFile();
  void emitCharacter(Char character);
  void emitCurrent() { emitCharacter(current()); }
  void emitReplacement();
  void emitBuffer();
  void emitToken();

  void startAttribute();
  void leaveAttributeName();
  Attribute& attribute() { return token_.attributes.back(); }
  void appendToValue(char32_t c);
  bool inAttributeValue() const;

  void lessThan(State open, State text);
  void endTagOpen(State name, State text);
  void endTagName(State text);
  void doubleEscape(State yes, State no);

  void startComment();
  void appendToData(char32_t c);
  void bufferToComment();
  void startDoctype();
  void doctypeIdentifier(std::optional<std::string>& identifier, char32_t quote, State after);
  void quirkyDoctype(State next);
  void endDoctypeAtEndOfFile();

  void startReference(State from);
  void flushReference();
  void replaceReference(std::u32string_view codes);
  void namedReference();
  char32_t numericReferenceCode() const;

  const Text input_;
  TokenSink& sink_;
  std::size_t at_ = 0;
  bool done_ = false;
  State state_ = State::data;
  State returnState_ = State::data;
  Token token_;
  std::string lastStartTag_;
  Text buffer_;  // the temporary buffer
  std::string bufferName_;
  std::uint32_t lessThanAt_ = 0;
  char32_t referenceCode_ = 0;
};

}  // namespace reference::page

#endif
