// The insertion modes up to "after head", and "text": 13.2.6.4.1 to 13.2.6.4.6, 13.2.6.4.8.
#include <utility>

#include "reference/page/tree_builder.h"

namespace reference::page {

namespace {

bool isSpaceCharacter(const Token& token) {
  return token.kind == Token::Kind::character && isWhitespace(token.character.code);
}

bool isCommentLike(const Token& token) {
  return token.kind == Token::Kind::comment || token.kind == Token::Kind::instruction;
}

bool isStart(const Token& token, std::initializer_list<std::string_view> names) {
  return token.kind == Token::Kind::startTag && isOneOf(token.name, names);
}

bool isEnd(const Token& token, std::initializer_list<std::string_view> names) {
  return token.kind == Token::Kind::endTag && isOneOf(token.name, names);
}

}  // namespace

void TreeBuilder::initial(Token& token) {
  if (isSpaceCharacter(token)) return;
  if (isCommentLike(token)) {
    insertComment(token, tree_.document);
  } else if (token.kind == Token::Kind::doctype) {
    Node* const node = tree_.make(Node::Kind::doctype);
    node->name = token.name;
    node->hasPublicOrSystem = token.publicIdentifier || token.systemIdentifier;
    node->publicIdentifier = token.publicIdentifier.value_or("");
    node->systemIdentifier = token.systemIdentifier.value_or("");
    append(*tree_.document, *node);
    if (!options_.isSrcdoc) tree_.quirks = quirksOf(token);
    mode_ = Mode::beforeHtml;
  } else {
    if (!options_.isSrcdoc) tree_.quirks = Quirks::yes;
    reprocessIn(Mode::beforeHtml, token);
  }
}

void TreeBuilder::beforeHtml(Token& token) {
  if (token.kind == Token::Kind::doctype || isSpaceCharacter(token)) return;
  if (isCommentLike(token)) {
    insertComment(token, tree_.document);
    return;
  }
  const bool isOtherEnd =
      token.kind == Token::Kind::endTag && !isOneOf(token.name, {"head", "body", "html", "br"});
  if (isOtherEnd) return;
  Token made;
  made.name = "html";
  Node* const root = createElement(isStart(token, {"html"}) ? token : made, Namespace::html);
  root->fromTag = isStart(token, {"html"});
  append(*tree_.document, *root);
  open_.push_back(root);
  mode_ = Mode::beforeHead;
  if (!root->fromTag) useRulesOf(mode_, token);
}

void TreeBuilder::beforeHead(Token& token) {
  if (isSpaceCharacter(token) || token.kind == Token::Kind::doctype) return;
  if (isCommentLike(token)) {
    insertComment(token);
  } else if (isStart(token, {"html"})) {
    inBody(token);
  } else if (isStart(token, {"head"})) {
    head_ = insertElement(token);
    mode_ = Mode::inHead;
  } else if (token.kind == Token::Kind::endTag &&
             !isOneOf(token.name, {"head", "body", "html", "br"})) {
    return;
  } else {
    head_ = insertNamed("head");
    reprocessIn(Mode::inHead, token);
  }
}

void TreeBuilder::inHead(Token& token) {
  if (isSpaceCharacter(token)) {
    insertCharacter(token.character);
  } else if (isCommentLike(token)) {
    insertComment(token);
  } else if (token.kind == Token::Kind::doctype || isStart(token, {"head"})) {
    return;
  } else if (isStart(token, {"html"})) {
    inBody(token);
  } else if (token.kind == Token::Kind::startTag && inHeadStartTag(token)) {
    return;
  } else if (isEnd(token, {"head"})) {
    pop();
    mode_ = Mode::afterHead;
  } else if (isEnd(token, {"template"})) {
    endTemplate();
  } else if (token.kind == Token::Kind::endTag && !isOneOf(token.name, {"body", "html", "br"})) {
    return;
  } else {
    pop();
    reprocessIn(Mode::afterHead, token);
  }
}

bool TreeBuilder::inHeadStartTag(Token& token) {
  const std::string& name = token.name;
  if (isOneOf(name, {"base", "basefont", "bgsound", "link", "meta"})) {
    insertAndPop(token);
  } else if (name == "title") {
    genericText(token, State::rcdata);
  } else if (isOneOf(name, {"noframes", "style"}) || (name == "noscript" && options_.scripting)) {
    genericText(token, State::rawtext);
  } else if (name == "noscript") {
    insertElement(token);
    mode_ = Mode::inHeadNoscript;
  } else if (name == "script") {
    genericText(token, State::scriptData);
  } else if (name == "template") {
    startTemplate(token);
  } else {
    return false;
  }
  return true;
}

namespace {

// Elements that may have a shadow root.
bool mayHaveShadowRoot(const Node& node) {
  return node.space == Namespace::html &&
         (node.name.find('-') != std::string::npos ||
          isOneOf(node.name,
                  {"article", "aside", "blockquote", "body", "div", "footer", "h1", "h2", "h3",
                   "h4", "h5", "h6", "header", "main", "nav", "p", "section", "span"}));
}

const Attribute* find(const Token& token, std::string_view name) {
  for (const Attribute& attribute : token.attributes) {
    if (attribute.name == name) return &attribute;
  }
  return nullptr;
}

}  // namespace

void TreeBuilder::startTemplate(Token& token) {
  formatting_.push_back(nullptr);
  framesetOk_ = false;
  mode_ = Mode::inTemplate;
  templateModes_.push_back(Mode::inTemplate);

  const Attribute* const modeAttribute = find(token, "shadowrootmode");
  const std::string mode = modeAttribute ? toAsciiLower(toUtf8(modeAttribute->value)) : "";
  Node* const host = currentNode();
  const bool makesRoot = isOneOf(mode, {"open", "closed"}) && options_.allowsShadowRoots &&
                         open_.size() > 1 && mayHaveShadowRoot(*host) &&
                         host->shadowRoot == nullptr;
  if (!makesRoot) {
    insertElement(token);
    return;
  }
  // The template is on the stack alone; what it would hold becomes the host's shadow root.
  Node* const element = createElement(token, Namespace::html);
  host->shadowRoot = element->content;
  open_.push_back(element);
}

void TreeBuilder::endTemplate() {
  if (!hasTemplateOpen()) return;
  generateAllImpliedEndTags();
  popUntil("template");
  clearFormattingToMarker();
  templateModes_.pop_back();
  resetInsertionMode();
}

void TreeBuilder::inHeadNoscript(Token& token) {
  if (token.kind == Token::Kind::doctype) return;
  if (isStart(token, {"html"})) {
    inBody(token);
  } else if (isEnd(token, {"noscript"})) {
    pop();
    mode_ = Mode::inHead;
  } else if (isSpaceCharacter(token) || isCommentLike(token) ||
             isStart(token, {"basefont", "bgsound", "link", "meta", "noframes", "style"})) {
    inHead(token);
  } else if (isStart(token, {"head", "noscript"}) ||
             (token.kind == Token::Kind::endTag && token.name != "br")) {
    return;
  } else {
    pop();
    reprocessIn(Mode::inHead, token);
  }
}

void TreeBuilder::afterHead(Token& token) {
  if (isSpaceCharacter(token)) {
    insertCharacter(token.character);
  } else if (isCommentLike(token)) {
    insertComment(token);
  } else if (token.kind == Token::Kind::doctype || isStart(token, {"head"})) {
    return;
  } else if (isStart(token, {"html"})) {
    inBody(token);
  } else if (isStart(token, {"body"})) {
    insertElement(token);
    framesetOk_ = false;
    mode_ = Mode::inBody;
  } else if (isStart(token, {"frameset"})) {
    insertElement(token);
    mode_ = Mode::inFrameset;
  } else if (isStart(token, {"base", "basefont", "bgsound", "link", "meta", "noframes", "script",
                             "style", "template", "title"})) {
    open_.push_back(head_);
    inHead(token);
    removeFromStack(head_);
  } else if (isEnd(token, {"template"})) {
    endTemplate();
  } else if (token.kind == Token::Kind::endTag && !isOneOf(token.name, {"body", "html", "br"})) {
    return;
  } else {
    insertNamed("body");
    reprocessIn(Mode::inBody, token);
  }
}

void TreeBuilder::text(Token& token) {
  if (token.kind == Token::Kind::character) {
    insertCharacter(token.character);
    return;
  }
  pop();
  mode_ = originalMode_;
  if (token.kind == Token::Kind::endOfFile) useRulesOf(mode_, token);
}

}  // namespace reference::page
