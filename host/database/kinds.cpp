// The table of entity kinds. One row a kind (or a variant of it); its text is cut into items once.
#include "host/database/kinds.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "host/database/templates.h"

namespace host::db
{

namespace
{

// "10!" is required, "39?" may be there, "50=0" has a value when missing; what starts with a letter is a
// marker. '*' in front: the order of the groups means something.
struct row {
    const char *type, *items;
};

#define DIMENSION_PART "AcDbDimension 2= 10! 11? 70=0 1= 71? 72? 41? 42? 53? 54? 51? 210=0,0,1 3=Standard "
#define TEXT_PART "AcDbText 39? 10! 40! 1= 50=0 41=1 51=0 7=Standard 71=0 72=0 11=0,0,0 210=0,0,1 "
#define POLYLINE_PART "66=1 39? 10=0,0,0 70=0 40=0 41=0 210=0,0,1 71=0 72=0 73=0 74=0 75=0"
#define INSERT_PART "66? 2! 10! 41=1 42=1 43=1 50=0 70=0 71=0 44=0 45=0 210=0,0,1"

constexpr row ROWS[] = {
    {"LINE", "AcDbLine 39? 10! 11! 210=0,0,1"},
    {"POINT", "AcDbPoint 39? 10! 210=0,0,1 50=0"},
    {"CIRCLE", "AcDbCircle 39? 10! 40! 210=0,0,1"},
    {"ARC", "AcDbCircle 39? 10! 40! 210=0,0,1 AcDbArc 50! 51!"},
    {"ELLIPSE", "AcDbEllipse 10! 11! 210=0,0,1 40! 41=0 42=6.283185307179586"},
    {"TEXT", "AcDbText 39? 10! 40! 1! 50=0 41=1 51=0 7=Standard 71=0 72=0 11=0,0,0 210=0,0,1 AcDbText 73=0"},
    {"ATTRIB", TEXT_PART "AcDbAttribute 2! 70=0 73=0 74=0"},
    {"ATTDEF", TEXT_PART "AcDbAttributeDefinition 3= 2! 70=0 73=0 74=0"},
    {"MTEXT", "AcDbMText 10! 40=0.2 41? 46? 71=1 72=5 3? 1! 7=Standard 210=0,0,1 11? 42? 43? 50=0 73=1 44=1"},
    {"INSERT", "AcDbBlockReference " INSERT_PART},
    {"INSERT/M", "AcDbMInsertBlock " INSERT_PART},
    {"SOLID", "AcDbTrace 39? 10! 11! 12! 13? 210=0,0,1"},
    {"TRACE", "AcDbTrace 39? 10! 11! 12! 13? 210=0,0,1"},
    {"3DFACE", "AcDbFace 10! 11! 12! 13? 70=0"},
    {"POLYLINE", "AcDb2dPolyline " POLYLINE_PART},
    {"POLYLINE/3", "AcDb3dPolyline 66=1 10=0,0,0 70=8 40? 41? 210=0,0,1 71=0 72=0 73=0 74=0 75=0"},
    {"POLYLINE/M", "AcDbPolygonMesh " POLYLINE_PART},
    {"POLYLINE/F", "AcDbPolyFaceMesh " POLYLINE_PART},
    {"VERTEX", "AcDbVertex AcDb2dVertex 10! 40=0 41=0 42=0 70=0 50=0 71? 72? 73? 74?"},
    {"VERTEX/3", "AcDbVertex AcDb3dPolylineVertex 10! 40? 41? 42? 70=32 50? 71? 72? 73? 74?"},
    {"VERTEX/M", "AcDbVertex AcDbPolygonMeshVertex 10! 40? 41? 42? 70=64 50? 71? 72? 73? 74?"},
    {"VERTEX/F", "AcDbVertex AcDbPolyFaceMeshVertex 10! 40? 41? 42? 70=192 50? 71? 72? 73? 74?"},
    {"VERTEX/R", "AcDbFaceRecord 10=0,0,0 40? 41? 42? 70=128 50? 71=0 72=0 73=0 74=0"},
    {"SEQEND", ""},
    {"RAY", "AcDbRay 10! 11!"},
    {"XLINE", "AcDbXline 10! 11!"},
    {"SHAPE", "AcDbShape 39? 10! 40! 2! 50=0 41=1 51=0 210=0,0,1"},
    {"BLOCK", "AcDbBlockBegin 2! 70=0 10=0,0,0 3? 1="},
    {"ENDBLK", "AcDbBlockEnd"},
    {"DIMENSION/0", DIMENSION_PART "AcDbAlignedDimension 12? 13! 14! 50? 52? AcDbRotatedDimension"},
    {"DIMENSION/1", DIMENSION_PART "AcDbAlignedDimension 12? 13! 14! 50? 52?"},
    {"DIMENSION/2", DIMENSION_PART "AcDb2LineAngularDimension 13! 14! 15! 16!"},
    {"DIMENSION/3", DIMENSION_PART "AcDbDiametricDimension 15! 40?"},
    {"DIMENSION/4", DIMENSION_PART "AcDbRadialDimension 15! 40?"},
    {"DIMENSION/5", DIMENSION_PART "AcDb3PointAngularDimension 13! 14! 15! 16?"},
    {"DIMENSION/6", DIMENSION_PART "AcDbOrdinateDimension 13! 14!"},
    {"VIEWPORT", "AcDbViewport 10! 40! 41! 68? 69?"},
    {"LWPOLYLINE", "*AcDbPolyline 10!"},
    {"SPLINE", "*AcDbSpline 71!"},
    {"HATCH", "*AcDbHatch 2! 91!"},
    {"LEADER", "*AcDbLeader 10!"},
    {"TOLERANCE", "*AcDbFcf 3=Standard 10! 1= 11=1,0,0"},
    {"MLINE", "*AcDbMline 10! 11!"},
    {"IMAGE", "*AcDbRasterImage 10! 11! 12! 340!"},
    {"WIPEOUT", "*AcDbWipeout 10! 11! 12!"},
    {"3DSOLID", "*AcDbModelerGeometry 1!"},
    {"REGION", "*AcDbModelerGeometry 1!"},
    {"BODY", "*AcDbModelerGeometry 1!"},
};

kind_item item_of(std::string_view text)
{
    using need = kind_item::need;
    const std::size_t end = std::min(text.find_first_of("!?="), text.size());
    int code = 0;
    const auto read = std::from_chars(text.data(), text.data() + end, code);
    if (end == text.size() || read.ptr != text.data() + end)
        return {need::marker, 100, text};
    const need how = text[end] == '!' ? need::required : text[end] == '?' ? need::optional : need::standard;
    return {how, static_cast<std::int16_t>(code), text.substr(end + 1)};
}

const std::map<std::string_view, entity_kind>& kinds()
{
    static const auto all = [] {
        std::map<std::string_view, entity_kind> made;
        for (const row& each : ROWS) {
            entity_kind& kind = made[each.type];
            kind.type = each.type;
            std::string_view rest = each.items;
            if (rest.starts_with('*')) {
                kind.keeps_order = true;
                rest.remove_prefix(1);
            }
            while (!rest.empty()) {
                const std::size_t end = std::min(rest.find(' '), rest.size());
                if (end)
                    kind.items.push_back(item_of(rest.substr(0, end)));
                rest.remove_prefix(std::min(end + 1, rest.size()));
            }
        }
        return made;
    }();
    return all;
}

std::string_view variant_of(std::string_view type, const group_list& groups)
{
    const std::int64_t flags = int_of(groups, 70, 0);
    if (type == "POLYLINE")
        return flags & 8 ? "POLYLINE/3" : flags & 16 ? "POLYLINE/M" : flags & 64 ? "POLYLINE/F" : type;
    if (type == "VERTEX") {
        if (flags & 128)
            return flags & 64 ? "VERTEX/F" : "VERTEX/R";
        return flags & 32 ? "VERTEX/3" : flags & 64 ? "VERTEX/M" : type;
    }
    if (type == "INSERT")
        return flags > 1 || int_of(groups, 71, 0) > 1 ? "INSERT/M" : type;
    if (type == "DIMENSION") {
        static constexpr std::string_view BY_TYPE[] = {"DIMENSION/0", "DIMENSION/1", "DIMENSION/2",
                                                       "DIMENSION/3", "DIMENSION/4", "DIMENSION/5",
                                                       "DIMENSION/6"};
        return (flags & 7) < 7 ? BY_TYPE[flags & 7] : BY_TYPE[0];
    }
    return type;
}

} // namespace

const entity_kind* kind_of(const database& db, const group_list& groups)
{
    const auto found = kinds().find(variant_of(db.text_of(groups, 0), groups));
    return found == kinds().end() ? nullptr : &found->second;
}

bool lacks_standard_groups(const group_list& groups, const entity_kind& kind)
{
    if (kind.type == "LWPOLYLINE") {
        // Files leave out widths and bulges that are 0; each vertex has all three.
        const auto count = [&](int code) {
            return std::count_if(groups.begin(), groups.end(),
                                 [code](const group& each) { return each.code == code; });
        };
        const auto vertices = count(10);
        return count(40) != vertices || count(41) != vertices || count(42) != vertices;
    }
    return std::any_of(kind.items.begin(), kind.items.end(), [&](const kind_item& item) {
        return item.how == kind_item::need::standard && !find(groups, item.code);
    });
}

std::optional<group> standard_group(const database& db, const group_list& groups, int code)
{
    const entity_kind* kind = kind_of(db, groups);
    if (!kind)
        return std::nullopt;
    for (const kind_item& item : kind->items) {
        if (item.how != kind_item::need::standard || item.code != code)
            continue;
        group_list made;
        add_groups(db, made, std::to_string(code) + ' ' + std::string(item.value));
        return made.front();
    }
    return std::nullopt;
}

bool is_common_code(int code)
{
    switch (code) {
    case 67:
    case 410:
    case 8:
    case 62:
    case 6:
    case 48:
    case 60:
    case 370:
    case 390:
    case 420:
    case 430:
    case 440:
    case 284:
    case 347:
        return true;
    default:
        return false;
    }
}

} // namespace host::db
