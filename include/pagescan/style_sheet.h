// Every URL of a CSS style sheet, with the bytes that spell it, read as browsers read sheets.
//
// Offsets count bytes of the sheet as given; spans are half-open. A StyleSheet keeps a view of the
// bytes: they must outlive it. It may be read on many threads at once.
#ifndef PAGESCAN_STYLE_SHEET_H
#define PAGESCAN_STYLE_SHEET_H

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pagescan/export.h"
#include "pagescan/page.h"

namespace pagescan {

// How a sheet is to be read. The texts are needed during the call alone.
struct StyleSheetOptions {
  std::string_view url;      // where the sheet comes from; empty: unknown
  std::string_view charset;  // a label from outside the sheet; unknown ones count as none
};

// The references of a style sheet. Their tag is 0, their parent kNoParent, and their ids of element
// and attribute have empty names. Otherwise all is as for a Page: promises, cost and failures.
class PAGESCAN_PAGE_EXPORT StyleSheet {
 public:
  // Reads the sheet at once.
  // bytes    not copied: they must outlive the sheet
  // options  its texts are needed during the call alone
  explicit StyleSheet(std::string_view bytes, const StyleSheetOptions& options = {});

  // A sheet that was moved from may be destroyed or assigned to, nothing else.
  StyleSheet(StyleSheet&&) noexcept;
  // As above.
  StyleSheet& operator=(StyleSheet&&) noexcept;
  ~StyleSheet();

  // Empty; or why the sheet was not read: it has more than 2^32-1 bytes.
  std::string_view error() const;

  // The bytes that the sheet was made of.
  std::string_view bytes() const;

  // In the order of span.begin.
  const std::vector<Reference>& references() const;

  // The bytes at the span of a reference.
  std::string_view raw(const Reference& reference) const;

  // What a reference spells, its escapes decoded, in UTF-8. Linear in the span.
  std::string value(const Reference& reference) const;

  // The same into a text whose storage is used again.
  void valueInto(const Reference& reference, std::string& result) const;

  // Resolved against the sheet's URL, queries in UTF-8.
  std::optional<std::string> url(const Reference& reference) const;
  bool urlInto(const Reference& reference, std::string& result) const;

  // By the BOM, the caller's charset, the sheet's @charset, else "UTF-8".
  std::string_view encoding() const;

  struct State;
  // For the library itself.
  const State& state() const { return *state_; }

 private:
  std::unique_ptr<State> state_;
};

}  // namespace pagescan

#endif
