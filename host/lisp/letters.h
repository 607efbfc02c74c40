// letters.h: upper and lower case of Windows-1252 letters.
#pragma once

namespace host::lisp
{

// Small letters above 127 lie 32 behind their capitals from A-grave to thorn, the division sign apart;
// four pairs stand elsewhere.
constexpr unsigned char letter_pairs[][2] = {{0x8A, 0x9A}, {0x8C, 0x9C}, {0x8E, 0x9E}, {0x9F, 0xFF}};

constexpr char upper_letter(char c)
{
    const auto u = static_cast<unsigned char>(c);
    if ((u >= 'a' && u <= 'z') || (u >= 0xE0 && u <= 0xFE && u != 0xF7))
        return static_cast<char>(u - 32);
    for (const auto& pair : letter_pairs)
        if (u == pair[1])
            return static_cast<char>(pair[0]);
    return c;
}

constexpr char lower_letter(char c)
{
    const auto u = static_cast<unsigned char>(c);
    if ((u >= 'A' && u <= 'Z') || (u >= 0xC0 && u <= 0xDE && u != 0xD7))
        return static_cast<char>(u + 32);
    for (const auto& pair : letter_pairs)
        if (u == pair[0])
            return static_cast<char>(pair[1]);
    return c;
}

} // namespace host::lisp
