// views_polyline.cpp: old-style polylines, 2D and 3D, with their vertices.
#include "host/database/entities.h"
#include "host/database/views.h"

using namespace host::db;

namespace
{

constexpr int CLOSED = 1, CURVE_FIT = 2, SPLINE_FIT = 4, LINETYPE_GENERATION = 128;
constexpr int QUADRATIC = 5, CUBIC = 6, NORMAL = 210;
constexpr int FIT_VERTEX = 1, SPLINE_VERTEX = 8, CONTROL_VERTEX = 16;

const section PLANE_POLYLINE = {"AcDb2dPolyline", {66, 39, 10, 70, 40, 41, 210, 71, 72, 73, 74, 75}};
const section SPACE_POLYLINE = {"AcDb3dPolyline", {66, 10, 70, 40, 41, 210, 71, 72, 73, 74, 75}};
const section PLANE_VERTEX = {"AcDb2dVertex", {10, 40, 41, 42, 70, 50, 71, 72, 73, 74}};
const section SPACE_VERTEX = {"AcDb3dPolylineVertex", {10, 70, 71, 72, 73, 74}};

AcGePoint3d position_of(const AcDbObjectBody* body, const section& where)
{
    const database* db = database_behind(body);
    const group* found = db ? find_in(*db, groups_behind(body), where, 10) : nullptr;
    return found ? AcGePoint3d(found->point[0], found->point[1], found->point[2]) : AcGePoint3d();
}

// The vertices of a stored polyline. One that isn't stored yet has no objects to name.
class vertex_walk : public AcDbObjectIterator
{
public:
    explicit vertex_walk(const AcDbObjectBody* polyline) : database_(polyline->state->database)
    {
        const database* db = database_behind(polyline);
        if (db && in_drawing(polyline))
            at_ = first_child(*db, polyline->state->id);
    }
    bool done() const override { return at_ == 0; }
    void step() override
    {
        const database* db = numbered_database(database_);
        at_ = db && at_ ? next_child(*db, at_) : 0;
    }
    AcDbObjectId objectId() const override { return at_ ? AcDbObjectId{database_, at_} : AcDbObjectId{}; }

private:
    std::uint32_t database_;
    object_id at_ = 0;
};

// The vertex waits with a polyline that isn't stored, else it is stored at once.
Acad::ErrorStatus append_vertex(AcDbObjectBody* polyline, AcDbObjectBody* vertex)
{
    if (polyline->mode != AcDb::kForWrite)
        return Acad::eNotOpenForWrite;
    if (in_drawing(vertex) || vertex->state->has_owner)
        return Acad::eInvalidInput;
    if (!in_drawing(polyline)) {
        vertex->state->has_owner = true;
        polyline->state->vertices.push_back(vertex->state);
        return Acad::eOk;
    }
    database* db = database_behind(polyline);
    if (!db || !db->valid(polyline->state->id))
        return Acad::eNullObjectId;
    const std::string layer(db->text_of(db->at(polyline->state->id).groups, 8));
    return store_entity(*db, polyline->state->id, *vertex->state, layer);
}

AcDbObjectBody* plane_vertex_body(const AcGePoint3d& position, double bulge, double start_width,
                                  double end_width)
{
    AcDbObjectBody* body = new_body("0 VERTEX;100 AcDbEntity;100 AcDbVertex;100 AcDb2dVertex");
    group_list& groups = body->state->groups;
    groups.push_back(point_group(10, position.x, position.y, position.z));
    groups.push_back(real_group(40, start_width));
    groups.push_back(real_group(41, end_width));
    groups.push_back(real_group(42, bulge));
    groups.push_back(int_group(70, 0));
    groups.push_back(real_group(50, 0.0));
    return body;
}

AcDbObjectBody* space_vertex_body(const AcGePoint3d& position)
{
    constexpr int OF_3D_POLYLINE = 32;
    AcDbObjectBody* body = new_body("0 VERTEX;100 AcDbEntity;100 AcDbVertex;100 AcDb3dPolylineVertex");
    body->state->groups.push_back(point_group(10, position.x, position.y, position.z));
    body->state->groups.push_back(int_group(70, OF_3D_POLYLINE));
    return body;
}

struct curve_flags {
    int flags, smoothing;
};
constexpr curve_flags PLANE_TYPES[] = {{0, 0}, {CURVE_FIT, 0}, {SPLINE_FIT, QUADRATIC}, {SPLINE_FIT, CUBIC}};
constexpr curve_flags SPACE_TYPES[] = {{0, 0}, {SPLINE_FIT, QUADRATIC}, {SPLINE_FIT, CUBIC}};

AcDbObjectBody* plane_polyline_body(AcDb::Poly2dType type, double elevation, bool closed, double start_width,
                                    double end_width)
{
    const curve_flags& kind = PLANE_TYPES[type];
    AcDbObjectBody* body = new_body("0 POLYLINE;100 AcDbEntity;100 AcDb2dPolyline;66 1");
    group_list& groups = body->state->groups;
    groups.push_back(point_group(10, 0.0, 0.0, elevation));
    groups.push_back(int_group(70, kind.flags | (closed ? CLOSED : 0)));
    groups.push_back(real_group(40, start_width));
    groups.push_back(real_group(41, end_width));
    groups.push_back(int_group(75, kind.smoothing));
    return body;
}

AcDbObjectBody* space_polyline_body(AcDb::Poly3dType type, bool closed)
{
    constexpr int IN_SPACE = 8;
    const curve_flags& kind = SPACE_TYPES[type];
    AcDbObjectBody* body = new_body("0 POLYLINE;100 AcDbEntity;100 AcDb3dPolyline;66 1;10 0,0,0");
    group_list& groups = body->state->groups;
    groups.push_back(int_group(70, IN_SPACE | kind.flags | (closed ? CLOSED : 0)));
    groups.push_back(int_group(75, kind.smoothing));
    return body;
}

} // namespace

// ---- vertices

AcDb2dVertex* AcDb2dVertex::cast(AcDbObject* object)
{
    return dynamic_cast<AcDb2dVertex*>(object);
}

AcDb2dVertex::AcDb2dVertex(const AcGePoint3d& position, double bulge, double start_width, double end_width)
    : AcDbEntity(plane_vertex_body(position, bulge, start_width, end_width))
{
}

AcGePoint3d AcDb2dVertex::position() const
{
    return position_of(body_, PLANE_VERTEX);
}

double AcDb2dVertex::bulge() const
{
    return real_in(body_, PLANE_VERTEX, 42, 0.0);
}

AcDb::Vertex2dType AcDb2dVertex::vertexType() const
{
    const int flags = int_in(body_, PLANE_VERTEX, 70, 0);
    if (flags & CONTROL_VERTEX)
        return AcDb::k2dSplineCtlVertex;
    if (flags & SPLINE_VERTEX)
        return AcDb::k2dSplineFitVertex;
    return flags & FIT_VERTEX ? AcDb::k2dCurveFitVertex : AcDb::k2dVertex;
}

Acad::ErrorStatus AcDb2dVertex::setStartWidth(double width)
{
    return put_behind(body_, PLANE_VERTEX, real_group(40, width));
}

Acad::ErrorStatus AcDb2dVertex::setEndWidth(double width)
{
    return put_behind(body_, PLANE_VERTEX, real_group(41, width));
}

AcDb3dPolylineVertex* AcDb3dPolylineVertex::cast(AcDbObject* object)
{
    return dynamic_cast<AcDb3dPolylineVertex*>(object);
}

AcDb3dPolylineVertex::AcDb3dPolylineVertex(const AcGePoint3d& position)
    : AcDbEntity(space_vertex_body(position))
{
}

AcGePoint3d AcDb3dPolylineVertex::position() const
{
    return position_of(body_, SPACE_VERTEX);
}

AcDb::Vertex3dType AcDb3dPolylineVertex::vertexType() const
{
    const int flags = int_in(body_, SPACE_VERTEX, 70, 0);
    if (flags & CONTROL_VERTEX)
        return AcDb::k3dControlVertex;
    return flags & SPLINE_VERTEX ? AcDb::k3dFitVertex : AcDb::k3dSimpleVertex;
}

// ---- 2D polylines

AcDb2dPolyline* AcDb2dPolyline::cast(AcDbObject* object)
{
    return dynamic_cast<AcDb2dPolyline*>(object);
}

AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, AcGePoint3dArray& vertices, double elevation, bool closed,
                               double start_width, double end_width, AcGeDoubleArray* bulges)
    : AcDbCurve(plane_polyline_body(type, elevation, closed, start_width, end_width))
{
    for (int i = 0; i < vertices.length(); ++i) {
        const double bulge = bulges && i < bulges->length() ? (*bulges)[i] : 0.0;
        AcDb2dVertex vertex(vertices[i], bulge, start_width, end_width);
        append_vertex(body_, vertex.body());
    }
}

AcDb::Poly2dType AcDb2dPolyline::polyType() const
{
    const int flags = int_in(body_, PLANE_POLYLINE, 70, 0);
    if (flags & SPLINE_FIT)
        return int_in(body_, PLANE_POLYLINE, 75, 0) == QUADRATIC ? AcDb::k2dQuadSplinePoly
                                                                 : AcDb::k2dCubicSplinePoly;
    return flags & CURVE_FIT ? AcDb::k2dFitCurvePoly : AcDb::k2dSimplePoly;
}

bool AcDb2dPolyline::isLinetypeGenerationOn() const
{
    return int_in(body_, PLANE_POLYLINE, 70, 0) & LINETYPE_GENERATION;
}

double AcDb2dPolyline::thickness() const
{
    return real_in(body_, PLANE_POLYLINE, 39, 0.0);
}

double AcDb2dPolyline::elevation() const
{
    return position_of(body_, PLANE_POLYLINE).z;
}

double AcDb2dPolyline::defaultStartWidth() const
{
    return real_in(body_, PLANE_POLYLINE, 40, 0.0);
}

double AcDb2dPolyline::defaultEndWidth() const
{
    return real_in(body_, PLANE_POLYLINE, 41, 0.0);
}

AcDbObjectIterator* AcDb2dPolyline::vertexIterator() const
{
    return new vertex_walk(body_);
}

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vertex) const
{
    const database* db = database_behind(body_);
    AcGePoint3d at = vertex.position();
    at.z = elevation(); // a vertex's own z means nothing: the polyline is flat
    return db ? in_world(at, find_in(*db, groups_behind(body_), PLANE_POLYLINE, NORMAL)) : at;
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDb2dVertex* vertex)
{
    return vertex ? append_vertex(body_, vertex->body()) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDb2dPolyline::setThickness(double thickness)
{
    return put_or_leave_out(body_, PLANE_POLYLINE, real_group(39, thickness), thickness == 0.0);
}

Acad::ErrorStatus AcDb2dPolyline::setDefaultStartWidth(double width)
{
    return put_behind(body_, PLANE_POLYLINE, real_group(40, width));
}

Acad::ErrorStatus AcDb2dPolyline::setDefaultEndWidth(double width)
{
    return put_behind(body_, PLANE_POLYLINE, real_group(41, width));
}

void AcDb2dPolyline::setLinetypeGenerationOn()
{
    put_bits(body_, PLANE_POLYLINE, 70, LINETYPE_GENERATION, true);
}

void AcDb2dPolyline::setLinetypeGenerationOff()
{
    put_bits(body_, PLANE_POLYLINE, 70, LINETYPE_GENERATION, false);
}

// ---- 3D polylines

AcDb3dPolyline* AcDb3dPolyline::cast(AcDbObject* object)
{
    return dynamic_cast<AcDb3dPolyline*>(object);
}

AcDb3dPolyline::AcDb3dPolyline(AcDb::Poly3dType type, AcGePoint3dArray& vertices, bool closed)
    : AcDbCurve(space_polyline_body(type, closed))
{
    for (int i = 0; i < vertices.length(); ++i) {
        AcDb3dPolylineVertex vertex(vertices[i]);
        append_vertex(body_, vertex.body());
    }
}

AcDb::Poly3dType AcDb3dPolyline::polyType() const
{
    if (!(int_in(body_, SPACE_POLYLINE, 70, 0) & SPLINE_FIT))
        return AcDb::k3dSimplePoly;
    return int_in(body_, SPACE_POLYLINE, 75, 0) == QUADRATIC ? AcDb::k3dQuadSplinePoly
                                                             : AcDb::k3dCubicSplinePoly;
}

AcDbObjectIterator* AcDb3dPolyline::vertexIterator() const
{
    return new vertex_walk(body_);
}

Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDb3dPolylineVertex* vertex)
{
    return vertex ? append_vertex(body_, vertex->body()) : Acad::eInvalidInput;
}
