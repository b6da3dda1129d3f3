// The small parts of `pagescan save`: addresses, media types, names, files.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>

#include <cstring>
#include <filesystem>
#include <set>

#include "save/address.h"
#include "save/file_names.h"
#include "save/media_type.h"
#include "save/sha256.h"
#include "save/single_file.h"
#include "save/whole_file.h"
#include "support/run_program.h"

namespace pagescan::tests {
namespace {

using namespace pagescan::tool;

bool isPublic(const std::string& text) {
  sockaddr_storage address = {};
  if (text.find(':') == std::string::npos) {
    sockaddr_in ipv4 = {};
    ipv4.sin_family = AF_INET;
    EXPECT_EQ(::inet_pton(AF_INET, text.c_str(), &ipv4.sin_addr), 1) << text;
    std::memcpy(&address, &ipv4, sizeof ipv4);
  } else {
    sockaddr_in6 ipv6 = {};
    ipv6.sin6_family = AF_INET6;
    EXPECT_EQ(::inet_pton(AF_INET6, text.c_str(), &ipv6.sin6_addr), 1) << text;
    std::memcpy(&address, &ipv6, sizeof ipv6);
  }
  return isPublicAddress(reinterpret_cast<const sockaddr&>(address));
}

TEST(Address, ThoseOfThePublicInternetArePublic) {
  for (const char* text :
       {"1.1.1.1",        "8.8.8.8",        "9.255.255.255",    "11.0.0.0",
        "100.63.255.255", "100.128.0.0",    "126.255.255.255",  "128.0.0.1",
        "172.15.255.255", "172.32.0.0",     "192.167.255.255",  "192.169.0.0",
        "198.17.255.255", "198.20.0.0",     "223.255.255.255",  "2606:4700::1111",
        "2a00::1",        "::ffff:8.8.8.8", "64:ff9b::808:808", "2002:808:808::1"}) {
    EXPECT_TRUE(isPublic(text)) << text;
  }
}

TEST(Address, AllOthersAreNot) {
  for (const char* text : {"0.0.0.0",
                           "0.1.2.3",
                           "10.0.0.1",
                           "10.255.255.255",
                           "100.64.0.1",
                           "100.127.255.255",
                           "127.0.0.1",
                           "127.255.255.255",
                           "169.254.169.254",
                           "172.16.0.1",
                           "172.31.255.255",
                           "192.0.0.8",
                           "192.0.2.1",
                           "192.168.1.1",
                           "198.18.0.1",
                           "198.19.255.255",
                           "198.51.100.1",
                           "203.0.113.9",
                           "224.0.0.1",
                           "239.1.1.1",
                           "240.0.0.1",
                           "255.255.255.255",
                           "::",
                           "::1",
                           "::127.0.0.1",
                           "::ffff:127.0.0.1",
                           "::ffff:10.1.1.1",
                           "64:ff9b::7f00:1",
                           "64:ff9b:1::a00:1",
                           "100::1",
                           "2001::1",
                           "2001:db8::1",
                           "2002:7f00:1::",
                           "2002:a00:1::1",
                           "3fff::1",
                           "fc00::1",
                           "fd12::1",
                           "fe80::1",
                           "fec0::1",
                           "ff02::1"}) {
    EXPECT_FALSE(isPublic(text)) << text;
  }
  sockaddr local = {};
  local.sa_family = AF_UNIX;
  EXPECT_FALSE(isPublicAddress(local));
}

TEST(MediaType, IsReadFromTheHeader) {
  const struct {
    const char *header, *essence, *charset;
  } kCases[] = {
      {"text/html", "text/html", ""},
      {" Text/HTML ; Charset=KOI8-R ", "text/html", "KOI8-R"},
      {"text/css;a=b;charset=\"utf-8\";charset=x", "text/css", "utf-8"},
      {"text/html;charset=\"utf-8", "text/html", ""},
      {"text/html;charset=a b", "text/html", ""},
      {"image/svg+xml", "image/svg+xml", ""},
      {"", "", ""},
      {"html", "", ""},
      {"/html", "", ""},
      {"text/", "", ""},
      {"text/ht\"ml", "", ""},
      {"a/b/c", "", ""},
  };
  for (const auto& [header, essence, charset] : kCases) {
    const MediaType type = mediaTypeOf(header);
    EXPECT_EQ(type.essence, essence) << header;
    EXPECT_EQ(type.charset, charset) << header;
  }
}

TEST(FileNames, AreOfTheUrlAndTheType) {
  const struct {
    const char *url, *type, *name;
  } kCases[] = {
      {"http://h/a/logo.png", "image/png", "logo.png"},
      {"http://h/a/logo.png?v=1", "image/jpeg", "logo.jpg"},
      {"http://h/a/logo", "image/png", "logo.png"},
      {"http://h/", "text/html", "index.html"},
      {"http://h", "text/html", "index.html"},
      {"http://h/a/", "text/css", "index.css"},
      {"http://h/A%20B.PNG", "image/png", "a_b.png"},
      {"http://h/%2e%2e%2f%2e%2e%2fetc%2fpasswd", "text/plain", "_etc_passwd.txt"},
      {"http://h/..%5C..%5Cx.exe", "application/octet-stream", "_x.bin"},
      {"http://h/%C3%A9t%C3%A9.gif", "image/gif", "_t_.gif"},
      {"http://h/x.woff2", "application/octet-stream", "x.woff2"},
      {"http://h/x.html", "application/octet-stream", "x.bin"},
      {"http://h/x.a%2Fb", "x/y", "x.bin"},
      {"http://h/con.png", "image/png", "_con.png"},
      {"http://h/COM7", "image/png", "_com7.png"},
      {"http://h/com10.png", "image/png", "com10.png"},
      {"http://h/nul.tar.gz", "application/gzip", "nul_tar.gz"},
      {"http://h/.htaccess", "text/plain", "_htaccess.txt"},
      {"http://h/-rf", "text/plain", "_-rf.txt"},
      {"http://h/a.b.c.", "image/png", "a_b_c.png"},
      {"http://h/%00%0a%1b", "image/png", "index.png"},
  };
  for (const auto& [url, type, name] : kCases) {
    FileNames names;
    EXPECT_EQ(names.allot(url, mediaTypeOf(type)), name) << url;
  }
}

TEST(FileNames, DifferWhateverCountsForTheFileSystem) {
  FileNames names;
  const MediaType png = mediaTypeOf("image/png");
  EXPECT_EQ(names.allot("http://h/a.png", png), "a.png");
  EXPECT_EQ(names.allot("http://h/A.png", png), "a-2.png");
  EXPECT_EQ(names.allot("http://h/a-2.png", png), "a-2-2.png");
  EXPECT_EQ(names.allot("http://h/b/a.png", png), "a-3.png");
  std::set<std::string> all;
  for (int i = 0; i < 2000; ++i) {
    const std::string name = names.allot("http://h/" + std::string(3000, 'x') + ".png", png);
    EXPECT_LE(name.size(), 80U);
    EXPECT_TRUE(all.insert(name).second);
  }
}

TEST(Sha256, IsThatOfTheBytes) {
  Sha256 hash;
  hash.add("a");
  hash.add("bc");
  EXPECT_EQ(hash.hex(), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(Base64, IsPadded) {
  EXPECT_EQ(base64(""), "");
  EXPECT_EQ(base64("f"), "Zg==");
  EXPECT_EQ(base64("fo"), "Zm8=");
  EXPECT_EQ(base64("foo"), "Zm9v");
  EXPECT_EQ(base64("\xFF\xFE\xFD\xFC"), "//79/A==");
}

TEST(WholeFile, IsThereOnceItIsComplete) {
  const TemporaryFolder folder;
  const std::string path = folder.path() + "/a";
  {
    WholeFile file(path);
    file.write("half");
    EXPECT_FALSE(std::filesystem::exists(path));
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
  WholeFile file(path);
  file.write("who");
  file.write("le");
  EXPECT_TRUE(file.commit());
  EXPECT_EQ(readFile(path), "whole");
  WholeFile nowhere(folder.path() + "/none/a");
  nowhere.write("x");
  EXPECT_FALSE(nowhere.commit());
  EXPECT_EQ(nowhere.error(), ENOENT);
}

}  // namespace
}  // namespace pagescan::tests
