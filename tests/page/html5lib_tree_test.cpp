// The element reader against the html5lib suite of tree construction: the set of elements, with
// their namespaces and attributes, that a page's start tags make.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "page/element_reader.h"
#include "support/suite_cases.h"

namespace pagescan::tests {
namespace {

using namespace pagescan::internal;  // NOLINT(google-build-using-namespace)

// An element as the suite writes it, and its attributes: "svg path", {"d" -> "x"}.
struct SeenElement {
  std::string name;
  std::map<std::string, std::string> attributes;

  auto operator<=>(const SeenElement&) const = default;
};
using SeenElements = std::multiset<SeenElement>;

void PrintTo(const SeenElement& element, std::ostream* out) {
  *out << '<' << element.name;
  for (const auto& [name, value] : element.attributes) *out << ' ' << name << "=[" << value << ']';
  *out << '>';
}

std::string lower(std::string text) {
  for (char& c : text) c = toLower(c);
  return text;
}

// Keeps what was reported.
class ElementRecorder {
 public:
  explicit ElementRecorder(std::string_view page) : page_(page) {}

  static constexpr bool kTakesBareTags = true;
  std::uint8_t startTag(const StartTag& tag) {
    SeenElement element;
    std::string name = tokenizedName(page_.substr(tag.nameBegin, tag.nameEnd - tag.nameBegin));
    if (tag.space == Namespace::html && tag.name == id(Element::img)) name = "img";
    const char* const spaces[] = {"", "svg ", "math "};
    element.name = spaces[static_cast<int>(tag.space)] + name;
    for (std::uint32_t i = 0; i < tag.attributeCount; ++i) {
      const TagAttribute& attribute = tag.attributes[i];
      element.attributes[tokenizedName(view(attribute.nameBegin, attribute.nameEnd))] =
          decodedAttribute(view(attribute.valueBegin, attribute.valueEnd));
    }
    if (tag.merged) {
      for (auto& [begin, other] : seen_) {
        if (other.name == element.name) other.attributes.merge(element.attributes);
      }
      if (!element.attributes.empty()) implied_[element.name].merge(element.attributes);
      return 0;
    }
    seen_.emplace_back(tag.begin, element);
    return 0;
  }
  void rawText(const StartTag&, Span) {}
  void svgStyleText(std::uint32_t, Span, bool) {}
  void svgStyleEnds(std::uint32_t) {}
  void bodyLeaves(std::uint32_t begin) {
    std::erase_if(seen_, [begin](const auto& entry) { return entry.first >= begin; });
    implied_.erase("body");
  }

  // Of elements that the parser makes up without a tag, those that got attributes.
  SeenElements elements() const {
    SeenElements result;
    for (const auto& [begin, element] : seen_) result.insert(element);
    for (const auto& [name, attributes] : implied_) {
      const bool isSeen = std::any_of(seen_.begin(), seen_.end(), [&name = name](const auto& e) {
        return e.second.name == name;
      });
      if (!isSeen) result.insert({name, attributes});
    }
    return result;
  }

 private:
  std::string_view view(std::uint32_t begin, std::uint32_t end) const {
    return page_.substr(begin, end - begin);
  }

  std::string_view page_;
  std::vector<std::pair<std::uint32_t, SeenElement>> seen_;
  std::map<std::string, std::map<std::string, std::string>> implied_;
};

struct TreeCase {
  std::string data;
  std::string fragment;                // its context: "td", "svg path"; empty for a page
  std::optional<bool> scripting;       // both where it does not say
  std::vector<std::string> treeLines;  // without their "| "
};

std::vector<TreeCase> readCases(const std::string& text) {
  std::vector<TreeCase> cases;
  std::istringstream lines(text);
  std::string line;
  std::string section;
  while (std::getline(lines, line)) {
    if (line == "#data" && section != "#data") {
      cases.emplace_back();
      section = line;
    } else if (line.starts_with("#") && !cases.empty() &&
               (line == "#errors" || line == "#new-errors" || line == "#document" ||
                line == "#document-fragment" || line == "#script-on" || line == "#script-off")) {
      section = line;
      if (line == "#script-on") cases.back().scripting = true;
      if (line == "#script-off") cases.back().scripting = false;
    } else if (section == "#data") {
      cases.back().data += line + '\n';
    } else if (section == "#document-fragment") {
      cases.back().fragment = line;
    } else if (section == "#document") {
      cases.back().treeLines.push_back(line);
    }
  }
  for (TreeCase& one : cases) {
    if (!one.data.empty()) one.data.pop_back();
  }
  return cases;
}

// The elements of an expected tree. An attribute stands two columns deeper than its element.
SeenElements expectedElements(const TreeCase& test) {
  std::vector<SeenElement> elements;
  std::size_t depth = 0;
  bool inText = false;
  std::string* value = nullptr;  // of an attribute over several lines
  for (const std::string& line : test.treeLines) {
    if (!line.starts_with("| ")) {
      if (value != nullptr) {
        *value += '\n' + line;
        if (line.ends_with('"')) {
          value->pop_back();
          value = nullptr;
        }
      } else if (inText && line.ends_with('"')) {
        inText = false;
      }
      continue;
    }
    if (inText || value != nullptr) continue;
    const std::size_t indent = line.find_first_not_of(' ', 2);
    if (indent == std::string::npos) continue;
    const std::string item = line.substr(indent);
    if (item.starts_with('"')) {
      inText = item.size() == 1 || !item.ends_with('"');
    } else if (item.starts_with("<!")) {
      continue;
    } else if (item.starts_with('<') && item.ends_with('>')) {
      elements.push_back({lower(item.substr(1, item.size() - 2)), {}});
      depth = indent;
    } else if (const std::size_t equals = item.find("=\"");
               equals != std::string::npos && indent == depth + 2 && !elements.empty()) {
      std::string name = lower(item.substr(0, equals));
      std::replace(name.begin(), name.end(), ' ', ':');
      std::string& own = elements.back().attributes[name];
      own = item.substr(equals + 2);
      if (own.ends_with('"')) {
        own.pop_back();
      } else {
        value = &own;
      }
    }
  }
  return {elements.begin(), elements.end()};
}

FragmentContext contextOf(const std::string& fragment) {
  if (fragment.empty()) return {};
  const std::size_t space = fragment.find(' ');
  const std::string name = space == std::string::npos ? fragment : fragment.substr(space + 1);
  const Namespace own = fragment.starts_with("svg ")    ? Namespace::svg
                        : fragment.starts_with("math ") ? Namespace::mathml
                                                        : Namespace::html;
  return {true, own, findElement(lower(name))};
}

ContentState stateOf(const FragmentContext& context, bool scripting) {
  if (!context.isFragment || context.space != Namespace::html) return ContentState::data;
  switch (static_cast<Element>(context.name)) {
    case Element::title:
    case Element::textarea:
      return ContentState::rcdata;
    case Element::style:
    case Element::xmp:
    case Element::iframe:
    case Element::noembed:
    case Element::noframes:
      return ContentState::rawtext;
    case Element::script:
      return ContentState::script;
    case Element::noscript:
      return scripting ? ContentState::rawtext : ContentState::data;
    case Element::plaintext:
      return ContentState::plaintext;
    default:
      return ContentState::data;
  }
}

SeenElements read(const TreeCase& test, bool scripting) {
  ElementRecorder recorder(test.data);
  ReaderOptions options;
  options.scripting = scripting;
  options.context = contextOf(test.fragment);
  ElementReader<ElementRecorder, AllAttributes> reader(test.data, options, recorder);
  reader.read({0, static_cast<std::uint32_t>(test.data.size())},
              stateOf(options.context, scripting));
  return recorder.elements();
}

// A tag that makes several elements counts once, an element that no tag made does not count: what
// is seen has to be in the tree, and each kind of element in the tree that was seen in the page's
// tags as often as there, or once where the parser repeated it.
void expectSameElements(const SeenElements& seen, const SeenElements& expected,
                        const std::string& where) {
  for (const SeenElement& element : std::set(seen.begin(), seen.end())) {
    EXPECT_GE(expected.count(element), seen.count(element))
        << where << "not in the tree: " << testing::PrintToString(element);
  }
  for (const SeenElement& element : std::set(expected.begin(), expected.end())) {
    static const std::set<std::string> kImplied = {"html", "head",     "body", "tbody",
                                                   "tr",   "colgroup", "p",    "br"};
    if (element.attributes.empty() && kImplied.count(element.name) != 0) continue;
    EXPECT_GE(seen.count(element), 1U) << where << "not seen: " << testing::PrintToString(element);
  }
}

TEST(Html5libTree, FindsTheElementsOfEachTree) {
  const std::filesystem::path folder =
      std::filesystem::path(PAGESCAN_SHARED_DIR) / "suites/html5lib/tree-construction";
  if (!std::filesystem::exists(folder)) {
    GTEST_SKIP() << "the suites are not beside the project";
  }
  std::size_t count = 0;
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    std::size_t number = 0;
    for (const TreeCase& test : readCases(fileBytes(file.path()))) {
      ++count;
      const std::string where = file.path().filename().string() + " case " +
                                std::to_string(++number) + ": " + test.data + '\n';
      const SeenElements expected = expectedElements(test);
      for (const bool scripting : {false, true}) {
        if (test.scripting.value_or(scripting) != scripting) continue;
        expectSameElements(read(test, scripting), expected, where);
      }
    }
  }
  EXPECT_GE(count, 1500U);
}

}  // namespace
}  // namespace pagescan::tests
