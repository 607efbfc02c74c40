// holder_array.h: an array of holders of ids that finds one among many at once.
#pragma once

#include "topology/heap_array.h"
#include "topology/object_array.h"

// The `id` of an object must be set before it is added, and stay.
class HolderArray : public ObjectArray
{
public:
    std::int32_t add(TopoObject* object) override;
    std::int32_t find(std::int32_t object_id) const override;

private:
    // Places by a hash of the id, the next free one where that is taken; 0 is free. Places of one id stand in
    // their order. Empty while the array is short, and without memory.
    HeapArray<std::int32_t> table_;

    void note(std::int32_t place);
    void make_table();
};
