// Each handler follows the steps of its section in the standard, in their order.
#include "reference/encoding/decode.h"

#include <memory>
#include <utility>
#include <vector>

#include "reference/encoding/decoder.h"
#include "reference/encoding/indexes.h"

namespace reference {

using pagescan::internal::Encoding;
namespace {

// 8.1.1
class Utf8 : public Decoder {
 public:
  Result handle(Queue& queue, int byte) override {
    if (byte == kEnd && needed_ != 0) {
      needed_ = 0;
      return kError;
    }
    if (byte == kEnd) return kFinished;
    if (needed_ == 0) return start(byte);
    if (!isIn(byte, lower_, upper_)) {
      codePoint_ = needed_ = seen_ = 0;
      lower_ = 0x80;
      upper_ = 0xBF;
      queue.restore({byte});
      return kError;
    }
    lower_ = 0x80;
    upper_ = 0xBF;
    codePoint_ = (codePoint_ << 6) | (byte & 0x3F);
    ++seen_;
    if (seen_ != needed_) return kContinue;
    const int whole = codePoint_;
    codePoint_ = needed_ = seen_ = 0;
    return codePoint(whole);
  }

 private:
  Result start(int byte) {
    if (isAsciiByte(byte)) return codePoint(byte);
    if (isIn(byte, 0xC2, 0xDF)) {
      needed_ = 1;
      codePoint_ = byte & 0x1F;
    } else if (isIn(byte, 0xE0, 0xEF)) {
      if (byte == 0xE0) lower_ = 0xA0;
      if (byte == 0xED) upper_ = 0x9F;
      needed_ = 2;
      codePoint_ = byte & 0xF;
    } else if (isIn(byte, 0xF0, 0xF4)) {
      if (byte == 0xF0) lower_ = 0x90;
      if (byte == 0xF4) upper_ = 0x8F;
      needed_ = 3;
      codePoint_ = byte & 0x7;
    } else {
      return kError;
    }
    return kContinue;
  }

  int codePoint_ = 0;
  int seen_ = 0;
  int needed_ = 0;
  int lower_ = 0x80;
  int upper_ = 0xBF;
};

// 9.1
class SingleByte : public Decoder {
 public:
  explicit SingleByte(const Index& index) : index_(index) {}
  Result handle(Queue& /*queue*/, int byte) override {
    if (byte == kEnd) return kFinished;
    if (isAsciiByte(byte)) return codePoint(byte);
    const int found = indexCodePoint(index_, byte - 0x80);
    return found == kNull ? kError : codePoint(found);
  }

 private:
  const Index& index_;
};

// 14.1.1
class Replacement : public Decoder {
 public:
  Result handle(Queue& /*queue*/, int byte) override {
    if (byte == kEnd) return kFinished;
    return std::exchange(errorReturned_, true) ? kFinished : kError;
  }

 private:
  bool errorReturned_ = false;
};

// 14.2.1
class Utf16 : public Decoder {
 public:
  explicit Utf16(bool isBigEndian) : isBigEndian_(isBigEndian) {}
  Result handle(Queue& queue, int byte) override {
    if (byte == kEnd && (leadingByte_ != kNull || leadingSurrogate_ != kNull)) {
      leadingByte_ = leadingSurrogate_ = kNull;
      return kError;
    }
    if (byte == kEnd) return kFinished;
    if (leadingByte_ == kNull) {
      leadingByte_ = byte;
      return kContinue;
    }
    const int unit = isBigEndian_ ? (leadingByte_ << 8) + byte : (byte << 8) + leadingByte_;
    leadingByte_ = kNull;
    if (leadingSurrogate_ != kNull) {
      const int leading = std::exchange(leadingSurrogate_, kNull);
      if (isIn(unit, 0xDC00, 0xDFFF)) {
        return codePoint(0x10000 + ((leading - 0xD800) << 10) + (unit - 0xDC00));
      }
      const int byte1 = unit >> 8;
      const int byte2 = unit & 0xFF;
      if (isBigEndian_) queue.restore({byte1, byte2});
      if (!isBigEndian_) queue.restore({byte2, byte1});
      return kError;
    }
    if (isIn(unit, 0xD800, 0xDBFF)) {
      leadingSurrogate_ = unit;
      return kContinue;
    }
    return isIn(unit, 0xDC00, 0xDFFF) ? kError : codePoint(unit);
  }

 private:
  bool isBigEndian_;
  int leadingByte_ = kNull;
  int leadingSurrogate_ = kNull;
};

// 14.5.1
class UserDefined : public Decoder {
 public:
  Result handle(Queue& /*queue*/, int byte) override {
    if (byte == kEnd) return kFinished;
    return codePoint(isAsciiByte(byte) ? byte : 0xF780 + byte - 0x80);
  }
};

std::unique_ptr<Decoder> decoderOf(Encoding encoding) {
  switch (encoding) {
    case Encoding::utf8:
      return std::make_unique<Utf8>();
    case Encoding::gbk:
    case Encoding::gb18030:
      return newGb18030Decoder();
    case Encoding::big5:
      return newBig5Decoder();
    case Encoding::eucJp:
      return newEucJpDecoder();
    case Encoding::iso2022Jp:
      return newIso2022JpDecoder();
    case Encoding::shiftJis:
      return newShiftJisDecoder();
    case Encoding::eucKr:
      return newEucKrDecoder();
    case Encoding::replacement:
      return std::make_unique<Replacement>();
    case Encoding::utf16Be:
      return std::make_unique<Utf16>(true);
    case Encoding::utf16Le:
      return std::make_unique<Utf16>(false);
    case Encoding::xUserDefined:
      return std::make_unique<UserDefined>();
    default:
      return std::make_unique<SingleByte>(indexSingleByte(encoding));
  }
}

void pushUtf8(std::string& out, int codePoint) {
  const auto push = [&out](int byte) {
    out += static_cast<char>(static_cast<unsigned char>(byte));
  };
  if (codePoint < 0x80) {
    push(codePoint);
  } else if (codePoint < 0x800) {
    push(0xC0 + codePoint / 0x40);
    push(0x80 + codePoint % 0x40);
  } else if (codePoint < 0x10000) {
    push(0xE0 + codePoint / 0x1000);
    push(0x80 + codePoint / 0x40 % 0x40);
    push(0x80 + codePoint % 0x40);
  } else {
    push(0xF0 + codePoint / 0x40000);
    push(0x80 + codePoint / 0x1000 % 0x40);
    push(0x80 + codePoint / 0x40 % 0x40);
    push(0x80 + codePoint % 0x40);
  }
}

}  // namespace

std::string decode(std::string_view bytes, Encoding encoding) {
  std::vector<unsigned char> items(bytes.begin(), bytes.end());
  Queue queue = Queue::of(items);
  const std::unique_ptr<Decoder> decoder = decoderOf(encoding);
  std::string out;
  for (;;) {
    const Result result = decoder->handle(queue, queue.read());
    if (result.kind == Result::kFinished) return out;
    if (result.kind == Result::kError) pushUtf8(out, 0xFFFD);
    for (const int item : result.items) pushUtf8(out, item);
  }
}

}  // namespace reference
