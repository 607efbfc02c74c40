#include "topology/object_array.h"

#include "topology/slots.h"

std::int32_t ObjectArray::next(std::int32_t at) const
{
    if (at < 1 || at >= count)
        return 0;
    for (std::int32_t i = at + 1; i <= count && items[i - 1]; ++i)
        if (!items[i - 1]->deleted)
            return i;
    return 0;
}

std::int32_t ObjectArray::previous(std::int32_t at) const
{
    // The last entry has no previous one; walks rely on starting below it.
    if (at < 1 || at >= count)
        return 0;
    for (std::int32_t i = at - 1; i >= 1 && items[i - 1]; --i)
        if (!items[i - 1]->deleted)
            return i;
    return 0;
}

TopoObject* ObjectArray::get(std::int32_t at) const
{
    if (at < 1 || at > count)
        return nullptr;
    TopoObject* object = items[at - 1];
    return object && !object->deleted ? object : nullptr;
}

std::int32_t ObjectArray::add(TopoObject* object)
{
    if (!make_slots(&items, count, &capacity, &room))
        return 0;
    if (object)
        object->deleted = 0;
    items[count] = object;
    return ++count;
}

void ObjectArray::remove(std::int32_t at)
{
    if (TopoObject* object = get(at))
        object->deleted = 1;
}

std::int32_t ObjectArray::find(std::int32_t object_id) const
{
    for (std::int32_t i = 1; i != 0; i = next(i))
        if (const TopoObject* object = get(i); object && object->id == object_id)
            return i;
    return 0;
}

ObjectArray::~ObjectArray()
{
    for (std::int32_t i = 0; i < count; ++i)
        delete items[i];
    acad_free(items);
}
