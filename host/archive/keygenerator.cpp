#include "keygenerator.h"

#include <mutex>

KeyGenerator::KeyGenerator(std::uint64_t seed)
    : m_rng(seed)
{
}

KeyGenerator::KeyGenerator()
{
    std::random_device rd;
    std::seed_seq seq{rd(), rd(), rd(), rd(), rd(), rd()};
    m_rng.seed(seq);
}

std::string KeyGenerator::Next()
{
    static const char* hex = "0123456789ABCDEF";
    for (;;) {
        const std::uint64_t hi = m_rng();
        const std::uint64_t lo = m_rng();
        if (hi == 0 && lo == 0)
            continue;
        std::string key;
        key.reserve(36);
        for (int i = 0; i < 32; ++i) {
            const std::uint64_t word = i < 16 ? hi : lo;
            const int shift = 60 - 4 * (i % 16);
            key.push_back(hex[(word >> shift) & 0xF]);
            if (i == 7 || i == 11 || i == 15 || i == 19)
                key.push_back('-');
        }
        return key;
    }
}

std::string KeyGenerator::NewKey()
{
    static std::mutex mutex;
    static KeyGenerator generator;
    std::lock_guard<std::mutex> lock(mutex);
    return generator.Next();
}
