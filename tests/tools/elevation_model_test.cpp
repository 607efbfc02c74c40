// cf:chgpnts on a drawing of all kinds of objects, against a plain reckoning of every height and text.
#include <cmath>
#include <cstdio>
#include <map>
#include <random>
#include <vector>

#include "tests/tools/annotation_case.h"

namespace
{

constexpr int OBJECT_COUNT = 400;
constexpr double SPACING = 10.0; // along x, from object to object; an object is less wide

// What is looked at of one entity, or of one part of it.
struct part_seen {
    std::string type, name, text; // group 0, 2, 1
    std::vector<double> heights;  // of groups 10 to 13 in their order, or group 38 alone
    int flags = 0;                // group 70
};
using object_seen = std::vector<part_seen>;      // the entity, then its parts
using drawing_seen = std::map<int, object_seen>; // by place along x

const resbuf* node_of(const resbuf* list, int code)
{
    while (list && list->restype != code)
        list = list->rbnext;
    return list;
}

std::string text_of_group(const resbuf* list, int code)
{
    const resbuf* node = node_of(list, code);
    return node ? node->resval.rstring : "";
}

part_seen part_of(const resbuf* list)
{
    part_seen part{text_of_group(list, 0), text_of_group(list, 2), text_of_group(list, 1), {}, 0};
    if (const resbuf* flags = node_of(list, 70))
        part.flags = flags->resval.rint;
    if (part.type == "LWPOLYLINE") {
        part.heights.push_back(node_of(list, 38)->resval.rreal);
        return part;
    }
    for (const resbuf* node = list; node; node = node->rbnext)
        if (node->restype >= 10 && node->restype <= 13)
            part.heights.push_back(node->resval.rpoint[2]);
    return part;
}

// The whole drawing. A polyline's own group 10 has no x: its place is that of its vertices.
drawing_seen drawing_now()
{
    drawing_seen drawing;
    object_seen waiting;
    ads_name at;
    for (int status = acdbEntNext(nullptr, at); status == RTNORM; status = acdbEntNext(at, at)) {
        resbuf* list = acdbEntGet(at);
        const part_seen part = part_of(list);
        const resbuf* place = node_of(list, 10);
        const int key = place ? static_cast<int>(place->resval.rpoint[0] / SPACING) : 0;
        if (part.type == "POLYLINE") {
            waiting = {part};
        } else if (part.type == "VERTEX" && !waiting.empty()) {
            waiting.push_back(part);
            drawing[key] = std::move(waiting);
            waiting.clear();
        } else if (part.type != "SEQEND") {
            drawing[key].push_back(part);
        }
        acutRelRb(list);
    }
    return drawing;
}

// ---- the drawing ---------------------------------------------------------------------------------------

class random_drawing
{
public:
    explicit random_drawing(unsigned seed) : random_(seed) {}
    std::string object(int place)
    {
        x_ = place * SPACING + 5.0; // centred texts begin to the left of it
        switch (whole(12)) {
        case 0:
            return block("PINE");
        case 1:
        case 2:
            return block("SRVPN" + std::to_string(1 + whole(2)));
        case 3:
            return make("(0 . \"POINT\")" + point(10, 0));
        case 4:
            return make("(0 . \"TEXT\")" + point(10, 0) + "(40 . 1.0) (1 . \"A\") (72 . 1)" + point(11, 1));
        case 5:
            return make("(0 . \"CIRCLE\")" + point(10, 0) + "(40 . 1.0)");
        case 6:
            return make("(0 . \"ARC\")" + point(10, 0) + "(40 . 1.0) (50 . 0.0) (51 . 1.0)");
        case 7:
            return make("(0 . \"3DFACE\")" + point(10, 0) + point(11, 1) + point(12, 2) + point(13, 3));
        case 8:
            return make(
                "(0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (8 . \"0\") (100 . \"AcDbPolyline\") (90 . 3) "
                "(70 . 0) (38 . " +
                height() + ") " + plain(0) + plain(1) + plain(2));
        case 9:
            return chain(0);
        case 10:
            return chain(8);
        default:
            return make("(0 . \"LINE\")" + point(10, 0) + point(11, 5));
        }
    }

private:
    int whole(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
    // A third of all heights is 0; the others have three decimals.
    std::string height()
    {
        const int number = whole(3) == 0 ? 0 : whole(200000) - 100000;
        char text[32];
        std::snprintf(text, sizeof text, "%.3f", number / 1000.0);
        return text;
    }
    std::string plain(int dx) const { return "(10 " + std::to_string(x_ + dx) + " 0.0) "; }
    std::string point_at(int code, int dx, const std::string& z) const
    {
        return " (" + std::to_string(code) + " " + std::to_string(x_ + dx) + " 2.0 " + z + ") ";
    }
    std::string point(int code, int dx) { return point_at(code, dx, height()); }
    static std::string make(const std::string& groups) { return "(entmake '(" + groups + "))\n"; }

    std::string block(const std::string& name)
    {
        const int parts = whole(4);
        std::string forms =
            make("(0 . \"INSERT\") (2 . \"" + name + "\") (66 . " + (parts ? "1" : "0") + ")" + point(10, 0));
        const char* const TAGS[] = {"PNT", "ELEV2", "DESC", "EL", "E"};
        const char* const TEXTS[] = {"", "n/a", "12 m", "+4.125"};
        for (int i = 0; i < parts; ++i) {
            const std::string text = whole(4) == 0 ? TEXTS[whole(4)] : height();
            forms += make("(0 . \"ATTRIB\")" + point(10, 1) + "(40 . 1.0) (1 . \"" + text + "\") (2 . \"" +
                          TAGS[whole(5)] + "\") (70 . 0) (72 . 1)" + point(11, 2));
        }
        return parts ? forms + make("(0 . \"SEQEND\")") : forms;
    }
    std::string chain(int flags)
    {
        const std::string flat = height();
        std::string forms = make("(0 . \"POLYLINE\") (66 . 1) (70 . " + std::to_string(flags) +
                                 ") (10 0.0 0.0 " + (flags ? "0.0" : flat) + ")");
        for (int i = 0; i < 2 + whole(4); ++i)
            forms += make("(0 . \"VERTEX\") (70 . " + std::string(flags ? "32" : "0") + ")" +
                          point_at(10, i, flags ? height() : flat));
        return forms + make("(0 . \"SEQEND\")");
    }

    std::mt19937 random_;
    double x_ = 0.0;
};

// ---- the reckoning ---------------------------------------------------------------------------------------

struct change {
    const char* name;
    char mode;
    double value;
    bool ignore;
    const char* answers;
};

struct counts {
    int points = 0, polylines = 0, others = 0;
};

double reckoned(const change& c, double z)
{
    if (c.mode == 'A')
        return c.value;
    return c.mode == 'D' ? z + c.value : z * c.value;
}

bool stays(const change& c, double z)
{
    return c.ignore && std::fpclassify(z) == FP_ZERO;
}

void reckon_block(const change& c, int decimals, object_seen& object, counts& n)
{
    if (c.mode == 'S' || stays(c, object[0].heights[0]))
        return;
    object[0].heights[0] = reckoned(c, object[0].heights[0]);
    if (object[0].name.substr(0, 5) != "SRVPN") {
        ++n.others;
        return;
    }
    for (std::size_t i = 1; i < object.size(); ++i) {
        part_seen& part = object[i];
        part.heights[0] = part.heights[1] = reckoned(c, part.heights[0]);
        if (part.name.substr(0, 2) != "EL")
            continue;
        ++n.points;
        double told = 0.0;
        std::sscanf(part.text.c_str(), "%lf", &told);
        char text[64];
        std::snprintf(text, sizeof text, "%.*f", decimals, reckoned(c, told));
        part.text = text;
    }
}

void reckon(const change& c, int decimals, object_seen& object, counts& n)
{
    part_seen& first = object[0];
    if (first.type == "INSERT") {
        reckon_block(c, decimals, object, n);
    } else if (first.type == "POLYLINE" && first.flags & 8) {
        for (std::size_t i = 1; i < object.size(); ++i)
            if (!stays(c, object[i].heights[0]))
                object[i].heights[0] = reckoned(c, object[i].heights[0]);
        ++n.polylines;
    } else if (first.type == "POLYLINE" || first.type == "LWPOLYLINE") {
        const double z = object.back().heights[0];
        if (stays(c, z))
            return;
        const double moved = z + (reckoned(c, z) - z);
        for (part_seen& part : object)
            part.heights[0] = moved;
        ++n.polylines;
    } else {
        if (first.type == "LINE" && stays(c, first.heights[0]))
            return;
        bool is_changed = false;
        for (std::size_t i = 0; i < first.heights.size() && i < 2; ++i) { // 12 and 13 stay
            double& z = first.heights[i];
            if (!stays(c, z)) {
                z = reckoned(c, z);
                is_changed = true;
            }
        }
        n.others += is_changed;
    }
}

class ElevationModel : public Annotation, public testing::WithParamInterface<change>
{
};

std::string summary_of(const counts& n)
{
    std::string text = "\rTested " + std::to_string(OBJECT_COUNT) + " Entities\n";
    if (n.polylines)
        text += "\nPolyLine Entities Changed> " + std::to_string(n.polylines);
    if (n.others)
        text += "\nOther Entities Changed>    " + std::to_string(n.others);
    if (n.points)
        text += "\nZentrik Points Changed>   " + std::to_string(n.points);
    return text;
}

void expect_same(const drawing_seen& seen, const drawing_seen& expected)
{
    ASSERT_EQ(seen.size(), expected.size());
    for (const auto& [place, object] : expected) {
        const object_seen& there = seen.at(place);
        ASSERT_EQ(there.size(), object.size()) << place;
        for (std::size_t i = 0; i < object.size(); ++i) {
            EXPECT_EQ(there[i].type, object[i].type) << place;
            EXPECT_EQ(there[i].heights, object[i].heights) << place << " " << object[0].type << " part " << i;
            EXPECT_EQ(there[i].text, object[i].text) << place << " " << object[0].type << " part " << i;
        }
    }
}

// Again and again on what the time before has left.
TEST_P(ElevationModel, EveryHeightAndTextIsAsReckoned)
{
    const change& c = GetParam();
    for (const unsigned seed : {1u, 2u, 3u}) {
        const int decimals = static_cast<int>(seed) + 2;
        erase_all();
        session.lisp("(foreach name '(\"SRVPN1\" \"SRVPN2\" \"PINE\") (if (not (tblsearch \"BLOCK\" name)) "
                     "(progn (entmake "
                     "(list '(0 . \"BLOCK\") (cons 2 name) '(70 . 2) '(10 0.0 0.0 0.0))) (entmake '((0 . "
                     "\"ENDBLK\"))))))");
        set("LUPREC", std::to_string(decimals));
        set("DIMZIN", "0");
        random_drawing random(seed);
        std::string forms;
        for (int place = 0; place < OBJECT_COUNT; ++place)
            forms += random.object(place);
        session.lisp(forms);
        drawing_seen expected = drawing_now();
        ASSERT_EQ(expected.size(), static_cast<std::size_t>(OBJECT_COUNT));
        for (int time = 1; time <= 2; ++time) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", time " + std::to_string(time));
            counts n;
            for (auto& [place, object] : expected)
                reckon(c, decimals, object, n);
            const state before = held();
            const std::string told = run("(cf:chgpnts)", std::string(c.answers) + "all\n\n");
            EXPECT_EQ(told.substr(told.find("\rTested")), summary_of(n));
            EXPECT_EQ(held(), before);
            expect_same(drawing_now(), expected);
        }
    }
}

const change CHANGES[] = {
    {"Absolute", 'A', 104.25, true, "Yes\nAbsolute\n104.25\n"},
    {"AbsoluteWithZeros", 'A', -7.5, false, "No\nAbsolute\n-7.5\n"},
    {"AbsoluteZero", 'A', 0.0, true, "Yes\nAbsolute\n0\n"},
    {"Differential", 'D', 12.375, true, "Yes\nDifferential\n12.375\n"},
    {"DifferentialWithZeros", 'D', -0.625, false, "No\nDifferential\n-0.625\n"},
    {"Scale", 'S', 0.3048, true, "Yes\nDifferential\nScale\n0.3048\n"},
    {"ScaleWithZeros", 'S', -2.5, false, "No\nDifferential\nScale\n-2.5\n"},
};

INSTANTIATE_TEST_SUITE_P(Changes, ElevationModel, testing::ValuesIn(CHANGES),
                         [](const testing::TestParamInfo<change>& row) { return std::string(row.param.name); });

} // namespace
