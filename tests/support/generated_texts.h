// Texts that a test compares two implementations over: all small ones, and random ones.
#ifndef PAGESCAN_TESTS_SUPPORT_GENERATED_TEXTS_H
#define PAGESCAN_TESTS_SUPPORT_GENERATED_TEXTS_H

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/kernels.h"

namespace pagescan::tests {

using namespace internal;

// Whether the environment asks for a run of half an hour instead of a share of a minute.
inline bool isDeepRun() {
  const char* const deep = std::getenv("PAGESCAN_DEEP");
  return deep != nullptr && *deep != '\0' && std::string_view(deep) != "0";
}

// One number for the share of a minute, another one for a deep run.
inline std::size_t inShortOrDeepRun(std::size_t quick, std::size_t deep) {
  return isDeepRun() ? deep : quick;
}

// Sanitizers make each check some times slower, and look at what many texts have in common: there
// one of so many is enough.
#ifdef PAGESCAN_SANITIZED
inline constexpr std::size_t kSanitizedShare = 5;
#else
inline constexpr std::size_t kSanitizedShare = 1;
#endif

// The same, for the number of random texts.
inline std::size_t randomRuns(std::size_t quick, std::size_t deep) {
  return inShortOrDeepRun((quick + kSanitizedShare - 1) / kSanitizedShare, deep);
}

// Calls check(text) for every text of up to `most` pieces of the alphabet.
template <typename Check>
void forEachText(const std::vector<std::string_view>& alphabet, std::size_t most,
                 const Check& check) {
  std::vector<std::size_t> digits;
  for (;;) {
    std::string text;
    for (const std::size_t digit : digits) text += alphabet[digit];
    check(text);
    std::size_t at = 0;
    while (at < digits.size() && ++digits[at] == alphabet.size()) digits[at++] = 0;
    if (at < digits.size()) continue;
    if (digits.size() == most) return;
    digits.push_back(0);
  }
}

// Random texts. The seed is printed, and again when a check fails while the object lives; the
// environment's PAGESCAN_SEED repeats a run.
class RandomTexts {
 public:
  RandomTexts()
      : seed_(newSeed()), random_(seed_), trace_("", 0, "PAGESCAN_SEED=" + std::to_string(seed_)) {
    std::cout << "PAGESCAN_SEED=" << std::to_string(seed_) << std::endl;
  }

  std::size_t number(std::size_t below) { return random_() % below; }

  // Up to `most` pieces, any of them as likely as the others.
  std::string text(const std::vector<std::string_view>& pieces, std::size_t most) {
    std::string result;
    for (std::size_t count = number(most + 1); count > 0; --count) {
      result += pieces[number(pieces.size())];
    }
    return result;
  }

  // Runs of the same piece, so that fast paths get under way.
  std::string textOfRuns(const std::vector<std::string_view>& pieces, std::size_t most) {
    std::string result;
    for (std::size_t count = number(most + 1); count > 0; --count) {
      const std::string_view piece = pieces[number(pieces.size())];
      for (std::size_t run = number(3) == 0 ? number(100) : 1; run > 0; --run) result += piece;
    }
    return result;
  }

  // The text with up to `most` small changes: bytes replaced, taken out, doubled, runs moved.
  std::string mutated(std::string text, std::size_t most) {
    for (std::size_t count = number(most + 1); count > 0 && !text.empty(); --count) {
      const std::size_t at = number(text.size());
      const std::size_t length = 1 + number(8);
      switch (number(5)) {
        case 0:
          text[at] = static_cast<char>(number(256));
          break;
        case 1:
          text.erase(at, length);
          break;
        case 2:
          text.insert(at, 1, text[number(text.size())]);
          break;
        case 3:
          text.insert(number(text.size()), text.substr(at, length));
          break;
        default:
          text[at] = text[number(text.size())];
      }
    }
    return text;
  }

  std::string bytes(std::size_t most) {
    std::string result(number(most + 1), '\0');
    for (char& c : result) c = static_cast<char>(number(256));
    return result;
  }

 private:
  static unsigned newSeed() {
    const char* const given = std::getenv("PAGESCAN_SEED");
    return given ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : std::random_device{}();
  }

  unsigned seed_;
  std::mt19937 random_;
  testing::ScopedTrace trace_;
};

struct NamedKernelLevel {
  KernelLevel level;
  const char* name;
};
inline constexpr NamedKernelLevel kKernelLevels[] = {
    {KernelLevel::portable, "kernels: portable"},
    {KernelLevel::sse2, "kernels: SSE2"},
    {KernelLevel::avx2, "kernels: AVX2"},
    {KernelLevel::avx512, "kernels: AVX-512"},
};

// Calls check() once with each version of the kernels that this machine has; the last one stays.
template <typename Check>
void forEachKernelLevel(const Check& check) {
  for (const NamedKernelLevel& row : kKernelLevels) {
    if (!useKernels(row.level)) continue;
    const testing::ScopedTrace trace("", 0, row.name);
    check();
  }
}

}  // namespace pagescan::tests

#endif
