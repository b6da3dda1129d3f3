// Reads a page as a browser's parser does and reports what its start tags became.
//
//   bytes -> Tokenizer -> TagToken -> TreeBuilder -> Verdict -> StartTag -> handler
//
// A handler is a class with these members, called in page order:
//   static constexpr bool kTakesBareTags
//       Whether startTag() is to be called for HTML elements without known attributes.
//   std::uint8_t startTag(const StartTag&)
//       A start tag that became an element, or was merged into html or body. What it returns is
//       kept with the element and comes back as `parent.note` of its children (and, for html and
//       body, as `note` of tags that are merged into them).
//   void rawText(const StartTag&, Span text)
//       All the text of an html style or script, and with scripting on of a noscript: once, when
//       it ends.
//   void svgStyleText(std::uint32_t owner, Span text, bool isCdata)
//       A piece of the text of the svg:style whose tag begins at `owner`, which is open. Character
//       references in it count, but for a CDATA section.
//   void svgStyleEnds(std::uint32_t owner)
//   Encoding encodingFor(Span text)
//       Of text whose meaning is about to be asked for. A handler may do without it: UTF-8.
//   void bodyLeaves(std::uint32_t bodyBegin)
//       A frameset takes the place of the body that began at this offset: what was reported from
//       there on, but for what was merged into html, has left the tree. Called before startTag of
//       that frameset.
// All offsets count bytes of the page; spans are half-open. A handler may ask the reader about the
// state from within its calls. Cost: linear in the page. Throws std::bad_alloc alone.
#ifndef PAGESCAN_PAGE_ELEMENT_READER_H
#define PAGESCAN_PAGE_ELEMENT_READER_H

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "page/tokenizer.h"
#include "page/tree_builder.h"
#include "page/unknown_names.h"
#include "pagescan/page.h"

namespace pagescan::internal {

// The current node of the tree when an element is put under it or, in a table, beside it.
struct ParentElement {
  Namespace space;
  NameId name;        // kUnknownName for one that the tables do not know, and above html
  std::uint8_t note;  // what the handler returned for it; 0 for one that the parser made up
};

struct StartTag {
  std::uint32_t begin;  // its "<"
  std::uint32_t end;    // after its ">"
  std::uint32_t nameBegin, nameEnd;
  Namespace space;
  NameId name;        // html `image` is img
  bool merged;        // into html or body, which have it already: `attributes` are those they lack
  bool inTemplate;    // in the content of a template that made no shadow root
  bool inShadow;      // in a declarative shadow root
  std::uint8_t note;  // merged: what the handler returned for the element
  ParentElement parent;
  const TagAttribute* attributes;  // the known ones, the first of duplicates, in page order
  std::uint32_t attributeCount;    // valid during the call

  bool is(Element element) const { return space == Namespace::html && name == id(element); }
  // The attribute of this name, or null.
  const TagAttribute* find(Attribute wanted) const {
    for (std::uint32_t i = 0; i < attributeCount; ++i) {
      if (attributes[i].name == id(wanted)) return &attributes[i];
    }
    return nullptr;
  }
};

struct ReaderOptions {
  bool scripting = true;
  FragmentContext context;                 // none: a whole page
  bool quirks = false;                     // of a fragment: its page's mode
  bool iframeSrcdoc = false;               // the page of a srcdoc: never in quirks mode
  const ExtraNames* elements = nullptr;    // names besides the built-in ones, with numbers from
  const ExtraNames* attributes = nullptr;  // kElementCount and kAttributeCount on; must outlive it
  std::uint32_t fewestInRun = 16;          // changes no answer; tests lower it: see FormattingRun
};

// The content of a div, as noscript text and other fragments are read.
inline constexpr FragmentContext kDivContext = {true, Namespace::html, id(Element::div)};

// Handler     see above
// Attributes  KnownAttributes; tests take AllAttributes, which lists unknown ones, too
template <class Handler, class Attributes = KnownAttributes>
class ElementReader {
 public:
  // page     the bytes that offsets count in: less than 2^32; must outlive the reader
  // handler  must outlive the reader
  ElementReader(std::string_view page, const ReaderOptions& options, Handler& handler)
      : page_(page),
        options_(options),
        handler_(handler),
        attributes_(page, options.attributes),
        nameCount_(kElementCount + (options.elements ? options.elements->size() : 0)),
        unknown_(static_cast<NameNumber>(nameCount_)),
        builder_(page,
                 {options.context, options.scripting, options.quirks, options.iframeSrcdoc,
                  options.fewestInRun},
                 static_cast<NameNumber>(nameCount_)) {}
  ElementReader(const ElementReader&) = delete;
  ElementReader& operator=(const ElementReader&) = delete;

  // Reads the bytes of a span of the page, which the page ends after. Once for each reader.
  void read(Span span) { read(span, ContentState::data); }
  void read() { read(Span{0, static_cast<std::uint32_t>(page_.size())}); }
  // Begins in another state of the tokenizer, in which nothing is an end tag.
  void read(Span span, ContentState state) {
    Tokenizer<ElementReader, Attributes> tokenizer(page_.substr(span.begin, span.end - span.begin),
                                                   *this, attributes_);
    tokenizer.run(state);
    builder_.endOfPage();
    reportClosedStyles();
  }

  // --- questions of a handler ---
  QuirksMode quirks() const { return builder_.quirks(); }
  // Whether an html element of this name is open.
  bool isOpen(Element element) const { return builder_.isOpen(element); }
  // The same, the element of the tag that is being reported not counted.
  bool isOpenAround(Element element) const { return builder_.isOpenAround(element, tag_.begin); }

  // --- the tokenizer's sink ---
  ContentState startTag(const TagBytes& tag, const Attributes& attributes);
  const char* endCurrent(const char* name, const char* end) {
    if (end - name <= 8) return nullptr;
    const NameNumber current = builder_.openElements().current().name;
    if (current >= kElementCount) return nullptr;
    const KnownName& known = kElementHash.known(static_cast<NameId>(current));
    if (!startsWithName(name, known) || name[known.key.length] != '>') return nullptr;
    return builder_.endPlain(current) ? name + known.key.length + 1 : nullptr;
  }
  void endTag(const TagBytes& tag) {
    const NameNumber name = numberOf(tag, false);
    if (builder_.endPlain(name)) return;
    builder_.endTag(name, offset(tag.begin));
    reportClosedStyles();
  }
  void text(const char* begin, const char* end) {
    if (builder_.inStyleText()) {
      handler_.svgStyleText(builder_.currentBegin(), span(begin, end), false);
    }
    builder_.text(begin, end);
  }
  void cdata(const char* begin, const char* end) {
    if (builder_.inStyleText()) {
      handler_.svgStyleText(builder_.currentBegin(), span(begin, end), true);
    }
    builder_.cdata(begin, end);
  }
  void rawText(const char* begin, const char* end) {
    if (wantsRawText_) handler_.rawText(tag_, span(begin, end));
  }
  void comment() { builder_.comment(); }
  void doctype(const Doctype& doctype) { builder_.doctype(doctype); }
  bool ignoresText() const { return builder_.ignoresText(); }
  bool readsCdata() const { return builder_.readsCdata(); }
  Encoding encodingFor(const char* begin, const char* end) {
    if constexpr (requires { handler_.encodingFor(Span{}); }) {
      return handler_.encodingFor(span(begin, end));
    }
    return Encoding::utf8;
  }

 private:
  std::uint32_t offset(const char* at) const {
    return static_cast<std::uint32_t>(at - page_.data());
  }
  Span span(const char* begin, const char* end) const { return {offset(begin), offset(end)}; }

  // The number of a tag's name. That of an unknown one is made for a start tag only.
  NameNumber numberOf(const TagBytes& tag, bool isStart) {
    const NameId known = findElement(tag.name, tag.key);
    return known != kUnknownName ? known : numberOfUnknown(tag.nameBytes(), isStart);
  }
  NameNumber numberOfUnknown(std::string_view name, bool isStart) {
    if (options_.elements != nullptr) {
      if (const NameId extra = options_.elements->find(name); extra != kUnknownName) return extra;
    }
    if (!isStart) return unknown_.find(name);
    const NameNumber number = unknown_.add(name);
    builder_.openElements().reserveNames(number + 1);
    return number;
  }
  NameId nameId(NameNumber number) const {
    return number < nameCount_ ? static_cast<NameId>(number) : kUnknownName;
  }

  ContentState startPlain(const TagBytes& tag, const Attributes& attributes, NameNumber name,
                          const PlainTag& row, std::uint32_t parent);
  ContentState startByVerdict(const TagBytes& tag, const Attributes& attributes, NameNumber name);
  void fillTag(const TagBytes& tag, const Attributes& attributes, Namespace space, NameNumber name);
  void keepNewAttributes(bool isHtml);
  void noteRawText() {
    wantsRawText_ =
        tag_.is(Element::style) || tag_.is(Element::script) || tag_.is(Element::noscript);
  }
  void reportClosedStyles() {
    if (!builder_.openElements().hasClosedStyles()) return;
    for (const std::uint32_t owner : builder_.openElements().takeClosedStyles()) {
      handler_.svgStyleEnds(owner);
    }
  }

  std::string_view page_;
  ReaderOptions options_;
  Handler& handler_;
  Attributes attributes_;
  std::size_t nameCount_;
  UnknownNames unknown_;
  TreeBuilder builder_;
  StartTag tag_{};
  bool wantsRawText_ = false;
  AttributeNames htmlAttributes_, bodyAttributes_;  // those that html and body have
  std::vector<TagAttribute> newAttributes_;
};

template <class Handler, class Attributes>
ContentState ElementReader<Handler, Attributes>::startTag(const TagBytes& tag,
                                                          const Attributes& attributes) {
  const NameNumber name = numberOf(tag, true);
  const std::uint32_t parent = builder_.openElements().top();
  if (const PlainTag* const row = builder_.startPlain(name, offset(tag.begin))) {
    return startPlain(tag, attributes, name, *row, parent);
  }
  return startByVerdict(tag, attributes, name);
}

template <class Handler, class Attributes>
ContentState ElementReader<Handler, Attributes>::startPlain(const TagBytes& tag,
                                                            const Attributes& attributes,
                                                            NameNumber name, const PlainTag& row,
                                                            std::uint32_t parent) {
  const bool isBare = attributes.size() == 0 && row.content == ContentState::data;
  if (isBare && !Handler::kTakesBareTags) return ContentState::data;
  fillTag(tag, attributes, Namespace::html, name);
  tag_.inTemplate = builder_.inTemplate();
  tag_.inShadow = builder_.inShadow();
  tag_.merged = false;
  tag_.note = 0;
  const OpenElement& under = builder_.openElements().at(parent);
  tag_.parent = {under.space, nameId(under.name), under.note};
  const std::uint8_t note = handler_.startTag(tag_);
  if (note != 0 && row.hasContent) builder_.setNote(builder_.openElements().top(), note);
  if (row.content != ContentState::data) noteRawText();
  return row.content;
}

template <class Handler, class Attributes>
ContentState ElementReader<Handler, Attributes>::startByVerdict(const TagBytes& tag,
                                                                const Attributes& attributes,
                                                                NameNumber name) {
  const bool inTemplate = builder_.inTemplate();
  const bool inShadow = builder_.inShadow();
  const Verdict& verdict = builder_.startTag(
      {offset(tag.begin), name, tag.selfClosing, attributes.data(), attributes.size()});
  reportClosedStyles();
  if (verdict.kind == Verdict::dropped) return ContentState::data;
  fillTag(tag, attributes, verdict.space, verdict.name);
  tag_.inTemplate = inTemplate;
  tag_.inShadow = inShadow;
  tag_.merged = verdict.kind == Verdict::merged;
  tag_.note = tag_.merged ? builder_.noteOfMerged() : std::uint8_t{0};
  tag_.parent = {verdict.parentSpace, nameId(verdict.parentName), verdict.parentNote};
  const bool isHtml = verdict.name == id(Element::html);
  if (verdict.space == Namespace::html && (isHtml || verdict.name == id(Element::body))) {
    keepNewAttributes(isHtml);
  }
  if (verdict.bodyLeaves) handler_.bodyLeaves(verdict.bodyBegin);
  const std::uint8_t note = handler_.startTag(tag_);
  if (note != 0 || tag_.merged) builder_.setNote(note);
  const bool isEmpty = verdict.slot == kNone;  // <style/> is never open
  if (isEmpty && tag_.space == Namespace::svg && tag_.name == id(Element::style)) {
    handler_.svgStyleEnds(tag_.begin);
  }
  if (verdict.content != ContentState::data) noteRawText();
  return verdict.content;
}

template <class Handler, class Attributes>
void ElementReader<Handler, Attributes>::fillTag(const TagBytes& tag, const Attributes& attributes,
                                                 Namespace space, NameNumber name) {
  tag_.begin = offset(tag.begin);
  tag_.end = offset(tag.end);
  tag_.nameBegin = offset(tag.name);
  tag_.nameEnd = offset(tag.name + tag.key.length);
  tag_.space = space;
  tag_.name = nameId(name);
  tag_.attributes = attributes.data();
  tag_.attributeCount = attributes.size();
}

// Of the attributes of a html or body tag, leaves those that the element lacks, and notes them.
template <class Handler, class Attributes>
void ElementReader<Handler, Attributes>::keepNewAttributes(bool isHtml) {
  AttributeNames& present = isHtml ? htmlAttributes_ : bodyAttributes_;
  if (!tag_.merged) present.clear();
  newAttributes_.clear();
  for (std::uint32_t i = 0; i < tag_.attributeCount; ++i) {
    const TagAttribute& attribute = tag_.attributes[i];
    if (present.insert(page_, attribute)) newAttributes_.push_back(attribute);
  }
  tag_.attributes = newAttributes_.data();
  tag_.attributeCount = static_cast<std::uint32_t>(newAttributes_.size());
}

}  // namespace pagescan::internal

#endif
