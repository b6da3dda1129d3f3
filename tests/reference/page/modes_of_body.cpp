// Start tags and characters in the "in body" insertion mode: 13.2.6.4.7.
#include "reference/page/tree_builder.h"

namespace reference::page {

void TreeBuilder::inBody(Token& token) {
  switch (token.kind) {
    case Token::Kind::character:
      inBodyCharacter(token);
      return;
    case Token::Kind::comment:
    case Token::Kind::instruction:
      insertComment(token);
      return;
    case Token::Kind::doctype:
      return;
    case Token::Kind::endOfFile:
      if (!templateModes_.empty()) inTemplate(token);
      return;
    case Token::Kind::endTag:
      inBodyEndTag(token);
      return;
    case Token::Kind::startTag:
      break;
  }
  const bool done = startTagOfDocument(token) || startTagOfBlock(token) ||
                    startTagOfListOrForm(token) || startTagOfFormatting(token) ||
                    startTagOfVoidElement(token) || startTagOfRawText(token) ||
                    startTagOfSelectContent(token) || startTagOfRubyOrForeign(token);
  if (done) return;
  reconstructFormatting();
  insertElement(token);
}

void TreeBuilder::inBodyCharacter(Token& token) {
  if (token.character.code == 0) return;
  reconstructFormatting();
  insertCharacter(token.character);
  if (!isWhitespace(token.character.code)) framesetOk_ = false;
}

// html, body, frameset, and what belongs to the head.
bool TreeBuilder::startTagOfDocument(Token& token) {
  const std::string& name = token.name;
  if (name == "html") {
    if (!hasTemplateOpen()) mergeAttributes(*open_.front(), token);
    return true;
  }
  if (isOneOf(name, {"base", "basefont", "bgsound", "link", "meta", "noframes", "script", "style",
                     "template", "title"})) {
    inHead(token);
    return true;
  }
  if (name == "body") {
    if (open_.size() == 1 || !open_[1]->isHtml("body") || hasTemplateOpen()) return true;
    framesetOk_ = false;
    mergeAttributes(*open_[1], token);
    return true;
  }
  if (name == "frameset") {
    if (open_.size() == 1 || !open_[1]->isHtml("body") || !framesetOk_) return true;
    detach(*open_[1]);
    open_.resize(1);
    insertElement(token);
    mode_ = Mode::inFrameset;
    return true;
  }
  return isOneOf(name, {"caption", "col", "colgroup", "frame", "head", "tbody", "td", "tfoot", "th",
                        "thead", "tr"});
}

bool TreeBuilder::startTagOfBlock(Token& token) {
  const std::string& name = token.name;
  const auto closeOpenP = [&] {
    if (hasInScope("p", Scope::button)) closeP();
  };
  if (isOneOf(name,
              {"address", "article", "aside",   "blockquote", "center",     "details", "dialog",
               "dir",     "div",     "dl",      "fieldset",   "figcaption", "figure",  "footer",
               "header",  "hgroup",  "main",    "menu",       "nav",        "ol",      "p",
               "search",  "section", "summary", "ul"})) {
    closeOpenP();
    insertElement(token);
  } else if (isOneOf(name, {"h1", "h2", "h3", "h4", "h5", "h6"})) {
    closeOpenP();
    if (currentNode()->isHtmlOneOf({"h1", "h2", "h3", "h4", "h5", "h6"})) pop();
    insertElement(token);
  } else if (isOneOf(name, {"pre", "listing"})) {
    closeOpenP();
    insertElement(token);
    ignoresNextLineFeed_ = true;
    framesetOk_ = false;
  } else if (name == "plaintext") {
    closeOpenP();
    insertElement(token);
    tokenizer_->setState(State::plaintext);
  } else if (name == "table") {
    if (tree_.quirks != Quirks::yes) closeOpenP();
    insertElement(token);
    framesetOk_ = false;
    mode_ = Mode::inTable;
  } else {
    return false;
  }
  return true;
}

bool TreeBuilder::startTagOfListOrForm(Token& token) {
  const std::string& name = token.name;
  if (name == "form") {
    if (form_ != nullptr && !hasTemplateOpen()) return true;
    if (hasInScope("p", Scope::button)) closeP();
    Node* const element = insertElement(token);
    if (!hasTemplateOpen()) form_ = element;
  } else if (isOneOf(name, {"li", "dd", "dt"})) {
    startItem(token);
  } else if (name == "button") {
    if (hasInScope("button")) {
      generateImpliedEndTags();
      popUntil("button");
    }
    reconstructFormatting();
    insertElement(token);
    framesetOk_ = false;
  } else {
    return false;
  }
  return true;
}

// li ends an open li; dd and dt end an open one of both.
void TreeBuilder::startItem(Token& token) {
  framesetOk_ = false;
  for (std::size_t i = open_.size(); i-- > 0;) {
    const Node& node = *open_[i];
    const bool isItem = token.name == "li" ? node.isHtml("li") : node.isHtmlOneOf({"dd", "dt"});
    if (isItem) {
      const std::string name = node.name;
      generateImpliedEndTags(name);
      popUntil(name);
      break;
    }
    if (isSpecial(node) && !node.isHtmlOneOf({"address", "div", "p"})) break;
  }
  if (hasInScope("p", Scope::button)) closeP();
  insertElement(token);
}

bool TreeBuilder::startTagOfFormatting(Token& token) {
  const std::string& name = token.name;
  if (name == "a") {
    if (Node* const earlier = formattingAfterMarker("a")) {
      adopt("a");
      removeFromFormatting(earlier);
      removeFromStack(earlier);
    }
    reconstructFormatting();
    pushFormatting(insertElement(token));
  } else if (isOneOf(name, {"b", "big", "code", "em", "font", "i", "s", "small", "strike", "strong",
                            "tt", "u"})) {
    reconstructFormatting();
    pushFormatting(insertElement(token));
  } else if (name == "nobr") {
    reconstructFormatting();
    if (hasInScope("nobr")) {
      adopt("nobr");
      reconstructFormatting();
    }
    pushFormatting(insertElement(token));
  } else if (isOneOf(name, {"applet", "marquee", "object"})) {
    reconstructFormatting();
    insertElement(token);
    formatting_.push_back(nullptr);
    framesetOk_ = false;
  } else {
    return false;
  }
  return true;
}

bool TreeBuilder::startTagOfVoidElement(Token& token) {
  std::string& name = token.name;
  if (name == "image") name = "img";
  if (isOneOf(name, {"area", "br", "embed", "img", "keygen", "wbr"})) {
    reconstructFormatting();
    insertAndPop(token);
    framesetOk_ = false;
  } else if (name == "input") {
    if (context_ && context_->isHtml("select")) return true;
    if (hasInScope("select")) popUntil("select");
    reconstructFormatting();
    insertAndPop(token);
    const Attribute* type = nullptr;
    for (const Attribute& attribute : token.attributes) {
      if (attribute.name == "type") type = &attribute;
    }
    if (!type || !equalsIgnoringCase(toUtf8(type->value), "hidden")) framesetOk_ = false;
  } else if (isOneOf(name, {"param", "source", "track"})) {
    insertAndPop(token);
  } else if (name == "hr") {
    if (hasInScope("p", Scope::button)) closeP();
    if (hasInScope("select")) generateImpliedEndTags();
    insertAndPop(token);
    framesetOk_ = false;
  } else {
    return false;
  }
  return true;
}

bool TreeBuilder::startTagOfRawText(Token& token) {
  const std::string& name = token.name;
  if (name == "textarea") {
    genericText(token, State::rcdata);
    ignoresNextLineFeed_ = true;
    framesetOk_ = false;
  } else if (name == "xmp") {
    if (hasInScope("p", Scope::button)) closeP();
    reconstructFormatting();
    framesetOk_ = false;
    genericText(token, State::rawtext);
  } else if (name == "iframe") {
    framesetOk_ = false;
    genericText(token, State::rawtext);
  } else if (name == "noembed" || (name == "noscript" && options_.scripting)) {
    genericText(token, State::rawtext);
  } else {
    return false;
  }
  return true;
}

// select has no insertion mode of its own: its content is parsed like the body's.
bool TreeBuilder::startTagOfSelectContent(Token& token) {
  const std::string& name = token.name;
  if (name == "select") {
    if (context_ && context_->isHtml("select")) return true;
    if (hasInScope("select")) {
      popUntil("select");
      return true;
    }
    reconstructFormatting();
    insertElement(token);
    framesetOk_ = false;
    return true;
  }
  if (!isOneOf(name, {"option", "optgroup"})) return false;
  if (hasInScope("select")) {
    generateImpliedEndTags(name == "option" ? "optgroup" : "");
  } else if (currentNode()->isHtml("option")) {
    pop();
  }
  reconstructFormatting();
  insertElement(token);
  return true;
}

bool TreeBuilder::startTagOfRubyOrForeign(Token& token) {
  const std::string& name = token.name;
  if (isOneOf(name, {"rb", "rtc"})) {
    if (hasInScope("ruby")) generateImpliedEndTags();
    insertElement(token);
  } else if (isOneOf(name, {"rp", "rt"})) {
    if (hasInScope("ruby")) generateImpliedEndTags("rtc");
    insertElement(token);
  } else if (isOneOf(name, {"math", "svg"})) {
    reconstructFormatting();
    insertElement(token, name == "svg" ? Namespace::svg : Namespace::mathml);
    if (token.selfClosing) pop();
  } else {
    return false;
  }
  return true;
}

}  // namespace reference::page
