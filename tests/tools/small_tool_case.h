// small_tool_case.h: the operations that answer questions of programs and move or turn objects for them, in the
// real host.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "host/core/session.h"
#include "host/core/trace.h"
#include "host/database/selection_sets.h"
#include "hostapi/ads.h"
#include "tests/shell/module_session.h"

class SmallTool : public testing::Test
{
protected:
    module_session session;
    const std::size_t views = host::live_views();
    std::string told; // by the last call with answers

    SmallTool()
    {
        session.lisp(R"((setq do_ini 0)
            (defun make (e) (entmake e) (entlast))
            (defun line (a b) (make (list '(0 . "LINE") (cons 10 a) (cons 11 b))))
            ; vertices: (x y bulge)
            (defun lw (flags vertices / g)
              (setq g (list '(38 . 7.0) (cons 70 flags) (cons 90 (length vertices)) '(100 . "AcDbPolyline")
                            '(100 . "AcDbEntity") '(0 . "LWPOLYLINE")))
              (foreach v vertices
                (setq g (cons (cons 42 (caddr v)) (cons (list 10 (car v) (cadr v)) g))))
              (make (reverse g)))
            ; vertices: (x y z bulge)
            (defun old (flags vertex-flags vertices)
              (entmake (list '(0 . "POLYLINE") '(66 . 1) (cons 70 flags) '(10 0.0 0.0 0.0)))
              (foreach v vertices
                (entmake (list '(0 . "VERTEX") (cons 70 vertex-flags) (list 10 (car v) (cadr v) (caddr v))
                               (cons 42 (nth 3 v)))))
              (entmake '((0 . "SEQEND")))
              (entlast))
            (defun of (e n) (cdr (assoc n (entget e))))
            (defun set-of (names / s) (setq s (ssadd)) (foreach n names (ssadd n s)) s))");
        session.printed();
    }
    void TearDown() override { EXPECT_EQ(host::live_views(), views) << "views left open"; }

    // Value of a call of cf:zentutil with these values behind the directory.
    std::string call(const std::string& values) { return session.lisp("(cf:zentutil \"\" " + values + ")"); }
    // The same with these answers, all of which must be wanted.
    std::string call(const std::string& values, const std::string& answers)
    {
        host::answers_from_text(answers + "left over\n");
        session.printed();
        const std::string value = call(values);
        told = session.printed();
        EXPECT_EQ(host::next_answer("").value_or("none"), "left over") << "not the answers that were wanted";
        return value;
    }
    // The same from C, for values that LISP has no way to write. Takes the list over.
    static std::string called(resbuf* arguments)
    {
        const std::size_t blocks = host::heap_live_blocks();
        host::list_ptr value = host::call_external("cf:zentutil", arguments);
        const std::string printed = !value || value->restype == RTNIL ? "nil"
                                    : value->restype == RTLB          ? "list"
                                                                      : host::printed_value(*value);
        value.reset();
        EXPECT_EQ(host::heap_live_blocks(), blocks);
        acutRelRb(arguments);
        return printed;
    }
    // The name that a LISP variable holds.
    static void name_of(const char* variable, ads_name name)
    {
        resbuf* value = nullptr;
        EXPECT_EQ(acedGetSym(variable, &value), RTNORM);
        if (value) {
            name[0] = value->resval.rlname[0];
            name[1] = value->resval.rlname[1];
            acutRelRb(value);
        }
    }
};
