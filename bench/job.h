// A job of the library beside its yardstick and what a user would pick instead.
#ifndef PAGESCAN_BENCH_JOB_H
#define PAGESCAN_BENCH_JOB_H

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace pagescan::bench {

// One pass over the whole input of a job. The result is whatever proves that the work was done.
using Pass = std::function<std::size_t()>;

// What all contenders of a job work over in one pass.
struct Work {
  std::string description;
  std::string item;  // what it consists of, in the singular
  std::size_t items;
  std::size_t bytes;
};

struct Contender {
  std::string name;
  Pass pass;
};

// The library's speed is to be at least so many times that of `than`.
struct Target {
  double times;
  std::string than;
};

class Job {
 public:
  Job(std::string id, std::string title, Work work);

  // The one whose speed counts as 1. A peer that is installed can be named as one, too.
  Job& yardstick(std::string name, Pass pass);
  Job& yardstick(std::string name);

  Job& contender(std::string name, Pass pass);

  // This library: on the vectors that this machine has, and on the baseline ones.
  Job& library(Pass pass);

  // What library() is to reach: a multiple of the yardstick's speed, or of a peer's.
  Job& target(double timesYardstick);
  Job& target(double times, std::string than);

  // The time in which library() is to be done with an item.
  Job& timeLimit(double secondsPerItem);

  const std::string& id() const { return id_; }
  const std::string& title() const { return title_; }
  const Work& work() const { return work_; }
  const std::string& yardstickName() const { return yardstick_; }
  const std::vector<Contender>& contenders() const { return contenders_; }
  const std::vector<Target>& targets() const { return targets_; }
  double timeLimit() const { return timeLimit_; }  // 0 for none

 private:
  std::string id_;
  std::string title_;
  Work work_;
  std::string yardstick_;
  std::vector<Contender> contenders_;
  std::vector<Target> targets_;
  double timeLimit_ = 0;
};

// The names under which library() is measured.
inline constexpr char kLibrary[] = "pagescan";
inline constexpr char kLibraryOnBaseline[] = "pagescan, baseline";

// Jobs in the order in which they run; references to them stay valid.
using Jobs = std::deque<Job>;

}  // namespace pagescan::bench

#endif
