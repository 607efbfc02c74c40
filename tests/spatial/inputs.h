// inputs.h: places of chance, of the kinds that trees find hard.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

struct place {
    double x, y, z;
};

enum class place_kind {
    SCATTERED,
    GRIDDED,
    IN_LINE,
    EQUAL,
    NEAR,
    DOUBLED_LINE,
    HUGE,
    DIAGONAL,
    EXPONENTIAL,
    POISONED,
    STRANGE,
    KINDS
};

inline place random_place(place_kind kind, std::mt19937& random)
{
    const auto real = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(random); };
    const auto whole = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(random); };
    const double t = real(-50, 50);
    switch (kind) {
    case place_kind::GRIDDED:
        return {whole(0, 6) * 1.0, whole(0, 6) * 1.0, whole(0, 1) * 1.0};
    case place_kind::IN_LINE:
        return {640000 + 3 * t, 5120000 - t, 7};
    case place_kind::EQUAL:
        return {1.5, -2.5, 3.5};
    case place_kind::NEAR: // about as far apart as one place reaches
        return {whole(0, 3) + whole(-2, 2) * 0.5e-6, whole(0, 2) + whole(-2, 2) * 1e-6, whole(-1, 1) * 2e-6};
    case place_kind::DOUBLED_LINE:
        return {whole(0, 30) * 0.1, 0, 0};
    case place_kind::HUGE: // neighbouring numbers, whose mean is one of them
        return {std::nextafter(1e13, whole(0, 1) ? 0 : 1e300) + whole(0, 3) * 0.001953125, 1e13, 0};
    case place_kind::DIAGONAL: // in order these make stairs, with splits in each dimension
        return {t + real(0, 2), t + real(0, 2), t + real(0, 2)};
    case place_kind::EXPONENTIAL:
        return {std::exp2(real(-900, 900)), -std::exp2(real(-900, 900)), std::exp2(real(-9, 9))};
    case place_kind::POISONED: // ordinary ones with a few that are none
        return {whole(0, 40) ? t : NAN, whole(0, 40) ? real(-50, 50) : INFINITY,
                whole(0, 40) ? 3.0 : -INFINITY};
    case place_kind::STRANGE: {
        const double strange[] = {NAN, INFINITY, -INFINITY, 1e308, -1e308, 1e-320, 0.0, -0.0, 1.0};
        return {strange[whole(0, 8)], strange[whole(0, 8)], strange[whole(0, 8)]};
    }
    default:
        return {t, real(-50, 50), real(-50, 50)};
    }
}

enum class place_order { CHANCE, RISING, FALLING, OUTWARDS, ORDERS };

// Places as they come from lines and from numbering: one beyond the other, which makes trees as deep as can be.
inline std::vector<place> random_places(place_kind kind, place_order order, int count, std::mt19937& random)
{
    std::vector<place> places;
    for (int i = 0; i < count; ++i)
        places.push_back(random_place(kind, random));
    const auto rank = [](double at) { return std::isnan(at) ? -INFINITY : at; };
    const auto key = [&](const place& p) { return std::make_tuple(rank(p.x), rank(p.y), rank(p.z)); };
    if (order != place_order::CHANCE)
        std::sort(places.begin(), places.end(), [&](const auto& a, const auto& b) { return key(a) < key(b); });
    if (order == place_order::FALLING)
        std::reverse(places.begin(), places.end());
    if (order == place_order::OUTWARDS) { // both ways from the middle
        std::vector<place> turned;
        for (std::size_t i = places.size() / 2, j = i; i > 0 || j < places.size();) {
            if (i > 0)
                turned.push_back(places[--i]);
            if (j < places.size())
                turned.push_back(places[j++]);
        }
        places = turned;
    }
    return places;
}
