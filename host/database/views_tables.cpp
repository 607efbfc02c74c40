// views_tables.cpp: symbol tables and their records.
//
// A new record is a short list of what its maker has said about it. When it is added the drawing makes a
// record with everything that one has, and what was said is put into it.
#include <cstdlib>
#include <vector>

#include "host/core/resbuf.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/database/entities.h"
#include "host/database/views.h"

using namespace host::db;

namespace
{

constexpr int FROZEN = 1, FROZEN_IN_NEW = 2, LOCKED = 4;
constexpr int FLAGS = 70, COLOR = 62, LINETYPE = 6, DASH_COUNT = 73, DASH = 49, DASH_TYPE = 74;

const section LAYER_SECTION = {"AcDbLayerTableRecord", {2, 70, 62, 6, 290, 370, 390}};
const section STYLE_SECTION = {"AcDbTextStyleTableRecord", {2, 70, 40, 41, 50, 71, 42, 3, 4}};
const section LINETYPE_SECTION = {"AcDbLinetypeTableRecord", {2, 70, 3, 72, 73, 40, 49}};

// Names end up in files and on screens, where these have a meaning of their own.
bool is_name(std::string_view name)
{
    if (name.empty())
        return false;
    for (const char c : name)
        if (static_cast<unsigned char>(c) < ' ' ||
            std::string_view("<>/\\\":;?*|,=`").find(c) != std::string_view::npos)
            return false;
    return true;
}

object_id record_behind(const AcDbObjectBody* table, const char* name)
{
    const database* db = database_behind(table);
    if (!db || !name || !in_drawing(table))
        return 0;
    return db->record(db->text_of(groups_behind(table), 2), name);
}

// Where the dashes begin; each is its length and the groups behind it up to the next.
std::vector<std::size_t> dashes_of(const group_list& groups)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < groups.size(); ++i)
        if (groups[i].code == DASH)
            places.push_back(i);
    return places;
}

bool of_dash(int code)
{
    return code == DASH || code == DASH_TYPE || code == 75 || code == 340 || (code >= 44 && code <= 46) ||
           code == 50 || code == 9;
}

void replace_dashes(group_list& groups, const group_list& dashes)
{
    const auto old = dashes_of(groups);
    std::size_t begin = groups.size(), end = groups.size();
    if (!old.empty()) {
        begin = old.front();
        for (end = begin; end < groups.size() && of_dash(groups[end].code); ++end) {
        }
    } else {
        while (begin > 0 && groups[begin - 1].code >= 1000)
            --begin;
        end = begin;
    }
    const auto at = [&](std::size_t place) { return groups.begin() + static_cast<std::ptrdiff_t>(place); };
    groups.insert(groups.erase(at(begin), at(end)), dashes.begin(), dashes.end());
}

const section& section_of(std::string_view type)
{
    return type == "LAYER" ? LAYER_SECTION : type == "STYLE" ? STYLE_SECTION : LINETYPE_SECTION;
}

// What was said of a new record, into the one that the drawing made.
void put_said(database& db, object_id made, const group_list& said, const section& where)
{
    group_list& groups = db.modify(made);
    group_list dashes;
    for (const group& each : said) {
        if (each.code == 0 || each.code == 100 || each.code == 2)
            continue;
        if (of_dash(each.code) && where.marker == LINETYPE_SECTION.marker)
            dashes.push_back(each);
        else
            put_in(db, groups, where, each);
    }
    if (!dashes.empty())
        replace_dashes(groups, dashes);
}

void trace_added(const database& db, object_id made, const char* table)
{
    if (!host::tracing())
        return;
    const host::list_ptr groups(entity_list(db, made, nullptr));
    host::trace_line line(table);
    line.list(groups ? groups->rbnext : nullptr).result("eOk");
}

struct table_trace {
    std::string_view type;
    const char* name;
};
constexpr table_trace TRACE_NAMES[] = {
    {"LAYER", "AcDbLayerTable::add"},
    {"STYLE", "AcDbTextStyleTable::add"},
    {"LTYPE", "AcDbLinetypeTable::add"},
};

const char* trace_name(std::string_view type)
{
    for (const table_trace& each : TRACE_NAMES)
        if (each.type == type)
            return each.name;
    return "AcDbSymbolTable::add";
}

} // namespace

// ---- tables

AcDbSymbolTable* AcDbSymbolTable::cast(AcDbObject* object)
{
    return dynamic_cast<AcDbSymbolTable*>(object);
}

bool AcDbSymbolTable::has(const char* name) const
{
    return record_behind(body_, name) != 0;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const char* name, AcDbObjectId& id) const
{
    const object_id record = record_behind(body_, name);
    id = record ? AcDbObjectId{body_->state->database, record} : AcDbObjectId{};
    return record ? Acad::eOk : Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbSymbolTable::open_record(const char* name, AcDbObject*& record, AcDb::OpenMode mode) const
{
    AcDbObjectId id;
    record = nullptr;
    const Acad::ErrorStatus status = getAt(name, id);
    return status == Acad::eOk ? acdbOpenAcDbObject(record, id, mode) : status;
}

Acad::ErrorStatus AcDbSymbolTable::add_record(AcDbObjectId& id, AcDbSymbolTableRecord* record)
{
    id = {};
    database* db = database_behind(body_);
    if (!db || !in_drawing(body_))
        return Acad::eNullObjectId;
    if (body_->mode != AcDb::kForWrite)
        return Acad::eNotOpenForWrite;
    if (!record || in_drawing(record->body()) || record->body()->state->groups.empty())
        return Acad::eInvalidInput;
    object_state& state = *record->body()->state;
    move_texts(*db, state);
    const std::string type(db->text(state.groups.front().text));
    const std::string name(db->text_of(state.groups, 2));
    if (type != db->text_of(groups_behind(body_), 2) || name.empty())
        return Acad::eInvalidInput;
    if (db->record(type, name))
        return Acad::eDuplicateKey;
    const object_id made = host::db::add_record(*db, type, name);
    if (!made)
        return Acad::eInvalidInput;
    put_said(*db, made, state.groups, section_of(type));
    state.id = made;
    state.groups = {};
    id = id_behind(record->body());
    trace_added(*db, made, trace_name(type));
    return Acad::eOk;
}

// ---- records

AcDbSymbolTableRecord* AcDbSymbolTableRecord::cast(AcDbObject* object)
{
    return dynamic_cast<AcDbSymbolTableRecord*>(object);
}

char* AcDbSymbolTableRecord::name() const
{
    const database* db = database_behind(body_);
    return db ? new_string(db->text_of(groups_behind(body_), 2)) : nullptr;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const char* name)
{
    database* db = database_behind(body_);
    if (!db)
        return Acad::eNullObjectId;
    if (!name || !is_name(name))
        return Acad::eInvalidInput;
    if (in_drawing(body_)) {
        const object_id other = db->record(db->type_of(body_->state->id), name);
        if (other && other != body_->state->id)
            return Acad::eDuplicateKey;
    }
    Acad::ErrorStatus status;
    group_list* groups = groups_to_change(body_, &status);
    if (!groups)
        return status;
    if (group* held = find(*groups, 2))
        *held = db->text_group(2, name);
    else
        groups->push_back(db->text_group(2, name));
    return Acad::eOk;
}

AcDbLayerTableRecord* AcDbLayerTableRecord::cast(AcDbObject* object)
{
    return dynamic_cast<AcDbLayerTableRecord*>(object);
}

AcDbLayerTableRecord::AcDbLayerTableRecord()
    : AcDbSymbolTableRecord(new_body("0 LAYER;100 AcDbLayerTableRecord;2 ;70 0;62 7;6 Continuous"))
{
}

// The colour of a layer that is off is kept below zero.
AcCmColor AcDbLayerTableRecord::color() const
{
    AcCmColor color;
    color.setColorIndex(static_cast<std::uint16_t>(std::abs(int_in(body_, LAYER_SECTION, COLOR, 7))));
    return color;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen)
{
    const database* db = database_behind(body_);
    const group_list* current = db ? db->header_value("$CLAYER") : nullptr;
    if (frozen && in_drawing(body_) && current &&
        host::same_text(db->text_of(*current, 8), db->text_of(groups_behind(body_), 2)))
        return Acad::eNotApplicable; // new objects would vanish
    return put_bits(body_, LAYER_SECTION, FLAGS, FROZEN, frozen);
}

void AcDbLayerTableRecord::setIsOff(bool off)
{
    const int index = std::abs(int_in(body_, LAYER_SECTION, COLOR, 7));
    put_behind(body_, LAYER_SECTION, int_group(COLOR, off ? -index : index));
}

void AcDbLayerTableRecord::setIsLocked(bool locked)
{
    put_bits(body_, LAYER_SECTION, FLAGS, LOCKED, locked);
}

void AcDbLayerTableRecord::setVPDFLT(bool frozen_in_new_viewports)
{
    put_bits(body_, LAYER_SECTION, FLAGS, FROZEN_IN_NEW, frozen_in_new_viewports);
}

void AcDbLayerTableRecord::setColor(const AcCmColor& color)
{
    const int index = color.colorIndex();
    if (index < 1 || index > 255)
        return;
    const bool is_off = int_in(body_, LAYER_SECTION, COLOR, 7) < 0;
    put_behind(body_, LAYER_SECTION, int_group(COLOR, is_off ? -index : index));
}

void AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId linetype)
{
    database* own = database_behind(body_);
    const database* db = numbered_database(linetype.database);
    if (own && own == db && db->valid(linetype.index) && db->is(linetype.index, "LTYPE"))
        put_behind(body_, LAYER_SECTION,
                   own->text_group(LINETYPE, db->text_of(db->at(linetype.index).groups, 2)));
}

AcDbTextStyleTableRecord* AcDbTextStyleTableRecord::cast(AcDbObject* object)
{
    return dynamic_cast<AcDbTextStyleTableRecord*>(object);
}

AcDbTextStyleTableRecord::AcDbTextStyleTableRecord()
    : AcDbSymbolTableRecord(new_body("0 STYLE;100 AcDbTextStyleTableRecord;2 ;40 0"))
{
}

double AcDbTextStyleTableRecord::textSize() const
{
    return real_in(body_, STYLE_SECTION, 40, 0.0);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size)
{
    return size >= 0.0 ? put_behind(body_, STYLE_SECTION, real_group(40, size)) : Acad::eInvalidInput;
}

AcDbLinetypeTableRecord* AcDbLinetypeTableRecord::cast(AcDbObject* object)
{
    return dynamic_cast<AcDbLinetypeTableRecord*>(object);
}

AcDbLinetypeTableRecord::AcDbLinetypeTableRecord()
    : AcDbSymbolTableRecord(new_body("0 LTYPE;100 AcDbLinetypeTableRecord;2 ;3 ;73 0;40 0"))
{
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const char* text)
{
    database* db = database_behind(body_);
    if (!db)
        return Acad::eNullObjectId;
    return put_behind(body_, LINETYPE_SECTION, db->text_group(3, text ? text : ""));
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setPatternLength(double length)
{
    return put_behind(body_, LINETYPE_SECTION, real_group(40, length));
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setNumDashes(int count)
{
    constexpr int MOST = 12; // that drawing files hold
    if (count < 0 || count == 1 || count > MOST)
        return Acad::eInvalidInput;
    Acad::ErrorStatus status;
    group_list* groups = groups_to_change(body_, &status);
    if (!groups)
        return status;
    put_in(*database_behind(body_), *groups, LINETYPE_SECTION, int_group(DASH_COUNT, count));
    group_list dashes;
    for (int i = 0; i < count; ++i) {
        dashes.push_back(real_group(DASH, 0.0));
        dashes.push_back(int_group(DASH_TYPE, 0));
    }
    replace_dashes(*groups, dashes);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double length)
{
    const auto places = dashes_of(groups_behind(body_));
    if (index < 0 || static_cast<std::size_t>(index) >= places.size())
        return Acad::eInvalidIndex;
    Acad::ErrorStatus status;
    if (group_list* groups = groups_to_change(body_, &status))
        (*groups)[places[static_cast<std::size_t>(index)]].real = length;
    return status;
}
