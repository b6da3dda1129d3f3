// The reading of one page: documents, their places, and the texts in them.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_INVENTORY_READER_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_INVENTORY_READER_H

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "reference/page/elements.h"
#include "reference/page/inventory.h"
#include "reference/page/lists.h"
#include "reference/page/places.h"
#include "reference/page/style_references.h"
#include "reference/page/text.h"
#include "reference/page/tree_builder.h"

namespace reference::page {

// What URLs of a document resolve against.
struct Document {
  std::string url;  // its own; of a srcdoc: the base in force at its iframe
  bool isSrcdoc = false;
  std::string encoding;  // of queries
  bool hasBase = false;
  std::uint32_t baseTag = 0;
  std::string baseUrl;

  // The base in force at a tag: a base element counts from its own tag on.
  const std::string& baseAt(std::uint32_t tag) const {
    return hasBase && tag >= baseTag ? baseUrl : url;
  }
  const std::string& base() const { return hasBase ? baseUrl : url; }
};

// A page, a srcdoc document or the content of a noscript element.
struct Part {
  const Document* document = nullptr;
  bool isFragment = false;
  bool scripting = true;
  Quirks quirks = Quirks::no;
  std::set<std::string> flags;
  std::optional<std::uint32_t> parent;
  int depth = 0;
};

class Reader {
 public:
  explicit Reader(const InventoryOptions& options) : options_(options) {
    rows_ = parsePlaces(options.places);
    for (const PlaceRow& row : builtInPlaces()) rows_.push_back(row);
    std::erase_if(rows_, [&](const PlaceRow& row) {
      return row.profile != "standard" && options.profiles.count(row.profile) == 0;
    });
  }

  // Chooses the document's base, then reads it.
  void readDocument(const Text& text, Document& document, const Part& part);
  void readSheet(const Text& text, const Document& document);

  std::vector<Found> take() {
    std::stable_sort(found_.begin(), found_.end(), [](const Found& a, const Found& b) {
      return std::pair(a.begin, a.end) < std::pair(b.begin, b.end);
    });
    return std::move(found_);
  }

 private:
  void chooseBase(const std::vector<Located>& elements, Document& document);
  void readElements(const std::vector<Located>& elements, const Part& part);
  void readElement(const Located& at, const Part& part);
  void readAttribute(const Attribute& attribute, const Located& at, const Part& part);
  void readText(const Located& at, const Part& part);
  void readBase(const Attribute& attribute, Found found, const Located& at, const Part& part);
  void readStyle(const Text& text, StyleForm form, Found found, const Part& part);
  void readJson(const Node& script, Found found, const Part& part);
  void readLinkedData(const JsonValue& value, bool isIdentifier, const Found& found,
                      const Part& part);
  void readImportMap(const JsonValue& map, const Found& found, const Part& part);
  void readSpeculationRules(const JsonValue& value, bool underUrls, const Found& found,
                            const Part& part);
  void addJson(const JsonString& string, std::string kind, Found found, const Part& part);
  void readSrcdoc(const Attribute& attribute, const Located& at, const Part& part);
  void readNoscript(const Located& at, const Part& part);

  const PlaceRow* rowFor(const Node& element, std::string_view attribute) const;
  Part partInside(const Located& at, const Part& part, const char* flag) const;
  void add(Found found, const Text& value, const Part& part);
  std::optional<std::string> resolved(const std::string& url, const std::string& base,
                                      const std::string& encoding) const {
    return options_.resolve ? options_.resolve(url, base, encoding) : std::nullopt;
  }

  const InventoryOptions& options_;
  std::vector<PlaceRow> rows_;
  std::vector<Found> found_;
};

}  // namespace reference::page

#endif
