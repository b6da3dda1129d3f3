// JsonWriter: JSON Lines, straight into the bytes of an output.
//
// The only place of the program that writes JSON. Strings are written as JSON libraries write them:
// only quotes, backslashes and control characters are escaped, all else is UTF-8. What begins with
// beginLine() is one object; the order of the calls is that of its members.
#ifndef PAGESCAN_TOOL_JSON_H
#define PAGESCAN_TOOL_JSON_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pagescan::tool {

// Appends the text between quotes, escaped.
// text     well-formed UTF-8, which is not checked
void appendJsonString(std::string& out, std::string_view text);

class JsonWriter {
 public:
  // Appends to `out`, which is borrowed.
  explicit JsonWriter(std::string& out) : out_(out) {}

  void beginLine();

  // Well-formed UTF-8. Names of members are plain: nothing in them needs an escape.
  void addText(std::string_view member, std::string_view text);

  // Any bytes. What is not UTF-8 is written with one code point a byte, and endLine() names the
  // member in the array "bytes".
  void addBytes(std::string_view member, std::string_view bytes);

  void addNumber(std::string_view member, std::int64_t number);

  // An array of plain words.
  void addWords(std::string_view member, const std::vector<std::string_view>& words);

  void endLine();

 private:
  void addName(std::string_view member);

  std::string& out_;
  bool isFirst_ = true;
  std::vector<std::string_view> notUtf8_;
};

}  // namespace pagescan::tool

#endif
