// views_database.cpp: a drawing as a whole, and its blocks as places for new objects.
#include "host/core/document.h"
#include "host/core/resbuf.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"
#include "host/database/views.h"

using namespace host::db;

namespace
{

struct drawing_view : AcDbDatabase {
    host::document& doc;
    explicit drawing_view(host::document& owner) : doc(owner) {}
};

host::document& document_of(const AcDbDatabase* view)
{
    return static_cast<const drawing_view*>(view)->doc;
}

template <class Table>
Acad::ErrorStatus open_table(AcDbDatabase* view, const char* name, Table*& table, AcDb::OpenMode mode)
{
    const database& db = database_of(document_of(view));
    table = nullptr;
    const object_id id = db.table(name);
    if (!id)
        return Acad::eKeyNotFound;
    table = new Table(resident_body(db, id, mode));
    return Acad::eOk;
}

AcDbObjectId named_record(const AcDbDatabase* view, const char* table, const char* variable)
{
    host::document& doc = document_of(view);
    const database& db = database_of(doc);
    const object_id record = db.record(table, text_variable(doc, variable));
    return record ? AcDbObjectId{static_cast<std::uint32_t>(db.number()), record} : AcDbObjectId{};
}

Acad::ErrorStatus make_current(AcDbDatabase* view, AcDbObjectId id, const char* type, const char* variable)
{
    host::document& doc = document_of(view);
    const database& db = database_of(doc);
    if (id.isNull())
        return Acad::eNullObjectId;
    if (id.database != static_cast<std::uint32_t>(db.number()) || !db.valid(id.index))
        return Acad::eUnknownHandle;
    if (!db.is(id.index, type))
        return Acad::eNotThatKindOfClass;
    if (db.at(id.index).erased)
        return Acad::eWasErased;
    const host::list_ptr name(host::rb_text(RTSTR, db.text_of(db.at(id.index).groups, 2)));
    return set_variable(doc, variable, *name) == set_result::done ? Acad::eOk : Acad::eNotApplicable;
}

} // namespace

AcDbDatabase* host::db::database_view(document& doc)
{
    return &doc.part<drawing_view>();
}

bool AcDbDatabase::tilemode() const
{
    return int_variable(document_of(this), "TILEMODE") != 0;
}

AcDbObjectId AcDbDatabase::clayer() const
{
    return named_record(this, "LAYER", "CLAYER");
}

Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layer)
{
    return make_current(this, layer, "LAYER", "CLAYER");
}

AcDbObjectId AcDbDatabase::textstyle() const
{
    return named_record(this, "STYLE", "TEXTSTYLE");
}

Acad::ErrorStatus AcDbDatabase::setTextstyle(AcDbObjectId style)
{
    return make_current(this, style, "STYLE", "TEXTSTYLE");
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode)
{
    return open_table(this, "LAYER", table, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode)
{
    return open_table(this, "STYLE", table, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode)
{
    return open_table(this, "LTYPE", table, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode)
{
    return open_table(this, "BLOCK_RECORD", table, mode);
}

AcDbDatabase* acdbCurDwg()
{
    return host::has_document() ? database_view(host::current_document()) : nullptr;
}

// Screens follow the changes of the store by themselves.
Acad::ErrorStatus applyCurDwgLayerTableChanges()
{
    return host::has_document() ? Acad::eOk : Acad::eNotApplicable;
}

// ---- block records

AcDbBlockTableRecord* AcDbBlockTableRecord::cast(AcDbObject* object)
{
    return dynamic_cast<AcDbBlockTableRecord*>(object);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity)
{
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity)
{
    id = {};
    database* db = database_behind(body_);
    if (!db || !in_drawing(body_))
        return Acad::eNullObjectId;
    if (body_->mode != AcDb::kForWrite)
        return Acad::eNotOpenForWrite;
    if (!entity || in_drawing(entity->body()) || entity->body()->state->has_owner)
        return Acad::eInvalidInput;
    object_state& state = *entity->body()->state;
    const Acad::ErrorStatus status =
        store_entity(*db, body_->state->id, state, text_variable(db->owner(), "CLAYER"));
    if (status != Acad::eOk)
        return status;
    entity->body()->mode = AcDb::kForWrite;
    id = id_behind(entity->body());
    if (host::tracing()) {
        const host::list_ptr groups(entity_list(*db, state.id, nullptr));
        host::trace_line("appendAcDbEntity").list(groups ? groups->rbnext : nullptr).result("eOk");
    }
    return Acad::eOk;
}
