// Slow twin of the base URL and of relative resolution.
#ifndef PAGESCAN_TESTS_REFERENCE_TQURLBASE_H
#define PAGESCAN_TESTS_REFERENCE_TQURLBASE_H

#include <string>

namespace reference {

bool isHttpProtocol(const std::string& url);

class UrlBase {
 public:
  UrlBase() = default;
  explicit UrlBase(const std::string& url) { setBase(url); }

  bool setBase(const std::string& url);
  int shortParse();
  int parse();
  std::string calcUrl(std::string& url);
  void calcUrl(const std::string& in, std::string& out, bool resolveEmpty, bool decodePercent);

  std::string fullUrl;
  std::string baseNoQuery;
  std::string protocol;
  std::string host;
  std::string dirPath;
  std::string fileName;
  int dirDepth = 0;
  bool parsed = false;
  bool spareFlag = false;

 private:
  int split(const std::string& schemeEnd);
  std::string climb(const std::string& url) const;
  void addPrefix(std::string& out) const;
  void foldParents(std::string& out) const;
};

}  // namespace reference

#endif
