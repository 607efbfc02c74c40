// views_entity.cpp: what all entities have, curves and lines.
#include <cmath>
#include <numbers>

#include "host/core/text.h"
#include "host/database/geometry.h"
#include "host/database/views.h"

using namespace host::db;

namespace
{

constexpr int BY_LAYER = 256;
const section LINE_SECTION = {"AcDbLine", {39, 10, 11, 210}};

AcGePoint3d point_behind(const AcDbObjectBody* body, const section& where, int code)
{
    const database* db = database_behind(body);
    const group* found = db ? find_in(*db, groups_behind(body), where, code) : nullptr;
    return found ? AcGePoint3d(found->point[0], found->point[1], found->point[2]) : AcGePoint3d();
}

AcDbObjectBody* line_body(const AcGePoint3d& start, const AcGePoint3d& end)
{
    AcDbObjectBody* body = new_body("0 LINE;100 AcDbEntity;100 AcDbLine");
    body->state->groups.push_back(point_group(10, start.x, start.y, start.z));
    body->state->groups.push_back(point_group(11, end.x, end.y, end.z));
    return body;
}

// A text of the entity's own section; the property's usual value when the group isn't there.
char* text_behind(const AcDbObjectBody* body, int code, std::string_view otherwise)
{
    const database* db = database_behind(body);
    if (!db)
        return nullptr;
    const group* found = find_in(*db, groups_behind(body), ENTITY_SECTION, code);
    return new_string(found ? db->text(found->text) : otherwise);
}

} // namespace

// ---- AcDbEntity

AcDbEntity* AcDbEntity::cast(AcDbObject* object)
{
    return dynamic_cast<AcDbEntity*>(object);
}

char* AcDbEntity::layer() const
{
    return text_behind(body_, 8, "0");
}

char* AcDbEntity::linetype() const
{
    return text_behind(body_, 6, "BYLAYER");
}

double AcDbEntity::linetypeScale() const
{
    return real_in(body_, ENTITY_SECTION, 48, 1.0);
}

std::uint16_t AcDbEntity::colorIndex() const
{
    return static_cast<std::uint16_t>(int_in(body_, ENTITY_SECTION, 62, BY_LAYER));
}

Acad::ErrorStatus AcDbEntity::setLayer(const char* name)
{
    database* db = database_behind(body_);
    const object_id layer = db && name ? db->record("LAYER", name) : 0;
    if (!layer)
        return Acad::eKeyNotFound;
    return put_behind(body_, ENTITY_SECTION, db->text_group(8, db->text_of(db->at(layer).groups, 2)));
}

Acad::ErrorStatus AcDbEntity::setLinetype(const char* name)
{
    database* db = database_behind(body_);
    if (!db || !name)
        return Acad::eKeyNotFound;
    const bool by_layer = host::same_text(name, "BYLAYER");
    const object_id linetype = db->record("LTYPE", name);
    if (!linetype && !by_layer && !host::same_text(name, "BYBLOCK"))
        return Acad::eKeyNotFound;
    const std::string spelled(linetype ? db->text_of(db->at(linetype).groups, 2) : name);
    return put_or_leave_out(body_, ENTITY_SECTION, db->text_group(6, spelled), by_layer);
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double scale)
{
    if (!(scale > 0.0) || !std::isfinite(scale))
        return Acad::eInvalidInput;
    return put_or_leave_out(body_, ENTITY_SECTION, real_group(48, scale), scale == 1.0);
}

Acad::ErrorStatus AcDbEntity::setColorIndex(std::uint16_t color)
{
    if (color > BY_LAYER)
        return Acad::eInvalidInput;
    return put_or_leave_out(body_, ENTITY_SECTION, int_group(62, color), color == BY_LAYER);
}

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const
{
    const database* db = database_behind(body_);
    if (!db || !in_drawing(body_))
        return Acad::eNullObjectId;
    const box all = extents_of(*db, body_->state->id);
    if (all.is_empty())
        return Acad::eInvalidExtents;
    extents.low = {all.low[0], all.low[1], all.low[2]};
    extents.high = {all.high[0], all.high[1], all.high[2]};
    return Acad::eOk;
}

// ---- AcDbCurve

AcDbCurve* AcDbCurve::cast(AcDbObject* object)
{
    return dynamic_cast<AcDbCurve*>(object);
}

bool AcDbCurve::isClosed() const
{
    constexpr int CLOSED = 1;
    const database* db = database_behind(body_);
    const group_list& groups = groups_behind(body_);
    if (!db || groups.empty())
        return false;
    const std::string_view type = db->text(groups.front().text);
    if (type == "CIRCLE")
        return true;
    if (type == "ELLIPSE") {
        const double swept = std::fabs(real_of(groups, 42, 0) - real_of(groups, 41, 0));
        return std::fabs(swept - 2 * std::numbers::pi) < 1e-9;
    }
    const bool has_flags = type == "LWPOLYLINE" || type == "POLYLINE" || type == "SPLINE";
    return has_flags && (int_of(groups, 70, 0) & CLOSED);
}

// ---- AcDbLine

AcDbLine* AcDbLine::cast(AcDbObject* object)
{
    return dynamic_cast<AcDbLine*>(object);
}

AcDbLine::AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : AcDbCurve(line_body(start, end)) {}

AcGePoint3d AcDbLine::startPoint() const
{
    return point_behind(body_, LINE_SECTION, 10);
}

AcGePoint3d AcDbLine::endPoint() const
{
    return point_behind(body_, LINE_SECTION, 11);
}

double AcDbLine::thickness() const
{
    return real_in(body_, LINE_SECTION, 39, 0.0);
}

Acad::ErrorStatus AcDbLine::setThickness(double thickness)
{
    return put_or_leave_out(body_, LINE_SECTION, real_group(39, thickness), thickness == 0.0);
}
