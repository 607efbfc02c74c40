// A guest that only makes entities: through the object model and through entity lists.
#include "guest.h"
#include "hostapi/dbobjects.h"

namespace
{

AcDbBlockTableRecord* open_space()
{
    AcDbBlockTable* blocks = nullptr;
    if (acdbCurDwg()->getSymbolTable(blocks, AcDb::kForRead) != Acad::eOk)
        return nullptr;
    AcDbBlockTableRecord* space = nullptr;
    blocks->getAt("*Model_Space", space, AcDb::kForWrite);
    blocks->close();
    return space;
}

int answer_name(AcDbObjectId id)
{
    ads_name name;
    return acdbGetAdsName(name, id) == Acad::eOk ? acedRetName(name, RTENAME) : acedRetNil();
}

// Appends and gives the view back, either way.
int keep(AcDbEntity* entity)
{
    AcDbObjectId id;
    AcDbBlockTableRecord* space = open_space();
    const bool kept = space && space->appendAcDbEntity(id, entity) == Acad::eOk;
    if (space)
        space->close();
    if (!kept) {
        delete entity;
        return acedRetNil();
    }
    entity->close();
    return answer_name(id);
}

// (e:square size): a closed lightweight polyline from the origin.
int square(const resbuf* arguments)
{
    if (!arguments || arguments->restype != RTREAL)
        return acedRetNil();
    const double size = arguments->resval.rreal;
    auto* line = new AcDbPolyline(4);
    const AcGePoint2d corners[] = {{0, 0}, {size, 0}, {size, size}, {0, size}};
    for (const AcGePoint2d& corner : corners)
        line->addVertexAt(line->numVerts(), corner);
    line->setClosed(true);
    return keep(line);
}

// (e:climb steps): a 3D polyline.
int climb(const resbuf* arguments)
{
    const int steps = arguments && arguments->restype == RTSHORT ? arguments->resval.rint : 0;
    AcGePoint3dArray points;
    for (int i = 0; i < steps; ++i)
        points.append({i * 1.0, 0.0, i * 2.0});
    return keep(new AcDb3dPolyline(AcDb::k3dSimplePoly, points));
}

// (e:layer name color): a layer that becomes current.
int layer(const resbuf* arguments)
{
    if (!arguments || arguments->restype != RTSTR || !arguments->rbnext)
        return acedRetNil();
    AcDbLayerTable* table = nullptr;
    if (acdbCurDwg()->getSymbolTable(table, AcDb::kForWrite) != Acad::eOk)
        return acedRetNil();
    auto* record = new AcDbLayerTableRecord;
    AcCmColor color;
    color.setColorIndex(static_cast<std::uint16_t>(arguments->rbnext->resval.rint));
    record->setColor(color);
    record->setName(arguments->resval.rstring);
    AcDbObjectId id;
    const Acad::ErrorStatus status = table->add(id, record);
    table->close();
    if (status != Acad::eOk) {
        delete record;
        return acedRetInt(status);
    }
    record->close();
    return acedRetInt(acdbCurDwg()->setClayer(id));
}

// (e:point x y): through a list.
int point(const resbuf* arguments)
{
    if (!arguments || !arguments->rbnext)
        return acedRetNil();
    const ads_point at = {arguments->resval.rreal, arguments->rbnext->resval.rreal, 0.0};
    resbuf* list = acutBuildList(RTDXF0, "POINT", 10, at, RTNONE);
    const int status = acdbEntMake(list);
    acutRelRb(list);
    return acedRetInt(status);
}

// (e:nothing): views that are never appended.
int nothing(const resbuf*)
{
    AcGePoint3dArray none;
    auto* line = new AcDb2dPolyline(AcDb::k2dSimplePoly, none);
    auto* vertex = new AcDb2dVertex({1, 2, 3});
    line->appendVertex(vertex);
    vertex->close();
    delete line;
    return acedRetT();
}

constexpr guest_function FUNCTIONS[] = {
    {"e:square", square}, {"e:climb", climb}, {"e:layer", layer}, {"e:point", point}, {"e:nothing", nothing},
};

} // namespace

GUEST_EXPORT int acrxEntryPoint(int message, void* packet)
{
    return guest_entry(FUNCTIONS, message, packet, nullptr, nullptr);
}
