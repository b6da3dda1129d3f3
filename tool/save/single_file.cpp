#include "save/single_file.h"

#include <algorithm>
#include <utility>

namespace pagescan::tool {

namespace {

constexpr std::size_t kDeepest = 16;  // each level makes what it holds a third longer
constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string base64(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    unsigned group = 0;
    for (std::size_t j = 0; j < 3; ++j) {
      group = group << 8 | (j < count ? static_cast<unsigned char>(bytes[i + j]) : 0U);
    }
    for (std::size_t j = 0; j < 4; ++j) {
      text.push_back(j <= count ? kDigits[group >> (18 - 6 * j) & 63] : '=');
    }
  }
  return text;
}

SingleFile::SingleFile(Resources& resources, std::uint64_t most, Tell tell)
    : resources_(resources), most_(most), tell_(std::move(tell)) {}

std::optional<std::string> SingleFile::make(const Resource& page) {
  std::string text = textOf(page);
  if (!failure_.empty()) return std::nullopt;
  return text;
}

// Browsers load a frame once more in itself, and a sheet never.
bool SingleFile::holdsItself(const Resource& resource) const {
  const auto count = std::count(around_.begin(), around_.end(), &resource);
  return count > (resource.isPage() ? 1 : 0);
}

std::string SingleFile::textOf(const Resource& resource) {
  std::string bytes;
  if (made_ <= most_) failure_ = resources_.read(resource, bytes);
  if (!failure_.empty()) return "";
  const Original original = Resources::originalOf(resource, bytes);
  const CopyOf copyOf = [this](const std::string& url, Kind kind) { return embedded(url, kind); };
  CopyText copy;
  around_.push_back(&resource);
  if (resource.isPage()) {
    copy = rewritePage(original, copyOf);
  } else if (resource.isSheet()) {
    copy = rewriteSheet(original, copyOf);
  } else {
    copy.bytes = std::move(bytes);
  }
  around_.pop_back();
  for (const std::string& message : copy.told) tell_(resource, message);
  made_ += copy.bytes.size();
  if (made_ > most_ && failure_.empty()) {
    failure_ = "would be larger than " + std::to_string(most_) + " bytes (see --max-total)";
  }
  return std::move(copy.bytes);
}

std::optional<std::string> SingleFile::embedded(const std::string& url, Kind kind) {
  const Resource* resource = resources_.find(url);
  const bool isThere = resource != nullptr && resource->isComplete && kind == Kind::load;
  if (!isThere || !failure_.empty()) return std::nullopt;
  if (holdsItself(*resource)) return dataUrl(*resource, "");
  if (around_.size() >= kDeepest) {
    tell_(*around_.back(), "nested too deep: stays absolute: " + url);
    return std::nullopt;
  }
  return dataUrl(*resource, textOf(*resource));
}

std::string SingleFile::dataUrl(const Resource& resource, const std::string& bytes) const {
  return "data:" + resource.type.text() + ";base64," + base64(bytes);
}

}  // namespace pagescan::tool
