// open_drawings.h: drawings as a user sees them come, go and change places. Modules and their reactors hear
// of all that is done here, in one order:
//
//   opened   documentCreated, drawing-load message, the start file, documentBecameCurrent
//   to front documentBecameCurrent
//   closed   drawing-unload message, documentDestroyed; then, if it was the current one,
//            documentBecameCurrent of the drawing that is in front now
//
// From its load on a drawing is the current one, and what a closing one runs, it runs as the current one.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "hostapi/editor.h"

namespace host
{
class document;
}

namespace host::commandline
{

// Run for each drawing that is opened (the product's commands); none by default.
void set_start_file(std::function<void(document&)> load);

// A drawing in front: one that is open already, or in a document of its own. Null with the reason in `error`:
// then nothing has changed.
document* open_in_front(std::string_view path, std::string* error);
void new_drawing(); // empty and unnamed
// New and unnamed, with the contents of a file.
document* new_from_template(std::string_view path, std::string* error);
void bring_to_front(document& doc);
// The open drawing that is kept in that file; null: none.
document* document_of_file(const std::string& file);

// Closes a drawing without a question; one in which LISP or a command runs goes when that has ended. When
// the last one goes, a new one is opened.
void close_when_idle(document& doc);
bool is_closing(const document& doc);
void close_idle_drawings(); // of those that wait
// Asks what is to become of the changes. False: the drawing is to stay open.
bool may_close(document& doc);

// Writes without a question; the editor reactors are told. False with the reason in `error`.
bool save_and_tell(document& doc, std::string_view path, std::string_view version, std::string* error);
// Names the drawing anew and saves it; with a failure it keeps its name.
bool save_under_name(document& doc, std::string_view path, std::string_view version, std::string* error);
// The drawing's directory and name with its extension, as programs see them.
std::string shown_name(document& doc);

// What modules hold of a drawing; it lives as long as the drawing.
AcApDocument* module_view(document& doc);
document* document_of(const AcApDocument* view); // null: it is open no more

// ---- of run_commands.cpp
// Whether LISP, or a command of the drawing itself, runs in it.
bool is_busy(document& doc);
// Cancels the command that a program has left open.
void cancel_open_command(document& doc);

} // namespace host::commandline
