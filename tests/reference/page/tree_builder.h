// The HTML Standard's tree construction (13.2.6), insertion mode by insertion mode.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_TREE_BUILDER_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_TREE_BUILDER_H

#include <functional>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "reference/page/text.h"
#include "reference/page/token.h"
#include "reference/page/tokenizer.h"
#include "reference/page/tree.h"

namespace reference::page {

struct ParseOptions {
  bool scripting = true;
  bool isSrcdoc = false;          // an iframe's srcdoc document: never in quirks mode
  bool allowsShadowRoots = true;  // declarative ones
  // Fragment parsing (13.4): the context element; empty name: a whole document.
  Namespace contextSpace = Namespace::html;
  std::string_view contextName;
  Quirks quirks = Quirks::no;  // of the context's document
};

Tree parse(const Text& input, const ParseOptions& options);

class TreeBuilder : public TokenSink {
 public:
  TreeBuilder(Tree& tree, const ParseOptions& options);

  // Sets up stack, mode and tokenizer for the context element.
  void startFragment(Tokenizer& tokenizer);
  void setTokenizer(Tokenizer& tokenizer) { tokenizer_ = &tokenizer; }

  void process(Token& token) override;
  bool allowsCdataSection() const override;

 private:
  enum class Mode {
    initial,
    beforeHtml,
    beforeHead,
    inHead,
    inHeadNoscript,
    afterHead,
    inBody,
    text,
    inTable,
    inTableText,
    inCaption,
    inColumnGroup,
    inTableBody,
    inRow,
    inCell,
    inTemplate,
    afterBody,
    inFrameset,
    afterFrameset,
    afterAfterBody,
    afterAfterFrameset,
  };
  enum class Scope { standard, listItem, button, table };
  using Names = std::initializer_list<std::string_view>;
  struct Place {
    Node* parent = nullptr;
    std::size_t index = 0;
  };

  // --- dispatch
  void dispatch(Token& token);
  bool isForForeignContent(const Token& token) const;
  void useRulesOf(Mode mode, Token& token);
  void reprocessIn(Mode mode, Token& token);

  // --- insertion modes
  void initial(Token& token);
  void beforeHtml(Token& token);
  void beforeHead(Token& token);
  void inHead(Token& token);
  bool inHeadStartTag(Token& token);
  void inHeadNoscript(Token& token);
  void afterHead(Token& token);
  void inBody(Token& token);
  void inBodyCharacter(Token& token);
  bool startTagOfDocument(Token& token);
  bool startTagOfBlock(Token& token);
  bool startTagOfListOrForm(Token& token);
  bool startTagOfFormatting(Token& token);
  bool startTagOfVoidElement(Token& token);
  bool startTagOfRawText(Token& token);
  bool startTagOfSelectContent(Token& token);
  bool startTagOfRubyOrForeign(Token& token);
  void inBodyEndTag(Token& token);
  void endTagForm();
  void anyOtherEndTag(std::string_view name);
  void text(Token& token);
  void inTable(Token& token);
  bool inTableStartTag(Token& token);
  void inTableAnythingElse(Token& token);
  void inTableText(Token& token);
  void inCaption(Token& token);
  void inColumnGroup(Token& token);
  void inTableBody(Token& token);
  void inRow(Token& token);
  void inCell(Token& token);
  void inTemplate(Token& token);
  void afterBody(Token& token);
  void inFrameset(Token& token);
  void afterFrameset(Token& token);
  void afterAfterBody(Token& token);
  void afterAfterFrameset(Token& token);
  void foreignContent(Token& token);
  void foreignStartTag(Token& token);
  void foreignEndTag(Token& token);

  // --- shared steps of the modes
  void startTemplate(Token& token);
  void endTemplate();
  void genericText(Token& token, State state);
  void mergeAttributes(Node& element, const Token& token);
  void closeP();
  void closeCell();
  void clearStackTo(Names names);
  void closeCaption(Token& token, bool reprocess);
  bool leaveRow();
  void closeTableSection(Token& token);
  void startItem(Token& token);
  void resetInsertionMode();

  // --- inserting
  Place appropriatePlace(Node* overrideTarget = nullptr);
  Node* createElement(const Token& token, Namespace space);
  Node* insertElement(const Token& token, Namespace space = Namespace::html);
  Node* insertNamed(std::string_view name);
  void insertAndPop(const Token& token);
  void insertCharacter(const Char& c);
  void insertComment(const Token& token, Node* parent = nullptr);
  void insertAtPlace(Node& node, const Place& place);

  // --- the stack of open elements
  Node* currentNode() const { return open_.back(); }
  const Node* adjustedCurrentNode() const;
  bool isOpen(const Node* node) const;
  bool hasTemplateOpen() const;
  void pop() { open_.pop_back(); }
  void popUntil(std::string_view name);
  void popUntilOneOf(Names names);
  void removeFromStack(const Node* node);
  bool isInScope(const std::function<bool(const Node&)>& wanted, Scope scope) const;
  bool hasInScope(std::string_view name, Scope scope = Scope::standard) const;
  bool hasOneInScope(Names names, Scope scope) const;
  void generateImpliedEndTags(std::string_view except = {});
  void generateAllImpliedEndTags();

  // --- the list of active formatting elements; null is a marker
  void pushFormatting(Node* element);
  void reconstructFormatting();
  void clearFormattingToMarker();
  Node* formattingAfterMarker(std::string_view name) const;
  void removeFromFormatting(const Node* node);
  std::size_t formattingIndex(const Node* node) const;
  Node* cloneOf(const Node& element);
  void adopt(std::string_view name);
  bool adoptOnce(std::string_view name);
  Node* moveUpTo(Node* formattingElement, Node* furthestBlock, std::size_t& bookmark);

  Tree& tree_;
  const ParseOptions options_;
  Tokenizer* tokenizer_ = nullptr;
  Node* context_ = nullptr;
  std::vector<Node*> open_;
  std::vector<Node*> formatting_;
  std::vector<Mode> templateModes_;
  Node* head_ = nullptr;
  Node* form_ = nullptr;
  Mode mode_ = Mode::initial;
  Mode originalMode_ = Mode::initial;
  Text pendingTableText_;
  bool framesetOk_ = true;
  bool fosterParenting_ = false;
  bool ignoresNextLineFeed_ = false;
};

// The "special" category of 13.2.4.2.
bool isSpecial(const Node& node);
bool isMathmlTextIntegrationPoint(const Node& node);
bool isHtmlIntegrationPoint(const Node& node);
void adjustSvgName(std::string& name);
void adjustAttributes(std::vector<Attribute>& attributes, Namespace space);
Quirks quirksOf(const Token& doctype);

}  // namespace reference::page

#endif
