// UrlEncoding: percent encoding, decoding and recognition, flavour by flavour.
#ifndef PAGESCAN_ZKURLENCODING_H
#define PAGESCAN_ZKURLENCODING_H

#include "pagescan_export.h"
#include "rw/rwcstring.h"

// The percent placeholder that stands for a "%" which decoding must not turn into a control byte,
// "&#25;", and its length. Both are read afresh on every use; a host may change them while no
// other thread encodes or decodes. Of a text that ends before that length, just the text counts; a
// null pointer and a length below 1 make an empty placeholder, which decoding puts for nothing and
// encoding never finds.
extern PAGESCAN_EXPORT const char* persentEscape;
extern PAGESCAN_EXPORT int persentEscapeLength;

// What each byte becomes when a string is encoded: a zero-terminated text of one or three bytes.
class PAGESCAN_EXPORT CharArray {
 public:
  // Holds empty texts, or those of a table.
  constexpr CharArray() noexcept : entries{} {}
  explicit constexpr CharArray(const char (&table)[256][4]) noexcept : entries{} {
    for (int byte = 0; byte < 256; ++byte) {
      for (int i = 0; i < 4; ++i) entries[byte][i] = table[byte][i];
    }
  }
  CharArray(const CharArray&) = default;
  CharArray& operator=(const CharArray&) = default;
  virtual ~CharArray();

  // The text of a byte.
  const char* operator[](unsigned char byte) const noexcept { return entries[byte]; }

  char entries[256][4];  // indexed by the byte
};

// All members are static. The tables are complete before any code of a host runs and constant from
// then on; every operation may run on any number of threads at once.
class PAGESCAN_EXPORT UrlEncoding {
 public:
  // The flavours. Values beyond the last, and negative ones, are taken for eBrowser.
  enum EncodingType : int {
    eNone = 0,
    eBrowser = 1,
    eEscape = 2,
    eEscapeURI = 3,
    eEscapeURIComponent = 4,
    eBrowserSign = 5,
    eChrome = 6,
    eChrome94 = 7,
    eSiebel = 8
  };

  UrlEncoding();
  virtual ~UrlEncoding();

  // Appends the encoded `source` to `destination`; each placeholder in the source becomes "%".
  // With eNone the source is appended as it is. The two may be one string: what is encoded is the
  // text that it held before.
  // Returns whether it encoded: false for an empty source (`destination` untouched) and for eNone.
  // Cost    linear in both; usually one allocation.
  static bool EncodeString(RWCString& source, RWCString& destination, EncodingType type);

  // Decodes `text` in place: "+" to a blank (also for eNone, but not for eChrome94 and
  // eSiebel), "%" and two hexadecimal digits to a byte. A "%" that would give a byte
  // below 32, or that no number follows, becomes the placeholder; one with fewer than two bytes
  // after it stays. Single pass: "%2541" becomes "%41".
  // Returns whether anything was decoded; a placeholder does not count.
  // Cost    linear in the text.
  static bool DecodeString(RWCString& text, EncodingType type);

  // Whether every name and value of the "&"-separated text is just what this flavour's encoder
  // makes of its decoded form. An empty text passes.
  // Cost    linear in the text.
  static bool CheckUrlDecoding(const RWCString& text, EncodingType type);

  // The first flavour, from eBrowser on, for which the text passes; eNone when none does.
  // Cost    linear in the text.
  static EncodingType CheckUrlDecoding(const RWCString& text);

  // Replaces `output` with the bytes made printable: TAB, LF, CR and bytes 32 to 126 stay, all
  // others become "%" and two upper-case digits.
  // Returns false, with `output` untouched, only for a null source.
  // Cost    linear in `length`.
  static bool EncodeStringUnreadables(const char* source, unsigned long length, RWCString& output);

  // Fill a table with one flavour; each returns true. FillASCII_chars, on which all others build,
  // keeps ASCII letters and digits and escapes every other byte, in upper-case digits or lower-case
  // ones.
  static bool FillASCII_chars(CharArray& table, bool upper);
  static bool FillBrowserSpecials(CharArray& table);
  static bool FillEscapeSpecials(CharArray& table);
  static bool FillEscapeURIComponentSpecials(CharArray& table);
  static bool FillEscapeURISpecials(CharArray& table);
  static bool FillChromeSpecials(CharArray& table);
  static bool FillChrome94Specials(CharArray& table);
  static bool FillSiebelSpecials(CharArray& table);

  // Fills the eight tables, each at most once per process; runs when the library is loaded.
  static void initAllArrays();

  // The table of each flavour, for hosts to read. cBrowserCharsSign is cBrowserChars with "@"
  // escaped.
  static CharArray cBrowserChars;
  static CharArray cBrowserCharsSign;
  static CharArray cEscapeChars;
  static CharArray cEscapeURIChars;
  static CharArray cEscapeURIComponentChars;
  static CharArray cChromeChars;
  static CharArray cChromeChars94;
  static CharArray cSiebelChars;
};

#endif
