// The kernel that looks at the bytes of links, each version beside a plain loop.
#include "base/url_bytes.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "base/kernels.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

constexpr std::size_t kMost = 64;

template <typename IsWanted>
std::uint64_t placesOf(std::string_view text, const IsWanted& isWanted) {
  std::uint64_t result = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isWanted(text[i])) result |= std::uint64_t{1} << i;
  }
  return result;
}

void expectSame(std::string_view text) {
  const UrlBytes found = kernels().urlBytes(text.data(), text.size());
  const std::string shown = testing::PrintToString(text);
  ASSERT_EQ(found.changed, placesOf(text, [](char c) { return !kKeptUrlBytes.contains(c); }))
      << shown;
  ASSERT_EQ(found.ampersands, placesOf(text, [](char c) { return c == '&'; })) << shown;
  ASSERT_EQ(found.slashes, placesOf(text, [](char c) { return c == '/'; })) << shown;
  ASSERT_EQ(found.dots, placesOf(text, [](char c) { return c == '.' || c == '%'; })) << shown;
  ASSERT_EQ(found.hostBytes, placesOf(text, [](char c) { return kKeptHostBytes.contains(c); }))
      << shown;
}

TEST(UrlBytes, TellsEachByteAtEachPlace) {
  forEachKernelLevel([] {
    for (std::size_t at = 0; at < kMost; ++at) {
      for (int byte = 0; byte < 256; ++byte) {
        std::string text(kMost, 'a');
        text[at] = static_cast<char>(byte);
        expectSame(text);
      }
    }
  });
}

TEST(UrlBytes, ReadsNothingElse) {
  RandomTexts random;
  forEachKernelLevel([&] {
    for (std::size_t size = 1; size <= kMost; ++size) {
      for (std::size_t i = inShortOrDeepRun(10, 10000); i > 0; --i) {
        std::string text(size, '\0');
        for (char& c : text) c = static_cast<char>(random.number(256));
        for (const Placement::Kind kind : Placement::kKinds) {
          Placement place(kind);
          expectSame(place.bytes(text));
        }
      }
    }
  });
}

}  // namespace
}  // namespace pagescan::tests
