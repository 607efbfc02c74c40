#include "tests/tools/pointer_session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <sstream>

#include "host/commandline/screen.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "hostapi/ads.h"

std::string coordinate_text(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.4f", value);
    std::string shown = text;
    if (shown.find('.') != std::string::npos) {
        shown.erase(shown.find_last_not_of('0') + 1);
        if (shown.back() == '.')
            shown.pop_back();
    }
    return shown == "-0" ? "0" : shown;
}

namespace
{

constexpr const char* LEFT_OVER = "nobody asked";

constexpr const char* DRAWING_FUNCTIONS = R"(
(defun line (a b props)
  (entmake (append (list '(0 . "LINE") (cons 10 a) (cons 11 b)) props)))
(defun lw (flags points props)
  (entmake (append (list '(0 . "LWPOLYLINE") '(100 . "AcDbEntity") '(8 . "0")) props
                   (list '(100 . "AcDbPolyline") (cons 90 (length points)) (cons 70 flags))
                   (apply 'append (mapcar '(lambda (p)
                     (list (list 10 (car p) (cadr p)) (cons 42 (if (caddr p) (caddr p) 0.0)))) points)))))
(defun p2d (flags points elevation w1 w2)
  (entmake (list '(0 . "POLYLINE") '(66 . 1) (cons 70 flags) (list 10 0.0 0.0 elevation)
                 (cons 40 w1) (cons 41 w2)))
  (foreach p points
    (entmake (list '(0 . "VERTEX") (list 10 (car p) (cadr p) elevation)
                   (cons 40 w1) (cons 41 w2) (cons 42 (if (caddr p) (caddr p) 0.0)))))
  (entmake '((0 . "SEQEND"))))
(defun p3d (flags points)
  (entmake (list '(0 . "POLYLINE") '(66 . 1) (cons 70 (+ 8 flags)) '(10 0.0 0.0 0.0)))
  (foreach p points (entmake (list '(0 . "VERTEX") (cons 10 p) '(70 . 32))))
  (entmake '((0 . "SEQEND"))))
(defun variables ()
  (mapcar 'getvar '("ANGBASE" "ANGDIR" "AUNITS" "CECOLOR" "CELTSCALE" "CELTYPE" "CMDECHO" "DIMASZ"
                    "ELEVATION" "HIGHLIGHT" "LIMCHECK" "ORTHOMODE" "OSMODE" "PICKBOX" "PLINETYPE"
                    "PLINEWID" "REGENMODE" "SNAPMODE" "THICKNESS" "VIEWSIZE")))
)";

// The values of one object's list that the text of an object shows.
struct shown_object {
    std::string type, layer = "0", linetype = "BYLAYER", points;
    double ltscale = 1.0, thickness = 0.0, elevation = 0.0;
    int color = 256, flags = 0;
    double start_width = 0.0, end_width = 0.0;
    std::vector<std::string> vertex_widths;
};

std::string pair_text(double a, double b)
{
    return coordinate_text(a) + "/" + coordinate_text(b);
}

std::string point_text(const double* p, bool with_z)
{
    std::string text = " " + coordinate_text(p[0]) + "," + coordinate_text(p[1]);
    if (with_z && coordinate_text(p[2]) != "0")
        text += "," + coordinate_text(p[2]);
    return text;
}

void take_common(shown_object& object, const resbuf& group)
{
    switch (group.restype) {
    case 0:
        object.type = group.resval.rstring;
        break;
    case 6:
        object.linetype = group.resval.rstring;
        break;
    case 8:
        object.layer = group.resval.rstring;
        break;
    case 39:
        object.thickness = group.resval.rreal;
        break;
    case 48:
        object.ltscale = group.resval.rreal;
        break;
    case 62:
        object.color = group.resval.rint;
        break;
    case 70:
        object.flags = group.resval.rint;
        break;
    default:
        break;
    }
}

void add_bulge(shown_object& object, double bulge)
{
    if (bulge != 0.0)
        object.points += "b" + coordinate_text(bulge);
}

// A LINE or an LWPOLYLINE; of an old-style polyline the header.
shown_object read_object(const ads_name name)
{
    shown_object object;
    resbuf* list = acdbEntGet(name);
    double width = 0.0;
    for (const resbuf* at = list; at; at = at->rbnext) {
        take_common(object, *at);
        const bool light = object.type == "LWPOLYLINE", old = object.type == "POLYLINE";
        if (at->restype == 38)
            object.elevation = at->resval.rreal;
        else if (at->restype == 10 && old)
            object.elevation = at->resval.rpoint[2];
        else if (at->restype == 10 || (at->restype == 11 && object.type == "LINE"))
            object.points += point_text(at->resval.rpoint, !light);
        else if (at->restype == 42 && light)
            add_bulge(object, at->resval.rreal);
        else if (at->restype == 43 && light)
            object.start_width = object.end_width = at->resval.rreal;
        else if (at->restype == 40 && light)
            width = at->resval.rreal;
        else if (at->restype == 41 && light)
            object.vertex_widths.push_back(pair_text(width, at->resval.rreal));
        else if (at->restype == 40 && old)
            object.start_width = at->resval.rreal;
        else if (at->restype == 41 && old)
            object.end_width = at->resval.rreal;
    }
    acutRelRb(list);
    return object;
}

void add_vertex(shown_object& object, const ads_name name)
{
    resbuf* list = acdbEntGet(name);
    shown_object vertex;
    double bulge = 0.0, start = 0.0, end = 0.0;
    const bool flat = !(object.flags & 8);
    for (const resbuf* at = list; at; at = at->rbnext) {
        take_common(vertex, *at);
        if (at->restype == 10) {
            double p[3] = {at->resval.rpoint[0], at->resval.rpoint[1], at->resval.rpoint[2]};
            if (flat)
                p[2] -= object.elevation; // stands behind, as elev=
            object.points += point_text(p, true);
        }
        if (at->restype == 40)
            start = at->resval.rreal;
        if (at->restype == 41)
            end = at->resval.rreal;
        if (at->restype == 42)
            bulge = at->resval.rreal;
    }
    acutRelRb(list);
    add_bulge(object, bulge);
    if (vertex.layer != object.layer || vertex.color != object.color)
        object.points += "(layer=" + vertex.layer + " color=" + std::to_string(vertex.color) + ")";
    if (flat)
        object.vertex_widths.push_back(pair_text(start, end));
}

std::string widths_text(const shown_object& object)
{
    bool same = true;
    std::string all;
    for (const std::string& width : object.vertex_widths) {
        same = same && width == object.vertex_widths.front();
        all += (all.empty() ? "" : ",") + width;
    }
    const std::string standard = pair_text(object.start_width, object.end_width);
    if (object.type == "LWPOLYLINE" && same && !object.vertex_widths.empty() && standard == "0/0")
        return object.vertex_widths.front() == "0/0" ? "" : " width=" + object.vertex_widths.front();
    std::string text = standard == "0/0" ? "" : " width=" + standard;
    if (!object.vertex_widths.empty() && (!same || object.vertex_widths.front() != standard))
        text += " vertex widths=" + all;
    return text;
}

std::string text_of(const shown_object& object)
{
    const bool light = object.type == "LWPOLYLINE", old = object.type == "POLYLINE";
    const bool spatial = old && object.flags & 8;
    std::string text = (light ? "LW" : spatial ? "P3D" : old ? "P2D" : object.type) + object.points;
    if (light || old) {
        text += object.flags & 1 ? " closed" : "";
        text += object.flags & 128 ? " gen" : "";
    }
    text += object.layer == "0" ? "" : " layer=" + object.layer;
    text += object.color == 256 ? "" : " color=" + std::to_string(object.color);
    text += object.linetype == "BYLAYER" || object.linetype == "ByLayer" ? "" : " ltype=" + object.linetype;
    text += object.ltscale == 1.0 ? "" : " ltscale=" + coordinate_text(object.ltscale);
    text += widths_text(object);
    text += object.thickness == 0.0 ? "" : " thick=" + coordinate_text(object.thickness);
    text += object.elevation == 0.0 || spatial ? "" : " elev=" + coordinate_text(object.elevation);
    return text;
}

std::string answer_lines(std::string_view answers)
{
    std::string lines(answers);
    for (char& c : lines)
        c = c == '|' ? '\n' : c;
    return lines + "\n" + LEFT_OVER + "\n";
}

} // namespace

pointer_session::pointer_session(std::string_view drawing)
{
    lisp(DRAWING_FUNCTIONS);
    lisp("(setvar \"CMDECHO\" 0)(command \"_.ZOOM\" \"_C\" '(0.0 0.0) " + std::to_string(VIEW_HEIGHT) + ")");
    const std::string made = lisp(drawing);
    EXPECT_NE(made, "nil") << drawing;
    EXPECT_NE(made.rfind("error", 0), 0u) << drawing << ": " << made;
    session_.printed();
}

void pointer_session::before(std::string_view answers)
{
    variables_ = lisp("(variables)");
    host::answers_from_text(answer_lines(answers));
}

void pointer_session::after(bool may_end_early)
{
    std::string left = host::next_answer("").value_or("none");
    while (may_end_early && left != LEFT_OVER && left != "none")
        left = host::next_answer("").value_or("none");
    EXPECT_EQ(left, LEFT_OVER);
    EXPECT_FALSE(host::answers_ended());
    EXPECT_TRUE(host::commandline::screen_vectors(host::current_document()).empty()) << "an arrow was left";
    EXPECT_EQ(lisp("(variables)"), variables_);
}

std::string pointer_session::run(std::string_view answers, bool may_end_early)
{
    before(answers);
    EXPECT_EQ(lisp("(cf:zentutil \"\" 1)"), "nil");
    const std::string printed = session_.printed();
    after(may_end_early);
    session_.printed();
    return printed;
}

std::vector<std::string> pointer_session::trace(std::string_view answers)
{
    before(answers);
    std::istringstream text(session_.traced("(cf:zentutil \"\" 1)"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    after(false);
    session_.printed();
    return lines;
}

std::string objects_text()
{
    std::vector<shown_object> all;
    ads_name at;
    for (int status = acdbEntNext(nullptr, at); status == RTNORM; status = acdbEntNext(at, at)) {
        shown_object object = read_object(at);
        if (object.type == "VERTEX" && !all.empty())
            add_vertex(all.back(), at);
        else if (object.type != "SEQEND")
            all.push_back(std::move(object));
    }
    std::string text;
    for (const shown_object& object : all)
        text += (text.empty() ? "" : "\n") + text_of(object);
    return text;
}

std::string messages_of(std::string_view printed)
{
    static constexpr std::string_view PROMPTS[] = {
        "Pick line or pline to extend: ",
        "Enter or pick distance to Draw (A,B,C,E,L,M,N,O,P,R,S,T,U,Help): ",
        "Select boundary edge: ",
        "Enter or pick distance to Move (A,B,D,E,L,N,O,P,R,S,T,U,Help): ",
        "Pick a line or pline to align to:",
        "Enter the total distance <",
        "Enter Angle (Qdd.mmss): ",
    };
    std::string text;
    std::istringstream lines{std::string(printed)};
    for (std::string line; std::getline(lines, line);) {
        const bool asked = std::any_of(std::begin(PROMPTS), std::end(PROMPTS),
                                       [&](std::string_view prompt) { return line.starts_with(prompt); });
        if (!line.empty() && !asked)
            text += (text.empty() ? "" : "|") + line;
    }
    return text;
}

void check_runs(std::span<const pointer_run> runs)
{
    for (const pointer_run& row : runs) {
        SCOPED_TRACE(row.name);
        pointer_session session(row.drawing);
        const std::string printed = session.run(row.answers);
        EXPECT_EQ(objects_text(), row.objects) << printed;
        EXPECT_EQ(messages_of(printed), row.messages) << printed;
    }
}
