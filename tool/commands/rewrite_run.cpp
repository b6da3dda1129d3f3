#include "commands/rewrite_run.h"

#include <algorithm>
#include <atomic>
#include <set>
#include <utility>
#include <vector>

#include "commands/rewritten.h"
#include "input.h"
#include "input_kind.h"
#include "output/messages.h"
#include "output/progress.h"
#include "output/replacement.h"
#include "turns.h"
#include "worker_threads.h"

namespace pagescan::tool {

namespace {

// What one input gave.
struct InputResult {
  std::string text;               // for the output
  Replacement file;               // new content that waits
  bool waits = false;             // whether there is any
  std::vector<Problem> problems;  // empty: all was done
};

class RewriteRun {
 public:
  RewriteRun(const RewriteOptions& options, const Names& names, Output& output)
      : options_(options),
        names_(names),
        output_(output),
        progress_(names.size(), output.isTerminal()) {}

  ExitStatus run() {
    tellUnknownNames();
    runOnThreads(std::min<std::size_t>(options_.jobs, names_.size()), [this] { work(); });
    progress_.clear();
    if (isWhole_) finish();
    return isWhole_ ? kSuccess : kFailed;
  }

 private:
  // An edit for a file that is no input would be lost.
  void tellUnknownNames() {
    if (!options_.edits) return;
    const std::set<std::string> inputs(names_.begin(), names_.end());
    for (const auto& [file, edits] : *options_.edits) {
      const bool isKnown = file.empty() ? names_.size() == 1 : inputs.contains(file);
      if (isKnown) continue;
      isWhole_ = false;
      const std::string line = "line " + std::to_string(edits[0].line) + " of the edits: ";
      if (file.empty()) {
        tell(line + "\"file\" must say which of the inputs is meant");
      } else {
        tell(line + "no input is called " + shownName(file));
      }
    }
  }

  void work() {
    InputReader reader(kMostInputBytes);
    for (std::size_t number = next_++; number < names_.size(); number = next_++) {
      InputResult result;
      std::string failure = whatStops([&] {
        rewriteInput(names_[number], reader, result);
        return std::string();
      });
      if (!failure.empty()) result.problems.push_back({"", std::move(failure)});
      turns_.waitFor(number);
      take(names_[number], std::move(result));
      turns_.pass();
    }
  }

  void rewriteInput(const std::string& name, InputReader& reader, InputResult& result) const {
    InputContent input = reader.read(name);
    const std::string_view binary = binaryKindOf(input.bytes);
    if (!binary.empty()) input.failure = "not read: it looks like " + std::string(binary);
    if (!input.failure.empty()) return result.problems.push_back({"", input.failure});
    Rewritten made = rewritten(input.bytes, name, options_, editsOf(name));
    result.problems = std::move(made.problems);
    if (result.problems.empty()) keep(name, input.bytes, made, result);
  }

  // Those that are listed for an input; nullptr when the rules hold.
  const std::vector<ListedEdit>* editsOf(const std::string& name) const {
    static const std::vector<ListedEdit> kNone;
    if (!options_.edits) return nullptr;
    const auto own = options_.edits->find(name);
    if (own != options_.edits->end()) return &own->second;
    const auto unnamed = options_.edits->find("");
    return unnamed == options_.edits->end() ? &kNone : &unnamed->second;
  }

  void keep(const std::string& name, std::string_view before, Rewritten& made,
            InputResult& result) const {
    std::string failure;
    switch (options_.target) {
      case RewriteTarget::diff:
        result.text = unifiedDiff(name, before, made.bytes, made.changes, output_.isTerminal());
        break;
      case RewriteTarget::standardOutput:
        result.text = std::move(made.bytes);
        break;
      case RewriteTarget::file:
        failure = result.file.prepareNew(options_.file, made.bytes);
        result.waits = true;
        break;
      case RewriteTarget::inPlace:
        result.waits = made.bytes != before;
        if (result.waits) failure = result.file.prepare(name, made.bytes, options_.suffix);
        break;
    }
    if (!failure.empty()) result.problems.push_back({"", failure});
  }

  // In its turn.
  void take(const std::string& name, InputResult result) {
    progress_.advance();
    if (!result.problems.empty()) {
      progress_.clear();
      isWhole_ = false;
      for (const Problem& problem : result.problems) {
        const std::string place = problem.place.empty() ? "" : ":" + problem.place;
        tell(shownName(name) + place + ": " + problem.text);
      }
    }
    if (!result.text.empty()) output_.write(result.text);
    if (result.waits) waiting_.emplace_back(name, std::move(result.file));
  }

  void finish() {
    for (auto& [name, file] : waiting_) {
      const std::string failure = file.commit();
      if (failure.empty()) continue;
      tellAbout(options_.target == RewriteTarget::file ? options_.file : name, failure);
      isWhole_ = false;
    }
  }

  const RewriteOptions& options_;
  const Names& names_;
  Output& output_;
  Progress progress_;
  bool isWhole_ = true;
  Turns turns_;
  std::atomic<std::size_t> next_ = 0;
  std::vector<std::pair<std::string, Replacement>> waiting_;
};

}  // namespace

ExitStatus runRewrite(const RewriteOptions& options, const Names& names, Output& output) {
  return RewriteRun(options, names, output).run();
}

}  // namespace pagescan::tool
