#include "edits/changes.h"

#include <algorithm>
#include <utility>

namespace pagescan::internal {

Changes::Changes(std::vector<Change> inOrder) : all_(std::move(inOrder)) {
  shifts_.reserve(all_.size() + 1);
  shifts_.push_back(0);
  for (const Change& change : all_) {
    const std::int64_t replaced = change.span.end - change.span.begin;
    shifts_.push_back(shifts_.back() + static_cast<std::int64_t>(change.size()) - replaced);
  }
}

std::uint64_t Changes::sizeAfter(std::string_view page) const {
  return static_cast<std::uint64_t>(static_cast<std::int64_t>(page.size()) + shifts_.back());
}

std::string Changes::applyTo(std::string_view page) const {
  std::string result;
  result.reserve(sizeAfter(page));
  std::size_t at = 0;
  for (const Change& change : all_) {
    result.append(page, at, change.span.begin - at);
    result.append(change.bytes.before).append(change.bytes.value).append(change.bytes.after);
    at = change.span.end;
  }
  return result.append(page, at);
}

std::int64_t Changes::beginAfter(std::uint32_t offset) const {
  const auto isAfter = [](std::uint32_t at, const Change& change) { return at < change.span.end; };
  const auto next = std::upper_bound(all_.begin(), all_.end(), offset, isAfter);
  return offset + shifts_[static_cast<std::size_t>(next - all_.begin())];
}

std::int64_t Changes::endAfter(std::uint32_t offset) const {
  const auto isBefore = [](const Change& change, std::uint32_t at) {
    return change.span.begin < at;
  };
  const auto next = std::lower_bound(all_.begin(), all_.end(), offset, isBefore);
  return offset + shifts_[static_cast<std::size_t>(next - all_.begin())];
}

Span Changes::bytesAfter(std::size_t i) const {
  const auto begin = static_cast<std::uint32_t>(all_[i].span.begin + shifts_[i]);
  return {begin, static_cast<std::uint32_t>(begin + all_[i].size())};
}

Span Changes::valueAfter(std::size_t i) const {
  const Spelling& bytes = all_[i].bytes;
  const auto begin = static_cast<std::uint32_t>(bytesAfter(i).begin + bytes.before.size());
  return {begin, static_cast<std::uint32_t>(begin + bytes.value.size())};
}

std::size_t Changes::nearest(std::uint32_t offsetAfter) const {
  std::size_t begin = 0;
  std::size_t end = all_.size();
  while (begin + 1 < end) {
    const std::size_t middle = begin + (end - begin) / 2;
    (bytesAfter(middle).begin <= offsetAfter ? begin : end) = middle;
  }
  return begin;
}

bool Changes::touches(Span span) const {
  const auto isBefore = [](const Change& change, std::uint32_t at) { return change.span.end < at; };
  for (auto change = std::lower_bound(all_.begin(), all_.end(), span.begin, isBefore);
       change != all_.end() && change->span.begin <= span.end; ++change) {
    const bool isBeside = change->span.end == span.begin || change->span.begin == span.end;
    if (change->reference == kNoReference && !isBeside) return true;
  }
  return false;
}

}  // namespace pagescan::internal
