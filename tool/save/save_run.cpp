#include "save/save_run.h"

#include <unistd.h>

#include <cstring>
#include <optional>

#include "input.h"
#include "output/messages.h"
#include "output/progress.h"
#include "save/folder_writer.h"
#include "save/manifest.h"
#include "save/resources.h"
#include "save/single_file.h"
#include "save/store.h"
#include "save/whole_file.h"

namespace pagescan::tool {

namespace {

class SaveRun {
 public:
  SaveRun(const SaveOptions& options, Output& output)
      : options_(options),
        progress_(2, output.isTerminal(), "files"),
        fetcher_(fetchOptionsOf(options)),
        resources_(store_, fetcher_, options.most, [this](std::size_t done, std::size_t known) {
          progress_.advanceTo(done, known);
        }) {}

  ExitStatus run() {
    const std::string failure = store_.open(options_.folder, options_.url, options_.goesOn);
    if (!failure.empty()) {
      tellAbout(options_.folder, failure);
      return kWrongUsage;
    }
    const Resource* page = options_.file.empty() ? &resources_.fetchPage(options_.url) : takeFile();
    progress_.clear();
    if (page == nullptr || !isSaved(*page)) {
      store_.remove();
      ::rmdir(options_.folder.c_str());  // where it was made for this, and is empty
      return kFailed;
    }
    return write(*page);
  }

 private:
  static FetchOptions fetchOptionsOf(const SaveOptions& options) {
    FetchOptions fetch = options.fetch;
    fetch.headersOrigin = originOf(options.url);
    return fetch;
  }

  const Resource* takeFile() {
    InputReader reader(kMostInputBytes);
    const InputContent content = reader.read(options_.file);
    if (content.failure.empty()) return &resources_.takePage(options_.url, content.bytes);
    tellAbout(options_.file, content.failure);
    return nullptr;
  }

  // Whether there is a page to write.
  static bool isSaved(const Resource& page) {
    if (!page.failure.empty()) {
      tellAbout(page.url(), page.failure);
    } else if (!page.isPage()) {
      tellAbout(page.url(), "is no page but " + (page.type.essence.empty() ? "of no known type"
                                                                           : page.type.essence));
    }
    return page.isComplete && page.isPage();
  }

  ExitStatus write(const Resource& page) {
    const bool isWhole = tellFailures();
    const auto tellOf = [](const Resource& resource, const std::string& message) {
      tellAbout(resource.url(), message);
    };
    FolderWriter folder(options_.folder, resources_, tellOf);
    std::string failure = options_.isSingleFile ? writeSingle(page, tellOf) : folder.write(page);
    const auto nameOf = [&](const Resource& resource) -> std::string {
      if (options_.isSingleFile) return &resource == &page ? kPageName : "";
      return folder.nameOf(resource);
    };
    if (failure.empty()) {
      failure = writeFile("manifest.jsonl", manifestOf(resources_.all(), nameOf));
    }
    if (!failure.empty()) {
      tellAbout(options_.folder, failure);
      return kFailed;
    }
    store_.remove();
    return isWhole ? kSuccess : kFailed;
  }

  bool tellFailures() {
    bool isWhole = true;
    for (const Resource& resource : resources_.all()) {
      if (resource.failure.empty()) continue;
      const std::string& asked = resource.fetched.hops.front().url;
      const bool isMoved = asked != resource.url();
      tellAbout(resource.place,
                asked + ": " + resource.failure + (isMoved ? " (at " + resource.url() + ")" : ""));
      isWhole = false;
    }
    return isWhole;
  }

  std::string writeSingle(const Resource& page, const SingleFile::Tell& tellOf) {
    SingleFile file(resources_, options_.fetch.mostRunBytes, tellOf);
    const std::optional<std::string> text = file.make(page);
    return text ? writeFile(kPageName, *text) : std::string(kPageName) + ": " + file.failure();
  }

  std::string writeFile(const std::string& name, const std::string& bytes) {
    WholeFile file(options_.folder + "/" + name);
    file.write(bytes);
    return file.commit() ? "" : name + ": " + std::strerror(file.error());
  }

  const SaveOptions& options_;
  Progress progress_;
  Store store_;
  Fetcher fetcher_;
  Resources resources_;
};

}  // namespace

ExitStatus runSave(const SaveOptions& options, Output& output) {
  return SaveRun(options, output).run();
}

}  // namespace pagescan::tool
