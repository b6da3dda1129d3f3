#include "commands/iconv_routines.h"

#include <iconv.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "hostroutines.h"
#include "output/utf8_text.h"

namespace pagescan::tool {

namespace {

std::string& codePage() {
  static std::string name("ISO-8859-1");
  return name;
}

class Iconv {
 public:
  Iconv(const char* to, const char* from) : handle_(::iconv_open(to, from)) {}
  Iconv(const Iconv&) = delete;
  Iconv& operator=(const Iconv&) = delete;
  ~Iconv() {
    if (isOpen()) ::iconv_close(handle_);
  }

  bool isOpen() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

  // Converts as much as it can, advancing both. Returns 0, or the errno of what stopped it.
  int convert(std::string_view& source, char*& destination, std::size_t& room) {
    char* in = const_cast<char*>(source.data());
    std::size_t left = source.size();
    const std::size_t result = ::iconv(handle_, &in, &left, &destination, &room);
    const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
    source.remove_prefix(source.size() - left);
    return error;
  }

  // Leaves a shift state, so that the text ends as it began.
  void finish(char*& destination, std::size_t& room) {
    ::iconv(handle_, nullptr, nullptr, &destination, &room);
  }

 private:
  iconv_t handle_;
};

// The bytes that one "?" stands for, at the start of what could not be converted.
std::size_t lengthToSkip(std::string_view source, bool isUtf8) {
  return isUtf8 ? firstUtf8Char(source).length : 1;
}

// The "?" goes through the conversion when that leads from UTF-8, for it may be in a shift state.
void putQuestionMark(Iconv& iconv, bool fromUtf8, char*& destination, std::size_t& room) {
  std::string_view mark("?");
  if (fromUtf8) {
    iconv.convert(mark, destination, room);
  } else if (room != 0) {
    *destination++ = '?';
    --room;
  }
}

// The contract of both host routines: the result, cut to what fits, and a closing NUL.
int convertText(std::string_view source, bool fromUtf8, char* destination, int destinationSize) {
  if (destinationSize <= 0) return 0;
  const char* page = codePage().c_str();
  Iconv iconv(fromUtf8 ? page : "UTF-8", fromUtf8 ? "UTF-8" : page);
  char* end = destination;
  std::size_t room = static_cast<std::size_t>(destinationSize) - 1;
  if (iconv.isOpen()) {
    for (;;) {
      const int error = iconv.convert(source, end, room);
      if (error == 0 || error == E2BIG || source.empty()) break;
      source.remove_prefix(lengthToSkip(source, fromUtf8));
      putQuestionMark(iconv, fromUtf8, end, room);
    }
    iconv.finish(end, room);
  }
  *end = '\0';
  return static_cast<int>(end - destination);
}

std::string_view sourceText(const char* source, int length) {
  return {source, length < 0 ? std::strlen(source) : static_cast<std::size_t>(length)};
}

}  // namespace

bool isCodePage(const std::string& name) {
  if (name.find('/') != std::string::npos) return false;  // no "//TRANSLIT" and the like
  Iconv toPage(name.c_str(), "UTF-8");
  const Iconv fromPage("UTF-8", name.c_str());
  if (!toPage.isOpen() || !fromPage.isOpen()) return false;

  char letter[16];
  char* end = letter;
  std::size_t room = sizeof(letter);
  std::string_view source("A");
  return toPage.convert(source, end, room) == 0 && end == letter + 1;
}

void useCodePage(const std::string& name) {
  codePage() = name;
}

}  // namespace pagescan::tool

int UTF8ToANSI(int /*reserved*/, const char* source, int sourceLength, char* destination,
               int destinationSize) {
  return pagescan::tool::convertText(pagescan::tool::sourceText(source, sourceLength), true,
                                     destination, destinationSize);
}

int ANSIToUTF8(int /*reserved*/, const char* source, int sourceLength, char* destination,
               int destinationSize) {
  return pagescan::tool::convertText(pagescan::tool::sourceText(source, sourceLength), false,
                                     destination, destinationSize);
}
