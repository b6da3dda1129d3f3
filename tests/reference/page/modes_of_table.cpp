// The insertion modes of tables: 13.2.6.4.9 to 13.2.6.4.15.
#include <algorithm>

#include "reference/page/tree_builder.h"

namespace reference::page {

namespace {

bool isStart(const Token& token, std::initializer_list<std::string_view> names) {
  return token.kind == Token::Kind::startTag && isOneOf(token.name, names);
}

bool isEnd(const Token& token, std::initializer_list<std::string_view> names) {
  return token.kind == Token::Kind::endTag && isOneOf(token.name, names);
}

}  // namespace

void TreeBuilder::inTable(Token& token) {
  if (token.kind == Token::Kind::character &&
      currentNode()->isHtmlOneOf({"table", "tbody", "template", "tfoot", "thead", "tr"})) {
    pendingTableText_.clear();
    originalMode_ = mode_;
    reprocessIn(Mode::inTableText, token);
  } else if (token.kind == Token::Kind::comment || token.kind == Token::Kind::instruction) {
    insertComment(token);
  } else if (token.kind == Token::Kind::doctype) {
    return;
  } else if (token.kind == Token::Kind::startTag && inTableStartTag(token)) {
    return;
  } else if (isEnd(token, {"table"})) {
    if (!hasInScope("table", Scope::table)) return;
    popUntil("table");
    resetInsertionMode();
  } else if (isEnd(token, {"body", "caption", "col", "colgroup", "html", "tbody", "td", "tfoot",
                           "th", "thead", "tr"})) {
    return;
  } else if (isEnd(token, {"template"})) {
    endTemplate();
  } else if (token.kind == Token::Kind::endOfFile) {
    inBody(token);
  } else {
    inTableAnythingElse(token);
  }
}

bool TreeBuilder::inTableStartTag(Token& token) {
  const std::string& name = token.name;
  if (name == "caption") {
    clearStackTo({"table"});
    formatting_.push_back(nullptr);
    insertElement(token);
    mode_ = Mode::inCaption;
  } else if (name == "colgroup") {
    clearStackTo({"table"});
    insertElement(token);
    mode_ = Mode::inColumnGroup;
  } else if (name == "col") {
    clearStackTo({"table"});
    insertNamed("colgroup");
    reprocessIn(Mode::inColumnGroup, token);
  } else if (isOneOf(name, {"tbody", "tfoot", "thead"})) {
    clearStackTo({"table"});
    insertElement(token);
    mode_ = Mode::inTableBody;
  } else if (isOneOf(name, {"td", "th", "tr"})) {
    clearStackTo({"table"});
    insertNamed("tbody");
    reprocessIn(Mode::inTableBody, token);
  } else if (name == "table") {
    if (!hasInScope("table", Scope::table)) return true;
    popUntil("table");
    resetInsertionMode();
    useRulesOf(mode_, token);
  } else if (isOneOf(name, {"style", "script", "template"})) {
    inHead(token);
  } else if (name == "input") {
    const auto isHidden = [](const Attribute& attribute) {
      return attribute.name == "type" && equalsIgnoringCase(toUtf8(attribute.value), "hidden");
    };
    if (std::none_of(token.attributes.begin(), token.attributes.end(), isHidden)) return false;
    insertAndPop(token);
  } else if (name == "form") {
    if (hasTemplateOpen() || form_ != nullptr) return true;
    form_ = insertElement(token);
    pop();
  } else {
    return false;
  }
  return true;
}

void TreeBuilder::inTableAnythingElse(Token& token) {
  fosterParenting_ = true;
  inBody(token);
  fosterParenting_ = false;
}

void TreeBuilder::inTableText(Token& token) {
  if (token.kind == Token::Kind::character) {
    if (token.character.code != 0) pendingTableText_.push_back(token.character);
    return;
  }
  const bool isBlank = std::all_of(pendingTableText_.begin(), pendingTableText_.end(),
                                   [](const Char& c) { return isWhitespace(c.code); });
  for (const Char& c : pendingTableText_) {
    if (isBlank) {
      insertCharacter(c);
      continue;
    }
    Token character;
    character.kind = Token::Kind::character;
    character.character = c;
    inTableAnythingElse(character);
  }
  reprocessIn(originalMode_, token);
}

// Ends the caption, if there is one in scope; then the token counts again if `reprocess`.
void TreeBuilder::closeCaption(Token& token, bool reprocess) {
  if (!hasInScope("caption", Scope::table)) return;
  generateImpliedEndTags();
  popUntil("caption");
  clearFormattingToMarker();
  mode_ = Mode::inTable;
  if (reprocess) useRulesOf(mode_, token);
}

void TreeBuilder::inCaption(Token& token) {
  if (isEnd(token, {"caption"})) {
    closeCaption(token, false);
  } else if (isStart(token,
                     {"caption", "col", "colgroup", "tbody", "td", "tfoot", "th", "thead", "tr"}) ||
             isEnd(token, {"table"})) {
    closeCaption(token, true);
  } else if (isEnd(token, {"body", "col", "colgroup", "html", "tbody", "td", "tfoot", "th", "thead",
                           "tr"})) {
    return;
  } else {
    inBody(token);
  }
}

void TreeBuilder::inColumnGroup(Token& token) {
  if (token.kind == Token::Kind::character && isWhitespace(token.character.code)) {
    insertCharacter(token.character);
  } else if (token.kind == Token::Kind::comment || token.kind == Token::Kind::instruction) {
    insertComment(token);
  } else if (token.kind == Token::Kind::doctype || isEnd(token, {"col"})) {
    return;
  } else if (isStart(token, {"html"}) || token.kind == Token::Kind::endOfFile) {
    inBody(token);
  } else if (isStart(token, {"col"})) {
    insertAndPop(token);
  } else if (isStart(token, {"template"}) || isEnd(token, {"template"})) {
    inHead(token);
  } else {
    if (!currentNode()->isHtml("colgroup")) return;
    pop();
    mode_ = Mode::inTable;
    if (!isEnd(token, {"colgroup"})) useRulesOf(mode_, token);
  }
}

// Ends the open section, if there is one in scope; the token counts again.
void TreeBuilder::closeTableSection(Token& token) {
  if (!hasOneInScope({"tbody", "thead", "tfoot"}, Scope::table)) return;
  clearStackTo({"tbody", "tfoot", "thead"});
  pop();
  reprocessIn(Mode::inTable, token);
}

void TreeBuilder::inTableBody(Token& token) {
  if (isStart(token, {"tr"})) {
    clearStackTo({"tbody", "tfoot", "thead"});
    insertElement(token);
    mode_ = Mode::inRow;
  } else if (isStart(token, {"th", "td"})) {
    clearStackTo({"tbody", "tfoot", "thead"});
    insertNamed("tr");
    reprocessIn(Mode::inRow, token);
  } else if (isEnd(token, {"tbody", "tfoot", "thead"})) {
    if (!hasInScope(token.name, Scope::table)) return;
    clearStackTo({"tbody", "tfoot", "thead"});
    pop();
    mode_ = Mode::inTable;
  } else if (isStart(token, {"caption", "col", "colgroup", "tbody", "tfoot", "thead"}) ||
             isEnd(token, {"table"})) {
    closeTableSection(token);
  } else if (isEnd(token, {"body", "caption", "col", "colgroup", "html", "td", "th", "tr"})) {
    return;
  } else {
    inTable(token);
  }
}

// Ends the open row. Returns whether there is one in scope.
bool TreeBuilder::leaveRow() {
  if (!hasInScope("tr", Scope::table)) return false;
  clearStackTo({"tr"});
  pop();
  mode_ = Mode::inTableBody;
  return true;
}

void TreeBuilder::inRow(Token& token) {
  if (isStart(token, {"th", "td"})) {
    clearStackTo({"tr"});
    insertElement(token);
    mode_ = Mode::inCell;
    formatting_.push_back(nullptr);
  } else if (isEnd(token, {"tr"})) {
    leaveRow();
  } else if (isStart(token, {"caption", "col", "colgroup", "tbody", "tfoot", "thead", "tr"}) ||
             isEnd(token, {"table"})) {
    if (leaveRow()) useRulesOf(mode_, token);
  } else if (isEnd(token, {"tbody", "tfoot", "thead"})) {
    if (hasInScope(token.name, Scope::table) && leaveRow()) useRulesOf(mode_, token);
  } else if (isEnd(token, {"body", "caption", "col", "colgroup", "html", "td", "th"})) {
    return;
  } else {
    inTable(token);
  }
}

// "Close the cell".
void TreeBuilder::closeCell() {
  generateImpliedEndTags();
  popUntilOneOf({"td", "th"});
  clearFormattingToMarker();
  mode_ = Mode::inRow;
}

void TreeBuilder::inCell(Token& token) {
  if (isEnd(token, {"td", "th"})) {
    if (!hasInScope(token.name, Scope::table)) return;
    generateImpliedEndTags();
    popUntil(token.name);
    clearFormattingToMarker();
    mode_ = Mode::inRow;
  } else if (isStart(token,
                     {"caption", "col", "colgroup", "tbody", "td", "tfoot", "th", "thead", "tr"})) {
    if (!hasOneInScope({"td", "th"}, Scope::table)) return;
    closeCell();
    useRulesOf(mode_, token);
  } else if (isEnd(token, {"body", "caption", "col", "colgroup", "html"})) {
    return;
  } else if (isEnd(token, {"table", "tbody", "tfoot", "thead", "tr"})) {
    if (!hasInScope(token.name, Scope::table)) return;
    closeCell();
    useRulesOf(mode_, token);
  } else {
    inBody(token);
  }
}

}  // namespace reference::page
