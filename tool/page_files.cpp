#include "page_files.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <system_error>

#include "output/messages.h"
#include "percent.h"

namespace pagescan::tool {

namespace {

namespace fs = std::filesystem;

std::string lower(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return text;
}

bool endsWithOneOf(std::string_view name, std::initializer_list<std::string_view> endings) {
  constexpr std::size_t kLongest = 6;
  const std::string end =
      lower(std::string(name.substr(name.size() - std::min(name.size(), kLongest))));
  return std::any_of(endings.begin(), endings.end(),
                     [&](std::string_view ending) { return end.ends_with(ending); });
}

void appendFilesOf(const std::string& folder, Names& names, bool& isWhole) {
  std::error_code error;
  Names found;
  fs::recursive_directory_iterator each(folder, error);
  for (; !error && each != fs::recursive_directory_iterator(); each.increment(error)) {
    std::error_code ignored;
    const std::string name = each->path().string();
    const bool isOfSite = isNamedLikePage(name) || isNamedLikeSheet(name);
    if (isOfSite && each->is_regular_file(ignored)) found.push_back(name);
  }
  if (error) {
    tellAbout(folder, error.message());
    isWhole = false;
  }
  std::sort(found.begin(), found.end());
  names.insert(names.end(), found.begin(), found.end());
}

}  // namespace

bool isNamedLikePage(std::string_view name) {
  return endsWithOneOf(name, {".html", ".htm", ".xhtml", ".shtml"});
}

bool isNamedLikeSheet(std::string_view name) {
  return endsWithOneOf(name, {".css"});
}

Names withFilesOfFolders(const Names& names, bool& isWhole) {
  Names all;
  for (const std::string& name : names) {
    std::error_code ignored;
    if (name != "-" && fs::is_directory(name, ignored)) {
      appendFilesOf(name, all, isWhole);
    } else {
      all.push_back(name);
    }
  }
  return all;
}

std::string urlOfFile(const std::string& name, const std::string& folder, const std::string& url) {
  std::error_code error;
  const fs::path root = fs::weakly_canonical(folder, error);
  const fs::path file = fs::weakly_canonical(name, error);
  const std::string path = file.lexically_relative(root).generic_string();
  const bool isInside = !path.empty() && path != "." && path != ".." && path.substr(0, 3) != "../";
  if (error || !isInside) return "";
  std::string result = url.substr(0, url.find_first_of("?#"));
  if (result.back() != '/') result += '/';
  return result + percentEncoded(path, "!$&'()*+,;=:@/");
}

}  // namespace pagescan::tool
