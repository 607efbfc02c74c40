// R12 knows few kinds of objects, and of each a fixed set of groups; programs that read such files
// refuse what they don't know. So there is a table of kinds with their groups, and whatever isn't in
// it stays out. Two kinds that came later are turned into older ones: LWPOLYLINE and MTEXT.
#include "host/database/dxf_downgrade.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/core/text.h"
#include "host/database/dxf_upgrade.h"

namespace host::db
{

namespace
{

// Codes that every entity may have: type, handle, linetype, layer, thickness, colour, paper space, normal.
constexpr std::string_view COMMON = " 0 5 6 8 39 62 67 210 ";

struct kind_codes {
    const char *type, *codes;
};

constexpr kind_codes ENTITIES[] = {
    {"LINE", " 10 11 "},
    {"POINT", " 10 50 "},
    {"CIRCLE", " 10 40 "},
    {"ARC", " 10 40 50 51 "},
    {"TRACE", " 10 11 12 13 "},
    {"SOLID", " 10 11 12 13 "},
    {"3DFACE", " 10 11 12 13 70 "},
    {"TEXT", " 1 7 10 11 40 41 50 51 71 72 73 "},
    {"ATTRIB", " 1 2 7 10 11 40 41 50 51 70 71 72 73 74 "},
    {"ATTDEF", " 1 2 3 7 10 11 40 41 50 51 70 71 72 73 74 "},
    {"SHAPE", " 2 10 40 41 50 51 "},
    {"INSERT", " 2 10 41 42 43 44 45 50 66 70 71 "},
    {"POLYLINE", " 10 40 41 66 70 71 72 73 74 75 "},
    {"VERTEX", " 10 40 41 42 50 70 71 72 73 74 "},
    {"SEQEND", " "},
    {"VIEWPORT", " 10 40 41 68 69 "},
    {"DIMENSION", " 1 2 3 10 11 12 13 14 15 16 40 50 51 52 53 70 "},
    {"BLOCK", " 1 2 3 10 70 "},
    {"ENDBLK", " "},
};

constexpr kind_codes RECORDS[] = {
    {"LAYER", " 2 70 "},
    {"LTYPE", " 2 3 40 49 70 72 73 "},
    {"STYLE", " 2 3 4 40 41 42 50 70 71 "},
    {"VIEW", " 2 10 11 12 40 41 42 43 44 50 70 71 "},
    {"UCS", " 2 10 11 12 70 "},
    {"VPORT", " 2 10 11 12 13 14 15 16 17 40 41 42 43 44 45 50 51 70 71 72 73 74 75 76 77 78 "},
    {"APPID", " 2 70 "},
    {"DIMSTYLE", " 2 3 4 7 40 41 42 43 44 45 46 47 48 70 71 72 73 74 75 76 77 78 105 140 141 142 143 144 145 "
                 "146 147 170 171 172 173 174 175 176 177 178 "},
};

// Sorted, for a search by halves.
constexpr const char* VARIABLES[] = {
    "$ACADVER",    "$ANGBASE",     "$ANGDIR",     "$ATTDIA",    "$ATTMODE",     "$ATTREQ",    "$AUNITS",
    "$AUPREC",     "$AXISMODE",    "$AXISUNIT",   "$BLIPMODE",  "$CECOLOR",     "$CELTYPE",   "$CHAMFERA",
    "$CHAMFERB",   "$CLAYER",      "$COORDS",     "$DIMALT",    "$DIMALTD",     "$DIMALTF",   "$DIMAPOST",
    "$DIMASO",     "$DIMASZ",      "$DIMBLK",     "$DIMBLK1",   "$DIMBLK2",     "$DIMCEN",    "$DIMCLRD",
    "$DIMCLRE",    "$DIMCLRT",     "$DIMDLE",     "$DIMDLI",    "$DIMEXE",      "$DIMEXO",    "$DIMGAP",
    "$DIMLFAC",    "$DIMLIM",      "$DIMPOST",    "$DIMRND",    "$DIMSAH",      "$DIMSCALE",  "$DIMSE1",
    "$DIMSE2",     "$DIMSHO",      "$DIMSOXD",    "$DIMSTYLE",  "$DIMTAD",      "$DIMTFAC",   "$DIMTIH",
    "$DIMTIX",     "$DIMTM",       "$DIMTOFL",    "$DIMTOH",    "$DIMTOL",      "$DIMTP",     "$DIMTSZ",
    "$DIMTVP",     "$DIMTXT",      "$DIMZIN",     "$DRAGMODE",  "$DWGCODEPAGE", "$ELEVATION", "$EXTMAX",
    "$EXTMIN",     "$FASTZOOM",    "$FILLETRAD",  "$FILLMODE",  "$GRIDMODE",    "$GRIDUNIT",  "$HANDLING",
    "$HANDSEED",   "$INSBASE",     "$LIMCHECK",   "$LIMMAX",    "$LIMMIN",      "$LTSCALE",   "$LUNITS",
    "$LUPREC",     "$MAXACTVP",    "$MENU",       "$MIRRTEXT",  "$ORTHOMODE",   "$OSMODE",    "$PDMODE",
    "$PDSIZE",     "$PELEVATION",  "$PEXTMAX",    "$PEXTMIN",   "$PLIMCHECK",   "$PLIMMAX",   "$PLIMMIN",
    "$PLINEGEN",   "$PLINEWID",    "$PSLTSCALE",  "$PUCSNAME",  "$PUCSORG",     "$PUCSXDIR",  "$PUCSYDIR",
    "$QTEXTMODE",  "$REGENMODE",   "$SHADEDGE",   "$SHADEDIF",  "$SKETCHINC",   "$SKPOLY",    "$SNAPANG",
    "$SNAPBASE",   "$SNAPISOPAIR", "$SNAPMODE",   "$SNAPSTYLE", "$SNAPUNIT",    "$SPLFRAME",  "$SPLINESEGS",
    "$SPLINETYPE", "$SURFTAB1",    "$SURFTAB2",   "$SURFTYPE",  "$SURFU",       "$SURFV",     "$TDCREATE",
    "$TDINDWG",    "$TDUPDATE",    "$TDUSRTIMER", "$TEXTSIZE",  "$TEXTSTYLE",   "$THICKNESS", "$TILEMODE",
    "$TRACEWID",   "$TREEDEPTH",   "$UCSFOLLOW",  "$UCSICON",   "$UCSNAME",     "$UCSORG",    "$UCSXDIR",
    "$UCSYDIR",    "$UNITMODE",    "$USERI1",     "$USERI2",    "$USERI3",      "$USERI4",    "$USERI5",
    "$USERR1",     "$USERR2",      "$USERR3",     "$USERR4",    "$USERR5",      "$USRTIMER",  "$VIEWCTR",
    "$VIEWDIR",    "$VIEWSIZE",    "$VISRETAIN",  "$WORLDVIEW",
};

const char* codes_of(std::string_view type, auto& list)
{
    for (const kind_codes& each : list)
        if (type == each.type)
            return each.codes;
    return nullptr;
}

bool has_code(std::string_view codes, int code)
{
    return codes.find(' ' + std::to_string(code) + ' ') != codes.npos;
}

} // namespace

bool downgrader::has_table(std::string_view name)
{
    return codes_of(name, RECORDS) != nullptr;
}

bool downgrader::has_variable(std::string_view name)
{
    return std::binary_search(std::begin(VARIABLES), std::end(VARIABLES), name);
}

// The groups of an entity or record that R12 has too, extended data included.
group_list downgrader::reduced(const group_list& from) const
{
    const std::string_view type = db_.text(from.front().text);
    const char* own = codes_of(type, ENTITIES);
    if (!own)
        own = codes_of(type, RECORDS);
    group_list out;
    bool in_braces = false, in_embedded = false; // an object within the object has codes of its own
    for (const group& each : from) {
        if (each.code == 102)
            in_braces = !db_.text(each.text).starts_with('}');
        in_embedded = in_embedded || each.code == 101;
        const bool is_extended = each.code >= 1000;
        if (!is_extended && (in_braces || in_embedded || each.code == 102))
            continue;
        const bool is_known = has_code(COMMON, each.code) || (own && has_code(own, each.code));
        if (is_extended || is_known)
            out.push_back(each);
    }
    return out;
}

group_list downgrader::record(object_id id) const
{
    group_list out = reduced(db_.at(id).groups);
    if (!db_.is(id, "DIMSTYLE"))
        return out;
    // Arrow blocks go by name: 5, 6 and 7 for the general one, the first and the second.
    constexpr std::pair<int, int> ARROWS[] = {{342, 5}, {343, 6}, {344, 7}};
    for (const auto& [by_handle, by_name] : ARROWS) {
        const group* block = find(db_.at(id).groups, by_handle);
        const object_id named = block && block->kind == group_kind::handle ? db_.by_handle(block->handle) : 0;
        if (named && !find(out, by_name))
            out.push_back(db_.text_group(by_name, db_.text_of(db_.at(named).groups, 2)));
    }
    return out;
}

group_list downgrader::block_end(object_id id) const
{
    group_list out = reduced(db_.at(id).groups);
    for (group& each : out)
        if ((each.code == 2 || each.code == 3) && each.kind == group_kind::text)
            each.text = db_.intern(old_block_name(db_.text(each.text)));
    return out;
}

// A VERTEX, SEQEND or TEXT that goes with an entity: the same layer, colour, linetype and space.
group_list downgrader::companion(const group_list& from, const char* type)
{
    group_list out{db_.text_group(0, type), handle_group(5, next_handle_++)};
    for (const group& each : from)
        if (each.code == 6 || each.code == 8 || each.code == 62 || each.code == 67)
            out.push_back(each);
    return out;
}

std::vector<group_list> downgrader::polyline(object_id id)
{
    const group_list& from = db_.at(id).groups;
    const double elevation = real_of(from, 38, 0.0);
    const double width = real_of(from, 43, 0.0);
    std::vector<group_list> out;

    group_list head = reduced(from);
    head.front() = db_.text_group(0, "POLYLINE");
    const auto extended = std::find_if(head.begin(), head.end(), [](const group& g) { return g.code >= 1000; });
    head.insert(extended,
                {int_group(66, 1), point_group(10, 0, 0, elevation), int_group(70, int_of(from, 70, 0) & 129)});
    if (width != 0.0)
        head.insert(std::find_if(head.begin(), head.end(), [](const group& g) { return g.code >= 1000; }),
                    {real_group(40, width), real_group(41, width)});
    out.push_back(std::move(head));

    for (const group& each : from) {
        if (each.code == 10 && each.kind == group_kind::point) {
            group_list vertex = companion(from, "VERTEX");
            vertex.push_back(point_group(10, each.point[0], each.point[1], elevation));
            out.push_back(std::move(vertex));
        } else if (out.size() > 1 && each.code >= 40 && each.code <= 42 && each.real != 0.0) {
            out.back().push_back(each);
        }
    }
    out.push_back(companion(from, "SEQEND"));
    return out;
}

namespace
{

// Lines of an MTEXT without its formatting.
std::vector<std::string> plain_lines(std::string_view text)
{
    std::vector<std::string> lines(1);
    constexpr std::string_view WITH_VALUE = "ACFfHQTWp"; // run to the next semicolon
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '{' || c == '}')
            continue;
        if (c == '\n') {
            lines.emplace_back();
            continue;
        }
        if (c != '\\' || i + 1 == text.size()) {
            lines.back() += c;
            continue;
        }
        const char what = text[++i];
        const std::size_t stop = std::min(text.find(';', i), text.size());
        if (what == 'P') {
            lines.emplace_back();
        } else if (what == '~') {
            lines.back() += ' ';
        } else if (what == '\\' || what == '{' || what == '}') {
            lines.back() += what;
        } else if (what == 'U' || what == 'M') {
            lines.back() += '\\'; // a character by its number, as TEXT has it
            lines.back() += what;
        } else if (what == 'S') { // a stack: its parts side by side
            for (const char part : text.substr(i + 1, stop - i - 1))
                lines.back() += part == '^' || part == '#' ? '/' : part;
            i = stop;
        } else if (WITH_VALUE.find(what) != WITH_VALUE.npos) {
            i = stop;
        } // else on and off of lines over and under: nothing of the text
    }
    return lines;
}

} // namespace

std::vector<group_list> downgrader::text_lines(object_id id)
{
    const group_list& from = db_.at(id).groups;
    std::string whole;
    for (const group& each : from)
        if ((each.code == 3 || each.code == 1) && each.kind == group_kind::text)
            whole += db_.text(each.text);
    const std::vector<std::string> lines = plain_lines(whole);

    const group* place = find(from, 10);
    const group* along = find(from, 11);
    const double height = real_of(from, 40, 1.0);
    constexpr double LINE_STEP = 5.0 / 3.0; // of the height, base line to base line
    const double step = height * LINE_STEP * real_of(from, 44, 1.0);
    double angle = real_of(from, 50, 0.0);
    if (along && along->kind == group_kind::point)
        angle = std::atan2(along->point[1], along->point[0]);
    // Attachment 1 to 9: left, middle, right of the top, the middle, the bottom.
    const auto attachment = std::clamp<std::int64_t>(int_of(from, 71, 1), 1, 9) - 1;
    const double block = height + step * static_cast<double>(lines.size() - 1);
    const double first = attachment < 3 ? -height : attachment < 6 ? block / 2 - height : block - height;

    std::vector<group_list> out;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (trimmed(lines[i]).empty())
            continue;
        const double down = first - step * static_cast<double>(i);
        const double x = (place ? place->point[0] : 0.0) - down * std::sin(angle);
        const double y = (place ? place->point[1] : 0.0) + down * std::cos(angle);
        const double z = place && place->dimensions == 3 ? place->point[2] : 0.0;
        group_list line = companion(from, "TEXT");
        if (out.empty())
            line[1] = handle_group(5, db_.at(id).handle);
        line.push_back(point_group(10, x, y, z));
        line.push_back(real_group(40, height));
        line.push_back(db_.text_group(1, lines[i]));
        line.push_back(real_group(50, angle));
        if (const group* style = find(from, 7))
            line.push_back(*style);
        if (attachment % 3) {
            line.push_back(int_group(72, attachment % 3));
            line.push_back(point_group(11, x, y, z));
        }
        if (const group* normal = find(from, 210))
            line.push_back(*normal);
        out.push_back(std::move(line));
    }
    return out;
}

std::vector<group_list> downgrader::entity(object_id id)
{
    const std::string type(db_.type_of(id));
    if (type == "LWPOLYLINE")
        return polyline(id);
    if (type == "MTEXT")
        return text_lines(id);
    if (!codes_of(type, ENTITIES)) {
        ++lost_[type];
        return {};
    }
    std::vector<group_list> out{reduced(db_.at(id).groups)};
    if (type == "DIMENSION") {
        constexpr std::int64_t R12_FLAGS = 7 | 64 | 128;
        if (group* flags = find(out.front(), 70); flags && flags->kind == group_kind::integer)
            flags->integer &= R12_FLAGS;
    }
    for (object_id child = db_.at(id).first; child; child = db_.at(child).next)
        if (!db_.at(child).erased)
            for (group_list& each : entity(child))
                out.push_back(std::move(each));
    return out;
}

} // namespace host::db
