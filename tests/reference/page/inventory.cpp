#include "reference/page/inventory.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "reference/page/decoding.h"
#include "reference/page/lists.h"
#include "reference/page/places.h"
#include "reference/page/rules.h"
#include "reference/page/style_references.h"
#include "reference/page/text.h"
#include "reference/page/tree_builder.h"

namespace reference::page {

namespace {

bool isBlank(const Text& value) {
  return std::all_of(value.begin(), value.end(),
                     [](const Char& c) { return isWhitespace(c.code); });
}

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

struct Located {
  const Node* node = nullptr;
  bool inTemplate = false;
  bool inShadow = false;
};

// All elements of a tree, in order; each start tag once.
std::vector<Located> elementsOf(const Tree& tree) {
  std::vector<Located> elements;
  std::set<std::uint32_t> seen;
  std::vector<Located> open = {{tree.document, false, false}};
  while (!open.empty()) {
    const Located at = open.back();
    open.pop_back();
    const Node& node = *at.node;
    const bool isElement = node.kind == Node::Kind::element;
    if (isElement && (!node.fromTag || seen.insert(node.tag).second)) elements.push_back(at);
    for (auto child = node.children.rbegin(); child != node.children.rend(); ++child) {
      open.push_back({*child, at.inTemplate, at.inShadow});
    }
    if (node.content) open.push_back({node.content, true, at.inShadow});
    if (node.shadowRoot) open.push_back({node.shadowRoot, at.inTemplate, true});
  }
  return elements;
}

Text textOf(const Node& element) {
  Text text;
  for (const Node* const child : element.children) {
    if (child->kind == Node::Kind::text) {
      text.insert(text.end(), child->text.begin(), child->text.end());
    }
  }
  return text;
}

std::string elementName(const Node& node) {
  const std::string prefix = node.space == Namespace::svg      ? "svg:"
                             : node.space == Namespace::mathml ? "math:"
                                                               : "";
  return prefix + node.name;
}

class Reader {
 public:
  explicit Reader(const InventoryOptions& options) : options_(options) {
    rows_ = parsePlaces(options.places);
    for (const PlaceRow& row : builtInPlaces()) rows_.push_back(row);
    std::erase_if(rows_, [&](const PlaceRow& row) {
      return row.profile != "standard" && options.profiles.count(row.profile) == 0;
    });
  }

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

// --- Documents ----------------------------------------------------------------------------------

void Reader::readDocument(const Text& text, Document& document, const Part& part) {
  ParseOptions options;
  options.scripting = part.scripting;
  options.isSrcdoc = document.isSrcdoc;
  options.quirks = part.quirks;
  if (part.isFragment) options.contextName = "div";
  const Tree tree = parse(text, options);
  std::vector<Located> elements = elementsOf(tree);
  // The root of a fragment is no element of the page.
  if (part.isFragment) elements.erase(elements.begin());
  if (!part.isFragment) chooseBase(elements, document);
  Part inside = part;
  inside.quirks = tree.quirks;
  readElements(elements, inside);
}

// The first base element with a href that is in the document, by the order of the page.
void Reader::chooseBase(const std::vector<Located>& elements, Document& document) {
  const Node* first = nullptr;
  for (const Located& at : elements) {
    if (at.inTemplate || at.inShadow || !at.node->isHtml("base")) continue;
    if (!at.node->attribute("href")) continue;
    if (first == nullptr || at.node->tag < first->tag) first = at.node;
  }
  if (first == nullptr) return;
  document.hasBase = true;
  document.baseTag = first->tag;
  const auto url = resolved(first->value("href"), document.url, "UTF-8");
  const bool counts = url && !url->starts_with("data:") && !url->starts_with("javascript:");
  document.baseUrl = counts ? *url : document.url;
}

void Reader::readElements(const std::vector<Located>& elements, const Part& part) {
  for (const Located& at : elements) readElement(at, part);
}

void Reader::readElement(const Located& at, const Part& part) {
  for (const Attribute& attribute : at.node->attributes) readAttribute(attribute, at, part);
  readText(at, part);
  if (at.node->isHtml("noscript") && part.scripting) readNoscript(at, part);
}

const PlaceRow* Reader::rowFor(const Node& element, std::string_view attribute) const {
  for (const PlaceRow& row : rows_) {
    if (isRowFor(row, element, attribute)) return &row;
  }
  return nullptr;
}

Part Reader::partInside(const Located& at, const Part& part, const char* flag) const {
  Part inside = part;
  inside.flags.insert(flag);
  if (at.inTemplate) inside.flags.insert("template");
  inside.parent = at.node->tag;
  inside.depth = part.depth + 1;
  return inside;
}

void Reader::readSrcdoc(const Attribute& attribute, const Located& at, const Part& part) {
  Part inside = partInside(at, part, "nested");
  if (inside.depth > kMaxNesting) return;
  if (const Attribute* const sandbox = at.node->attribute("sandbox")) {
    const std::vector<std::string> words = splitOnWhitespace(toAsciiLower(toUtf8(sandbox->value)));
    if (std::find(words.begin(), words.end(), "allow-scripts") == words.end()) {
      inside.scripting = false;
    }
  }
  Document document;
  document.url = part.document->baseAt(at.node->tag);
  document.isSrcdoc = true;
  document.encoding = "UTF-8";
  inside.document = &document;
  inside.isFragment = false;
  inside.quirks = Quirks::no;
  readDocument(attribute.value, document, inside);
}

void Reader::readNoscript(const Located& at, const Part& part) {
  Part inside = partInside(at, part, "noscript");
  if (inside.depth > kMaxNesting) return;
  inside.isFragment = true;
  inside.scripting = false;
  Document document = *part.document;
  inside.document = &document;
  readDocument(textOf(*at.node), document, inside);
}

// --- Places -------------------------------------------------------------------------------------

void Reader::readAttribute(const Attribute& attribute, const Located& at, const Part& part) {
  const Node& element = *at.node;
  const PlaceRow* const row = rowFor(element, attribute.name);
  if (row == nullptr) return;
  Found found;
  found.begin = attribute.valueBegin;
  found.end = attribute.valueEnd;
  found.tag = attribute.tag;
  found.parent = part.parent;
  found.element = elementName(element);
  found.attribute = attribute.name;
  found.flags = part.flags;
  found.slot = row->slot;
  if (at.inTemplate) found.flags.insert("template");
  if (row->slot == "html") {
    readSrcdoc(attribute, at, part);
    return;
  }
  if (row->slot == "css_value" || row->slot == "css_declarations") {
    const bool isValue = row->slot == "css_value";
    readStyle(attribute.value, isValue ? StyleForm::value : StyleForm::declarations, found, part);
    return;
  }
  if (row->rule == "base") {
    readBase(attribute, found, at, part);
    return;
  }
  const Verdict verdict =
      judge(*row, element, attribute.name, toUtf8(attribute.value), part.scripting);
  found.kind = verdict.kind;
  found.flags.insert(verdict.flags.begin(), verdict.flags.end());
  if (row->slot == "url") {
    add(found, attribute.value, part);
    return;
  }
  std::vector<Text> urls;
  if (row->slot == "srcset") urls = srcsetUrls(attribute.value);
  if (row->slot == "url_list") urls = wordsOf(attribute.value);
  if (row->slot == "comma_list") urls = commaItemsOf(attribute.value);
  if (row->slot == "refresh") {
    const auto url = refreshUrl(attribute.value);
    if (url && !url->empty()) urls.push_back(*url);
  }
  for (const Text& url : urls) {
    found.begin = url.front().begin;
    found.end = url.back().end;
    add(found, url, part);
  }
}

void Reader::readBase(const Attribute& attribute, Found found, const Located& at,
                      const Part& part) {
  const Document& document = *part.document;
  const bool isTheBase = !part.isFragment && !at.inTemplate && !at.inShadow && document.hasBase &&
                         document.baseTag == at.node->tag;
  found.kind = isTheBase ? "base" : "dead";
  if (!isTheBase && isBlank(attribute.value)) return;
  found.value = toUtf8(attribute.value);
  found.url = resolved(found.value, document.url, "UTF-8");
  found_.push_back(found);
}

// One URL of an attribute, but for CSS and base.
void Reader::add(Found found, const Text& value, const Part& part) {
  const Document& document = *part.document;
  const bool isBlankValue = isBlank(value);
  if (isBlankValue && !isOneOf(found.kind, {"navigation", "form"})) return;
  found.value = toUtf8(value);
  if (found.kind == "form" && isBlankValue) {
    if (!document.isSrcdoc) found.url = resolved("", document.url, document.encoding);
  } else {
    const bool byPlace = found.kind == "load" || found.slot == "refresh";
    found.url = resolved(found.value, byPlace ? document.baseAt(found.tag) : document.base(),
                         document.encoding);
  }
  found_.push_back(found);
}

void Reader::readText(const Located& at, const Part& part) {
  const PlaceRow* const row = rowFor(*at.node, "");
  if (row == nullptr) return;
  Found found;
  found.tag = at.node->tag;
  found.parent = part.parent;
  found.element = elementName(*at.node);
  found.flags = part.flags;
  if (at.inTemplate) found.flags.insert("template");
  if (row->slot == "json") {
    readJson(*at.node, found, part);
  } else if (row->slot == "css_sheet") {
    const std::string type = toAsciiLower(at.node->value("type"));
    if (!isOneOf(type, {"", "text/css"})) found.flags.insert("conditional");
    readStyle(textOf(*at.node), StyleForm::sheet, found, part);
  }
}

void Reader::readStyle(const Text& text, StyleForm form, Found found, const Part& part) {
  const std::set<std::string> flags = found.flags;
  for (const StyleReference& reference : styleReferences(text, form)) {
    found.begin = reference.begin;
    found.end = reference.end;
    found.kind = reference.kind;
    found.slot = reference.isString ? "css_string" : "css_url";
    found.flags = flags;
    if (reference.isCandidate) found.flags.insert("candidate");
    if (reference.isConditional) found.flags.insert("conditional");
    found.value = toUtf8(reference.value);
    found.url = resolved(found.value, part.document->baseAt(found.tag), "UTF-8");
    found_.push_back(found);
  }
}

void Reader::readSheet(const Text& text, const Document& document) {
  Part part;
  part.document = &document;
  readStyle(text, StyleForm::sheet, Found(), part);
}

// --- JSON ---------------------------------------------------------------------------------------

void Reader::readJson(const Node& script, Found found, const Part& part) {
  const auto json = parseJson(textOf(script));
  if (!json) return;
  found.slot = "json";
  const std::string type = scriptTypeOf(script);
  if (type == "importmap") {
    readImportMap(*json, found, part);
  } else if (type == "speculationrules") {
    readSpeculationRules(*json, false, found, part);
  } else {
    readLinkedData(*json, false, found, part);
  }
}

void Reader::addJson(const JsonString& string, std::string kind, Found found, const Part& part) {
  if (isBlank(string.value)) return;
  found.begin = string.begin;
  found.end = string.end;
  found.kind = std::move(kind);
  found.value = toUtf8(string.value);
  found.url = resolved(found.value, part.document->base(), "UTF-8");
  found_.push_back(found);
}

void Reader::readLinkedData(const JsonValue& value, bool isIdentifier, const Found& found,
                            const Part& part) {
  if (value.kind == JsonValue::Kind::string) {
    const std::string text = toUtf8(value.string.value);
    if (startsWithIgnoringCase(text, "http://") || startsWithIgnoringCase(text, "https://")) {
      addJson(value.string, isIdentifier ? "identifier" : "metadata", found, part);
    }
  }
  for (std::size_t i = 0; i < value.items.size(); ++i) {
    const bool underKey = value.kind == JsonValue::Kind::object &&
                          isOneOf(toUtf8(value.keys[i].value), {"@context", "@type", "@vocab"});
    readLinkedData(value.items[i], isIdentifier || underKey, found, part);
  }
}

void Reader::readImportMap(const JsonValue& map, const Found& found, const Part& part) {
  const auto addValues = [&](const JsonValue& object) {
    if (object.kind != JsonValue::Kind::object) return;
    for (const JsonValue& item : object.items) {
      if (item.kind == JsonValue::Kind::string) addJson(item.string, "script", found, part);
    }
  };
  if (map.kind != JsonValue::Kind::object) return;
  for (std::size_t i = 0; i < map.items.size(); ++i) {
    const std::string key = toUtf8(map.keys[i].value);
    if (key == "imports") addValues(map.items[i]);
    if (key != "scopes" || map.items[i].kind != JsonValue::Kind::object) continue;
    const JsonValue& scopes = map.items[i];
    for (std::size_t k = 0; k < scopes.items.size(); ++k) {
      addJson(scopes.keys[k], "script", found, part);
      addValues(scopes.items[k]);
    }
  }
}

void Reader::readSpeculationRules(const JsonValue& value, bool underUrls, const Found& found,
                                  const Part& part) {
  for (std::size_t i = 0; i < value.items.size(); ++i) {
    const JsonValue& item = value.items[i];
    const bool isArray = value.kind == JsonValue::Kind::array;
    if (isArray && underUrls && item.kind == JsonValue::Kind::string) {
      addJson(item.string, "script", found, part);
    }
    readSpeculationRules(item, !isArray && toUtf8(value.keys[i].value) == "urls", found, part);
  }
}

}  // namespace

std::vector<Found> inventory(std::string_view bytes, const InventoryOptions& options) {
  Document document;
  document.url = options.url;
  document.encoding = encodingOfPage(bytes, options.charset, options.scripting);
  Part part;
  part.document = &document;
  part.scripting = options.scripting;
  Reader reader(options);
  reader.readDocument(decode(bytes, document.encoding), document, part);
  return reader.take();
}

std::vector<Found> sheetInventory(std::string_view bytes, const InventoryOptions& options) {
  Document document;
  document.url = options.url;
  Reader reader(options);
  reader.readSheet(decode(bytes, encodingOfSheet(bytes, options.charset)), document);
  return reader.take();
}

}  // namespace reference::page
