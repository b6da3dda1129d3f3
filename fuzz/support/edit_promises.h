// What holds for the edits of every page: the promises of <pagescan/edits.h>, looked at from
// outside.
#ifndef PAGESCAN_FUZZ_SUPPORT_EDIT_PROMISES_H
#define PAGESCAN_FUZZ_SUPPORT_EDIT_PROMISES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "pagescan/edits.h"

namespace fuzz {

// Whether `after` is `before` with other bytes at these spans alone, but for the delimiters of a
// value that its attribute lacked.
inline bool differsInSpansAlone(std::string_view before, std::string_view after,
                                const std::vector<pagescan::Span>& spans) {
  std::size_t at = 0;
  for (std::size_t i = 0; i <= spans.size(); ++i) {
    const std::size_t from = i == 0 ? 0 : spans[i - 1].end;
    const std::size_t to = i == spans.size() ? before.size() : spans[i].begin;
    const std::string_view kept = before.substr(from, to - from);
    const std::size_t found = i == spans.size() && after.size() >= at + kept.size()
                                  ? after.size() - kept.size()
                                  : after.find(kept, at);
    if (found == std::string_view::npos || after.substr(found, kept.size()) != kept) return false;
    if (i == 0 && found != 0) return false;
    at = found + kept.size();
  }
  return at == after.size();
}

// The first promise that a run of edits breaks; empty for none. `Document` is Page or StyleSheet.
template <typename Document, typename Options>
std::string brokenByEdits(const Document& page, const Options& options,
                          const std::vector<pagescan::Edit>& edits) {
  const pagescan::EditResult result = pagescan::applyEdits(page, edits);
  std::set<std::size_t> refused;
  for (const pagescan::RefusedEdit& edit : result.refused) {
    if (edit.edit >= edits.size()) return "what is refused is an edit";
    if (!refused.insert(edit.edit).second) return "an edit is refused once";
  }
  std::vector<const std::string*> values(page.references().size(), nullptr);
  std::vector<pagescan::Span> spans;
  for (std::size_t i = 0; i < edits.size(); ++i) {
    if (refused.count(i) != 0) continue;
    values[edits[i].reference] = &edits[i].value;
    spans.push_back(page.references()[edits[i].reference].span);
  }
  const auto isBefore = [](pagescan::Span a, pagescan::Span b) { return a.begin < b.begin; };
  std::sort(spans.begin(), spans.end(), isBefore);
  if (!differsInSpansAlone(page.bytes(), result.bytes, spans)) return "the rest stays as it is";

  const std::vector<char> block(result.bytes.begin(), result.bytes.end());
  const Document again({block.data(), block.size()}, options);
  if (again.encoding() != page.encoding()) return "the encoding stays";
  if (again.references().size() != page.references().size()) return "no reference comes or goes";
  for (std::size_t i = 0; i < values.size(); ++i) {
    const pagescan::Reference& old = page.references()[i];
    const pagescan::Reference& now = again.references()[i];
    const std::string value = values[i] == nullptr ? page.value(old) : *values[i];
    if (again.value(now) != value) {
      return "\"" + again.value(now) + "\" should be \"" + value + "\" in: " + result.bytes;
    }
    if (now.slot != old.slot || now.element != old.element || now.attribute != old.attribute) {
      return "a place stays what it is";
    }
    if (values[i] == nullptr && (now.kind != old.kind || now.flags != old.flags)) {
      return "kind and flags stay";
    }
  }
  return {};
}

// Editing nothing, and giving each reference the value that it has.
template <typename Document>
std::string brokenByIdleEdits(const Document& page) {
  if (pagescan::applyEdits(page, {}).bytes != page.bytes()) return "no edit changes nothing";
  std::vector<pagescan::Edit> edits;
  for (std::size_t i = 0; i < page.references().size(); ++i) {
    const std::string value = page.value(page.references()[i]);
    edits.push_back({i, value, value});
  }
  const pagescan::EditResult result = pagescan::applyEdits(page, edits);
  if (result.bytes != page.bytes()) return "a value that is there changes nothing";
  for (const pagescan::RefusedEdit& edit : result.refused) {
    if (edit.reason != pagescan::EditRefusal::overlaps) return "what is there is not refused";
  }
  return {};
}

}  // namespace fuzz

#endif
