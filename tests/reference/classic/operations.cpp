#include "reference/classic/operations.h"

#include <map>
#include <string>
#include <vector>

#include "reference/classic/charset.h"
#include "reference/classic/records.h"
#include "reference/classic/tqbuffpart.h"
#include "reference/classic/tqurlbase.h"
#include "reference/classic/urlcmp.h"
#include "reference/classic/zkhtmlattributefinder.h"
#include "reference/classic/zkhtmloffsetparser.h"
#include "reference/classic/zkhtmlparseutils.h"
#include "reference/classic/zkurlencoding.h"
#include "reference/classic/zkutf8.h"

namespace reference {

namespace {

using pagescan::tests::asBool;
using pagescan::tests::asInt;
using pagescan::tests::asUnsigned;
using pagescan::tests::GoldenRecord;
using pagescan::tests::outputs;
using pagescan::tests::Texts;

// ---- scanning and blanking

Texts skipWhiteSpaces(const Texts& args) {
  unsigned long pos = asUnsigned(args[2]);
  const bool result = htmlSkipWhiteSpaces(args[0], asUnsigned(args[1]), pos);
  return outputs(result, pos);
}

Texts skipNonWhiteSpaces(const Texts& args) {
  unsigned long pos = asUnsigned(args[2]);
  const bool result = htmlSkipNonWhiteSpaces(args[0], asUnsigned(args[1]), pos);
  return outputs(result, pos);
}

Texts getStringValue(const Texts& args) {
  std::string value = args[1];
  unsigned long valueStart = asUnsigned(args[3]);
  unsigned long furthest = asUnsigned(args[4]);
  const bool result = htmlGetStringValue(args[0], value, asUnsigned(args[2]), valueStart, furthest,
                                         asUnsigned(args[5]));
  return outputs(result, value, valueStart, furthest);
}

Texts elementTest(const Texts& args) {
  return outputs(isElementOfType(args[0].c_str(), asUnsigned(args[1]), args[2], asUnsigned(args[3]),
                                 args[4].c_str()[0]));
}

Texts findNextAttribute(const Texts& args) {
  std::string name = args[1];
  std::string value = args[2];
  unsigned long pos = asUnsigned(args[3]);
  unsigned long valueStart = asUnsigned(args[4]);
  htmlFindNextAttribute_(args[0], name, value, pos, valueStart);
  return outputs(name, value, pos, valueStart);
}

Texts overwriteTag(const Texts& args) {
  std::string text = args[0];
  tqOverwriteTagWithBlanks(text, args[1], args[2]);
  return {text};
}

Texts overwriteScript(const Texts& args) {
  std::string text = args[0];
  std::size_t endlessAt = 0;
  if (!tqOverwriteScriptWithBlanks(text, endlessAt)) return {"endless"};
  return {text};
}

Texts removeFirstSingleTag(const Texts& args) {
  std::string text = args[0];
  tqRemoveFirstSingleTag(text, args[1]);
  return {text};
}

Texts skipTagBody(const Texts& args) {
  std::string text = args[1];
  tqSkipTagBody(args[0], text);
  return {text};
}

Texts skipOnload(const Texts& args) {
  std::string text = args[0];
  tqSkipOnloadAttribute(text);
  return {text};
}

Texts findAttributes(const Texts& args) {
  unsigned long pos = asUnsigned(args[1]);
  std::map<std::string, std::string> values;
  std::map<std::string, int> offsets;
  FindAttributes(args[0], pos, values, offsets);
  Texts out = outputs(pos, values.size());
  for (const auto& [name, value] : values) {
    out.insert(out.end(), {name, value, std::to_string(offsets.at(name))});
  }
  return out;
}

// ---- records

Texts checkSum(const Texts& args) {
  return outputs(CalcCheckSum(args[0].data(), static_cast<int>(args[0].length())));
}

// A record's getters show a text up to its first NUL.
std::string shown(const std::string& text) {
  return text.c_str();
}

std::vector<GoldenRecord> golden(const std::vector<Record>& records) {
  std::vector<GoldenRecord> out;
  for (const Record& record : records) {
    out.push_back({record.tag, {}});
    for (const auto& [name, value, original, offset] : record.attributes) {
      out.back().attributes.push_back({shown(name), shown(value), shown(original), offset});
    }
  }
  return out;
}

Texts parseHtml(const Texts& args) {
  const HtmlPass pass = ParseHTML(args[0], args[1]);
  if (pass.endless) return {"endless"};
  return pagescan::tests::recordOutputs(golden(pass.records), false);
}

Texts parseCss(const Texts& args) {
  const StylePass pass = ParseCSS(args[0], args[1]);
  return pagescan::tests::recordOutputs(golden(pass.records), pass.boundsError);
}

Texts printHtml(const Texts& args) {
  const HtmlPass pass = ParseHTML(args[0], args[1]);
  if (pass.endless) return {"endless"};
  return {PrintAll(pass.records)};
}

// ---- slices and URLs

Texts compareSlice(const Texts& args) {
  const int result = comparePart(args[0], args[1], asBool(args[2]));
  return outputs((result > 0) - (result < 0));
}

Texts strip(const Texts& args) {
  std::string url = args[0];
  stripUrl(url, asBool(args[1]));
  return {url};
}

Texts protocol(const Texts& args) {
  int schemeLength = 0;
  const int code = getProtocol(args[0], schemeLength);
  return outputs(code, schemeLength);
}

Texts isHttp(const Texts& args) {
  return outputs(isHttpProtocol(args[0]));
}

Texts rank(const Texts& args) {
  const LinkCompare link = {asInt(args[0]),  asBool(args[1]), asBool(args[2]),
                            asBool(args[3]), asBool(args[4]), asBool(args[5]),
                            asBool(args[6]), asBool(args[7]), asBool(args[8])};
  return outputs(link.rank(), link.propRank());
}

class Base : public pagescan::tests::UrlBaseUnderTest {
 public:
  bool setBase(const std::string& url) override { return base_.setBase(url); }
  int shortParse() override { return base_.shortParse(); }
  int parse() override { return base_.parse(); }
  std::string calcUrl(std::string& url) override { return base_.calcUrl(url); }
  void calcUrl(std::string& in, std::string& out, bool resolveEmpty, bool decodePercent) override {
    base_.calcUrl(in, out, resolveEmpty, decodePercent);
  }
  Texts state() override {
    return outputs(base_.fullUrl, base_.baseNoQuery, base_.protocol, base_.host, base_.dirPath,
                   base_.fileName, base_.dirDepth, base_.parsed);
  }

 private:
  UrlBase base_;
};

Texts urlProgram(const Texts& args) {
  Base base;
  return pagescan::tests::runUrlProgram(base, args);
}

// ---- encodings

Texts encode(const Texts& args) {
  std::string destination = args[2];
  const bool result = EncodeString(args[1], destination, asInt(args[0]));
  return outputs(result, destination, args[1]);
}

Texts decode(const Texts& args) {
  std::string text = args[1];
  const bool result = DecodeString(text, asInt(args[0]));
  return outputs(result, text);
}

Texts checkOne(const Texts& args) {
  return outputs(CheckUrlDecoding(args[1], asInt(args[0])));
}

Texts checkAny(const Texts& args) {
  return outputs(CheckUrlDecoding(args[0]));
}

Texts unreadables(const Texts& args) {
  std::string out = "old";
  const bool result = EncodeStringUnreadables(args[0].data(), args[0].length(), out);
  return outputs(result, out);
}

Texts utf8Test(const Texts& args) {
  return outputs(isUtf8(args[0].data(), static_cast<int>(args[0].length())));
}

Texts utf8ToAnsi(const Texts& args) {
  std::string text = args[0];
  const bool own = ConvertUtf8toAnsi(text) == text.data();
  return outputs(text, own);
}

Texts ansiToUtf8(const Texts& args) {
  std::string text = args[0];
  const bool own = ConvertAnsitoUtf8(text) == text.data();
  return outputs(text, own);
}

Texts entities(const Texts& args) {
  std::string text = args[0];
  convert(text);
  return {text};
}

}  // namespace

std::vector<GoldenRecord> parsePage(const std::string& pageUrl, const std::string& page) {
  return golden(ParseHTML(pageUrl, page).records);
}

const pagescan::tests::OperationTable& operations() {
  static const pagescan::tests::OperationTable table = {
      {"skipws", skipWhiteSpaces},
      {"skipnws", skipNonWhiteSpaces},
      {"getstr", getStringValue},
      {"iselem", elementTest},
      {"nextattr", findNextAttribute},
      {"blanktag", overwriteTag},
      {"blankscript", overwriteScript},
      {"remfirst", removeFirstSingleTag},
      {"skipbody", skipTagBody},
      {"onload", skipOnload},
      {"findattr", findAttributes},
      {"checksum", checkSum},
      {"parsehtml", parseHtml},
      {"parsecss", parseCss},
      {"printhtml", printHtml},
      {"buffcmp", compareSlice},
      {"strip", strip},
      {"proto", protocol},
      {"ishttp", isHttp},
      {"rank", rank},
      {"urlbase", urlProgram},
      {"enc", encode},
      {"dec", decode},
      {"chk", checkOne},
      {"chkany", checkAny},
      {"unread", unreadables},
      {"isutf8", utf8Test},
      {"u2a", utf8ToAnsi},
      {"a2u", ansiToUtf8},
      {"ent", entities},
  };
  return table;
}

}  // namespace reference
