// Kinds of objects as paths; a function a kind, found by a table.
//
// A text is the box about its letters (text_metrics.h says what they measure). Lines with a width count as
// their middle.
#include "host/database/shapes.h"

#include <algorithm>
#include <numbers>
#include <string>

#include "host/database/entities.h"
#include "host/database/spline.h"
#include "host/database/text_metrics.h"

namespace host::db
{

namespace
{

constexpr double TURN = 2 * std::numbers::pi;
constexpr int DEEPEST = 32;            // blocks in blocks
constexpr long MOST_OBJECTS = 200'000; // in one object with all its blocks

struct walker {
    const database& db;
    shape_sink& sink;
    std::vector<object_id> blocks; // open, outermost first
    long visited = 0;

    void visit(object_id id, const transform& to_world);
    void visit_block(object_id record, const transform& to_world);
};

using group_view = const group_list&;

vec point_of(group_view groups, int code, const vec& otherwise = {})
{
    const group* found = find(groups, code);
    if (!found || found->kind != group_kind::point)
        return otherwise;
    return {found->point[0], found->point[1], found->point[2]};
}

transform plane_of_object(group_view groups)
{
    return plane_of(point_of(groups, 210, {0, 0, 1}));
}

transform moved(const vec& by)
{
    transform made;
    made.origin = by;
    return made;
}

transform turned(double angle)
{
    transform made;
    made.ex = {std::cos(angle), std::sin(angle), 0};
    made.ey = {-std::sin(angle), std::cos(angle), 0};
    return made;
}

arc_piece mapped(const transform& map, const arc_piece& piece)
{
    return {map.point(piece.centre), map.direction(piece.u), map.direction(piece.v), piece.start, piece.end};
}

arc_piece circle_arc(const vec& centre, double radius, double start, double end)
{
    return {centre, {radius, 0, 0}, {0, radius, 0}, start, end};
}

void draw_arc(walker& to, const arc_piece& piece)
{
    to.sink.move(piece.at(piece.start));
    to.sink.arc(piece);
}

void draw_run(walker& to, const transform& map, const std::vector<vec>& points, bool closed)
{
    if (points.empty())
        return;
    to.sink.move(map.point(points.front()));
    for (std::size_t i = 1; i < points.size(); ++i)
        to.sink.line(map.point(points[i]));
    if (closed && points.size() > 1)
        to.sink.line(map.point(points.front()));
}

// ---- simple kinds

void draw_line(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    draw_run(to, map, {point_of(groups, 10), point_of(groups, 11)}, false);
}

void draw_circle(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    draw_arc(to, mapped(map * plane_of_object(groups),
                        circle_arc(point_of(groups, 10), real_of(groups, 40, 0), 0, TURN)));
}

double end_behind(double start, double end)
{
    while (end <= start)
        end += TURN;
    return end;
}

void draw_arc_object(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const double start = std::remainder(real_of(groups, 50, 0), TURN);
    const double end = end_behind(start, std::remainder(real_of(groups, 51, TURN), TURN));
    draw_arc(to, mapped(map * plane_of_object(groups),
                        circle_arc(point_of(groups, 10), real_of(groups, 40, 0), start, end)));
}

void draw_ellipse(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const vec normal = point_of(groups, 210, {0, 0, 1}), major = point_of(groups, 11);
    const double size = length(normal), ratio = real_of(groups, 40, 1);
    const vec minor = cross(size > 0 ? normal * (1 / size) : vec{0, 0, 1}, major) * ratio;
    const double start = real_of(groups, 41, 0), given_end = real_of(groups, 42, TURN);
    const double end = given_end > start ? given_end : start + TURN - std::fmod(start - given_end, TURN);
    draw_arc(to, mapped(map, {point_of(groups, 10), major, minor, start, end}));
}

void draw_corners(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const vec third = point_of(groups, 12);
    // The corners of a solid go zigzag.
    to.sink.filled(true);
    draw_run(to, map * plane_of_object(groups),
             {point_of(groups, 10), point_of(groups, 11), point_of(groups, 13, third), third}, true);
    to.sink.filled(false);
}

void draw_face(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const vec third = point_of(groups, 12);
    draw_run(to, map, {point_of(groups, 10), point_of(groups, 11), third, point_of(groups, 13, third)}, true);
}

void draw_endless(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const vec base = point_of(groups, 10), along = point_of(groups, 11, {1, 0, 0});
    const double size = length(along);
    const vec reach = along * (size > 0 ? ENDLESS / size : 0);
    draw_run(to, map, {to.db.is(id, "RAY") ? base : base - reach, base + reach}, false);
}

void draw_viewport(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const double w = real_of(groups, 40, 0) / 2, h = real_of(groups, 41, 0) / 2;
    const vec c = point_of(groups, 10);
    draw_run(to, map, {c + vec{-w, -h, 0}, c + vec{w, -h, 0}, c + vec{w, h, 0}, c + vec{-w, h, 0}}, true);
}

void draw_image(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const vec size = point_of(groups, 13, {1, 1, 0}), corner = point_of(groups, 10);
    const vec u = point_of(groups, 11) * size.x, v = point_of(groups, 12) * size.y;
    draw_run(to, map, {corner, corner + u, corner + u + v, corner + v}, true);
}

// All points of one code, in a run: leaders, multilines.
void draw_points_of(walker& to, object_id id, const transform& map, int code)
{
    std::vector<vec> points;
    for (const group& each : to.db.at(id).groups)
        if (each.code == code && each.kind == group_kind::point)
            points.push_back({each.point[0], each.point[1], each.point[2]});
    draw_run(to, map, points, false);
}

void draw_leader(walker& to, object_id id, const transform& map)
{
    draw_points_of(to, id, map, 10);
}
void draw_multiline(walker& to, object_id id, const transform& map)
{
    draw_points_of(to, id, map, 11);
}

// Kinds that aren't known: their points, each by itself.
void draw_unknown(walker& to, object_id id, const transform& map)
{
    for (const group& each : to.db.at(id).groups)
        if (each.code == 10 && each.kind == group_kind::point)
            to.sink.move(map.point({each.point[0], each.point[1], each.point[2]}));
}

// ---- polylines

struct vertex {
    vec at;
    double bulge = 0;
};

// A segment whose bulge isn't 0 is an arc: the bulge is the tangent of a quarter of the angle it spans,
// positive when it turns to the left.
void draw_bulge(walker& to, const transform& map, const vertex& from, const vec& end)
{
    const vec chord = end - from.at;
    const double size = std::hypot(chord.x, chord.y);
    if (from.bulge == 0 || size == 0) {
        to.sink.line(map.point(end));
        return;
    }
    const double b = from.bulge, away = (1 - b * b) / (4 * b); // centre's distance over the chord
    const vec centre{(from.at.x + end.x) / 2 - chord.y * away, (from.at.y + end.y) / 2 + chord.x * away,
                     from.at.z};
    const double start = std::atan2(from.at.y - centre.y, from.at.x - centre.x);
    const double radius = std::hypot(from.at.x - centre.x, from.at.y - centre.y);
    to.sink.arc(mapped(map, circle_arc(centre, radius, start, start + 4 * std::atan(b))));
}

void draw_vertices(walker& to, const transform& map, const std::vector<vertex>& vertices, bool closed)
{
    if (vertices.empty())
        return;
    to.sink.move(map.point(vertices.front().at));
    const std::size_t count = vertices.size(), segments = closed && count > 1 ? count : count - 1;
    for (std::size_t i = 0; i < segments; ++i)
        draw_bulge(to, map, vertices[i], vertices[(i + 1) % count].at);
}

void draw_lightweight(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const double elevation = real_of(groups, 38, 0);
    std::vector<vertex> vertices;
    for (const group& each : groups) {
        if (each.code == 10 && each.kind == group_kind::point)
            vertices.push_back({{each.point[0], each.point[1], elevation}, 0});
        else if (each.code == 42 && each.kind == group_kind::real && !vertices.empty())
            vertices.back().bulge = each.real;
    }
    draw_vertices(to, map * plane_of_object(groups), vertices, int_of(groups, 70, 0) & 1);
}

void draw_mesh(walker& to, const transform& map, const std::vector<vertex>& vertices, group_view groups)
{
    const std::int64_t flags = int_of(groups, 70, 0);
    const std::size_t rows = static_cast<std::size_t>(std::max<std::int64_t>(int_of(groups, 71, 0), 1));
    const std::size_t columns = static_cast<std::size_t>(std::max<std::int64_t>(int_of(groups, 72, 0), 1));
    const auto at = [&](std::size_t row, std::size_t column) {
        const std::size_t index = row * columns + column;
        return index < vertices.size() ? vertices[index].at : vec{};
    };
    const std::size_t whole = std::min(rows, vertices.size() / columns);
    std::vector<vec> run;
    for (std::size_t row = 0; row < whole; ++row) {
        run.clear();
        for (std::size_t column = 0; column < columns; ++column)
            run.push_back(at(row, column));
        draw_run(to, map, run, flags & 32);
    }
    for (std::size_t column = 0; column < columns; ++column) {
        run.clear();
        for (std::size_t row = 0; row < whole; ++row)
            run.push_back(at(row, column));
        draw_run(to, map, run, flags & 1);
    }
}

// Faces name their corners by number, 1 the first; a negative one begins an edge that isn't seen.
void draw_faces(walker& to, const transform& map, const std::vector<vertex>& vertices,
                const std::vector<object_id>& faces)
{
    for (const object_id face : faces) {
        std::vector<vec> run;
        for (const int code : {71, 72, 73, 74}) {
            const std::int64_t corner = std::abs(int_of(to.db.at(face).groups, code, 0));
            if (corner > 0 && static_cast<std::size_t>(corner) <= vertices.size())
                run.push_back(vertices[static_cast<std::size_t>(corner - 1)].at);
        }
        draw_run(to, map, run, true);
    }
}

void draw_polyline(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const std::int64_t flags = int_of(groups, 70, 0);
    const bool flat = !(flags & (8 | 16 | 64));
    std::vector<vertex> vertices;
    std::vector<object_id> faces;
    for (object_id child = first_child(to.db, id); child; child = next_child(to.db, child)) {
        group_view own = to.db.at(child).groups;
        const std::int64_t kind = int_of(own, 70, 0);
        if (kind & 16) // control point of a spline's frame
            continue;
        if ((kind & 128) && !(kind & 64)) {
            faces.push_back(child);
            continue;
        }
        vertices.push_back({point_of(own, 10), flat ? real_of(own, 42, 0) : 0});
    }
    const transform plane = flat ? map * plane_of_object(groups) : map;
    if (flat) // the plane's height is the polyline's own
        for (vertex& each : vertices)
            each.at.z = find(groups, 10) ? point_of(groups, 10).z : each.at.z;
    if (flags & 64)
        draw_faces(to, plane, vertices, faces);
    else if (flags & 16)
        draw_mesh(to, plane, vertices, groups);
    else
        draw_vertices(to, plane, vertices, flags & 1);
}

// ---- texts

// A box in the text's own directions, `x` and `y` its lower left corner.
void draw_box(walker& to, const transform& map, double x, double y, double width, double height)
{
    to.sink.filled(true);
    draw_run(to, map, {{x, y, 0}, {x + width, y, 0}, {x + width, y + height, 0}, {x, y + height, 0}}, true);
    to.sink.filled(false);
}

void draw_text(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const text_line line = line_of(to.db, groups);
    const text_corners box = corners_of(line);
    const transform place = map * plane_of_object(groups) * moved(line.anchor()) * turned(line.direction());
    to.sink.filled(true);
    draw_run(to, place, {box.at[0], box.at[1], box.at[2], box.at[3]}, true);
    to.sink.filled(false);
}

// Of a text with codes: the letters that are seen of each line. Braces and codes that end in ; are left out.
std::vector<std::string> lines_of(const std::string& text)
{
    std::vector<std::string> lines{""};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '{' || c == '}')
            continue;
        if (c != '\\' || i + 1 >= text.size()) {
            lines.back() += c;
            continue;
        }
        const char code = text[++i];
        if (code == 'P' || code == 'X')
            lines.emplace_back();
        else if (code == '\\' || code == '{' || code == '}')
            lines.back() += code;
        else if (code == '~')
            lines.back() += '\xA0';
        else if (code == 'U' && i + 5 < text.size()) {
            lines.back() += text.substr(i - 1, 7); // shown_letters knows it
            i += 5;
        } else if (std::string_view("ACFHQTWcfpS").find(code) != std::string_view::npos) {
            const std::size_t end = std::min(text.find(';', i), text.size());
            if (code == 'S')
                lines.back() += text.substr(i + 1, end - i - 1);
            i = end;
        }
    }
    for (std::string& line : lines)
        line = shown_letters(line);
    return lines;
}

// How many lines one becomes within a frame, broken at blanks, and the widest of them, in heights. A word wider
// than the frame has a line of its own.
std::pair<double, double> wrapped(const std::string& line, font_kind font, double frame)
{
    const double whole = room_of_letters(line, font).width;
    if (!(frame > 0) || whole <= frame)
        return {1.0, whole};
    const double gap = room_of_letters("nn", font).width - 2 * room_of_letters("n", font).width;
    double count = 1, widest = 0, before = 0; // `before`: of the words that the line at hand has
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t end = std::min(line.find(' ', at), line.size());
        const std::string_view word = std::string_view(line).substr(at, end - at);
        const double alone = room_of_letters(word, font).width;
        const double behind = before + room_of_letters(" ", font).width + alone + 2 * gap;
        if (before > 0 && behind > frame) {
            widest = std::max(widest, before);
            count += 1;
            before = alone;
        } else {
            before = before > 0 ? behind : alone;
        }
        at = end + 1;
    }
    return {count, std::max(widest, before)};
}

void draw_paragraphs(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    std::string text;
    for (const group& each : groups)
        if (each.code == 1 || each.code == 3)
            text += to.db.text(each.text);
    const double height = real_of(groups, 40, 0), frame = real_of(groups, 41, 0);
    const font_kind font = font_of_style(to.db, to.db.text_of(groups, 7));
    double width = 0, lines = 0;
    for (const std::string& line : lines_of(text)) {
        const auto [count, widest] = wrapped(line, font, height > 0 ? frame / height : 0.0);
        width = std::max(width, widest * height);
        lines += count;
    }
    // Lines are five thirds of the height apart, times the spacing factor.
    const double tall = height + (lines - 1) * height * 5 / 3 * real_of(groups, 44, 1);
    const std::int64_t corner = std::clamp<std::int64_t>(int_of(groups, 71, 1), 1, 9) - 1;
    const double x = -width * 0.5 * static_cast<double>(corner % 3);
    const double y = -tall * (1 - 0.5 * static_cast<double>(corner / 3));
    const transform plane = plane_of_object(groups);
    double angle = real_of(groups, 50, 0);
    if (const vec along = point_of(groups, 11); along.x != 0 || along.y != 0 || along.z != 0) {
        const auto dot = [&](const vec& axis) {
            return along.x * axis.x + along.y * axis.y + along.z * axis.z;
        };
        angle = std::atan2(dot(plane.ey), dot(plane.ex));
    }
    // Its place, unlike that of a line of text, is in world coordinates.
    draw_box(to, map * moved(point_of(groups, 10)) * plane * turned(angle), x, y, width, tall);
}

// ---- blocks

void draw_insert(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const object_id record = to.db.record("BLOCK_RECORD", to.db.text_of(groups, 2));
    const transform place =
        map * plane_of_object(groups) * moved(point_of(groups, 10)) * turned(real_of(groups, 50, 0));
    transform scale;
    scale.ex.x = real_of(groups, 41, 1);
    scale.ey.y = real_of(groups, 42, 1);
    scale.ez.z = real_of(groups, 43, 1);
    const std::int64_t columns = std::clamp<std::int64_t>(int_of(groups, 70, 1), 1, 1000);
    const std::int64_t rows = std::clamp<std::int64_t>(int_of(groups, 71, 1), 1, 1000);
    for (std::int64_t row = 0; record && row < rows; ++row)
        for (std::int64_t column = 0; column < columns; ++column)
            to.visit_block(record, place *
                                       moved({static_cast<double>(column) * real_of(groups, 44, 0),
                                              static_cast<double>(row) * real_of(groups, 45, 0), 0}) *
                                       scale);
    for (object_id child = first_child(to.db, id); child; child = next_child(to.db, child))
        to.visit(child, map);
}

void draw_dimension(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    if (const object_id record = to.db.record("BLOCK_RECORD", to.db.text_of(groups, 2))) {
        // The block holds world coordinates; a copy is moved by 12, which is of the object's plane.
        to.visit_block(record, map * moved(plane_of_object(groups).direction(point_of(groups, 12))));
        return;
    }
    for (const group& each : groups)
        if (each.kind == group_kind::point && each.code >= 10 && each.code <= 16)
            to.sink.move(map.point({each.point[0], each.point[1], each.point[2]}));
}

// ---- splines and hatches

void draw_spline(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    spline_curve curve;
    curve.degree = static_cast<int>(int_of(groups, 71, 3));
    std::vector<vec> fit;
    for (const group& each : groups) {
        if (each.code == 40)
            curve.knots.push_back(each.real);
        else if (each.code == 41)
            curve.weights.push_back(each.real);
        else if (each.code == 10)
            curve.controls.push_back({each.point[0], each.point[1], each.point[2]});
        else if (each.code == 11)
            fit.push_back({each.point[0], each.point[1], each.point[2]});
    }
    const std::vector<vec> points = spline_points(curve);
    // Without a curve of its own it is drawn straight through its fit points.
    draw_run(to, map, points.empty() ? fit : points, false);
}

// The groups of a hatch from its first path on, read one after the other.
struct hatch_reader {
    group_view groups;
    std::size_t at;

    const group* next(int code)
    {
        while (at < groups.size() && groups[at].code != code)
            if (groups[at].code == 75 || groups[at].code == 92) // the paths end, or another begins
                return nullptr;
            else
                ++at;
        return at < groups.size() ? &groups[at++] : nullptr;
    }
    std::int64_t integer(int code)
    {
        const group* found = next(code);
        return found && found->kind == group_kind::integer ? found->integer : 0;
    }
    double real(int code)
    {
        const group* found = next(code);
        return found && found->kind == group_kind::real ? found->real : 0;
    }
    vec point(int code, double z)
    {
        const group* found = next(code);
        return found && found->kind == group_kind::point ? vec{found->point[0], found->point[1], z}
                                                         : vec{0, 0, z};
    }
    bool is_next(int code) const { return at < groups.size() && groups[at].code == code; }
};

void draw_hatch_polyline(walker& to, hatch_reader& reader, const transform& map, double z)
{
    reader.integer(72);
    const bool closed = reader.integer(73) != 0;
    const std::int64_t count = reader.integer(93);
    std::vector<vertex> vertices;
    for (std::int64_t i = 0; i < count && reader.at < reader.groups.size(); ++i) {
        vertices.push_back({reader.point(10, z), 0});
        if (reader.is_next(42))
            vertices.back().bulge = reader.real(42);
    }
    draw_vertices(to, map, vertices, closed);
}

void draw_hatch_arc(walker& to, hatch_reader& reader, const transform& map, double z, bool is_ellipse)
{
    arc_piece piece;
    piece.centre = reader.point(10, z);
    if (is_ellipse) {
        piece.u = reader.point(11, 0);
        const double ratio = reader.real(40);
        piece.v = vec{-piece.u.y, piece.u.x, 0} * ratio;
    } else {
        const double radius = reader.real(40);
        piece.u = {radius, 0, 0};
        piece.v = {0, radius, 0};
    }
    piece.start = reader.real(50);
    piece.end = reader.real(51);
    if (piece.end < piece.start)
        piece.end = end_behind(piece.start, std::remainder(piece.end, TURN));
    if (reader.integer(73) == 0) { // angles are counted clockwise
        piece.start = -piece.start;
        piece.end = -piece.end;
    }
    draw_arc(to, mapped(map, piece));
}

void draw_hatch_spline(walker& to, hatch_reader& reader, const transform& map, double z)
{
    spline_curve curve;
    curve.degree = static_cast<int>(reader.integer(94));
    const bool rational = reader.integer(73) != 0;
    const std::int64_t knots = reader.integer(95), controls = reader.integer(96);
    for (std::int64_t i = 0; i < knots && reader.is_next(40); ++i)
        curve.knots.push_back(reader.real(40));
    for (std::int64_t i = 0; i < controls && reader.is_next(10); ++i) {
        curve.controls.push_back(reader.point(10, z));
        if (rational && reader.is_next(42))
            curve.weights.push_back(reader.real(42));
    }
    draw_run(to, map, spline_points(curve), false);
}

void draw_hatch_edge(walker& to, hatch_reader& reader, const transform& map, double z)
{
    switch (reader.integer(72)) {
    case 1: {
        const vec from = reader.point(10, z);
        draw_run(to, map, {from, reader.point(11, z)}, false);
        break;
    }
    case 2:
        draw_hatch_arc(to, reader, map, z, false);
        break;
    case 3:
        draw_hatch_arc(to, reader, map, z, true);
        break;
    case 4:
        draw_hatch_spline(to, reader, map, z);
        break;
    default:
        break;
    }
}

void draw_hatch(walker& to, object_id id, const transform& map)
{
    group_view groups = to.db.at(id).groups;
    const transform plane = map * plane_of_object(groups);
    const double z = point_of(groups, 10).z;
    to.sink.filled(int_of(groups, 70, 0) == 1);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i].code == 75)
            break;
        if (groups[i].code != 92)
            continue;
        hatch_reader reader{groups, i + 1};
        if (groups[i].integer & 2) {
            draw_hatch_polyline(to, reader, plane, z);
            continue;
        }
        const std::int64_t edges = reader.integer(93);
        for (std::int64_t edge = 0; edge < edges && reader.is_next(72); ++edge)
            draw_hatch_edge(to, reader, plane, z);
    }
    to.sink.filled(false);
}

// ---- the table

void draw_nothing(walker&, object_id, const transform&) {}

struct drawer {
    std::string_view type;
    void (*draw)(walker&, object_id, const transform&);
};

constexpr drawer DRAWERS[] = {
    {"3DFACE", draw_face},       {"ACAD_TABLE", draw_insert},
    {"ARC", draw_arc_object},    {"ATTDEF", draw_text},
    {"ATTRIB", draw_text},       {"BLOCK", draw_nothing},
    {"CIRCLE", draw_circle},     {"DIMENSION", draw_dimension},
    {"ELLIPSE", draw_ellipse},   {"ENDBLK", draw_nothing},
    {"HATCH", draw_hatch},       {"IMAGE", draw_image},
    {"INSERT", draw_insert},     {"LEADER", draw_leader},
    {"LINE", draw_line},         {"LWPOLYLINE", draw_lightweight},
    {"MLINE", draw_multiline},   {"MTEXT", draw_paragraphs},
    {"POINT", draw_unknown},     {"POLYLINE", draw_polyline},
    {"RAY", draw_endless},       {"SEQEND", draw_nothing},
    {"SOLID", draw_corners},     {"SPLINE", draw_spline},
    {"TEXT", draw_text},         {"TRACE", draw_corners},
    {"VIEWPORT", draw_viewport}, {"WIPEOUT", draw_image},
    {"XLINE", draw_endless},
};

void walker::visit(object_id id, const transform& to_world)
{
    if (++visited > MOST_OBJECTS)
        return;
    const std::string_view type = db.type_of(id);
    const auto found =
        std::lower_bound(std::begin(DRAWERS), std::end(DRAWERS), type,
                         [](const drawer& each, std::string_view name) { return each.type < name; });
    const auto draw = found != std::end(DRAWERS) && found->type == type ? found->draw : draw_unknown;
    draw(*this, id, to_world);
    // What has a thickness is there a second time, that far along its normal.
    const double thickness = real_of(db.at(id).groups, 39, 0);
    if (thickness != 0 && draw != draw_unknown)
        draw(*this, id, to_world * moved(plane_of_object(db.at(id).groups).ez * thickness));
}

void walker::visit_block(object_id record, const transform& to_world)
{
    if (blocks.size() >= DEEPEST || std::find(blocks.begin(), blocks.end(), record) != blocks.end())
        return;
    blocks.push_back(record);
    const object_id begin = db.at(record).first;
    const vec base = begin && db.is(begin, "BLOCK") ? point_of(db.at(begin).groups, 10) : vec{};
    const transform inner = to_world * moved(vec{} - base);
    for (object_id at = first_entity(db, record); at && visited <= MOST_OBJECTS; at = next_entity(db, at)) {
        // Of attribute definitions only constant ones show.
        if (!db.is(at, "ATTDEF") || int_of(db.at(at).groups, 70, 0) & 2)
            visit(at, inner);
    }
    blocks.pop_back();
}

} // namespace

void trace_shape(const database& db, object_id id, shape_sink& sink)
{
    if (!db.valid(id))
        return;
    walker to{db, sink, {}};
    to.visit(id, {});
}

bool is_endless(const database& db, object_id id)
{
    return db.is(id, "RAY") || db.is(id, "XLINE");
}

int chord_count(const arc_piece& piece, double tolerance)
{
    constexpr int MOST = 4096;
    const double radius = std::max(length(piece.u), length(piece.v)),
                 sweep = std::fabs(piece.end - piece.start);
    if (!(radius > 0) || !std::isfinite(sweep))
        return 1;
    const double ratio = std::clamp(tolerance / radius, 1e-9, 0.5);
    const double step = 2 * std::acos(1 - ratio); // the sagitta of a chord over it is the tolerance
    return static_cast<int>(std::clamp(std::ceil(sweep / step), 1.0, static_cast<double>(MOST)));
}

} // namespace host::db
