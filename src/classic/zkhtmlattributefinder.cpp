#include "zkhtmlattributefinder.h"

#include <memory>
#include <string_view>

#include "base/attribute_scan.h"
#include "classic/text_view.h"
#include "rw/rwcollectables.h"
#include "zkhtmlparseutils.h"

using namespace pagescan::internal;

namespace {

constexpr int kNoOffset = -1;

// Both dictionaries of one tag; the first of several attributes of one name wins.
class AttributeTable {
 public:
  AttributeTable(RWHashDictionary& values, RWHashDictionary& offsets)
      : values_(values), offsets_(offsets) {
    values_.clearAndDestroy();
    offsets_.clearAndDestroy();
  }

  void record(std::string_view name, std::string_view value, int offset) {
    RWCollectableString key(stringOf(name));
    key.toLower();
    if (values_.contains(&key)) return;
    insert(values_, key, std::make_unique<RWCollectableString>(stringOf(value)));
    insert(offsets_, key, std::make_unique<RWCollectableInt>(offset));
  }

 private:
  static void insert(RWHashDictionary& table, const RWCollectableString& name,
                     std::unique_ptr<RWCollectable> value) {
    auto key = std::make_unique<RWCollectableString>(name);
    if (!table.insertKeyAndValue(key.get(), value.get())) return;
    key.release();
    value.release();
  }

  RWHashDictionary& values_;
  RWHashDictionary& offsets_;
};

}  // namespace

CHTMLAttributeFinder::CHTMLAttributeFinder() = default;

CHTMLAttributeFinder::~CHTMLAttributeFinder() = default;

void CHTMLAttributeFinder::FindAttributes(RWCString& text, unsigned long& pos,
                                          RWHashDictionary& values, RWHashDictionary& offsets) {
  AttributeTable table(values, offsets);
  htmlSkipWhiteSpaces(text, text.length(), pos);
  const char* end = endOf(text);
  while (pos < text.length()) {
    const ScannedAttribute scanned = scanAttribute(text.data() + pos, end);
    if (scanned.name.empty()) return;
    pos = offsetIn(text, scanned.next);
    const char* value = scanned.value.data();
    table.record(scanned.name, scanned.value,
                 value ? static_cast<int>(offsetIn(text, value)) : kNoOffset);
    if (scanned.isLast) return;
  }
}
