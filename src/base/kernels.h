// The inner loops that pay for wide vectors, and the one place that chooses between their versions.
//
// Every kernel is written over a vector type (kernels_impl.h) and compiled for each level: portable
// (words of eight bytes, on every 64-bit machine), and on x86-64 SSE2, which every such machine
// has, and AVX2. With AVX-512 the searches are others: those for texts and regions are compiled
// once more, those for tags and marks are written for it (kernels_avx512.cpp). The choice is made
// when the library is loaded; before that the best level that needs no asking serves. Ranges are
// [begin, end); nothing outside is read.
#ifndef PAGESCAN_BASE_KERNELS_H
#define PAGESCAN_BASE_KERNELS_H

#include <array>
#include <cstddef>
#include <cstdint>

namespace pagescan::internal {

// A byte b fits when (b | fold) == value: `fold` is 0x20 for a letter of either case, else 0.
struct ByteProbe {
  char value;
  char fold;
};

// A text to be found, and two of its bytes by which vectors filter its candidates.
struct Needle {
  const char* text;
  std::size_t length;  // not 0
  bool ignoresCase;    // of ASCII letters
  std::size_t lead;    // where the first of the two stands in the text
  std::size_t distance;
  ByteProbe first;
  ByteProbe second;
};

// Where two delimiters stand; null for one that was not found.
struct Region {
  const char* open;
  const char* close;
};

// Pairs of neighbouring bytes as isUtf8 judges them.
struct PairCount {
  std::size_t good;  // a lead byte and a continuation byte
  std::size_t bad;   // a lead byte and anything else; an ASCII byte and a continuation byte
};

// How far a run of decoding came, and whether a "+" or an escape was decoded.
struct UrlDecoding {
  const char* source;
  char* out;
  bool changed;
};

// What a byte becomes when it is encoded. Four bytes are copied, `length` of them count.
struct UrlForm {
  char text[3];
  unsigned char length;
};

// The forms of all bytes, and the same once more for vectors: a byte that is not escaped is itself,
// except for the blank, and an escape is made of "%" and two of `digits`.
struct UrlForms {
  // By the low half of a byte, a bit for each high half with which it is kept.
  static constexpr std::array<unsigned char, 16> kRowBits = {1, 2, 4, 8, 16, 32, 64, 128};

  std::array<UrlForm, 256> forms;
  std::array<unsigned char, 16> keepingRows;
  std::array<char, 16> digits;
  char keptBlank;
};

// How far a run of encoding came.
struct UrlEncoded {
  const char* source;
  char* out;
};

// Which three bytes after a "<" are worth a look: those whose kinds have a bit in common.
struct TagFilter {
  std::array<unsigned char, 256> kinds[3];

  bool passes(const char* opening) const {
    return (kinds[0][kindIndex(opening[1])] & kinds[1][kindIndex(opening[2])] &
            kinds[2][kindIndex(opening[3])]) != 0;
  }

 private:
  static std::size_t kindIndex(char c) { return static_cast<unsigned char>(c); }
};

// A place in style text that is in no string, comment or url.
struct StylePlace {
  const char* at;
  const char* floor;  // not after `at`: the end of the last string, comment or url
};

// Of up to 64 bytes of a link, a bit for each that is in a set; the lowest is of the first byte.
struct UrlBytes {
  std::uint64_t changed;     // not in kKeptUrlBytes (url_bytes.h)
  std::uint64_t ampersands;  // "&"
  std::uint64_t slashes;     // "/"
  std::uint64_t dots;        // "." and "%"
  std::uint64_t hostBytes;   // in kKeptHostBytes
};

// The ends of lines in a range: how many, and the last one; null where there is none.
struct LineEnds {
  std::size_t count;
  const char* last;
};

// Where the bytes stand that matter in tags: a bit for each byte of some blocks of 64, the first in
// the lowest bit of the first word. The word after the last one is there so that 64 bits can be
// read from any place in a block.
struct TagMarks {
  static constexpr std::size_t kBlock = 64;
  static constexpr std::size_t kMostBlocks = 16;
  using Words = std::array<std::uint64_t, kMostBlocks + 1>;

  Words openings;  // "<"
  Words nameEnds;  // white space of tags (TAB, LF, FF, CR, blank), "/", ">", "="
  Words quotes;    // double ones
};

struct Kernels {
  // The first place of the needle, or `end`.
  const char* (*findText)(const char* begin, const char* end, const Needle& needle);

  // The first place of `close` in a range not shorter than `close`, and the first one of `open`, at
  // least when it lies before; null where there is none. The two must have the same two probes at
  // the same distance, so that one search for these finds the candidates of both. "<!--" and "-->"
  // both hold "--":
  //
  //   x <!-- a -- b -->
  //       ^^   ^^   ^^
  //       |    |    "-->" begins here: the region's close
  //       |    neither
  //       "<!--" begins two bytes before: its open
  Region (*findRegion)(const char* begin, const char* end, const Needle& open, const Needle& close);

  // The first "<" that passes the filter, or `end`. `end` bounds the "<" alone: three bytes after
  // it must be readable.
  const char* (*findTag)(const char* begin, const char* end, const TagFilter& filter);

  // The first place before `limit` at which a delimiter of a script or of a comment may begin, or
  // `limit`. `end` bounds what may be read.
  const char* (*findMark)(const char* begin, const char* limit, const char* end);

  // Marks `count` blocks, at most as many as there are words for; other words stay as they are.
  void (*markTags)(const char* blocks, std::size_t count, TagMarks& marks);

  // Whether marking a tag costs less than what reading it by marks saves.
  bool tagMarksPay;

  // Passes HTML white space, a whole vector at a time: returns the first other byte, or a place
  // with less than a vector left and only white space before it.
  const char* (*skipWhiteSpace)(const char* begin, const char* end);

  // The XOR of `count` 64-bit little-endian words at any alignment.
  std::uint64_t (*xorWords)(const char* words, std::size_t count);

  // The pairs of a range of at least one byte. May stop once more than `mostBad` are bad.
  PairCount (*countUtf8Pairs)(const char* begin, const char* end, std::size_t mostBad);

  // Copies bytes up to the first one of 128 or above and returns its place, or `end`. `out` has
  // room for the whole range; what stands there after the copied bytes is unspecified.
  const char* (*copyAscii)(const char* begin, const char* end, char* out);

  // Each LF, and each CR without a LF after it. `limit`, not before `end`, bounds what may be read.
  LineEnds (*countLineEnds)(const char* begin, const char* end, const char* limit);

  // Whether the range holds one of two bytes.
  bool (*holdsEither)(const char* begin, const char* end, char a, char b);

  // Copies bytes, each "+" as `plus`, and decodes escapes, up to the end or a "%" that is not to be
  // decoded. `out` has room for the whole range.
  UrlDecoding (*decodeUrl)(const char* begin, const char* end, char* out, char plus);

  // Encodes the range and returns the end of what was written. `out` has room for three bytes for
  // each byte and for four more.
  char* (*encodeUrl)(const UrlForms& forms, const char* begin, const char* end, char* out);

  // The next place of style text that needs a look, past comments and simple strings: a backslash;
  // "@" before i, n or a backslash; "(" after url, src or set; a string without an end, with a new
  // line in it, or with a quote after a backslash. Letters of either case. Or `end`.
  // begin    of the text; `from` lies between it and `end`
  StylePlace (*findStyleMark)(const char* begin, const char* end, StylePlace from);

  // The first quote, backslash, LF, CR or FF; or `end`.
  const char* (*findStringMark)(const char* begin, const char* end);

  // The first quote, backslash, round bracket, or byte of 01 to 20 and 7F; or `end`.
  const char* (*findUrlMark)(const char* begin, const char* end);

  // What bytes of a link are, from 1 to 64 of them.
  UrlBytes (*urlBytes)(const char* begin, std::size_t size);
};

extern const Kernels* activeKernels;

inline const Kernels& kernels() {
  return *activeKernels;
}

enum class KernelLevel { portable, sse2, avx2, avx512 };

// Makes `level` the active one and returns true, or false on a machine without it. Not for use
// while other threads are in the library: it is the switch for tests and benchmarks.
bool useKernels(KernelLevel level);

}  // namespace pagescan::internal

#endif
