// The stack of open elements and resetting the insertion mode: 13.2.4.1, 13.2.4.2, 13.2.6.3.
#include <algorithm>

#include "reference/page/tree_builder.h"

namespace reference::page {

bool isSpecial(const Node& node) {
  return node.isHtmlOneOf(
             {"address",    "applet",   "area",       "article",  "aside",   "base",
              "basefont",   "bgsound",  "blockquote", "body",     "br",      "button",
              "caption",    "center",   "col",        "colgroup", "dd",      "details",
              "dir",        "div",      "dl",         "dt",       "embed",   "fieldset",
              "figcaption", "figure",   "footer",     "form",     "frame",   "frameset",
              "h1",         "h2",       "h3",         "h4",       "h5",      "h6",
              "head",       "header",   "hgroup",     "hr",       "html",    "iframe",
              "img",        "input",    "keygen",     "li",       "link",    "listing",
              "main",       "marquee",  "menu",       "meta",     "nav",     "noembed",
              "noframes",   "noscript", "object",     "ol",       "p",       "param",
              "plaintext",  "pre",      "script",     "search",   "section", "select",
              "source",     "style",    "summary",    "table",    "tbody",   "td",
              "template",   "textarea", "tfoot",      "th",       "thead",   "title",
              "tr",         "track",    "ul",         "wbr",      "xmp"}) ||
         (node.space == Namespace::mathml &&
          isOneOf(node.name, {"mi", "mo", "mn", "ms", "mtext", "annotation-xml"})) ||
         (node.space == Namespace::svg && isOneOf(node.name, {"foreignObject", "desc", "title"}));
}

const Node* TreeBuilder::adjustedCurrentNode() const {
  return context_ && open_.size() == 1 ? context_ : currentNode();
}

bool TreeBuilder::isOpen(const Node* node) const {
  return std::find(open_.begin(), open_.end(), node) != open_.end();
}

bool TreeBuilder::hasTemplateOpen() const {
  return std::any_of(open_.begin(), open_.end(),
                     [](const Node* node) { return node->isHtml("template"); });
}

void TreeBuilder::popUntil(std::string_view name) {
  popUntilOneOf({name});
}

void TreeBuilder::popUntilOneOf(Names names) {
  while (!open_.empty()) {
    const Node* const popped = currentNode();
    pop();
    if (popped->isHtmlOneOf(names)) return;
  }
}

void TreeBuilder::removeFromStack(const Node* node) {
  open_.erase(std::remove(open_.begin(), open_.end(), node), open_.end());
}

// --- Scopes -----------------------------------------------------------------------------------

bool TreeBuilder::isInScope(const std::function<bool(const Node&)>& wanted, Scope scope) const {
  for (auto node = open_.rbegin(); node != open_.rend(); ++node) {
    if (wanted(**node)) return true;
    if (scope == Scope::table) {
      if ((*node)->isHtmlOneOf({"html", "table", "template"})) return false;
      continue;
    }
    if ((*node)->isHtmlOneOf({"applet", "caption", "html", "table", "td", "th", "marquee", "object",
                              "select", "template"})) {
      return false;
    }
    if ((*node)->space == Namespace::mathml &&
        isOneOf((*node)->name, {"mi", "mo", "mn", "ms", "mtext", "annotation-xml"})) {
      return false;
    }
    if ((*node)->space == Namespace::svg &&
        isOneOf((*node)->name, {"foreignObject", "desc", "title"})) {
      return false;
    }
    if (scope == Scope::listItem && (*node)->isHtmlOneOf({"ol", "ul"})) return false;
    if (scope == Scope::button && (*node)->isHtml("button")) return false;
  }
  return false;
}

bool TreeBuilder::hasInScope(std::string_view name, Scope scope) const {
  return hasOneInScope({name}, scope);
}

bool TreeBuilder::hasOneInScope(Names names, Scope scope) const {
  return isInScope([&](const Node& node) { return node.isHtmlOneOf(names); }, scope);
}

// --- Implied end tags: 13.2.6.3 -----------------------------------------------------------------

void TreeBuilder::generateImpliedEndTags(std::string_view except) {
  while (currentNode()->isHtmlOneOf(
             {"dd", "dt", "li", "optgroup", "option", "p", "rb", "rp", "rt", "rtc"}) &&
         currentNode()->name != except) {
    pop();
  }
}

// "Generate all implied end tags thoroughly".
void TreeBuilder::generateAllImpliedEndTags() {
  while (currentNode()->isHtmlOneOf({"caption", "colgroup", "dd", "dt", "li", "optgroup", "option",
                                     "p", "rb", "rp", "rt", "rtc", "tbody", "td", "tfoot", "th",
                                     "thead", "tr"})) {
    pop();
  }
}

void TreeBuilder::closeP() {
  generateImpliedEndTags("p");
  popUntil("p");
}

// "Clear the stack back to a table context" and its like.
void TreeBuilder::clearStackTo(Names names) {
  while (!currentNode()->isHtmlOneOf(names) && !currentNode()->isHtmlOneOf({"template", "html"})) {
    pop();
  }
}

// "Reset the insertion mode appropriately".
void TreeBuilder::resetInsertionMode() {
  for (std::size_t i = open_.size(); i-- > 0;) {
    const bool last = i == 0;
    const Node& node = last && context_ ? *context_ : *open_[i];
    const auto is = [&](std::string_view name) { return node.isHtml(name); };
    if (node.isHtmlOneOf({"td", "th"}) && !last) {
      mode_ = Mode::inCell;
    } else if (is("tr")) {
      mode_ = Mode::inRow;
    } else if (node.isHtmlOneOf({"tbody", "thead", "tfoot"})) {
      mode_ = Mode::inTableBody;
    } else if (is("caption")) {
      mode_ = Mode::inCaption;
    } else if (is("colgroup")) {
      mode_ = Mode::inColumnGroup;
    } else if (is("table")) {
      mode_ = Mode::inTable;
    } else if (is("template")) {
      mode_ = templateModes_.back();
    } else if (is("head") && !last) {
      mode_ = Mode::inHead;
    } else if (is("body")) {
      mode_ = Mode::inBody;
    } else if (is("frameset")) {
      mode_ = Mode::inFrameset;
    } else if (is("html")) {
      mode_ = head_ ? Mode::afterHead : Mode::beforeHead;
    } else if (last) {
      mode_ = Mode::inBody;
    } else {
      continue;
    }
    return;
  }
}

}  // namespace reference::page
