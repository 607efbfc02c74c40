// drawing_settings.cpp: the save of a drawing's settings. PROJECT= lines are carried from the old settings
// file to the new one through the scratch file, so that they end up behind the variables.
#include "settings/drawing_settings.h"

#include <cstring>
#include <iterator>

#include "common/lisp_vars.h"
#include "common/text.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"
#include "settings/settings_file.h"

namespace
{

// Variables with the job's data files, in the order in which they stand in the settings file.
constexpr const char* FILE_VARIABLES[] = {
    "basef",
    "cclfil",
    "cfoutf",
    "chdeffile",
    "chole_nm",
    "clfil",
    "clnfil",
    "crdfile",
    "csect_nm",
    "edfil",
    "equatenm",
    "ewfil",
    "fermfile",
    "file1",
    "file2",
    "finalf",
    "fname",
    "ftf_name",
    "ftrfil",
    "gis_name",
    "grdfil",
    "grdfile",
    "gridfnm",
    "hdrfil",
    "hydro_file",
    "lotfile",
    "mapfil",
    "masfil",
    "mxsfil",
    "ocrdfil",
    "osctfil",
    "outfil",
    "outname",
    "pitname",
    "pond_nm",
    "precalc_nm",
    "profil",
    "proffil",
    "profilx",
    "rawfile",
    "rock_file",
    "zent_attributes",
    "zent_calendar",
    "zent_equipment",
    "zent_equip_options",
    "zent_horizon_codes",
    "zent_panel_attrs",
    "zent_pit_attrs",
    "zent_time_table",
    "zent_weight_table",
    "secfil",
    "secfil1$",
    "secfil2",
    "slayf",
    "stab$",
    "stage_nm",
    "stratafnm",
    "supfil",
    "surf_nm",
    "swrfile",
    "tfil",
    "tmpdir$",
    "tptfil",
    "tplfil",
};

struct option {
    const char* name; // LISP variable and attribute tag
    const char* standard;
};

// In the order of the block's attribute definitions.
constexpr option OPTIONS[] = {
    {"bearoraz", "B"},       {"ppon", "1"},      {"prpel", "Y"},      {"realz", "Y"},
    {"prpds", "Y"},          {"autoon", "Y"},    {"autosyb", "Y"},    {"pntnoon", "Y"},
    {"verton", "1"},         {"ihrhon", "N"},    {"pnl", "SRVPNO1"},  {"ptemp", "4"},
    {"eorm$", "E"},          {"sv:sm", "50.0"},  {"sv:vs", "50.0"},   {"sv:ts", "0.1"},
    {"sv:ps", "0.1"},        {"is_metric", "0"}, {"low_elev", "1.0"}, {"high_elev", "20000.0"},
    {"ltscaler", "20000.0"},
};

// Other programs of the product count on both numbers.
static_assert(std::size(FILE_VARIABLES) == 64);
static_assert(std::size(OPTIONS) == 21);

constexpr int HAS_ATTRIBUTES = 2;
constexpr int INVISIBLE = 1;
constexpr double ATTRIBUTE_HEIGHT = 0.2;

void make_and_release(resbuf* list)
{
    // A block that the host refuses has no message: the settings file holds the job's files in any case.
    acdbEntMake(list);
    acutRelRb(list);
}

void make_settings_block()
{
    const ads_point origin = {0.0, 0.0, 0.0};
    make_and_release(acutBuildList(RTDXF0, "BLOCK", 2, "ZENTSETV", 70, HAS_ATTRIBUTES, 10, origin, 0));
    for (const option& o : OPTIONS) {
        char value[256];
        lisp_get_text(value, o.name);
        if (value[0] == '\0')
            text_set(value, o.standard);
        make_and_release(acutBuildList(RTDXF0, "ATTDEF", 10, origin, 1, value, 2, o.name, 3, "prompt", 70,
                                       INVISIBLE, 40, ATTRIBUTE_HEIGHT, 0));
    }
    make_and_release(acutBuildList(RTDXF0, "ENDBLK", 0));
}

// Takes the PROJECT= lines of the old settings file to the scratch file. The scratch file is emptied even
// when there is no old file, so that it never brings in another drawing's lines. False when they didn't fit on
// the disk: without them the old file must not be replaced.
bool keep_project_lines(const char* settings, const char* scratch)
{
    host_file* old = file_open(settings, "r");
    host_file* kept = file_open(scratch, "w");
    if (old && kept) {
        char line[SETTINGS_LINE_SIZE];
        while (file_gets(line, sizeof line, old))
            if (std::strstr(line, "PROJECT="))
                file_puts(line, kept);
    }
    if (old)
        file_close(old);
    return !kept || file_close(kept) == 0;
}

void write_settings_file(const char* drawing_path)
{
    char settings[ADS_PATH_SIZE], scratch[ADS_PATH_SIZE];
    settings_path(drawing_path, settings);
    scratch_path(scratch);
    host_file* out = keep_project_lines(settings, scratch) ? file_open(settings, "w") : nullptr;
    if (!out) {
        acutPrintf("\nUnable to write configuration file '%s'", settings);
        return;
    }
    for (const char* name : FILE_VARIABLES)
        write_setting_line(out, name);
    append_lines(scratch, out);
    if (file_close(out) != 0)
        acutPrintf("\nUnable to write configuration file '%s'", settings);
}

} // namespace

void write_setting_line(host_file* stream, const char* name)
{
    resbuf* value = nullptr;
    if (acedGetSym(name, &value) == RTNORM && value) {
        if (value->restype == RTREAL) {
            file_printf(stream, "%s=%f\n", name, value->resval.rreal);
        } else if (value->restype == RTSHORT) {
            file_printf(stream, "%s=%d\n", name, value->resval.rint);
        } else if (value->restype == RTSTR && value->resval.rstring) {
            // The list is our own copy: the variable keeps its blanks.
            str_trim(value->resval.rstring);
            file_printf(stream, "%s=%s\n", name, value->resval.rstring);
        }
    }
    if (value)
        acutRelRb(value);
}

void save_drawing_settings(const char* drawing_path)
{
    if (lisp_is_integer("do_ini", 0) || is_unnamed_drawing(drawing_path))
        return;
    write_settings_file(drawing_path);
    make_settings_block();
}
