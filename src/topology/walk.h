// walk.h: walks over the members of an array, those taken out passed over.
#pragma once

#include "topology/object_array.h"

// The first id in use, or 0; goes on with ObjectArray::next.
inline std::int32_t first_of(const ObjectArray& array)
{
    return array.get(1) ? 1 : array.next(1);
}
