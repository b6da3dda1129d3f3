#include "reference/comparison.h"

#include <gtest/gtest.h>

#include <exception>
#include <iostream>

#include "base/kernels.h"
#include "reference/operations.h"
#include "support/library_operations.h"

namespace reference {

namespace {

constexpr std::size_t kShownDifferences = 3;

pagescan::Texts outputsOf(const pagescan::Operation& operation, const pagescan::Texts& args) {
  try {
    return operation(args);
  } catch (const std::exception& error) {
    return {std::string("threw: ") + error.what()};
  }
}

bool useBestKernels() {
  return pagescan::useKernels(pagescan::KernelLevel::avx2) ||
         pagescan::useKernels(pagescan::KernelLevel::baseline);
}

}  // namespace

Comparison::Comparison(const std::string& op)
    : op_(op), library_(pagescan::libraryOperations().at(op)), twin_(operations().at(op)) {}

Comparison::~Comparison() {
  static_cast<void>(useBestKernels());
  std::cout << op_ << ": " << calls_ << " calls compared" << std::endl;
}

void Comparison::operator()(const pagescan::Texts& args) {
  // By turns over the baseline kernels and the best ones.
  static_cast<void>(++calls_ % 2 == 0 ? useBestKernels()
                                      : pagescan::useKernels(pagescan::KernelLevel::baseline));
  const pagescan::Texts want = outputsOf(twin_, args);
  const pagescan::Texts got = outputsOf(library_, args);
  if (got == want || ++differences_ > kShownDifferences) return;
  ADD_FAILURE() << op_ << "\n  args:    " << testing::PrintToString(args)
                << "\n  twin:    " << testing::PrintToString(want)
                << "\n  library: " << testing::PrintToString(got);
}

}  // namespace reference
