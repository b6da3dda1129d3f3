#include "support/library_operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "pagescan.h"
#include "support/placement.h"
#include "support/record_attributes.h"

namespace pagescan::tests {
namespace {

std::string textOf(const RWCString& text) {
  return {text.data(), text.length()};
}

// ---- scanning and blanking

template <bool (*skip)(RWCString&, unsigned long, unsigned long&)>
Texts skipWith(const Texts& args) {
  RWCString text = stringOf(args[0]);
  unsigned long pos = asUnsigned(args[2]);
  const bool result = skip(text, asUnsigned(args[1]), pos);
  return outputs(result, pos);
}

Texts getStringValue(const Texts& args) {
  RWCString text = stringOf(args[0]);
  RWCString value = stringOf(args[1]);
  unsigned long valueStart = asUnsigned(args[3]);
  unsigned long furthest = asUnsigned(args[4]);
  const bool result = htmlGetStringValue(text, value, asUnsigned(args[2]), valueStart, furthest,
                                         asUnsigned(args[5]));
  return outputs(result, textOf(value), valueStart, furthest);
}

Texts elementTest(const Texts& args) {
  RWCString text = stringOf(args[2]);
  return outputs(isElementOfType(args[0].c_str(), asUnsigned(args[1]), text, asUnsigned(args[3]),
                                 args[4].c_str()[0]));
}

Texts findNextAttribute(const Texts& args) {
  RWCString text = stringOf(args[0]);
  RWCString name = stringOf(args[1]);
  RWCString value = stringOf(args[2]);
  unsigned long pos = asUnsigned(args[3]);
  unsigned long valueStart = asUnsigned(args[4]);
  htmlFindNextAttribute_(text, name, value, pos, valueStart);
  return outputs(textOf(name), textOf(value), pos, valueStart);
}

Texts overwriteTag(const Texts& args) {
  RWCString text = stringOf(args[0]);
  tqOverwriteTagWithBlanks(text, stringOf(args[1]), stringOf(args[2]));
  return {textOf(text)};
}

Texts overwriteScript(const Texts& args) {
  RWCString text = stringOf(args[0]);
  if (tqFindEndlessScript(text) != RWCString::npos) return {"endless"};
  tqOverwriteScriptWithBlanks(text);
  return {textOf(text)};
}

Texts removeFirstSingleTag(const Texts& args) {
  RWCString text = stringOf(args[0]);
  tqRemoveFirstSingleTag(text, stringOf(args[1]));
  return {textOf(text)};
}

Texts skipTagBody(const Texts& args) {
  RWCString text = stringOf(args[1]);
  tqSkipTagBody(stringOf(args[0]), text);
  return {textOf(text)};
}

Texts skipOnload(const Texts& args) {
  RWCString text = stringOf(args[0]);
  tqSkipOnloadAttribute(text);
  return {textOf(text)};
}

std::map<std::string, const RWCollectable*> pairsOf(const RWHashDictionary& dictionary) {
  std::map<std::string, const RWCollectable*> pairs;
  RWHashDictionaryIterator next(dictionary);
  while (const RWCollectable* const key = next()) {
    pairs.emplace(textOf(dynamic_cast<const RWCollectableString&>(*key)), next.value());
  }
  return pairs;
}

Texts findAttributes(const Texts& args) {
  RWCString text = stringOf(args[0]);
  unsigned long pos = asUnsigned(args[1]);
  RWHashDictionary values;
  RWHashDictionary offsets;
  CHTMLAttributeFinder().FindAttributes(text, pos, values, offsets);
  Texts out = outputs(pos, values.entries());
  const auto offsetOf = pairsOf(offsets);
  for (const auto& [name, value] : pairsOf(values)) {
    out.push_back(name);
    out.push_back(textOf(dynamic_cast<const RWCollectableString&>(*value)));
    out.push_back(output(dynamic_cast<const RWCollectableInt&>(*offsetOf.at(name)).value()));
  }
  values.clearAndDestroy();
  offsets.clearAndDestroy();
  return out;
}

// ---- records

Texts checkSum(const Texts& args) {
  return outputs(CZKHTMLDietTransactionsObject::CalcCheckSum(args[0].data(),
                                                             static_cast<int>(args[0].length())));
}

GoldenAttribute goldenOf(CZKHTMLDietAttributeObject& attribute) {
  return {attribute.GetAttributeName(), attribute.GetAttributeValue(),
          attribute.GetOriginalAttributeValue(), attribute.GetAttributeOffset()};
}

// The attributes with the record's first one first; the order of the others is not shown.
GoldenRecord goldenOf(CZKHTMLDietTransactionsObject& record) {
  GoldenRecord golden{record.GetTagName(), {}};
  for (CZKHTMLDietAttributeObject* const attribute : attributesOf(record)) {
    golden.attributes.push_back(goldenOf(*attribute));
  }
  return golden;
}

// Collects what a parser announces.
class Sink : public CZKHtmlDietVirtualQueue {
 public:
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    records.push_back(record);
    return false;
  }
  std::vector<GoldenRecord> golden() const {
    std::vector<GoldenRecord> result;
    for (CZKHTMLDietTransactionsObject* const record : records) {
      result.push_back(goldenOf(*record));
    }
    return result;
  }

  std::vector<CZKHTMLDietTransactionsObject*> records;
};

bool isEndless(const std::string& page) {
  return tqFindEndlessScript(RWCString(page.c_str())) != RWCString::npos;
}

Texts parseHtml(const Texts& args) {
  if (isEndless(args[1])) return {"endless"};
  Sink sink;
  CHTMLOffsetParser parser(args[0].c_str());
  parser.SetDietVirtualQueue(&sink);
  parser.ParseHTML(args[1].c_str(), args[1].length());
  return recordOutputs(sink.golden(), false);
}

Texts parseCss(const Texts& args) {
  Sink sink;
  CHTMLOffsetParser parser(args[0].c_str());
  parser.SetDietVirtualQueue(&sink);
  bool boundsError = false;
  try {
    parser.ParseCSS(stringOf(args[1]));
  } catch (const RWBoundsErr&) {
    boundsError = true;
  }
  return recordOutputs(sink.golden(), boundsError);
}

Texts printHtml(const Texts& args) {
  if (isEndless(args[1])) return {"endless"};
  CHTMLOffsetParser parser(args[0].c_str());
  parser.ParseHTML(args[1].c_str(), args[1].length());
  testing::internal::CaptureStdout();
  parser.PrintAll();
  return {testing::internal::GetCapturedStdout()};
}

// Puts the attributes into the order in which the record's PrintAll names them. No name holds a
// line end.
void sortAsPrinted(CZKHTMLDietTransactionsObject& record, GoldenRecord& golden) {
  testing::internal::CaptureStdout();
  record.PrintAll();
  const std::string printed = "\n" + testing::internal::GetCapturedStdout();
  const auto place = [&](const GoldenAttribute& attribute) {
    return printed.find("\nName:\t" + attribute.name + "\nValue:\t");
  };
  std::sort(golden.attributes.begin(), golden.attributes.end(),
            [&](const auto& a, const auto& b) { return place(a) < place(b); });
}

// ---- slices and URLs

Texts compareSlice(const Texts& args) {
  CTQBuffPart part;
  part.setPart(args[0].data(), 0, static_cast<int>(args[0].length()));
  RWCString text = stringOf(args[1]);
  const int result = part.compare(text, asBool(args[2]));
  return outputs((result > 0) - (result < 0));
}

Texts strip(const Texts& args) {
  RWCString url = stringOf(args[0]);
  stripUrl(url, asBool(args[1]));
  return {textOf(url)};
}

Texts protocol(const Texts& args) {
  int schemeLength = 0;
  const int code = getProtocol(stringOf(args[0]), schemeLength);
  return outputs(code, schemeLength);
}

Texts isHttp(const Texts& args) {
  return outputs(isHttpProtocol(stringOf(args[0])));
}

Texts rank(const Texts& args) {
  CDOMBaseLinkCmp link;
  link.level = asInt(args[0]);
  link.topRank = asBool(args[1]);
  link.preferred = asBool(args[2]);
  link.exact = asBool(args[3]);
  link.qualifierA = asBool(args[4]);
  link.qualifierB = asBool(args[5]);
  link.propFirst = asBool(args[6]);
  link.propSecond = asBool(args[7]);
  link.propThird = asBool(args[8]);
  return outputs(link.rank(), link.propRank());
}

class Base : public UrlBaseUnderTest {
 public:
  bool setBase(const std::string& url) override { return base_.setBase(stringOf(url)); }
  int shortParse() override { return base_.shortParse(); }
  int parse() override { return base_.parse(); }
  std::string calcUrl(std::string& url) override {
    RWCString text = stringOf(url);
    const RWCString result = base_.calcUrl(text);
    url = textOf(text);
    return textOf(result);
  }
  void calcUrl(std::string& in, std::string& out, bool resolveEmpty, bool decodePercent) override {
    const RWCString source = stringOf(in);
    RWCString result = stringOf(out);
    base_.calcUrl(source, result, resolveEmpty, decodePercent);
    in = textOf(source);
    out = textOf(result);
  }
  Texts state() override {
    return outputs(textOf(base_.fullUrl), textOf(base_.baseNoQuery), textOf(base_.protocol),
                   textOf(base_.host), textOf(base_.dirPath), textOf(base_.fileName),
                   base_.dirDepth, base_.parsed);
  }

 private:
  urlBase base_;
};

Texts urlProgram(const Texts& args) {
  Base base;
  return runUrlProgram(base, args);
}

// ---- encodings

UrlEncoding::EncodingType typeOf(const std::string& number) {
  return static_cast<UrlEncoding::EncodingType>(asInt(number));
}

Texts encode(const Texts& args) {
  RWCString source = stringOf(args[1]);
  RWCString destination = stringOf(args[2]);
  const bool result = UrlEncoding::EncodeString(source, destination, typeOf(args[0]));
  return outputs(result, textOf(destination), textOf(source));
}

Texts decode(const Texts& args) {
  RWCString text = stringOf(args[1]);
  const bool result = UrlEncoding::DecodeString(text, typeOf(args[0]));
  return outputs(result, textOf(text));
}

Texts checkOne(const Texts& args) {
  return outputs(UrlEncoding::CheckUrlDecoding(stringOf(args[1]), typeOf(args[0])));
}

Texts checkAny(const Texts& args) {
  return outputs(static_cast<int>(UrlEncoding::CheckUrlDecoding(stringOf(args[0]))));
}

Texts unreadables(const Texts& args) {
  RWCString out("old");
  const bool result = UrlEncoding::EncodeStringUnreadables(args[0].data(), args[0].length(), out);
  return outputs(result, textOf(out));
}

Texts utf8Test(const Texts& args) {
  return outputs(isUtf8(args[0].data(), static_cast<int>(args[0].length())));
}

template <const char* (*convert)(RWCString&)>
Texts convertWith(const Texts& args) {
  RWCString text = stringOf(args[0]);
  const bool own = convert(text) == text.data();
  return outputs(textOf(text), own);
}

Texts entities(const Texts& args) {
  RWCString text = stringOf(args[0]);
  CTQCharSet::fsGetSingleton()->convert(text);
  return {textOf(text)};
}

}  // namespace

std::vector<GoldenRecord> parsePageWithLibrary(const std::string& pageUrl,
                                               const std::string& page) {
  Sink sink;
  CHTMLOffsetParser parser(pageUrl.c_str());
  parser.SetDietVirtualQueue(&sink);
  parser.ParseHTML(page.c_str(), page.length());
  std::vector<GoldenRecord> records = sink.golden();
  for (std::size_t i = 0; i < records.size(); ++i) sortAsPrinted(*sink.records[i], records[i]);
  return records;
}

const OperationTable& libraryOperations() {
  static const OperationTable table = {
      {"skipws", skipWith<htmlSkipWhiteSpaces>},
      {"skipnws", skipWith<htmlSkipNonWhiteSpaces>},
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
      {"u2a", convertWith<ConvertUtf8toAnsi>},
      {"a2u", convertWith<ConvertAnsitoUtf8>},
      {"ent", entities},
  };
  return table;
}

}  // namespace pagescan::tests
