// The measurements that are no comparisons of speed; each writes its part of the report.
#ifndef PAGESCAN_BENCH_SECTIONS_H
#define PAGESCAN_BENCH_SECTIONS_H

#include <ostream>
#include <string>
#include <vector>

#include "input.h"
#include "measure.h"

namespace pagescan::bench {

// How the time of an operation grows with its text, on one shape.
struct Growth {
  std::string shape;
  double slope;          // of the logarithms of time and size
  double besideCopying;  // the same with the times in units of those of plain copying, plus 1
  double speed;          // bytes in a second, on the largest text
};

struct OperationGrowth {
  std::string operation;
  std::vector<Growth> growths;
};

// Every operation on shapes that strangers might send.
std::vector<OperationGrowth> measureGrowth();

// The steepest slopes and the lowest speed of each operation; every slope.
void writeGrowth(std::ostream& out, const std::vector<OperationGrowth>& operations);
void writeSlopes(std::ostream& out, const std::vector<OperationGrowth>& operations);

// What a page costs of the heap.
void writeAllocations(std::ostream& out, const Input& input);

// The program of the command line beside cat, each from its start to its end; nothing where it is
// not built.
// Fails   std::system_error, std::runtime_error
void writeProgram(std::ostream& out, const Input& input, const Rounds& rounds);

// Many parsers on one thread and on two. Afterwards the process counts as one with threads, in
// which counts of shared strings are atomic: to be run last.
void writeThreads(std::ostream& out, const Input& input, const Rounds& rounds);

}  // namespace pagescan::bench

#endif
