// drawing_settings.h: what is stored with a drawing when it is saved: its settings file and the block
// ZENTSETV. Both are read by the LISP programs, not here.
#pragma once

struct host_file;

// Writes the settings file of the drawing saved as `drawing_path` and makes the block in the current
// drawing anew. Does nothing while the LISP variable do_ini is 0 and for drawings that were never named.
// Tells when the settings file can't be written.
void save_drawing_settings(const char* drawing_path);

// Writes "name=value" for a LISP variable that holds a real, a 16-bit integer or a string, and
// nothing for any other.
void write_setting_line(host_file* stream, const char* name);
