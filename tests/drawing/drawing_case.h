// drawing_case.h: a test over a new drawing that must give back all blocks and views that it takes.
#pragma once

#include <string>
#include <vector>

#include "drawing/read.h"
#include "host/core/console.h"
#include "host/core/heap.h"
#include "tests/drawing/chains.h"
#include "tests/host/database/lists.h"

struct drawing_case : host::db::testing_lists::Drawing {
    std::string printed;
    std::size_t blocks = host::heap_live_blocks(), views = host::live_views();

    drawing_case() { host::capture_history(&printed); }
    ~drawing_case() override
    {
        EXPECT_EQ(host::heap_live_blocks(), blocks);
        EXPECT_EQ(host::live_views(), views);
        host::capture_history(nullptr);
    }

    // Entity name of an object; by value, so that it can be handed on.
    struct entity {
        ads_name name;
        operator const std::int32_t*() const { return name; }
    };
    entity name_of(host::db::object_id id) const
    {
        entity e;
        host::db::make_name(db, id, e.name);
        return e;
    }
    entity last_name() const { return name_of(last()); }

    std::vector<corner> read(host::db::object_id id) const
    {
        return corners_of(vertex_chain(pl_read_vertices(name_of(id))).get());
    }
    int count() const { return static_cast<int>(types().size()); }
    // Types of all objects of the drawing in order, sub-objects left out.
    std::vector<std::string> types() const
    {
        std::vector<std::string> all;
        for (host::db::object_id id = next(0); id; id = next(id))
            if (!db.is(id, "VERTEX") && !db.is(id, "SEQEND"))
                all.emplace_back(db.type_of(id));
        return all;
    }
};
