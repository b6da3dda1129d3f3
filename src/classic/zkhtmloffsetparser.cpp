#include "zkhtmloffsetparser.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "base/byte_class.h"
#include "base/search.h"
#include "classic/attribute_names.h"
#include "classic/blanking.h"
#include "classic/standard_output.h"
#include "classic/style_urls.h"
#include "classic/tag_attributes.h"
#include "classic/tags_of_interest.h"
#include "classic/text_view.h"
#include "zkhtmldietattributeobject.h"
#include "zkhtmldiettransactiondata.h"
#include "zkhtmldietvirtualqueue.h"
#include "zkhtmlparseutils.h"

using namespace pagescan::internal;

namespace {

constexpr int kNoOffset = -1;
constexpr std::size_t kSource = attributeIdOfCell("src");

}  // namespace

// --- Making records ---------------------------------------------------------------------------

// A record with room for its first attribute, which most records leave it at: one block of memory
// less for each.
class CHTMLOffsetParser::Record : public CZKHTMLDietTransactionsObject {
 public:
  explicit Record(std::string_view tag) { tagName = stringOf(tag); }
  ~Record() override { deleteAttributesBut(&first_); }

  // Adds an attribute of the tag table; `assignTo(original, resolved)` gives it its two values.
  template <class AssignTo>
  void add(std::size_t id, int offset, const AssignTo& assignTo) {
    if (attributeList.entries() == 0) {
      fill(first_, id, offset, assignTo);
      insertUnder(sharedAttributeName(id), &first_);
    } else {
      auto attribute = std::make_unique<CZKHTMLDietAttributeObject>();
      fill(*attribute, id, offset, assignTo);
      if (insertUnder(sharedAttributeName(id), attribute.get())) attribute.release();
    }
  }

  // The same, with the value resolved.
  void add(std::size_t id, std::string_view value, int offset, urlBase& resolver) {
    add(id, offset, [&](RWCString& original, RWCString& resolved) {
      original = stringOf(value);
      resolver.calcUrl(original, resolved, false, true);
    });
  }

  // Hands the record over to the parser's queue.
  static void queue(std::unique_ptr<Record> record, CHTMLOffsetParser& parser) {
    parser.InsertObjectToQueue(record.get());
    record.release();
  }

 private:
  template <class AssignTo>
  static void fill(CZKHTMLDietAttributeObject& attribute, std::size_t id, int offset,
                   const AssignTo& assignTo) {
    attribute.attributeName = sharedAttributeName(id);
    attribute.attributeOffset = offset;
    assignTo(attribute.originalAttributeValue, attribute.attributeValue);
  }

  CZKHTMLDietAttributeObject first_;
};

namespace {

// Long values that several tags may have in common, because their readings run past their ">": the
// records share the bytes of such a value, as written and resolved. Otherwise a page of n bytes
// could make records of many times n bytes.
class SharedValues {
 public:
  static constexpr std::size_t kShortest = 64;

  void assign(std::string_view value, urlBase& resolver, RWCString& original, RWCString& resolved) {
    Texts& texts = values_[value.data()];
    if (texts.original.length() != value.size()) {
      Texts made{stringOf(value), {}};
      resolver.calcUrl(made.original, made.resolved, false, true);
      texts = made;
    }
    original = texts.original;
    resolved = texts.resolved;
  }

 private:
  struct Texts {
    RWCString original;
    RWCString resolved;
  };
  std::unordered_map<const char*, Texts> values_;  // by where the value stands in the page
};

}  // namespace

// --- The pass over a page ---------------------------------------------------------------------

// Goes through the blanked page on raw bytes. The sink may use the parser meanwhile: the pass goes
// on from where the parser's position was left, and ends when the page is no longer the same.
class CHTMLOffsetParser::HtmlPass {
 public:
  explicit HtmlPass(CHTMLOffsetParser& parser)
      : parser_(parser),
        begin_(parser.html.data()),
        end_(endOf(parser.html)),
        attributes_(begin_, end_) {}

  void run() {
    const char* at = begin_;
    while ((at = findTagOpening(at, end_)) != end_) {
      const char* name = findFirstNotOf(at, end_, kTagNameEnds);
      const char* nameEnd = findFirstOf(name, end_, kTagNameEnds);
      const TagOfInterest* tag =
          findTagOfInterest({name, static_cast<std::size_t>(nameEnd - name)});
      at = tag ? takeTag(*tag, nameEnd) : nameEnd;
    }
  }

  // Reads the tag whose name ends at the parser's position.
  void takeTagAtPosition(const TagOfInterest& tag) { takeTag(tag, begin_ + parser_.position); }

 private:
  // Reads the tag whose name ends at `nameEnd` and moves the parser's position to its ">". Returns
  // where to look for the next one: there, or at the end of the page when there is none.
  const char* takeTag(const TagOfInterest& tag, const char* nameEnd) {
    if (nameEnd == end_ || *nameEnd == '/') return nameEnd;
    const char* tagEnd = findByte(nameEnd, end_, '>');
    if (tagEnd == end_) return end_;
    FoundAttributes found;
    attributes_.read(nameEnd, tagEnd, tag.wanted(), found);
    parser_.position = static_cast<unsigned long>(tagEnd - begin_);
    if (found.hasAny(tag.wanted())) {
      queueRecord(tag, found, tagEnd);
    } else if (tag.name == "FRAME" || tag.name == "IFRAME") {
      queuePlaceholder(tag);
    }
    return nextAt();
  }

  // Another page of the same length may stand in the same place. Its reading is over, be it by an
  // exception, and has left the position at its end.
  const char* nextAt() const {
    const bool isSamePlace = parser_.html.data() == begin_ && endOf(parser_.html) == end_;
    return isSamePlace ? begin_ + parser_.position : end_;
  }

  void queueRecord(const TagOfInterest& tag, const FoundAttributes& found, const char* tagEnd) {
    auto record = std::make_unique<Record>(tag.name);
    AttributeSet added = 0;
    for (const std::uint8_t id : tag) {
      const AttributeSet bit = AttributeSet{1} << id;
      if (!found.has(id) || (added & bit) != 0) continue;
      added |= bit;
      const std::string_view value = found.value(id);
      const bool isShared =
          value.size() >= SharedValues::kShortest && value.data() + value.size() > tagEnd;
      if (isShared) {
        record->add(id, offsetOf(value), [&](RWCString& original, RWCString& resolved) {
          sharedValues_.assign(value, parser_.base, original, resolved);
        });
      } else {
        record->add(id, value, offsetOf(value), parser_.base);
      }
    }
    Record::queue(std::move(record), parser_);
  }

  // Every frame is reported, also one without a usable "src": hosts count frames.
  void queuePlaceholder(const TagOfInterest& tag) {
    auto record = std::make_unique<Record>(tag.name);
    record->add(kSource, {}, kNoOffset, parser_.base);
    Record::queue(std::move(record), parser_);
  }

  int offsetOf(std::string_view value) const {
    return value.data() ? static_cast<int>(value.data() - begin_) : kNoOffset;
  }

  CHTMLOffsetParser& parser_;
  const char* begin_;
  const char* end_;
  TagAttributeReader attributes_;
  SharedValues sharedValues_;
};

// --- The parser -------------------------------------------------------------------------------

CHTMLOffsetParser::CHTMLOffsetParser(const char* pageUrl)
    : position(0), beingShown(0), dietQueue(nullptr) {
  base.setBase(RWCString(pageUrl));
}

CHTMLOffsetParser::~CHTMLOffsetParser() {
  records.clearAndDestroy();
}

// Counts a record as being shown for as long as it lives.
class CHTMLOffsetParser::Showing {
 public:
  explicit Showing(CHTMLOffsetParser& parser) : parser_(parser) { ++parser_.beingShown; }
  Showing(const Showing&) = delete;
  Showing& operator=(const Showing&) = delete;
  ~Showing() { --parser_.beingShown; }

 private:
  CHTMLOffsetParser& parser_;
};

void CHTMLOffsetParser::SetDietVirtualQueue(CZKHtmlDietVirtualQueue* queue) {
  dietQueue = queue;
}

CZKHtmlDietVirtualQueue* CHTMLOffsetParser::GetDietVirtualQueue() {
  return dietQueue;
}

// Leaves the position at the end of the text, however its reading ends.
class CHTMLOffsetParser::Reading {
 public:
  explicit Reading(CHTMLOffsetParser& parser) : parser_(parser) { parser_.position = 0; }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;
  ~Reading() { parser_.position = parser_.html.length(); }

 private:
  CHTMLOffsetParser& parser_;
};

void CHTMLOffsetParser::ParseHTML(const char* page, unsigned long) {
  const Reading reading(*this);
  html = page;
  blankScriptsAndComments(html);
  HtmlPass(*this).run();
}

void CHTMLOffsetParser::ParseCSS(const RWCString& css) {
  position = 0;
  html = RWCString();
  const RWCString text = css;  // the sink may change the host's
  StyleUrlScanner scanner(viewOf(text));
  for (StyleUrl url; scanner.next(url);) {
    auto record = std::make_unique<Record>("IMG");
    record->add(kSource, url.text, static_cast<int>(url.offset), base);
    Record::queue(std::move(record), *this);
  }
}

// A sink may have the parser queue more records while it is shown one, each of which is shown as
// well. Whatever it is shown can be kept: there is room for every record that is being shown.
void CHTMLOffsetParser::InsertObjectToQueue(CZKHTMLDietTransactionsObject* record) {
  if (!record) return;
  const Showing showing(*this);
  records.makeRoom(static_cast<std::size_t>(beingShown));
  if (dietQueue) dietQueue->insert(record);
  records.insert(record);
}

void CHTMLOffsetParser::PrintAll() {
  std::ostream& out = standardOutput();
  const auto count = static_cast<int>(records.entries());
  out << "Queue contains " << std::to_string(count) << " objects" << std::endl;
  for (int i = 0; i < count; ++i) {
    auto& record =
        static_cast<CZKHTMLDietTransactionsObject&>(*records.at(static_cast<std::size_t>(i)));
    const CZKHTMLDietAttributeObject* first = record.GetFirstAttributeObject();
    out << "===== NUMBER: " << std::to_string(i) << "\t ===== TagName: " << viewOf(record.tagName)
        << std::endl;
    out << "=== First Attr Name " << (first ? viewOf(first->attributeName) : std::string_view())
        << std::endl;
    record.PrintAll();
  }
}

// --- The steps of the pass, one by one --------------------------------------------------------

bool CHTMLOffsetParser::isWhiteSpace(char& c) {
  return kTagNameEnds.contains(c);
}

RWCString CHTMLOffsetParser::findTagName() {
  const char* end = endOf(html);
  const char* opening = findByte(html.data() + position, end, '<');
  const char* name = findFirstNotOf(opening, end, kTagNameEnds);
  const char* nameEnd = findFirstOf(name, end, kTagNameEnds);
  position = offsetIn(html, nameEnd);
  return {name, static_cast<std::size_t>(nameEnd - name)};
}

void CHTMLOffsetParser::parseHTMLElement(RWCString elementName) {
  const char* nameEnd = html.data() + position;
  const TagOfInterest* tag = findTagOfInterest(viewOf(elementName));
  const bool isOfInterest = tag && viewOf(elementName) == tag->name;
  if (isOfInterest) {
    HtmlPass(*this).takeTagAtPosition(*tag);
  } else if (*nameEnd != '/') {
    const char* tagEnd = findByte(nameEnd, endOf(html), '>');
    if (tagEnd != endOf(html)) position = offsetIn(html, tagEnd);
  }
}
