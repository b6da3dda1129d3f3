#include "save/sha256.h"

#include <openssl/evp.h>

#include <array>
#include <new>

namespace pagescan::tool {

void Sha256::Free::operator()(evp_md_ctx_st* context) const {
  EVP_MD_CTX_free(context);
}

Sha256::Sha256() : context_(EVP_MD_CTX_new()) {
  if (!context_ || EVP_DigestInit_ex(context_.get(), EVP_sha256(), nullptr) != 1) {
    throw std::bad_alloc();
  }
}

void Sha256::add(std::string_view bytes) {
  EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size());
}

std::string Sha256::hex() {
  constexpr char kDigits[] = "0123456789abcdef";
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest = {};
  unsigned size = 0;
  EVP_DigestFinal_ex(context_.get(), digest.data(), &size);
  std::string result;
  for (unsigned i = 0; i < size; ++i) {
    result.push_back(kDigits[digest[i] >> 4]);
    result.push_back(kDigits[digest[i] & 15]);
  }
  return result;
}

}  // namespace pagescan::tool
