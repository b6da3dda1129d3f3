// A site of our own behind a real server, for the tests of `pagescan save`.
#ifndef PAGESCAN_TESTS_SUPPORT_SAVED_SITE_H
#define PAGESCAN_TESTS_SUPPORT_SAVED_SITE_H

#include <sys/types.h>

#include <string>

#include "support/run_program.h"

namespace pagescan::tests {

// Runs serve_site.py, which tells what the site holds, as long as the object lives.
class Site {
 public:
  Site();
  Site(const Site&) = delete;
  Site& operator=(const Site&) = delete;
  ~Site();

  // Whether it answers; not where nginx is not installed.
  bool isServed() const { return !root_.empty(); }

  // "http://127.0.0.1:PORT"
  const std::string& root() const { return root_; }

  // The bytes of a file of the site.
  std::string file(const std::string& name) const {
    return readFile(folder_.path() + "/site/" + name);
  }

  // What was asked for so far, a line each.
  std::string requests() const { return readFile(folder_.path() + "/access.log"); }

 private:
  TemporaryFolder folder_;
  std::string root_;
  pid_t child_ = 0;
  int input_ = -1;
};

}  // namespace pagescan::tests

#endif
