// Holds the library to its slow twins, one operation with many arguments.
//
// For programs that link the twins.
#ifndef PAGESCAN_TESTS_SUPPORT_COMPARISON_H
#define PAGESCAN_TESTS_SUPPORT_COMPARISON_H

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <iostream>
#include <iterator>
#include <string>

#include "base/kernels.h"
#include "reference/classic/operations.h"
#include "support/generated_texts.h"
#include "support/golden_cases.h"
#include "support/library_operations.h"

namespace pagescan::tests {

using namespace internal;

class Comparison {
 public:
  // `op` is a name of both tables of operations.
  explicit Comparison(const std::string& op)
      : op_(op), library_(libraryOperations().at(op)), twin_(reference::operations().at(op)) {}
  Comparison(const Comparison&) = delete;
  Comparison& operator=(const Comparison&) = delete;

  // Prints how many calls were compared.
  ~Comparison() {
    activeKernels = chosenKernels_;
    std::cout << op_ << ": " << calls_ << " calls compared" << std::endl;
  }

  // Fails the test when the outputs differ, for the first few calls where they do. The versions of
  // the kernels take turns.
  void operator()(const Texts& args) {
    useNextKernels();
    const Texts want = outputsOf(twin_, args);
    const Texts got = outputsOf(library_, args);
    if (got == want || ++differences_ > kShownDifferences) return;
    ADD_FAILURE() << op_ << "\n  args:    " << testing::PrintToString(args)
                  << "\n  twin:    " << testing::PrintToString(want)
                  << "\n  library: " << testing::PrintToString(got);
  }

 private:
  static constexpr std::size_t kShownDifferences = 3;

  static Texts outputsOf(const Operation& operation, const Texts& args) {
    try {
      return operation(args);
    } catch (const std::exception& error) {
      return {std::string("threw: ") + error.what()};
    }
  }

  void useNextKernels() {
    const NamedKernelLevel& row = kKernelLevels[calls_++ % std::size(kKernelLevels)];
    if (!useKernels(row.level)) activeKernels = chosenKernels_;
  }

  std::string op_;
  const Operation& library_;
  const Operation& twin_;
  const Kernels* chosenKernels_ = activeKernels;
  std::size_t calls_ = 0;
  std::size_t differences_ = 0;
};

}  // namespace pagescan::tests

#endif
