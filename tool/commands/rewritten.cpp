#include "commands/rewritten.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "output/utf8_text.h"
#include "page_files.h"

namespace pagescan::tool {

namespace {

// An edit that is asked for, in any form.
struct Wanted {
  Span span;
  std::string text;
  std::size_t line = 0;  // of the list of edits; 0: by a rule
};

template <typename Document>
class InputRewriter {
 public:
  InputRewriter(const Document& document, std::string_view url, const RewriteOptions& options)
      : document_(document), url_(url), options_(options) {}

  Rewritten rewrite(const std::vector<ListedEdit>* listed) {
    if (!document_.error().empty()) {
      result_.problems.push_back({"", std::string(document_.error())});
      return std::move(result_);
    }
    if (listed == nullptr) {
      takeEdits(editsFor(document_, url_, options_.rules));
    } else {
      for (const ListedEdit& edit : *listed) take(edit);
    }
    EditResult made = applyEdits(document_, edits_, byteEdits_);
    tellRefusals(made.refused);
    std::stable_sort(result_.problems.begin(), result_.problems.end(),
                     [](const Problem& a, const Problem& b) { return a.offset < b.offset; });
    noteChanges(made);
    result_.bytes = std::move(made.bytes);
    return std::move(result_);
  }

 private:
  void takeEdits(std::vector<Edit> edits) {
    edits_ = std::move(edits);
    for (const Edit& edit : edits_) {
      wanted_.push_back({document_.references()[edit.reference].span, edit.value});
    }
  }

  void take(const ListedEdit& edit) {
    if (!edit.isUrl) {
      byteEdits_.push_back({edit.span, edit.text, edit.expected});
      wantedBytes_.push_back({edit.span, edit.text, edit.line});
      return;
    }
    const Wanted wanted = {edit.span, edit.text, edit.line};
    const std::optional<std::size_t> reference = referenceAt(edit.span);
    if (!reference) return tellRefusal(wanted, sentenceOf(EditRefusal::noReference));
    edits_.push_back({*reference, edit.text, edit.expected});
    wanted_.push_back(wanted);
  }

  std::optional<std::size_t> referenceAt(Span span) const {
    const auto place = [](Span each) { return std::pair(each.begin, each.end); };
    const std::vector<Reference>& all = document_.references();
    const auto found = std::lower_bound(all.begin(), all.end(), place(span),
                                        [&](const Reference& reference, const auto& wanted) {
                                          return place(reference.span) < wanted;
                                        });
    if (found == all.end() || place(found->span) != place(span)) return std::nullopt;
    return static_cast<std::size_t>(found - all.begin());
  }

  void tellRefusals(const std::vector<RefusedEdit>& refused) {
    for (const RefusedEdit& edit : refused) {
      const bool isByteEdit = edit.edit >= edits_.size();
      tellRefusal(isByteEdit ? wantedBytes_[edit.edit - edits_.size()] : wanted_[edit.edit],
                  sentenceOf(edit.reason));
    }
  }

  void tellRefusal(const Wanted& wanted, std::string_view sentence) {
    if (!lines_) lines_.emplace(document_);
    const auto size = static_cast<std::uint32_t>(document_.bytes().size());
    const Position position = lines_->at(std::min(wanted.span.begin, size));
    const std::string place = std::to_string(position.line) + ":" + std::to_string(position.column);
    std::string text = "offset " + std::to_string(wanted.span.begin) + ": ";
    if (wanted.line != 0) text += "line " + std::to_string(wanted.line) + " of the edits: ";
    text.append(sentence).append(": \"").append(printable(wanted.text)).append("\"");
    result_.problems.push_back({place, std::move(text), wanted.span.begin});
  }

  void noteChanges(const EditResult& made) {
    std::vector<bool> isRefused(edits_.size() + byteEdits_.size(), false);
    for (const RefusedEdit& edit : made.refused) isRefused[edit.edit] = true;
    for (std::size_t i = 0; i < isRefused.size(); ++i) {
      if (isRefused[i]) continue;
      const Span before = i < edits_.size() ? wanted_[i].span : byteEdits_[i - edits_.size()].span;
      result_.changes.push_back({before, made.spans[i]});
    }
    std::sort(result_.changes.begin(), result_.changes.end(),
              [](const ChangedBytes& a, const ChangedBytes& b) {
                return a.before.begin < b.before.begin;
              });
  }

  const Document& document_;
  std::string_view url_;
  const RewriteOptions& options_;
  std::vector<Edit> edits_;
  std::vector<ByteEdit> byteEdits_;
  std::vector<Wanted> wanted_, wantedBytes_;  // beside edits_ and byteEdits_
  std::optional<LineIndex> lines_;
  Rewritten result_;
};

}  // namespace

Rewritten rewritten(std::string_view bytes, const std::string& name, const RewriteOptions& options,
                    const std::vector<ListedEdit>* edits) {
  std::string url = options.reading.url;
  if (!options.folder.empty()) {
    url = urlOfFile(name, options.folder, options.folderUrl);
    if (url.empty()) {
      Rewritten result;
      result.problems.push_back({"", "not a file in " + options.folder});
      return result;
    }
  }
  if (options.reading.isCss || isNamedLikeSheet(name)) {
    const StyleSheet sheet(bytes, {url, options.reading.charset});
    return InputRewriter<StyleSheet>(sheet, url, options).rewrite(edits);
  }
  PageOptions reading = options.reading.pageOptions();
  reading.url = url;
  const Page page(bytes, reading);
  return InputRewriter<Page>(page, url, options).rewrite(edits);
}

}  // namespace pagescan::tool
