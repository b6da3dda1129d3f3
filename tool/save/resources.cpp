#include "save/resources.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <optional>
#include <utility>

#include "pagescan/url.h"
#include "save/sha256.h"
#include "save/whole_file.h"

namespace pagescan::tool {

namespace {

constexpr std::size_t kMostHops = 21;  // a URL and 20 redirects, as browsers allow

std::string now() {
  const std::time_t seconds = std::time(nullptr);
  std::tm parts = {};
  ::gmtime_r(&seconds, &parts);
  std::array<char, 32> text = {};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts)};
}

bool isHttp(const std::string& url) {
  return url.substr(0, 7) == "http://" || url.substr(0, 8) == "https://";
}

// Where redirects lead. Halves the way for those who come after.
Resource* endOf(Resource* resource) {
  while (resource->same != nullptr) {
    if (resource->same->same != nullptr) resource->same = resource->same->same;
    resource = resource->same;
  }
  return resource;
}

}  // namespace

// A body on its way to the store.
struct Resources::Request {
  explicit Request(const std::string& path) : file(path) {}

  bool keep(std::string_view piece) {
    hash.add(piece);
    length += piece.size();
    file.write(piece);
    return file.error() == 0;
  }

  WholeFile file;
  Sha256 hash;
  std::uint64_t length = 0;
};

Resources::Resources(Store& store, Fetcher& fetcher, std::size_t most, Advanced advanced)
    : store_(store), fetcher_(fetcher), most_(most), advanced_(std::move(advanced)) {}

Resource& Resources::fetchPage(const std::string& url) {
  Resource& page = want(std::string(withoutFragment(url)), "");
  page.showsDocument = true;
  if (page.isComplete) readLoads(page);  // an earlier run has it
  readWaiting();
  fetcher_.run();
  return *endOf(&page);
}

Resource& Resources::takePage(const std::string& url, std::string_view bytes) {
  all_.emplace_back();
  Resource& page = all_.back();
  page.fetched.hops.push_back({std::string(withoutFragment(url)), 0});
  page.fetched.number = store_.nextNumber();
  page.fetched.contentType = "text/html";
  page.showsDocument = true;
  byUrl_[page.url()] = &page;
  Request request(store_.bodyPath(page.fetched.number));
  request.keep(bytes);
  finish(page, request, {});
  readWaiting();
  fetcher_.run();
  return page;
}

Resource* Resources::find(const std::string& url) {
  const auto found = byUrl_.find(url);
  return found == byUrl_.end() ? nullptr : endOf(found->second);
}

Resource& Resources::want(const std::string& url, const std::string& place) {
  if (const auto found = byUrl_.find(url); found != byUrl_.end()) return *endOf(found->second);
  all_.emplace_back();
  Resource& resource = all_.back();
  resource.place = place;
  resource.fetched.hops.push_back({url, 0});
  byUrl_[url] = &resource;
  std::optional<Fetched> kept = store_.find(url);
  if (kept) {
    resource.fetched = std::move(*kept);
    for (const Hop& hop : resource.fetched.hops) byUrl_.emplace(hop.url, &resource);
    complete(resource);
  } else if (!isHttp(url)) {
    fail(resource, "only http and https are fetched");
  } else if (all_.size() > most_) {
    fail(resource, "one more than " + std::to_string(most_) + " resources (see --max-count)");
  } else {
    resource.fetched.number = store_.nextNumber();
    fetch(resource);
  }
  return resource;
}

void Resources::fetch(Resource& resource) {
  // The file is made when bytes come: few requests have one open at a time.
  const auto request = std::make_shared<std::unique_ptr<Request>>();
  const auto open = [this, request, &resource]() -> Request& {
    if (!*request) *request = std::make_unique<Request>(store_.bodyPath(resource.fetched.number));
    return **request;
  };
  fetcher_.get(
      resource.url(), [open](std::string_view piece) { return open().keep(piece); },
      [this, open, &resource](const Answer& answer) {
        if (!answer.failure.empty()) {
          fail(resource, answer.failure);
        } else if (!answer.location.empty()) {
          follow(resource, answer);
        } else if (answer.status < 200 || answer.status > 299) {
          resource.fetched.hops.back().status = answer.status;
          fail(resource, "status " + std::to_string(answer.status));
        } else {
          finish(resource, open(), answer);
        }
        readWaiting();
      });
}

void Resources::follow(Resource& resource, const Answer& answer) {
  std::vector<Hop>& hops = resource.fetched.hops;
  hops.back().status = answer.status;
  const std::optional<Url> from = Url::parse(hops.back().url);
  const std::optional<Url> to = from ? Url::parse(answer.location, *from) : std::nullopt;
  if (!to) return fail(resource, "redirected to what is no URL");
  const std::string url(withoutFragment(to->href()));
  if (!isHttp(url)) return fail(resource, "redirected to " + url + ", which is not fetched");
  if (hops.size() >= kMostHops) return fail(resource, "redirected more than 20 times");
  const auto [known, isNew] = byUrl_.emplace(url, &resource);
  Resource* const end = endOf(known->second);
  if (end != &resource) {  // it has that one's copy, whatever becomes of it
    hops.push_back({url, 0});
    resource.same = end;
    end->showsDocument = end->showsDocument || resource.showsDocument;
    if (end->encoding.empty()) end->encoding = resource.encoding;
    if (end->isComplete) readLoads(*end);
    advanced_(++done_, all_.size());
    return;
  }
  hops.push_back({url, 0});  // cookies may have changed what it answers, even at the same URL
  fetch(resource);
}

void Resources::finish(Resource& resource, Request& request, const Answer& answer) {
  Fetched& fetched = resource.fetched;
  // Not durable: an earlier run's body is taken up only if it has its SHA-256.
  if (!request.file.commit(false)) return fail(resource, std::strerror(request.file.error()));
  if (answer.status != 0) {
    fetched.hops.back().status = answer.status;
    fetched.contentType = mediaTypeOf(answer.contentType).text();
  }
  fetched.length = request.length;
  fetched.sha256 = request.hash.hex();
  fetched.time = now();
  if (answer.status != 0 && !store_.note(fetched)) return fail(resource, std::strerror(errno));
  complete(resource);
}

void Resources::complete(Resource& resource) {
  resource.type = mediaTypeOf(resource.fetched.contentType);
  resource.isComplete = true;
  advanced_(++done_, all_.size());
  readLoads(resource);
}

void Resources::fail(Resource& resource, const std::string& reason) {
  resource.failure = reason;
  advanced_(++done_, all_.size());
}

std::string Resources::read(const Resource& resource, std::string& bytes) const {
  return readWhole(store_.bodyPath(resource.fetched.number), bytes) ? "" : std::strerror(errno);
}

Original Resources::originalOf(const Resource& resource, std::string_view bytes) {
  return {bytes, resource.url(), resource.type.charset, resource.encoding};
}

void Resources::readLoads(Resource& resource) {
  if (resource.isRead || !(resource.isPage() || resource.isSheet())) return;
  resource.isRead = true;
  waiting_.push_back(&resource);
}

// One after the other, so that a long chain of imports does not fill the stack.
void Resources::readWaiting() {
  while (!waiting_.empty()) {
    const Resource& resource = *waiting_.front();
    waiting_.pop_front();
    readNow(resource);
  }
}

void Resources::readNow(const Resource& resource) {
  std::string bytes;
  if (const std::string failure = read(resource, bytes); !failure.empty()) return;
  const Original original = originalOf(resource, bytes);
  if (resource.isPage()) {
    const Page page = readPage(original);
    wantAll(resource, loadsOf(page), page.encoding());
  } else {
    const StyleSheet sheet = readSheet(original);
    wantAll(resource, loadsOf(sheet), sheet.encoding());
  }
}

void Resources::wantAll(const Resource& parent, const std::vector<Load>& loads,
                        std::string_view encoding) {
  for (const Load& load : loads) {
    const std::string place =
        parent.url() + ":" + std::to_string(load.at.line) + ":" + std::to_string(load.at.column);
    Resource& resource = want(load.url, place);
    if (resource.encoding.empty()) resource.encoding = encoding;
    if (!load.isDocument) continue;
    resource.showsDocument = true;
    if (resource.isComplete) readLoads(resource);
  }
}

}  // namespace pagescan::tool
