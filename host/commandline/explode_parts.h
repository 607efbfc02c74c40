// explode_parts.h: what an object falls into. Nothing of the drawing is changed here.
#pragma once

#include <string>
#include <vector>

#include "host/commandline/map_objects.h"

namespace host::commandline
{

struct part : whole_object {
    db::object_id from = 0;    // the object of the block that it is a copy of; 0: made anew
    std::vector<part> picture; // of a DIMENSION: the contents of its own new block
};

struct explosion {
    std::vector<part> parts; // in the order in which they are to lie in the drawing
    bool loses_width = false;
    std::string refusal; // why it can't be exploded, as "a LINE has no parts"; then there are no parts
};

// Block references one level down: pieces keep their layer, colour and linetype, whatever the reference's
// are, and attribute definitions stand for the attributes. Polylines in lines and arcs, meshes in faces,
// dimensions in what is seen of them. `unequal`: also references whose scales differ. `most`: so many objects
// are looked at or made before it is given up, since blocks in blocks can hold more than any drawing.
constexpr std::size_t MOST_PARTS = 10'000'000;
explosion explode_object(const db::database& db, db::object_id id, bool unequal, std::size_t most = MOST_PARTS);

} // namespace host::commandline
