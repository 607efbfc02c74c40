// printing.cpp: values and texts to the command line or to a file.
#include "host/core/console.h"
#include "host/lisp/builtins.h"
#include "host/lisp/printer.h"
#include "hostapi/ads.h"

namespace host::lisp
{

namespace
{

// To the file that is the argument at `i`, else to the command line.
void emit(interpreter& l, arguments a, int i, const std::string& text)
{
    if (!a.given(i)) {
        history(text);
        return;
    }
    host_file* file = a[i].as_file()->file;
    if (!file)
        l.wrong_type("streamp", a[i]);
    if (file_puts(text.c_str(), file) < 0)
        l.fail("file write error: " + a[i].as_file()->path);
}

value princ(interpreter& l, arguments a)
{
    if (a.count == 0)
        return l.silence();
    emit(l, a, 1, princ_text(a[0]));
    return a[0];
}

value prin1(interpreter& l, arguments a)
{
    if (a.count == 0)
        return l.silence();
    emit(l, a, 1, prin1_text(a[0]));
    return a[0];
}

value print(interpreter& l, arguments a)
{
    if (a.count == 0) {
        emit(l, a, 1, "\n");
        return l.silence();
    }
    emit(l, a, 1, "\n" + prin1_text(a[0]) + " ");
    return a[0];
}

value new_line(interpreter&, arguments)
{
    history("\n");
    return value::nil();
}

value write_line(interpreter& l, arguments a)
{
    emit(l, a, 1, a.text(0) + "\n");
    return a[0];
}

value write_char(interpreter& l, arguments a)
{
    if (a.integer(0) < 1 || a.integer(0) > 255)
        l.fail("bad argument value: character code " + prin1_text(a[0]));
    emit(l, a, 1, std::string(1, static_cast<char>(a.integer(0))));
    return a[0];
}

value prompt(interpreter&, arguments a)
{
    acedPrompt(a.text(0).c_str());
    return value::nil();
}

value alert(interpreter&, arguments a)
{
    acedAlert(a.text(0).c_str());
    return value::nil();
}

constexpr builtin TABLE[] = {
    {"princ", princ, 0, 2, ".F"},           {"prin1", prin1, 0, 2, ".F"},
    {"print", print, 0, 2, ".F"},           {"terpri", new_line, 0, 0, ""},
    {"write-line", write_line, 1, 2, "sF"}, {"write-char", write_char, 1, 2, "iF"},
    {"prompt", prompt, 1, 1, "s"},          {"alert", alert, 1, 1, "s"},
};

} // namespace

std::span<const builtin> printing_table()
{
    return TABLE;
}

} // namespace host::lisp
