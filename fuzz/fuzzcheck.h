#pragma once

#include <cstdio>
#include <cstdlib>

// A property the fuzzed code must keep; a violation aborts so both libFuzzer
// and the corpus replay report it.
#define FUZZ_CHECK(cond)                                                                 \
    do {                                                                                 \
        if (!(cond)) {                                                                   \
            std::fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #cond); \
            std::abort();                                                                \
        }                                                                                \
    } while (0)
