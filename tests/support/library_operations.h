// The library as operations from arguments to outputs, for comparisons with expected answers and
// with the slow twins.
#ifndef PAGESCAN_TESTS_SUPPORT_LIBRARY_OPERATIONS_H
#define PAGESCAN_TESTS_SUPPORT_LIBRARY_OPERATIONS_H

#include <string>
#include <vector>

#include "support/golden_cases.h"

namespace pagescan::tests {

// The single output "endless" stands for a call that would not return; it is not made.
const OperationTable& libraryOperations();

std::vector<GoldenRecord> parsePageWithLibrary(const std::string& pageUrl, const std::string& page);

}  // namespace pagescan::tests

#endif
