// views_lwpolyline.cpp: lightweight polylines.
//
// All vertices stand in the one group list: 10, then 40, 41 and 42 as far as they are given, up to the
// next 10. The view keeps the places of the tens, so that reading a vertex and adding one at the
// end cost the same for long polylines as for short ones. Somebody else may change the list while the view
// is open: places are believed as long as the list has the length that they were made for and there
// is a ten at the place.
#include <algorithm>
#include <cmath>
#include <optional>

#include "host/database/views.h"

using namespace host::db;

namespace
{

constexpr int CLOSED = 1, LINETYPE_GENERATION = 128;
constexpr int FIRST_EXTENDED = 1000;
constexpr int POSITION = 10, START_WIDTH = 40, END_WIDTH = 41, BULGE = 42, CONSTANT_WIDTH = 43, COUNT = 90,
              NORMAL = 210;
const section HEAD = {"AcDbPolyline", {90, 70, 43, 38, 39}, POSITION};

bool of_vertex(int code)
{
    return code == POSITION || (code >= START_WIDTH && code <= BULGE) || code == 91;
}

const std::vector<std::uint32_t>& vertices_of(const AcDbObjectBody* body, const group_list& groups)
{
    std::vector<std::uint32_t>& places = body->vertex_at;
    if (body->indexed_length == groups.size() && (places.empty() || groups[places.back()].code == POSITION))
        return places;
    places.clear();
    for (std::size_t i = 0; i < groups.size(); ++i)
        if (groups[i].code == POSITION)
            places.push_back(static_cast<std::uint32_t>(i));
    body->indexed_length = groups.size();
    return places;
}

// Where a vertex begins; nothing is said for an index that there isn't.
const group* vertex_begin(const AcDbObjectBody* body, const group_list& groups, unsigned index)
{
    const auto& places = vertices_of(body, groups);
    if (index >= places.size())
        return nullptr;
    if (groups[places[index]].code != POSITION) {
        body->indexed_length = 0;
        return vertex_begin(body, groups, index);
    }
    return &groups[places[index]];
}

const group* of_vertex_with(const group_list& groups, const group* begin, int code)
{
    const group* end = groups.data() + groups.size();
    for (const group* at = begin + 1; at < end && of_vertex(at->code) && at->code != POSITION; ++at)
        if (at->code == code)
            return at;
    return nullptr;
}

// Puts a number into a vertex, in the order of the codes.
void put_in_vertex(AcDbObjectBody* body, group_list& groups, unsigned index, int code, double value)
{
    const group* begin = vertex_begin(body, groups, index);
    const group* found = of_vertex_with(groups, begin, code);
    if (found) {
        groups[static_cast<std::size_t>(found - groups.data())].real = value;
        return;
    }
    auto place = static_cast<std::size_t>(begin - groups.data()) + 1;
    while (place < groups.size() && of_vertex(groups[place].code) && groups[place].code != POSITION &&
           groups[place].code < code)
        ++place;
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(place), real_group(code, value));
}

// Of the object's plane; it stands behind the vertices, in some files in front of them.
const group* normal_of(const AcDbObjectBody* body, const group_list& groups)
{
    const database* db = database_behind(body);
    if (const group* in_head = db ? find_in(*db, groups, HEAD, NORMAL) : nullptr)
        return in_head;
    const auto& places = vertices_of(body, groups);
    for (std::size_t i = places.empty() ? groups.size() : places.back() + 1;
         i < groups.size() && groups[i].code < FIRST_EXTENDED; ++i)
        if (groups[i].code == NORMAL)
            return &groups[i];
    return nullptr;
}

struct widths {
    double start, end;
};

widths widths_of(const group_list& groups, const group* begin, double otherwise)
{
    const group* start = of_vertex_with(groups, begin, START_WIDTH);
    const group* end = of_vertex_with(groups, begin, END_WIDTH);
    return {start ? start->real : otherwise, end ? end->real : otherwise};
}

AcDbObjectBody* polyline_body(unsigned vertex_hint)
{
    AcDbObjectBody* body = new_body("0 LWPOLYLINE;100 AcDbEntity;100 AcDbPolyline;90 0;70 0;38 0;39 0");
    constexpr unsigned SENSIBLE_HINT = 1u << 20;
    body->state->groups.reserve(body->state->groups.size() + 4u * std::min(vertex_hint, SENSIBLE_HINT));
    return body;
}

// Nothing when the vertices have different widths.
std::optional<double> common_width(const AcDbObjectBody* body, const group_list& groups, double otherwise)
{
    std::optional<double> common;
    for (const std::uint32_t place : vertices_of(body, groups)) {
        const widths here = widths_of(groups, &groups[place], otherwise);
        if (here.start != here.end || (common && here.start != *common))
            return std::nullopt;
        common = here.start;
    }
    return common ? common : otherwise;
}

// The width of all vertices together goes when a vertex gets another one; what had it gets it as its own.
void keep_constant_width(AcDbObjectBody* body, group_list& groups, widths added)
{
    const database& db = *database_behind(body);
    const group* constant = find_in(db, groups, HEAD, CONSTANT_WIDTH);
    if (!constant || (constant->real == added.start && constant->real == added.end))
        return;
    const double width = constant->real;
    remove_in(db, groups, HEAD, CONSTANT_WIDTH);
    for (unsigned i = 0; width != 0.0 && i < vertices_of(body, groups).size(); ++i) {
        const widths own = widths_of(groups, vertex_begin(body, groups, i), width);
        put_in_vertex(body, groups, i, START_WIDTH, own.start);
        put_in_vertex(body, groups, i, END_WIDTH, own.end);
    }
}

} // namespace

AcDbPolyline* AcDbPolyline::cast(AcDbObject* object)
{
    return dynamic_cast<AcDbPolyline*>(object);
}

AcDbPolyline::AcDbPolyline(unsigned vertex_hint) : AcDbCurve(polyline_body(vertex_hint)) {}

unsigned AcDbPolyline::numVerts() const
{
    return static_cast<unsigned>(vertices_of(body_, groups_behind(body_)).size());
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned index, AcGePoint3d& point) const
{
    const group_list& groups = groups_behind(body_);
    const group* begin = vertex_begin(body_, groups, index);
    if (!begin)
        return Acad::eInvalidIndex;
    point = in_world({begin->point[0], begin->point[1], elevation()}, normal_of(body_, groups));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned index, double& bulge) const
{
    const group_list& groups = groups_behind(body_);
    const group* begin = vertex_begin(body_, groups, index);
    if (!begin)
        return Acad::eInvalidIndex;
    const group* found = of_vertex_with(groups, begin, BULGE);
    bulge = found ? found->real : 0.0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const
{
    const double otherwise = real_in(body_, HEAD, CONSTANT_WIDTH, 0.0);
    const auto common = common_width(body_, groups_behind(body_), otherwise);
    width = common.value_or(0.0);
    return common ? Acad::eOk : Acad::eInvalidInput;
}

bool AcDbPolyline::hasPlinegen() const
{
    return int_in(body_, HEAD, 70, 0) & LINETYPE_GENERATION;
}

double AcDbPolyline::thickness() const
{
    return real_in(body_, HEAD, 39, 0.0);
}

double AcDbPolyline::elevation() const
{
    return real_in(body_, HEAD, 38, 0.0);
}

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned index, const AcGePoint2d& point, double bulge,
                                            double start_width, double end_width)
{
    Acad::ErrorStatus status;
    group_list* groups = groups_to_change(body_, &status);
    if (!groups)
        return status;
    const database& db = *database_behind(body_);
    const auto count = static_cast<unsigned>(vertices_of(body_, *groups).size());
    if (index > count)
        return Acad::eInvalidIndex;
    // A width below zero asks for the width that the polyline has as a whole.
    const double usual = real_in(body_, HEAD, CONSTANT_WIDTH, 0.0);
    const widths wanted = {start_width < 0 ? usual : start_width, end_width < 0 ? usual : end_width};
    const std::size_t length = groups->size();
    keep_constant_width(body_, *groups, wanted);
    put_in(db, *groups, HEAD, int_group(COUNT, count + 1));
    if (groups->size() != length)
        body_->indexed_length = 0;
    const auto& places = vertices_of(body_, *groups);
    std::size_t at = groups->size();
    if (index < count)
        at = places[index];
    else if (count > 0)
        for (at = places.back() + 1; at < groups->size() && of_vertex((*groups)[at].code); ++at) {
        }
    else
        while (at > 0 && ((*groups)[at - 1].code >= FIRST_EXTENDED || (*groups)[at - 1].code == NORMAL))
            --at;
    const group made[] = {point_group(POSITION, point.x, point.y), real_group(START_WIDTH, wanted.start),
                          real_group(END_WIDTH, wanted.end), real_group(BULGE, bulge)};
    groups->insert(groups->begin() + static_cast<std::ptrdiff_t>(at), std::begin(made), std::end(made));
    if (index == count) {
        body_->vertex_at.push_back(static_cast<std::uint32_t>(at));
        body_->indexed_length = groups->size();
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned index, double start_width, double end_width)
{
    if (!(start_width >= 0.0) || !(end_width >= 0.0))
        return Acad::eInvalidInput;
    if (!vertex_begin(body_, groups_behind(body_), index))
        return Acad::eInvalidIndex;
    Acad::ErrorStatus status;
    group_list* groups = groups_to_change(body_, &status);
    if (!groups)
        return status;
    keep_constant_width(body_, *groups, {start_width, end_width});
    put_in_vertex(body_, *groups, index, START_WIDTH, start_width);
    put_in_vertex(body_, *groups, index, END_WIDTH, end_width);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setElevation(double elevation)
{
    return put_behind(body_, HEAD, real_group(38, elevation));
}

Acad::ErrorStatus AcDbPolyline::setThickness(double thickness)
{
    return put_behind(body_, HEAD, real_group(39, thickness));
}

void AcDbPolyline::setClosed(bool closed)
{
    put_bits(body_, HEAD, 70, CLOSED, closed);
}

void AcDbPolyline::setPlinegen(bool on)
{
    put_bits(body_, HEAD, 70, LINETYPE_GENERATION, on);
}
