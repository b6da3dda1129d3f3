// Cases of the public suites that stand beside the project.
#ifndef PAGESCAN_TESTS_SUPPORT_SUITE_CASES_H
#define PAGESCAN_TESTS_SUPPORT_SUITE_CASES_H

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace pagescan::tests {

// The bytes of a file; none where it cannot be read.
inline std::string fileBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The JSON text suites/NAME of the shared folder; null where it is missing.
inline nlohmann::json suiteCases(const std::string& sharedDir, const std::string& name) {
  const std::filesystem::path path = std::filesystem::path(sharedDir) / "suites" / name;
  if (!std::filesystem::exists(path)) return nullptr;
  return nlohmann::json::parse(fileBytes(path));
}

// The UTF-16 code units of well-formed UTF-8: some suites count in them.
inline std::size_t utf16Length(std::string_view text) {
  std::size_t length = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80 || byte >= 0xC0) length += byte >= 0xF0 ? 2 : 1;
  }
  return length;
}

}  // namespace pagescan::tests

#endif
