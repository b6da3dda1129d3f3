#include "table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace pagescan::bench {
namespace {

enum class Verdict { reached, missed, notMeasured };

struct Judgement {
  std::string aim;
  Verdict verdict;
};

Judgement judge(const Target& target, const Result& result) {
  const double ratio = speedRatio(result.timings, kLibrary, target.than);
  std::string aim = shortNumber(target.times);
  if (target.than != result.job->yardstickName()) {
    aim += " x " + target.than + " (" + shortNumber(ratio) + ")";
  }
  if (ratio == 0) return {aim, Verdict::notMeasured};
  return {aim, ratio < target.times ? Verdict::missed : Verdict::reached};
}

double secondsPerItem(const std::string& contender, const Result& result) {
  return median(result.timings.at(contender)) / static_cast<double>(result.job->work().items);
}

Judgement judgeTime(const Result& result) {
  const double seconds = secondsPerItem(kLibrary, result);
  const double limit = result.job->timeLimit();
  return {shortNumber(limit * 1e9) + " ns (" + shortNumber(seconds * 1e9) + ")",
          seconds > limit ? Verdict::missed : Verdict::reached};
}

std::vector<Judgement> judgements(const Result& result) {
  std::vector<Judgement> all;
  for (const Target& target : result.job->targets()) all.push_back(judge(target, result));
  if (result.job->timeLimit() > 0) all.push_back(judgeTime(result));
  return all;
}

std::string aims(const Result& result) {
  std::string text;
  for (const Judgement& judgement : judgements(result)) {
    if (!text.empty()) text += ", ";
    text += judgement.aim;
    if (judgement.verdict == Verdict::missed) text += " **missed**";
    if (judgement.verdict == Verdict::notMeasured) text += " not measured";
  }
  return text;
}

std::string ratioOf(const std::string& contender, const Result& result) {
  const double ratio = speedRatio(result.timings, contender, result.job->yardstickName());
  return ratio == 0 ? "" : shortNumber(ratio);
}

// What is neither the library nor the yardstick.
std::string peerRatios(const Result& result) {
  std::string text;
  for (const Contender& contender : result.job->contenders()) {
    const std::string& name = contender.name;
    if (name.find(kLibrary) == 0 || name == result.job->yardstickName()) continue;
    if (!text.empty()) text += ", ";
    text += name + " " + ratioOf(name, result);
  }
  return text;
}

}  // namespace

Table::Table(std::vector<std::string> header) {
  std::vector<std::string> line(header.size(), "---:");
  line.front() = "---";
  rows_ = {std::move(header), std::move(line)};
}

void Table::addRow(std::vector<std::string> cells) {
  rows_.push_back(std::move(cells));
}

std::ostream& operator<<(std::ostream& out, const Table& table) {
  for (const auto& row : table.rows_) {
    out << '|';
    for (const std::string& cell : row) out << ' ' << cell << " |";
    out << '\n';
  }
  return out << '\n';
}

std::string shortNumber(double value) {
  const int digits = value == 0 ? 0 : static_cast<int>(std::floor(std::log10(std::fabs(value))));
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", std::clamp(2 - digits, 0, 6), value);
  return text;
}

std::string code(std::string_view text) {
  return "`" + std::string(text) + "`";
}

void writeRatios(std::ostream& out, const std::vector<Result>& results) {
  Table table({"job", "yardstick = 1", kLibrary, "to reach", "baseline vectors", "peers"});
  for (const Result& result : results) {
    const Job& job = *result.job;
    table.addRow({job.title(), job.yardstickName(), "**" + ratioOf(kLibrary, result) + "**",
                  aims(result), ratioOf(kLibraryOnBaseline, result), peerRatios(result)});
  }
  out << table;
}

void writeSpeeds(std::ostream& out, const Result& result) {
  const Job& job = *result.job;
  out << "#### " << job.title() << "\n\n" << job.work().description << ".\n\n";
  Table table({"", "MB/s", "ns per " + job.work().item, "ratio"});
  for (const Contender& contender : job.contenders()) {
    const double seconds = median(result.timings.at(contender.name));
    table.addRow({contender.name,
                  shortNumber(static_cast<double>(job.work().bytes) / seconds / 1e6),
                  shortNumber(secondsPerItem(contender.name, result) * 1e9),
                  ratioOf(contender.name, result)});
  }
  out << table;
}

std::size_t targetsMissed(const std::vector<Result>& results) {
  std::size_t missed = 0;
  for (const Result& result : results) {
    for (const Judgement& judgement : judgements(result)) {
      if (judgement.verdict == Verdict::missed) ++missed;
    }
  }
  return missed;
}

}  // namespace pagescan::bench
