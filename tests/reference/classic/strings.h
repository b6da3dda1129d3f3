// The plain searches and edits on which the slow twins rest.
//
// Positions are byte offsets; a failed search gives npos. Folding concerns the ASCII letters alone,
// whatever the process's locale. NUL bytes are ordinary bytes unless a comment says otherwise.
#ifndef PAGESCAN_TESTS_REFERENCE_STRINGS_H
#define PAGESCAN_TESTS_REFERENCE_STRINGS_H

#include <cstddef>
#include <string>

namespace reference {

inline constexpr std::size_t npos = std::string::npos;

enum class Case { exact, ignore };
enum class Strip { leading = 1, trailing = 2, both = 3 };

char toLower(char c);
char toUpper(char c);
bool isLetter(char c);
bool isDigit(char c);

// TAB, LF, CR and SPACE, nothing else.
bool isBlank(char c);

std::string lowered(std::string text);
std::string uppered(std::string text);

// The first place at or after start where pattern stands. An empty pattern stands at start; nothing
// is found from a start beyond the length.
std::size_t index(const std::string& text, const std::string& pattern, std::size_t start,
                  Case fold = Case::exact);

// The text without its leading run, its trailing run or both runs of c.
std::string strip(const std::string& text, Strip ends, char c);

// The byte at an offset up to the length, where the closing NUL stands.
char byteAt(const std::string& text, std::size_t offset);

// strncmp and strncasecmp of the "C" locale: up to count bytes, ended by a NUL; the result is the
// difference of the first two bytes that differ.
int compareBounded(const char* a, const char* b, std::size_t count, Case fold);

}  // namespace reference

#endif
