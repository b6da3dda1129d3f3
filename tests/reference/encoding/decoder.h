// What the twins of the decoders have in common: a decoder is its handler, which takes one item.
#ifndef PAGESCAN_TESTS_REFERENCE_ENCODING_DECODER_H
#define PAGESCAN_TESTS_REFERENCE_ENCODING_DECODER_H

#include <memory>
#include <vector>

#include "reference/encoding/queue.h"

namespace reference {

inline constexpr int kEnd = Queue::kEndOfQueue;

inline bool isIn(int byte, int first, int last) {
  return byte >= first && byte <= last;
}

inline bool isAsciiByte(int byte) {
  return isIn(byte, 0x00, 0x7F);
}

// What a handler returns.
struct Result {
  enum Kind { kFinished, kError, kContinue, kItems } kind;
  std::vector<int> items;
};
inline const Result kFinished{Result::kFinished, {}};
inline const Result kError{Result::kError, {}};
inline const Result kContinue{Result::kContinue, {}};

inline Result codePoint(int value) {
  return {Result::kItems, {value}};
}

class Decoder {
 public:
  Decoder() = default;
  Decoder(const Decoder&) = delete;
  Decoder& operator=(const Decoder&) = delete;
  virtual ~Decoder() = default;
  virtual Result handle(Queue& queue, int byte) = 0;
};

std::unique_ptr<Decoder> newGb18030Decoder();
std::unique_ptr<Decoder> newBig5Decoder();
std::unique_ptr<Decoder> newEucJpDecoder();
std::unique_ptr<Decoder> newIso2022JpDecoder();
std::unique_ptr<Decoder> newShiftJisDecoder();
std::unique_ptr<Decoder> newEucKrDecoder();

}  // namespace reference

#endif
