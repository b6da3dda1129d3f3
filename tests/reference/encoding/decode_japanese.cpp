// The decoders of EUC-JP, ISO-2022-JP and Shift_JIS.
#include <memory>
#include <utility>

#include "reference/encoding/decoder.h"
#include "reference/encoding/indexes.h"

namespace reference {
namespace {

// 12.1.1
class EucJp : public Decoder {
 public:
  Result handle(Queue& queue, int byte) override {
    if (byte == kEnd && leading_ != 0) {
      leading_ = 0;
      return kError;
    }
    if (byte == kEnd) return kFinished;
    if (leading_ == 0x8E && isIn(byte, 0xA1, 0xDF)) {
      leading_ = 0;
      return codePoint(0xFF61 - 0xA1 + byte);
    }
    if (leading_ == 0x8F && isIn(byte, 0xA1, 0xFE)) {
      jis0212_ = true;
      leading_ = byte;
      return kContinue;
    }
    if (leading_ != 0) return trailing(queue, std::exchange(leading_, 0), byte);
    if (isAsciiByte(byte)) return codePoint(byte);
    if (byte != 0x8E && byte != 0x8F && !isIn(byte, 0xA1, 0xFE)) return kError;
    leading_ = byte;
    return kContinue;
  }

 private:
  Result trailing(Queue& queue, int leading, int byte) {
    int found = kNull;
    if (isIn(leading, 0xA1, 0xFE) && isIn(byte, 0xA1, 0xFE)) {
      found = indexCodePoint(jis0212_ ? indexJis0212() : indexJis0208(),
                             (leading - 0xA1) * 94 + byte - 0xA1);
    }
    jis0212_ = false;
    if (found != kNull) return codePoint(found);
    if (isAsciiByte(byte)) queue.restore({byte});
    return kError;
  }

  bool jis0212_ = false;
  int leading_ = 0;
};

// 12.2.1
class Iso2022Jp : public Decoder {
 public:
  Result handle(Queue& queue, int byte) override {
    switch (state_) {
      case State::ascii:
      case State::roman:
        return asciiOrRoman(byte);
      case State::katakana:
        return katakana(byte);
      case State::leadingByte:
        return leadingByte(byte);
      case State::trailingByte:
        return trailingByte(byte);
      case State::escapeStart:
        return escapeStart(queue, byte);
      default:
        return escape(queue, byte);
    }
  }

 private:
  enum class State { ascii, roman, katakana, leadingByte, trailingByte, escapeStart, escape };

  Result asciiOrRoman(int byte) {
    if (byte == 0x1B) {
      state_ = State::escapeStart;
      return kContinue;
    }
    if (byte == kEnd) return kFinished;
    output_ = false;
    if (state_ == State::roman && byte == 0x5C) return codePoint(0xA5);
    if (state_ == State::roman && byte == 0x7E) return codePoint(0x203E);
    return isIn(byte, 0x00, 0x7F) && byte != 0x0E && byte != 0x0F ? codePoint(byte) : kError;
  }

  Result katakana(int byte) {
    if (byte == 0x1B) {
      state_ = State::escapeStart;
      return kContinue;
    }
    if (byte == kEnd) return kFinished;
    output_ = false;
    return isIn(byte, 0x21, 0x5F) ? codePoint(0xFF61 - 0x21 + byte) : kError;
  }

  Result leadingByte(int byte) {
    if (byte == 0x1B) {
      state_ = State::escapeStart;
      return kContinue;
    }
    if (byte == kEnd) return kFinished;
    output_ = false;
    if (!isIn(byte, 0x21, 0x7E)) return kError;
    leading_ = byte;
    state_ = State::trailingByte;
    return kContinue;
  }

  Result trailingByte(int byte) {
    if (byte == 0x1B) {
      state_ = State::escapeStart;
      return kError;
    }
    state_ = State::leadingByte;
    if (!isIn(byte, 0x21, 0x7E)) return kError;
    const int found = indexCodePoint(indexJis0208(), (leading_ - 0x21) * 94 + byte - 0x21);
    return found == kNull ? kError : codePoint(found);
  }

  Result escapeStart(Queue& queue, int byte) {
    if (byte == 0x24 || byte == 0x28) {
      leading_ = byte;
      state_ = State::escape;
      return kContinue;
    }
    queue.restore({byte});
    output_ = false;
    state_ = outputState_;
    return kError;
  }

  Result escape(Queue& queue, int byte) {
    const int leading = std::exchange(leading_, 0);
    State state = State::escape;  // stands for null
    if (leading == 0x28 && byte == 0x42) state = State::ascii;
    if (leading == 0x28 && byte == 0x4A) state = State::roman;
    if (leading == 0x28 && byte == 0x49) state = State::katakana;
    if (leading == 0x24 && (byte == 0x40 || byte == 0x42)) state = State::leadingByte;
    if (state != State::escape) {
      state_ = outputState_ = state;
      return std::exchange(output_, true) ? kError : kContinue;
    }
    queue.restore({leading, byte});
    output_ = false;
    state_ = outputState_;
    return kError;
  }

  State state_ = State::ascii;
  State outputState_ = State::ascii;
  int leading_ = 0;
  bool output_ = false;
};

// 12.3.1
class ShiftJis : public Decoder {
 public:
  Result handle(Queue& queue, int byte) override {
    if (byte == kEnd && leading_ != 0) {
      leading_ = 0;
      return kError;
    }
    if (byte == kEnd) return kFinished;
    if (leading_ != 0) return trailing(queue, std::exchange(leading_, 0), byte);
    if (isAsciiByte(byte) || byte == 0x80) return codePoint(byte);
    if (isIn(byte, 0xA1, 0xDF)) return codePoint(0xFF61 - 0xA1 + byte);
    if (!isIn(byte, 0x81, 0x9F) && !isIn(byte, 0xE0, 0xFC)) return kError;
    leading_ = byte;
    return kContinue;
  }

 private:
  static Result trailing(Queue& queue, int leading, int byte) {
    int pointer = kNull;
    const int offset = byte < 0x7F ? 0x40 : 0x41;
    const int leadingOffset = leading < 0xA0 ? 0x81 : 0xC1;
    if (isIn(byte, 0x40, 0x7E) || isIn(byte, 0x80, 0xFC)) {
      pointer = (leading - leadingOffset) * 188 + byte - offset;
    }
    if (isIn(pointer, 8836, 10715)) return codePoint(0xE000 - 8836 + pointer);
    const int found = pointer == kNull ? kNull : indexCodePoint(indexJis0208(), pointer);
    if (found != kNull) return codePoint(found);
    if (isAsciiByte(byte)) queue.restore({byte});
    return kError;
  }

  int leading_ = 0;
};

}  // namespace

std::unique_ptr<Decoder> newEucJpDecoder() {
  return std::make_unique<EucJp>();
}
std::unique_ptr<Decoder> newIso2022JpDecoder() {
  return std::make_unique<Iso2022Jp>();
}
std::unique_ptr<Decoder> newShiftJisDecoder() {
  return std::make_unique<ShiftJis>();
}

}  // namespace reference
