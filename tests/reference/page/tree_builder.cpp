#include "reference/page/tree_builder.h"

#include <utility>

namespace reference::page {

Tree parse(const Text& input, const ParseOptions& options) {
  Tree tree;
  TreeBuilder builder(tree, options);
  Tokenizer tokenizer(input, builder);
  builder.setTokenizer(tokenizer);
  if (!options.contextName.empty()) builder.startFragment(tokenizer);
  tokenizer.run();
  return tree;
}

TreeBuilder::TreeBuilder(Tree& tree, const ParseOptions& options) : tree_(tree), options_(options) {
  tree_.quirks = options.quirks;
}

// 13.4 "Parsing HTML fragments".
void TreeBuilder::startFragment(Tokenizer& tokenizer) {
  context_ = tree_.make(Node::Kind::element);
  context_->space = options_.contextSpace;
  context_->name = options_.contextName;
  if (context_->isHtmlOneOf({"title", "textarea"})) {
    tokenizer.setState(State::rcdata);
  } else if (context_->isHtmlOneOf({"style", "xmp", "iframe", "noembed", "noframes"}) ||
             (context_->isHtml("noscript") && options_.scripting)) {
    tokenizer.setState(State::rawtext);
  } else if (context_->isHtml("script")) {
    tokenizer.setState(State::scriptData);
  } else if (context_->isHtml("plaintext")) {
    tokenizer.setState(State::plaintext);
  }
  Node* const root = tree_.make(Node::Kind::element);
  root->name = "html";
  append(*tree_.document, *root);
  open_.push_back(root);
  if (context_->isHtml("template")) templateModes_.push_back(Mode::inTemplate);
  resetInsertionMode();
  if (context_->isHtml("form")) form_ = context_;
}

// --- Dispatch: 13.2.6 ---------------------------------------------------------------------------

void TreeBuilder::process(Token& token) {
  if (std::exchange(ignoresNextLineFeed_, false) && token.kind == Token::Kind::character &&
      token.character.code == '\n') {
    return;
  }
  dispatch(token);
}

void TreeBuilder::dispatch(Token& token) {
  if (isForForeignContent(token)) {
    foreignContent(token);
  } else {
    useRulesOf(mode_, token);
  }
}

bool TreeBuilder::isForForeignContent(const Token& token) const {
  if (open_.empty() || token.kind == Token::Kind::endOfFile) return false;
  const Node& node = *adjustedCurrentNode();
  if (node.space == Namespace::html) return false;
  const bool isStart = token.kind == Token::Kind::startTag;
  const bool isCharacter = token.kind == Token::Kind::character;
  if (isMathmlTextIntegrationPoint(node)) {
    if (isCharacter || (isStart && !isOneOf(token.name, {"mglyph", "malignmark"}))) return false;
  }
  if (node.isMathml("annotation-xml") && isStart && token.name == "svg") return false;
  return !(isHtmlIntegrationPoint(node) && (isStart || isCharacter));
}

bool TreeBuilder::allowsCdataSection() const {
  return !open_.empty() && adjustedCurrentNode()->space != Namespace::html;
}

void TreeBuilder::useRulesOf(Mode mode, Token& token) {
  static constexpr void (TreeBuilder::*kRules[])(Token&) = {
      &TreeBuilder::initial,       &TreeBuilder::beforeHtml,     &TreeBuilder::beforeHead,
      &TreeBuilder::inHead,        &TreeBuilder::inHeadNoscript, &TreeBuilder::afterHead,
      &TreeBuilder::inBody,        &TreeBuilder::text,           &TreeBuilder::inTable,
      &TreeBuilder::inTableText,   &TreeBuilder::inCaption,      &TreeBuilder::inColumnGroup,
      &TreeBuilder::inTableBody,   &TreeBuilder::inRow,          &TreeBuilder::inCell,
      &TreeBuilder::inTemplate,    &TreeBuilder::afterBody,      &TreeBuilder::inFrameset,
      &TreeBuilder::afterFrameset, &TreeBuilder::afterAfterBody, &TreeBuilder::afterAfterFrameset};
  (this->*kRules[static_cast<std::size_t>(mode)])(token);
}

void TreeBuilder::reprocessIn(Mode mode, Token& token) {
  mode_ = mode;
  useRulesOf(mode_, token);
}

// --- Inserting: 13.2.6.1 ------------------------------------------------------------------------

TreeBuilder::Place TreeBuilder::appropriatePlace(Node* overrideTarget) {
  Node* const target = overrideTarget ? overrideTarget : currentNode();
  Place place = {target, target->children.size()};
  if (fosterParenting_ && target->isHtmlOneOf({"table", "tbody", "tfoot", "thead", "tr"})) {
    std::size_t lastTemplate = open_.size();
    std::size_t lastTable = open_.size();
    for (std::size_t i = 0; i < open_.size(); ++i) {
      if (open_[i]->isHtml("template")) lastTemplate = i;
      if (open_[i]->isHtml("table")) lastTable = i;
    }
    const bool hasTemplate = lastTemplate < open_.size();
    const bool hasTable = lastTable < open_.size();
    if (hasTemplate && (!hasTable || lastTemplate > lastTable)) {
      Node* const content = open_[lastTemplate]->content;
      return {content, content->children.size()};
    }
    if (!hasTable) {
      place = {open_.front(), open_.front()->children.size()};
    } else if (Node* const parent = open_[lastTable]->parent) {
      place = {parent, indexInParent(*open_[lastTable])};
    } else {
      Node* const previous = open_[lastTable - 1];
      place = {previous, previous->children.size()};
    }
  }
  if (place.parent->isHtml("template")) {
    Node* const content = place.parent->content;
    return {content, content->children.size()};
  }
  return place;
}

void TreeBuilder::insertAtPlace(Node& node, const Place& place) {
  std::size_t index = place.index;
  if (node.parent == place.parent && indexInParent(node) < index) --index;
  insertAt(*place.parent, index, node);
}

Node* TreeBuilder::createElement(const Token& token, Namespace space) {
  Node* const element = tree_.make(Node::Kind::element);
  element->space = space;
  element->name = token.name;
  element->attributes = token.attributes;
  element->fromTag = true;
  element->tag = token.begin;
  if (space == Namespace::svg) adjustSvgName(element->name);
  if (space != Namespace::html) adjustAttributes(element->attributes, space);
  if (element->isHtml("template")) element->content = tree_.make(Node::Kind::fragment);
  if (!open_.empty()) element->openParent = currentNode();
  for (const Node* const open : open_) {
    if (open->isHtmlOneOf({"object", "video", "audio"})) element->insideObjectOrMedia = true;
  }
  return element;
}

Node* TreeBuilder::insertElement(const Token& token, Namespace space) {
  const Place place = appropriatePlace();
  Node* const element = createElement(token, space);
  insertAtPlace(*element, place);
  open_.push_back(element);
  return element;
}

// An element for a start tag without attributes that does not stand in the page.
Node* TreeBuilder::insertNamed(std::string_view name) {
  Token token;
  token.kind = Token::Kind::startTag;
  token.name = name;
  Node* const element = insertElement(token);
  element->fromTag = false;
  return element;
}

void TreeBuilder::insertAndPop(const Token& token) {
  insertElement(token);
  pop();
}

void TreeBuilder::insertCharacter(const Char& c) {
  const Place place = appropriatePlace();
  if (place.parent->kind == Node::Kind::document) return;
  auto& siblings = place.parent->children;
  if (place.index > 0 && siblings[place.index - 1]->kind == Node::Kind::text) {
    siblings[place.index - 1]->text.push_back(c);
    return;
  }
  Node* const node = tree_.make(Node::Kind::text);
  node->text.push_back(c);
  insertAt(*place.parent, place.index, *node);
}

// Comments and processing instructions; at the end of `parent`, or at the appropriate place.
void TreeBuilder::insertComment(const Token& token, Node* parent) {
  const bool isComment = token.kind == Token::Kind::comment;
  const Place place = parent ? Place{parent, parent->children.size()} : appropriatePlace();
  Node* const node = tree_.make(isComment ? Node::Kind::comment : Node::Kind::instruction);
  node->name = token.name;
  node->data = token.data;
  insertAt(*place.parent, place.index, *node);
}

void TreeBuilder::mergeAttributes(Node& element, const Token& token) {
  for (const Attribute& attribute : token.attributes) {
    if (element.attribute(attribute.name) == nullptr) element.attributes.push_back(attribute);
  }
}

// "Generic raw text" and "generic RCDATA element parsing algorithm".
void TreeBuilder::genericText(Token& token, State state) {
  insertElement(token);
  tokenizer_->setState(state);
  originalMode_ = mode_;
  mode_ = Mode::text;
}

}  // namespace reference::page
