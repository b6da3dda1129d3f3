#include "output/records_output.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <vector>

#include "commands/utf8_text.h"

namespace pagescan::tool {

namespace {

// The columns of the table; the last one has no width.
constexpr std::size_t kOffsetWidth = 8;
constexpr std::size_t kTagWidth = 8;
constexpr std::size_t kAttributeWidth = 14;
constexpr std::size_t kOriginalWidth = 40;

// Characters, not bytes; wide ones count as one.
std::size_t shownWidth(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) >> 6) != 2;
  }));
}

std::string padding(std::string_view text, std::size_t width) {
  const std::size_t shown = shownWidth(text);
  return std::string(width > shown ? width - shown : 0, ' ');
}

std::string alignedRow(const std::string& offset, std::string_view tag, std::string_view attribute,
                       std::string_view original, std::string_view resolved) {
  std::string row = padding(offset, kOffsetWidth) + offset;
  const auto addCell = [&row](std::string_view text, std::size_t width) {
    row.append("  ").append(text).append(padding(text, width));
  };
  addCell(tag, kTagWidth);
  addCell(attribute, kAttributeWidth);
  addCell(original, kOriginalWidth);
  addCell(resolved, 0);
  row.erase(row.find_last_not_of(' ') + 1);
  return row + "\n";
}

// Whether the text is its own JSON string, but for the quotes around it. Most values of a page are,
// and are then spared the way through the JSON library.
bool needsNoEscapes(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char byte) {
    return byte >= ' ' && byte <= '~' && byte != '"' && byte != '\\';
  });
}

std::string jsonString(std::string_view text) {
  if (needsNoEscapes(text)) return "\"" + std::string(text) + "\"";
  return nlohmann::json(text).dump();
}

// A JSON object that can hold any bytes: members whose bytes are not UTF-8 are written with one
// code point a byte, and listed.
class JsonRecord {
 public:
  void add(const char* member, std::string_view bytes) {
    if (isWellFormedUtf8(bytes)) {
      addJson(member, jsonString(bytes));
    } else {
      addJson(member, jsonString(bytesAsCodePoints(bytes)));
      notUtf8_.push_back(member);
    }
  }

  void add(const char* member, int number) { addJson(member, std::to_string(number)); }

  std::string line() {
    if (!notUtf8_.empty()) addJson("bytes", nlohmann::json(notUtf8_).dump());
    return line_ + "}\n";
  }

 private:
  void addJson(const char* member, const std::string& json) {
    line_.append(line_.empty() ? "{\"" : ",\"").append(member).append("\":").append(json);
  }

  std::string line_;
  std::vector<const char*> notUtf8_;
};

}  // namespace

void addRecordsOptions(CLI::App& command, RecordsOptions& options) {
  command
      .add_option("--base", options.base,
                  "The URL that the text came from, against which\n"
                  "values are resolved. Without it a relative value\n"
                  "comes out behind a bare \"//\".")
      ->option_text("URL");
  command
      .add_option("--format", options.format,
                  "table: for people, the default on a terminal\n"
                  "jsonl: one JSON object a line, the default elsewhere")
      ->option_text("table|jsonl")
      ->check(CLI::IsMember({"table", "jsonl"}));
  addFiles(command, options.files);
}

RecordsOutput::RecordsOutput(Output& output, const RecordsOptions& options)
    : output_(output),
      asTable_(options.format.empty() ? output.isTerminal() : options.format == "table"),
      namesInputs_(options.files.size() > 1) {}

void RecordsOutput::beginInput(const std::string& name) {
  inputName_ = name;
  needsHeading_ = true;
}

void RecordsOutput::write(const Link& link) {
  if (asTable_) {
    if (needsHeading_) writeHeading();
    writeRow(link);
  } else {
    writeObject(link);
  }
}

void RecordsOutput::writeHeading() {
  if (!isFirstTable_) output_.write("\n");
  if (namesInputs_) output_.write(printable(inputName_) + ":\n");
  output_.write(alignedRow("OFFSET", "TAG", "ATTRIBUTE", "AS WRITTEN", "RESOLVED"));
  needsHeading_ = false;
  isFirstTable_ = false;
}

void RecordsOutput::writeRow(const Link& link) {
  output_.write(alignedRow(link.offset < 0 ? "-" : std::to_string(link.offset), printable(link.tag),
                           printable(link.attribute), printable(link.original),
                           printable(link.resolved)));
}

void RecordsOutput::writeObject(const Link& link) {
  JsonRecord record;
  record.add("file", inputName_);
  record.add("tag", link.tag);
  record.add("attribute", link.attribute);
  record.add("offset", link.offset);
  record.add("original", link.original);
  record.add("resolved", link.resolved);
  output_.write(record.line());
}

}  // namespace pagescan::tool
