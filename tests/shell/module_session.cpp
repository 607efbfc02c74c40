#include "tests/shell/module_session.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "host/core/session.h"
#include "host/core/trace.h"
#include "host/lisp/api.h"
#include "hostapi/editor.h"

module_session::module_session()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "zent_XXXXXX").string();
    if (mkdtemp(pattern.data()))
        directory_ = pattern + "/";
    host::run_settings() = host::settings();
    host::run_settings().registry = directory_ + "registry.reg";
    host::answers_from_text("");
    host::capture_history(&printed_);
    host::open_document();
    host::load_module(acrxEntryPoint, "zentutil");
}

module_session::~module_session()
{
    host::unload_all_modules();
    host::close_all_documents();
    host::capture_history(nullptr);
    host::run_settings() = host::settings();
    std::filesystem::remove_all(directory_);
}

std::string module_session::lisp(std::string_view forms)
{
    const std::size_t blocks = host::heap_live_blocks();
    const host::lisp::outcome outcome = host::lisp::evaluate_text(host::current_document(), forms, "test");
    EXPECT_EQ(host::heap_live_blocks(), blocks) << forms;
    return outcome.how == host::lisp::ending::done ? outcome.printed : "error: " + outcome.message;
}

std::string module_session::printed()
{
    std::string text;
    text.swap(printed_);
    return text;
}

std::string module_session::traced(std::string_view forms)
{
    const std::string file = directory_ + "trace";
    host::trace_to(file);
    lisp(forms);
    host::trace_to("");
    return read_text(file);
}

void module_session::name_drawing()
{
    host::current_document().file = directory_ + "site.dxf";
}

std::string read_text(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return "<none>";
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

void write_text(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}
