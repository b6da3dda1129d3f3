#include "commands/edit_list.h"

#include <limits>
#include <nlohmann/json.hpp>
#include <optional>

#include "lines.h"

namespace pagescan::tool {

namespace {

using Json = nlohmann::json;

std::optional<std::uint32_t> offsetIn(const Json& object, const char* member) {
  const auto found = object.find(member);
  if (found == object.end() || !found->is_number_unsigned()) return std::nullopt;
  const auto offset = found->get<std::uint64_t>();
  if (offset > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
  return static_cast<std::uint32_t>(offset);
}

std::optional<std::string> textIn(const Json& object, const char* member) {
  const auto found = object.find(member);
  if (found == object.end() || !found->is_string()) return std::nullopt;
  return found->get<std::string>();
}

// Returns what is wrong with the line, or nothing.
std::string readEdit(std::string_view line, ListedEdit& edit, std::string& file) {
  const Json object = Json::parse(line, nullptr, false);
  if (!object.is_object()) return "no JSON object";
  const auto start = offsetIn(object, "start");
  const auto end = offsetIn(object, "end");
  if (!start || !end) return "\"start\" and \"end\" must be offsets";
  const auto expected = textIn(object, "expected");
  if (!expected) return "\"expected\" must be a string";
  const auto url = textIn(object, "url");
  const auto bytes = textIn(object, "bytes");
  if (url.has_value() == bytes.has_value()) return "either \"url\" or \"bytes\" must be a string";
  edit.span = {*start, *end};
  edit.expected = *expected;
  edit.isUrl = url.has_value();
  edit.text = url ? *url : *bytes;
  file = textIn(object, "file").value_or("");
  return "";
}

}  // namespace

EditList readEditList(std::string_view lines, std::string& error) {
  EditList list;
  std::size_t number = 0;
  forEachLine(lines, [&](std::string_view line) {
    ++number;
    if (line.empty() || !error.empty()) return;
    ListedEdit edit;
    std::string file;
    const std::string problem = readEdit(line, edit, file);
    edit.line = number;
    if (!problem.empty()) {
      error = "line " + std::to_string(number) + ": " + problem;
    } else {
      list[file].push_back(std::move(edit));
    }
  });
  return list;
}

}  // namespace pagescan::tool
