// Operation 3 against plain geometry: what is left of random lines through random symbols is all that lies
// outside of the symbols, and nothing else.
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "drawing/picked_segment.h"
#include "drawing/read.h"
#include "tests/tools/small_tool_case.h"

namespace
{

constexpr double PI = std::numbers::pi;

struct place2 {
    double x, y;
};

struct symbol {
    const char* block;
    place2 at;
    double turn, scale;
    // Beyond 1 outside, below 1 inside of the outline of an unturned symbol of scale 1.
    double (*reach)(double x, double y);

    double outside(place2 p) const
    {
        const double dx = (p.x - at.x) / scale, dy = (p.y - at.y) / scale;
        const double c = std::cos(turn), s = std::sin(turn);
        return reach(c * dx + s * dy, c * dy - s * dx);
    }
};

struct outline {
    const char* block;
    double (*reach)(double x, double y);
};

const outline OUTLINES[] = {
    {"SPTC", [](double x, double y) { return std::hypot(x, y); }},
    {"SPTE", [](double x, double y) { return std::hypot(x / 1.5, y / 0.6); }},
    {"SPTQ", [](double x, double y) { return std::max(std::fabs(x), std::fabs(y)) / 1.2; }},
    {"SPTD", [](double x, double y) { return (std::fabs(x) + std::fabs(y)) / 1.4; }},
};

const char* const BLOCKS = R"(
    (defun block-of (name pieces)
      (entmake (list '(0 . "BLOCK") (cons 2 name) '(70 . 0) '(10 0.0 0.0 0.0)))
      (foreach p pieces (entmake p))
      (entmake '((0 . "ENDBLK"))))
    (block-of "SPTC" '(((0 . "CIRCLE") (8 . "0") (10 0.0 0.0 0.0) (40 . 1.0))))
    (block-of "SPTE" '(((0 . "ELLIPSE") (8 . "0") (10 0.0 0.0 0.0) (11 1.5 0.0 0.0) (40 . 0.4))
                       ((0 . "TEXT") (8 . "0") (10 0.0 0.0 0.0) (40 . 1.0) (1 . "T"))))
    (block-of "SPTQ" '(((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbPolyline") (90 . 4) (70 . 1)
                        (10 -1.2 -1.2) (10 1.2 -1.2) (10 1.2 1.2) (10 -1.2 1.2))
                       ((0 . "LINE") (8 . "0") (10 -3.0 0.0 0.0) (11 3.0 0.0 0.0))))
    (block-of "SPTD" '(((0 . "POLYLINE") (8 . "0") (66 . 1) (70 . 1) (10 0.0 0.0 0.0))
                       ((0 . "VERTEX") (8 . "0") (10 1.4 0.0 0.0)) ((0 . "VERTEX") (8 . "0") (10 0.0 1.4 0.0))
                       ((0 . "VERTEX") (8 . "0") (10 -1.4 0.0 0.0)) ((0 . "VERTEX") (8 . "0") (10 0.0 -1.4 0.0))
                       ((0 . "SEQEND")))))";

struct segment {
    place2 a, b;
};

double distance(place2 p, const segment& s)
{
    const double dx = s.b.x - s.a.x, dy = s.b.y - s.a.y, length_sq = dx * dx + dy * dy;
    const double t =
        length_sq > 0.0 ? std::clamp(((p.x - s.a.x) * dx + (p.y - s.a.y) * dy) / length_sq, 0.0, 1.0) : 0.0;
    return std::hypot(s.a.x + t * dx - p.x, s.a.y + t * dy - p.y);
}

// A line in the drawing with the symbols on it: a LINE, a lightweight or an old polyline of several segments.
struct marked_line {
    std::vector<place2> corners;
    std::vector<symbol> symbols;
};

std::string point_text(place2 p)
{
    char text[80];
    std::snprintf(text, sizeof text, "(%.17g %.17g 0.0 0.0)", p.x, p.y);
    return text;
}

std::vector<segment> segments_of_drawing()
{
    std::vector<segment> all;
    ads_name at;
    for (int status = acdbEntNext(nullptr, at); status == RTNORM; status = acdbEntNext(at, at)) {
        resbuf* list = acdbEntGet(at);
        pl_vertex* chain = is_line_list(list)       ? pl_read_line(list)
                           : is_polyline_list(list) ? pl_read_vertices(at)
                                                    : nullptr;
        acutRelRb(list);
        for (const pl_vertex* v = chain; v && v->next; v = v->next)
            all.push_back({{v->x, v->y}, {v->next->x, v->next->y}});
        pl_free_vertices(chain);
    }
    return all;
}

class TrimGeometry : public SmallTool, public testing::WithParamInterface<int>
{
protected:
    std::mt19937 random{static_cast<unsigned>(GetParam())};
    double between(double low, double high) { return std::uniform_real_distribution<>(low, high)(random); }

    // Lines of 40 long in rows 10 apart, so that symbols of one touch no other; symbols at 7, 14 ... along
    // each.
    marked_line new_line(int row)
    {
        const double far = GetParam() % 2 ? 0.0 : 640000.0;
        const double slope = between(-0.05, 0.05);
        marked_line made;
        const bool has_corners = row % 3 != 0;
        for (const double x : {0.0, 10.5, 17.5, 40.0})
            if (has_corners || x == 0.0 || x == 40.0)
                made.corners.push_back(
                    {far + x, far * 8 + 10.0 * row + slope * x + (has_corners ? between(-1, 1) : 0)});
        for (const double x : {0.0, 7.0, 14.0, 21.0, 28.0, 40.0}) {
            if (between(0, 1) < 0.3)
                continue;
            const outline& o = OUTLINES[random() % 4];
            made.symbols.push_back(
                {o.block, point_at(made, far + x), between(0, 2 * PI), between(0.3, 1.5), o.reach});
        }
        return made;
    }
    static place2 point_at(const marked_line& line, double x)
    {
        std::size_t i = 1;
        while (i + 1 < line.corners.size() && line.corners[i].x < x)
            ++i;
        const place2 a = line.corners[i - 1], b = line.corners[i];
        return {x, a.y + (b.y - a.y) * (x - a.x) / (b.x - a.x)};
    }
    void draw(const marked_line& line, int row)
    {
        std::string corners;
        for (const place2 p : line.corners)
            corners += point_text(p);
        const char* const how[] = {"(line (car v) (last v))",
                                   "(lw 0 (mapcar '(lambda (p) (list (car p) (cadr p) 0.0)) v))",
                                   "(old 0 0 v)"};
        session.lisp("(setq v (mapcar '(lambda (p) (list (car p) (cadr p) 0.0 0.0)) '(" + corners + ")))" +
                     (row % 3 == 0 ? "(setq v (mapcar '(lambda (p) (list (car p) (cadr p) 0.0)) v))" : "") +
                     how[row % 3]);
        for (const symbol& s : line.symbols) {
            char text[300];
            std::snprintf(
                text, sizeof text,
                "(entmake '((0 . \"INSERT\") (2 . \"%s\") (10 %.17g %.17g 0.0) (41 . %.17g) (42 . %.17g) "
                "(43 . %.17g) (50 . %.17g)))",
                s.block, s.at.x, s.at.y, s.scale, s.scale, s.scale, s.turn);
            session.lisp(text);
        }
    }
};

TEST_P(TrimGeometry, WhatIsLeftIsWhatLiesOutside)
{
    session.lisp("(setvar \"CMDECHO\" 0)");
    session.lisp(BLOCKS);
    std::vector<marked_line> lines;
    for (int row = 0; row < 12; ++row) {
        lines.push_back(new_line(row));
        draw(lines.back(), row);
    }
    call("3", "all\n\n");
    EXPECT_TRUE(told.ends_with("\nDone.")) << told;
    const std::vector<segment> left = segments_of_drawing();
    const auto is_left = [&](place2 p, double tolerance) {
        return std::any_of(left.begin(), left.end(),
                           [&](const segment& s) { return distance(p, s) < tolerance; });
    };
    int inside = 0, outside = 0;
    for (const marked_line& line : lines)
        for (int i = 0; i <= 4000; ++i) {
            const double x = line.corners.front().x + 40.0 * i / 4000.0;
            const place2 p = point_at(line, std::min(x, line.corners.back().x));
            double reach = 9.0;
            for (const symbol& s : line.symbols)
                reach = std::min(reach, s.outside(p));
            if (reach > 1.0 + 1e-5) {
                EXPECT_TRUE(is_left(p, 1e-6)) << p.x << ' ' << p.y << " is gone";
                ++outside;
            } else if (reach < 1.0 - 1e-5) {
                EXPECT_FALSE(is_left(p, 1e-6)) << p.x << ' ' << p.y << " is still there";
                ++inside;
            }
        }
    EXPECT_GT(inside, 1000);
    EXPECT_GT(outside, 10000);
    // And nothing else came.
    for (const segment& s : left) {
        const place2 middle = {(s.a.x + s.b.x) / 2, (s.a.y + s.b.y) / 2};
        const bool lies_on_one = std::any_of(lines.begin(), lines.end(), [&](const marked_line& line) {
            for (std::size_t i = 1; i < line.corners.size(); ++i)
                if (distance(middle, {line.corners[i - 1], line.corners[i]}) < 1e-6)
                    return true;
            return false;
        });
        EXPECT_TRUE(lies_on_one) << middle.x << ' ' << middle.y;
    }
    std::size_t symbols = 0;
    for (const marked_line& line : lines)
        symbols += line.symbols.size();
    EXPECT_EQ(session.lisp("(sslength (ssget \"X\" '((0 . \"INSERT\"))))"), std::to_string(symbols));
    EXPECT_EQ(session.lisp("(ssget \"X\" '((0 . \"CIRCLE,ELLIPSE,TEXT\")))"), "nil");
}

INSTANTIATE_TEST_SUITE_P(Seeds, TrimGeometry, testing::Range(1, 13));

} // namespace
