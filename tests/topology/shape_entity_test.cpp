// Objects of the host's drawing as shapes.
#include "drawing/tables.h"
#include "tests/drawing/drawing_case.h"
#include "topology/shape_net.h"
#include "topology/walk.h"

namespace
{

class ShapeEntity : public drawing_case
{
protected:
    ShapeNet net{3};

    void add(const std::string& list) { net.add_entity(name_of(made(list))); }
    std::string edges() const
    {
        std::string text;
        for (std::int32_t i = first_of(net.edges); i != 0; i = net.edges.next(i)) {
            const ShapeEdge& e = *net.edge(i);
            text += (text.empty() ? "" : " ") + std::to_string(e.node1) + "-" + std::to_string(e.node2);
            if (e.bulge != 0)
                text += "(" + std::to_string(e.bulge).substr(0, 4) + ")";
        }
        return text;
    }
};

TEST_F(ShapeEntity, LineIsOneEdge)
{
    const auto line = made("0 LINE;8 0;62 3;10 1,2,3;11 4,5,6");
    net.add_entity(name_of(line));
    EXPECT_EQ(edges(), "1-2");
    EXPECT_EQ(net.node(2)->z, 6);
    const ShapeObj& shape = *net.shape(1);
    EXPECT_EQ(shape.kind, ShapeKind::LINE);
    EXPECT_EQ(shape.color, 3);
    EXPECT_EQ(shape.closed, 0);
    EXPECT_EQ(shape.entity[0], name_of(line).name[0]);
    EXPECT_EQ(shape.entity[1], name_of(line).name[1]);
    EXPECT_EQ(net.edge(1)->shapes.find(1), 1);
}

TEST_F(ShapeEntity, ColourByLayerIsThatOfTheLayer)
{
    char layer[] = "WALLS";
    ASSERT_EQ(layer_make_current(layer, 5), Acad::eOk);
    add("0 LINE;8 WALLS;10 1,2,3;11 4,5,6");
    EXPECT_EQ(net.shape(1)->color, 5);
    add("0 LINE;8 WALLS;62 1;10 1,2,3;11 4,5,6");
    EXPECT_EQ(net.shape(2)->color, 1);
}

TEST_F(ShapeEntity, LightweightPolylineBringsItsArcsAndItsClosure)
{
    add("0 LWPOLYLINE;100 AcDbEntity;8 0;62 2;100 AcDbPolyline;90 3;70 1;38 7;10 0,0;42 0.25;10 4,0;42 0;10 "
        "4,4;42 -0.5");
    EXPECT_EQ(edges(), "1-2(0.25) 2-3 3-1(-0.5)");
    EXPECT_EQ(net.node(1)->z, 7);
    EXPECT_EQ(net.shape(1)->closed, 1);
    EXPECT_EQ(net.shape(1)->color, 2);
    EXPECT_EQ(net.shape(1)->kind, ShapeKind::POLYLINE);
    add("0 LWPOLYLINE;100 AcDbEntity;8 0;62 2;100 AcDbPolyline;90 2;70 0;10 20,0;10 24,0");
    EXPECT_EQ(net.shape(2)->closed, 0);
}

TEST_F(ShapeEntity, OldPolylineIsReadByItsVertices)
{
    ASSERT_EQ(make("0 POLYLINE;66 1;70 0"), RTNORM);
    for (const char* v : {"0 VERTEX;10 0,0;42 0.5", "0 VERTEX;10 3,0", "0 VERTEX;10 3,3"})
        ASSERT_EQ(make(v), RTNORM);
    ASSERT_EQ(make("0 SEQEND"), RTNORM);
    net.add_entity(name_of(last()));
    EXPECT_EQ(edges(), "1-2(0.50) 2-3");
    EXPECT_EQ(net.shape(1)->kind, ShapeKind::POLYLINE);
}

TEST_F(ShapeEntity, FacesAreOpenChains)
{
    add("0 3DFACE;8 0;10 0,0,0;11 4,0,0;12 4,4,0;13 0,4,0");
    EXPECT_EQ(net.shape(1)->kind, ShapeKind::CLOSED_FACE);
    EXPECT_EQ(edges(), "1-2 2-3 3-4");
}

TEST_F(ShapeEntity, FaceBackAtItsFirstCornerHasThree)
{
    add("0 3DFACE;8 0;10 0,0,0;11 4,0,0;12 4,4,0;13 0,0,0");
    EXPECT_EQ(net.shape(1)->kind, ShapeKind::OPEN_FACE);
    EXPECT_EQ(edges(), "1-2 2-3");
}

// The host takes the third corner for a fourth one that isn't given.
TEST_F(ShapeEntity, FaceWithItsThirdCornerTwiceHasAnEdgeWithoutExtent)
{
    add("0 3DFACE;8 0;10 0,0,0;11 4,0,0;12 4,4,0");
    EXPECT_EQ(net.shape(1)->kind, ShapeKind::CLOSED_FACE);
    EXPECT_EQ(edges(), "1-2 2-3 3-3");
}

TEST_F(ShapeEntity, OtherObjectsMakeNoShape)
{
    add("0 CIRCLE;8 0;10 0,0,0;40 5");
    const ads_name none = {0, 0};
    net.add_entity(none);
    EXPECT_EQ(net.shapes.count, 0);
    EXPECT_EQ(printed, "");
}

} // namespace
