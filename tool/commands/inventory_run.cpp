#include "commands/inventory_run.h"

#include <algorithm>
#include <atomic>

#include "input.h"
#include "input_kind.h"
#include "lines.h"
#include "output/inventory_output.h"
#include "output/messages.h"
#include "output/progress.h"
#include "turns.h"
#include "worker_threads.h"

namespace pagescan::tool {

namespace {

// A thread's piece of output; larger ones wait for their turn.
constexpr std::size_t kMostLines = 262144;

class Inventory {
 public:
  Inventory(const InventoryOptions& options, const InputFiles& files, Output& output)
      : options_(options),
        names_(namesOf(files, isWhole_)),
        output_(output, options.lines.format, files.areMany()),
        progress_(names_.size(), output.isTerminal()) {}

  ExitStatus run() {
    runOnThreads(std::min<std::size_t>(options_.jobs, names_.size()), [this] { work(); });
    return isWhole_ ? kSuccess : kFailed;
  }

 private:
  // Takes one input after the other until there are no more.
  void work() {
    InputReader reader(kMostInputBytes);
    std::string lines;
    for (std::size_t number = next_++; number < names_.size(); number = next_++) {
      lines.clear();
      takeInput(number, reader, lines);
    }
  }

  // After an output that failed nothing is read any more.
  void takeInput(std::size_t number, InputReader& reader, std::string& lines) {
    std::string failure;
    if (!hasEnded_) failure = whatStops([&] { return list(number, reader, lines); });
    turns_.waitFor(number);
    finish(names_[number], lines, failure);
    turns_.pass();
  }

  // Returns why the input is not listed, or nothing.
  std::string list(std::size_t number, InputReader& reader, std::string& lines) {
    const std::string& name = names_[number];
    InputContent input = reader.read(name);
    const std::string_view binary = binaryKindOf(input.bytes);
    if (!binary.empty()) input.failure = "not read: it looks like " + std::string(binary);
    if (!input.failure.empty()) return input.failure;
    const auto spill = [&] {
      if (lines.size() < kMostLines) return;
      turns_.waitFor(number);
      output_.write(name, lines);
      lines.clear();
    };
    return options_.reading.isCss ? listSheet(input.bytes, name, lines, spill)
                                  : listPage(input.bytes, name, lines, spill);
  }

  std::string listPage(std::string_view bytes, const std::string& name, std::string& lines,
                       const std::function<void()>& spill) const {
    const Page page(bytes, options_.reading.pageOptions());
    options_.lines.append(page, name, lines, spill);
    return std::string(page.error());
  }

  std::string listSheet(std::string_view bytes, const std::string& name, std::string& lines,
                        const std::function<void()>& spill) const {
    const StyleSheet sheet(bytes, options_.reading.sheetOptions());
    options_.lines.append(sheet, name, lines, spill);
    return std::string(sheet.error());
  }

  // In its turn. What an input gave before it failed is kept.
  void finish(const std::string& name, const std::string& lines, const std::string& failure) {
    if (!lines.empty()) output_.write(name, lines);
    output_.endInput();
    hasEnded_ = output_.hasFailed();
    progress_.advance();
    if (failure.empty()) return;
    progress_.clear();
    tellAbout(name, failure);
    isWhole_ = false;
  }

  const InventoryOptions& options_;
  bool isWhole_ = true;  // whether every input so far was listed
  Names names_;
  InventoryOutput output_;
  Progress progress_;
  Turns turns_;
  std::atomic<std::size_t> next_ = 0;
  std::atomic<bool> hasEnded_ = false;
};

}  // namespace

ExitStatus runInventory(const InventoryOptions& options, const InputFiles& files, Output& output) {
  return Inventory(options, files, output).run();
}

}  // namespace pagescan::tool
