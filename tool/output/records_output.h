// Records on their way out: as a table for people, as JSON Lines for programs, or their URLs alone.
// docs/tool.md describes them.
#ifndef PAGESCAN_TOOL_RECORDS_OUTPUT_H
#define PAGESCAN_TOOL_RECORDS_OUTPUT_H

#include <string>
#include <string_view>

#include "input_files.h"
#include "output/output.h"
#include "output/url_list.h"

namespace pagescan::tool {

// What the commands that list records have in common.
struct RecordsOptions {
  std::string base;
  std::string format;  // "table", "jsonl", "urls", or empty for the one that suits the output
  InputFiles files;
};

void addRecordsOptions(CLI::App& command, RecordsOptions& options);

// One recorded attribute. The bytes belong to others.
struct Link {
  std::string_view tag, attribute;
  int offset;  // -1 when it has no value in the text
  std::string_view original, resolved;
};

class RecordsOutput {
 public:
  RecordsOutput(Output& output, const RecordsOptions& options);

  // The links that follow are those of this input.
  void beginInput(const std::string& name);

  void write(const Link& link);

 private:
  void writeRow(const Link& link);
  void writeHeading();
  void writeObject(const Link& link);

  Output& output_;
  std::string format_;
  bool namesInputs_;
  UrlList urls_;
  std::string inputName_;
  bool needsHeading_ = true;
  bool isFirstTable_ = true;
};

}  // namespace pagescan::tool

#endif
