// JsonWriter: JSON Lines for the bytes of an output.
//
// The only place of the program that writes JSON. Strings are written as JSON libraries write them:
// only quotes, backslashes and control characters are escaped, all else is UTF-8. What begins with
// beginLine() is one object; the order of the calls is that of its members.
#ifndef PAGESCAN_TOOL_JSON_H
#define PAGESCAN_TOOL_JSON_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace pagescan::tool {

// A line is made in a block of memory of its own, which the next one uses again.
class JsonWriter {
 public:
  // Appends whole lines to `out`, which is borrowed.
  explicit JsonWriter(std::string& out) : out_(out) {}

  void beginLine();

  // All lines after this one begin with the members that it has so far.
  void keepBeginning();

  // Well-formed UTF-8. Names of members are plain: nothing in them needs an escape.
  void addText(std::string_view member, std::string_view text) {
    addName(member);
    putString(text);
  }

  // A word in which nothing needs an escape.
  void addWord(std::string_view member, std::string_view word) {
    addName(member);
    putPlain(word);
  }

  // Any bytes. What is not UTF-8 is written with one code point a byte, and endLine() names the
  // member in the array "bytes".
  void addBytes(std::string_view member, std::string_view bytes) {
    addName(member);
    if (!putBytes(bytes)) notUtf8_.push_back(member);
  }

  void addNumber(std::string_view member, std::int64_t number) {
    addName(member);
    putNumber(number);
  }

  // An array of plain words.
  void addWords(std::string_view member, const std::vector<std::string_view>& words);

  void endLine();

 private:
  // In each caller, where the length of the name is known, that is a few plain stores.
  [[gnu::always_inline]] void addName(std::string_view member) {
    char* at = makeRoom(member.size() + 4);
    *at++ = separator_;
    *at++ = '"';
    std::memcpy(at, member.data(), member.size());
    at += member.size();
    *at++ = '"';
    *at++ = ':';
    at_ = at;
    separator_ = ',';
  }

  // Where at least `size` bytes may be written.
  char* makeRoom(std::size_t size) {
    if (static_cast<std::size_t>(end_ - at_) < size) grow(size);
    return at_;
  }

  void grow(std::size_t size);
  void putPlain(std::string_view text);
  void putString(std::string_view text);
  void putWithEscapes(std::string_view text);
  bool putBytes(std::string_view bytes);
  void putNumber(std::int64_t number);

  struct Beginning {
    std::size_t length = 0;
    std::size_t notUtf8 = 0;
  };

  std::string& out_;
  std::unique_ptr<char[]> line_;
  char* at_ = nullptr;
  char* end_ = nullptr;
  char separator_ = '{';
  std::vector<std::string_view> notUtf8_;
  Beginning kept_;
};

}  // namespace pagescan::tool

#endif
