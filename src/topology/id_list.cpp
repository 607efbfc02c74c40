#include "topology/id_list.h"

#include "topology/slots.h"

std::int32_t IdList::next(std::int32_t at) const
{
    if (at < 1 || at >= count)
        return 0;
    for (std::int32_t i = at + 1; i <= count; ++i)
        if (items[i - 1] != 0)
            return i;
    return 0;
}

std::int32_t IdList::previous(std::int32_t at) const
{
    if (at < 1 || at >= count)
        return 0;
    for (std::int32_t i = at - 1; i >= 1; --i)
        if (items[i - 1] != 0)
            return i;
    return 0;
}

std::int32_t IdList::get(std::int32_t at) const
{
    return at < 1 || at > count ? 0 : items[at - 1];
}

std::int32_t IdList::add(std::int32_t value)
{
    if (!make_slots(&items, count, &capacity, &room))
        return 0;
    items[count] = value;
    return ++count;
}

void IdList::remove(std::int32_t at)
{
    // Not the last one: networks have always kept an id there, and pass over it.
    if (at > 0 && at < count)
        items[at - 1] = 0;
}

std::int32_t IdList::find(std::int32_t value) const
{
    for (std::int32_t i = 1; i != 0; i = next(i))
        if (const std::int32_t here = get(i); here != 0 && here == value)
            return i;
    return 0;
}

std::int32_t IdList::live_count() const
{
    std::int32_t live = 0;
    for (std::int32_t i = 0; i < count; ++i)
        live += items[i] != 0;
    return live;
}

IdList::~IdList()
{
    acad_free(items);
}
