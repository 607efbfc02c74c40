// module_session.h: the module in the real host, driven as a LISP program drives it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// One drawing with the module loaded. Everything is taken down again at the end.
class module_session
{
public:
    module_session();
    ~module_session();
    module_session(const module_session&) = delete;
    module_session& operator=(const module_session&) = delete;

    // The value of the last form as LISP prints it; "error: ..." for an error that nothing caught. Each call
    // must leave the module's heap as it found it.
    std::string lisp(std::string_view forms);
    // What was printed since this was last asked.
    std::string printed();
    // Lines of the trace of host operations made by `forms`.
    std::string traced(std::string_view forms);
    // A directory of this session, with its separator; removed at the end.
    const std::string& directory() const { return directory_; }
    // Gives the drawing a name in that directory: site.dwg.
    void name_drawing();

private:
    std::string printed_, directory_;
};

std::string read_text(const std::string& path); // "<none>" when there is no such file
void write_text(const std::string& path, const std::string& text);
