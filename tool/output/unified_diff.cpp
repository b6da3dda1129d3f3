#include "output/unified_diff.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "output/utf8_text.h"

namespace pagescan::tool {

namespace {

constexpr std::size_t kContext = 3;

// The lines of a text, each with its LF; numbers count from 0.
class Lines {
 public:
  explicit Lines(std::string_view text) : text_(text) {
    for (std::size_t at = 0; at < text.size();) {
      begins_.push_back(static_cast<std::uint32_t>(at));
      const std::size_t end = text.find('\n', at);
      at = end == std::string_view::npos ? text.size() : end + 1;
    }
  }

  std::size_t count() const { return begins_.size(); }

  // The number of the line that holds an offset; count() after the last line.
  std::size_t at(std::uint32_t offset) const {
    if (offset == text_.size() && (text_.empty() || text_.back() == '\n')) return count();
    const auto next = std::upper_bound(begins_.begin(), begins_.end(), offset);
    return static_cast<std::size_t>(next - begins_.begin()) - 1;
  }

  std::string_view line(std::size_t number) const {
    const std::size_t end = number + 1 < count() ? begins_[number + 1] : text_.size();
    return text_.substr(begins_[number], end - begins_[number]);
  }

 private:
  std::string_view text_;
  std::vector<std::uint32_t> begins_;
};

// Lines [begin, end) of each side.
struct LineRange {
  std::size_t begin, end;
  std::size_t size() const { return end - begin; }
};
struct Difference {
  LineRange before, after;
};

class DiffWriter {
 public:
  DiffWriter(std::string_view before, std::string_view after, bool isForPeople)
      : before_(before), after_(after), isForPeople_(isForPeople) {}

  std::string write(const std::string& name, const std::vector<ChangedBytes>& changes) {
    const std::vector<Difference> all = differencesOf(changes);
    if (all.empty()) return "";
    out_ = "--- " + shown(name) + "\n+++ " + shown(name) + "\n";
    for (std::size_t i = 0; i < all.size();) {
      std::size_t end = i + 1;
      while (end < all.size() && all[end].before.begin <= all[end - 1].before.end + 2 * kContext) {
        ++end;
      }
      writeHunk(all, i, end);
      i = end;
    }
    return std::move(out_);
  }

 private:
  // The lines that differ: what changes touch, joined where no line is between them.
  std::vector<Difference> differencesOf(const std::vector<ChangedBytes>& changes) const {
    std::vector<Difference> all;
    for (const ChangedBytes& change : changes) {
      const Difference next = {linesOf(before_, change.before), linesOf(after_, change.after)};
      if (!all.empty() && next.before.begin <= all.back().before.end) {
        all.back().before.end = std::max(all.back().before.end, next.before.end);
        all.back().after.end = std::max(all.back().after.end, next.after.end);
      } else {
        all.push_back(next);
      }
    }
    for (Difference& each : all) trim(each);
    all.erase(std::remove_if(all.begin(), all.end(),
                             [](const Difference& each) {
                               return each.before.size() == 0 && each.after.size() == 0;
                             }),
              all.end());
    return all;
  }

  static LineRange linesOf(const Lines& lines, Span span) {
    return {lines.at(span.begin), std::min(lines.at(span.end) + 1, lines.count())};
  }

  // Leaves out the lines that are the same on both sides.
  void trim(Difference& each) const {
    LineRange& before = each.before;
    LineRange& after = each.after;
    const auto areNonEmpty = [&] { return before.size() > 0 && after.size() > 0; };
    while (areNonEmpty() && before_.line(before.begin) == after_.line(after.begin)) {
      ++before.begin;
      ++after.begin;
    }
    while (areNonEmpty() && before_.line(before.end - 1) == after_.line(after.end - 1)) {
      --before.end;
      --after.end;
    }
  }

  // Differences [first, end) and the lines around and between them.
  void writeHunk(const std::vector<Difference>& all, std::size_t first, std::size_t end) {
    const Difference& last = all[end - 1];
    const std::size_t lead = std::min(kContext, all[first].before.begin);
    const std::size_t tail = std::min(kContext, before_.count() - last.before.end);
    const LineRange before = {all[first].before.begin - lead, last.before.end + tail};
    const LineRange after = {all[first].after.begin - lead, last.after.end + tail};
    out_ += "@@ -" + rangeText(before) + " +" + rangeText(after) + " @@\n";
    std::size_t at = before.begin;
    for (std::size_t i = first; i < end; ++i) {
      writeLines(' ', before_, {at, all[i].before.begin});
      writeLines('-', before_, all[i].before);
      writeLines('+', after_, all[i].after);
      at = all[i].before.end;
    }
    writeLines(' ', before_, {at, before.end});
  }

  static std::string rangeText(LineRange range) {
    const std::size_t first = range.size() == 0 ? range.begin : range.begin + 1;
    return std::to_string(first) + "," + std::to_string(range.size());
  }

  void writeLines(char mark, const Lines& lines, LineRange range) {
    for (std::size_t i = range.begin; i < range.end; ++i) {
      std::string_view line = lines.line(i);
      const bool isWhole = line.back() == '\n';
      if (isWhole) line.remove_suffix(1);
      out_.append(1, mark).append(shown(std::string(line))).append("\n");
      if (!isWhole) out_ += "\\ No newline at end of file\n";
    }
  }

  std::string shown(const std::string& text) const { return isForPeople_ ? printable(text) : text; }

  Lines before_, after_;
  bool isForPeople_;
  std::string out_;
};

}  // namespace

std::string unifiedDiff(const std::string& name, std::string_view before, std::string_view after,
                        const std::vector<ChangedBytes>& changes, bool isForPeople) {
  return DiffWriter(before, after, isForPeople).write(name, changes);
}

}  // namespace pagescan::tool
