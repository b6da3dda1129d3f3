#include "reference/page/beside_library.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "page/element_reader.h"
#include "reference/page/elements.h"
#include "reference/page/tree_builder.h"

namespace reference::page {

namespace {

namespace library = pagescan::internal;

// One fact about the page, and the tag that it belongs to. Facts of both sides are compared as
// sets of lines.
struct Fact {
  std::uint32_t tag;
  bool ofHtml;  // of a tag that was merged into html
  std::string line;
};

std::string spaceName(int space) {
  return space == 0 ? "html" : space == 1 ? "svg" : "math";
}

std::string span(std::uint32_t begin, std::uint32_t end) {
  return "[" + std::to_string(begin) + "," + std::to_string(end) + ")";
}

std::string elementLine(std::uint32_t tag, const std::string& name, bool inTemplate,
                        bool inShadow) {
  return std::to_string(tag) + " <" + name + ">" + (inTemplate ? " in template" : "") +
         (inShadow ? " in shadow" : "");
}

std::string attributeLine(std::uint32_t tag, std::uint32_t nameBegin, std::uint32_t nameEnd,
                          std::uint32_t valueBegin, std::uint32_t valueEnd) {
  return std::to_string(tag) + " attribute " + span(nameBegin, nameEnd) + "=" +
         span(valueBegin, valueEnd);
}

std::string textLine(std::uint32_t tag, std::uint32_t begin, std::uint32_t end) {
  return std::to_string(tag) + " text " + span(begin, end);
}

// --- The twin -----------------------------------------------------------------------------------

// Each byte as the character of that value.
Text textOfBytes(std::string_view bytes) {
  Text text;
  for (std::uint32_t i = 0; i < bytes.size(); ++i) {
    text.push_back({static_cast<unsigned char>(bytes[i]), i, i + 1});
  }
  return text;
}

std::set<std::string> factsOfTwin(std::string_view bytes, const ElementOptions& options) {
  ParseOptions parseOptions;
  parseOptions.scripting = options.scripting;
  parseOptions.isSrcdoc = options.isSrcdoc;
  parseOptions.contextSpace = options.contextSpace;
  parseOptions.contextName = options.contextName;
  const Tree tree = parse(textOfBytes(bytes), parseOptions);
  std::set<std::string> facts;
  for (const Located& at : elementsOf(tree)) {
    const Node& node = *at.node;
    // The root of a fragment is no element of the page.
    if (!options.contextName.empty() && node.parent == tree.document) continue;
    const std::string name =
        spaceName(static_cast<int>(node.space)) + ":" + toAsciiLower(node.name);
    if (node.fromTag) facts.insert(elementLine(node.tag, name, at.inTemplate, at.inShadow));
    for (const Attribute& attribute : node.attributes) {
      facts.insert(attributeLine(attribute.tag, attribute.nameBegin, attribute.nameEnd,
                                 attribute.valueBegin, attribute.valueEnd));
    }
    const bool isRaw =
        node.isHtmlOneOf({"style", "script"}) || (node.isHtml("noscript") && options.scripting);
    const Text text = textOf(node);
    if (isRaw && !text.empty()) {
      facts.insert(textLine(node.tag, text.front().begin, text.back().end));
    }
  }
  return facts;
}

// --- The library --------------------------------------------------------------------------------

class FactCollector {
 public:
  explicit FactCollector(std::string_view bytes) : bytes_(bytes) {}

  static constexpr bool kTakesBareTags = true;
  std::uint8_t startTag(const library::StartTag& tag) {
    const bool ofHtml = tag.merged && tag.is(library::Element::html);
    if (!tag.merged) {
      const std::string name = spaceName(static_cast<int>(tag.space)) + ":" + nameOf(tag);
      add(tag.begin, false, elementLine(tag.begin, name, tag.inTemplate, tag.inShadow));
    }
    for (std::uint32_t i = 0; i < tag.attributeCount; ++i) {
      const library::TagAttribute& a = tag.attributes[i];
      add(tag.begin, ofHtml,
          attributeLine(tag.begin, a.nameBegin, a.nameEnd, a.valueBegin, a.valueEnd));
    }
    return 0;
  }
  void rawText(const library::StartTag& tag, pagescan::Span text) {
    if (text.begin < text.end) add(tag.begin, false, textLine(tag.begin, text.begin, text.end));
  }
  void svgStyleText(std::uint32_t, pagescan::Span, bool) {}
  void svgStyleEnds(std::uint32_t) {}
  void bodyLeaves(std::uint32_t begin) {
    std::erase_if(facts_, [&](const Fact& fact) { return fact.tag >= begin && !fact.ofHtml; });
  }

  std::set<std::string> facts() const {
    std::set<std::string> lines;
    for (const Fact& fact : facts_) lines.insert(fact.line);
    return lines;
  }

 private:
  void add(std::uint32_t tag, bool ofHtml, std::string line) {
    facts_.push_back({tag, ofHtml, std::move(line)});
  }

  std::string nameOf(const library::StartTag& tag) const {
    if (tag.name != library::kUnknownName) return std::string(library::elementName(tag.name));
    std::string name;
    for (const Char& c : textOfBytes(bytes_.substr(tag.nameBegin, tag.nameEnd - tag.nameBegin))) {
      appendUtf8(name, c.code == 0 ? kReplacement : toAsciiLower(c.code));
    }
    return name;
  }

  std::string_view bytes_;
  std::vector<Fact> facts_;
};

library::FragmentContext contextOf(const ElementOptions& options) {
  if (options.contextName.empty()) return {};
  return {true, static_cast<library::Namespace>(options.contextSpace),
          library::findElement(toAsciiLower(options.contextName))};
}

std::set<std::string> factsOfLibrary(std::string_view bytes, const ElementOptions& options) {
  library::ReaderOptions readerOptions;
  readerOptions.scripting = options.scripting;
  readerOptions.iframeSrcdoc = options.isSrcdoc;
  readerOptions.context = contextOf(options);
  FactCollector collector(bytes);
  library::ElementReader<FactCollector, library::AllAttributes> reader(bytes, readerOptions,
                                                                       collector);
  reader.read();
  return collector.facts();
}

std::string onlyIn(const std::set<std::string>& these, const std::set<std::string>& those,
                   const std::string& who) {
  std::vector<std::string> lines;
  std::set_difference(these.begin(), these.end(), those.begin(), those.end(),
                      std::back_inserter(lines));
  std::string text;
  for (std::size_t i = 0; i < std::min<std::size_t>(lines.size(), 5); ++i) {
    text += "only " + who + ": " + lines[i] + "\n";
  }
  return text;
}

}  // namespace

std::string elementDifference(std::string_view bytes, const ElementOptions& options) {
  const std::set<std::string> twin = factsOfTwin(bytes, options);
  const std::set<std::string> fast = factsOfLibrary(bytes, options);
  return twin == fast ? "" : onlyIn(twin, fast, "the twin") + onlyIn(fast, twin, "the library");
}

}  // namespace reference::page
