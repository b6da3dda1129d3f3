// Holds the slow twins to expected answers, so that the twins may supply expectations themselves.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "reference/classic/operations.h"
#include "support/golden_cases.h"

namespace {

std::vector<std::string> operationNames() {
  std::vector<std::string> names;
  for (const auto& [name, operation] : reference::operations()) names.push_back(name);
  return names;
}

class ReferenceGolden : public testing::TestWithParam<std::string> {};

TEST_P(ReferenceGolden, GivesEveryExpectedAnswer) {
  pagescan::tests::checkGoldenCases(GetParam(), reference::operations().at(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Operations, ReferenceGolden, testing::ValuesIn(operationNames()),
                         [](const auto& operation) { return operation.param; });

TEST(ReferenceGoldenTable, HasEveryOperationOfTheCaseFile) {
  pagescan::tests::checkEveryOperationIsRun(reference::operations());
}

TEST(ReferenceGoldenPages, GiveEveryExpectedRecord) {
  pagescan::tests::checkGoldenPages(PAGESCAN_SHARED_DIR, reference::parsePage);
}

}  // namespace
