#include "host/database/sysvars.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/session.h"
#include "host/core/trace.h"
#include "host/database/database.h"
#include "host/database/entities.h"
#include "host/database/sysvars_table.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

using namespace host::db;

class Sysvars : public testing::Test
{
protected:
    void SetUp() override { host::open_document(); }
    void TearDown() override { host::close_all_documents(); }
    host::document& doc() { return host::current_document(); }
    database& drawing() { return database_of(doc()); }

    int get(const char* name, resbuf* value)
    {
        *value = {};
        return acedGetVar(name, value);
    }
    int set_whole(const char* name, int value)
    {
        const host::list_ptr node(host::rb_int(RTSHORT, value));
        return acedSetVar(name, node.get());
    }
    int set_real_value(const char* name, double value)
    {
        const host::list_ptr node(host::rb_real(RTREAL, value));
        return acedSetVar(name, node.get());
    }
    int set_words(const char* name, const char* value)
    {
        const host::list_ptr node(host::rb_text(RTSTR, value));
        return acedSetVar(name, node.get());
    }
};

TEST_F(Sysvars, EveryRowGivesAValueOfItsForm)
{
    for (const variable_row& row : variable_rows()) {
        const host::list_ptr value = get_variable(doc(), row.name);
        ASSERT_TRUE(value) << row.name;
        constexpr int CODES[] = {RTSHORT, RTLONG, RTREAL, RTSTR, RTPOINT, RT3DPOINT};
        EXPECT_EQ(value->restype, CODES[static_cast<int>(row.form)]) << row.name;
    }
}

TEST_F(Sysvars, EveryRowThatProgramsMaySetTakesItsOwnValueBack)
{
    for (const variable_row& row : variable_rows()) {
        const host::list_ptr value = get_variable(doc(), row.name);
        const set_result expected = row.read_only ? set_result::read_only : set_result::done;
        EXPECT_EQ(set_variable(doc(), row.name, *value), expected) << row.name;
    }
}

TEST_F(Sysvars, NamesAreFoundInAnyCase)
{
    ASSERT_EQ(set_whole("OsMode", 37), RTNORM);
    resbuf value{};
    ASSERT_EQ(get("osmode", &value), RTNORM);
    EXPECT_EQ(value.restype, RTSHORT);
    EXPECT_EQ(value.resval.rint, 37);
}

TEST_F(Sysvars, RefusesUnknownNamesReadOnlyOnesAndWrongValues)
{
    resbuf value{};
    EXPECT_EQ(get("NOSUCHTHING", &value), RTERROR);
    EXPECT_EQ(acedGetVar(nullptr, &value), RTERROR);
    EXPECT_EQ(acedGetVar("OSMODE", nullptr), RTERROR);
    EXPECT_EQ(set_whole("NOSUCHTHING", 1), RTERROR);
    EXPECT_EQ(set_words("DWGNAME", "x.dwg"), RTERROR);
    EXPECT_EQ(set_real_value("CDATE", 1.0), RTERROR);
    EXPECT_EQ(set_real_value("OSMODE", 1.5), RTERROR);
    EXPECT_EQ(set_words("LUPREC", "4"), RTERROR);
    EXPECT_EQ(set_whole("CLAYER", 0), RTERROR);
    EXPECT_EQ(set_whole("LUPREC", 9), RTERROR);
    EXPECT_EQ(set_whole("LUNITS", 0), RTERROR);
    EXPECT_EQ(acedSetVar("OSMODE", nullptr), RTERROR);
    EXPECT_EQ(int_variable(doc(), "LUPREC"), 4);
}

TEST_F(Sysvars, WholeNumbersDoForReals)
{
    ASSERT_EQ(set_whole("DIMSCALE", 25), RTNORM);
    resbuf value{};
    ASSERT_EQ(get("DIMSCALE", &value), RTNORM);
    EXPECT_EQ(value.restype, RTREAL);
    EXPECT_EQ(value.resval.rreal, 25.0);
}

TEST_F(Sysvars, TextsAreNewStringsOfTheCaller)
{
    const std::size_t before = host::heap_live_blocks();
    resbuf value{};
    ASSERT_EQ(get("TEXTSTYLE", &value), RTNORM);
    EXPECT_STREQ(value.resval.rstring, "Standard");
    EXPECT_EQ(host::heap_live_blocks(), before + 1);
    acad_free(value.resval.rstring);
    EXPECT_EQ(host::heap_live_blocks(), before);
}

TEST_F(Sysvars, TheCallersNodeKeepsItsPlaceInAList)
{
    resbuf second{};
    resbuf value{};
    value.rbnext = &second;
    ASSERT_EQ(acedGetVar("OSMODE", &value), RTNORM);
    EXPECT_EQ(value.rbnext, &second);
}

TEST_F(Sysvars, DrawingVariablesLiveInTheHeaderAndAreUndone)
{
    drawing().command_boundary("SETVAR");
    ASSERT_EQ(set_real_value("LTSCALE", 2.5), RTNORM);
    const group_list* held = drawing().header_value("$LTSCALE");
    ASSERT_TRUE(held);
    EXPECT_EQ(real_of(*held, 40, 0), 2.5);
    EXPECT_EQ(int_variable(doc(), "DBMOD"), 1);
    drawing().undo_back();
    EXPECT_EQ(real_variable(doc(), "LTSCALE"), 1.0);
}

TEST_F(Sysvars, SessionVariablesStayWhenAnotherDrawingIsCurrentAndOthersDoNot)
{
    set_int(doc(), "OSMODE", 33);
    set_int(doc(), "USERI1", 7);
    const double place[3] = {1, 2, 3};
    set_point(doc(), "LASTPOINT", place);
    host::open_document();
    EXPECT_EQ(int_variable(doc(), "OSMODE"), 33);
    EXPECT_EQ(int_variable(doc(), "USERI1"), 0);
    resbuf value{};
    ASSERT_EQ(get("LASTPOINT", &value), RTNORM);
    EXPECT_EQ(value.restype, RT3DPOINT);
    EXPECT_EQ(value.resval.rpoint[0], 0.0);
    set_int(doc(), "OSMODE", 0);
}

TEST_F(Sysvars, NewDrawingsAreNumberedAndUntitled)
{
    const std::string number = std::to_string(doc().number());
    EXPECT_EQ(text_variable(doc(), "DWGNAME"), "Drawing" + number + ".dwg");
    EXPECT_EQ(int_variable(doc(), "DWGTITLED"), 0);
    EXPECT_EQ(text_variable(doc(), "DWGPREFIX").back(), '/');
    EXPECT_EQ(text_variable(doc(), "SAVENAME"), "");
}

TEST_F(Sysvars, DrawingsKeptAsDxfGoByTheExtensionThatProgramsExpect)
{
    struct {
        const char *file, *name, *prefix;
    } const cases[] = {
        {"/jobs/north/site.dxf", "site.dwg", "/jobs/north/"},
        {"/jobs/SITE.DXF", "SITE.dwg", "/jobs/"},
        {"/jobs/SITE.DWG", "SITE.DWG", "/jobs/"},
        {"C:\\JOB\\SITE.DWG", "SITE.DWG", "C:\\JOB\\"},
        {"/jobs/v1.2/plan", "plan.dwg", "/jobs/v1.2/"},
    };
    for (const auto& c : cases) {
        doc().file = c.file;
        EXPECT_EQ(text_variable(doc(), "DWGNAME"), c.name) << c.file;
        EXPECT_EQ(text_variable(doc(), "DWGPREFIX"), c.prefix) << c.file;
        EXPECT_EQ(int_variable(doc(), "DWGTITLED"), 1);
    }
}

TEST_F(Sysvars, TheDirectoryHasTheFormInWhichTheDrawingWasNamed)
{
    doc().file = "/jobs/site.dxf";
    doc().named = "C:\\JOB\\SITE.DWG";
    EXPECT_EQ(text_variable(doc(), "DWGNAME"), "SITE.DWG");
    EXPECT_EQ(text_variable(doc(), "DWGPREFIX"), "C:\\JOB\\");
    EXPECT_EQ(text_variable(doc(), "SAVENAME"), "C:\\JOB\\SITE.DWG");
    doc().named = "jobs/site.dxf";
    EXPECT_EQ(text_variable(doc(), "DWGNAME"), "site.dwg");
    const std::string here = std::filesystem::current_path().string();
    EXPECT_EQ(text_variable(doc(), "DWGPREFIX"), here + "/jobs/");
}

TEST_F(Sysvars, TheActiveViewportGivesTheView)
{
    const object_id view = drawing().record("VPORT", "*ACTIVE");
    ASSERT_TRUE(view);
    group_list& groups = drawing().modify(view);
    group* center = find(groups, 12);
    center->point[0] = 100;
    center->point[1] = 50;
    find(groups, 40)->real = 30;
    find(groups, 41)->real = 2;
    resbuf value{};
    ASSERT_EQ(get("VIEWCTR", &value), RTNORM);
    EXPECT_EQ(value.resval.rpoint[0], 100);
    EXPECT_EQ(value.resval.rpoint[1], 50);
    EXPECT_EQ(value.resval.rpoint[2], 0);
    EXPECT_EQ(real_variable(doc(), "VIEWSIZE"), 30);
    ASSERT_EQ(get("VSMAX", &value), RTNORM);
    EXPECT_EQ(value.resval.rpoint[0], 130);
    EXPECT_EQ(value.resval.rpoint[1], 65);
}

TEST_F(Sysvars, CurrentRecordsMustExistAndAreSpelledAsTheRecordIs)
{
    add_layer(drawing(), "Walls", 3);
    EXPECT_EQ(set_words("CLAYER", "WALLS"), RTNORM);
    EXPECT_EQ(text_variable(doc(), "CLAYER"), "Walls");
    EXPECT_EQ(set_words("CLAYER", "NOWHERE"), RTERROR);
    EXPECT_EQ(set_words("TEXTSTYLE", "NOWHERE"), RTERROR);
    EXPECT_EQ(set_words("CELTYPE", "NOWHERE"), RTERROR);
    EXPECT_EQ(set_words("CELTYPE", "continuous"), RTNORM);
    EXPECT_EQ(text_variable(doc(), "CLAYER"), "Walls");
}

TEST_F(Sysvars, AFrozenLayerCannotBecomeCurrent)
{
    const object_id layer = add_layer(drawing(), "ICE", 5);
    find(drawing().modify(layer), 70)->integer = 1;
    EXPECT_EQ(set_words("CLAYER", "ICE"), RTERROR);
    EXPECT_EQ(text_variable(doc(), "CLAYER"), "0");
}

TEST_F(Sysvars, ColoursOfNewObjectsAreNamesOrNumbers)
{
    EXPECT_EQ(text_variable(doc(), "CECOLOR"), "BYLAYER");
    EXPECT_EQ(set_words("CECOLOR", "red"), RTNORM);
    EXPECT_EQ(text_variable(doc(), "CECOLOR"), "1");
    EXPECT_EQ(set_words("CECOLOR", "ByBlock"), RTNORM);
    EXPECT_EQ(text_variable(doc(), "CECOLOR"), "BYBLOCK");
    EXPECT_EQ(set_words("CECOLOR", "257"), RTERROR);
    EXPECT_EQ(set_words("CECOLOR", "puce"), RTERROR);
}

TEST_F(Sysvars, ViewportsAndTabsFollowTileMode)
{
    EXPECT_EQ(int_variable(doc(), "CVPORT"), 2);
    EXPECT_EQ(text_variable(doc(), "CTAB"), "Model");
    EXPECT_EQ(set_whole("CVPORT", 1), RTERROR);
    EXPECT_EQ(set_whole("TILEMODE", 0), RTNORM);
    EXPECT_EQ(int_variable(doc(), "CVPORT"), 1);
    EXPECT_EQ(text_variable(doc(), "CTAB"), "Layout1");
    EXPECT_EQ(drawing().current_space(), drawing().paper_space());
    EXPECT_EQ(set_whole("CVPORT", 3), RTNORM);
    EXPECT_EQ(int_variable(doc(), "CVPORT"), 3);
    EXPECT_EQ(drawing().current_space(), drawing().model_space());
    EXPECT_EQ(set_words("CTAB", "model"), RTNORM);
    EXPECT_EQ(int_variable(doc(), "TILEMODE"), 1);
    EXPECT_EQ(set_words("CTAB", "Layout9"), RTERROR);
}

TEST_F(Sysvars, TheClockIsTheRuns)
{
    host::run_settings().clock = "20031224.183000";
    EXPECT_NEAR(real_variable(doc(), "CDATE"), 20031224.183, 1e-6);
    EXPECT_NEAR(real_variable(doc(), "DATE"), 2452998.770833333, 1e-6);
    host::run_settings().clock.clear();
}

TEST_F(Sysvars, AnEmptyDrawingHasNoExtents)
{
    resbuf value{};
    ASSERT_EQ(get("EXTMIN", &value), RTNORM);
    EXPECT_EQ(value.resval.rpoint[0], 1e20);
    ASSERT_EQ(get("EXTMAX", &value), RTNORM);
    EXPECT_EQ(value.resval.rpoint[0], -1e20);
}

TEST_F(Sysvars, ErrnoIsSetByTheHostAndByPrograms)
{
    set_errno(7);
    EXPECT_EQ(int_variable(doc(), "ERRNO"), 7);
    EXPECT_EQ(set_whole("ERRNO", 0), RTNORM);
    EXPECT_EQ(int_variable(doc(), "ERRNO"), 0);
}

TEST_F(Sysvars, TheWorldCoordinateSystemIsKnown)
{
    EXPECT_EQ(int_variable(doc(), "WORLDUCS"), 1);
    drawing().set_header("$UCSORG", {point_group(10, 5, 0, 0)});
    EXPECT_EQ(int_variable(doc(), "WORLDUCS"), 0);
}

TEST_F(Sysvars, SettingIsTraced)
{
    const temporary_directory tmp;
    const std::string path = tmp.path + "/sysvars.trace";
    ASSERT_TRUE(host::trace_to(path));
    set_real_value("ANGBASE", 0.0);
    set_words("CLAYER", "NOWHERE");
    host::trace_to("");
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    EXPECT_EQ(text.str(),
              "acedSetVar \"ANGBASE\" 0.0 -> RTNORM\nacedSetVar \"CLAYER\" \"NOWHERE\" -> RTERROR\n");
}

} // namespace
