// reactors.h: what the host tells the module of its commands, LISP functions, saves and drawings.
//
// The tracking state (common/tracking.h) is kept here: which command or LISP function is running decides
// what a save stores and what help shows.
#pragma once

#include "hostapi/editor.h"

// Documents. Shows the job of the drawing in front: occupied and backsight point in the status pane, the
// coordinate file in the title.
class ZentDocReactor final : public AcApDocManagerReactor
{
public:
    void documentCreated(AcApDocument*) override {}
    void documentDestroyed(const char*) override {}
    void documentBecameCurrent(AcApDocument* document) override;
};

// Commands and LISP functions. commandFailed isn't taken: a command that fails leaves cmd_active as it is
// until the next one ends.
class ZentCommandReactor final : public AcEditorReactor
{
public:
    void commandWillStart(const char* name) override;
    void commandEnded(const char* name) override;
    void commandCancelled(const char* name) override;
    void lispWillStart(const char* first_line) override;
    void lispEnded() override;
    void lispCancelled() override;
};

// Saves. The settings go with the drawing.
class ZentSaveReactor final : public AcEditorReactor
{
public:
    void saveComplete(AcDbDatabase* database, const char* actual_name) override;
};

// Each reactor is made once and lives until it is removed; removing what was never made does nothing.
void doc_reactor_add();
void doc_reactor_remove();
// Both editor reactors. To be called for each drawing: the host leaves out what it has already.
void editor_reactors_add();
void editor_reactors_remove();
