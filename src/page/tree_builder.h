// What a start tag becomes: the tree construction of the HTML Standard (13.2.6) without a tree.
//
// Tokens go in; of each start tag comes out whether it made an element, in which namespace, under
// which parent. Kept are the stack of open elements, the list of active formatting elements, the
// insertion modes and the few pointers and flags that decide. Where an element is put (foster
// parenting, appropriate places) decides nothing of that and is left out.
// Cost: amortised constant for each token, but for reopening formatting elements (see
// docs/page-reader.md).
#ifndef PAGESCAN_PAGE_TREE_BUILDER_H
#define PAGESCAN_PAGE_TREE_BUILDER_H

#include <cstdint>
#include <string_view>
#include <vector>

#include "page/doctype.h"
#include "page/element_traits.h"
#include "page/formatting_list.h"
#include "page/insertion_mode.h"
#include "page/open_elements.h"
#include "page/plain_tags.h"
#include "page/raw_text.h"
#include "page/tag_scanner.h"
#include "page/text_units.h"

namespace pagescan::internal {

// The element in whose content a fragment is read (13.4): of a whole page, none.
struct FragmentContext {
  bool isFragment = false;
  Namespace space = Namespace::html;
  NameId name = kUnknownName;
};

enum class QuirksMode : std::uint8_t { none, limited, full };

// A start tag, as the tokenizer emits it.
struct TagToken {
  std::uint32_t begin;
  NameNumber name;
  bool selfClosing;
  const TagAttribute* attributes;
  std::uint32_t attributeCount;
};

// What a start tag became.
struct Verdict {
  enum Kind : std::uint8_t { dropped, element, merged };
  Kind kind = dropped;
  ContentState content = ContentState::data;
  Namespace space = Namespace::html;
  NameNumber name = kUnknownName;
  Namespace parentSpace = Namespace::html;
  NameNumber parentName = kUnknownName;
  std::uint8_t parentNote = 0;
  std::uint32_t slot = kNone;   // where it is open; kNone for one without content
  bool bodyLeaves = false;      // this frameset replaces the body
  std::uint32_t bodyBegin = 0;  // which started there
};

class TreeBuilder {
 public:
  struct Options {
    FragmentContext context;
    bool scripting = true;
    bool quirks = false;        // of a fragment
    bool iframeSrcdoc = false;  // never in quirks mode
    // From how many on formatting elements are reopened as one run. Changes no answer.
    std::uint32_t fewestInRun = 16;
  };

  // page       the bytes that offsets count in; must outlive this
  // nameCount  numbers below it are known names, others those of UnknownNames
  TreeBuilder(std::string_view page, const Options& options, NameNumber nameCount);

  // --- tokens ---
  // A start tag whose row in plain_tags.h holds here: opens its element, if it has content, and
  // returns the row. Null for any other tag, of which nothing is done.
  const PlainTag* startPlain(NameNumber name, std::uint32_t begin);
  // An end tag that closes the current node and does nothing else. False for any other one.
  bool endPlain(NameNumber name);
  const Verdict& startTag(const TagToken& tag);
  void endTag(NameNumber name, std::uint32_t begin);
  void doctype(const Doctype& doctype);
  void comment() { endTextRun(); }
  // Text between two tokens, in one piece or more. begin, end: of the bytes in the page.
  void text(const char* begin, const char* end);
  // The text of a CDATA section, in which "&" is itself.
  void cdata(const char* begin, const char* end);
  void endOfPage();

  // Keeps the handler's note with an open element.
  void setNote(std::uint32_t slot, std::uint8_t note);
  // The same with the element of the last verdict.
  void setNote(std::uint8_t note) {
    const std::uint32_t slot = verdict_.kind == Verdict::merged ? mergedSlot_ : verdict_.slot;
    if (slot != kNone) setNote(slot, note);
  }
  // The note of the html or body element into which the last verdict merged.
  std::uint8_t noteOfMerged() const { return open_.at(mergedSlot_).note; }

  // --- questions ---
  // Whether text, whatever it is, changes nothing at this point.
  bool ignoresText() const {
    return !framesetOk_ && textIsFlow(mode_) && !open_.current().has(kStyleText) &&
           !formatting_.needsReconstruction();
  }
  bool inStyleText() const { return !open_.empty() && open_.current().has(kStyleText); }
  bool readsCdata() const { return !open_.empty() && currentIsForeign(); }
  QuirksMode quirks() const { return quirks_; }
  bool isOpen(Element element) const { return open_.isOpen(element); }
  bool isOpenAround(Element element, std::uint32_t tag) const {
    return open_.isOpenAround(element, tag);
  }
  bool inTemplate() const { return templates_ > shadowTemplates_; }
  bool inShadow() const { return shadowTemplates_ > 0; }
  std::uint32_t currentBegin() const { return open_.current().begin; }
  OpenElements& openElements() { return open_; }

 private:
  using Mode = InsertionMode;
  // Of tables with a row for each known name, the first of which is that of all others.
  static NameNumber rowOf(NameNumber name) { return name < kElementCount ? name : kUnknownName; }
  static bool textIsFlow(Mode mode) {
    return mode >= Mode::inBody && mode <= Mode::inTemplate && mode != Mode::inColumnGroup;
  }
  // Whether a token was done with, or is to be looked at in the mode that is now.
  enum class Step : std::uint8_t { done, again };

  // --- insertion: tree_builder.cpp ---
  bool atContext() const {
    return options_.context.isFragment && open_.top() == OpenElements::kRoot;
  }
  bool currentIsForeign() const {
    return open_.current().space != Namespace::html ||
           (atContext() && options_.context.space != Namespace::html);
  }
  ElementTraits adjustedTraits() const;
  bool takesHtmlRules(const TagToken& tag) const;
  std::uint32_t insert(const TagToken& tag) { return insertNamed(tag, tag.name); }
  std::uint32_t insertNamed(const TagToken& tag, NameNumber name);
  void insertVoid(const TagToken& tag) { reportElement(Namespace::html, tag.name); }
  void insertRaw(const TagToken& tag, ContentState content);
  void insertImplied(Element element);
  void insertForeign(const TagToken& tag, Namespace space);
  std::string_view valueOf(const TagToken& tag, Attribute name) const;
  void reportElement(Namespace space, NameNumber name);
  std::uint32_t pushHtml(NameNumber name, std::uint32_t begin);
  void merge(std::uint32_t slot);
  void pop();
  void popTo(std::uint32_t slot);  // that slot, too
  void popUntil(Element element) { popTo(open_.newest(element)); }
  void generateImpliedEnds(NameNumber except = kUnknownName);
  void generateImpliedEndsThoroughly();
  void reconstruct() {
    if (formatting_.needsReconstruction()) reopen();
  }
  void closeP();
  void closePInButtonScope() {
    if (open_.inButtonScope(Element::p)) closeP();
  }
  void resetMode();
  Mode modeAt(std::uint32_t slot) const;
  void endTextRun();
  Step startByMode(const TagToken& tag);
  Step endByMode(NameNumber name);

  // --- the list of active formatting elements: tree_formatting.cpp ---
  void reopen();
  void reopenStretch(std::uint32_t first, std::uint32_t last);
  void pushFormatting(std::uint32_t node);
  void pushRun(std::uint32_t last);
  void clearToMarker();
  void removeFormatting(std::uint32_t node);
  std::uint32_t slotOf(std::uint32_t node);
  void closeFormatting(std::uint32_t node);
  void spreadRunFrom(std::uint32_t node);
  void spreadRunsAbove(std::uint32_t slot);

  // --- text: tree_text.cpp ---
  void textByMode(TextUnits& units);
  void textBeforeBody(TextUnits& units);
  void flowText(TextUnits& units);
  void tableText(TextUnits& units);

  // --- before, in and after the head, framesets, after the body: tree_head.cpp ---
  Step startInitial();
  Step startBeforeHtml(const TagToken& tag);
  Step startBeforeHead(const TagToken& tag);
  Step startInHead(const TagToken& tag);
  Step startInHeadNoscript(const TagToken& tag);
  Step startAfterHead(const TagToken& tag);
  Step startAfterBody(const TagToken& tag);
  Step startInFrameset(const TagToken& tag);
  Step startAfterFrameset(const TagToken& tag);
  Step endBeforeHtml(NameNumber name);
  Step endBeforeHead(NameNumber name);
  Step endInHead(NameNumber name);
  Step endInHeadNoscript(NameNumber name);
  Step endAfterHead(NameNumber name);
  Step endAfterBody(NameNumber name);
  Step endInFrameset(NameNumber name);
  void popHead();
  bool startHeadContent(const TagToken& tag);
  void startTemplate(const TagToken& tag);
  void endTemplate();
  bool makesShadowRoot(const TagToken& tag);

  // --- in the body: tree_body.cpp, tree_body_end.cpp ---
  Step startInBody(const TagToken& tag);
  Step startRareInBody(const TagToken& tag, StartRule rule);
  void startStructure(const TagToken& tag, StartRule rule);
  void startBlock(const TagToken& tag, StartRule rule);
  void startControl(const TagToken& tag, StartRule rule);
  void startRawText(const TagToken& tag, StartRule rule);
  void startMarker(const TagToken& tag);
  void startRuby(const TagToken& tag, NameNumber keptOpen);
  void startListItem(const TagToken& tag);
  void startFormatting(const TagToken& tag);
  void startA(const TagToken& tag);
  void startNobr(const TagToken& tag);
  void startForm(const TagToken& tag);
  void startInput(const TagToken& tag);
  void startSelect(const TagToken& tag);
  void startOption(const TagToken& tag);
  void startBody();
  void startFrameset(const TagToken& tag);
  bool hasBody() const;
  bool contextIsSelect() const;
  bool isHiddenInput(const TagToken& tag) const;
  Step endInBody(NameNumber name);
  void endBlock(NameNumber name);
  void endListItem(NameNumber name);
  void endForm();
  void endP();
  void endHeading();
  void endOther(NameNumber name);
  bool adopt(NameNumber name);
  bool adoptOnce(NameNumber name);
  std::uint32_t furthestBlock(std::uint32_t slot) const;
  void liftFormatting(std::uint32_t node, std::uint32_t block);

  // --- tables and templates: tree_table.cpp ---
  Step startInTable(const TagToken& tag);
  Step startTablePart(const TagToken& tag, Mode mode);
  Step implyTablePart(Element part, Mode mode);
  void startFormInTable(const TagToken& tag);
  Step startInCaption(const TagToken& tag);
  Step startInColumnGroup(const TagToken& tag);
  Step startInTableBody(const TagToken& tag);
  Step startInRow(const TagToken& tag);
  Step startInCell(const TagToken& tag);
  Step startInTemplate(const TagToken& tag);
  Step endInTable(NameNumber name);
  Step endInCaption(NameNumber name);
  Step endInColumnGroup(NameNumber name);
  Step endInTableBody(NameNumber name);
  Step endInRow(NameNumber name);
  Step endInCell(NameNumber name);
  bool closeCaption();
  bool closeColumnGroup();
  bool closeTableBody();
  bool closeRow();
  void closeCell();
  void clearTo(std::initializer_list<Element> elements);
  bool isTablePart() const;

  // --- foreign content: tree_foreign.cpp ---
  Step startForeign(const TagToken& tag);
  Step endForeign(NameNumber name);
  void leaveForeign();

  std::string_view page_;
  Options options_;
  NameNumber nameCount_;
  OpenElements open_;
  FormattingList formatting_;
  std::vector<Mode> templateModes_;
  Verdict verdict_;
  std::uint32_t tokenBegin_ = 0;
  std::uint32_t mergedSlot_ = 0;
  std::uint32_t templates_ = 0;        // open template elements
  std::uint32_t shadowTemplates_ = 0;  // those of them that made shadow roots
  Mode mode_ = Mode::initial;
  QuirksMode quirks_ = QuirksMode::none;
  bool framesetOk_ = true;
  bool hasHead_ = false;
  std::uint8_t headNote_ = 0;
  bool skipsNewline_ = false;
  bool inTableText_ = false;
  bool tableTextShows_ = false;  // it holds more than white space
};

// --- what nearly every tag goes through ---

inline const PlainTag* TreeBuilder::startPlain(NameNumber name, std::uint32_t begin) {
  const PlainTag& row = kPlainTags.of(name);
  if (!row.modes.contains(mode_) || open_.current().has(row.notUnder)) return nullptr;
  const bool hasP = open_.isOpen(Element::p);
  const bool hasToReopen = formatting_.needsReconstruction();
  if ((row.endsP & hasP) | (row.reopens & hasToReopen)) return nullptr;
  if (row.isFormatting && formatting_.holds(name)) return nullptr;
  skipsNewline_ = false;
  framesetOk_ = framesetOk_ && row.leavesFramesetOk;
  if (!row.hasContent) return &row;
  const std::uint32_t slot = open_.push(Namespace::html, name, begin, row.traits);
  if (row.isFormatting) formatting_.append(formatting_.make(name, begin), slot);
  return &row;
}

inline bool TreeBuilder::endPlain(NameNumber name) {
  if (!kBodyModes.contains(mode_)) return false;
  const OpenElement& current = open_.current();
  if (current.name != name || !current.has(kPlainEnd)) return false;
  if (current.formatting != kNone) {
    if (current.formatting != formatting_.last()) return false;
    formatting_.removeLast();
  }
  skipsNewline_ = false;
  open_.popPlain();
  return true;
}

}  // namespace pagescan::internal

#endif
