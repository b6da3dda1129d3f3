#include "input_files.h"

#include <string_view>

#include "input.h"
#include "lines.h"
#include "output/messages.h"

namespace pagescan::tool {

void addFiles(CLI::App& command, InputFiles& files) {
  CLI::Option* list = addText(command, "--files-from", files.listFile, "FILE",
                              "Read the files named in FILE too, a name a line");
  addFlagFor(list, command, "-0,--null", files.areNulTerminated,
             "The names in that FILE end with NUL bytes, as\n"
             "find -print0 writes them");
  addArguments(command, "FILE", "Files to read; standard input for - or none", files.named);
}

Names namesOf(const InputFiles& files, bool& isWhole) {
  isWhole = true;
  Names names = files.named;
  if (files.listFile.empty()) return names.empty() ? Names{"-"} : names;
  InputReader reader(kMostInputBytes);
  const InputContent list = reader.read(files.listFile);
  isWhole = list.failure.empty();
  if (!isWhole) tellAbout(files.listFile, list.failure);
  forEachPiece(list.bytes, files.areNulTerminated ? '\0' : '\n', [&](std::string_view name) {
    if (!name.empty()) names.emplace_back(name);
  });
  return names;
}

}  // namespace pagescan::tool
