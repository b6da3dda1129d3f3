// Holds the library to its slow twins, one operation with many arguments.
#ifndef PAGESCAN_TESTS_REFERENCE_COMPARISON_H
#define PAGESCAN_TESTS_REFERENCE_COMPARISON_H

#include <cstddef>
#include <string>

#include "support/golden_cases.h"

namespace reference {

class Comparison {
 public:
  // `op` is a name of both tables of operations.
  explicit Comparison(const std::string& op);
  Comparison(const Comparison&) = delete;
  Comparison& operator=(const Comparison&) = delete;

  // Prints how many calls were compared.
  ~Comparison();

  // Fails the test when the outputs differ, for the first few calls where they do.
  void operator()(const pagescan::Texts& args);

 private:
  std::string op_;
  const pagescan::Operation& library_;
  const pagescan::Operation& twin_;
  std::size_t calls_ = 0;
  std::size_t differences_ = 0;
};

}  // namespace reference

#endif
