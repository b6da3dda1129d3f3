// InventoryOutput: the lines of many inputs on their way out, with what stands between them.
#ifndef PAGESCAN_TOOL_INVENTORY_OUTPUT_H
#define PAGESCAN_TOOL_INVENTORY_OUTPUT_H

#include <string>
#include <string_view>

#include "output/output.h"
#include "output/reference_lines.h"
#include "output/url_list.h"

namespace pagescan::tool {

class InventoryOutput {
 public:
  // namesInputs  whether each table stands under the name of its input
  InventoryOutput(Output& output, ListFormat format, bool namesInputs);

  // Writes lines of an input, in as many pieces as there are.
  void write(const std::string& inputName, std::string_view lines);

  // What follows is of another input.
  void endInput() { isInTable_ = false; }

  bool hasFailed() const { return output_.error() != 0; }

 private:
  void beginTable(const std::string& inputName);

  Output& output_;
  ListFormat format_;
  bool namesInputs_;
  UrlList urls_;
  bool isInTable_ = false;
  bool isFirstTable_ = true;
};

}  // namespace pagescan::tool

#endif
