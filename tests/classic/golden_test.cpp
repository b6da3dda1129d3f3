// Holds the library to expected answers that were worked out independently.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/golden_cases.h"
#include "support/library_operations.h"

namespace pagescan::tests {
namespace {

std::vector<std::string> operationNames() {
  std::vector<std::string> names;
  for (const auto& [name, operation] : libraryOperations()) names.push_back(name);
  return names;
}

class Golden : public testing::TestWithParam<std::string> {};

TEST_P(Golden, GivesEveryExpectedAnswer) {
  checkGoldenCases(GetParam(), libraryOperations().at(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Operations, Golden, testing::ValuesIn(operationNames()),
                         [](const auto& operation) { return operation.param; });

TEST(GoldenTable, HasEveryOperationOfTheCaseFile) {
  checkEveryOperationIsRun(libraryOperations());
}

TEST(GoldenPages, GiveEveryExpectedRecord) {
  checkGoldenPages(PAGESCAN_SHARED_DIR, parsePageWithLibrary);
}

}  // namespace
}  // namespace pagescan::tests
