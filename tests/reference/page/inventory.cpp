#include "reference/page/inventory.h"

#include <algorithm>
#include <utility>

#include "reference/page/decoding.h"
#include "reference/page/inventory_reader.h"
#include "reference/page/rules.h"

namespace reference::page {

namespace {

bool isBlank(const Text& value) {
  return std::all_of(value.begin(), value.end(),
                     [](const Char& c) { return isWhitespace(c.code); });
}

std::string elementName(const Node& node) {
  const std::string prefix = node.space == Namespace::svg      ? "svg:"
                             : node.space == Namespace::mathml ? "math:"
                                                               : "";
  return prefix + node.name;
}

}  // namespace

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

// One URL of an attribute, except for CSS and base.
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
