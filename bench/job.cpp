#include "job.h"

#include <utility>

#include "base/kernels.h"

namespace pagescan::bench {

using namespace internal;
namespace {

// The kernels of this level, for as long as it lives.
class UsedKernels {
 public:
  explicit UsedKernels(KernelLevel level) : before_(activeKernels) { useKernels(level); }
  UsedKernels(const UsedKernels&) = delete;
  UsedKernels& operator=(const UsedKernels&) = delete;
  ~UsedKernels() { activeKernels = before_; }

 private:
  const Kernels* before_;
};

}  // namespace

Job::Job(std::string id, std::string title, Work work)
    : id_(std::move(id)), title_(std::move(title)), work_(std::move(work)) {}

Job& Job::yardstick(std::string name, Pass pass) {
  yardstick_ = name;
  return contender(std::move(name), std::move(pass));
}

Job& Job::yardstick(std::string name) {
  yardstick_ = std::move(name);
  return *this;
}

Job& Job::contender(std::string name, Pass pass) {
  contenders_.push_back({std::move(name), std::move(pass)});
  return *this;
}

Job& Job::library(Pass pass) {
  const auto onBaseline = [pass] {
    const UsedKernels baseline(KernelLevel::sse2);
    return pass();
  };
  contender(kLibrary, pass);
  return contender(kLibraryOnBaseline, onBaseline);
}

Job& Job::target(double timesYardstick) {
  return target(timesYardstick, yardstick_);
}

Job& Job::target(double times, std::string than) {
  targets_.push_back({times, std::move(than)});
  return *this;
}

Job& Job::timeLimit(double secondsPerItem) {
  timeLimit_ = secondsPerItem;
  return *this;
}

}  // namespace pagescan::bench
