// A sequence of operations on a dictionary and a list, beside std::map and std::vector.

#include <map>
#include <memory>
#include <vector>

#include "rw/rwbounds.h"
#include "rw/rwcollectables.h"
#include "rw/rwhashdictionary.h"
#include "rw/rwordered.h"
#include "support/input.h"

namespace {

using fuzz::check;
using fuzz::Input;

int valueOf(const RWCollectable* value) {
  return static_cast<const RWCollectableInt*>(value)->value();
}

class Sequence {
 public:
  explicit Sequence(Input& input) : input_(input) {}
  Sequence(const Sequence&) = delete;
  Sequence& operator=(const Sequence&) = delete;
  ~Sequence() {
    dictionary_.clearAndDestroy();
    list_.clearAndDestroy();
  }

  void run() {
    for (int number = 0; !input_.isEmpty(); ++number) {
      switch (input_.number(5)) {
        case 0:
        case 1:
          insert(number);
          break;
        case 2:
          lookUp();
          break;
        case 3:
          checkAll(dictionary_, list_);
          break;
        default:
          empty();
      }
    }
    checkAll(RWHashDictionary(dictionary_), RWOrdered(list_));
  }

 private:
  void insert(int number) {
    list_.insert(new RWCollectableInt(number));
    numbers_.push_back(number);
    const std::string name(input_.text());
    auto key = std::make_unique<RWCollectableString>(fuzz::stringOf(name));
    auto value = std::make_unique<RWCollectableInt>(number);
    const bool isNew = expected_.emplace(name, number).second;
    RWCollectable* const inserted = dictionary_.insertKeyAndValue(key.get(), value.get());
    check(inserted == (isNew ? key.get() : nullptr), "a key is inserted once");
    if (!isNew) return;
    static_cast<void>(key.release());
    static_cast<void>(value.release());
  }

  void lookUp() {
    const std::string name(input_.text());
    const RWCollectableString key(fuzz::stringOf(name));
    const auto found = expected_.find(name);
    const bool isThere = found != expected_.end();
    check(dictionary_.contains(&key) == isThere, "a key is found when it was inserted");
    if (isThere)
      check(valueOf(dictionary_.findValue(&key)) == found->second, "a key has its value");
    const std::size_t index = input_.number(256);
    try {
      check(valueOf(list_.at(index)) == numbers_.at(index), "a list keeps its order");
    } catch (const RWBoundsErr&) {
      check(index >= numbers_.size(), "an index in range is served");
    }
  }

  void empty() {
    dictionary_.clearAndDestroy();
    expected_.clear();
    list_.clearAndDestroy();
    numbers_.clear();
  }

  void checkAll(const RWHashDictionary& dictionary, const RWOrdered& list) const {
    check(dictionary.entries() == expected_.size(), "a dictionary counts its pairs");
    std::map<std::string, int> seen;
    RWHashDictionaryIterator next(dictionary);
    while (const RWCollectable* const key = next()) {
      seen.emplace(fuzz::textOf(*static_cast<const RWCollectableString*>(key)),
                   valueOf(next.value()));
    }
    check(seen == expected_, "an iterator visits each pair once");
    check(list.entries() == numbers_.size(), "a list counts its elements");
    for (std::size_t i = 0; i < numbers_.size(); ++i) {
      check(valueOf(list.at(i)) == numbers_[i], "a list keeps its order");
    }
  }

  Input& input_;
  RWHashDictionary dictionary_;
  RWOrdered list_;
  std::map<std::string, int> expected_;
  std::vector<int> numbers_;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  Sequence(input).run();
  return 0;
}
