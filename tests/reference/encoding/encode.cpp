// Each handler follows the steps of its section in the standard, in their order.
#include "reference/encoding/encode.h"

#include <vector>

#include "reference/encoding/indexes.h"
#include "reference/encoding/queue.h"

namespace reference {

using pagescan::internal::Encoding;
namespace {

constexpr int kEnd = Queue::kEndOfQueue;

struct Result {
  enum Kind { kFinished, kError, kBytes } kind;
  std::vector<int> bytes;
  int codePoint = 0;  // of an error
};

Result bytes(std::vector<int> values) {
  return {Result::kBytes, std::move(values)};
}
Result error(int codePoint) {
  return {Result::kError, {}, codePoint};
}
const Result kFinished{Result::kFinished, {}};

bool isIn(int codePoint, int first, int last) {
  return codePoint >= first && codePoint <= last;
}
bool isAsciiCodePoint(int codePoint) {
  return isIn(codePoint, 0x00, 0x7F);
}

// 8.1.2
Result utf8(int codePoint) {
  const int count = isIn(codePoint, 0x80, 0x7FF) ? 1 : isIn(codePoint, 0x800, 0xFFFF) ? 2 : 3;
  const int offset = count == 1 ? 0xC0 : count == 2 ? 0xE0 : 0xF0;
  std::vector<int> result = {(codePoint >> (6 * count)) + offset};
  for (int left = count; left > 0; --left) {
    result.push_back(0x80 | ((codePoint >> (6 * (left - 1))) & 0x3F));
  }
  return bytes(result);
}

// 9.2
Result singleByte(int codePoint, const Index& index) {
  const int pointer = indexPointer(index, codePoint);
  return pointer == kNull ? error(codePoint) : bytes({pointer + 0x80});
}

struct TableRow {
  int codePoint;
  int bytes[2];
};
constexpr TableRow kGb18030Table[] = {
    {0xE78D, {0xA6, 0xD9}}, {0xE78E, {0xA6, 0xDA}}, {0xE78F, {0xA6, 0xDB}}, {0xE790, {0xA6, 0xDC}},
    {0xE791, {0xA6, 0xDD}}, {0xE792, {0xA6, 0xDE}}, {0xE793, {0xA6, 0xDF}}, {0xE794, {0xA6, 0xEC}},
    {0xE795, {0xA6, 0xED}}, {0xE796, {0xA6, 0xF3}}, {0xE81E, {0xFE, 0x59}}, {0xE826, {0xFE, 0x61}},
    {0xE82B, {0xFE, 0x66}}, {0xE82C, {0xFE, 0x67}}, {0xE832, {0xFE, 0x6D}}, {0xE843, {0xFE, 0x7E}},
    {0xE854, {0xFE, 0x90}}, {0xE864, {0xFE, 0xA0}},
};

// 10.2.2
Result gb18030(int codePoint, bool isGbk) {
  if (codePoint == 0xE5E5) return error(codePoint);
  if (isGbk && codePoint == 0x20AC) return bytes({0x80});
  for (const TableRow& row : kGb18030Table) {
    if (row.codePoint == codePoint) return bytes({row.bytes[0], row.bytes[1]});
  }
  int pointer = indexPointer(indexGb18030(), codePoint);
  if (pointer != kNull) {
    const int leading = pointer / 190 + 0x81;
    const int trailing = pointer % 190;
    const int offset = trailing < 0x3F ? 0x40 : 0x41;
    return bytes({leading, trailing + offset});
  }
  if (isGbk) return error(codePoint);
  pointer = indexGb18030RangesPointer(codePoint);
  const int byte1 = pointer / (10 * 126 * 10);
  pointer = pointer % (10 * 126 * 10);
  const int byte2 = pointer / (10 * 126);
  pointer = pointer % (10 * 126);
  const int byte3 = pointer / 10;
  const int byte4 = pointer % 10;
  return bytes({byte1 + 0x81, byte2 + 0x30, byte3 + 0x81, byte4 + 0x30});
}

// 11.1.2
Result big5(int codePoint) {
  const int pointer = indexBig5Pointer(codePoint);
  if (pointer == kNull) return error(codePoint);
  const int trailing = pointer % 157;
  return bytes({pointer / 157 + 0x81, trailing + (trailing < 0x3F ? 0x40 : 0x62)});
}

// 12.1.2
Result eucJp(int codePoint) {
  if (codePoint == 0xA5) return bytes({0x5C});
  if (codePoint == 0x203E) return bytes({0x7E});
  if (isIn(codePoint, 0xFF61, 0xFF9F)) return bytes({0x8E, codePoint - 0xFF61 + 0xA1});
  if (codePoint == 0x2212) codePoint = 0xFF0D;
  const int pointer = indexPointer(indexJis0208(), codePoint);
  if (pointer == kNull) return error(codePoint);
  return bytes({pointer / 94 + 0xA1, pointer % 94 + 0xA1});
}

// 12.3.2
Result shiftJis(int codePoint) {
  if (codePoint == 0x80) return bytes({0x80});
  if (codePoint == 0xA5) return bytes({0x5C});
  if (codePoint == 0x203E) return bytes({0x7E});
  if (isIn(codePoint, 0xFF61, 0xFF9F)) return bytes({codePoint - 0xFF61 + 0xA1});
  if (codePoint == 0x2212) codePoint = 0xFF0D;
  const int pointer = indexShiftJisPointer(codePoint);
  if (pointer == kNull) return error(codePoint);
  const int leading = pointer / 188;
  const int leadingOffset = leading < 0x1F ? 0x81 : 0xC1;
  const int trailing = pointer % 188;
  const int offset = trailing < 0x3F ? 0x40 : 0x41;
  return bytes({leading + leadingOffset, trailing + offset});
}

// 13.1.2
Result eucKr(int codePoint) {
  const int pointer = indexPointer(indexEucKr(), codePoint);
  if (pointer == kNull) return error(codePoint);
  return bytes({pointer / 190 + 0x81, pointer % 190 + 0x41});
}

// 14.5.2
Result userDefined(int codePoint) {
  return isIn(codePoint, 0xF780, 0xF7FF) ? bytes({codePoint - 0xF780 + 0x80}) : error(codePoint);
}

class Encoder {
 public:
  explicit Encoder(Encoding encoding) : encoding_(encoding) {}

  Result handle(Queue& queue, int codePoint) {
    if (encoding_ == Encoding::iso2022Jp) return iso2022Jp(queue, codePoint);
    if (codePoint == kEnd) return kFinished;
    if (isAsciiCodePoint(codePoint)) return bytes({codePoint});
    switch (encoding_) {
      case Encoding::utf8:
      case Encoding::replacement:
      case Encoding::utf16Be:
      case Encoding::utf16Le:
        return utf8(codePoint);
      case Encoding::gbk:
      case Encoding::gb18030:
        return gb18030(codePoint, encoding_ == Encoding::gbk);
      case Encoding::big5:
        return big5(codePoint);
      case Encoding::eucJp:
        return eucJp(codePoint);
      case Encoding::shiftJis:
        return shiftJis(codePoint);
      case Encoding::eucKr:
        return eucKr(codePoint);
      case Encoding::xUserDefined:
        return userDefined(codePoint);
      default:
        return singleByte(codePoint, indexSingleByte(encoding_));
    }
  }

 private:
  enum class State { ascii, roman, jis0208 };

  // 12.2.2
  Result iso2022Jp(Queue& queue, int codePoint) {
    if (codePoint == kEnd && state_ != State::ascii) return shift(State::ascii, {0x1B, 0x28, 0x42});
    if (codePoint == kEnd) return kFinished;
    if (state_ != State::jis0208 && (codePoint == 0x0E || codePoint == 0x0F || codePoint == 0x1B)) {
      return error(0xFFFD);
    }
    if (state_ == State::ascii && isAsciiCodePoint(codePoint)) return bytes({codePoint});
    const bool isYenOrOverline = codePoint == 0xA5 || codePoint == 0x203E;
    if (state_ == State::roman &&
        ((isAsciiCodePoint(codePoint) && codePoint != 0x5C && codePoint != 0x7E) ||
         isYenOrOverline)) {
      return bytes({codePoint == 0xA5 ? 0x5C : codePoint == 0x203E ? 0x7E : codePoint});
    }
    if (isAsciiCodePoint(codePoint)) {
      queue.restore({codePoint});
      return shift(State::ascii, {0x1B, 0x28, 0x42});
    }
    if (isYenOrOverline) {
      queue.restore({codePoint});
      return shift(State::roman, {0x1B, 0x28, 0x4A});
    }
    return kanji(queue, codePoint);
  }

  Result kanji(Queue& queue, int codePoint) {
    if (codePoint == 0x2212) codePoint = 0xFF0D;
    if (isIn(codePoint, 0xFF61, 0xFF9F)) {
      codePoint = indexCodePoint(indexKatakana(), codePoint - 0xFF61);
    }
    const int pointer = indexPointer(indexJis0208(), codePoint);
    if (pointer == kNull) {
      if (state_ != State::jis0208) return error(codePoint);
      queue.restore({codePoint});
      return shift(State::ascii, {0x1B, 0x28, 0x42});
    }
    if (state_ != State::jis0208) {
      queue.restore({codePoint});
      return shift(State::jis0208, {0x1B, 0x24, 0x42});
    }
    return bytes({pointer / 94 + 0x21, pointer % 94 + 0x21});
  }

  Result shift(State state, std::vector<int> escape) {
    state_ = state;
    return bytes(std::move(escape));
  }

  Encoding encoding_;
  State state_ = State::ascii;
};

}  // namespace

std::string encode(std::u32string_view text, Encoding encoding) {
  Queue queue = Queue::of(text);
  Encoder encoder(encoding);
  std::string out;
  for (;;) {
    const Result result = encoder.handle(queue, queue.read());
    if (result.kind == Result::kFinished) return out;
    for (const int byte : result.bytes) out += static_cast<char>(static_cast<unsigned char>(byte));
    if (result.kind == Result::kError) out += "&#" + std::to_string(result.codePoint) + ";";
  }
}

}  // namespace reference
