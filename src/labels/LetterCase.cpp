#include "labels/LetterCase.h"

#include "labels/MissingWords.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ROCALG_920::labels {

namespace {

/// Capitals `step` apart from the first to the last, and how far behind each its small letter is.
struct Capitals {
    unsigned first;
    unsigned last;
    unsigned step;
    int distance;
};

/// Of the letters that take two bytes.
constexpr std::array capitals{
    Capitals{0x00C0, 0x00D6, 1, 32},
    Capitals{0x00D8, 0x00DE, 1, 32}, // Latin-1
    Capitals{0x0100, 0x012E, 2, 1},
    Capitals{0x0132, 0x0136, 2, 1}, // Latin Extended-A; the i of Turkish is two letters
    Capitals{0x0139, 0x0147, 2, 1},
    Capitals{0x014A, 0x0176, 2, 1}, //
    Capitals{0x0178, 0x0178, 1, -121},
    Capitals{0x0179, 0x017D, 2, 1}, //
    Capitals{0x0386, 0x0386, 1, 38},
    Capitals{0x0388, 0x038A, 1, 37}, // Greek
    Capitals{0x038C, 0x038C, 1, 64},
    Capitals{0x038E, 0x038F, 1, 63}, //
    Capitals{0x0391, 0x03A1, 1, 32},
    Capitals{0x03A3, 0x03AB, 1, 32}, //
    Capitals{0x03C2, 0x03C2, 1, 1},  // the small sigma that ends a word
    Capitals{0x0400, 0x040F, 1, 80},
    Capitals{0x0410, 0x042F, 1, 32}, // Cyrillic
    Capitals{0x048A, 0x04BE, 2, 1},
    Capitals{0x04D0, 0x04FE, 2, 1}, //
};

unsigned smallLetter(unsigned letter) noexcept
{
    for (const Capitals& range : capitals)
        if (letter >= range.first && letter <= range.last && (letter - range.first) % range.step == 0)
            return static_cast<unsigned>(static_cast<int>(letter) + range.distance);
    return letter;
}

} // namespace

std::string foldedCase(std::string_view text)
{
    std::string folded = lowerCase(text);
    for (std::size_t i = 0; i + 1 < folded.size(); ++i) {
        const auto lead = static_cast<unsigned char>(folded[i]);
        const auto next = static_cast<unsigned char>(folded[i + 1]);
        if ((lead & 0xE0U) != 0xC0U || (next & 0xC0U) != 0x80U)
            continue;
        const unsigned letter = smallLetter((lead & 0x1FU) << 6U | (next & 0x3FU));
        folded[i] = static_cast<char>(0xC0U | letter >> 6U);
        folded[i + 1] = static_cast<char>(0x80U | (letter & 0x3FU));
    }
    return folded;
}

} // namespace ROCALG_920::labels
