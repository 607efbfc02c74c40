// cf:chgpnts: what it does to each kind of object, and how it counts.
#include "tests/tools/elevation_case.h"

namespace
{

struct kind_case {
    const char* name;
    const char* made;
    const char* answers; // up to the value
    const char* after;
    const char* counted; // of the summary, without its first line
};

TEST_F(ElevationChange, EachKindInEachMode)
{
    const std::string line_1 = OTHER_1;
    const kind_case cases[] = {
        {"line to a value", LINE, ABSOLUTE, "LINE 5.00 5.00", OTHER_1},
        {"line by a difference", LINE, ADD, "LINE -0.50 0.50", OTHER_1},
        {"line by a factor", LINE, SCALE, "LINE 4.50 7.50", OTHER_1},
        {"line from 0 stays, its end too", BELOW, ABSOLUTE, "LINE 0.00 2.50", ""},
        {"line from 0 by a difference", BELOW, ADD, "LINE 0.00 2.50", ""},
        {"line from 0 by a factor", BELOW, SCALE, "LINE 0.00 2.50", ""},
        {"line from 0, zeros wanted", BELOW, ABSOLUTE_ALL, "LINE 5.00 5.00", OTHER_1},
        {"line from 0, zeros wanted, by a factor", BELOW, SCALE_ALL, "LINE 0.00 7.50", OTHER_1},
        {"line to 0 keeps that end", ABOVE, ABSOLUTE, "LINE 5.00 0.00", OTHER_1},
        {"line to 0 by a difference", ABOVE, ADD, "LINE -0.50 0.00", OTHER_1},
        {"line to 0, zeros wanted", ABOVE, ADD_ALL, "LINE -0.50 -2.00", OTHER_1},

        {"point", POINT, ABSOLUTE, "POINT 5.00", OTHER_1},
        {"point by a difference", POINT, ADD, "POINT 1.00", OTHER_1},
        {"point by a factor", POINT, SCALE, "POINT 9.00", OTHER_1},
        {"point at 0", GROUND_POINT, ABSOLUTE, "POINT 0.00", ""},
        {"point at 0, zeros wanted", GROUND_POINT, ABSOLUTE_ALL, "POINT 5.00", OTHER_1},
        {"point at 0, zeros wanted, by a factor", GROUND_POINT, SCALE_ALL, "POINT 0.00", OTHER_1},
        {"minus 0 is 0", NEGATIVE_ZERO, ABSOLUTE, "POINT 0.00", ""},
        {"next to 0 is not 0", NEARLY_ZERO, ABSOLUTE, "POINT 5.00", OTHER_1},

        {"text, both places", CENTRED, ADD, "TEXT 2.00 2.00", OTHER_1},
        {"text to a value", CENTRED, ABSOLUTE, "TEXT 5.00 5.00", OTHER_1},
        {"text by a factor", CENTRED, SCALE, "TEXT 12.00 12.00", OTHER_1},
        {"circle", CIRCLE, ADD, "CIRCLE 2.00", OTHER_1},
        {"arc", ARC, SCALE, "ARC 12.00", OTHER_1},
        {"face: its third and fourth corner stay", FACE, ABSOLUTE, "3DFACE 5.00 5.00 3.00 4.00", OTHER_1},
        {"ellipse",
         "(entmake '((0 . \"ELLIPSE\") (100 . \"AcDbEntity\") (100 . \"AcDbEllipse\") (10 0.0 0.0 4.0) "
         "(11 2.0 0.0 0.0) (40 . 0.5)))",
         ABSOLUTE, "ELLIPSE 5.00 0.00", OTHER_1},
        {"multiline text",
         "(entmake '((0 . \"MTEXT\") (100 . \"AcDbEntity\") (100 . \"AcDbMText\") (10 0.0 0.0 4.0) "
         "(40 . 1.0) (1 . \"A\") (11 1.0 0.0 0.0)))",
         ADD, "MTEXT 2.00 0.00", OTHER_1},

        {"plain block: its attributes stay", PLAIN_BLOCK, ABSOLUTE, "INSERT 5.00; ELEV2 '3.00' 3.00 3.00",
         OTHER_1},
        {"plain block by a factor stays", PLAIN_BLOCK, SCALE, "INSERT 3.00; ELEV2 '3.00' 3.00 3.00", ""},
        {"plain block at 0", "(point-block \"PINE\" 0.0 nil)", ADD, "INSERT 0.00", ""},
        {"plain block at 0, zeros wanted", "(point-block \"PINE\" 0.0 nil)", ADD_ALL, "INSERT -2.00", OTHER_1},
        {"survey block to a value", SURVEY_BLOCK, ABSOLUTE,
         "INSERT 5.00; PNT2 'P7' 5.00 5.00; ELEV2 '5.00' 5.00 5.00; DESC2 'IRON PIN' 5.00 5.00", POINTS_1},
        {"survey block: parts keep their place above it", SURVEY_BLOCK, ADD,
         "INSERT 10.50; PNT2 'P7' 10.50 10.50; ELEV2 '10.50' 10.50 10.50; DESC2 'IRON PIN' 10.00 10.00",
         POINTS_1},
        {"survey block by a factor stays", SURVEY_BLOCK, SCALE,
         "INSERT 12.50; PNT2 'P7' 12.50 12.50; ELEV2 '12.50' 12.50 12.50; DESC2 'IRON PIN' 12.00 12.00", ""},
        {"survey block by a factor stays, zeros wanted", GROUND_BLOCK, SCALE_ALL,
         "INSERT 0.00; ELEV2 '8.00' 8.00 8.00", ""},
        {"survey block at 0 stays with its elevation", GROUND_BLOCK, ADD, "INSERT 0.00; ELEV2 '8.00' 8.00 8.00",
         ""},
        {"survey block at 0, zeros wanted", GROUND_BLOCK, ADD_ALL, "INSERT -2.00; ELEV2 '6.00' 6.00 6.00",
         POINTS_1},
        {"parts at 0 go along", "(point-block \"SRVPN1\" 4.0 '((\"ELEV2\" \"0\" 0.0)))", ADD,
         "INSERT 2.00; ELEV2 '-2.00' -2.00 -2.00", POINTS_1},
        {"any name that begins so", "(point-block \"SRVPNX\" 4.0 '((\"EL\" \"4\" 4.0)))", ABSOLUTE,
         "INSERT 5.00; EL '5.00' 5.00 5.00", POINTS_1},
        {"a name that begins otherwise", "(point-block \"SRVPM\" 4.0 '((\"EL\" \"4\" 4.0)))", ABSOLUTE,
         "INSERT 5.00; EL '4' 4.00 4.00", OTHER_1},
        {"a name in lower case", "(point-block \"srvpn2\" 4.0 '((\"EL\" \"4\" 4.0)))", ABSOLUTE,
         "INSERT 5.00; EL '4' 4.00 4.00", OTHER_1},
        {"other tags keep their texts",
         "(point-block \"SRVPN1\" 4.0 '((\"E\" \"4\" 4.0) (\"DEL\" \"4\" 4.0) (\"LEVEL\" \"4\" 4.0)))",
         ABSOLUTE, "INSERT 5.00; E '4' 5.00 5.00; DEL '4' 5.00 5.00; LEVEL '4' 5.00 5.00", ""},
        {"two elevations count twice",
         "(point-block \"SRVPN1\" 4.0 '((\"ELEV\" \"4\" 4.0) (\"ELLIPS\" \"44\" 4.0)))", ADD,
         "INSERT 2.00; ELEV '2.00' 2.00 2.00; ELLIPS '42.00' 2.00 2.00", "\nZentrik Points Changed>   2"},
        {"a block without parts ends there",
         "(progn (point-block \"SRVPN1\" 4.0 nil) (entmake '((0 . \"POINT\") (10 1.0 1.0 0.0))))", ABSOLUTE,
         "INSERT 5.00; POINT 0.00", ""},

        {"lightweight polyline", LIGHT, ABSOLUTE, "LWPOLYLINE 5.00", POLYLINE_1},
        {"lightweight polyline by a difference", LIGHT, ADD, "LWPOLYLINE 2.00", POLYLINE_1},
        {"lightweight polyline by a factor", LIGHT, SCALE, "LWPOLYLINE 12.00", POLYLINE_1},
        {"lightweight polyline at 0", GROUND_LIGHT, ADD, "LWPOLYLINE 0.00", ""},
        {"lightweight polyline at 0, zeros wanted", GROUND_LIGHT, ADD_ALL, "LWPOLYLINE -2.00", POLYLINE_1},
        {"old flat polyline", OLD_FLAT, ABSOLUTE, "POLYLINE 5.00; VERTEX 5.00; VERTEX 5.00; VERTEX 5.00",
         POLYLINE_1},
        {"old flat polyline by a factor", OLD_FLAT, SCALE,
         "POLYLINE 21.00; VERTEX 21.00; VERTEX 21.00; VERTEX 21.00", POLYLINE_1},
        {"old flat polyline at 0", "(chain 0 '(0.0 0.0))", ABSOLUTE, "POLYLINE 0.00; VERTEX 0.00; VERTEX 0.00",
         ""},
        {"polyline in space", IN_SPACE, ABSOLUTE, "POLYLINE 0.00; VERTEX 5.00; VERTEX 0.00; VERTEX 5.00",
         POLYLINE_1},
        {"polyline in space, zeros wanted", IN_SPACE, ABSOLUTE_ALL,
         "POLYLINE 0.00; VERTEX 5.00; VERTEX 5.00; VERTEX 5.00", POLYLINE_1},
        {"polyline in space by a difference", IN_SPACE, ADD,
         "POLYLINE 0.00; VERTEX -1.00; VERTEX 0.00; VERTEX 1.00", POLYLINE_1},
        {"polyline in space by a factor", IN_SPACE, SCALE,
         "POLYLINE 0.00; VERTEX 3.00; VERTEX 0.00; VERTEX 9.00", POLYLINE_1},
        {"polyline in space at 0 counts too", "(chain 8 '(0.0 0.0))", ADD,
         "POLYLINE 0.00; VERTEX 0.00; VERTEX 0.00", POLYLINE_1},
    };
    for (const kind_case& c : cases) {
        begin_with(c.made);
        const state held_before = held();
        const std::string told = run(CALL, c.answers + ALL);
        EXPECT_EQ(heights(), c.after) << c.name;
        const std::string first = summary(told);
        EXPECT_EQ(first.substr(first.find('\n') + 1), c.counted) << c.name;
        EXPECT_EQ(held(), held_before) << c.name;
    }
}

// Group 11 of these is a direction.
TEST_F(ElevationChange, DirectionsTiltWhenZerosAreWanted)
{
    begin_with(
        "(entmake '((0 . \"MTEXT\") (100 . \"AcDbEntity\") (100 . \"AcDbMText\") (10 0.0 0.0 4.0) (40 . 1.0) "
        "(1 . \"A\") (11 1.0 0.0 0.0)))");
    run(CALL, ABSOLUTE_ALL + ALL);
    EXPECT_EQ(heights(), "MTEXT 5.00 5.00");
}

struct text_case {
    const char* text;
    int precision;
    const char* after; // 100 more
};

TEST_F(ElevationChange, ElevationTextIsReadAsANumberAndWrittenInDecimals)
{
    const text_case cases[] = {
        {"12.50", 2, "112.50"},  {"12.5", 4, "112.5000"}, {"12.456", 0, "112"},
        {"12.456", 1, "112.5"},  {"-250", 3, "-150.000"}, {"+7.25", 2, "107.25"},
        {"  7.25", 2, "107.25"}, {"7.25 m", 2, "107.25"}, {"7,25", 2, "107.00"},
        {"1e2", 2, "200.00"},    {".5", 2, "100.50"},     {"-.5", 2, "99.50"},
        {"n/a", 2, "100.00"},    {"", 2, "100.00"},       {"-", 2, "100.00"},
        {"inf", 2, "100.00"},    {"nan", 2, "100.00"},    {"INFERRED", 2, "100.00"},
        {"1e-999", 2, "100.00"}, {"0x10", 2, "100.00"},   {"12.50000000000000", 1, "112.5"},
        {"1'-6\"", 2, "101.00"},
    };
    for (const text_case& c : cases) {
        begin_with("");
        set("LUPREC", std::to_string(c.precision));
        std::string text = c.text;
        for (std::size_t at = text.find('"'); at != std::string::npos; at = text.find('"', at + 2))
            text.insert(at, "\\");
        session.lisp("(point-block \"SRVPN1\" 4.0 (list (list \"ELEV2\" \"" + text + "\" 4.0)))");
        const std::string told = run(CALL, "\nD\n100\n" + ALL);
        EXPECT_EQ(text_of("(cdr (assoc 1 (entget (entnext (entlast)))))"), c.after) << c.text;
        EXPECT_TRUE(told.ends_with(POINTS_1)) << c.text;
    }
}

TEST_F(ElevationChange, AttributesAreDecimalInAllUnitsOfTheDrawing)
{
    for (const char* units : {"1", "3", "4", "5"}) {
        set("LUNITS", units);
        begin_with(SURVEY_BLOCK);
        run(CALL, "\nA\n1234.5\n" + ALL);
        EXPECT_EQ(text_of("(cdr (assoc 1 (entget (entnext (entnext (entlast))))))"), "1234.50") << units;
    }
}

TEST_F(ElevationChange, AttributeWithOnePlaceHasNoSecond)
{
    begin_with("");
    session.lisp(R"((entmake '((0 . "INSERT") (2 . "SRVPN1") (66 . 1) (10 1.0 2.0 4.0)))
        (entmake '((0 . "ATTRIB") (10 1.0 2.0 4.0) (40 . 1.0) (1 . "4.00") (2 . "ELEV2") (70 . 0)))
        (entmake '((0 . "SEQEND"))))");
    run(CALL, ABSOLUTE + ALL);
    EXPECT_TRUE(heights().starts_with("INSERT 5.00; ELEV2 '5.00' 5.00")) << heights();
}

TEST_F(ElevationChange, AllKindsCountTogether)
{
    begin_with(std::string(LINE) + LIGHT + IN_SPACE + OLD_FLAT + SURVEY_BLOCK + PLAIN_BLOCK + POINT +
               GROUND_POINT);
    const std::string told = run(CALL, ABSOLUTE + ALL);
    EXPECT_EQ(summary(told), "\rTested 8 Entities\n\nPolyLine Entities Changed> 3"
                             "\nOther Entities Changed>    3\nZentrik Points Changed>   1");
}

} // namespace
