#include "topology/object.h"

#include <cmath>

#include "common/tolerances.h"

double TopoObject::get(std::int32_t) const
{
    return NO_VALUE;
}

void TopoObject::set(std::int32_t, double) {}

void TopoObject::link(std::int32_t) {}

void TopoObject::unlink(std::int32_t) {}

TopoObject* TopoObject::clone() const
{
    return new TopoObject(dimensions);
}

double TopoObject::squared_distance(const TopoObject* other, std::int32_t n) const
{
    if (!other)
        return NO_VALUE;
    double sum = 0.0;
    for (std::int32_t i = 0; i < n; ++i) {
        const double apart = get(i) - other->get(i);
        sum += apart * apart;
    }
    return sum;
}

bool TopoObject::matches(const TopoObject* other) const
{
    if (!other)
        return false;
    for (std::int32_t i = 0; i < dimensions; ++i)
        if (!(std::fabs(get(i) - other->get(i)) < LENGTH_TOL))
            return false;
    return true;
}
