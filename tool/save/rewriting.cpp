#include "save/rewriting.h"

#include <cstddef>
#include <utility>

#include "pagescan/edits.h"
#include "pagescan/url.h"
#include "save/encoding_told.h"
#include "save/loads.h"
#include "save/taken_off.h"

namespace pagescan::tool {

namespace {

// Whether a copy has to name the place again: all but names that nothing fetches.
bool isRewritten(Kind kind) {
  switch (kind) {
    case Kind::load:
    case Kind::navigation:
    case Kind::form:
    case Kind::ping:
    case Kind::connection:
    case Kind::metadata:
      return true;
    default:
      return false;
  }
}

// What the references of one text become.
template <typename Text>
class NewValues {
 public:
  NewValues(const Text& text, const std::string& url, const CopyOf& copyOf)
      : text_(text), url_(withoutFragment(url)), copyOf_(copyOf) {}

  // Adds what becomes of a reference, if anything, and returns whether it names a copy then.
  bool add(std::size_t index) {
    const Reference& reference = text_.references()[index];
    if (!isRewritten(reference.kind)) return false;
    const std::optional<std::string> url = text_.url(reference);
    if (!url || !isFetched(*url)) return false;
    const std::string_view fragment = fragmentOf(*url);
    const std::string target(withoutFragment(*url));
    const bool isLoad = reference.kind == Kind::load;
    if (!isLoad && !fragment.empty() && target == url_) {
      put(index, std::string(fragment));  // a place of this text
      return false;
    }
    if (isLoad || reference.kind == Kind::navigation) {
      if (auto copy = copyOf_(target, reference.kind)) {
        put(index, copy->append(fragment));
        return true;
      }
    }
    if (!isAbsolute(text_.value(reference), *url)) put(index, *url);
    return false;
  }

  const std::vector<Edit>& edits() const { return edits_; }

 private:
  void put(std::size_t index, std::string value) {
    edits_.push_back({index, std::move(value), std::nullopt});
  }

  // Whether a value means its URL wherever it stands. Nothing is asked for where it is empty.
  bool isAbsolute(const std::string& value, const std::string& url) const {
    const std::optional<Url> alone = Url::parse(value, text_.encoding());
    return value.empty() || (alone && alone->href() == url);
  }

  const Text& text_;
  std::string_view url_;
  const CopyOf& copyOf_;
  std::vector<Edit> edits_;
};

template <typename Text>
CopyText apply(const Text& text, const std::vector<Edit>& edits,
               const std::vector<ByteEdit>& byteEdits) {
  EditResult result = applyEdits(text, edits, byteEdits);
  CopyText copy{std::move(result.bytes), {}};
  if (result.refused.empty()) return copy;
  const LineIndex lines(text);
  for (const RefusedEdit& refused : result.refused) {
    const bool isReference = refused.edit < edits.size();
    const Span span = isReference ? text.references()[edits[refused.edit].reference].span
                                  : byteEdits[refused.edit - edits.size()].span;
    const Position at = lines.at(span.begin);
    copy.told.push_back(std::to_string(at.line) + ":" + std::to_string(at.column) +
                        ": stays as it is: " + std::string(sentenceOf(refused.reason)));
  }
  return copy;
}

}  // namespace

Page readPage(const Original& page) {
  PageOptions options;
  options.url = page.url;
  options.charset = page.charset;
  options.places = &placesOfInterest();
  return Page(page.bytes, options);
}

StyleSheet readSheet(const Original& sheet) {
  const std::string charset = charsetOfSheet(sheet.bytes, sheet.charset, sheet.encoding);
  StyleSheetOptions options;
  options.url = sheet.url;
  options.charset = charset;
  return StyleSheet(sheet.bytes, options);
}

CopyText rewritePage(const Original& original, const CopyOf& copyOf) {
  const Page page = readPage(original);
  const bool isTold =
      original.charset.empty() || pageTellsEncoding(original.bytes, page.encoding());
  NewValues<Page> values(page, original.url, copyOf);
  TakenOff takenOff(page, !isTold);
  for (std::size_t i = 0; i < page.references().size(); ++i) {
    const bool isCopy = values.add(i);
    takenOff.look(page.references()[i], isCopy);
  }
  CopyText copy = apply(page, values.edits(), takenOff.edits());
  for (std::string& message : takenOff.messages()) copy.told.push_back(std::move(message));
  if (!isTold) {
    copy.bytes = withEncodingOfPage(copy.bytes, page.encoding());
    if (!pageTellsEncoding(copy.bytes, page.encoding())) {
      copy.told.push_back("its encoding, " + std::string(page.encoding()) +
                          ", is not told in the copy");
    }
  }
  return copy;
}

CopyText rewriteSheet(const Original& original, const CopyOf& copyOf) {
  const StyleSheet sheet = readSheet(original);
  NewValues<StyleSheet> values(sheet, original.url, copyOf);
  for (std::size_t i = 0; i < sheet.references().size(); ++i) values.add(i);
  CopyText copy = apply(sheet, values.edits(), {});
  if (!original.charset.empty()) {
    copy.bytes = withEncodingOfSheet(copy.bytes, sheet.encoding());
  }
  return copy;
}

}  // namespace pagescan::tool
