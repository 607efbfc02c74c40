#include "app/list.h"

#include "app/run.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/database/dxf.h"
#include "host/database/entities.h"
#include "host/files/paths.h"

namespace app
{

namespace
{

namespace db = host::db;

void print_object(const db::database& drawing, db::object_id id)
{
    resbuf any{nullptr, RTSTR, {}};
    char all[] = "*";
    any.resval.rstring = all;
    const host::list_ptr list(db::entity_list(drawing, id, &any));
    host::history(host::printed_list(list.get(), true) + "\n");
}

// BLOCK and ENDBLK hold a definition together and are no objects to a user.
bool is_drawn(const db::database& drawing, db::object_id id)
{
    return drawing.at(id).family == db::object_class::entity && !drawing.is(id, "BLOCK") &&
           !drawing.is(id, "ENDBLK");
}

} // namespace

int list_objects(const std::string& file, const std::string& type)
{
    host::document& doc = host::open_document();
    db::dxf_error error;
    const auto drawing = db::read_dxf(host::drawing_to_read(host::cp1252_with_escapes(file)), doc, &error);
    if (!drawing) {
        host::complain(error.text());
        return status_failed;
    }
    const std::string wanted = host::upper(type);
    for (db::object_id id = 1; id < drawing->size(); ++id) {
        if (drawing->at(id).erased)
            continue;
        if (wanted.empty() ? is_drawn(*drawing, id) : drawing->is(id, wanted))
            print_object(*drawing, id);
    }
    host::flush_history();
    return status_done;
}

} // namespace app
