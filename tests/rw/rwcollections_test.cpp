#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <functional>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "rw/rwbounds.h"
#include "rw/rwcollectables.h"
#include "rw/rwhashdictionary.h"
#include "rw/rwordered.h"
#include "support/allocation_count.h"
#include "support/placement.h"

// The library only names these.
class RWFile {};
class RWvistream {};
class RWvostream {};

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

// Counts the objects alive, to see who deletes what.
class Counted : public RWCollectableString {
 public:
  Counted(const char* text, int& alive) : RWCollectableString(text), alive_(alive) { ++alive_; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ~Counted() override { --alive_; }

 private:
  int& alive_;
};

// --- Elements ---------------------------------------------------------------------------------

struct KeyCase {
  Here here;
  std::string_view a;
  std::string_view b;
  int order;
};
constexpr KeyCase kKeys[] = {
    {HERE, ""sv, ""sv, 0},
    {HERE, "src"sv, "src"sv, 0},
    {HERE, "src"sv, "SRC"sv, 1},
    {HERE, "src"sv, "srcs"sv, -1},
    {HERE, "a\0b"sv, "a\0b"sv, 0},
    {HERE, "a\0b"sv, "a\0c"sv, -1},
    {HERE, "a key that is too long for the object"sv, "a key that is too long for the object"sv, 0},
};

TEST(RWCollectableString, EqualsByItsBytes) {
  forEachPlacement(kKeys, [](const KeyCase& row, Placement& place) {
    const RWCollectableString a(place.string(row.a));
    const RWCollectableString b(place.string(row.b));
    EXPECT_EQ(a.isEqual(&b), row.order == 0);
    EXPECT_EQ(b.isEqual(&a), row.order == 0);
    const int order = a.compareTo(static_cast<const RWCollectable*>(&b));
    EXPECT_EQ((order > 0) - (order < 0), row.order);
    EXPECT_EQ(a.RWCString::compareTo(b) == 0, row.order == 0);
    if (row.order == 0) {
      EXPECT_EQ(static_cast<const RWCollectable&>(a).hash(),
                static_cast<const RWCollectable&>(b).hash());
    }
  });
}

TEST(RWCollectableString, ComparesWithATextInEitherCase) {
  const RWCollectableString text(RWCString("Src"));
  EXPECT_EQ(text.compareTo("Src", RWCString::exact), 0);
  EXPECT_NE(text.compareTo("src", RWCString::exact), 0);
  EXPECT_EQ(text.compareTo("sRC", RWCString::ignoreCase), 0);
  EXPECT_NE(text.compareTo("sRCs", RWCString::ignoreCase), 0);
}

TEST(RWCollectableString, SharesTheBytesOfItsSource) {
  const RWCString source("a text that is certainly too long to stand in the object");
  const RWCollectableString made(source);
  EXPECT_EQ(made.data(), source.data());
}

TEST(RWCollectableString, CopiesItself) {
  const RWCollectableString text("Src");
  const std::unique_ptr<RWCollectable> copy(text.copy());
  const std::unique_ptr<RWCollectable> fresh(text.newSpecies());
  EXPECT_TRUE(text.isEqual(copy.get()));
  const auto* const empty = dynamic_cast<RWCollectableString*>(fresh.get());
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(empty->length(), 0U);
}

TEST(RWCollectableInt, HoldsAndComparesOneNumber) {
  EXPECT_EQ(RWCollectableInt(42).value(), 42);
  EXPECT_EQ(RWCollectableInt(-1).value(), -1);
  EXPECT_EQ(RWCollectableInt().value(), 0);
  const RWCollectableInt low(-5);
  const RWCollectableInt high(7);
  const RWCollectableInt same(7);
  EXPECT_LT(low.compareTo(&high), 0);
  EXPECT_GT(high.compareTo(&low), 0);
  EXPECT_EQ(high.compareTo(&same), 0);
  EXPECT_TRUE(high.isEqual(&same));
  EXPECT_FALSE(high.isEqual(&low));
  EXPECT_EQ(high.hash(), same.hash());
  const std::unique_ptr<RWCollectable> copy(high.copy());
  EXPECT_TRUE(high.isEqual(copy.get()));
  const std::unique_ptr<RWCollectable> fresh(high.newSpecies());
  EXPECT_TRUE(RWCollectableInt(0).isEqual(fresh.get()));
}

TEST(RWCollectable, ObjectsOfDifferentKindsAreNeverEqual) {
  const RWCollectableInt number(0);
  const RWCollectableString text("");
  const RWCollectable plain;
  EXPECT_FALSE(number.isEqual(&text));
  EXPECT_FALSE(text.isEqual(&number));
  EXPECT_FALSE(text.isEqual(&plain));
  EXPECT_FALSE(plain.isEqual(&text));
}

TEST(RWCollectable, NothingEqualsNull) {
  EXPECT_FALSE(RWCollectable().isEqual(nullptr));
  EXPECT_FALSE(RWCollectableString("").isEqual(nullptr));
  EXPECT_FALSE(RWCollectableInt(0).isEqual(nullptr));
}

TEST(RWCollectable, ObjectsOfDifferentKindsSortByAddress) {
  const RWCollectableInt number(7);
  const RWCollectableString text("7");
  const RWCollectable* const objects[] = {&number, &text};
  const bool numberComesFirst = std::less<>()(objects[0], objects[1]);
  EXPECT_EQ(number.compareTo(objects[1]) < 0, numberComesFirst);
  EXPECT_EQ(text.compareTo(objects[0]) < 0, !numberComesFirst);
  EXPECT_NE(number.compareTo(objects[1]), 0);
  EXPECT_NE(text.compareTo(objects[0]), 0);
}

TEST(RWCollectable, IsIdentifiedByItsAddress) {
  const RWCollectable objects[2];
  EXPECT_TRUE(objects[0].isEqual(&objects[0]));
  EXPECT_FALSE(objects[0].isEqual(&objects[1]));
  EXPECT_EQ(objects[0].hash(), objects[0].hash());
  EXPECT_EQ(objects[0].compareTo(&objects[0]), 0);
  EXPECT_LT(objects[0].compareTo(&objects[1]), 0);
  EXPECT_GT(objects[1].compareTo(&objects[0]), 0);
  EXPECT_EQ(objects[0].isA(), 0);
  const std::unique_ptr<RWCollectable> copy(objects[0].copy());
  EXPECT_FALSE(objects[0].isEqual(copy.get()));
  const std::unique_ptr<RWCollectable> fresh(objects[0].newSpecies());
  EXPECT_NE(fresh.get(), nullptr);
}

TEST(RWCollectable, IsNeverStored) {
  RWFile file;
  RWvistream in;
  RWvostream out;
  RWCollectableInt number(7);
  number.saveGuts(file);
  number.saveGuts(out);
  number.restoreGuts(file);
  number.restoreGuts(in);
  EXPECT_EQ(number.value(), 7);
  EXPECT_EQ(number.binaryStoreSize(), 0U);
}

// --- RWOrdered --------------------------------------------------------------------------------

TEST(RWOrdered, KeepsTheOrderOfInsertion) {
  std::vector<RWCollectableInt> numbers;
  for (int i = 0; i < 1000; ++i) numbers.emplace_back(i);
  RWOrdered list;
  EXPECT_EQ(list.entries(), 0U);
  for (RWCollectableInt& number : numbers) EXPECT_EQ(list.insert(&number), &number);
  ASSERT_EQ(list.entries(), numbers.size());
  for (std::size_t i = 0; i < numbers.size(); ++i) EXPECT_EQ(list.at(i), &numbers[i]);
}

TEST(RWOrdered, TestsTheBoundsOfAnIndex) {
  RWCollectableInt number(1);
  RWOrdered list;
  EXPECT_THROW(list.at(0), RWBoundsErr);
  list.insert(&number);
  EXPECT_EQ(list.at(0), &number);
  EXPECT_THROW(list.at(1), RWBoundsErr);
  EXPECT_THROW(list.at(RWCString::npos), RWBoundsErr);
}

TEST(RWOrdered, ClearForgetsWithoutDeleting) {
  int alive = 0;
  const auto element = std::make_unique<Counted>("a", alive);
  {
    RWOrdered list;
    list.insert(element.get());
    list.clear();
    EXPECT_EQ(list.entries(), 0U);
    list.insert(element.get());
  }
  EXPECT_EQ(alive, 1);
}

TEST(RWOrdered, ClearAndDestroyDeletesEveryElement) {
  int alive = 0;
  RWOrdered list;
  for (int i = 0; i < 100; ++i) list.insert(new Counted("a", alive));
  EXPECT_EQ(alive, 100);
  list.clearAndDestroy();
  EXPECT_EQ(alive, 0);
  EXPECT_EQ(list.entries(), 0U);
  list.insert(new Counted("b", alive));
  EXPECT_EQ(list.entries(), 1U);
  list.clearAndDestroy();
  list.clearAndDestroy();
  EXPECT_EQ(alive, 0);
}

TEST(RWOrdered, HoldsNullElements) {
  RWOrdered list;
  EXPECT_EQ(list.insert(nullptr), nullptr);
  ASSERT_EQ(list.entries(), 1U);
  EXPECT_EQ(list.at(0), nullptr);
  list.clearAndDestroy();
  EXPECT_EQ(list.entries(), 0U);
}

TEST(RWOrdered, CopiesHoldTheSameElements) {
  for (const std::size_t count : {0U, 1U, 2U, 3U, 20U}) {
    std::vector<RWCollectableInt> numbers(count);
    RWOrdered list;
    for (RWCollectableInt& number : numbers) list.insert(&number);
    RWOrdered copy(list);
    const std::unique_ptr<RWCollectable> cloned(list.copy());
    const auto* const clone = dynamic_cast<RWOrdered*>(cloned.get());
    ASSERT_NE(clone, nullptr);
    ASSERT_EQ(copy.entries(), count);
    ASSERT_EQ(clone->entries(), count);
    for (std::size_t i = 0; i < count; ++i) {
      EXPECT_EQ(copy.at(i), &numbers[i]);
      EXPECT_EQ(clone->at(i), &numbers[i]);
    }
    RWCollectableInt more(1);
    copy.insert(&more);
    EXPECT_EQ(list.entries(), count);
    const std::unique_ptr<RWCollectable> fresh(list.newSpecies());
    EXPECT_EQ(dynamic_cast<RWOrdered&>(*fresh).entries(), 0U);
  }
}

TEST(RWOrdered, AllocatesNothingForTwoElements) {
  RWCollectableInt number(1);
  EXPECT_EQ(allocationsOf([&] {
              RWOrdered list;
              list.insert(&number);
              list.insert(&number);
            }),
            0U);
}

// --- RWHashDictionary -------------------------------------------------------------------------

std::string keyText(int i) {
  return "key" + std::to_string(i);
}

// A dictionary of `count` pairs, key i and value i, whose objects the test owns.
struct Filled {
  explicit Filled(int count, std::size_t buckets = 0) : dictionary(buckets) {
    for (int i = 0; i < count; ++i) {
      keys.push_back(std::make_unique<RWCollectableString>(keyText(i).c_str()));
      values.push_back(std::make_unique<RWCollectableInt>(i));
      EXPECT_EQ(dictionary.insertKeyAndValue(keys.back().get(), values.back().get()),
                keys.back().get());
    }
  }

  RWHashDictionary dictionary;
  std::vector<std::unique_ptr<RWCollectableString>> keys;
  std::vector<std::unique_ptr<RWCollectableInt>> values;
};

void expectFinds(const RWHashDictionary& dictionary, const Filled& filled) {
  EXPECT_EQ(dictionary.entries(), filled.keys.size());
  for (std::size_t i = 0; i < filled.keys.size(); ++i) {
    const RWCollectableString wanted(keyText(static_cast<int>(i)).c_str());
    EXPECT_TRUE(dictionary.contains(&wanted));
    EXPECT_EQ(dictionary.find(&wanted), filled.keys[i].get());
    EXPECT_EQ(dictionary.findValue(&wanted), filled.values[i].get());
    RWCollectable* value = nullptr;
    EXPECT_EQ(dictionary.findKeyAndValue(&wanted, value), filled.keys[i].get());
    EXPECT_EQ(value, filled.values[i].get());
  }
}

TEST(RWHashDictionary, FindsWhatWasInserted) {
  for (const int count : {0, 1, 2, 3, 4, 5, 8, 9, 16, 17, 100, 5000}) {
    for (const std::size_t buckets : {0U, 1U, 7U, 113U}) {
      const Filled filled(count, buckets);
      expectFinds(filled.dictionary, filled);
    }
  }
}

TEST(RWHashDictionary, MissesWhatIsNotThere) {
  for (const int count : {0, 1, 2, 3, 100}) {
    const Filled filled(count);
    const char* const absent[] = {"", "key", "KEY0", "key0 ", "key5001"};
    for (const char* const text : absent) {
      const RWCollectableString wanted(text);
      EXPECT_FALSE(filled.dictionary.contains(&wanted));
      EXPECT_EQ(filled.dictionary.find(&wanted), nullptr);
      EXPECT_EQ(filled.dictionary.findValue(&wanted), nullptr);
      RWCollectable* value = nullptr;
      EXPECT_EQ(filled.dictionary.findKeyAndValue(&wanted, value), nullptr);
      EXPECT_EQ(value, nullptr);
    }
  }
}

TEST(RWHashDictionary, RefusesAnEqualKey) {
  for (const int count : {1, 2, 3, 50}) {
    Filled filled(count);
    for (int i = 0; i < count; ++i) {
      RWCollectableString again(keyText(i).c_str());
      RWCollectableInt other(-1);
      EXPECT_EQ(filled.dictionary.insertKeyAndValue(&again, &other), nullptr);
    }
    expectFinds(filled.dictionary, filled);
  }
}

TEST(RWHashDictionary, KeepsKeysOfDifferentCaseApart) {
  RWCollectableString lower("src");
  RWCollectableString upper("SRC");
  RWCollectableInt value(1);
  RWHashDictionary dictionary;
  EXPECT_NE(dictionary.insertKeyAndValue(&lower, &value), nullptr);
  EXPECT_FALSE(dictionary.contains(&upper));
  EXPECT_NE(dictionary.insertKeyAndValue(&upper, &value), nullptr);
  EXPECT_EQ(dictionary.entries(), 2U);
}

TEST(RWHashDictionary, TakesKeysOfAnyKind) {
  RWCollectableInt number(7);
  RWCollectableString text("7");
  RWCollectable plain;
  RWCollectable otherPlain;
  RWCollectableInt value(1);
  RWHashDictionary dictionary;
  EXPECT_NE(dictionary.insertKeyAndValue(&number, &value), nullptr);
  EXPECT_NE(dictionary.insertKeyAndValue(&text, &value), nullptr);
  EXPECT_NE(dictionary.insertKeyAndValue(&plain, &value), nullptr);
  const RWCollectableInt sameNumber(7);
  EXPECT_EQ(dictionary.find(&sameNumber), &number);
  EXPECT_EQ(dictionary.find(&plain), &plain);
  EXPECT_EQ(dictionary.find(&otherPlain), nullptr);
}

TEST(RWHashDictionary, HoldsNullValues) {
  RWCollectableString key("key");
  RWHashDictionary dictionary;
  EXPECT_EQ(dictionary.insertKeyAndValue(&key, nullptr), &key);
  EXPECT_TRUE(dictionary.contains(&key));
  EXPECT_EQ(dictionary.findValue(&key), nullptr);
  dictionary.clear();
  int alive = 0;
  dictionary.insertKeyAndValue(new Counted("key", alive), nullptr);
  dictionary.clearAndDestroy();
  EXPECT_EQ(alive, 0);
}

TEST(RWHashDictionary, TakesAndFindsNoNullKey) {
  Filled filled(2);
  RWCollectableInt value(-1);
  EXPECT_EQ(filled.dictionary.insertKeyAndValue(nullptr, &value), nullptr);
  EXPECT_FALSE(filled.dictionary.contains(nullptr));
  EXPECT_EQ(filled.dictionary.findValue(nullptr), nullptr);
  expectFinds(filled.dictionary, filled);
}

TEST(RWHashDictionary, ClearForgetsWithoutDeleting) {
  int alive = 0;
  const auto key = std::make_unique<Counted>("key", alive);
  const auto value = std::make_unique<Counted>("value", alive);
  {
    RWHashDictionary dictionary;
    dictionary.insertKeyAndValue(key.get(), value.get());
    dictionary.clear();
    EXPECT_EQ(dictionary.entries(), 0U);
    EXPECT_FALSE(dictionary.contains(key.get()));
    EXPECT_EQ(dictionary.insertKeyAndValue(key.get(), value.get()), key.get());
  }
  EXPECT_EQ(alive, 2);
}

TEST(RWHashDictionary, ClearAndDestroyDeletesKeysAndValues) {
  for (const int count : {0, 1, 2, 3, 200}) {
    int alive = 0;
    RWHashDictionary dictionary;
    for (int round = 0; round < 2; ++round) {
      for (int i = 0; i < count; ++i) {
        dictionary.insertKeyAndValue(new Counted(keyText(i).c_str(), alive),
                                     new Counted("value", alive));
      }
      EXPECT_EQ(alive, 2 * count);
      dictionary.clearAndDestroy();
      EXPECT_EQ(alive, 0);
      EXPECT_EQ(dictionary.entries(), 0U);
    }
  }
}

TEST(RWHashDictionary, CopiesHoldTheSameObjects) {
  for (const int count : {0, 1, 2, 3, 100}) {
    const Filled filled(count);
    RWHashDictionary copy(filled.dictionary);
    expectFinds(copy, filled);
    const std::unique_ptr<RWCollectable> cloned(filled.dictionary.copy());
    expectFinds(dynamic_cast<RWHashDictionary&>(*cloned), filled);
    RWCollectableString key("another");
    RWCollectableInt value(1);
    copy.insertKeyAndValue(&key, &value);
    EXPECT_FALSE(filled.dictionary.contains(&key));
    const std::unique_ptr<RWCollectable> fresh(filled.dictionary.newSpecies());
    EXPECT_EQ(dynamic_cast<RWHashDictionary&>(*fresh).entries(), 0U);
  }
}

TEST(RWHashDictionary, AllocatesNothingWhileEmpty) {
  const RWCollectableString key("key");
  EXPECT_EQ(allocationsOf([&] {
              RWHashDictionary dictionary;
              RWHashDictionary sized(113);
              static_cast<void>(dictionary.contains(&key));
              sized.clear();
              dictionary.clearAndDestroy();
            }),
            0U);
}

// A key that counts how often it is hashed.
class HashCounted : public RWCollectableString {
 public:
  explicit HashCounted(const char* text) : RWCollectableString(text) {}
  unsigned hash() const override {
    ++hashes;
    return RWCollectableString::hash();
  }
  mutable int hashes = 0;
};

// A key that counts the comparisons of all keys.
class ComparisonsCounted : public RWCollectableString {
 public:
  explicit ComparisonsCounted(const std::string& text) : RWCollectableString(text.c_str()) {}
  bool isEqual(const RWCollectable* other) const override {
    ++comparisons;
    return RWCollectableString::isEqual(other);
  }
  static inline std::size_t comparisons = 0;
};

// FNV-1a, a hash without a key.
unsigned openHash(unsigned sum, std::string_view text) {
  for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 16777619U;
  return sum;
}

// Names that all have the same open hash: any of two for the first eight bytes, any of two for the
// next eight, and so on.
std::vector<std::string> collidingNames(int pairs) {
  std::vector<std::string> names = {""};
  unsigned sum = 2166136261U;
  for (int pair = 0; pair < pairs; ++pair) {
    std::unordered_map<unsigned, std::string> seen;
    for (unsigned i = 0;; ++i) {
      char text[16];
      std::snprintf(text, sizeof text, "%08x", i * 2654435761U);
      const auto [other, isNew] = seen.try_emplace(openHash(sum, text), text);
      if (isNew) continue;
      sum = other->first;
      for (std::size_t n = names.size(); n-- > 0;) {
        names.push_back(names[n] + text);
        names[n] += other->second;
      }
      break;
    }
  }
  return names;
}

TEST(RWHashDictionary, ComparesFewKeysHoweverTheyWereChosen) {
  const std::vector<std::string> names = collidingNames(8);
  ASSERT_EQ(openHash(2166136261U, names.front()), openHash(2166136261U, names.back()));
  RWHashDictionary dictionary;
  ComparisonsCounted::comparisons = 0;
  for (const std::string& name : names) {
    dictionary.insertKeyAndValue(new ComparisonsCounted(name), nullptr);
  }
  EXPECT_EQ(dictionary.entries(), names.size());
  EXPECT_LT(ComparisonsCounted::comparisons, names.size());
  dictionary.clearAndDestroy();
}

TEST(RWHashDictionary, HashesOncePerCall) {
  for (const int count : {1, 2, 3, 100}) {
    Filled filled(count);
    const HashCounted wanted("key0");
    static_cast<void>(filled.dictionary.contains(&wanted));
    EXPECT_LE(wanted.hashes, 1);
    static_cast<void>(filled.dictionary.findValue(&wanted));
    EXPECT_LE(wanted.hashes, 2);
    HashCounted key("another");
    RWCollectableInt value(1);
    filled.dictionary.insertKeyAndValue(&key, &value);
    EXPECT_LE(key.hashes, 1);
  }
}

// Keys that all hash alike must still be told apart.
class SameHash : public RWCollectableString {
 public:
  explicit SameHash(const char* text) : RWCollectableString(text) {}
  unsigned hash() const override { return 12345; }
};

TEST(RWHashDictionary, TellsKeysOfOneHashApart) {
  std::vector<std::unique_ptr<SameHash>> keys;
  RWHashDictionary dictionary;
  for (int i = 0; i < 200; ++i) {
    keys.push_back(std::make_unique<SameHash>(keyText(i).c_str()));
    EXPECT_EQ(dictionary.insertKeyAndValue(keys.back().get(), keys.back().get()),
              keys.back().get());
  }
  for (const auto& key : keys) EXPECT_EQ(dictionary.findValue(key.get()), key.get());
  const SameHash absent("absent");
  EXPECT_FALSE(dictionary.contains(&absent));
}

TEST(RWHashDictionaryIterator, VisitsEveryPairOnce) {
  for (const int count : {0, 1, 2, 3, 100}) {
    const Filled filled(count);
    RWHashDictionaryIterator next(filled.dictionary);
    std::set<const RWCollectable*> seen;
    while (const RWCollectable* const key = next()) {
      EXPECT_EQ(next.key(), key);
      EXPECT_EQ(next.value(), filled.dictionary.findValue(key));
      EXPECT_TRUE(seen.insert(key).second);
    }
    EXPECT_EQ(seen.size(), filled.keys.size());
    EXPECT_EQ(next(), nullptr);
    EXPECT_EQ(next.key(), nullptr);
    EXPECT_EQ(next.value(), nullptr);
  }
}

TEST(RWHashDictionaryIterator, HasNoPairBeforeTheFirstAdvance) {
  const Filled filled(3);
  const RWHashDictionaryIterator next(filled.dictionary);
  EXPECT_EQ(next.key(), nullptr);
  EXPECT_EQ(next.value(), nullptr);
}

}  // namespace
}  // namespace pagescan::tests
