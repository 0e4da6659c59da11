#include <array>
#include <random>

#include <pelta/Platform/Bundle.h>

namespace pelta {

std::string makeUUIDString() {
    std::random_device randomness;
    std::array<unsigned, 4> words{};
    for (unsigned& word : words) {
        word = randomness();
    }
    words[1] = (words[1] & 0xFFFF0FFFU) | 0x00004000U;  // Version 4: random.
    words[2] = (words[2] & 0x3FFFFFFFU) | 0x80000000U;  // The usual variant.

    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (unsigned index = 0; index < 32; ++index) {
        if (index == 8 || index == 12 || index == 16 || index == 20) {
            text += '-';
        }
        text += digits[(words[index / 8] >> (28 - index % 8 * 4)) & 0xFU];
    }
    return text;
}

}  // namespace pelta
