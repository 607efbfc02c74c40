#include "host/commandline/open_drawings.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "host/commandline/commands.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/module.h"
#include "host/core/reactors.h"
#include "host/core/resbuf.h"
#include "host/core/session.h"
#include "host/core/trace.h"
#include "host/database/database.h"
#include "host/database/sysvars.h"
#include "host/database/views.h"
#include "host/files/paths.h"
#include "host/files/recent_files.h"
#include "hostapi/ads.h"
#include "hostapi/windows.h"

namespace host::commandline
{

namespace
{

std::function<void(document&)> start_file;
std::vector<int> waiting; // numbers of documents that are to close

class drawing_of_module final : public AcApDocument
{
public:
    explicit drawing_of_module(document& doc) : doc_(doc) {}
    AcDbDatabase* database() const override { return db::database_view(doc_); }
    const char* fileName() const override
    {
        name_ = shown_name(doc_);
        return name_.c_str();
    }

private:
    document& doc_;
    mutable std::string name_;
};

void tell_front()
{
    trace_line("documentBecameCurrent")
        .text(std::string_view(db::text_variable(current_document(), "DWGNAME")));
    tell_document_became_current(module_view(current_document()));
}

void tell_opened(document& doc)
{
    const int number = doc.number();
    tell_document_created(module_view(doc));
    tell_drawing_loaded(doc);
    if (start_file)
        start_file(doc);
    // Any of these may have closed it or brought another one to the front.
    if (has_document() && current_document().number() == number)
        tell_front();
}

document* opened_from(std::string_view path, bool keeps_name, std::string* error)
{
    const int before = has_document() ? current_document().number() : 0;
    document& doc = open_document();
    if (!open_drawing(doc, path, error)) {
        close_document(doc);
        if (document* again = document_of_number(before))
            make_current(*again);
        return nullptr;
    }
    if (!keeps_name) {
        doc.file.clear();
        doc.named.clear();
    }
    tell_opened(doc);
    return &doc;
}

void close_now(document& doc)
{
    const std::string name = shown_name(doc);
    const bool in_front = &current_document() == &doc;
    {
        const while_current here(doc);
        cancel_open_command(doc);
        tell_drawing_unloaded(doc);
    }
    close_document(doc);
    tell_document_destroyed(name);
    if (!has_document())
        new_drawing();
    else if (in_front)
        tell_front();
}

// The name that a user gives to a drawing that has none; empty: no name.
std::string asked_name(document& doc)
{
    constexpr int NEW_FILE = 1;
    resbuf answer{};
    if (acedGetFileD("Save Drawing As", shown_name(doc).c_str(), "dwg", NEW_FILE, &answer) != RTNORM)
        return {};
    const std::string name = answer.resval.rstring;
    acad_free(answer.resval.rstring);
    if (!existing_path(drawing_path(name)))
        return name;
    const std::string question = name + " already exists.\nDo you want to replace it?";
    return MessageBoxA(1, question.c_str(), "Save Drawing As", MB_YESNO | MB_ICONWARNING) == IDYES
               ? name
               : std::string();
}

} // namespace

void set_start_file(std::function<void(document&)> load)
{
    start_file = std::move(load);
}

std::string shown_name(document& doc)
{
    return db::text_variable(doc, "DWGPREFIX") + db::text_variable(doc, "DWGNAME");
}

document* open_in_front(std::string_view given, std::string* error)
{
    const std::string path = with_escapes_put_back(given);
    if (document* there = document_of_file(drawing_to_read(path))) {
        note_recent_drawing(shown_name(*there));
        bring_to_front(*there);
        return there;
    }
    document* const opened = opened_from(path, true, error);
    if (opened)
        note_recent_drawing(shown_name(*opened));
    return opened;
}

document* new_from_template(std::string_view path, std::string* error)
{
    return opened_from(path, false, error);
}

void new_drawing()
{
    document& doc = open_document();
    db::database_of(doc);
    tell_opened(doc);
}

void bring_to_front(document& doc)
{
    if (has_document() && &current_document() == &doc)
        return;
    make_current(doc);
    tell_front();
}

document* document_of_file(const std::string& file)
{
    for (const auto& doc : documents()) {
        std::error_code none; // a file that isn't there is the same as no other
        if (!doc->file.empty() && (doc->file == file || std::filesystem::equivalent(doc->file, file, none)))
            return doc.get();
    }
    return nullptr;
}

void close_when_idle(document& doc)
{
    if (!is_closing(doc))
        waiting.push_back(doc.number());
    close_idle_drawings();
}

bool is_closing(const document& doc)
{
    return std::find(waiting.begin(), waiting.end(), doc.number()) != waiting.end();
}

void close_idle_drawings()
{
    // What a drawing runs when it closes may close others.
    const std::vector<int> numbers = waiting;
    for (const int number : numbers) {
        document* doc = document_of_number(number);
        if (doc && is_busy(*doc))
            continue;
        if (std::erase(waiting, number) > 0 && doc)
            close_now(*doc);
    }
}

bool may_close(document& doc)
{
    if (!db::database_of(doc).modified())
        return true;
    const std::string question = "Save changes to " + shown_name(doc) + "?";
    const int answer = MessageBoxA(1, question.c_str(), "Zentrik", MB_YESNOCANCEL | MB_ICONWARNING);
    if (answer != IDYES)
        return answer == IDNO;
    const std::string& version = run_settings().dxf_version;
    std::string error;
    bool saved = false;
    if (!doc.file.empty()) {
        saved = save_and_tell(doc, doc.file, version, &error);
    } else {
        const std::string name = asked_name(doc);
        if (name.empty())
            return false;
        saved = save_under_name(doc, name, version, &error);
    }
    if (!saved)
        history_line(error);
    return saved;
}

bool save_under_name(document& doc, std::string_view path, std::string_view version, std::string* error)
{
    const std::string before = doc.file, named_before = doc.named;
    doc.file = drawing_path(path);
    doc.named = path;
    if (save_and_tell(doc, path, version, error)) {
        note_recent_drawing(shown_name(doc));
        return true;
    }
    doc.file = before;
    doc.named = named_before;
    return false;
}

AcApDocument* module_view(document& doc)
{
    return &doc.part<drawing_of_module>();
}

document* document_of(const AcApDocument* view)
{
    for (const auto& doc : documents())
        if (view && module_view(*doc) == view)
            return doc.get();
    return nullptr;
}

} // namespace host::commandline
