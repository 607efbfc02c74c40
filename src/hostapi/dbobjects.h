// dbobjects.h: the drawing's objects as classes: thin views over the drawing database.
//
// An object is opened by id with a mode, asked or changed, and given back with close(), which
// releases the view. A new object belongs to its maker until it is appended or added; then it
// is open and is closed like any other. One that was never appended is deleted. Texts that an
// operation returns as char* are new strings (acad_free); null when there is none.
#pragma once

#include <cstdint>

#include "hostapi/adsdef.h"
#include "hostapi/geometry.h"

namespace Acad
{
enum ErrorStatus {
    eOk = 0,
    eInvalidInput = 3,
    eKeyNotFound = 4,
    eDuplicateKey = 6,
    eInvalidIndex = 7,
    eNullObjectId = 10,
    eNotOpenForWrite = 16,
    eNotApplicable = 20,
    eNotThatKindOfClass = 46,
    eWasErased = 53,
    eUnknownHandle = 56,
    eInvalidExtents = 62,
    eFileAccessErr = 69,
    eOnLockedLayer = 71,
};
}

namespace AcDb
{
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
enum Poly2dType { k2dSimplePoly = 0, k2dFitCurvePoly = 1, k2dQuadSplinePoly = 2, k2dCubicSplinePoly = 3 };
enum Poly3dType { k3dSimplePoly = 0, k3dQuadSplinePoly = 1, k3dCubicSplinePoly = 2 };
enum Vertex2dType { k2dVertex = 0, k2dSplineCtlVertex = 1, k2dSplineFitVertex = 2, k2dCurveFitVertex = 3 };
enum Vertex3dType { k3dSimpleVertex = 0, k3dControlVertex = 1, k3dFitVertex = 2 };
} // namespace AcDb

// Identity of an object in a drawing for as long as the drawing is open. Null when default made.
struct AcDbObjectId {
    std::uint32_t database = 0, index = 0;
    bool isNull() const { return database == 0; }
    bool operator==(const AcDbObjectId&) const = default;
};

class AcDbDatabase;
struct AcDbObjectBody; // the host's side of a view

class AcDbObject
{
public:
    virtual ~AcDbObject();
    AcDbObject(const AcDbObject&) = delete;
    AcDbObject& operator=(const AcDbObject&) = delete;
    static AcDbObject* cast(AcDbObject* object) { return object; }
    AcDbObjectId objectId() const;
    AcDbObjectId ownerId() const;
    Acad::ErrorStatus close(); // the view is gone afterwards
    Acad::ErrorStatus erase(bool erasing = true);
    AcDbObjectBody* body() const { return body_; }

protected:
    explicit AcDbObject(AcDbObjectBody* body) : body_(body) {}
    AcDbObjectBody* body_;
};

class AcDbEntity : public AcDbObject
{
public:
    static AcDbEntity* cast(AcDbObject* object);
    char* layer() const;
    char* linetype() const;
    double linetypeScale() const;
    std::uint16_t colorIndex() const;
    Acad::ErrorStatus setLayer(const char* name);
    Acad::ErrorStatus setLinetype(const char* name);
    Acad::ErrorStatus setLinetypeScale(double scale);
    Acad::ErrorStatus setColorIndex(std::uint16_t color);
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;

protected:
    using AcDbObject::AcDbObject;
};

class AcDbCurve : public AcDbEntity
{
public:
    static AcDbCurve* cast(AcDbObject* object);
    bool isClosed() const;

protected:
    using AcDbEntity::AcDbEntity;
};

class AcDbLine : public AcDbCurve
{
public:
    static AcDbLine* cast(AcDbObject* object);
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end);
    explicit AcDbLine(AcDbObjectBody* body) : AcDbCurve(body) {}
    AcGePoint3d startPoint() const;
    AcGePoint3d endPoint() const;
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);
};

// Lightweight polyline. Vertices are counted from 0. They are given in the object's plane and read in the
// world, where z is the elevation as long as the plane is the world's own.
class AcDbPolyline : public AcDbCurve
{
public:
    static AcDbPolyline* cast(AcDbObject* object);
    explicit AcDbPolyline(unsigned vertex_hint = 0);
    explicit AcDbPolyline(AcDbObjectBody* body) : AcDbCurve(body) {}
    unsigned numVerts() const;
    Acad::ErrorStatus getPointAt(unsigned index, AcGePoint3d& point) const;
    Acad::ErrorStatus getBulgeAt(unsigned index, double& bulge) const;
    Acad::ErrorStatus getConstantWidth(double& width) const; // eInvalidInput: there is none
    bool hasPlinegen() const;
    double thickness() const;
    double elevation() const;
    Acad::ErrorStatus addVertexAt(unsigned index, const AcGePoint2d& point, double bulge = 0.0,
                                  double start_width = -1.0, double end_width = -1.0);
    Acad::ErrorStatus setWidthsAt(unsigned index, double start_width, double end_width);
    Acad::ErrorStatus setElevation(double elevation);
    Acad::ErrorStatus setThickness(double thickness);
    void setClosed(bool closed);
    void setPlinegen(bool on);
};

class AcDb2dVertex : public AcDbEntity
{
public:
    static AcDb2dVertex* cast(AcDbObject* object);
    AcDb2dVertex(const AcGePoint3d& position, double bulge = 0.0, double start_width = 0.0,
                 double end_width = 0.0);
    explicit AcDb2dVertex(AcDbObjectBody* body) : AcDbEntity(body) {}
    AcGePoint3d position() const;
    double bulge() const;
    AcDb::Vertex2dType vertexType() const;
    Acad::ErrorStatus setStartWidth(double width);
    Acad::ErrorStatus setEndWidth(double width);
};

class AcDb3dPolylineVertex : public AcDbEntity
{
public:
    static AcDb3dPolylineVertex* cast(AcDbObject* object);
    explicit AcDb3dPolylineVertex(const AcGePoint3d& position);
    explicit AcDb3dPolylineVertex(AcDbObjectBody* body) : AcDbEntity(body) {}
    AcGePoint3d position() const;
    AcDb::Vertex3dType vertexType() const;
};

// Walks the vertices of an old-style polyline in drawing order. Deleted by the caller.
class AcDbObjectIterator
{
public:
    virtual ~AcDbObjectIterator() = default;
    virtual bool done() const = 0;
    virtual void step() = 0;
    virtual AcDbObjectId objectId() const = 0;
};

// Old-style 2D polyline, an object with a sequence of vertices.
class AcDb2dPolyline : public AcDbCurve
{
public:
    static AcDb2dPolyline* cast(AcDbObject* object);
    AcDb2dPolyline(AcDb::Poly2dType type, AcGePoint3dArray& vertices, double elevation = 0.0,
                   bool closed = false, double start_width = 0.0, double end_width = 0.0,
                   AcGeDoubleArray* bulges = nullptr);
    explicit AcDb2dPolyline(AcDbObjectBody* body) : AcDbCurve(body) {}
    AcDb::Poly2dType polyType() const;
    bool isLinetypeGenerationOn() const;
    double thickness() const;
    double elevation() const;
    double defaultStartWidth() const;
    double defaultEndWidth() const;
    AcDbObjectIterator* vertexIterator() const;
    AcGePoint3d vertexPosition(const AcDb2dVertex& vertex) const; // world coordinates
    // The vertex becomes the polyline's; it stays open until it is closed.
    Acad::ErrorStatus appendVertex(AcDb2dVertex* vertex);
    Acad::ErrorStatus setThickness(double thickness);
    Acad::ErrorStatus setDefaultStartWidth(double width);
    Acad::ErrorStatus setDefaultEndWidth(double width);
    void setLinetypeGenerationOn();
    void setLinetypeGenerationOff();
};

class AcDb3dPolyline : public AcDbCurve
{
public:
    static AcDb3dPolyline* cast(AcDbObject* object);
    AcDb3dPolyline(AcDb::Poly3dType type, AcGePoint3dArray& vertices, bool closed = false);
    explicit AcDb3dPolyline(AcDbObjectBody* body) : AcDbCurve(body) {}
    AcDb::Poly3dType polyType() const;
    AcDbObjectIterator* vertexIterator() const;
    Acad::ErrorStatus appendVertex(AcDb3dPolylineVertex* vertex);
};

// Index of a display colour: 0 by block, 1 to 255, 256 by layer.
class AcCmColor
{
public:
    std::uint16_t colorIndex() const { return index_; }
    void setColorIndex(std::uint16_t index) { index_ = index; }

private:
    std::uint16_t index_ = 256;
};

class AcDbSymbolTableRecord : public AcDbObject
{
public:
    static AcDbSymbolTableRecord* cast(AcDbObject* object);
    char* name() const;
    Acad::ErrorStatus setName(const char* name);

protected:
    using AcDbObject::AcDbObject;
};

class AcDbLayerTableRecord : public AcDbSymbolTableRecord
{
public:
    static AcDbLayerTableRecord* cast(AcDbObject* object);
    AcDbLayerTableRecord();
    explicit AcDbLayerTableRecord(AcDbObjectBody* body) : AcDbSymbolTableRecord(body) {}
    AcCmColor color() const;
    Acad::ErrorStatus setIsFrozen(bool frozen);
    void setIsOff(bool off);
    void setIsLocked(bool locked);
    void setVPDFLT(bool frozen_in_new_viewports);
    void setColor(const AcCmColor& color);
    void setLinetypeObjectId(AcDbObjectId linetype);
};

class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord
{
public:
    static AcDbTextStyleTableRecord* cast(AcDbObject* object);
    AcDbTextStyleTableRecord();
    explicit AcDbTextStyleTableRecord(AcDbObjectBody* body) : AcDbSymbolTableRecord(body) {}
    double textSize() const;
    Acad::ErrorStatus setTextSize(double size);
};

class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord
{
public:
    static AcDbLinetypeTableRecord* cast(AcDbObject* object);
    AcDbLinetypeTableRecord();
    explicit AcDbLinetypeTableRecord(AcDbObjectBody* body) : AcDbSymbolTableRecord(body) {}
    Acad::ErrorStatus setComments(const char* text);
    Acad::ErrorStatus setPatternLength(double length);
    Acad::ErrorStatus setNumDashes(int count);
    Acad::ErrorStatus setDashLengthAt(int index, double length);
};

class AcDbBlockTableRecord : public AcDbSymbolTableRecord
{
public:
    static AcDbBlockTableRecord* cast(AcDbObject* object);
    explicit AcDbBlockTableRecord(AcDbObjectBody* body) : AcDbSymbolTableRecord(body) {}
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
};

// What the tables share: look-up without regard to case.
class AcDbSymbolTable : public AcDbObject
{
public:
    static AcDbSymbolTable* cast(AcDbObject* object);
    bool has(const char* name) const;
    Acad::ErrorStatus getAt(const char* name, AcDbObjectId& id) const;

protected:
    using AcDbObject::AcDbObject;
    Acad::ErrorStatus add_record(AcDbObjectId& id, AcDbSymbolTableRecord* record);
    Acad::ErrorStatus open_record(const char* name, AcDbObject*& record, AcDb::OpenMode mode) const;
};

template <class Record>
class AcDbTableOf : public AcDbSymbolTable
{
public:
    explicit AcDbTableOf(AcDbObjectBody* body) : AcDbSymbolTable(body) {}
    using AcDbSymbolTable::getAt;
    Acad::ErrorStatus getAt(const char* name, Record*& record, AcDb::OpenMode mode) const
    {
        AcDbObject* object = nullptr;
        const Acad::ErrorStatus status = open_record(name, object, mode);
        record = status == Acad::eOk ? Record::cast(object) : nullptr;
        return status;
    }
    Acad::ErrorStatus add(AcDbObjectId& id, Record* record) { return add_record(id, record); }
    Acad::ErrorStatus add(Record* record)
    {
        AcDbObjectId id;
        return add_record(id, record);
    }
};

using AcDbLayerTable = AcDbTableOf<AcDbLayerTableRecord>;
using AcDbTextStyleTable = AcDbTableOf<AcDbTextStyleTableRecord>;
using AcDbLinetypeTable = AcDbTableOf<AcDbLinetypeTableRecord>;
using AcDbBlockTable = AcDbTableOf<AcDbBlockTableRecord>;

class AcDbDatabase
{
public:
    virtual ~AcDbDatabase() = default;
    bool tilemode() const;
    AcDbObjectId clayer() const;
    Acad::ErrorStatus setClayer(AcDbObjectId layer);
    AcDbObjectId textstyle() const;
    Acad::ErrorStatus setTextstyle(AcDbObjectId style);
    Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode);
};

// The database of the current drawing.
AcDbDatabase* acdbCurDwg();
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id);
Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool open_erased = false);
// Makes changes of the layer table known to the screen.
Acad::ErrorStatus applyCurDwgLayerTableChanges();
