// editor.h: the module's life in the host: entry messages, documents, reactors, commands.
#pragma once

#include "hostapi/adsdef.h"

class AcDbDatabase;

namespace AcRx
{
enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5
};
enum AppRetCode { kRetOK = 0, kRetError = 3 };
} // namespace AcRx

class AcApDocument
{
public:
    virtual ~AcApDocument() = default;
    virtual AcDbDatabase* database() const = 0;
    virtual const char* fileName() const = 0;
};

// Notifications of the document manager. Reactors belong to whoever made them.
class AcApDocManagerReactor
{
public:
    virtual ~AcApDocManagerReactor() = default;
    virtual void documentCreated(AcApDocument*) {}
    virtual void documentDestroyed(const char*) {}
    virtual void documentBecameCurrent(AcApDocument*) {}
};

// Notifications of the editor. Adding a reactor that is there already changes nothing.
class AcEditorReactor
{
public:
    virtual ~AcEditorReactor() = default;
    virtual void commandWillStart(const char*) {}
    virtual void commandEnded(const char*) {}
    virtual void commandCancelled(const char*) {}
    virtual void commandFailed(const char*) {}
    virtual void lispWillStart(const char*) {}
    virtual void lispEnded() {}
    virtual void lispCancelled() {}
    virtual void saveComplete(AcDbDatabase*, const char*) {}
};

class AcApDocumentIterator
{
public:
    virtual ~AcApDocumentIterator() = default;
    virtual bool done() const = 0;
    virtual void step() = 0;
    virtual AcApDocument* document() const = 0;
};

class AcApDocManager
{
public:
    virtual ~AcApDocManager() = default;
    virtual void addReactor(AcApDocManagerReactor*) = 0;
    virtual void removeReactor(AcApDocManagerReactor*) = 0;
    virtual AcApDocument* curDocument() const = 0;
    virtual bool isApplicationContext() const = 0;
    virtual int appContextOpenDocument(const char* file) = 0;
    virtual void executeInApplicationContext(void (*step)(void*), void* data) = 0;
    virtual int closeDocument(AcApDocument*) = 0;
    virtual AcApDocumentIterator* newAcApDocumentIterator() = 0; // deleted by the caller
};

// Objects that acrxSysRegistry hands out by name.
class AcRxDynamicLinker
{
public:
    virtual ~AcRxDynamicLinker() = default;
    virtual void registerAppMDIAware(void* packet) = 0;
};
class AcEditor
{
public:
    virtual ~AcEditor() = default;
    virtual void addReactor(AcEditorReactor*) = 0;
    virtual void removeReactor(AcEditorReactor*) = 0;
};
class AcEdCommandStack
{
public:
    virtual ~AcEdCommandStack() = default;
    // flags: 0 modal, 1 transparent, 0x200000 session.
    virtual int addCommand(const char* group, const char* global_name, const char* local_name, int flags,
                           void (*run)(), void* interface_context = nullptr, int code = -1,
                           void* data = nullptr) = 0;
    virtual int removeGroup(const char* group) = 0;
};
class AcRxDictionary
{
public:
    virtual ~AcRxDictionary() = default;
    // "DynamicLinker", "AcEditor", "ACAD_REGISTERED_COMMANDS"; null for any other name.
    virtual void* at(const char* name) const = 0;
};

AcApDocManager* acDocManagerPtr();
AcRxDictionary* acrxSysRegistry();
// Lets the module be unloaded. Modules are locked until they say so.
void acrxUnlockApplication(void* packet);

// What a module exports. The host calls nothing else of it.
extern "C" int acrxEntryPoint(int message, void* packet);
