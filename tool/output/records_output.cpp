#include "output/records_output.h"

#include <cstddef>

#include "output/json.h"
#include "output/table_row.h"
#include "output/utf8_text.h"

namespace pagescan::tool {

namespace {

// The columns of the table; the last one has no width.
constexpr std::size_t kOffsetWidth = 8;
constexpr std::size_t kTagWidth = 8;
constexpr std::size_t kAttributeWidth = 14;
constexpr std::size_t kOriginalWidth = 40;

std::string row(std::string_view offset, std::string_view tag, std::string_view attribute,
                std::string_view original, std::string_view resolved) {
  TableRow row;
  row.addRight(offset, kOffsetWidth);
  row.addLeft(tag, kTagWidth);
  row.addLeft(attribute, kAttributeWidth);
  row.addLeft(original, kOriginalWidth);
  row.addLeft(resolved);
  return row.line();
}

}  // namespace

void addRecordsOptions(CLI::App& command, RecordsOptions& options) {
  addText(command, "--base", options.base, "URL",
          "The URL that the text came from, against which\n"
          "values are resolved. Without it relative values come\n"
          "out useless: a.gif becomes //a.gif.");
  addListFormat(command, options.format);
  addFiles(command, options.files);
}

RecordsOutput::RecordsOutput(Output& output, const RecordsOptions& options)
    : output_(output),
      format_(!options.format.empty() ? options.format
              : output.isTerminal()   ? "table"
                                      : "jsonl"),
      namesInputs_(options.files.areMany()),
      urls_(output) {}

void RecordsOutput::beginInput(const std::string& name) {
  inputName_ = name;
  needsHeading_ = true;
}

void RecordsOutput::write(const Link& link) {
  if (format_ == "urls") {
    urls_.write(link.resolved);
  } else if (format_ == "table") {
    if (needsHeading_) writeHeading();
    writeRow(link);
  } else {
    writeObject(link);
  }
}

void RecordsOutput::writeHeading() {
  if (!isFirstTable_) output_.write("\n");
  if (namesInputs_) output_.write(printable(inputName_) + ":\n");
  output_.write(row("OFFSET", "TAG", "ATTRIBUTE", "AS WRITTEN", "RESOLVED"));
  needsHeading_ = false;
  isFirstTable_ = false;
}

void RecordsOutput::writeRow(const Link& link) {
  output_.write(row(link.offset < 0 ? "-" : std::to_string(link.offset), printable(link.tag),
                    printable(link.attribute), printable(link.original), printable(link.resolved)));
}

void RecordsOutput::writeObject(const Link& link) {
  std::string line;
  JsonWriter json(line);
  json.beginLine();
  json.addBytes("file", inputName_);
  json.addBytes("tag", link.tag);
  json.addBytes("attribute", link.attribute);
  json.addNumber("offset", link.offset);
  json.addBytes("original", link.original);
  json.addBytes("resolved", link.resolved);
  json.endLine();
  output_.write(line);
}

}  // namespace pagescan::tool
