// Start tags in the body (HTML Standard, 13.2.6.4.7).
#include "page/body_rules.h"
#include "page/tree_builder.h"

namespace pagescan::internal {

// The rules that most tags fall under; the others are startRareInBody's.
TreeBuilder::Step TreeBuilder::startInBody(const TagToken& tag) {
  const StartRule rule = tag.name < kElementCount ? kStartRules[tag.name] : StartRule::ordinary;
  switch (rule) {
    case StartRule::ordinary:
      reconstruct();
      insert(tag);
      return Step::done;
    case StartRule::formatting:
      startFormatting(tag);
      return Step::done;
    case StartRule::block:
      closePInButtonScope();
      insert(tag);
      return Step::done;
    case StartRule::listItem:
      startListItem(tag);
      return Step::done;
    case StartRule::void_:
      reconstruct();
      insertVoid(tag);
      framesetOk_ = false;
      return Step::done;
    case StartRule::a:
      startA(tag);
      return Step::done;
    case StartRule::head:
      startHeadContent(tag);
      return Step::done;
    case StartRule::svg:
    case StartRule::math:
      reconstruct();
      insertForeign(tag, rule == StartRule::svg ? Namespace::svg : Namespace::mathml);
      return Step::done;
    case StartRule::dropped:
      return Step::done;
    default:
      return startRareInBody(tag, rule);
  }
}

// The root, the body, a frameset in its stead.
void TreeBuilder::startStructure(const TagToken& tag, StartRule rule) {
  switch (rule) {
    case StartRule::html:
      // The html element above a fragment is no part of it.
      if (!options_.context.isFragment && !open_.isOpen(Element::template_))
        merge(OpenElements::kRoot);
      break;
    case StartRule::body:
      startBody();
      break;
    default:
      startFrameset(tag);
      break;
  }
}

// What closes an open p element first.
void TreeBuilder::startBlock(const TagToken& tag, StartRule rule) {
  if (rule != StartRule::table || quirks_ != QuirksMode::full) closePInButtonScope();
  if (rule == StartRule::heading && open_.current().has(kHeading)) pop();
  insert(tag);
  if (rule == StartRule::heading) return;
  framesetOk_ = false;
  if (rule == StartRule::pre) skipsNewline_ = true;
  if (rule == StartRule::table) mode_ = Mode::inTable;
}

TreeBuilder::Step TreeBuilder::startRareInBody(const TagToken& tag, StartRule rule) {
  switch (rule) {
    case StartRule::html:
    case StartRule::body:
    case StartRule::frameset:
      startStructure(tag, rule);
      break;
    case StartRule::heading:
    case StartRule::pre:
    case StartRule::table:
      startBlock(tag, rule);
      break;
    case StartRule::nobr:
      startNobr(tag);
      break;
    case StartRule::marker:
      startMarker(tag);
      break;
    case StartRule::voidPlain:
      insertVoid(tag);
      break;
    case StartRule::image:
      reconstruct();
      reportElement(Namespace::html, id(Element::img));
      framesetOk_ = false;
      break;
    case StartRule::rubyBase:
      startRuby(tag, kUnknownName);
      break;
    case StartRule::rubyText:
      startRuby(tag, id(Element::rtc));
      break;
    default:
      startControl(tag, rule);
      break;
  }
  return Step::done;
}

// Forms and what stands in them.
void TreeBuilder::startControl(const TagToken& tag, StartRule rule) {
  switch (rule) {
    case StartRule::form:
      startForm(tag);
      break;
    case StartRule::button:
      if (open_.inScope(Element::button)) {
        generateImpliedEnds();
        popUntil(Element::button);
      }
      reconstruct();
      insert(tag);
      framesetOk_ = false;
      break;
    case StartRule::input:
      startInput(tag);
      break;
    case StartRule::select:
      startSelect(tag);
      break;
    case StartRule::option:
      startOption(tag);
      break;
    case StartRule::hr:
      closePInButtonScope();
      if (open_.inScope(Element::select)) generateImpliedEnds();
      insertVoid(tag);
      framesetOk_ = false;
      break;
    default:
      startRawText(tag, rule);
      break;
  }
}

// Elements whose content is text of another kind.
void TreeBuilder::startRawText(const TagToken& tag, StartRule rule) {
  switch (rule) {
    case StartRule::textarea:
      insertRaw(tag, ContentState::rcdata);
      framesetOk_ = false;
      break;
    case StartRule::xmp:
      closePInButtonScope();
      reconstruct();
      insertRaw(tag, ContentState::rawtext);
      framesetOk_ = false;
      break;
    case StartRule::iframe:
      insertRaw(tag, ContentState::rawtext);
      framesetOk_ = false;
      break;
    case StartRule::noembed:
      insertRaw(tag, ContentState::rawtext);
      break;
    case StartRule::noscript:
      if (options_.scripting) {
        insertRaw(tag, ContentState::rawtext);
      } else {
        reconstruct();
        insert(tag);
      }
      break;
    case StartRule::plaintext:
      closePInButtonScope();
      insert(tag);
      verdict_.content = ContentState::plaintext;
      break;
    default:
      break;
  }
}

// applet, marquee and object, which keep formatting to themselves.
void TreeBuilder::startMarker(const TagToken& tag) {
  reconstruct();
  insert(tag);
  formatting_.pushMarker();
  framesetOk_ = false;
}

void TreeBuilder::startRuby(const TagToken& tag, NameNumber keptOpen) {
  if (open_.inScope(Element::ruby)) generateImpliedEnds(keptOpen);
  insert(tag);
}

void TreeBuilder::startListItem(const TagToken& tag) {
  framesetOk_ = false;
  const std::uint32_t limit = open_.nearestItemLimit();
  const OpenElement& entry = open_.at(limit);
  const bool isOwn = tag.name == id(Element::li) ? entry.is(Element::li)
                                                 : entry.is(Element::dd) || entry.is(Element::dt);
  if (isOwn) {
    generateImpliedEnds(entry.name);
    popTo(limit);
  }
  closePInButtonScope();
  insert(tag);
}

void TreeBuilder::startFormatting(const TagToken& tag) {
  reconstruct();
  const std::uint32_t node = formatting_.make(tag.name, tag.begin);
  const std::uint32_t excess = formatting_.excessOfKind(node);
  if (excess != kNone) removeFormatting(excess);
  formatting_.append(node, insert(tag));
}

void TreeBuilder::startA(const TagToken& tag) {
  if (const std::uint32_t node = formatting_.lastNamed(tag.name); node != kNone) {
    // Where it could not be adopted, it may still be there.
    if (!adopt(tag.name) && formatting_.lastNamed(tag.name) == node) {
      if (formatting_.runOf(node) != nullptr) spreadRunFrom(node);
      const std::uint32_t slot = formatting_.at(node).slot;
      formatting_.remove(node);
      if (slot != kNone) open_.remove(slot);
    }
  }
  startFormatting(tag);
}

void TreeBuilder::startNobr(const TagToken& tag) {
  reconstruct();
  if (open_.inScope(Element::nobr)) {
    adopt(tag.name);
    reconstruct();
  }
  startFormatting(tag);
}

void TreeBuilder::startForm(const TagToken& tag) {
  const bool inTemplate = open_.isOpen(Element::template_);
  if (open_.form != kNone && !inTemplate) return;
  closePInButtonScope();
  const std::uint32_t slot = insert(tag);
  if (!inTemplate) open_.form = slot;
}

bool TreeBuilder::contextIsSelect() const {
  return options_.context.isFragment && options_.context.space == Namespace::html &&
         options_.context.name == id(Element::select);
}

void TreeBuilder::startInput(const TagToken& tag) {
  if (contextIsSelect()) return;
  if (open_.inScope(Element::select)) popUntil(Element::select);
  reconstruct();
  insertVoid(tag);
  if (!isHiddenInput(tag)) framesetOk_ = false;
}

void TreeBuilder::startSelect(const TagToken& tag) {
  if (contextIsSelect()) return;
  if (open_.inScope(Element::select)) return popUntil(Element::select);
  reconstruct();
  insert(tag);
  framesetOk_ = false;
}

void TreeBuilder::startOption(const TagToken& tag) {
  if (open_.inScope(Element::select)) {
    generateImpliedEnds(tag.name == id(Element::option) ? id(Element::optgroup) : kUnknownName);
  } else if (open_.current().is(Element::option)) {
    pop();
  }
  reconstruct();
  insert(tag);
}

// The body is the second element, if there is one.
bool TreeBuilder::hasBody() const {
  const std::uint32_t second = open_.above(OpenElements::kRoot);
  return second != kNone && open_.at(second).is(Element::body);
}

void TreeBuilder::startBody() {
  if (!hasBody() || open_.isOpen(Element::template_)) return;
  framesetOk_ = false;
  merge(open_.above(OpenElements::kRoot));
}

void TreeBuilder::startFrameset(const TagToken& tag) {
  if (!hasBody() || !framesetOk_) return;
  const std::uint32_t body = open_.above(OpenElements::kRoot);
  const std::uint32_t bodyBegin = open_.at(body).begin;
  popTo(body);
  insert(tag);
  verdict_.bodyLeaves = true;
  verdict_.bodyBegin = bodyBegin;
  mode_ = Mode::inFrameset;
}

}  // namespace pagescan::internal
