// A host that loads, uses and unloads the library a hundred times, through a module that is linked
// to it. Neither memory nor a mapping stays after.
//
// Usage: load_and_unload MODULE LIBRARY
#include <dlfcn.h>
#include <malloc.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kRounds = 100;
constexpr int kFirstMeasured = 10;  // the loader itself keeps some memory of the first rounds

[[noreturn]] void fail(int round, const char* what) {
  std::fprintf(stderr, "round %d: %s\n", round, what);
  std::exit(1);
}

bool isLoaded(const char* library) {
  void* const handle = dlopen(library, RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

void useOnce(const char* module, const char* library, int round) {
  void* const handle = dlopen(module, RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) fail(round, dlerror());
  if (!isLoaded(library)) fail(round, "the module came without the library");
  void* const symbol = dlsym(handle, "firstWrongFamily");
  if (symbol == nullptr) fail(round, dlerror());
  const char* const wrong = reinterpret_cast<const char* (*)()>(symbol)();
  if (wrong != nullptr) fail(round, wrong);
  if (dlclose(handle) != 0) fail(round, dlerror());
  if (isLoaded(library)) fail(round, "the library is still there");
}

// What the process holds.
struct Holdings {
  std::size_t bytes;  // allocated
  std::size_t pages;  // mapped, be it files or memory
};

std::size_t mappedPages() {
  std::FILE* const sizes = std::fopen("/proc/self/statm", "r");
  std::size_t pages = 0;
  if (sizes == nullptr || std::fscanf(sizes, "%zu", &pages) != 1) fail(0, "no sizes to be read");
  std::fclose(sizes);
  return pages;
}

Holdings holdings() {
  const std::size_t pages = mappedPages();
  const struct mallinfo2 info = mallinfo2();
  return {info.uordblks + info.hblkhd, pages};
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) fail(0, "two arguments are expected");
  Holdings before{};
  for (int round = 0; round < kRounds; ++round) {
    useOnce(argv[1], argv[2], round);
    if (round == kFirstMeasured) before = holdings();
  }
  const Holdings after = holdings();
  std::printf("after %d rounds %zu bytes, %zu pages; after %d %zu bytes, %zu pages\n",
              kFirstMeasured + 1, before.bytes, before.pages, kRounds, after.bytes, after.pages);
#ifdef PAGESCAN_SANITIZED
  return 0;  // malloc is another one; AddressSanitizer looks for leaks itself when the program ends
#else
  if (before.bytes == 0) fail(0, "the bytes in use cannot be told");
  return after.bytes == before.bytes && after.pages == before.pages ? 0 : 1;
#endif
}
