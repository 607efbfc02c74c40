// dialog_memory.h: what the user last entered in a dialog, kept in text files in data_dir: dialogs.ini for all
// dialogs, the shared memory, and NAME.ini for those of NAME.dcl. LISP programs read and write the same files;
// docs/settings-files.md has their format.
//
// `dcl` is the name of a DCL file in lsp_dir without directory and extension, `name` that of a dialog in it,
// and `dialog` the handle that a callback of that dialog is given. Both directories are taken anew from
// `usrdir$` and `lspdir$`; unless both are set nothing is done. Nothing is reported.
#pragma once

#include "hostapi/dcl.h"

// `shared` of the operations that write: which memory.
constexpr int DIALOG_MEMORY_SHARED = 1; // any other value: that of the DCL file

// `where` of the operations that read. In both the memory of the DCL file wins.
constexpr int DIALOG_MEMORY_BOTH = 0;
constexpr int DIALOG_MEMORY_ONLY_SHARED = 1;
constexpr int DIALOG_MEMORY_ONLY_OWN = 2;

// Which tiles a dialog has is read in its DCL file, by lines: a header holds ":", "{" and "dialog" anywhere, a
// tile "=", ";" and "key", and the key is the first quoted text. The line right behind the header is no tile.

// Stores the values of all tiles. A tile that the dialog doesn't know keeps its stored value.
void dlg_save_all(ads_hdlg dialog, const char* dcl, const char* name, int shared);
// Stores the value of one tile, in place of every line whose key begins with `key`.
void dlg_save_tile(ads_hdlg dialog, const char* dcl, const char* name, const char* key, int shared);
// Sets the tiles to what is stored. 1 when a line was applied, else 0. A value is cut at its first comma and
// loses the character before it.
int dlg_load_all(ads_hdlg dialog, const char* dcl, const char* name, int where);
// The stored value of one tile, cut to size - 1 bytes. 1 when it was found; else 0 and `out` is empty.
int dlg_read_tile(const char* dcl, const char* name, int where, const char* key, char* out, int size);
// Enables all tiles.
void dlg_enable_all(ads_hdlg dialog, const char* dcl, const char* name);
