// The decoders of gb18030, Big5 and EUC-KR.
#include <memory>
#include <utility>

#include "reference/encoding/decoder.h"
#include "reference/encoding/indexes.h"

namespace reference {
namespace {

// 10.2.1
class Gb18030 : public Decoder {
 public:
  Result handle(Queue& queue, int byte) override {
    if (byte == kEnd && first_ == 0 && second_ == 0 && third_ == 0) return kFinished;
    if (byte == kEnd) {
      first_ = second_ = third_ = 0;
      return kError;
    }
    if (third_ != 0) return fourth(queue, byte);
    if (second_ != 0) {
      if (isIn(byte, 0x81, 0xFE)) {
        third_ = byte;
        return kContinue;
      }
      queue.restore({second_, byte});
      first_ = second_ = 0;
      return kError;
    }
    if (first_ != 0) return second(queue, byte);
    if (isAsciiByte(byte)) return codePoint(byte);
    if (byte == 0x80) return codePoint(0x20AC);
    if (!isIn(byte, 0x81, 0xFE)) return kError;
    first_ = byte;
    return kContinue;
  }

 private:
  Result fourth(Queue& queue, int byte) {
    if (!isIn(byte, 0x30, 0x39)) {
      queue.restore({second_, third_, byte});
      first_ = second_ = third_ = 0;
      return kError;
    }
    const int found = indexGb18030RangesCodePoint(((first_ - 0x81) * (10 * 126 * 10)) +
                                                  ((second_ - 0x30) * (10 * 126)) +
                                                  ((third_ - 0x81) * 10) + byte - 0x30);
    first_ = second_ = third_ = 0;
    return found == kNull ? kError : codePoint(found);
  }

  Result second(Queue& queue, int byte) {
    if (isIn(byte, 0x30, 0x39)) {
      second_ = byte;
      return kContinue;
    }
    const int leading = first_;
    first_ = 0;
    int pointer = kNull;
    const int offset = byte < 0x7F ? 0x40 : 0x41;
    if (isIn(byte, 0x40, 0x7E) || isIn(byte, 0x80, 0xFE)) {
      pointer = (leading - 0x81) * 190 + (byte - offset);
    }
    const int found = pointer == kNull ? kNull : indexCodePoint(indexGb18030(), pointer);
    if (found != kNull) return codePoint(found);
    if (isAsciiByte(byte)) queue.restore({byte});
    return kError;
  }

  int first_ = 0;
  int second_ = 0;
  int third_ = 0;
};

// 11.1.1
class Big5 : public Decoder {
 public:
  Result handle(Queue& queue, int byte) override {
    if (byte == kEnd && leading_ != 0) {
      leading_ = 0;
      return kError;
    }
    if (byte == kEnd) return kFinished;
    if (leading_ != 0) return trailing(queue, std::exchange(leading_, 0), byte);
    if (isAsciiByte(byte)) return codePoint(byte);
    if (!isIn(byte, 0x81, 0xFE)) return kError;
    leading_ = byte;
    return kContinue;
  }

 private:
  static Result trailing(Queue& queue, int leading, int byte) {
    int pointer = kNull;
    const int offset = byte < 0x7F ? 0x40 : 0x62;
    if (isIn(byte, 0x40, 0x7E) || isIn(byte, 0xA1, 0xFE)) {
      pointer = (leading - 0x81) * 157 + (byte - offset);
    }
    if (pointer == 1133) return {Result::kItems, {0xCA, 0x304}};
    if (pointer == 1135) return {Result::kItems, {0xCA, 0x30C}};
    if (pointer == 1164) return {Result::kItems, {0xEA, 0x304}};
    if (pointer == 1166) return {Result::kItems, {0xEA, 0x30C}};
    const int found = pointer == kNull ? kNull : indexCodePoint(indexBig5(), pointer);
    if (found != kNull) return codePoint(found);
    if (isAsciiByte(byte)) queue.restore({byte});
    return kError;
  }

  int leading_ = 0;
};

// 13.1.1
class EucKr : public Decoder {
 public:
  Result handle(Queue& queue, int byte) override {
    if (byte == kEnd && leading_ != 0) {
      leading_ = 0;
      return kError;
    }
    if (byte == kEnd) return kFinished;
    if (leading_ != 0) {
      const int leading = std::exchange(leading_, 0);
      int pointer = kNull;
      if (isIn(byte, 0x41, 0xFE)) pointer = (leading - 0x81) * 190 + (byte - 0x41);
      const int found = pointer == kNull ? kNull : indexCodePoint(indexEucKr(), pointer);
      if (found != kNull) return codePoint(found);
      if (isAsciiByte(byte)) queue.restore({byte});
      return kError;
    }
    if (isAsciiByte(byte)) return codePoint(byte);
    if (!isIn(byte, 0x81, 0xFE)) return kError;
    leading_ = byte;
    return kContinue;
  }

 private:
  int leading_ = 0;
};

}  // namespace

std::unique_ptr<Decoder> newGb18030Decoder() {
  return std::make_unique<Gb18030>();
}
std::unique_ptr<Decoder> newBig5Decoder() {
  return std::make_unique<Big5>();
}
std::unique_ptr<Decoder> newEucKrDecoder() {
  return std::make_unique<EucKr>();
}

}  // namespace reference
