// A host's use of every family of the library.
#ifndef PAGESCAN_TESTS_HOSTS_EVERY_FAMILY_H
#define PAGESCAN_TESTS_HOSTS_EVERY_FAMILY_H

// The name of the first family that gives a wrong answer, or null when all answers are right.
extern "C" __attribute__((visibility("default"))) const char* firstWrongFamily();

#endif
