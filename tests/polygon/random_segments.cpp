#include "tests/polygon/random_segments.h"

#include <cmath>
#include <limits>

namespace
{

double between(std::mt19937& random, double low, double high)
{
    return std::uniform_real_distribution<double>(low, high)(random);
}

int one_of(std::mt19937& random, int count)
{
    return std::uniform_int_distribution<int>(0, count - 1)(random);
}

double sign(std::mt19937& random)
{
    return one_of(random, 2) == 0 ? -1.0 : 1.0;
}

double any_bulge(std::mt19937& random)
{
    switch (one_of(random, 8)) {
    case 0:
        return between(random, -1.0, 1.0);
    case 1:
        return sign(random); // a half circle
    case 2:
        return between(random, -6.0, 6.0);
    case 3:
        return sign(random) * std::sqrt(2.0) - sign(random); // quarters and three quarters
    default:
        return 0.0;
    }
}

spot next_spot(std::mt19937& random, const std::vector<spot>& before)
{
    const spot at = before.empty() ? spot{0.0, 0.0} : before.back();
    const double bulge = any_bulge(random);
    switch (one_of(random, 6)) {
    case 0: // on the lattice
        return {std::round(between(random, -4, 4)), std::round(between(random, -4, 4)), bulge};
    case 1:
        return {at.x, at.y, bulge};
    case 2:
        return before.size() < 2 ? spot{1.0, 0.0, bulge}
                                 : spot{before[before.size() - 2].x, before[before.size() - 2].y, bulge};
    case 3:
        return {at.x + between(random, -0.01, 0.01), at.y + between(random, -0.01, 0.01), bulge};
    default:
        return {between(random, -5, 5), between(random, -5, 5), bulge, between(random, -1, 1)};
    }
}

} // namespace

std::vector<spot> ordinary_chain(std::mt19937& random, int nodes)
{
    std::vector<spot> spots;
    while (static_cast<int>(spots.size()) < nodes)
        spots.push_back(next_spot(random, spots));
    return spots;
}

std::vector<spot> nasty_chain(std::mt19937& random, int nodes)
{
    std::vector<spot> spots = ordinary_chain(random, nodes);
    for (std::size_t i = 1; i < spots.size(); ++i) {
        const double step =
            std::pow(10.0, one_of(random, 20) == 0 ? between(random, -160, 12) : between(random, -9, 3));
        switch (one_of(random, 8)) {
        case 0:
        case 1:
            spots[i].x = spots[i - 1].x + between(random, -step, step);
            spots[i].y = spots[i - 1].y + between(random, -step, step);
            break;
        case 2:
            spots[i].bulge = sign(random) * std::pow(10.0, between(random, -20, 8));
            break;
        case 3:
            spots[i].bulge = sign(random) * std::pow(10.0, between(random, -6, 6));
            break;
        default:
            break;
        }
        if (one_of(random, 100) == 0)
            spots[i].y = one_of(random, 2) == 0 ? std::numeric_limits<double>::quiet_NaN() : 1e170;
    }
    return spots;
}
