// annotation_case.h: the tools that draw leaders and arrows, in the real host, with their answers.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/session.h"
#include "host/database/database.h"
#include "host/database/selection_sets.h"
#include "hostapi/ads.h"
#include "tests/shell/module_session.h"

class Annotation : public testing::Test
{
protected:
    module_session session;
    const std::size_t views = host::live_views();

    Annotation()
    {
        session.lisp(R"(
            (setq do_ini 0)
            (setvar "CMDECHO" 0) (setvar "OSMODE" 37) (setvar "DIMASZ" 3.0) (setvar "DIMSCALE" 1.0)
            (defun txt (x) (if (= (rtos x 2 2) "-0.00") "0.00" (rtos x 2 2)))
            (defun place (p) (strcat (txt (car p)) "," (txt (cadr p))
              (if (and (caddr p) (/= (caddr p) 0.0)) (strcat "," (txt (caddr p))) "")))
            (defun codes (n g) (mapcar 'cdr (vl-remove-if-not '(lambda (x) (= (car x) n)) g)))
            ; "LWPOLYLINE 8: 0.00,0.00 100.00,0.00": the number of vertices, the first and the last.
            (defun shape (e / g p)
              (setq g (entget e) p (codes 10 g))
              (strcat (cdr (assoc 0 g))
                (cond
                  ((= (cdr (assoc 0 g)) "LWPOLYLINE")
                   (strcat (if (/= 0.0 (cdr (assoc 38 g))) (strcat " z " (txt (cdr (assoc 38 g)))) "")
                     " " (itoa (length p)) ": " (place (car p)) " " (place (last p))))
                  ((= (cdr (assoc 0 g)) "POINT") (strcat " " (place (car p))))
                  (t ""))))
            (defun shapes (/ e out)
              (setq e (entnext) out "")
              (while e
                (if (not (member (cdr (assoc 0 (entget e))) '("VERTEX" "SEQEND")))
                  (setq out (strcat out (if (= out "") "" "; ") (shape e))))
                (setq e (entnext e)))
              out)
            ; Whether a corner of a head lies at a place.
            (defun is-tip (e x y) (and (= (cdr (assoc 0 (entget e))) "SOLID") (vl-some
              '(lambda (n / p) (setq p (cdr (assoc n (entget e)))) (< (distance (list (car p) (cadr p)) (list x y)) 1e-6))
              '(10 11 12 13)) t))
            (defun members (set / i out)
              (setq i 0 out "")
              (while (< i (sslength set))
                (setq out (strcat out (if (= out "") "" "; ") (shape (ssname set i))) i (1+ i)))
              out))");
        session.printed();
    }
    void TearDown() override
    {
        EXPECT_EQ(host::live_views(), views) << "views left open";
        EXPECT_EQ(session.lisp("(getvar \"OSMODE\")"), "37");
    }

    // What a call printed with these answers, all of which must be wanted.
    std::string run(const std::string& call, const std::string& answers)
    {
        session.printed();
        host::answers_from_text(answers + "left over\n");
        value = session.lisp(call);
        const std::string told = session.printed();
        EXPECT_EQ(host::next_answer("").value_or("none"), "left over") << "not the answers that were wanted";
        return told;
    }
    std::string trace_of(const std::string& call, const std::string& answers = "")
    {
        host::answers_from_text(answers);
        return session.traced(call);
    }
    // Numbers below a millionth are 0.
    static std::string without_tiny(const std::string& text)
    {
        std::string out;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = std::min(text.find_first_not_of("-+.0123456789e", at), text.size());
            const std::string word = text.substr(at, end - at);
            const std::size_t power = word.find("e-");
            const bool tiny =
                power != std::string::npos && power > 0 && std::atoi(word.c_str() + power + 2) > 6;
            out += tiny ? "0.0" : word;
            if (end < text.size())
                out += text[end];
            at = end + 1;
        }
        return out;
    }
    // Lines of a trace that begin with one of these names; numbers next to nothing are 0.
    static std::string only(const std::string& trace, std::initializer_list<const char*> names)
    {
        std::istringstream in(trace);
        std::string out;
        for (std::string line; std::getline(in, line);)
            for (const char* name : names)
                if (line.starts_with(name))
                    out += line + "\n";
        return without_tiny(out);
    }

    std::string drawn() { return text_of("(shapes)"); }
    std::string text_of(const std::string& form)
    {
        const std::string printed = session.lisp(form);
        return printed.starts_with('"') ? printed.substr(1, printed.size() - 2) : printed;
    }
    std::string variable(const char* name) { return text_of("(getvar \"" + std::string(name) + "\")"); }
    void set(const char* name, const std::string& new_value)
    {
        session.lisp("(setvar \"" + std::string(name) + "\" " + new_value + ")");
    }
    void erase_all() { session.lisp("(while (entlast) (entdel (entlast)))"); }
    void make(const std::string& list) { EXPECT_NE(session.lisp("(entmake '(" + list + "))"), "nil") << list; }
    bool is_tip(const char* entity, const std::string& place)
    {
        return session.lisp("(is-tip " + std::string(entity) + " " + place + ")") == "T";
    }

    // The `nth` break poll from here on answers yes.
    static void press_break(long nth)
    {
        static long polls = 0; // of the whole program, like the host's
        host::run_settings().break_after = polls += 1000;
        while (!acedUsrBrk()) {
        }
        host::run_settings().break_after = polls + nth;
    }

    struct state {
        std::size_t blocks, bytes, views, sets;
        bool operator==(const state&) const = default;
    };
    static state held()
    {
        return {host::heap_live_blocks(), host::heap_live_bytes(), host::live_views(), host::db::live_sets()};
    }

    std::string value; // of the last call
};
