// What a new drawing holds: tables with their first records, the dictionaries, header variables.

#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/templates.h"

namespace host::db
{

namespace
{

// In the order in which files hold them.
constexpr const char* TABLES[] = {"VPORT", "LTYPE", "LAYER",    "STYLE",       "VIEW",
                                  "UCS",   "APPID", "DIMSTYLE", "BLOCK_RECORD"};

struct first_record {
    const char *table, *name;
};

constexpr first_record RECORDS[] = {
    {"VPORT", "*Active"}, {"LTYPE", "ByBlock"},  {"LTYPE", "ByLayer"}, {"LTYPE", "Continuous"},
    {"LAYER", "0"},       {"STYLE", "Standard"}, {"APPID", "ACAD"},    {"DIMSTYLE", "Standard"},
};

struct variable {
    const char *name, *value; // as in templates.h
};

constexpr variable HEADER[] = {
    {"$ACADVER", "1 AC1015"},
    {"$ACADMAINTVER", "70 6"},
    {"$DWGCODEPAGE", "3 ANSI_1252"},
    {"$INSBASE", "10 0,0,0"},
    {"$EXTMIN", "10 1e20,1e20,1e20"},
    {"$EXTMAX", "10 -1e20,-1e20,-1e20"},
    {"$LIMMIN", "10 0,0"},
    {"$LIMMAX", "10 12,9"},
    {"$ORTHOMODE", "70 0"},
    {"$REGENMODE", "70 1"},
    {"$FILLMODE", "70 1"},
    {"$QTEXTMODE", "70 0"},
    {"$MIRRTEXT", "70 1"},
    {"$LTSCALE", "40 1"},
    {"$ATTMODE", "70 1"},
    {"$TEXTSIZE", "40 0.2"},
    {"$TRACEWID", "40 0.05"},
    {"$TEXTSTYLE", "7 Standard"},
    {"$CLAYER", "8 0"},
    {"$CELTYPE", "6 ByLayer"},
    {"$CECOLOR", "62 256"},
    {"$CELTSCALE", "40 1"},
    {"$DISPSILH", "70 0"},
    {"$DIMSCALE", "40 1"},
    {"$DIMASZ", "40 0.18"},
    {"$DIMEXO", "40 0.0625"},
    {"$DIMDLI", "40 0.38"},
    {"$DIMRND", "40 0"},
    {"$DIMDLE", "40 0"},
    {"$DIMEXE", "40 0.18"},
    {"$DIMTP", "40 0"},
    {"$DIMTM", "40 0"},
    {"$DIMTXT", "40 0.18"},
    {"$DIMCEN", "40 0.09"},
    {"$DIMTSZ", "40 0"},
    {"$DIMTOL", "70 0"},
    {"$DIMLIM", "70 0"},
    {"$DIMTIH", "70 1"},
    {"$DIMTOH", "70 1"},
    {"$DIMSE1", "70 0"},
    {"$DIMSE2", "70 0"},
    {"$DIMTAD", "70 0"},
    {"$DIMZIN", "70 0"},
    {"$DIMBLK", "1 "},
    {"$DIMASO", "70 1"},
    {"$DIMSHO", "70 1"},
    {"$DIMPOST", "1 "},
    {"$DIMAPOST", "1 "},
    {"$DIMALT", "70 0"},
    {"$DIMALTD", "70 2"},
    {"$DIMALTF", "40 25.4"},
    {"$DIMLFAC", "40 1"},
    {"$DIMTOFL", "70 0"},
    {"$DIMTVP", "40 0"},
    {"$DIMTIX", "70 0"},
    {"$DIMSOXD", "70 0"},
    {"$DIMSAH", "70 0"},
    {"$DIMBLK1", "1 "},
    {"$DIMBLK2", "1 "},
    {"$DIMSTYLE", "2 Standard"},
    {"$DIMCLRD", "70 0"},
    {"$DIMCLRE", "70 0"},
    {"$DIMCLRT", "70 0"},
    {"$DIMTFAC", "40 1"},
    {"$DIMGAP", "40 0.09"},
    {"$DIMJUST", "70 0"},
    {"$DIMSD1", "70 0"},
    {"$DIMSD2", "70 0"},
    {"$DIMTOLJ", "70 1"},
    {"$DIMTZIN", "70 0"},
    {"$DIMALTZ", "70 0"},
    {"$DIMALTTZ", "70 0"},
    {"$DIMUPT", "70 0"},
    {"$DIMDEC", "70 4"},
    {"$DIMTDEC", "70 4"},
    {"$DIMALTU", "70 2"},
    {"$DIMALTTD", "70 2"},
    {"$DIMTXSTY", "7 Standard"},
    {"$DIMAUNIT", "70 0"},
    {"$DIMADEC", "70 0"},
    {"$DIMALTRND", "40 0"},
    {"$DIMAZIN", "70 0"},
    {"$DIMDSEP", "70 46"},
    {"$DIMATFIT", "70 3"},
    {"$DIMFRAC", "70 0"},
    {"$DIMLDRBLK", "1 "},
    {"$DIMLUNIT", "70 2"},
    {"$DIMLWD", "70 -2"},
    {"$DIMLWE", "70 -2"},
    {"$DIMTMOVE", "70 0"},
    {"$LUNITS", "70 2"},
    {"$LUPREC", "70 4"},
    {"$SKETCHINC", "40 0.1"},
    {"$FILLETRAD", "40 0.5"},
    {"$AUNITS", "70 0"},
    {"$AUPREC", "70 0"},
    {"$MENU", "1 ."},
    {"$ELEVATION", "40 0"},
    {"$PELEVATION", "40 0"},
    {"$THICKNESS", "40 0"},
    {"$LIMCHECK", "70 0"},
    {"$CHAMFERA", "40 0.5"},
    {"$CHAMFERB", "40 0.5"},
    {"$CHAMFERC", "40 1"},
    {"$CHAMFERD", "40 0"},
    {"$SKPOLY", "70 0"},
    {"$USRTIMER", "70 1"},
    {"$ANGBASE", "50 0"},
    {"$ANGDIR", "70 0"},
    {"$PDMODE", "70 0"},
    {"$PDSIZE", "40 0"},
    {"$PLINEWID", "40 0"},
    {"$SPLFRAME", "70 0"},
    {"$SPLINETYPE", "70 6"},
    {"$SPLINESEGS", "70 8"},
    {"$HANDSEED", "5 0"},
    {"$SURFTAB1", "70 6"},
    {"$SURFTAB2", "70 6"},
    {"$SURFTYPE", "70 6"},
    {"$SURFU", "70 6"},
    {"$SURFV", "70 6"},
    {"$UCSBASE", "2 "},
    {"$UCSNAME", "2 "},
    {"$UCSORG", "10 0,0,0"},
    {"$UCSXDIR", "10 1,0,0"},
    {"$UCSYDIR", "10 0,1,0"},
    {"$PUCSBASE", "2 "},
    {"$PUCSNAME", "2 "},
    {"$PUCSORG", "10 0,0,0"},
    {"$PUCSXDIR", "10 1,0,0"},
    {"$PUCSYDIR", "10 0,1,0"},
    {"$USERI1", "70 0"},
    {"$USERI2", "70 0"},
    {"$USERI3", "70 0"},
    {"$USERI4", "70 0"},
    {"$USERI5", "70 0"},
    {"$USERR1", "40 0"},
    {"$USERR2", "40 0"},
    {"$USERR3", "40 0"},
    {"$USERR4", "40 0"},
    {"$USERR5", "40 0"},
    {"$WORLDVIEW", "70 1"},
    {"$SHADEDGE", "70 3"},
    {"$SHADEDIF", "70 70"},
    {"$TILEMODE", "70 1"},
    {"$MAXACTVP", "70 64"},
    {"$PINSBASE", "10 0,0,0"},
    {"$PLIMCHECK", "70 0"},
    {"$PEXTMIN", "10 1e20,1e20,1e20"},
    {"$PEXTMAX", "10 -1e20,-1e20,-1e20"},
    {"$PLIMMIN", "10 0,0"},
    {"$PLIMMAX", "10 12,9"},
    {"$UNITMODE", "70 0"},
    {"$VISRETAIN", "70 1"},
    {"$PLINEGEN", "70 0"},
    {"$PSLTSCALE", "70 1"},
    {"$TREEDEPTH", "70 3020"},
    {"$CMLSTYLE", "2 Standard"},
    {"$CMLJUST", "70 0"},
    {"$CMLSCALE", "40 1"},
    {"$PROXYGRAPHICS", "70 1"},
    {"$MEASUREMENT", "70 0"},
    {"$CELWEIGHT", "370 -1"},
    {"$ENDCAPS", "280 0"},
    {"$JOINSTYLE", "280 0"},
    {"$LWDISPLAY", "290 0"},
    {"$INSUNITS", "70 1"},
    {"$HYPERLINKBASE", "1 "},
    {"$STYLESHEET", "1 "},
    {"$XEDIT", "290 1"},
    {"$CEPSNTYPE", "380 0"},
    {"$PSTYLEMODE", "290 1"},
    {"$EXTNAMES", "290 1"},
    {"$PSVPSCALE", "40 0"},
    {"$OLESTARTUP", "290 0"},
};

// An entry of a dictionary: the key and the object, which is owned by it.
void add_entry(database& db, object_id dictionary, std::string_view key, object_id entry)
{
    const std::uint64_t handle = db.at(entry).handle;
    group_list& groups = db.modify(dictionary);
    groups.push_back(db.text_group(3, key));
    groups.push_back(handle_group(350, handle));
}

object_id add_object(database& db, object_id owner, std::string_view text, std::string_view name = {})
{
    group_list groups;
    add_groups(db, groups, text, name);
    *find(groups, 330) = handle_group(330, owner ? db.at(owner).handle : 0);
    return db.append(0, object_class::object, std::move(groups));
}

constexpr const char* DICTIONARY = "0 DICTIONARY;5 0;330 0;100 AcDbDictionary;281 1";

constexpr const char* LAYOUT_HEAD =
    "0 LAYOUT;5 0;330 0;100 AcDbPlotSettings;1 ;2 none_device;4 ;6 ;40 0;41 0;42 0;"
    "43 0;44 0;45 0;46 0;47 0;48 0;49 0;140 0;141 0;142 1;143 1";
constexpr const char* LAYOUT_TAIL = "72 0;73 0;74 5;7 ;75 16;147 1;148 0;149 0;100 AcDbLayout;1 @";
constexpr const char* LAYOUT_FRAME =
    "10 0,0;11 12,9;12 0,0,0;14 1e20,1e20,1e20;15 -1e20,-1e20,-1e20;146 0;13 0,0,0;"
    "16 1,0,0;17 0,1,0;76 0;330 0";

void add_layout(database& db, object_id layouts, std::string_view name, std::string_view space, int tab)
{
    const object_id record = db.record("BLOCK_RECORD", space);
    const bool is_model = tab == 0;
    group_list groups;
    add_groups(db, groups, LAYOUT_HEAD);
    groups.push_back(int_group(70, is_model ? 1712 : 688));
    add_groups(db, groups, LAYOUT_TAIL, name);
    groups.push_back(int_group(70, 1));
    groups.push_back(int_group(71, tab));
    add_groups(db, groups, LAYOUT_FRAME);
    *find(groups, 330) = handle_group(330, db.at(layouts).handle);
    groups.back() = handle_group(330, db.at(record).handle);
    const object_id made = db.append(0, object_class::object, std::move(groups));
    add_entry(db, layouts, name, made);
    group_list& of_record = db.modify(record);
    if (group* back = find(of_record, 340))
        back->handle = db.at(made).handle;
}

constexpr const char* LINE_STYLE =
    "0 MLINESTYLE;5 0;330 0;100 AcDbMlineStyle;2 @;70 0;3 ;62 256;"
    "51 1.5707963267948966;52 1.5707963267948966;71 2;49 0.5;62 256;6 BYLAYER;49 -0.5;"
    "62 256;6 BYLAYER";

void add_dictionaries(database& db)
{
    const object_id root = add_object(db, 0, DICTIONARY);
    const object_id groups = add_object(db, root, DICTIONARY);
    const object_id layouts = add_object(db, root, DICTIONARY);
    const object_id styles = add_object(db, root, DICTIONARY);
    add_entry(db, root, "ACAD_GROUP", groups);
    add_entry(db, root, "ACAD_LAYOUT", layouts);
    add_entry(db, root, "ACAD_MLINESTYLE", styles);
    add_entry(db, styles, "Standard", add_object(db, styles, LINE_STYLE, "STANDARD"));
    add_layout(db, layouts, "Layout1", "*Paper_Space", 1);
    add_layout(db, layouts, "Model", "*Model_Space", 0);
}

} // namespace

void complete_drawing(database& db)
{
    for (const char* name : TABLES) {
        if (db.table(name))
            continue;
        group_list groups;
        add_groups(db, groups, "0 TABLE;2 @;5 0;330 0;100 AcDbSymbolTable;70 0", name);
        db.append(0, object_class::table, std::move(groups));
    }
    for (const first_record& each : RECORDS)
        if (!db.record(each.table, each.name))
            add_record(db, each.table, each.name);
    for (const char* space : {"*Model_Space", "*Paper_Space"})
        if (!db.record("BLOCK_RECORD", space))
            add_block(db, space);
    if (!db.root_dictionary())
        add_dictionaries(db);
    for (const variable& each : HEADER) {
        if (db.header_value(each.name))
            continue;
        group_list groups;
        add_groups(db, groups, each.value);
        db.header.emplace_back(each.name, std::move(groups));
    }
}

} // namespace host::db
