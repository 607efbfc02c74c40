// views.cpp: opening and closing views, and the groups behind them.
#include "host/database/views.h"

#include <algorithm>
#include <cstring>

#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/database/entities.h"
#include "host/database/templates.h"
#include "host/database/transform.h"
#include "hostapi/ads.h"

using namespace host::db;

AcDbObjectBody::AcDbObjectBody(std::shared_ptr<object_state> what, AcDb::OpenMode how)
    : state(std::move(what)), mode(how)
{
    host::count_view(1);
}

AcDbObjectBody::~AcDbObjectBody()
{
    host::count_view(-1);
}

namespace host::db
{

const section ENTITY_SECTION = {"AcDbEntity", {67, 410, 8, 62, 6, 48, 60, 370}};

// ---- states

database* numbered_database(std::uint32_t number)
{
    for (const auto& doc : documents())
        if (static_cast<std::uint32_t>(doc->number()) == number)
            return &database_of(*doc);
    return nullptr;
}

AcDbObjectBody* new_body(std::string_view text)
{
    auto state = std::make_shared<object_state>();
    if (has_document()) {
        state->database = static_cast<std::uint32_t>(current_document().number());
        add_groups(current_database(), state->groups, text);
    }
    return new AcDbObjectBody(std::move(state), AcDb::kForWrite);
}

AcDbObjectBody* resident_body(const database& db, object_id id, AcDb::OpenMode mode)
{
    auto state = std::make_shared<object_state>();
    state->database = static_cast<std::uint32_t>(db.number());
    state->id = id;
    return new AcDbObjectBody(std::move(state), mode);
}

database* database_behind(const AcDbObjectBody* body)
{
    return numbered_database(body->state->database);
}

bool in_drawing(const AcDbObjectBody* body)
{
    return body->state->id != 0;
}

AcDbObjectId id_behind(const AcDbObjectBody* body)
{
    return in_drawing(body) ? AcDbObjectId{body->state->database, body->state->id} : AcDbObjectId{};
}

// ---- groups

const group_list& groups_behind(const AcDbObjectBody* body)
{
    static const group_list none;
    if (!in_drawing(body))
        return body->state->groups;
    const database* db = database_behind(body);
    return db && db->valid(body->state->id) ? db->at(body->state->id).groups : none;
}

group_list* groups_to_change(AcDbObjectBody* body, Acad::ErrorStatus* status)
{
    database* db = database_behind(body);
    *status = Acad::eOk;
    if (!db || (in_drawing(body) && !db->valid(body->state->id)))
        *status = Acad::eNullObjectId;
    else if (body->mode != AcDb::kForWrite)
        *status = Acad::eNotOpenForWrite;
    else if (in_drawing(body) && db->at(body->state->id).erased)
        *status = Acad::eWasErased;
    if (*status != Acad::eOk)
        return nullptr;
    return in_drawing(body) ? &db->modify(body->state->id) : &body->state->groups;
}

namespace
{

constexpr int MARKER = 100;
constexpr int FIRST_EXTENDED = 1000;

struct bounds {
    std::size_t begin, end;
};

// A list without the marker is taken as one section.
bounds bounds_of(const database& db, const group_list& groups, const section& where)
{
    std::size_t begin = groups.empty() ? 0 : 1;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i].code == MARKER && db.text(groups[i].text) == where.marker) {
            begin = i + 1;
            break;
        }
        if (groups[i].code >= FIRST_EXTENDED)
            break;
    }
    return {begin, groups.size()};
}

bool ends_section(const group& at, const section& where)
{
    return at.code == MARKER || at.code >= FIRST_EXTENDED || (where.stop != 0 && at.code == where.stop);
}

std::size_t rank_of(const section& where, int code)
{
    return static_cast<std::size_t>(std::find(where.order.begin(), where.order.end(), code) -
                                    where.order.begin());
}

} // namespace

const group* find_in(const database& db, const group_list& groups, const section& where, int code)
{
    const bounds in = bounds_of(db, groups, where);
    for (std::size_t i = in.begin; i < in.end && !ends_section(groups[i], where); ++i)
        if (groups[i].code == code)
            return &groups[i];
    return nullptr;
}

void put_in(const database& db, group_list& groups, const section& where, const group& made)
{
    const bounds in = bounds_of(db, groups, where);
    const std::size_t rank = rank_of(where, made.code), unknown = where.order.size();
    std::size_t place = in.begin;
    for (std::size_t i = in.begin; i < in.end && !ends_section(groups[i], where); ++i) {
        if (groups[i].code == made.code) {
            groups[i] = made;
            return;
        }
        const std::size_t at = rank_of(where, groups[i].code);
        if (at != unknown && at > rank)
            break;
        if (at < rank)
            place = i + 1;
    }
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(place), made);
}

void remove_in(const database& db, group_list& groups, const section& where, int code)
{
    if (const group* found = find_in(db, groups, where, code))
        groups.erase(groups.begin() + (found - groups.data()));
}

double real_in(const AcDbObjectBody* body, const section& where, int code, double otherwise)
{
    const database* db = database_behind(body);
    const group* found = db ? find_in(*db, groups_behind(body), where, code) : nullptr;
    return found ? found->real : otherwise;
}

int int_in(const AcDbObjectBody* body, const section& where, int code, int otherwise)
{
    const database* db = database_behind(body);
    const group* found = db ? find_in(*db, groups_behind(body), where, code) : nullptr;
    return found ? static_cast<int>(found->integer) : otherwise;
}

Acad::ErrorStatus put_behind(AcDbObjectBody* body, const section& where, const group& made)
{
    Acad::ErrorStatus status;
    if (group_list* groups = groups_to_change(body, &status))
        put_in(*database_behind(body), *groups, where, made);
    return status;
}

Acad::ErrorStatus put_or_leave_out(AcDbObjectBody* body, const section& where, const group& made, bool is_usual)
{
    if (!is_usual)
        return put_behind(body, where, made);
    Acad::ErrorStatus status;
    if (group_list* groups = groups_to_change(body, &status))
        remove_in(*database_behind(body), *groups, where, made.code);
    return status;
}

Acad::ErrorStatus put_bits(AcDbObjectBody* body, const section& where, int code, int bits, bool on)
{
    const int before = int_in(body, where, code, 0);
    return put_behind(body, where, int_group(code, on ? before | bits : before & ~bits));
}

AcGePoint3d in_world(const AcGePoint3d& at, const group* normal)
{
    if (!normal)
        return at;
    const transform plane = plane_of({normal->point[0], normal->point[1], normal->point[2]});
    const vec place = plane.point({at.x, at.y, at.z});
    return {place.x, place.y, place.z};
}

char* new_string(std::string_view text)
{
    auto* copy = static_cast<char*>(heap_take(text.size() + 1));
    if (!copy)
        return nullptr;
    if (!text.empty())
        std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

// ---- storing

void move_texts(database& db, object_state& state)
{
    const auto number = static_cast<std::uint32_t>(db.number());
    if (state.database == number)
        return;
    if (const database* from = numbered_database(state.database))
        for (group& each : state.groups)
            if (kind_of_code(each.code) == group_kind::text || kind_of_code(each.code) == group_kind::binary)
                each.text = db.intern(from->text(each.text));
    state.database = number;
}

namespace
{

Acad::ErrorStatus store_one(database& db, object_id owner, object_state& state, std::string_view layer)
{
    if (state.groups.empty())
        return Acad::eInvalidInput;
    move_texts(db, state);
    if (db.text_of(state.groups, 8).empty())
        put_in(db, state.groups, ENTITY_SECTION, db.text_group(8, layer));
    std::string error;
    const object_id made = append_entity(db, owner, std::move(state.groups), &error);
    state.groups = {};
    if (!made)
        return Acad::eInvalidInput;
    state.id = made;
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus store_entity(database& db, object_id owner, object_state& state, std::string_view layer)
{
    // A polyline that lost a vertex on the way would be another one.
    for (const auto& vertex : state.vertices)
        if (!check_numbers(vertex->groups, nullptr))
            return Acad::eInvalidInput;
    const Acad::ErrorStatus status = store_one(db, owner, state, layer);
    if (status != Acad::eOk || !db.is(state.id, "POLYLINE"))
        return status;
    const std::string own_layer(db.text_of(db.at(state.id).groups, 8));
    for (const auto& vertex : state.vertices)
        store_one(db, state.id, *vertex, own_layer);
    state.vertices = {};
    object_state end;
    end.database = state.database;
    end.groups = {db.text_group(0, "SEQEND")};
    return store_one(db, state.id, end, own_layer);
}

namespace
{

// ---- a view of the class that a stored object has

struct plain_object : AcDbObject {
    explicit plain_object(AcDbObjectBody* body) : AcDbObject(body) {}
};
struct plain_entity : AcDbEntity {
    explicit plain_entity(AcDbObjectBody* body) : AcDbEntity(body) {}
};
struct plain_curve : AcDbCurve {
    explicit plain_curve(AcDbObjectBody* body) : AcDbCurve(body) {}
};
struct plain_record : AcDbSymbolTableRecord {
    explicit plain_record(AcDbObjectBody* body) : AcDbSymbolTableRecord(body) {}
};
struct plain_table : AcDbSymbolTable {
    explicit plain_table(AcDbObjectBody* body) : AcDbSymbolTable(body) {}
};

using view_maker = AcDbObject* (*)(AcDbObjectBody* body);
template <class View>
AcDbObject* make(AcDbObjectBody* body)
{
    return new View(body);
}

constexpr int IS_3D_POLYLINE = 8, IS_3D_VERTEX = 32;
constexpr int IS_MESH = 16 | 64, IS_MESH_VERTEX = 64 | 128;

AcDbObject* make_polyline(AcDbObjectBody* body)
{
    const auto flags = int_of(groups_behind(body), 70, 0);
    if (flags & IS_MESH)
        return new plain_entity(body);
    return flags & IS_3D_POLYLINE ? make<AcDb3dPolyline>(body) : make<AcDb2dPolyline>(body);
}

AcDbObject* make_vertex(AcDbObjectBody* body)
{
    const auto flags = int_of(groups_behind(body), 70, 0);
    if (flags & IS_MESH_VERTEX)
        return new plain_entity(body);
    return flags & IS_3D_VERTEX ? make<AcDb3dPolylineVertex>(body) : make<AcDb2dVertex>(body);
}

struct view_class {
    std::string_view type;
    view_maker make;
};
constexpr view_class ENTITY_CLASSES[] = {
    {"LINE", make<AcDbLine>},       {"LWPOLYLINE", make<AcDbPolyline>}, {"POLYLINE", make_polyline},
    {"VERTEX", make_vertex},        {"ARC", make<plain_curve>},         {"CIRCLE", make<plain_curve>},
    {"ELLIPSE", make<plain_curve>}, {"SPLINE", make<plain_curve>},      {"RAY", make<plain_curve>},
    {"XLINE", make<plain_curve>},
};
constexpr view_class RECORD_CLASSES[] = {
    {"LAYER", make<AcDbLayerTableRecord>},
    {"STYLE", make<AcDbTextStyleTableRecord>},
    {"LTYPE", make<AcDbLinetypeTableRecord>},
    {"BLOCK_RECORD", make<AcDbBlockTableRecord>},
};
constexpr view_class TABLE_CLASSES[] = {
    {"LAYER", make<AcDbLayerTable>},
    {"STYLE", make<AcDbTextStyleTable>},
    {"LTYPE", make<AcDbLinetypeTable>},
    {"BLOCK_RECORD", make<AcDbBlockTable>},
};

template <std::size_t Count>
view_maker maker_of(const view_class (&classes)[Count], std::string_view type, view_maker otherwise)
{
    for (const view_class& each : classes)
        if (each.type == type)
            return each.make;
    return otherwise;
}

view_maker maker_for(const database& db, object_id id)
{
    switch (db.at(id).family) {
    case object_class::entity:
        return maker_of(ENTITY_CLASSES, db.type_of(id), make<plain_entity>);
    case object_class::record:
        return maker_of(RECORD_CLASSES, db.type_of(id), make<plain_record>);
    case object_class::table:
        return maker_of(TABLE_CLASSES, db.text_of(db.at(id).groups, 2), make<plain_table>);
    default:
        return make<plain_object>;
    }
}

bool on_locked_layer(const database& db, object_id id)
{
    constexpr int LOCKED = 4;
    if (db.at(id).family != object_class::entity || db.is(id, "BLOCK") || db.is(id, "ENDBLK"))
        return false;
    const object_id layer = db.record("LAYER", db.text_of(db.at(id).groups, 8));
    return layer && (int_of(db.at(layer).groups, 70, 0) & LOCKED);
}

} // namespace

} // namespace host::db

// ---- identities

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name)
{
    id = {};
    if (!name)
        return Acad::eInvalidInput;
    for (const auto& doc : host::documents()) {
        const database& db = database_of(*doc);
        if (const object_id found = id_of_name(db, name)) {
            id = {static_cast<std::uint32_t>(db.number()), found};
            return Acad::eOk;
        }
    }
    return Acad::eInvalidInput;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id)
{
    const database* db = id.isNull() ? nullptr : numbered_database(id.database);
    if (!db || !db->valid(id.index)) {
        name[0] = name[1] = 0;
        return Acad::eNullObjectId;
    }
    make_name(*db, id.index, name);
    return Acad::eOk;
}

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool open_erased)
{
    object = nullptr;
    if (id.isNull())
        return Acad::eNullObjectId;
    const database* db = numbered_database(id.database);
    if (!db || !db->valid(id.index))
        return Acad::eUnknownHandle;
    if (is_erased(*db, id.index) && !open_erased)
        return Acad::eWasErased;
    if (mode == AcDb::kForWrite && on_locked_layer(*db, id.index))
        return Acad::eOnLockedLayer;
    object = maker_for(*db, id.index)(resident_body(*db, id.index, mode));
    return Acad::eOk;
}

// ---- AcDbObject

AcDbObject::~AcDbObject()
{
    delete body_;
}

AcDbObjectId AcDbObject::objectId() const
{
    return id_behind(body_);
}

AcDbObjectId AcDbObject::ownerId() const
{
    const database* db = database_behind(body_);
    if (!db || !in_drawing(body_))
        return {};
    const object_id owner = db->at(body_->state->id).owner;
    return owner ? AcDbObjectId{body_->state->database, owner} : AcDbObjectId{};
}

Acad::ErrorStatus AcDbObject::close()
{
    delete this;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::erase(bool erasing)
{
    database* db = database_behind(body_);
    if (!db || !in_drawing(body_))
        return Acad::eNullObjectId;
    if (body_->mode != AcDb::kForWrite)
        return Acad::eNotOpenForWrite;
    if (erasing && db->at(body_->state->id).erased)
        return Acad::eWasErased;
    db->set_erased(body_->state->id, erasing);
    return Acad::eOk;
}
