// A host with a character set and a log of its own: Windows-1252 by iconv, messages to standard
// output.
//
// The definitions in this file replace the library's, in whatever way the library is linked.
#include <iconv.h>
#include <pagescan.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <iostream>

namespace {

constexpr char kUtf8[] = "UTF-8";
constexpr char kAnsi[] = "CP1252";

// One run of iconv. The library's caller may be on any thread: nothing is shared between runs.
class Converter {
 public:
  Converter(const char* to, const char* from)
      : handle_(iconv_open(to, from)), isFromUtf8_(from == kUtf8) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (isOpen()) iconv_close(handle_);
  }

  // Converts `length` bytes and returns the length of the result, which gets a closing NUL. What
  // does not convert becomes "?"; what finds no room is left out.
  int run(const char* source, std::size_t length, char* destination, int size) {
    if (size <= 0) return 0;
    char* in = const_cast<char*>(source);  // iconv only reads it
    char* out = destination;
    std::size_t room = static_cast<std::size_t>(size) - 1;
    while (isOpen() && room > 0 && length > 0) {
      const bool isDone = iconv(handle_, &in, &length, &out, &room) != kFailed;
      if (isDone || errno == E2BIG) break;
      skipCharacter(in, length);
      *out++ = '?';
      --room;
    }
    *out = '\0';
    return static_cast<int>(out - destination);
  }

 private:
  static constexpr auto kFailed = static_cast<std::size_t>(-1);

  bool isOpen() const {
    return handle_ != reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr): POSIX
  }

  // A byte, and of UTF-8 the continuation bytes after it.
  void skipCharacter(char*& in, std::size_t& length) const {
    do {
      ++in;
      --length;
    } while (isFromUtf8_ && length > 0 && (static_cast<unsigned char>(*in) & 0xC0U) == 0x80U);
  }

  iconv_t handle_;
  bool isFromUtf8_;
};

std::size_t lengthOf(const char* source, int sourceLength) {
  return sourceLength < 0 ? std::strlen(source) : static_cast<std::size_t>(sourceLength);
}

}  // namespace

int ANSIToUTF8(int /*reserved*/, const char* source, int sourceLength, char* destination,
               int destinationSize) {
  return Converter(kUtf8, kAnsi)
      .run(source, lengthOf(source, sourceLength), destination, destinationSize);
}

int UTF8ToANSI(int /*reserved*/, const char* source, int sourceLength, char* destination,
               int destinationSize) {
  return Converter(kAnsi, kUtf8)
      .run(source, lengthOf(source, sourceLength), destination, destinationSize);
}

void pagescanLogError(const char* message) {
  std::cout << "log: " << message << '\n';
}

namespace {

// The library logs when a second instance takes the place of its own. An instance that is gone
// stays registered, so the former one is put back.
void makeTheLibraryLog() {
  CTQCharSet* registered = CTQCharSet::fsGetSingleton();
  { const CTQCharSet second; }
  CTQCharSet::msSingleton = registered;
}

void show(const RWCString& text) {
  RWCString printable;
  UrlEncoding::EncodeStringUnreadables(text.data(), text.length(), printable);
  std::cout << printable.data() << '\n';
}

}  // namespace

int main() {
  RWCString price("caf\xE9, 3 \x80");  // e acute and the sign of the euro
  ConvertAnsitoUtf8(price);
  show(price);

  RWCString greeting("na\xC3\xAFve, 3 \xE2\x82\xAC, \xE6\x97\xA5");  // the last one has no byte
  ConvertUtf8toAnsi(greeting);
  show(greeting);

  makeTheLibraryLog();
}
