// SHA-256 of bytes that come in pieces.
#ifndef PAGESCAN_TOOL_SAVE_SHA256_H
#define PAGESCAN_TOOL_SAVE_SHA256_H

#include <memory>
#include <string>
#include <string_view>

struct evp_md_ctx_st;

namespace pagescan::tool {

class Sha256 {
 public:
  Sha256();
  void add(std::string_view bytes);

  // In lower case hexadecimal digits; nothing may be added afterwards.
  std::string hex();

 private:
  struct Free {
    void operator()(evp_md_ctx_st* context) const;
  };
  std::unique_ptr<evp_md_ctx_st, Free> context_;
};

}  // namespace pagescan::tool

#endif
