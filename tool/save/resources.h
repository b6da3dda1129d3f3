// Resources: what a page needs, found and fetched from the page on.
#ifndef PAGESCAN_TOOL_SAVE_RESOURCES_H
#define PAGESCAN_TOOL_SAVE_RESOURCES_H

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "save/fetcher.h"
#include "save/loads.h"
#include "save/media_type.h"
#include "save/rewriting.h"
#include "save/store.h"

namespace pagescan::tool {

class Resources;

// One resource. All URLs that redirects lead to it are one.
struct Resource {
  Fetched fetched;       // its hops are there from the beginning, the rest once it is complete
  MediaType type;        // from then on
  std::string failure;   // why there is none; empty otherwise
  std::string place;     // where it was first asked for: "http://h/page:12:5"; empty: by the user
  std::string encoding;  // of the text that loads it
  Resource* same = nullptr;  // the resource that a redirect led to, when it was known before
  bool isComplete = false;
  bool showsDocument = false;  // whether some place shows it as a page
  bool isRead = false;         // for what it loads, or about to be

  const std::string& url() const { return fetched.hops.back().url; }
  bool isPage() const { return showsDocument && type.isPage(); }
  bool isSheet() const { return type.isStyleSheet(); }
};

class Resources {
 public:
  // Told after each that is complete or has failed: how many are, and how many are known.
  using Advanced = std::function<void(std::size_t done, std::size_t known)>;

  // most  how many are asked for at most; more fail
  Resources(Store& store, Fetcher& fetcher, std::size_t most, Advanced advanced);

  // Fetches the page, or takes it from bytes that are there, and all that it loads.
  Resource& fetchPage(const std::string& url);
  Resource& takePage(const std::string& url, std::string_view bytes);

  // The resource of a URL without a fragment, where redirects lead; nullptr when it was not asked
  // for.
  Resource* find(const std::string& url);

  // All of them, in the order in which they were asked for.
  const std::deque<Resource>& all() const { return all_; }

  // The bytes of a complete page or sheet. Returns why they cannot be read; empty when they can.
  std::string read(const Resource& resource, std::string& bytes) const;

  // The file that holds the body of a complete resource.
  std::string bodyPath(const Resource& resource) const {
    return store_.bodyPath(resource.fetched.number);
  }

  // It as its copy is made of it; the bytes are those of read().
  static Original originalOf(const Resource& resource, std::string_view bytes);

 private:
  struct Request;

  Resource& want(const std::string& url, const std::string& place);
  void fetch(Resource& resource);
  void finish(Resource& resource, Request& request, const Answer& answer);
  void follow(Resource& resource, const Answer& answer);
  void complete(Resource& resource);
  void fail(Resource& resource, const std::string& reason);
  void readLoads(Resource& resource);
  void readWaiting();
  void readNow(const Resource& resource);
  void wantAll(const Resource& parent, const std::vector<Load>& loads, std::string_view encoding);

  Store& store_;
  Fetcher& fetcher_;
  std::size_t most_;
  Advanced advanced_;
  std::size_t done_ = 0;
  std::deque<Resource> all_;  // addresses stay
  std::unordered_map<std::string, Resource*> byUrl_;
  std::deque<Resource*> waiting_;  // to be read for what they load
};

}  // namespace pagescan::tool

#endif
