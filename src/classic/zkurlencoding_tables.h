// The flavours of percent encoding as data, and the tables that follow from them at compile time.
#ifndef PAGESCAN_ZKURLENCODING_TABLES_H
#define PAGESCAN_ZKURLENCODING_TABLES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/byte_class.h"
#include "base/kernels.h"

namespace pagescan::internal {

// What stands for a "%" in decoded text unless a host sets another one.
inline constexpr std::string_view kUsualPlaceholder = "&#25;";

// A flavour of percent encoding. Which bytes it writes follows from the first three.
struct Flavour {
  std::string_view literals;  // what stands for itself, besides letters and digits
  std::string_view blank;     // what " " becomes
  std::string_view digits;    // the hexadecimal digits after "%"
  bool plusIsBlank;           // whether decoding makes "+" a blank
};

inline constexpr std::string_view kUpperDigits = "0123456789ABCDEF";
inline constexpr std::string_view kLowerDigits = "0123456789abcdef";

// Three of these choices look like slips, but are how those flavours are: the grave accent stays in
// the URI component, URI and Chrome flavours; the comma does not stay in the URI flavour; and "%"
// itself stays in the Chrome94 flavour.
// clang-format off
inline constexpr Flavour kBrowser      {"@*_-.",                       "+",   kUpperDigits, true};
inline constexpr Flavour kEscape       {"@*_-.+/",                     "%20", kUpperDigits, true};
inline constexpr Flavour kEscapeURI    {"*_-.~!()'`@#$&+=;:?/",        "%20", kUpperDigits, true};
inline constexpr Flavour kURIComponent {"*_-.~!()'`",                  "%20", kUpperDigits, true};
inline constexpr Flavour kBrowserSign  {"*_-.",                        "+",   kUpperDigits, true};
inline constexpr Flavour kChrome       {"*_-.~!()'<>`",                "+",   kUpperDigits, true};
inline constexpr Flavour kChrome94     {"!$%()*+,-./:;@[\\]^_`{|}~",   "%20", kUpperDigits, false};
inline constexpr Flavour kSiebel       {"!$_()+*',-.",                 "%20", kLowerDigits, false};
// clang-format on

// By EncodingType, beginning with eBrowser.
inline constexpr std::array kFlavours = {kBrowser,     kEscape, kEscapeURI, kURIComponent,
                                         kBrowserSign, kChrome, kChrome94,  kSiebel};

// What each byte becomes, as CharArray holds it.
struct EncodedBytes {
  char entries[256][4];
};

constexpr void setEntry(char (&entry)[4], std::string_view text) {
  for (std::size_t i = 0; i < sizeof entry; ++i) entry[i] = i < text.size() ? text[i] : '\0';
}

constexpr void escapeEntry(char (&entry)[4], std::size_t byte, std::string_view digits) {
  const char escape[] = {'%', digits[byte / 16], digits[byte % 16]};
  setEntry(entry, {escape, sizeof escape});
}

// Letters and digits stand for themselves, every other byte is escaped.
constexpr void escapeAllButLettersAndDigits(char (&entries)[256][4], std::string_view digits) {
  for (std::size_t byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    if (kLettersAndDigits.contains(c)) {
      setEntry(entries[byte], {&c, 1});
    } else {
      escapeEntry(entries[byte], byte, digits);
    }
  }
}

constexpr void keep(char (&entries)[256][4], std::string_view literals) {
  for (const char c : literals) setEntry(entries[toByte(c)], {&c, 1});
}

constexpr void replaceByte(char (&entries)[256][4], char byte, std::string_view text) {
  setEntry(entries[toByte(byte)], text);
}

constexpr EncodedBytes encodedBytes(const Flavour& flavour) {
  EncodedBytes table{};
  escapeAllButLettersAndDigits(table.entries, flavour.digits);
  keep(table.entries, flavour.literals);
  replaceByte(table.entries, ' ', flavour.blank);
  return table;
}

constexpr bool staysAsItIs(const EncodedBytes& table, std::size_t byte) {
  return table.entries[byte][0] == static_cast<char>(byte) && table.entries[byte][1] == '\0';
}

constexpr std::size_t countOfLiterals(const Flavour& flavour) {
  const EncodedBytes table = encodedBytes(flavour);
  std::size_t count = 0;
  for (std::size_t byte = 0; byte < 256; ++byte) count += staysAsItIs(table, byte) ? 1 : 0;
  return count - kLettersAndDigits.size();
}

static_assert(countOfLiterals(kBrowser) == 5 && countOfLiterals(kEscape) == 7);
static_assert(countOfLiterals(kEscapeURI) == 20 && countOfLiterals(kURIComponent) == 10);
static_assert(countOfLiterals(kBrowserSign) == 4 && countOfLiterals(kChrome) == 12);
static_assert(countOfLiterals(kChrome94) == 24 && countOfLiterals(kSiebel) == 11);

// What is shown of unreadable bytes: the line structure and all that prints stay.
constexpr EncodedBytes printableBytes() {
  EncodedBytes table = encodedBytes(kBrowser);
  keep(table.entries, "\t\n\r");
  for (std::size_t byte = ' '; byte < 127; ++byte) {
    const char c = static_cast<char>(byte);
    setEntry(table.entries[byte], {&c, 1});
  }
  return table;
}

// The same as the encoder reads it.
constexpr UrlForms urlForms(const EncodedBytes& table, std::string_view digits) {
  UrlForms forms{};
  for (std::size_t byte = 0; byte < 256; ++byte) {
    UrlForm& form = forms.forms[byte];
    for (const char c : std::string_view(table.entries[byte])) form.text[form.length++] = c;
    if (form.length > 1) continue;
    auto& row = forms.keepingRows[byte % 16];
    row = static_cast<unsigned char>(row | UrlForms::kRowBits[byte / 16]);
  }
  for (std::size_t i = 0; i < digits.size(); ++i) forms.digits[i] = digits[i];
  forms.keptBlank = forms.forms[toByte(' ')].text[0];
  return forms;
}

constexpr UrlForms urlForms(const Flavour& flavour) {
  return urlForms(encodedBytes(flavour), flavour.digits);
}

// A set of flavours: the bit of a flavour is its place in kFlavours.
using FlavourSet = unsigned;

inline constexpr FlavourSet kAllFlavours = 0xff;

// For every byte, the flavours of which a property holds.
using FlavoursByByte = std::array<std::uint8_t, 256>;
static_assert(kFlavours.size() == 8);

template <typename Property>
constexpr FlavoursByByte flavoursWith(const Property& holds) {
  FlavoursByByte sets{};
  for (std::size_t i = 0; i < kFlavours.size(); ++i) {
    const EncodedBytes table = encodedBytes(kFlavours[i]);
    for (std::size_t byte = 0; byte < 256; ++byte) {
      if (holds(kFlavours[i], table, byte)) {
        sets[byte] = static_cast<std::uint8_t>(sets[byte] | (1U << i));
      }
    }
  }
  return sets;
}

// The flavours whose encoder gives the byte back when it is decoded alone.
constexpr FlavoursByByte flavoursKeeping() {
  return flavoursWith([](const Flavour& flavour, const EncodedBytes& table, std::size_t byte) {
    if (byte == '+' && flavour.plusIsBlank) return flavour.blank == "+";
    return staysAsItIs(table, byte);
  });
}

// The flavours whose encoder writes the byte as "%" and two digits.
constexpr FlavoursByByte flavoursEscaping() {
  return flavoursWith([](const Flavour&, const EncodedBytes& table, std::size_t byte) {
    return table.entries[byte][0] == '%' && table.entries[byte][1] != '\0';
  });
}

// The flavours whose encoder may write this digit after "%".
constexpr FlavoursByByte flavoursOfDigit() {
  return flavoursWith([](const Flavour& flavour, const EncodedBytes&, std::size_t byte) {
    return flavour.digits.find(static_cast<char>(byte)) != std::string_view::npos;
  });
}

}  // namespace pagescan::internal

#endif
