// dxf_binary.h: makes a binary DXF file of an ASCII one.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace host::db::test
{

template <class T>
void put_bytes(std::string& out, T value)
{
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    out.append(bytes, sizeof value);
}

inline void put_binary_value(std::string& out, int code, const std::string& value)
{
    const auto in = [code](int low, int high) { return code >= low && code <= high; };
    if (in(10, 59) || in(110, 149) || in(210, 239) || in(460, 469) || in(1010, 1059)) {
        put_bytes(out, std::strtod(value.c_str(), nullptr));
    } else if (in(60, 79) || in(170, 179) || in(270, 289) || in(370, 389) || in(400, 409) || in(1060, 1070)) {
        put_bytes(out, static_cast<std::int16_t>(std::atoi(value.c_str())));
    } else if (in(80, 99) || in(420, 429) || in(440, 459) || code == 1071) {
        put_bytes(out, static_cast<std::int32_t>(std::atol(value.c_str())));
    } else if (in(160, 169)) {
        put_bytes(out, static_cast<std::int64_t>(std::atoll(value.c_str())));
    } else if (in(290, 299)) {
        out += static_cast<char>(std::atoi(value.c_str()));
    } else if (in(310, 319) || code == 1004) {
        out += static_cast<char>(value.size() / 2);
        for (std::size_t i = 0; i + 1 < value.size(); i += 2)
            out += static_cast<char>(std::strtol(value.substr(i, 2).c_str(), nullptr, 16));
    } else {
        out += value + '\0';
    }
}

// `wide`: group codes of two bytes, as from R13 on; else one, with FF before those of extended data.
inline std::string binary_dxf(const std::string& ascii, bool wide)
{
    std::string out("AutoCAD Binary DXF\r\n\x1A\0", 22);
    std::size_t at = 0;
    const auto line = [&] {
        const std::size_t end = ascii.find('\n', at);
        const std::string text = ascii.substr(at, end - at);
        at = end == std::string::npos ? ascii.size() : end + 1;
        return text;
    };
    while (at < ascii.size()) {
        const int code = std::atoi(line().c_str());
        const std::string value = line();
        if (!wide && code < 255) {
            out += static_cast<char>(code);
        } else {
            if (!wide)
                out += '\xFF';
            put_bytes(out, static_cast<std::int16_t>(code));
        }
        put_binary_value(out, code, value);
    }
    return out;
}

} // namespace host::db::test
