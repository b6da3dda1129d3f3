// The main() of the test programs: all tests, under the locale that the environment names.

#include <gtest/gtest.h>

#include <cctype>
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <locale>
#include <string_view>

namespace {

// Whether letters and numbers are not those of the "C" locale.
bool differsFromC() {
  return std::isalpha(0xE4) != 0 && std::string_view(std::localeconv()->decimal_point) == ",";
}

// Makes a host's locale that of the process and of its streams.
// Fails   std::runtime_error when there is no such locale.
void useLocale(const char* name) {
  const std::locale locale(name);
  std::locale::global(locale);
  std::cout.imbue(locale);
  std::cout << "Locale: " << std::setlocale(LC_ALL, nullptr) << std::endl;
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (const char* const name = std::getenv("PAGESCAN_TEST_LOCALE")) {
    useLocale(name);
    if (!differsFromC()) return EXIT_FAILURE;
  }
  return RUN_ALL_TESTS();
}
