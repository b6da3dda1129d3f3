// "in template", the insertion modes after the body, and framesets: 13.2.6.4.16 to 13.2.6.4.22.
#include "reference/page/tree_builder.h"

namespace reference::page {

namespace {

bool isStart(const Token& token, std::initializer_list<std::string_view> names) {
  return token.kind == Token::Kind::startTag && isOneOf(token.name, names);
}

bool isEnd(const Token& token, std::initializer_list<std::string_view> names) {
  return token.kind == Token::Kind::endTag && isOneOf(token.name, names);
}

bool isSpaceCharacter(const Token& token) {
  return token.kind == Token::Kind::character && isWhitespace(token.character.code);
}

bool isCommentLike(const Token& token) {
  return token.kind == Token::Kind::comment || token.kind == Token::Kind::instruction;
}

}  // namespace

void TreeBuilder::inTemplate(Token& token) {
  const auto continueIn = [&](Mode mode) {
    templateModes_.back() = mode;
    reprocessIn(mode, token);
  };
  if (token.kind == Token::Kind::character || isCommentLike(token) ||
      token.kind == Token::Kind::doctype) {
    inBody(token);
  } else if (isStart(token, {"base", "basefont", "bgsound", "link", "meta", "noframes", "script",
                             "style", "template", "title"}) ||
             isEnd(token, {"template"})) {
    inHead(token);
  } else if (isStart(token, {"caption", "colgroup", "tbody", "tfoot", "thead"})) {
    continueIn(Mode::inTable);
  } else if (isStart(token, {"col"})) {
    continueIn(Mode::inColumnGroup);
  } else if (isStart(token, {"tr"})) {
    continueIn(Mode::inTableBody);
  } else if (isStart(token, {"td", "th"})) {
    continueIn(Mode::inRow);
  } else if (token.kind == Token::Kind::startTag) {
    continueIn(Mode::inBody);
  } else if (token.kind == Token::Kind::endOfFile && hasTemplateOpen()) {
    popUntil("template");
    clearFormattingToMarker();
    templateModes_.pop_back();
    resetInsertionMode();
    useRulesOf(mode_, token);
  }
}

void TreeBuilder::afterBody(Token& token) {
  if (isSpaceCharacter(token)) {
    inBody(token);
  } else if (isCommentLike(token)) {
    insertComment(token, open_.front());
  } else if (token.kind == Token::Kind::doctype || token.kind == Token::Kind::endOfFile) {
    return;
  } else if (isStart(token, {"html"})) {
    inBody(token);
  } else if (isEnd(token, {"html"})) {
    if (context_ == nullptr) mode_ = Mode::afterAfterBody;
  } else {
    reprocessIn(Mode::inBody, token);
  }
}

void TreeBuilder::inFrameset(Token& token) {
  if (isSpaceCharacter(token)) {
    insertCharacter(token.character);
  } else if (isCommentLike(token)) {
    insertComment(token);
  } else if (isStart(token, {"html"})) {
    inBody(token);
  } else if (isStart(token, {"frameset"})) {
    insertElement(token);
  } else if (isEnd(token, {"frameset"})) {
    if (open_.size() == 1) return;
    pop();
    if (context_ == nullptr && !currentNode()->isHtml("frameset")) mode_ = Mode::afterFrameset;
  } else if (isStart(token, {"frame"})) {
    insertAndPop(token);
  } else if (isStart(token, {"noframes"})) {
    inHead(token);
  }
}

void TreeBuilder::afterFrameset(Token& token) {
  if (isSpaceCharacter(token)) {
    insertCharacter(token.character);
  } else if (isCommentLike(token)) {
    insertComment(token);
  } else if (isStart(token, {"html"})) {
    inBody(token);
  } else if (isEnd(token, {"html"})) {
    mode_ = Mode::afterAfterFrameset;
  } else if (isStart(token, {"noframes"})) {
    inHead(token);
  }
}

void TreeBuilder::afterAfterBody(Token& token) {
  if (isCommentLike(token)) {
    insertComment(token, tree_.document);
  } else if (token.kind == Token::Kind::doctype || isSpaceCharacter(token) ||
             isStart(token, {"html"})) {
    inBody(token);
  } else if (token.kind != Token::Kind::endOfFile) {
    reprocessIn(Mode::inBody, token);
  }
}

void TreeBuilder::afterAfterFrameset(Token& token) {
  if (isCommentLike(token)) {
    insertComment(token, tree_.document);
  } else if (token.kind == Token::Kind::doctype || isSpaceCharacter(token) ||
             isStart(token, {"html"})) {
    inBody(token);
  } else if (isStart(token, {"noframes"})) {
    inHead(token);
  }
}

}  // namespace reference::page
