#include "output/inventory_output.h"

#include "lines.h"
#include "output/utf8_text.h"

namespace pagescan::tool {

InventoryOutput::InventoryOutput(Output& output, ListFormat format, bool namesInputs)
    : output_(output), format_(format), namesInputs_(namesInputs), urls_(output) {}

void InventoryOutput::write(const std::string& inputName, std::string_view lines) {
  if (format_ == ListFormat::urls) {
    forEachPiece(lines, '\n', [this](std::string_view url) { urls_.write(url); });
    return;
  }
  if (format_ == ListFormat::table && !isInTable_) beginTable(inputName);
  output_.write(lines);
}

void InventoryOutput::beginTable(const std::string& inputName) {
  if (!isFirstTable_) output_.write("\n");
  if (namesInputs_) output_.write(printable(inputName) + ":\n");
  output_.write(ReferenceLines::heading());
  isInTable_ = true;
  isFirstTable_ = false;
}

}  // namespace pagescan::tool
