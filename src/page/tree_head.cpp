// The insertion modes before, in and after the head, after the body and of framesets
// (HTML Standard, 13.2.6.4.1 to 13.2.6.4.6 and 13.2.6.4.19 to 13.2.6.4.23).
#include "page/tree_builder.h"

namespace pagescan::internal {

namespace {

// The end tags that count before the head; all others are dropped.
constexpr ElementSet kEndsBeforeHead = {Element::head, Element::body, Element::html, Element::br};

}  // namespace

// No DOCTYPE came.
TreeBuilder::Step TreeBuilder::startInitial() {
  if (!options_.iframeSrcdoc) quirks_ = QuirksMode::full;
  mode_ = Mode::beforeHtml;
  return Step::again;
}

TreeBuilder::Step TreeBuilder::startBeforeHtml(const TagToken& tag) {
  mode_ = Mode::beforeHead;
  if (tag.name == id(Element::html)) {
    insert(tag);
    return Step::done;
  }
  insertImplied(Element::html);
  return Step::again;
}

TreeBuilder::Step TreeBuilder::endBeforeHtml(NameNumber name) {
  if (!kEndsBeforeHead.contains(name)) return Step::done;
  insertImplied(Element::html);
  mode_ = Mode::beforeHead;
  return Step::again;
}

TreeBuilder::Step TreeBuilder::startBeforeHead(const TagToken& tag) {
  if (tag.name == id(Element::html)) return startInBody(tag);
  hasHead_ = true;
  mode_ = Mode::inHead;
  if (tag.name == id(Element::head)) {
    insert(tag);
    return Step::done;
  }
  insertImplied(Element::head);
  return Step::again;
}

TreeBuilder::Step TreeBuilder::endBeforeHead(NameNumber name) {
  if (!kEndsBeforeHead.contains(name)) return Step::done;
  insertImplied(Element::head);
  hasHead_ = true;
  mode_ = Mode::inHead;
  return Step::again;
}

void TreeBuilder::popHead() {
  headNote_ = open_.current().note;
  pop();
  mode_ = Mode::afterHead;
}

// The start tags that every mode leaves to "in head". False for any other one.
bool TreeBuilder::startHeadContent(const TagToken& tag) {
  switch (static_cast<Element>(tag.name)) {
    case Element::base:
    case Element::basefont:
    case Element::bgsound:
    case Element::link:
    case Element::meta:
      insertVoid(tag);
      return true;
    case Element::title:
      insertRaw(tag, ContentState::rcdata);
      return true;
    case Element::noframes:
    case Element::style:
      insertRaw(tag, ContentState::rawtext);
      return true;
    case Element::script:
      insertRaw(tag, ContentState::script);
      return true;
    case Element::template_:
      startTemplate(tag);
      return true;
    default:
      return false;
  }
}

TreeBuilder::Step TreeBuilder::startInHead(const TagToken& tag) {
  if (tag.name == id(Element::html)) return startInBody(tag);
  if (tag.name == id(Element::head)) return Step::done;
  if (tag.name == id(Element::noscript)) {
    if (options_.scripting) {
      insertRaw(tag, ContentState::rawtext);
    } else {
      insert(tag);
      mode_ = Mode::inHeadNoscript;
    }
    return Step::done;
  }
  if (startHeadContent(tag)) return Step::done;
  popHead();
  return Step::again;
}

TreeBuilder::Step TreeBuilder::endInHead(NameNumber name) {
  switch (static_cast<Element>(name)) {
    case Element::head:
      popHead();
      return Step::done;
    case Element::body:
    case Element::html:
    case Element::br:
      popHead();
      return Step::again;
    case Element::template_:
      endTemplate();
      return Step::done;
    default:
      return Step::done;
  }
}

TreeBuilder::Step TreeBuilder::startInHeadNoscript(const TagToken& tag) {
  switch (static_cast<Element>(tag.name)) {
    case Element::html:
      return startInBody(tag);
    case Element::basefont:
    case Element::bgsound:
    case Element::link:
    case Element::meta:
    case Element::noframes:
    case Element::style:
      startHeadContent(tag);
      return Step::done;
    case Element::head:
    case Element::noscript:
      return Step::done;
    default:
      break;
  }
  pop();
  mode_ = Mode::inHead;
  return Step::again;
}

TreeBuilder::Step TreeBuilder::endInHeadNoscript(NameNumber name) {
  if (name != id(Element::noscript) && name != id(Element::br)) return Step::done;
  pop();
  mode_ = Mode::inHead;
  return name == id(Element::br) ? Step::again : Step::done;
}

// What belongs into the head still goes there: for the length of one token the head is the current
// node again. Of these elements only a template stays open.
TreeBuilder::Step TreeBuilder::startAfterHead(const TagToken& tag) {
  switch (static_cast<Element>(tag.name)) {
    case Element::html:
      return startInBody(tag);
    case Element::body:
      insert(tag);
      framesetOk_ = false;
      mode_ = Mode::inBody;
      return Step::done;
    case Element::frameset:
      insert(tag);
      mode_ = Mode::inFrameset;
      return Step::done;
    case Element::head:
      return Step::done;
    default:
      break;
  }
  if (startHeadContent(tag)) {
    verdict_.parentName = id(Element::head);
    verdict_.parentNote = headNote_;
    return Step::done;
  }
  insertImplied(Element::body);
  mode_ = Mode::inBody;
  return Step::again;
}

TreeBuilder::Step TreeBuilder::endAfterHead(NameNumber name) {
  switch (static_cast<Element>(name)) {
    case Element::template_:
      endTemplate();
      return Step::done;
    case Element::body:
    case Element::html:
    case Element::br:
      break;
    default:
      return Step::done;
  }
  insertImplied(Element::body);
  mode_ = Mode::inBody;
  return Step::again;
}

void TreeBuilder::startTemplate(const TagToken& tag) {
  const bool isShadowRoot = makesShadowRoot(tag);
  const std::uint32_t host = open_.top();
  const std::uint32_t slot = insert(tag);
  if (isShadowRoot) {
    open_.at(host).traits |= kHasShadowRoot;
    open_.at(slot).traits |= kShadowRoot;
    ++shadowTemplates_;
    verdict_.kind = Verdict::dropped;  // it is open, but the tree has no element for it
  }
  formatting_.pushMarker();
  framesetOk_ = false;
  mode_ = Mode::inTemplate;
  templateModes_.push_back(Mode::inTemplate);
}

// A declarative shadow root needs a host: an HTML element that may have one and has none yet.
bool TreeBuilder::makesShadowRoot(const TagToken& tag) {
  const std::string_view mode = valueOf(tag, Attribute::shadowrootmode);
  if (!valueIs(mode, "open") && !valueIs(mode, "closed")) return false;
  const OpenElement& host = open_.current();
  if (open_.top() == OpenElements::kRoot || host.space != Namespace::html ||
      host.has(kHasShadowRoot))
    return false;
  if (host.has(kShadowHostName)) return true;
  if (host.name < kElementCount && host.name != id(Element::annotationXml)) return false;
  const char* name = page_.data() + host.begin + 1;
  const char* nameEnd = skipTo(name, page_.data() + page_.size(), kTagNameEnd);
  return std::memchr(name, '-', static_cast<std::size_t>(nameEnd - name)) != nullptr;
}

void TreeBuilder::endTemplate() {
  if (!open_.isOpen(Element::template_)) return;
  generateImpliedEndsThoroughly();
  popUntil(Element::template_);
  clearToMarker();
  templateModes_.pop_back();
  resetMode();
}

TreeBuilder::Step TreeBuilder::startAfterBody(const TagToken& tag) {
  if (tag.name == id(Element::html)) return startInBody(tag);
  mode_ = Mode::inBody;
  return Step::again;
}

TreeBuilder::Step TreeBuilder::endAfterBody(NameNumber name) {
  if (mode_ == Mode::afterBody && name == id(Element::html)) {
    if (!options_.context.isFragment) mode_ = Mode::afterAfterBody;
    return Step::done;
  }
  mode_ = Mode::inBody;
  return Step::again;
}

TreeBuilder::Step TreeBuilder::startInFrameset(const TagToken& tag) {
  switch (static_cast<Element>(tag.name)) {
    case Element::html:
      return startInBody(tag);
    case Element::frameset:
      insert(tag);
      break;
    case Element::frame:
      insertVoid(tag);
      break;
    case Element::noframes:
      startHeadContent(tag);
      break;
    default:
      break;
  }
  return Step::done;
}

TreeBuilder::Step TreeBuilder::endInFrameset(NameNumber name) {
  if (name != id(Element::frameset) || open_.top() == OpenElements::kRoot) return Step::done;
  pop();
  if (!options_.context.isFragment && !open_.current().is(Element::frameset)) {
    mode_ = Mode::afterFrameset;
  }
  return Step::done;
}

TreeBuilder::Step TreeBuilder::startAfterFrameset(const TagToken& tag) {
  if (tag.name == id(Element::html)) return startInBody(tag);
  if (tag.name == id(Element::noframes)) startHeadContent(tag);
  return Step::done;
}

}  // namespace pagescan::internal
