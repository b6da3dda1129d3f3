// From the name of an encoding to its decoder.
#ifndef PAGESCAN_ENCODING_DECODER_OF_H
#define PAGESCAN_ENCODING_DECODER_OF_H

#include "encoding/decoders.h"
#include "encoding/iso2022jp_decoder.h"
#include "encoding/two_byte_decoders.h"

namespace pagescan::internal {

// Calls use(decoder) with a new decoder of the encoding and returns what that returns.
template <typename Use>
auto withDecoderOf(Encoding encoding, const Use& use) {
  switch (encoding) {
    case Encoding::utf8:
      return use(Utf8Decoder());
    case Encoding::gbk:
    case Encoding::gb18030:
      return use(Gb18030Decoder());
    case Encoding::big5:
      return use(Big5Decoder());
    case Encoding::eucJp:
      return use(EucJpDecoder());
    case Encoding::iso2022Jp:
      return use(Iso2022JpDecoder());
    case Encoding::shiftJis:
      return use(ShiftJisDecoder());
    case Encoding::eucKr:
      return use(EucKrDecoder());
    case Encoding::replacement:
      return use(ReplacementDecoder());
    case Encoding::utf16Be:
      return use(Utf16Decoder<true>());
    case Encoding::utf16Le:
      return use(Utf16Decoder<false>());
    default:
      return use(SingleByteDecoder(singleByteTableOf(encoding)));
  }
}

}  // namespace pagescan::internal

#endif
