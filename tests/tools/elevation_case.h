// elevation_case.h: cf:chgpnts in the real host: objects to change, answers, and what is told of heights.
#pragma once

#include <string>
#include <vector>

#include "tests/tools/annotation_case.h"

inline const std::string CALL = "(cf:chgpnts)";
inline const std::string ALL = "all\n\n";

// Objects, as forms that make them.
inline constexpr const char* LINE = R"((entmake '((0 . "LINE") (10 0.0 0.0 1.5) (11 9.0 0.0 2.5))))";
inline constexpr const char* SURVEY_BLOCK =
    R"((point-block "SRVPN1" 12.5 '(("PNT2" "P7" 12.5) ("ELEV2" "12.50" 12.5)
    ("DESC2" "IRON PIN" 12.0))))";
inline constexpr const char* LIGHT =
    R"((entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "KERB") (62 . 3) (48 . 2.0)
    (100 . "AcDbPolyline") (90 . 3) (70 . 1) (38 . 4.0) (10 0.0 10.0) (42 . 0.5) (10 10.0 10.0) (10 10.0 20.0))))";
inline constexpr const char* OLD_FLAT = "(chain 0 '(7.0 7.0 7.0))";
inline constexpr const char* IN_SPACE = "(chain 8 '(1.0 0.0 3.0))";

inline constexpr const char *POLYLINE_1 = "\nPolyLine Entities Changed> 1",
                            *OTHER_1 = "\nOther Entities Changed>    1",
                            *POINTS_1 = "\nZentrik Points Changed>   1";
inline constexpr const char *ABSOLUTE = "Yes\nA\n5\n", *ABSOLUTE_ALL = "No\nA\n5\n", *ADD = "Yes\nD\n-2\n",
                            *ADD_ALL = "No\nD\n-2\n", *SCALE = "Yes\nD\nS\n3\n", *SCALE_ALL = "No\nD\nS\n3\n";
inline constexpr const char
    *PLAIN_BLOCK = "(point-block \"PINE\" 3.0 '((\"ELEV2\" \"3.00\" 3.0)))",
    *GROUND_BLOCK = "(point-block \"SRVPN1\" 0.0 '((\"ELEV2\" \"8.00\" 8.0)))",
    *POINT = "(entmake '((0 . \"POINT\") (10 1.0 1.0 3.0)))",
    *GROUND_POINT = "(entmake '((0 . \"POINT\") (10 1.0 1.0 0.0)))",
    *BELOW = "(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 9.0 0.0 2.5)))",
    *ABOVE = "(entmake '((0 . \"LINE\") (10 0.0 0.0 1.5) (11 9.0 0.0 0.0)))",
    *NEGATIVE_ZERO = "(entmake '((0 . \"POINT\") (10 1.0 1.0 -0.0)))",
    *NEARLY_ZERO = "(entmake '((0 . \"POINT\") (10 1.0 1.0 1e-300)))",
    *CENTRED = "(entmake '((0 . \"TEXT\") (10 0.0 0.0 4.0) (40 . 1.0) (1 . \"A\") (72 . 1) "
               "(11 1.0 0.0 4.0)))",
    *CIRCLE = "(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 4.0) (40 . 1.0)))",
    *ARC = "(entmake '((0 . \"ARC\") (10 0.0 0.0 4.0) (40 . 1.0) (50 . 0.0) (51 . 1.0)))",
    *FACE = "(entmake '((0 . \"3DFACE\") (10 0.0 0.0 1.0) (11 1.0 0.0 2.0) (12 1.0 1.0 3.0) "
            "(13 0.0 1.0 4.0)))",
    *GROUND_LIGHT = "(entmake '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (8 . \"0\") (100 . "
                    "\"AcDbPolyline\") (90 . 2) (70 . 0) (38 . 0.0) (10 0.0 0.0) (10 5.0 0.0)))";

class ElevationChange : public Annotation
{
protected:
    ElevationChange()
    {
        session.lisp(R"(
            (setvar "LUNITS" 2) (setvar "LUPREC" 2) (setvar "DIMZIN" 0)
            (foreach name '("SRVPN1" "SRVPNX" "SRVPM" "PINE" "srvpn2")
              (entmake (list '(0 . "BLOCK") (cons 2 name) '(70 . 2) '(10 0.0 0.0 0.0)))
              (entmake '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 0.5)))
              (entmake '((0 . "ENDBLK"))))
            ; A block with attributes of tag, text and z.
            (defun point-block (name z parts)
              (entmake (list '(0 . "INSERT") (cons 2 name) (cons 66 (if parts 1 0)) (list 10 1.0 2.0 z)))
              (foreach part parts
                (entmake (list '(0 . "ATTRIB") (list 10 1.0 2.0 (caddr part)) '(40 . 1.0) (cons 1 (cadr part))
                  (cons 2 (car part)) '(70 . 0) '(72 . 1) (list 11 1.5 2.0 (caddr part)))))
              (if parts (entmake '((0 . "SEQEND")))))
            ; An old polyline with these z.
            (defun chain (flags zs / x)
              (entmake (list '(0 . "POLYLINE") '(8 . "KERB") '(66 . 1) (cons 70 flags)
                (list 10 0.0 0.0 (if (= flags 8) 0.0 (car zs)))))
              (setq x 0.0)
              (foreach z zs
                (entmake (list '(0 . "VERTEX") '(8 . "KERB") (cons 70 (if (= flags 8) 32 0)) (list 10 x -9.0 z)))
                (setq x (+ x 5.0)))
              (entmake '((0 . "SEQEND"))))
            ; "LINE 1.50 2.50", a block's parts and a polyline's vertices behind it.
            (defun high (e / g out)
              (setq g (entget e) out (cdr (assoc 0 g)))
              (if (= out "ATTRIB") (setq out (strcat (cdr (assoc 2 g)) " '" (cdr (assoc 1 g)) "'")))
              (foreach n g
                (if (or (and (member (car n) '(10 11 12 13)) (cadddr n)) (= (car n) 38))
                  (setq out (strcat out " " (txt (if (= (car n) 38) (cdr n) (cadddr n)))))))
              out)
            (defun heights (/ e out)
              (setq e (entnext) out "")
              (while e
                (if (not (member (cdr (assoc 0 (entget e))) '("SEQEND")))
                  (setq out (strcat out (if (= out "") "" "; ") (high e))))
                (setq e (entnext e)))
              out))");
        session.printed();
    }
    std::string heights() { return text_of("(heights)"); }
    // The objects alone in the drawing, newest last.
    void begin_with(const std::string& forms)
    {
        erase_all();
        session.lisp(forms);
    }
    // What follows the last "Tested" line.
    static std::string summary(const std::string& told)
    {
        const std::size_t at = told.find("\rTested");
        return at == std::string::npos ? "none" : told.substr(at);
    }
};
