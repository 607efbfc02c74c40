// What a module does with drawing objects: nothing but the classes of the object model and entity lists.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>

#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/trace.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"
#include "hostapi/ads.h"
#include "hostapi/dbobjects.h"
#include "tests/growth.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

using namespace host::db;

std::string taken(char* text)
{
    std::string copy = text ? text : "(null)";
    acad_free(text);
    return copy;
}

class Views : public testing::Test
{
protected:
    void SetUp() override
    {
        host::open_document();
        views_before_ = host::live_views();
        blocks_before_ = host::heap_live_blocks();
    }
    void TearDown() override
    {
        EXPECT_EQ(host::live_views(), views_before_) << "views left open";
        EXPECT_EQ(host::heap_live_blocks(), blocks_before_) << "texts left";
        host::close_all_documents();
    }
    database& drawing() { return current_database(); }

    AcDbBlockTableRecord* space(AcDb::OpenMode mode = AcDb::kForWrite)
    {
        AcDbBlockTable* table = nullptr;
        EXPECT_EQ(acdbCurDwg()->getSymbolTable(table, AcDb::kForRead), Acad::eOk);
        AcDbBlockTableRecord* record = nullptr;
        EXPECT_EQ(table->getAt("*Model_Space", record, mode), Acad::eOk);
        table->close();
        return record;
    }
    // Appends and closes; the identity of the new object.
    AcDbObjectId keep(AcDbEntity* entity)
    {
        AcDbBlockTableRecord* record = space();
        AcDbObjectId id;
        EXPECT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        record->close();
        return id;
    }
    template <class View>
    View* open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead)
    {
        AcDbObject* object = nullptr;
        EXPECT_EQ(acdbOpenAcDbObject(object, id, mode), Acad::eOk);
        return View::cast(object);
    }
    std::string list_of(AcDbObjectId id)
    {
        ads_name name;
        EXPECT_EQ(acdbGetAdsName(name, id), Acad::eOk);
        return list_of(name);
    }
    // Without name, owner and handle, which differ from object to object.
    std::string list_of(const ads_name name)
    {
        std::string out;
        const host::list_ptr list(acdbEntGet(name));
        for (const resbuf* at = list.get(); at; at = at->rbnext)
            if (at->restype != -1 && at->restype != -2 && at->restype != 330 && at->restype != 5)
                out += "(" + std::to_string(at->restype) + " " + host::printed_value(*at) + ")";
        return out;
    }
    std::string last_list()
    {
        ads_name name;
        EXPECT_EQ(acdbEntLast(name), RTNORM);
        return list_of(name);
    }

private:
    std::size_t views_before_ = 0, blocks_before_ = 0;
};

resbuf* made_list(std::initializer_list<resbuf*> nodes)
{
    host::list_builder out;
    for (resbuf* node : nodes)
        out.add(node);
    return out.take();
}
resbuf* point(int code, double x, double y, double z = 0.0)
{
    const double at[3] = {x, y, z};
    return host::rb_point(code, at);
}

// ---- opening

TEST_F(Views, OpeningWhatIsNotThereIsAnError)
{
    AcDbObject* object = reinterpret_cast<AcDbObject*>(1);
    EXPECT_EQ(acdbOpenAcDbObject(object, {}, AcDb::kForRead), Acad::eNullObjectId);
    EXPECT_EQ(object, nullptr);
    const auto number = static_cast<std::uint32_t>(drawing().number());
    EXPECT_EQ(acdbOpenAcDbObject(object, {number, 99999999}, AcDb::kForRead), Acad::eUnknownHandle);
    EXPECT_EQ(acdbOpenAcDbObject(object, {number + 7, 1}, AcDb::kForRead), Acad::eUnknownHandle);
    ads_name name = {0, 0};
    AcDbObjectId id;
    EXPECT_NE(acdbGetObjectId(id, name), Acad::eOk);
    EXPECT_TRUE(id.isNull());
    EXPECT_NE(acdbGetAdsName(name, {}), Acad::eOk);
}

TEST_F(Views, ErasedObjectsOpenOnlyWhenAskedFor)
{
    const AcDbObjectId id = keep(new AcDbLine({0, 0, 0}, {1, 0, 0}));
    auto* line = open<AcDbLine>(id, AcDb::kForWrite);
    EXPECT_EQ(line->erase(), Acad::eOk);
    line->close();
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eWasErased);
    ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForWrite, true), Acad::eOk);
    EXPECT_EQ(object->erase(false), Acad::eOk);
    object->close();
    ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eOk);
    object->close();
}

TEST_F(Views, SeveralMayReadAtOnce)
{
    const AcDbObjectId id = keep(new AcDbLine({0, 0, 0}, {1, 2, 3}));
    auto* one = open<AcDbLine>(id);
    auto* two = open<AcDbLine>(id);
    EXPECT_EQ(one->endPoint().z, 3.0);
    one->close();
    EXPECT_EQ(two->endPoint().y, 2.0);
    two->close();
}

TEST_F(Views, AReadingViewChangesNothing)
{
    auto* line = new AcDbPolyline(2);
    line->addVertexAt(0, {0, 0});
    const AcDbObjectId id = keep(line);
    line = open<AcDbPolyline>(id);
    const std::string before = list_of(id);
    EXPECT_EQ(line->setColorIndex(3), Acad::eNotOpenForWrite);
    EXPECT_EQ(line->addVertexAt(0, {1, 1}), Acad::eNotOpenForWrite);
    EXPECT_EQ(line->erase(), Acad::eNotOpenForWrite);
    line->setClosed(true);
    line->close();
    EXPECT_EQ(list_of(id), before);
}

TEST_F(Views, ObjectsOnALockedLayerDoNotOpenForWriting)
{
    add_layer(drawing(), "SAFE", 1);
    auto* made = new AcDbLine({0, 0, 0}, {1, 0, 0});
    EXPECT_EQ(made->setLayer("safe"), Acad::eOk);
    const AcDbObjectId id = keep(made);
    find(drawing().modify(drawing().record("LAYER", "SAFE")), 70)->integer = 4;
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForWrite), Acad::eOnLockedLayer);
    ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eOk);
    object->close();
}

TEST_F(Views, CastsTellTheClasses)
{
    AcDbObject* object = open<AcDbObject>(keep(new AcDbLine({0, 0, 0}, {1, 0, 0})));
    EXPECT_NE(AcDbEntity::cast(object), nullptr);
    EXPECT_NE(AcDbCurve::cast(object), nullptr);
    EXPECT_NE(AcDbLine::cast(object), nullptr);
    EXPECT_EQ(AcDbPolyline::cast(object), nullptr);
    EXPECT_EQ(AcDb2dPolyline::cast(object), nullptr);
    EXPECT_EQ(AcDbSymbolTable::cast(object), nullptr);
    object->close();
    EXPECT_EQ(AcDbEntity::cast(nullptr), nullptr);
    EXPECT_EQ(AcDbLine::cast(nullptr), nullptr);
}

TEST_F(Views, ObjectsWithoutAClassOfTheirOwnAreEntitiesOrCurves)
{
    const host::list_ptr arc(made_list({host::rb_text(0, "ARC"), point(10, 0, 0), host::rb_real(40, 1.0),
                                        host::rb_real(50, 0.0), host::rb_real(51, 1.0)}));
    ASSERT_EQ(acdbEntMake(arc.get()), RTNORM);
    ads_name name;
    ASSERT_EQ(acdbEntLast(name), RTNORM);
    AcDbObjectId id;
    ASSERT_EQ(acdbGetObjectId(id, name), Acad::eOk);
    auto* curve = open<AcDbCurve>(id);
    ASSERT_NE(curve, nullptr);
    EXPECT_FALSE(curve->isClosed());
    EXPECT_EQ(AcDbLine::cast(curve), nullptr);
    EXPECT_EQ(taken(curve->layer()), "0");
    curve->close();
}

TEST_F(Views, NamesAndIdentitiesAreTwoFormsOfOne)
{
    const AcDbObjectId id = keep(new AcDbLine({0, 0, 0}, {1, 0, 0}));
    ads_name name, last;
    ASSERT_EQ(acdbGetAdsName(name, id), Acad::eOk);
    ASSERT_EQ(acdbEntLast(last), RTNORM);
    EXPECT_EQ(name[0], last[0]);
    EXPECT_EQ(name[1], last[1]);
    AcDbObjectId back;
    ASSERT_EQ(acdbGetObjectId(back, name), Acad::eOk);
    EXPECT_EQ(back, id);
}

// ---- entities

TEST_F(Views, ALineIsWhatAnEntityListMakes)
{
    keep(new AcDbLine({1, 2, 3}, {4, 5, 6}));
    const std::string by_view = last_list();
    const host::list_ptr list(made_list({host::rb_text(0, "LINE"), point(10, 1, 2, 3), point(11, 4, 5, 6)}));
    ASSERT_EQ(acdbEntMake(list.get()), RTNORM);
    EXPECT_EQ(by_view, last_list());
}

TEST_F(Views, NewObjectsGoOnTheCurrentLayer)
{
    add_layer(drawing(), "ROADS", 2);
    set_text(host::current_document(), "CLAYER", "ROADS");
    auto* line = open<AcDbLine>(keep(new AcDbLine({0, 0, 0}, {1, 0, 0})));
    EXPECT_EQ(taken(line->layer()), "ROADS");
    line->close();
}

TEST_F(Views, PropertiesAreReadAndSetBeforeAndAfterAppending)
{
    add_layer(drawing(), "A", 1);
    add_record(drawing(), "LTYPE", "DASHED");
    auto* line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(taken(line->linetype()), "BYLAYER");
        EXPECT_EQ(line->linetypeScale(), 1.0);
        EXPECT_EQ(line->colorIndex(), 256);
        EXPECT_EQ(line->setLayer("a"), Acad::eOk);
        EXPECT_EQ(line->setLinetype("dashed"), Acad::eOk);
        EXPECT_EQ(line->setLinetypeScale(2.5), Acad::eOk);
        EXPECT_EQ(line->setColorIndex(5), Acad::eOk);
        EXPECT_EQ(line->setThickness(0.5), Acad::eOk);
        EXPECT_EQ(taken(line->layer()), "A");
        EXPECT_EQ(taken(line->linetype()), "DASHED");
        EXPECT_EQ(line->linetypeScale(), 2.5);
        EXPECT_EQ(line->colorIndex(), 5);
        EXPECT_EQ(line->thickness(), 0.5);
        EXPECT_EQ(line->setLinetype("ByLayer"), Acad::eOk);
        EXPECT_EQ(line->setLinetypeScale(1.0), Acad::eOk);
        EXPECT_EQ(line->setColorIndex(256), Acad::eOk);
        EXPECT_EQ(line->setThickness(0.0), Acad::eOk);
        if (round == 0) {
            auto* record = space();
            EXPECT_EQ(record->appendAcDbEntity(line), Acad::eOk);
            record->close();
        }
    }
    line->close();
    EXPECT_EQ(last_list().find("(62 "), std::string::npos);
    EXPECT_EQ(last_list().find("(48 "), std::string::npos);
}

TEST_F(Views, WhatTheDrawingLacksIsRefused)
{
    AcDbLine line({0, 0, 0}, {1, 0, 0});
    EXPECT_EQ(line.setLayer("NOWHERE"), Acad::eKeyNotFound);
    EXPECT_EQ(line.setLayer(nullptr), Acad::eKeyNotFound);
    EXPECT_EQ(line.setLinetype("NOWHERE"), Acad::eKeyNotFound);
    EXPECT_EQ(line.setLinetype("ByBlock"), Acad::eOk);
    EXPECT_EQ(line.setLinetypeScale(0.0), Acad::eInvalidInput);
    EXPECT_EQ(line.setColorIndex(257), Acad::eInvalidInput);
    EXPECT_TRUE(line.objectId().isNull());
    AcDbExtents extents;
    EXPECT_EQ(line.getGeomExtents(extents), Acad::eNullObjectId);
}

TEST_F(Views, AViewThatWasNeverAppendedGivesAllBack)
{
    const std::size_t views = host::live_views();
    auto* line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    EXPECT_EQ(host::live_views(), views + 1);
    delete line;
    EXPECT_EQ(host::live_views(), views);
    AcGePoint3dArray none;
    auto* polyline = new AcDb2dPolyline(AcDb::k2dSimplePoly, none);
    auto* vertex = new AcDb2dVertex({1, 1, 0});
    EXPECT_EQ(polyline->appendVertex(vertex), Acad::eOk);
    delete polyline;
    EXPECT_EQ(vertex->position().x, 1.0); // still its maker's
    vertex->close();
    EXPECT_EQ(host::live_views(), views);
}

TEST_F(Views, NothingIsAppendedTwiceOrToAReader)
{
    auto* line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    auto* reader = space(AcDb::kForRead);
    EXPECT_EQ(reader->appendAcDbEntity(line), Acad::eNotOpenForWrite);
    reader->close();
    auto* record = space();
    EXPECT_EQ(record->appendAcDbEntity(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(record->appendAcDbEntity(line), Acad::eOk);
    EXPECT_EQ(record->appendAcDbEntity(line), Acad::eInvalidInput);
    EXPECT_EQ(line->ownerId(), record->objectId());
    record->close();
    line->close();
}

TEST_F(Views, ChangesAreUndone)
{
    const AcDbObjectId id = keep(new AcDbLine({0, 0, 0}, {1, 0, 0}));
    const std::string before = list_of(id);
    drawing().command_boundary("CHANGE");
    auto* line = open<AcDbLine>(id, AcDb::kForWrite);
    line->setColorIndex(1);
    line->close();
    EXPECT_NE(list_of(id), before);
    drawing().undo_back();
    EXPECT_EQ(list_of(id), before);
}

TEST_F(Views, ExtentsAreThoseOfTheStoredObject)
{
    auto* line = open<AcDbLine>(keep(new AcDbLine({5, -1, 2}, {1, 3, 4})));
    AcDbExtents extents;
    ASSERT_EQ(line->getGeomExtents(extents), Acad::eOk);
    EXPECT_EQ(extents.minPoint().x, 1.0);
    EXPECT_EQ(extents.minPoint().y, -1.0);
    EXPECT_EQ(extents.maxPoint().x, 5.0);
    EXPECT_EQ(extents.maxPoint().z, 4.0);
    line->close();
}

// ---- lightweight polylines

TEST_F(Views, ALightweightPolylineIsWhatAnEntityListMakes)
{
    auto* line = new AcDbPolyline;
    line->setElevation(12.5);
    line->addVertexAt(0, {0, 0}, 0.5);
    line->addVertexAt(1, {10, 0}, 0.0, 0.0, 0.0);
    line->addVertexAt(2, {10, 5});
    for (unsigned i = 0; i < 3; ++i)
        line->setWidthsAt(i, 0.25, 0.25);
    line->setClosed(true);
    line->setPlinegen(true);
    line->setThickness(2);
    keep(line);
    const std::string by_view = last_list();
    host::list_builder list;
    list.add(made_list({host::rb_text(0, "LWPOLYLINE"), host::rb_text(100, "AcDbEntity"),
                        host::rb_text(100, "AcDbPolyline"), host::rb_int(90, 3), host::rb_int(70, 129),
                        host::rb_real(43, 0.25), host::rb_real(38, 12.5), host::rb_real(39, 2.0)}));
    list.add(made_list({point(10, 0, 0), host::rb_real(42, 0.5), point(10, 10, 0), point(10, 10, 5)}));
    const host::list_ptr whole(list.take());
    ASSERT_EQ(acdbEntMake(whole.get()), RTNORM);
    EXPECT_EQ(by_view, last_list());
}

TEST_F(Views, VerticesOfALightweightPolylineAreRead)
{
    auto* line = new AcDbPolyline;
    line->setElevation(7);
    line->addVertexAt(0, {1, 2}, 0.5);
    line->addVertexAt(1, {3, 4});
    line->addVertexAt(1, {9, 9}, -1.0); // between them
    const AcDbObjectId id = keep(line);
    line = open<AcDbPolyline>(id);
    EXPECT_EQ(line->numVerts(), 3u);
    AcGePoint3d at;
    double bulge = 9;
    ASSERT_EQ(line->getPointAt(1, at), Acad::eOk);
    EXPECT_EQ(at.x, 9.0);
    EXPECT_EQ(at.z, 7.0);
    ASSERT_EQ(line->getBulgeAt(1, bulge), Acad::eOk);
    EXPECT_EQ(bulge, -1.0);
    ASSERT_EQ(line->getBulgeAt(2, bulge), Acad::eOk);
    EXPECT_EQ(bulge, 0.0);
    EXPECT_EQ(line->getPointAt(3, at), Acad::eInvalidIndex);
    EXPECT_EQ(line->getBulgeAt(3, bulge), Acad::eInvalidIndex);
    EXPECT_FALSE(line->isClosed());
    EXPECT_FALSE(line->hasPlinegen());
    EXPECT_EQ(line->elevation(), 7.0);
    line->close();
}

TEST_F(Views, AStoredLightweightPolylineGrowsAtItsEnd)
{
    auto* line = new AcDbPolyline;
    line->addVertexAt(0, {0, 0});
    const AcDbObjectId id = keep(line);
    line = open<AcDbPolyline>(id, AcDb::kForWrite);
    for (unsigned i = 1; i < 100; ++i)
        ASSERT_EQ(line->addVertexAt(i, {i * 1.0, 1}, 0.125), Acad::eOk);
    EXPECT_EQ(line->addVertexAt(101, {0, 0}), Acad::eInvalidIndex);
    AcGePoint3d at;
    ASSERT_EQ(line->getPointAt(99, at), Acad::eOk);
    EXPECT_EQ(at.x, 99.0);
    line->close();
    EXPECT_NE(list_of(id).find("(90 100)"), std::string::npos);
    EXPECT_EQ(list_of(id).substr(list_of(id).rfind("(210")), "(210 (0.0 0.0 1.0))");
}

TEST_F(Views, AWidthOfAllGoesWhenOneVertexHasAnother)
{
    auto* line = new AcDbPolyline;
    double width = 9;
    EXPECT_EQ(line->getConstantWidth(width), Acad::eOk);
    EXPECT_EQ(width, 0.0);
    line->addVertexAt(0, {0, 0}, 0, 2, 2);
    line->addVertexAt(1, {1, 0}, 0, 2, 2);
    EXPECT_EQ(line->getConstantWidth(width), Acad::eOk);
    EXPECT_EQ(width, 2.0);
    const AcDbObjectId id = keep(line);
    EXPECT_NE(list_of(id).find("(43 2.0)"), std::string::npos);
    line = open<AcDbPolyline>(id, AcDb::kForWrite);
    EXPECT_EQ(line->addVertexAt(2, {2, 0}), Acad::eOk); // with the width of all
    EXPECT_EQ(line->getConstantWidth(width), Acad::eOk);
    EXPECT_EQ(width, 2.0);
    EXPECT_EQ(line->setWidthsAt(1, 2, 3), Acad::eOk);
    EXPECT_EQ(line->getConstantWidth(width), Acad::eInvalidInput);
    EXPECT_EQ(width, 0.0);
    EXPECT_EQ(line->setWidthsAt(9, 1, 1), Acad::eInvalidIndex);
    EXPECT_EQ(line->setWidthsAt(0, -1, 1), Acad::eInvalidInput);
    line->close();
    EXPECT_EQ(list_of(id).find("(43 "), std::string::npos);
}

TEST_F(Views, AChangeFromOutsideIsSeenByAnOpenView)
{
    auto* line = new AcDbPolyline;
    for (unsigned i = 0; i < 3; ++i)
        line->addVertexAt(i, {i * 1.0, 0});
    const AcDbObjectId id = keep(line);
    line = open<AcDbPolyline>(id);
    EXPECT_EQ(line->numVerts(), 3u);
    ads_name name;
    acdbGetAdsName(name, id);
    host::list_ptr list(made_list({host::rb_name(-1, name), host::rb_text(0, "LWPOLYLINE"),
                                   host::rb_text(100, "AcDbEntity"), host::rb_text(100, "AcDbPolyline"),
                                   host::rb_int(90, 2), point(10, 40, 40), point(10, 50, 50)}));
    ASSERT_EQ(acdbEntMod(list.get()), RTNORM);
    EXPECT_EQ(line->numVerts(), 2u);
    AcGePoint3d at;
    ASSERT_EQ(line->getPointAt(1, at), Acad::eOk);
    EXPECT_EQ(at.x, 50.0);
    line->close();
}

TEST_F(Views, ManyVerticesCostAsMuchEachAsFew)
{
    const auto work = [this](int size) {
        const auto count = static_cast<unsigned>(size);
        auto* line = new AcDbPolyline;
        for (unsigned i = 0; i < count; ++i) {
            line->addVertexAt(line->numVerts(), {i * 1.0, 0}, 0, 0, 0);
            line->setWidthsAt(i, 1, 1);
        }
        line = open<AcDbPolyline>(keep(line));
        double sum = 0;
        for (unsigned i = line->numVerts(); i-- > 0;) {
            AcGePoint3d at;
            double bulge;
            line->getBulgeAt(i, bulge);
            line->getPointAt(i, at);
            sum += at.x;
        }
        EXPECT_EQ(sum, (count - 1.0) * count / 2);
        line->close();
    };
    EXPECT_TRUE(grows_in_proportion(work, 200000));
}

TEST_F(Views, StoredPolylinesGrowAtTheSameCostEach)
{
    const auto light = [this](int size) {
        const auto count = static_cast<unsigned>(size);
        auto* line = new AcDbPolyline;
        line->addVertexAt(0, {0, 0});
        line = open<AcDbPolyline>(keep(line), AcDb::kForWrite);
        for (unsigned i = 1; i < count; ++i)
            line->addVertexAt(i, {i * 1.0, 0});
        EXPECT_EQ(line->numVerts(), count);
        line->close();
    };
    EXPECT_TRUE(grows_in_proportion(light, 50000));

    const auto heavy = [this](int size) {
        AcGePoint3dArray none;
        auto* line = open<AcDb3dPolyline>(keep(new AcDb3dPolyline(AcDb::k3dSimplePoly, none)), AcDb::kForWrite);
        for (int i = 0; i < size; ++i) {
            auto* vertex = new AcDb3dPolylineVertex({i * 1.0, 0, 0});
            EXPECT_EQ(line->appendVertex(vertex), Acad::eOk);
            vertex->close();
        }
        double sum = 0;
        AcDbObjectIterator* walk = line->vertexIterator();
        for (; !walk->done(); walk->step()) {
            auto* vertex = open<AcDb3dPolylineVertex>(walk->objectId());
            sum += vertex->position().x;
            vertex->close();
        }
        delete walk;
        line->close();
        EXPECT_EQ(sum, (size - 1.0) * size / 2);
    };
    EXPECT_TRUE(grows_in_proportion(heavy, 50000));
}

// ---- polylines with vertices

TEST_F(Views, APolylineWithAVertexNowhereIsNotAppended)
{
    const std::size_t before = drawing().size();
    for (const double bad : {std::nan(""), HUGE_VAL}) {
        AcGePoint3dArray points;
        for (const double x : {0.0, bad, 5.0})
            points.append({x, 1, 0});
        auto* light = new AcDbPolyline();
        for (unsigned i = 0; i < 3; ++i)
            light->addVertexAt(i, {points[static_cast<int>(i)].x, 1});
        AcDbEntity* const lines[] = {new AcDb2dPolyline(AcDb::k2dSimplePoly, points),
                                     new AcDb3dPolyline(AcDb::k3dSimplePoly, points), light};
        for (AcDbEntity* line : lines) {
            AcDbBlockTableRecord* record = space();
            EXPECT_EQ(record->appendAcDbEntity(line), Acad::eInvalidInput);
            record->close();
            delete line;
        }
    }
    EXPECT_EQ(drawing().size(), before) << "not a part of it is stored";
}

TEST_F(Views, A2dPolylineIsWhatASequenceOfListsMakes)
{
    AcGePoint3dArray none(0, 8);
    auto* line = new AcDb2dPolyline(AcDb::k2dSimplePoly, none, 5.0, true, 0.5, 0.75);
    auto* first = new AcDb2dVertex({0, 0, 5}, 0.25);
    first->setStartWidth(0.5);
    first->setEndWidth(0.75);
    EXPECT_EQ(line->appendVertex(first), Acad::eOk);
    first->close();
    auto* second = new AcDb2dVertex({10, 0, 5}, 0, 0.5, 0.75);
    EXPECT_EQ(line->appendVertex(second), Acad::eOk);
    line->setLinetypeGenerationOn();
    const AcDbObjectId id = keep(line);
    EXPECT_FALSE(second->objectId().isNull()); // stored with its polyline
    EXPECT_EQ(second->ownerId(), id);
    second->close();

    const resbuf* const lists[] = {
        made_list({host::rb_text(0, "POLYLINE"), host::rb_int(66, 1), point(10, 0, 0, 5), host::rb_int(70, 129),
                   host::rb_real(40, 0.5), host::rb_real(41, 0.75)}),
        made_list({host::rb_text(0, "VERTEX"), point(10, 0, 0, 5), host::rb_real(40, 0.5),
                   host::rb_real(41, 0.75), host::rb_real(42, 0.25)}),
        made_list(
            {host::rb_text(0, "VERTEX"), point(10, 10, 0, 5), host::rb_real(40, 0.5), host::rb_real(41, 0.75)}),
        made_list({host::rb_text(0, "SEQEND")}),
    };
    for (const resbuf* list : lists) {
        EXPECT_EQ(acdbEntMake(list), RTNORM);
        acutRelRb(const_cast<resbuf*>(list));
    }
    ads_name by_view, by_list;
    acdbGetAdsName(by_view, id);
    acdbEntLast(by_list);
    for (int part = 0; part < 4; ++part) {
        EXPECT_EQ(list_of(by_view), list_of(by_list)) << "part " << part;
        EXPECT_EQ(acdbEntNext(by_list, by_list), part < 3 ? RTNORM : RTERROR);
        acdbEntNext(by_view, by_view);
    }
}

TEST_F(Views, VerticesAreWalkedInOrder)
{
    AcGePoint3dArray points;
    AcGeDoubleArray bulges;
    for (int i = 0; i < 5; ++i) {
        points.append({i * 1.0, 0, 99});
        bulges.append(i * 0.1);
    }
    const AcDbObjectId id = keep(new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 3.0, false, 0, 0, &bulges));
    auto* line = open<AcDb2dPolyline>(id);
    AcDbObjectIterator* walk = line->vertexIterator();
    int count = 0;
    for (; !walk->done(); walk->step(), ++count) {
        auto* vertex = open<AcDb2dVertex>(walk->objectId());
        ASSERT_NE(vertex, nullptr);
        EXPECT_EQ(vertex->bulge(), count * 0.1);
        EXPECT_EQ(vertex->vertexType(), AcDb::k2dVertex);
        const AcGePoint3d at = line->vertexPosition(*vertex);
        EXPECT_EQ(at.x, count);
        EXPECT_EQ(at.z, 3.0); // the polyline's elevation
        EXPECT_EQ(vertex->position().z, 99.0);
        vertex->close();
    }
    delete walk;
    EXPECT_EQ(count, 5);
    line->close();
}

TEST_F(Views, PolylineTypesComeBack)
{
    AcGePoint3dArray none;
    for (const auto type :
         {AcDb::k2dSimplePoly, AcDb::k2dFitCurvePoly, AcDb::k2dQuadSplinePoly, AcDb::k2dCubicSplinePoly}) {
        auto* line =
            open<AcDb2dPolyline>(keep(new AcDb2dPolyline(type, none, 1.0, true, 2.0, 3.0)), AcDb::kForWrite);
        EXPECT_EQ(line->polyType(), type);
        EXPECT_TRUE(line->isClosed());
        EXPECT_EQ(line->elevation(), 1.0);
        EXPECT_EQ(line->defaultStartWidth(), 2.0);
        EXPECT_EQ(line->defaultEndWidth(), 3.0);
        EXPECT_EQ(line->setDefaultStartWidth(4.0), Acad::eOk);
        EXPECT_EQ(line->setDefaultEndWidth(5.0), Acad::eOk);
        EXPECT_EQ(line->setThickness(6.0), Acad::eOk);
        line->setLinetypeGenerationOn();
        EXPECT_TRUE(line->isLinetypeGenerationOn());
        line->setLinetypeGenerationOff();
        EXPECT_FALSE(line->isLinetypeGenerationOn());
        EXPECT_EQ(line->defaultStartWidth() + line->defaultEndWidth() + line->thickness(), 15.0);
        EXPECT_EQ(line->polyType(), type);
        line->close();
    }
    for (const auto type : {AcDb::k3dSimplePoly, AcDb::k3dQuadSplinePoly, AcDb::k3dCubicSplinePoly}) {
        auto* line = open<AcDb3dPolyline>(keep(new AcDb3dPolyline(type, none, type != AcDb::k3dSimplePoly)));
        EXPECT_EQ(line->polyType(), type);
        EXPECT_EQ(line->isClosed(), type != AcDb::k3dSimplePoly);
        line->close();
    }
}

TEST_F(Views, A3dPolylineKeepsEachElevation)
{
    AcGePoint3dArray none;
    auto* line = new AcDb3dPolyline(AcDb::k3dSimplePoly, none);
    for (int i = 0; i < 3; ++i) {
        auto* vertex = new AcDb3dPolylineVertex({i * 1.0, 0, i * 10.0});
        EXPECT_EQ(line->appendVertex(vertex), Acad::eOk);
        EXPECT_EQ(line->appendVertex(vertex), Acad::eInvalidInput); // it is the polyline's
        vertex->close();
    }
    line = open<AcDb3dPolyline>(keep(line), AcDb::kForWrite);
    auto* late = new AcDb3dPolylineVertex({3, 0, 30});
    EXPECT_EQ(line->appendVertex(late), Acad::eOk);
    late->close();
    AcDbObjectIterator* walk = line->vertexIterator();
    int count = 0;
    for (; !walk->done(); walk->step(), ++count) {
        auto* vertex = open<AcDb3dPolylineVertex>(walk->objectId());
        EXPECT_EQ(vertex->position().z, count * 10.0);
        EXPECT_EQ(vertex->vertexType(), AcDb::k3dSimpleVertex);
        vertex->close();
    }
    delete walk;
    EXPECT_EQ(count, 4);
    line->close();
}

TEST_F(Views, VertexTypesFollowTheFlags)
{
    struct {
        int flags, type_2d, type_3d;
    } const cases[] = {{0, 0, 0}, {1, 3, 0}, {2, 0, 0}, {8, 2, 2}, {16, 1, 1}};
    AcGePoint3dArray points;
    points.append({0, 0, 0});
    const AcDbObjectId flat = keep(new AcDb2dPolyline(AcDb::k2dSimplePoly, points));
    const AcDbObjectId spatial = keep(new AcDb3dPolyline(AcDb::k3dSimplePoly, points));
    const auto number = static_cast<std::uint32_t>(drawing().number());
    for (const auto& c : cases) {
        const object_id v2 = first_child(drawing(), flat.index), v3 = first_child(drawing(), spatial.index);
        find(drawing().modify(v2), 70)->integer = c.flags;
        find(drawing().modify(v3), 70)->integer = c.flags | 32;
        auto* one = open<AcDb2dVertex>({number, v2});
        auto* two = open<AcDb3dPolylineVertex>({number, v3});
        EXPECT_EQ(static_cast<int>(one->vertexType()), c.type_2d) << c.flags;
        EXPECT_EQ(static_cast<int>(two->vertexType()), c.type_3d) << c.flags;
        one->close();
        two->close();
    }
}

TEST_F(Views, VerticesOfATurnedPolylineArePlacedInTheWorld)
{
    AcGePoint3dArray points;
    points.append({2, 3, 0});
    const AcDbObjectId id = keep(new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 5.0));
    group* normal = find(drawing().modify(id.index), 210);
    ASSERT_TRUE(normal);
    normal->point[0] = 0;
    normal->point[1] = -1;
    normal->point[2] = 0; // looking along y: x stays, the plane's y is up
    auto* line = open<AcDb2dPolyline>(id);
    AcDbObjectIterator* walk = line->vertexIterator();
    auto* vertex = open<AcDb2dVertex>(walk->objectId());
    const AcGePoint3d at = line->vertexPosition(*vertex);
    EXPECT_NEAR(at.x, 2.0, 1e-12);
    EXPECT_NEAR(at.y, -5.0, 1e-12);
    EXPECT_NEAR(at.z, 3.0, 1e-12);
    delete walk;
    vertex->close();
    line->close();
}

TEST_F(Views, VerticesOfATurnedLightweightPolylineArePlacedInTheWorld)
{
    auto* line = new AcDbPolyline;
    line->setElevation(5);
    line->addVertexAt(0, {2, 3});
    line->addVertexAt(1, {4, 6}, 0.5);
    const AcDbObjectId id = keep(line);
    group* normal = find(drawing().modify(id.index), 210);
    ASSERT_TRUE(normal);
    const group behind = *normal;
    for (const bool in_front : {false, true}) {
        group_list& groups = drawing().modify(id.index);
        std::erase_if(groups, [](const group& g) { return g.code == 210; });
        group seen_from_below = behind;
        seen_from_below.point[2] = -1; // what mirroring leaves
        if (in_front)
            groups.insert(groups.begin() + (find(groups, 10) - groups.data()), seen_from_below);
        else
            groups.push_back(seen_from_below);
        line = open<AcDbPolyline>(id);
        AcGePoint3d at;
        ASSERT_EQ(line->getPointAt(1, at), Acad::eOk);
        EXPECT_EQ(at.x, -4.0) << in_front;
        EXPECT_EQ(at.y, 6.0) << in_front;
        EXPECT_EQ(at.z, -5.0) << in_front;
        EXPECT_EQ(line->elevation(), 5.0);
        line->close();
    }
}

// ---- tables

TEST_F(Views, ALayerIsAddedWithAllThatALayerHas)
{
    AcDbLayerTable* table = nullptr;
    ASSERT_EQ(acdbCurDwg()->getSymbolTable(table, AcDb::kForWrite), Acad::eOk);
    EXPECT_FALSE(table->has("TREES"));
    auto* layer = new AcDbLayerTableRecord;
    EXPECT_EQ(layer->setName("TREES"), Acad::eOk);
    EXPECT_EQ(layer->setIsFrozen(false), Acad::eOk);
    layer->setIsOff(false);
    layer->setVPDFLT(false);
    layer->setIsLocked(false);
    AcCmColor color;
    color.setColorIndex(3);
    layer->setColor(color);
    AcDbLinetypeTable* linetypes = nullptr;
    ASSERT_EQ(acdbCurDwg()->getSymbolTable(linetypes, AcDb::kForRead), Acad::eOk);
    AcDbObjectId continuous, id;
    EXPECT_EQ(linetypes->getAt("CONTINUOUS", continuous), Acad::eOk);
    linetypes->close();
    layer->setLinetypeObjectId(continuous);
    EXPECT_EQ(table->add(id, layer), Acad::eOk);
    EXPECT_EQ(layer->objectId(), id);
    EXPECT_TRUE(table->has("trees"));
    layer->close();
    auto* again = new AcDbLayerTableRecord;
    again->setName("Trees");
    EXPECT_EQ(table->add(again), Acad::eDuplicateKey);
    delete again;
    table->close();
    EXPECT_EQ(applyCurDwgLayerTableChanges(), Acad::eOk);

    const object_id by_hand = add_layer(drawing(), "HEDGES", 3);
    const group_list &one = drawing().at(id.index).groups, &other = drawing().at(by_hand).groups;
    ASSERT_EQ(one.size(), other.size());
    for (std::size_t i = 0; i < one.size(); ++i)
        EXPECT_EQ(one[i].code, other[i].code) << i;
}

TEST_F(Views, LayerStatesAreSetEachByItself)
{
    const object_id layer = add_layer(drawing(), "L", 5);
    const auto flags = [&] { return int_of(drawing().at(layer).groups, 70, -1); };
    AcDbLayerTable* table = nullptr;
    acdbCurDwg()->getSymbolTable(table, AcDb::kForRead);
    AcDbLayerTableRecord* record = nullptr;
    ASSERT_EQ(table->getAt("l", record, AcDb::kForWrite), Acad::eOk);
    table->close();
    EXPECT_EQ(record->setIsFrozen(true), Acad::eOk);
    EXPECT_EQ(flags(), 1);
    record->setVPDFLT(true);
    EXPECT_EQ(flags(), 3);
    record->setIsLocked(true);
    EXPECT_EQ(flags(), 7);
    record->setIsFrozen(false);
    EXPECT_EQ(flags(), 6);
    record->setIsOff(true);
    EXPECT_EQ(int_of(drawing().at(layer).groups, 62, 0), -5);
    EXPECT_EQ(record->color().colorIndex(), 5);
    AcCmColor color;
    color.setColorIndex(2);
    record->setColor(color);
    EXPECT_EQ(int_of(drawing().at(layer).groups, 62, 0), -2);
    record->setIsOff(false);
    EXPECT_EQ(int_of(drawing().at(layer).groups, 62, 0), 2);
    EXPECT_EQ(taken(record->name()), "L");
    EXPECT_EQ(record->setName("0"), Acad::eDuplicateKey);
    for (const char* bad : {"", "A:B", "A*", "A|B", "A\nB", "`"})
        EXPECT_EQ(record->setName(bad), Acad::eInvalidInput) << bad;
    EXPECT_EQ(record->setName("M"), Acad::eOk);
    record->close();
    EXPECT_EQ(drawing().record("LAYER", "m"), layer);
}

TEST_F(Views, TheCurrentLayerIsNotFrozen)
{
    AcDbLayerTable* table = nullptr;
    acdbCurDwg()->getSymbolTable(table, AcDb::kForRead);
    AcDbLayerTableRecord* record = nullptr;
    ASSERT_EQ(table->getAt("0", record, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(record->setIsFrozen(true), Acad::eNotApplicable);
    record->close();
    AcDbLayerTableRecord* none = reinterpret_cast<AcDbLayerTableRecord*>(1);
    EXPECT_EQ(table->getAt("NONE", none, AcDb::kForRead), Acad::eKeyNotFound);
    EXPECT_EQ(none, nullptr);
    EXPECT_FALSE(table->has(nullptr));
    table->close();
}

TEST_F(Views, ALinetypeHasItsDashes)
{
    AcDbLinetypeTable* table = nullptr;
    ASSERT_EQ(acdbCurDwg()->getSymbolTable(table, AcDb::kForWrite), Acad::eOk);
    auto* record = new AcDbLinetypeTableRecord;
    EXPECT_EQ(record->setComments(""), Acad::eOk);
    EXPECT_EQ(record->setPatternLength(0.75), Acad::eOk);
    EXPECT_EQ(record->setNumDashes(2), Acad::eOk);
    EXPECT_EQ(record->setDashLengthAt(0, 0.5), Acad::eOk);
    EXPECT_EQ(record->setDashLengthAt(1, -0.25), Acad::eOk);
    EXPECT_EQ(record->setDashLengthAt(2, 1), Acad::eInvalidIndex);
    EXPECT_EQ(record->setNumDashes(13), Acad::eInvalidInput);
    EXPECT_EQ(record->setName("FENCE"), Acad::eOk);
    AcDbObjectId id;
    ASSERT_EQ(table->add(id, record), Acad::eOk);
    table->close();
    const auto tail = [&] {
        std::string out;
        bool on = false;
        for (const group& each : drawing().at(id.index).groups) {
            on = on || each.code == 72;
            if (on)
                out +=
                    std::to_string(each.code) + (each.code == 49 ? "=" + std::to_string(each.real) : "") + " ";
        }
        return out;
    };
    EXPECT_EQ(tail(), "72 73 40 49=0.500000 74 49=-0.250000 74 ");
    EXPECT_EQ(record->setNumDashes(3), Acad::eOk); // stored by now
    EXPECT_EQ(record->setDashLengthAt(2, -1), Acad::eOk);
    EXPECT_EQ(tail(), "72 73 40 49=0.000000 74 49=0.000000 74 49=-1.000000 74 ");
    record->close();
}

TEST_F(Views, ATextStyleIsAddedAndMadeCurrent)
{
    AcDbTextStyleTable* table = nullptr;
    ASSERT_EQ(acdbCurDwg()->getSymbolTable(table, AcDb::kForWrite), Acad::eOk);
    auto* record = new AcDbTextStyleTableRecord;
    record->setName("NOTES");
    AcDbObjectId id;
    ASSERT_EQ(table->add(id, record), Acad::eOk);
    table->close();
    EXPECT_EQ(record->setTextSize(2.5), Acad::eOk);
    EXPECT_EQ(record->textSize(), 2.5);
    EXPECT_EQ(record->setTextSize(-1), Acad::eInvalidInput);
    record->close();
    EXPECT_EQ(acdbCurDwg()->setTextstyle(id), Acad::eOk);
    EXPECT_EQ(acdbCurDwg()->textstyle(), id);
    EXPECT_EQ(text_variable(host::current_document(), "TEXTSTYLE"), "NOTES");
}

TEST_F(Views, RecordsGoIntoTablesOfTheirKindOpenForWriting)
{
    AcDbLayerTable* reader = nullptr;
    acdbCurDwg()->getSymbolTable(reader, AcDb::kForRead);
    AcDbLayerTableRecord layer;
    AcDbObjectId id;
    layer.setName("X");
    EXPECT_EQ(reader->add(id, &layer), Acad::eNotOpenForWrite);
    reader->close();
    AcDbLayerTable* writer = nullptr;
    acdbCurDwg()->getSymbolTable(writer, AcDb::kForWrite);
    AcDbLayerTableRecord nameless;
    EXPECT_EQ(writer->add(&nameless), Acad::eInvalidInput);
    EXPECT_EQ(writer->add(nullptr), Acad::eInvalidInput);
    writer->close();
    EXPECT_TRUE(id.isNull());
}

// ---- the drawing

TEST_F(Views, TheCurrentLayerIsARecord)
{
    const object_id layer = add_layer(drawing(), "PATHS", 4);
    const auto number = static_cast<std::uint32_t>(drawing().number());
    AcDbDatabase* now = acdbCurDwg();
    EXPECT_EQ(now->clayer().index, drawing().record("LAYER", "0"));
    EXPECT_EQ(now->setClayer({number, layer}), Acad::eOk);
    EXPECT_EQ(now->clayer().index, layer);
    EXPECT_EQ(now->setClayer({}), Acad::eNullObjectId);
    EXPECT_EQ(now->setClayer({number + 1, layer}), Acad::eUnknownHandle);
    EXPECT_EQ(now->setClayer({number, drawing().record("STYLE", "STANDARD")}), Acad::eNotThatKindOfClass);
    find(drawing().modify(drawing().record("LAYER", "0")), 70)->integer = 1;
    EXPECT_EQ(now->setClayer({number, drawing().record("LAYER", "0")}), Acad::eNotApplicable);
    EXPECT_EQ(now->clayer().index, layer);
}

TEST_F(Views, EachDrawingHasItsOwnDatabase)
{
    AcDbDatabase* first = acdbCurDwg();
    EXPECT_TRUE(first->tilemode());
    set_int(host::current_document(), "TILEMODE", 0);
    EXPECT_FALSE(first->tilemode());
    auto* line = new AcDbLine({0, 0, 0}, {1, 0, 0}); // begun here
    add_layer(drawing(), "HERE", 1);
    line->setLayer("HERE");
    host::open_document();
    EXPECT_NE(acdbCurDwg(), first);
    EXPECT_TRUE(acdbCurDwg()->tilemode());
    add_layer(drawing(), "HERE", 1);
    const AcDbObjectId id = keep(line); // and appended there
    auto* stored = open<AcDbLine>(id);
    EXPECT_EQ(taken(stored->layer()), "HERE");
    stored->close();
    EXPECT_EQ(id.database, static_cast<std::uint32_t>(drawing().number()));
}

TEST_F(Views, AViewOutlivesItsDrawingWithoutHarm)
{
    auto* line = open<AcDbLine>(keep(new AcDbLine({1, 2, 3}, {4, 5, 6})), AcDb::kForWrite);
    host::close_document(host::current_document());
    EXPECT_EQ(line->endPoint().x, 0.0);
    EXPECT_EQ(line->layer(), nullptr);
    EXPECT_NE(line->setColorIndex(1), Acad::eOk);
    EXPECT_NE(line->erase(), Acad::eOk);
    line->close();
    EXPECT_EQ(acdbCurDwg(), nullptr);
}

TEST_F(Views, AppendingAndAddingAreTraced)
{
    const temporary_directory tmp;
    const std::string path = tmp.path + "/views.trace";
    ASSERT_TRUE(host::trace_to(path));
    keep(new AcDbLine({0, 0, 0}, {1, 0, 0}));
    AcDbLayerTable* table = nullptr;
    acdbCurDwg()->getSymbolTable(table, AcDb::kForWrite);
    auto* layer = new AcDbLayerTableRecord;
    layer->setName("T");
    table->add(layer);
    layer->close();
    table->close();
    host::trace_to("");
    std::ifstream file(path);
    std::string first, second;
    std::getline(file, first);
    std::getline(file, second);
    EXPECT_EQ(first.find("appendAcDbEntity ((0 . \"LINE\")"), 0u) << first;
    EXPECT_NE(first.find("(10 0.0 0.0 0.0) (11 1.0 0.0 0.0)"), std::string::npos) << first;
    EXPECT_EQ(first.substr(first.size() - 7), " -> eOk");
    EXPECT_EQ(second.find("AcDbLayerTable::add ((0 . \"LAYER\")"), 0u) << second;
}

} // namespace
