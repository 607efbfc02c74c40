#include "topology/holder_array.h"

namespace
{

constexpr std::int32_t SHORT_ARRAY = 32;

// Multiplied by the golden ratio in 32 bits, so that ids in a row stand apart.
std::uint32_t hash_of(std::int32_t id)
{
    const std::uint32_t mixed = static_cast<std::uint32_t>(id) * 2654435769u;
    return mixed ^ mixed >> 15;
}

} // namespace

void HolderArray::note(std::int32_t place)
{
    const std::uint32_t last = static_cast<std::uint32_t>(table_.count) - 1;
    std::uint32_t at = hash_of(items[place - 1]->id) & last;
    while (table_.items[at] != 0)
        at = (at + 1) & last;
    table_.items[at] = place;
}

// Four times as large as the array, so that it lasts until that has doubled.
void HolderArray::make_table()
{
    std::int32_t size = 4 * SHORT_ARRAY;
    while (size < 4 * count && size < 1 << 30)
        size *= 2;
    table_.count = 0;
    if (2 * static_cast<std::int64_t>(count) > size || !table_.fill_up(size, 0)) {
        table_.count = 0;
        return;
    }
    for (std::int32_t place = 1; place <= count; ++place)
        if (get(place))
            note(place);
}

std::int32_t HolderArray::add(TopoObject* object)
{
    const std::int32_t place = ObjectArray::add(object);
    if (place > SHORT_ARRAY && (table_.count == 0 || 2 * place > table_.count))
        make_table();
    else if (object && place > 0 && table_.count > 0)
        note(place);
    return place;
}

std::int32_t HolderArray::find(std::int32_t object_id) const
{
    if (table_.count == 0)
        return ObjectArray::find(object_id);
    const std::uint32_t last = static_cast<std::uint32_t>(table_.count) - 1;
    for (std::uint32_t at = hash_of(object_id) & last; table_.items[at] != 0; at = (at + 1) & last)
        if (const TopoObject* object = get(table_.items[at]); object && object->id == object_id)
            return table_.items[at];
    return 0;
}
