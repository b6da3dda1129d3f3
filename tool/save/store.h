// Store: what was fetched, kept on disk until the copies are written, so that a run that is stopped
// can go on.
//
// It is the folder ".saving" in the folder of the copies: a file for each body, and a journal with
// a line for each, which is written when its body is complete.
#ifndef PAGESCAN_TOOL_SAVE_STORE_H
#define PAGESCAN_TOOL_SAVE_STORE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace pagescan::tool {

// A URL that was asked for, and the status of the answer; 0 for a file.
struct Hop {
  std::string url;
  long status = 0;
};

// A body, and how it was come by.
struct Fetched {
  std::size_t number = 0;  // of its file
  std::vector<Hop> hops;   // the URL asked for, then where redirects led; never empty
  std::string contentType;
  std::uint64_t length = 0;
  std::string sha256;
  std::string time;  // "2026-11-21T20:15:30Z"
};

class Store {
 public:
  Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;
  ~Store();

  // Makes the folder, and ".saving" in it, or takes up what a run left that was stopped.
  // url        what is saved; a run of another URL is not taken up
  // isGoingOn  whether there may be such a run
  // Returns    why that is not possible; empty when it is
  std::string open(const std::string& folder, const std::string& url, bool isGoingOn);

  // Where the body of a number is, or is to be.
  std::string bodyPath(std::size_t number) const;

  // A number that no body has.
  std::size_t nextNumber() { return next_++; }

  // Notes that a body is complete. Returns whether it could be noted.
  bool note(const Fetched& fetched);

  // The body that an earlier run fetched for a URL; its file holds what the journal says.
  std::optional<Fetched> find(const std::string& url) const;

  // Takes ".saving" away.
  void remove();

 private:
  std::string takeUp(const std::string& url);

  std::string path_;
  int journal_ = -1;
  std::size_t next_ = 0;
  std::unordered_map<std::string, Fetched> kept_;  // by the URL asked for
};

}  // namespace pagescan::tool

#endif
