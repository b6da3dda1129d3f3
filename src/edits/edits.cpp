// Makes edits: finds what each is to write, writes all at once, and reads the result again.
#include "pagescan/edits.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <tuple>
#include <utility>

#include "edits/changes.h"
#include "edits/page_encoder.h"
#include "edits/rereading.h"
#include "edits/spelling.h"
#include "edits/surroundings.h"
#include "page/page_state.h"

namespace pagescan {
namespace {

using namespace internal;

constexpr std::uint64_t kMostBytes = std::numeric_limits<std::uint32_t>::max();

// After this many readings that showed something wrong, nothing is changed.
constexpr int kMostReadings = 3;

const PageReading& readingOf(const Page& page) {
  return *page.state().reading;
}
const PageReading& readingOf(const StyleSheet& sheet) {
  return sheet.state().reading;
}

Surroundings surroundingsIn(const Page&, SurroundingsFinder& finder, const Reference& reference) {
  return finder.find(reference);
}
Surroundings surroundingsIn(const StyleSheet&, SurroundingsFinder&, const Reference&) {
  return {Holder::sheet, {}};
}

bool isDivided(std::string_view raw, Holder holder) {
  return holder == Holder::svgText &&
         (raw.find('<') != std::string_view::npos || raw.find("]]>") != std::string_view::npos);
}

// ISO-2022-JP: the escape sequence that leads from the state before some bytes to that after them,
// where what follows relies on it. What is written in their place is ASCII.
std::string_view lastShift(std::string_view page, Span span) {
  constexpr char kEscape = '\x1B';
  constexpr std::size_t kLength = 3;
  const std::string_view raw = page.substr(span.begin, span.end - span.begin);
  const std::size_t last = raw.rfind(kEscape);
  const bool isShiftedNext = span.end < page.size() && page[span.end] == kEscape;
  return last == std::string_view::npos || isShiftedNext ? std::string_view()
                                                         : raw.substr(last, kLength);
}

// All edits of one page or style sheet.
template <typename Document>
class EditRun {
 public:
  EditRun(const Document& document, const std::vector<Edit>& edits,
          const std::vector<ByteEdit>& byteEdits)
      : document_(document), edits_(edits), byteEdits_(byteEdits) {}

  EditResult run() {
    planEdits();
    planByteEdits();
    refuseOverlaps();
    for (int reading = 0; reading < kMostReadings; ++reading) {
      if (tryChanges()) return finish();
    }
    for (const Change& change : planned_) refuse(change.edit, EditRefusal::changesOthers);
    planned_.clear();
    tryChanges();
    return finish();
  }

 private:
  void refuse(std::size_t edit, EditRefusal reason) { result_.refused.push_back({edit, reason}); }

  std::string_view bytesAt(Span span) const {
    return document_.bytes().substr(span.begin, span.end - span.begin);
  }

  // In the order of the page, as the surroundings are looked for.
  void planEdits() {
    std::vector<std::size_t> order(edits_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
      return std::pair(edits_[a].reference, a) < std::pair(edits_[b].reference, b);
    });
    SurroundingsFinder finder(readingOf(document_));
    PageEncoder encoder(readingOf(document_).encoding);
    for (const std::size_t i : order) {
      const auto refusal = planEdit(i, finder, encoder);
      if (refusal) refuse(i, *refusal);
    }
  }

  std::optional<EditRefusal> planEdit(std::size_t i, SurroundingsFinder& finder,
                                      PageEncoder& encoder) {
    const Edit& edit = edits_[i];
    if (edit.reference >= document_.references().size()) return EditRefusal::noReference;
    const Reference& reference = document_.references()[edit.reference];
    const std::string value = document_.value(reference);
    if (edit.expected && *edit.expected != value) return EditRefusal::notExpected;
    Change change{reference.span, {}, i, edit.reference};
    if (edit.value == value) {
      change.bytes.value = document_.raw(reference);
    } else {
      const Surroundings around = surroundingsIn(document_, finder, reference);
      if (isDivided(document_.raw(reference), around.holder)) return EditRefusal::dividedByMarkup;
      const auto refusal = spell(edit.value, reference.slot, around, encoder, change.bytes);
      if (refusal) return refusal;
      if (readingOf(document_).encoding == Encoding::iso2022Jp) {
        change.bytes.after += lastShift(document_.bytes(), reference.span);
      }
    }
    planned_.push_back(std::move(change));
    return std::nullopt;
  }

  void planByteEdits() {
    for (std::size_t i = 0; i < byteEdits_.size(); ++i) {
      const ByteEdit& edit = byteEdits_[i];
      const std::size_t number = edits_.size() + i;
      const bool isInPage = edit.span.begin <= edit.span.end &&
                            edit.span.end <= document_.bytes().size() && document_.error().empty();
      if (!isInPage) {
        refuse(number, EditRefusal::noReference);
      } else if (edit.expected && *edit.expected != bytesAt(edit.span)) {
        refuse(number, EditRefusal::notExpected);
      } else {
        planned_.push_back({edit.span, {{}, edit.bytes, {}}, number, kNoReference});
      }
    }
  }

  // Of two that overlap the one that comes first is made.
  void refuseOverlaps() {
    const auto place = [](const Change& change) {
      return std::tuple(change.span.begin, change.span.end, change.edit);
    };
    std::sort(planned_.begin(), planned_.end(),
              [&](const Change& a, const Change& b) { return place(a) < place(b); });
    const Change* last = nullptr;
    std::vector<Change> kept;
    kept.reserve(planned_.size());
    for (Change& change : planned_) {
      const bool isAtSamePlace = last != nullptr && last->span.begin == change.span.begin &&
                                 last->span.end == change.span.end;
      if (last != nullptr && (isAtSamePlace || change.span.begin < last->span.end)) {
        refuse(change.edit, EditRefusal::overlaps);
      } else {
        kept.push_back(std::move(change));
        last = &kept.back();
      }
    }
    planned_ = std::move(kept);
  }

  // Makes the planned changes, or drops those that something is wrong with. Returns whether the
  // result is right.
  bool tryChanges() {
    Changes changes(std::move(planned_));
    planned_.clear();
    if (changes.sizeAfter(document_.bytes()) > kMostBytes) {
      for (const Change& change : changes.all()) refuse(change.edit, EditRefusal::tooLarge);
      return false;
    }
    result_.bytes = changes.applyTo(document_.bytes());
    noteSpans(changes);
    if (result_.bytes == document_.bytes()) return true;
    const Document again(result_.bytes, optionsOf(document_.state()));
    std::vector<const std::string*> values;
    for (const Change& change : changes.all()) {
      const bool isOfReference = change.reference != kNoReference;
      values.push_back(isOfReference ? &edits_[change.edit].value : nullptr);
    }
    const Blame blame = Rereading<Document>(document_, again, changes, values).compare();
    return keepBlameless(changes, blame);
  }

  void noteSpans(const Changes& changes) {
    result_.spans.assign(edits_.size() + byteEdits_.size(), Span());
    for (std::size_t i = 0; i < changes.all().size(); ++i) {
      result_.spans[changes.all()[i].edit] = changes.valueAfter(i);
    }
  }

  bool keepBlameless(const Changes& changes, const Blame& blame) {
    for (std::size_t i = 0; i < blame.size(); ++i) {
      if (blame[i]) {
        refuse(changes.all()[i].edit, *blame[i]);
      } else {
        planned_.push_back(changes.all()[i]);
      }
    }
    return planned_.size() == blame.size();
  }

  EditResult finish() {
    std::sort(result_.refused.begin(), result_.refused.end(),
              [](const RefusedEdit& a, const RefusedEdit& b) { return a.edit < b.edit; });
    return std::move(result_);
  }

  const Document& document_;
  const std::vector<Edit>& edits_;
  const std::vector<ByteEdit>& byteEdits_;
  std::vector<Change> planned_;
  EditResult result_;
};

}  // namespace

EditResult applyEdits(const Page& page, const std::vector<Edit>& edits,
                      const std::vector<ByteEdit>& byteEdits) {
  return EditRun<Page>(page, edits, byteEdits).run();
}

EditResult applyEdits(const StyleSheet& sheet, const std::vector<Edit>& edits,
                      const std::vector<ByteEdit>& byteEdits) {
  return EditRun<StyleSheet>(sheet, edits, byteEdits).run();
}

}  // namespace pagescan
