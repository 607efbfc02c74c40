// sysvars_table.cpp: what variables there are.
#include <limits>

#include "host/database/sysvars_table.h"

namespace host::db
{

namespace
{

using form = variable_form;
using getter = list_ptr (*)(document& doc);
using setter = set_result (*)(document& doc, const resbuf& value);

// Bounds of real numbers.
constexpr double GREATEST = std::numeric_limits<double>::max();
constexpr double ABOVE_ZERO = std::numeric_limits<double>::min();

constexpr variable_row worked_out(std::string_view name, form what, getter get)
{
    return {name, what, variable_home::worked_out, true, 0, 0, 0, "", get};
}
constexpr variable_row worked_out(std::string_view name, form what, getter get, setter set)
{
    return {name, what, variable_home::worked_out, false, 0, 0, 0, "", get, set};
}
constexpr variable_row in_header(std::string_view name, form what, int group, std::string_view initial)
{
    return {name, what, variable_home::header, false, group, 0, 0, initial};
}
constexpr variable_row in_header(std::string_view name, int low, int high, std::string_view initial,
                                 int group = 70)
{
    return {name,
            form::integer,
            variable_home::header,
            false,
            group,
            static_cast<double>(low),
            static_cast<double>(high),
            initial};
}
constexpr variable_row in_header(std::string_view name, double low, std::string_view initial)
{
    return {name, form::real, variable_home::header, false, 40, low, GREATEST, initial};
}
constexpr variable_row of_drawing(std::string_view name, form what, std::string_view initial)
{
    return {name, what, variable_home::drawing, false, 0, 0, 0, initial};
}
constexpr variable_row of_drawing(std::string_view name, int low, int high, std::string_view initial)
{
    return {name,
            form::integer,
            variable_home::drawing,
            false,
            0,
            static_cast<double>(low),
            static_cast<double>(high),
            initial};
}
constexpr variable_row of_session(std::string_view name, form what, std::string_view initial)
{
    return {name, what, variable_home::session, false, 0, 0, 0, initial};
}
constexpr variable_row of_session(std::string_view name, int low, int high, std::string_view initial)
{
    return {name,
            form::integer,
            variable_home::session,
            false,
            0,
            static_cast<double>(low),
            static_cast<double>(high),
            initial};
}
constexpr variable_row read_only(variable_row row)
{
    row.read_only = true;
    return row;
}
constexpr variable_row emptied_by_dot(variable_row row)
{
    row.dot_empties = true;
    return row;
}
constexpr variable_row ruled(variable_row row, getter get, setter set)
{
    row.get = get;
    row.set = set;
    return row;
}

constexpr variable_row ROWS[] = {
    // ---- drawing files and the run
    worked_out("DWGNAME", form::text, get_drawing_name),
    worked_out("DWGPREFIX", form::text, get_drawing_directory),
    worked_out("DWGTITLED", form::integer, get_drawing_titled),
    worked_out("SAVENAME", form::text, get_save_name),
    worked_out("DBMOD", form::integer, get_modified),
    worked_out("CDATE", form::real, get_cdate),
    worked_out("DATE", form::real, get_date),
    worked_out("MILLISECS", form::long_integer, get_milliseconds),
    worked_out("UNDOCTL", form::integer, get_undo_control),
    worked_out("LOGINNAME", form::text, get_login_name),
    worked_out("TEMPPREFIX", form::text, get_temporary_directory),
    worked_out("ROAMABLEROOTPREFIX", form::text, get_settings_directory),
    worked_out("LOCALROOTPREFIX", form::text, get_settings_directory),
    read_only(of_session("ACADVER", form::text, "15.0")),
    read_only(of_session("PLATFORM", form::text, "Linux")),
    read_only(of_session("LOCALE", form::text, "ENU")),
    read_only(of_session("SYSCODEPAGE", form::text, "ANSI_1252")),
    read_only(in_header("DWGCODEPAGE", form::text, 3, "ANSI_1252")),
    read_only(of_session("CPROFILE", form::text, "<<Unnamed Profile>>")),
    read_only(in_header("MENUNAME", form::text, 1, ".")),
    read_only(of_session("HANDLES", 0, 1, "1")),
    of_session("ERRNO", -32768, 32767, "0"),
    of_session("LISPINIT", 0, 1, "1"),
    of_session("SDI", 0, 3, "0"),
    of_session("MAXSORT", 0, 32767, "1000"),
    of_session("ACADLSPASDOC", 0, 1, "0"),
    of_session("SECURELOAD", 0, 2, "0"),
    read_only(of_drawing("CMDACTIVE", form::integer, "0")),
    read_only(of_drawing("CMDNAMES", form::text, "")),
    read_only(of_drawing("LASTPROMPT", form::text, "")),
    // ---- asking
    of_drawing("LASTPOINT", form::point3, "0,0,0"),
    read_only(of_drawing("LASTANGLE", form::real, "0")),
    read_only(of_drawing("AREA", form::real, "0")),
    read_only(of_drawing("PERIMETER", form::real, "0")),
    read_only(of_drawing("DISTANCE", form::real, "0")),
    of_session("OSMODE", 0, 32767, "0"),
    of_session("AUTOSNAP", 0, 63, "63"),
    of_session("OSNAPZ", 0, 1, "0"),
    of_session("OSNAPCOORD", 0, 2, "2"),
    of_session("APERTURE", 1, 50, "10"),
    of_session("PICKBOX", 0, 50, "3"),
    of_session("PICKADD", 0, 2, "1"),
    of_session("PICKAUTO", 0, 1, "1"),
    of_session("PICKDRAG", 0, 1, "0"),
    of_session("PICKFIRST", 0, 1, "1"),
    of_session("PICKSTYLE", 0, 3, "1"),
    of_session("GRIPS", 0, 1, "1"),
    of_session("HIGHLIGHT", 0, 1, "1"),
    of_session("DRAGMODE", 0, 2, "2"),
    of_session("CURSORSIZE", 1, 100, "5"),
    of_session("COORDS", 0, 2, "1"),
    of_session("POLARMODE", 0, 15, "0"),
    of_session("POLARANG", form::real, "1.5707963267948966"),
    of_session("TRACKPATH", 0, 3, "0"),
    of_session("DYNMODE", -3, 3, "0"),
    of_session("DYNPROMPT", 0, 1, "1"),
    // ---- what commands do
    of_session("CMDECHO", 0, 1, "1"),
    of_session("CMDDIA", 0, 1, "1"),
    of_session("FILEDIA", 0, 1, "1"),
    of_session("EXPERT", 0, 5, "0"),
    of_session("NOMUTT", 0, 1, "0"),
    of_session("BLIPMODE", 0, 1, "0"),
    of_session("ATTDIA", 0, 1, "0"),
    of_session("ATTREQ", 0, 1, "1"),
    of_session("TEXTEVAL", 0, 1, "0"),
    of_session("MENUECHO", 0, 15, "0"),
    of_session("MENUCTL", 0, 1, "1"),
    of_session("PROXYNOTICE", 0, 1, "1"),
    of_session("PROXYSHOW", 0, 2, "1"),
    of_session("SHORTCUTMENU", 0, 31, "11"),
    of_session("EXPLMODE", 0, 1, "1"),
    of_session("PLINETYPE", 0, 2, "2"),
    of_session("EDGEMODE", 0, 1, "0"),
    of_session("PROJMODE", 0, 2, "1"),
    of_session("TRIMMODE", 0, 1, "1"),
    of_session("PEDITACCEPT", 0, 1, "0"),
    of_session("OFFSETGAPTYPE", 0, 2, "0"),
    of_session("DIMASSOC", 0, 2, "1"),
    of_session("QAFLAGS", 0, 32767, "0"),
    of_session("HPASSOC", 0, 1, "1"),
    of_session("DELOBJ", 0, 2, "1"),
    of_session("LAYEREVALCTL", 0, 1, "0"),
    of_session("FONTMAP", form::text, "."),
    of_session("FONTALT", form::text, "txt.shx"),
    of_session("MODEMACRO", form::text, "."),
    of_session("GRIPBLOCK", 0, 1, "0"),
    of_session("ISAVEPERCENT", 0, 100, "50"),
    of_session("SAVETIME", 0, 600, "0"),
    of_session("AFLAGS", 0, 15, "0"),
    of_session("POLYSIDES", 3, 1024, "4"),
    of_drawing("DONUTID", form::real, "0.5"),
    of_drawing("DONUTOD", form::real, "1"),
    of_drawing("CIRCLERAD", form::real, "0"),
    of_drawing("OFFSETDIST", form::real, "-1"),
    of_drawing("INSNAME", form::text, ""),
    of_drawing("HPNAME", form::text, "ANSI31"),
    of_drawing("HPSCALE", form::real, "1"),
    of_drawing("HPANG", form::real, "0"),
    of_drawing("HPSPACE", form::real, "1"),
    of_session("HPDOUBLE", 0, 1, "0"),
    of_session("WHIPTHREAD", 0, 3, "0"),
    of_session("QPMODE", -1, 1, "0"),
    of_session("STARTUP", 0, 1, "0"),
    of_session("INSUNITSDEFSOURCE", 0, 20, "0"),
    of_session("INSUNITSDEFTARGET", 0, 20, "0"),
    of_session("MSLTSCALE", 0, 1, "0"),
    // ---- views
    worked_out("CTAB", form::text, get_tab, set_tab),
    worked_out("CVPORT", form::integer, get_viewport, set_viewport),
    in_header("TILEMODE", 0, 1, "1"),
    worked_out("VIEWCTR", form::point3, get_view_center),
    worked_out("VIEWSIZE", form::real, get_view_size),
    worked_out("VIEWDIR", form::point3, get_view_direction),
    worked_out("TARGET", form::point3, get_view_target),
    worked_out("VIEWTWIST", form::real, get_view_twist),
    worked_out("VSMIN", form::point3, get_view_low),
    worked_out("VSMAX", form::point3, get_view_high),
    worked_out("VIEWMODE", form::integer, get_view_mode),
    read_only(of_session("SCREENSIZE", form::point2, "1024,768")),
    worked_out("EXTMIN", form::point3, get_extents_low),
    worked_out("EXTMAX", form::point3, get_extents_high),
    in_header("LIMMIN", form::point2, 10, "0,0"),
    in_header("LIMMAX", form::point2, 10, "12,9"),
    in_header("LIMCHECK", 0, 1, "0"),
    in_header("REGENMODE", 0, 1, "1"),
    in_header("FILLMODE", 0, 1, "1"),
    in_header("QTEXTMODE", 0, 1, "0"),
    in_header("SPLFRAME", 0, 1, "0"),
    in_header("DISPSILH", 0, 1, "0"),
    in_header("MAXACTVP", 2, 64, "64"),
    in_header("VISRETAIN", 0, 1, "1"),
    in_header("LWDISPLAY", 0, 1, "0", 290),
    in_header("WORLDVIEW", 0, 1, "1"),
    read_only(in_header("UCSORG", form::point3, 10, "0,0,0")),
    read_only(in_header("UCSXDIR", form::point3, 10, "1,0,0")),
    read_only(in_header("UCSYDIR", form::point3, 10, "0,1,0")),
    read_only(in_header("UCSNAME", form::text, 2, "")),
    worked_out("WORLDUCS", form::integer, get_world_ucs),
    of_drawing("UCSFOLLOW", 0, 1, "0"),
    of_session("UCSICON", 0, 3, "3"),
    of_drawing("GRIDMODE", 0, 1, "0"),
    of_drawing("GRIDUNIT", form::point2, "0.5,0.5"),
    of_drawing("SNAPMODE", 0, 1, "0"),
    of_drawing("SNAPUNIT", form::point2, "0.5,0.5"),
    of_drawing("SNAPANG", form::real, "0"),
    of_drawing("SNAPBASE", form::point2, "0,0"),
    of_drawing("SNAPSTYL", 0, 1, "0"),
    of_drawing("SNAPISOPAIR", 0, 2, "0"),
    in_header("ORTHOMODE", 0, 1, "0"),
    // ---- new objects
    ruled(in_header("CLAYER", form::text, 8, "0"), nullptr, set_layer),
    ruled(in_header("CELTYPE", form::text, 6, "ByLayer"), nullptr, set_linetype),
    ruled(in_header("CECOLOR", form::text, 62, "BYLAYER"), get_color, set_color),
    in_header("CELTSCALE", form::real, 40, "1"),
    in_header("CELWEIGHT", -3, 211, "-1", 370),
    ruled(in_header("TEXTSTYLE", form::text, 7, "Standard"), nullptr, set_text_style),
    in_header("TEXTSIZE", form::real, 40, "0.2"),
    in_header("ELEVATION", form::real, 40, "0"),
    in_header("THICKNESS", form::real, 40, "0"),
    in_header("PELEVATION", form::real, 40, "0"),
    in_header("PLINEWID", form::real, 40, "0"),
    in_header("PLINEGEN", 0, 1, "0"),
    in_header("TRACEWID", form::real, 40, "0.05"),
    in_header("LTSCALE", form::real, 40, "1"),
    in_header("PSLTSCALE", 0, 1, "1"),
    in_header("PDMODE", 0, 127, "0"),
    in_header("PDSIZE", form::real, 40, "0"),
    in_header("FILLETRAD", form::real, 40, "0.5"),
    in_header("CHAMFERA", form::real, 40, "0.5"),
    in_header("CHAMFERB", form::real, 40, "0.5"),
    in_header("CHAMFERC", form::real, 40, "1"),
    in_header("CHAMFERD", form::real, 40, "0"),
    in_header("SKETCHINC", form::real, 40, "0.1"),
    in_header("SKPOLY", 0, 1, "0"),
    in_header("MIRRTEXT", 0, 1, "1"),
    in_header("ATTMODE", 0, 2, "1"),
    in_header("INSBASE", form::point3, 10, "0,0,0"),
    in_header("SPLINETYPE", 5, 6, "6"),
    in_header("SPLINESEGS", -32768, 32767, "8"),
    in_header("SURFTAB1", 2, 32766, "6"),
    in_header("SURFTAB2", 2, 32766, "6"),
    in_header("SURFTYPE", 5, 8, "6"),
    in_header("SURFU", 2, 200, "6"),
    in_header("SURFV", 2, 200, "6"),
    in_header("SHADEDGE", 0, 3, "3"),
    in_header("SHADEDIF", 0, 100, "70"),
    in_header("CMLSTYLE", form::text, 2, "Standard"),
    in_header("CMLJUST", 0, 2, "0"),
    in_header("CMLSCALE", form::real, 40, "1"),
    in_header("PROXYGRAPHICS", 0, 1, "1"),
    in_header("TREEDEPTH", -32768, 32767, "3020"),
    of_session("ISOLINES", 0, 2047, "4"),
    // ---- units and numbers of the user
    in_header("LUNITS", 1, 5, "2"),
    in_header("LUPREC", 0, 8, "4"),
    in_header("AUNITS", 0, 4, "0"),
    in_header("AUPREC", 0, 8, "0"),
    in_header("ANGBASE", form::real, 50, "0"),
    in_header("ANGDIR", 0, 1, "0"),
    in_header("UNITMODE", 0, 1, "0"),
    in_header("INSUNITS", 0, 20, "1"),
    in_header("MEASUREMENT", 0, 1, "0"),
    in_header("USERI1", -32768, 32767, "0"),
    in_header("USERI2", -32768, 32767, "0"),
    in_header("USERI3", -32768, 32767, "0"),
    in_header("USERI4", -32768, 32767, "0"),
    in_header("USERI5", -32768, 32767, "0"),
    in_header("USERR1", form::real, 40, "0"),
    in_header("USERR2", form::real, 40, "0"),
    in_header("USERR3", form::real, 40, "0"),
    in_header("USERR4", form::real, 40, "0"),
    in_header("USERR5", form::real, 40, "0"),
    of_drawing("USERS1", form::text, ""),
    of_drawing("USERS2", form::text, ""),
    of_drawing("USERS3", form::text, ""),
    of_drawing("USERS4", form::text, ""),
    of_drawing("USERS5", form::text, ""),
    // ---- time spent on the drawing, in days
    read_only(in_header("TDCREATE", form::real, 40, "0")),
    read_only(in_header("TDUPDATE", form::real, 40, "0")),
    read_only(in_header("TDINDWG", form::real, 40, "0")),
    read_only(in_header("TDUSRTIMER", form::real, 40, "0")),
    // ---- dimensions
    read_only(in_header("DIMSTYLE", form::text, 2, "Standard")),
    in_header("DIMSCALE", 0.0, "1"),
    in_header("DIMASZ", 0.0, "0.18"),
    in_header("DIMEXO", 0.0, "0.0625"),
    in_header("DIMDLI", form::real, 40, "0.38"),
    in_header("DIMRND", 0.0, "0"),
    in_header("DIMDLE", form::real, 40, "0"),
    in_header("DIMEXE", 0.0, "0.18"),
    in_header("DIMTP", form::real, 40, "0"),
    in_header("DIMTM", form::real, 40, "0"),
    in_header("DIMTXT", ABOVE_ZERO, "0.18"),
    in_header("DIMCEN", form::real, 40, "0.09"),
    in_header("DIMTSZ", 0.0, "0"),
    in_header("DIMALTF", form::real, 40, "25.4"),
    in_header("DIMLFAC", form::real, 40, "1"),
    in_header("DIMTVP", form::real, 40, "0"),
    in_header("DIMTFAC", ABOVE_ZERO, "1"),
    in_header("DIMGAP", form::real, 40, "0.09"),
    in_header("DIMALTRND", form::real, 40, "0"),
    in_header("DIMTOL", 0, 1, "0"),
    in_header("DIMLIM", 0, 1, "0"),
    in_header("DIMTIH", 0, 1, "1"),
    in_header("DIMTOH", 0, 1, "1"),
    in_header("DIMSE1", 0, 1, "0"),
    in_header("DIMSE2", 0, 1, "0"),
    in_header("DIMTAD", 0, 4, "0"),
    in_header("DIMZIN", 0, 15, "0"),
    in_header("DIMASO", 0, 1, "1"),
    in_header("DIMSHO", 0, 1, "1"),
    in_header("DIMALT", 0, 1, "0"),
    in_header("DIMALTD", 0, 8, "2"),
    in_header("DIMTOFL", 0, 1, "0"),
    in_header("DIMTIX", 0, 1, "0"),
    in_header("DIMSOXD", 0, 1, "0"),
    in_header("DIMSAH", 0, 1, "0"),
    in_header("DIMCLRD", 0, 256, "0"),
    in_header("DIMCLRE", 0, 256, "0"),
    in_header("DIMCLRT", 0, 256, "0"),
    in_header("DIMJUST", 0, 4, "0"),
    in_header("DIMSD1", 0, 1, "0"),
    in_header("DIMSD2", 0, 1, "0"),
    in_header("DIMTOLJ", 0, 2, "1"),
    in_header("DIMTZIN", 0, 15, "0"),
    in_header("DIMALTZ", 0, 15, "0"),
    in_header("DIMALTTZ", 0, 15, "0"),
    in_header("DIMUPT", 0, 1, "0"),
    in_header("DIMDEC", 0, 8, "4"),
    in_header("DIMTDEC", 0, 8, "4"),
    in_header("DIMALTU", 1, 8, "2"),
    in_header("DIMALTTD", 0, 8, "2"),
    in_header("DIMAUNIT", 0, 4, "0"),
    in_header("DIMADEC", -1, 8, "0"),
    in_header("DIMAZIN", 0, 3, "0"),
    in_header("DIMDSEP", 1, 255, "46"),
    in_header("DIMATFIT", 0, 3, "3"),
    in_header("DIMFRAC", 0, 2, "0"),
    in_header("DIMLUNIT", 1, 6, "2"),
    in_header("DIMLWD", -3, 211, "-2"),
    in_header("DIMLWE", -3, 211, "-2"),
    in_header("DIMTMOVE", 0, 2, "0"),
    emptied_by_dot(in_header("DIMBLK", form::text, 1, "")),
    emptied_by_dot(in_header("DIMBLK1", form::text, 1, "")),
    emptied_by_dot(in_header("DIMBLK2", form::text, 1, "")),
    emptied_by_dot(in_header("DIMLDRBLK", form::text, 1, "")),
    emptied_by_dot(in_header("DIMPOST", form::text, 1, "")),
    emptied_by_dot(in_header("DIMAPOST", form::text, 1, "")),
    in_header("DIMTXSTY", form::text, 7, "Standard"),
};

} // namespace

std::span<const variable_row> variable_rows()
{
    return ROWS;
}

} // namespace host::db
