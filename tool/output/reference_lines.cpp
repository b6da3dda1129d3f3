#include "output/reference_lines.h"

#include <cstddef>
#include <optional>
#include <vector>

#include "output/json.h"
#include "output/table_row.h"
#include "output/utf8_text.h"

namespace pagescan::tool {

namespace {

// The columns of the table; the last one has no width.
constexpr std::size_t kPositionWidth = 10;
constexpr std::size_t kKindWidth = 10;
constexpr std::size_t kPlaceWidth = 20;

constexpr Flag kFlags[] = {kNoscript,    kTemplate,    kCandidate, kLazy,
                           kConditional, kNonstandard, kNested};

std::string row(std::string_view position, std::string_view kind, std::string_view place,
                std::string_view url) {
  TableRow row;
  row.addRight(position, kPositionWidth);
  row.addLeft(kind, kKindWidth);
  row.addLeft(place, kPlaceWidth);
  row.addLeft(url);
  return row.line();
}

// A style sheet of its own has no elements.
std::string elementOf(const Page& page, const Reference& reference) {
  return page.element(reference);
}
std::string elementOf(const StyleSheet&, const Reference&) {
  return "";
}
std::string_view attributeOf(const Page& page, const Reference& reference) {
  return page.attribute(reference);
}
std::string_view attributeOf(const StyleSheet&, const Reference&) {
  return "";
}

// Writes the references of one text; what it needs for a line is used again for the next one.
template <typename Text>
class LineWriter {
 public:
  LineWriter(const Text& text, const std::string& inputName, std::string& lines)
      : text_(text), lines_(lines), json_(lines) {
    json_.beginLine();
    json_.addBytes("file", inputName);
    json_.keepBeginning();
  }

  void writeUrl(const Reference& reference) {
    if (text_.urlInto(reference, url_)) lines_.append(url_).append("\n");
  }

  // Where there is no URL, the value stands in brackets.
  void writeRow(const Reference& reference) {
    const Position position = positionOf(reference);
    const std::string element = elementOf(text_, reference);
    const std::string_view attribute = attributeOf(text_, reference);
    const std::string separator = element.empty() || attribute.empty() ? "" : " ";
    const bool hasUrl = text_.urlInto(reference, url_);
    lines_.append(row(std::to_string(position.line) + ":" + std::to_string(position.column),
                      nameOf(reference.kind),
                      printable(element + separator + std::string(attribute)),
                      hasUrl ? printable(url_) : "(" + printable(text_.value(reference)) + ")"));
  }

  void writeObject(const Reference& reference) {
    const Position position = positionOf(reference);
    json_.beginLine();
    json_.addNumber("start", reference.span.begin);
    json_.addNumber("end", reference.span.end);
    json_.addNumber("line", position.line);
    json_.addNumber("column", position.column);
    json_.addBytes("element", elementOf(text_, reference));
    json_.addBytes("attribute", attributeOf(text_, reference));
    json_.addWord("kind", nameOf(reference.kind));
    json_.addWord("slot", nameOf(reference.slot));
    if (reference.flags != 0) addFlags(reference.flags);
    json_.addBytes("raw", text_.raw(reference));
    text_.valueInto(reference, value_);
    json_.addText("value", value_);
    if (text_.urlInto(reference, url_)) json_.addText("url", url_);
    if (reference.parent != kNoParent) json_.addNumber("parent", reference.parent);
    json_.endLine();
  }

 private:
  // A list of URLs has no use for lines.
  Position positionOf(const Reference& reference) {
    if (!counter_) counter_.emplace(text_);
    return counter_->at(reference.span.begin);
  }

  void addFlags(Flags flags) {
    flags_.clear();
    for (const Flag flag : kFlags) {
      if ((flags & flag) != 0) flags_.push_back(nameOf(flag));
    }
    json_.addWords("flags", flags_);
  }

  const Text& text_;
  std::string& lines_;
  JsonWriter json_;
  std::optional<LineCounter> counter_;
  std::string value_;
  std::string url_;
  std::vector<std::string_view> flags_;
};

template <typename Text>
void appendLines(const ReferenceLines& options, const Text& text, const std::string& inputName,
                 std::string& lines, const std::function<void()>& spill) {
  LineWriter<Text> writer(text, inputName, lines);
  for (const Reference& reference : text.references()) {
    if ((options.kinds >> static_cast<unsigned>(reference.kind) & 1) == 0) continue;
    switch (options.format) {
      case ListFormat::table:
        writer.writeRow(reference);
        break;
      case ListFormat::jsonl:
        writer.writeObject(reference);
        break;
      case ListFormat::urls:
        writer.writeUrl(reference);
        break;
    }
    spill();
  }
}

}  // namespace

void ReferenceLines::append(const Page& page, const std::string& inputName, std::string& lines,
                            const std::function<void()>& spill) const {
  appendLines(*this, page, inputName, lines, spill);
}

void ReferenceLines::append(const StyleSheet& sheet, const std::string& inputName,
                            std::string& lines, const std::function<void()>& spill) const {
  appendLines(*this, sheet, inputName, lines, spill);
}

std::string ReferenceLines::heading() {
  return row("LINE:COL", "KIND", "PLACE", "URL (OR THE VALUE)");
}

}  // namespace pagescan::tool
