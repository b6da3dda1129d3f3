// End tags in the "in body" insertion mode: 13.2.6.4.7.
#include "reference/page/tree_builder.h"

namespace reference::page {

void TreeBuilder::inBodyEndTag(Token& token) {
  const std::string& name = token.name;
  const auto isOne = [&](Names names) { return isOneOf(name, names); };
  if (name == "template") {
    endTemplate();
  } else if (isOne({"body", "html"})) {
    if (!hasInScope("body")) return;
    mode_ = Mode::afterBody;
    if (name == "html") useRulesOf(mode_, token);
  } else if (isOne({"address",    "article", "aside",   "blockquote", "button", "center",
                    "details",    "dialog",  "dir",     "div",        "dl",     "fieldset",
                    "figcaption", "figure",  "footer",  "header",     "hgroup", "listing",
                    "main",       "menu",    "nav",     "ol",         "pre",    "search",
                    "section",    "select",  "summary", "ul"})) {
    if (!hasInScope(name)) return;
    generateImpliedEndTags();
    popUntil(name);
  } else if (name == "form") {
    endTagForm();
  } else if (name == "p") {
    if (!hasInScope("p", Scope::button)) insertNamed("p");
    closeP();
  } else if (isOne({"li", "dd", "dt"})) {
    if (!hasInScope(name, name == "li" ? Scope::listItem : Scope::standard)) return;
    generateImpliedEndTags(name);
    popUntil(name);
  } else if (isOne({"h1", "h2", "h3", "h4", "h5", "h6"})) {
    if (!hasOneInScope({"h1", "h2", "h3", "h4", "h5", "h6"}, Scope::standard)) return;
    generateImpliedEndTags();
    popUntilOneOf({"h1", "h2", "h3", "h4", "h5", "h6"});
  } else if (isOne({"a", "b", "big", "code", "em", "font", "i", "nobr", "s", "small", "strike",
                    "strong", "tt", "u"})) {
    adopt(name);
  } else if (isOne({"applet", "marquee", "object"})) {
    if (!hasInScope(name)) return;
    generateImpliedEndTags();
    popUntil(name);
    clearFormattingToMarker();
  } else if (name == "br") {
    // As a start tag without attributes that does not stand in the page.
    reconstructFormatting();
    insertNamed("br");
    pop();
    framesetOk_ = false;
  } else {
    anyOtherEndTag(name);
  }
}

void TreeBuilder::endTagForm() {
  if (hasTemplateOpen()) {
    if (!hasInScope("form")) return;
    generateImpliedEndTags();
    popUntil("form");
    return;
  }
  const Node* const node = form_;
  form_ = nullptr;
  if (node == nullptr) return;
  if (!isInScope([&](const Node& open) { return &open == node; }, Scope::standard)) return;
  generateImpliedEndTags();
  removeFromStack(node);
}

void TreeBuilder::anyOtherEndTag(std::string_view name) {
  for (std::size_t i = open_.size(); i-- > 0;) {
    const Node* const node = open_[i];
    if (node->isHtml(name)) {
      generateImpliedEndTags(name);
      while (currentNode() != node) pop();
      pop();
      return;
    }
    if (isSpecial(*node)) return;
  }
}

}  // namespace reference::page
