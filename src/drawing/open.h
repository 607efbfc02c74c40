// open.h: checked casts of drawing objects, opening by class, and views that close themselves.
#pragma once

#include <memory>

#include "hostapi/ads.h"
#include "hostapi/dbobjects.h"

// The object as a T; null for null and for an object of another class.
template <class T>
T* object_cast(AcDbObject* object)
{
    return object ? T::cast(object) : nullptr;
}

// Opens an object that must be a T. eNotThatKindOfClass, with nothing left open, for another class.
template <class T>
Acad::ErrorStatus object_open(T*& out, AcDbObjectId id, AcDb::OpenMode mode)
{
    out = nullptr;
    AcDbObject* object = nullptr;
    const Acad::ErrorStatus status = acdbOpenAcDbObject(object, id, mode);
    if (status != Acad::eOk)
        return status;
    out = object_cast<T>(object);
    if (out)
        return Acad::eOk;
    if (object && object->close() != Acad::eOk)
        acrx_abort("Failed AcDbObject::close()");
    return Acad::eNotThatKindOfClass;
}

// The same by entity name.
template <class T>
Acad::ErrorStatus object_open(T*& out, const ads_name name, AcDb::OpenMode mode)
{
    out = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = acdbGetObjectId(id, name);
    return status == Acad::eOk ? object_open(out, id, mode) : status;
}

struct object_close {
    void operator()(AcDbObject* object) const { object->close(); }
};

// An open object, closed at the end of its scope.
template <class T>
using open_object = std::unique_ptr<T, object_close>;

// Opens by id or name; null when that fails.
template <class T, class Key>
open_object<T> opened(const Key& key, AcDb::OpenMode mode)
{
    T* object = nullptr;
    object_open(object, key, mode);
    return open_object<T>(object);
}

// Puts a new entity into a space; it is closed, or deleted when the space refuses it.
template <class T>
void append_and_close(AcDbBlockTableRecord& space, std::unique_ptr<T> entity)
{
    if (space.appendAcDbEntity(entity.get()) == Acad::eOk)
        entity.release()->close();
}

// A symbol table of the current drawing; null when it doesn't open.
template <class Table>
open_object<Table> opened_table(AcDb::OpenMode mode)
{
    Table* table = nullptr;
    AcDbDatabase* drawing = acdbCurDwg();
    if (!drawing || drawing->getSymbolTable(table, mode) != Acad::eOk)
        table = nullptr;
    return open_object<Table>(table);
}

// Model or paper space, whichever is current, for write; null when it doesn't open.
open_object<AcDbBlockTableRecord> opened_current_space();
