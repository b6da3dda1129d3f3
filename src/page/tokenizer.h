// The tokenizer of the HTML Standard (13.2.5) over bytes, for a sink that is known when compiled.
//
//   page:   text <a href="x"> text <!-- c --> text <style> ... </style>
//   sink:   text startTag      text comment   text startTag rawText
//
// The sink has
//   ContentState startTag(const TagBytes&, Attributes&)   how the tokenizer goes on
//   void endTag(const TagBytes&)
//   void text(begin, end)        text in data; "&" not yet read; may come in several pieces
//   void cdata(begin, end)       text of a CDATA section
//   void rawText(begin, end)     all the text of the element that the last start tag began
//   void comment()               also for what counts as one
//   void doctype(const Doctype&)
//   const char* endCurrent(name, end)   the end tag whose name begins here, if nothing but the name
//                                is in it and the sink knows it at once: the place after its ">";
//                                null leaves it to endTag. A sink may do without this member
//   bool ignoresText()           whether text() may be left out now
//   bool readsCdata()            whether "<![CDATA[" starts a section
//   Encoding encodingFor(begin, end)   of bytes whose meaning is about to be asked for
// What the end of the page cuts off (a tag, a comment) is no token. Cost linear in the page.
#ifndef PAGESCAN_PAGE_TOKENIZER_H
#define PAGESCAN_PAGE_TOKENIZER_H

#include <cstring>
#include <string_view>

#include "page/doctype.h"
#include "page/marked_bytes.h"
#include "page/raw_text.h"
#include "page/tag_scanner.h"

namespace pagescan::internal {

// A tag: places in the page.
struct TagBytes {
  const char* begin;  // its "<"
  const char* name;
  NameKey key;
  const char* end;  // after its ">"
  bool selfClosing;

  std::string_view nameBytes() const { return {name, key.length}; }
};

template <class Sink, class Attributes>
class Tokenizer {
 public:
  // text  the bytes to read; attributes  of each tag in turn; both must outlive this
  Tokenizer(std::string_view text, Sink& sink, Attributes& attributes)
      : at_(text.data()),
        end_(text.data() + text.size()),
        bytes_(text),
        sink_(sink),
        attributes_(attributes) {}

  // Reads all. `state` is how it begins; `endName` then ends rcdata, rawtext and script.
  void run(ContentState state = ContentState::data, std::string_view endName = {}) {
    if (state != ContentState::data) readRawText(state, endName);
    while (at_ != end_) readData();
  }

 private:
  // Text up to the next token, and that token.
  void readData() {
    const char* textBegin = at_;
    for (const char* from = at_;;) {
      const char* open = bytes_.opening(from);
      if (end_ - open < 2) return endText(textBegin);
      const char next = open[1];
      if (kLetters.contains(next)) {
        emitText(textBegin, open);
        return readStartTag(open);
      }
      if (next == '/') {
        if (end_ - open == 2) return endText(textBegin);
        emitText(textBegin, open);
        if (endCurrent(open + 2)) return;
        return readEndTag(open);
      }
      if (next == '!' || next == '?') {
        emitText(textBegin, open);
        return readMarkup(open);
      }
      from = open + 1;
    }
  }

  void emitText(const char* begin, const char* end) {
    if (begin != end && !sink_.ignoresText()) sink_.text(begin, end);
  }

  // The rest of the page is text.
  void endText(const char* begin) {
    emitText(begin, end_);
    at_ = end_;
  }

  void readStartTag(const char* open) {
    const ScannedName name = bytes_.tagName(open + 1);
    attributes_.clear();
    const TagEnd tagEnd = scanAttributes(
        name.end, bytes_,
        [this](const char* own, const NameKey& key, const char* value, const char* valueEnd) {
          attributes_.add(own, key, value, valueEnd);
        });
    if (tagEnd.end == nullptr) {
      at_ = end_;
      return;
    }
    at_ = tagEnd.end;
    const TagBytes tag = {open, open + 1, name.key, tagEnd.end, tagEnd.selfClosing};
    const ContentState state = sink_.startTag(tag, attributes_);
    if (state != ContentState::data) readRawText(state, tag.nameBytes());
  }

  // Whether the sink knew the end tag at once. Most of them are such.
  bool endCurrent(const char* name) {
    if constexpr (requires { sink_.endCurrent(name, end_); }) {
      const char* const next = sink_.endCurrent(name, end_);
      if (next == nullptr) return false;
      at_ = next;
      return true;
    }
    return false;
  }

  void readEndTag(const char* open) {
    if (open[2] == '>') {
      at_ = open + 3;
      return;
    }
    if (!kLetters.contains(open[2])) return readBogusComment(open + 2);
    const ScannedName name = bytes_.tagName(open + 2);
    const TagEnd tagEnd = skipAttributes(name.end, end_);
    if (tagEnd.end == nullptr) {
      at_ = end_;
      return;
    }
    at_ = tagEnd.end;
    sink_.endTag({open, open + 2, name.key, tagEnd.end, tagEnd.selfClosing});
  }

  // After "<!" or "<?".
  void readMarkup(const char* open) {
    const std::string_view left(open, static_cast<std::size_t>(end_ - open));
    if (left.starts_with("<!--")) {
      at_ = commentEnd(open + 4, end_);
      sink_.comment();
    } else if (startsDoctype(left)) {
      at_ = open + std::string_view("<!doctype").size();
      sink_.doctype(readDoctype(at_, end_));
    } else if (left.starts_with("<![CDATA[") && sink_.readsCdata()) {
      readCdata(open + std::string_view("<![CDATA[").size());
    } else {
      readBogusComment(open + 2);
    }
  }

  void readBogusComment(const char* from) {
    const auto* close =
        static_cast<const char*>(std::memchr(from, '>', static_cast<std::size_t>(end_ - from)));
    at_ = close == nullptr ? end_ : close + 1;
    sink_.comment();
  }

  void readCdata(const char* begin) {
    // Up to the first such bytes nothing but the encoding decides; for most, not even that.
    const char* const first = cdataEnd(begin, end_, Encoding::utf8);
    const char* const end = cdataEnd(begin, end_, sink_.encodingFor(begin, first));
    if (begin != end) sink_.cdata(begin, end);
    at_ = end == end_ ? end_ : end + 3;
  }

  // The text of an element whose content is not markup, and its end tag.
  void readRawText(ContentState state, std::string_view endName) {
    const char* const begin = at_;
    const char* const end = state == ContentState::plaintext ? end_
                            : state == ContentState::script  ? scriptEnd(begin, end_, endName)
                                                             : rawTextEnd(begin, end_, endName);
    sink_.rawText(begin, end);
    at_ = end;
    if (end == end_) return;
    const TagEnd tagEnd = skipAttributes(end + 2 + endName.size(), end_);
    at_ = tagEnd.end == nullptr ? end_ : tagEnd.end;
  }

  const char* at_;
  const char* end_;
  MarkedBytes bytes_;
  Sink& sink_;
  Attributes& attributes_;
};

}  // namespace pagescan::internal

#endif
