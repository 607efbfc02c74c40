// directories.h: directories that outlive a call, each with its trailing separator, so that a file
// name is put behind it as it is. One set for all drawings; nested calls share it, the last one that
// writes wins.
#pragma once

// First text of the latest cf:zentutil call: where the module's small files lie.
extern char data_dir[128];
// The program's dialog and LISP files (lspdir$).
extern char lsp_dir[128];
// Symbol drawings and help files (psname).
extern char symbol_dir[256];
// The job's data files (tmpdir$).
extern char tmp_dir[256];
