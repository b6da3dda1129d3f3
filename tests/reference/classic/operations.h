// The slow twins as operations from arguments to outputs, for comparisons with expected answers and
// with the library.
#ifndef PAGESCAN_TESTS_REFERENCE_OPERATIONS_H
#define PAGESCAN_TESTS_REFERENCE_OPERATIONS_H

#include <string>
#include <vector>

#include "support/golden_cases.h"

namespace reference {

// The single output "endless" stands for a call that does not return.
const pagescan::tests::OperationTable& operations();

std::vector<pagescan::tests::GoldenRecord> parsePage(const std::string& pageUrl,
                                                     const std::string& page);

}  // namespace reference

#endif
