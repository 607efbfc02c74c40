#include "tests/growth.h"
#include "tests/topology/surface_fixture.h"
#include "tests/topology/surface_host.h"

namespace
{

class EdgeFiles : public Surface
{
protected:
    void TearDown() override
    {
        EXPECT_EQ(surface_host::open_files(), 0);
        Surface::TearDown();
    }
};

int load(SurfaceNet* net, const std::string& text, int make_triangles = 0)
{
    surface_host::put_file("ground.txt", text);
    return net->load_edges("ground.txt", make_triangles);
}

TEST_F(EdgeFiles, AFileOfFourEdgesBecomesTwoTriangles)
{
    SurfaceNet net;
    EXPECT_EQ(load(&net,
                   "title\n"
                   "A 0 0 1\nA 10 0 2\n"
                   "A 10 0 2\nB 10 10.5 3\n"
                   "* 10 10.5 3\n* 0 10 4\n"
                   "  0 10 4\n# 0 0 1\n",
                   1),
              1);
    EXPECT_EQ(printed_text(), "\nLoading edges...\nLoaded 4 points and 4 edges\nCreated 2 tris\n");
    EXPECT_EQ(net.node(3)->y, 10.5);
}

TEST_F(EdgeFiles, AMissingFileIsTold)
{
    SurfaceNet net;
    EXPECT_EQ(net.load_edges("nowhere.txt", 1), 0);
    EXPECT_EQ(printed_text(), "File 'nowhere.txt' not found\n");
}

TEST_F(EdgeFiles, ATitleAloneHasNoEdges)
{
    for (const char* text : {"title\n", "title", "", "\n", "title\n\n\n"}) {
        SurfaceNet net;
        EXPECT_EQ(load(&net, text, 1), 1);
        EXPECT_EQ(printed_text(), "\nLoading edges...\nLoaded 0 points and 0 edges\nCreated 0 tris\n");
    }
}

TEST_F(EdgeFiles, TheFirstCharacterIsFreeEvenWhenItIsADigit)
{
    SurfaceNet net;
    load(&net, "t\n10 20 30\n21 22 23\n");
    EXPECT_EQ(net.node(1)->x, 0);
    EXPECT_EQ(net.node(2)->x, 1);
}

struct text_case {
    const char* name;
    std::string text;
};

// Each has one edge from (1, 2, 3) to (4, 5, 6).
TEST_F(EdgeFiles, FormsOfGoodLines)
{
    const text_case cases[] = {
        {"carriage returns", "t\r\nA 1 2 3\r\nA 4 5 6\r\n"},
        {"carriage returns alone", "t\rA 1 2 3\rA 4 5 6\r"},
        {"no last line end", "t\nA 1 2 3\nA 4 5 6"},
        {"no space behind the mark", "t\nA1 2 3\nA4 5 6\n"},
        {"tabs, signs, exponents", "t\nA\t+1\t2.0\t3e0\nA 40E-1 +5. .6e+1\n"},
        {"text behind", "t\nA 1 2 3 pole\nA 4 5 6, wall\n"},
        {"empty lines", "t\n\nA 1 2 3\n  \nA 4 5 6\n\n\n"},
        {"end mark", "t\nA 1 2 3\nA 4 5 6\n\x1a"},
        {"long text behind", "t\nA 1 2 3" + std::string(5000, ' ') + "x\nA 4 5 6\n"},
        {"long title", std::string(1000, 't') + "\nA 1 2 3\nA 4 5 6\n"},
        {"title of 255", std::string(255, 't') + "\nA 1 2 3\nA 4 5 6\n"},
        {"title of 254", std::string(254, 't') + "\nA 1 2 3\nA 4 5 6\n"},
        {"numbers of more digits", "t\nA 1.0000000000000000000000001 2 3\nA 4 5 6\n"},
    };
    for (const text_case& c : cases) {
        SCOPED_TRACE(c.name);
        SurfaceNet net;
        EXPECT_EQ(load(&net, c.text), 1);
        EXPECT_EQ(printed_text(), "\nLoading edges...\nLoaded 2 points and 1 edges\n");
        if (net.nodes.count != 2)
            continue;
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(net.node(1)->get(i), i + 1);
            EXPECT_EQ(net.node(2)->get(i), i + 4);
        }
    }
}

// A good edge behind each; the bad one is left out, its points too.
TEST_F(EdgeFiles, BadLinesAreToldAndLeftOut)
{
    const char* const lines[] = {"A 1 2",     "A",          "A x y z",         "A 1,2,3",
                                 "A nan 1 2", "A 1 inf 2",  "A 1 2 1e999",     "A 1 2 -",
                                 "A 1 +-2 3", "A 0x10 1 2", "\x01\x02\xff\xfe"};
    for (const char* line : lines) {
        SCOPED_TRACE(line);
        SurfaceNet net;
        const std::string text = std::string("t\nA 7 7 7\n") + line + "\nA 1 2 3\nA 4 5 6\n";
        EXPECT_EQ(load(&net, text), 1);
        EXPECT_EQ(printed_text(), "\nLoading edges...\n"
                                  "File 'ground.txt' line 3: no point, edge left out\n"
                                  "Loaded 2 points and 1 edges\n");
    }
}

TEST_F(EdgeFiles, NumbersTooSmallAreZero)
{
    SurfaceNet net;
    load(&net, "t\nA 1e-999 2 3\nA 4 5 6\n");
    ASSERT_EQ(net.nodes.count, 2);
    EXPECT_EQ(net.node(1)->x, 0);
}

TEST_F(EdgeFiles, AnOddLastLineIsTold)
{
    SurfaceNet net;
    EXPECT_EQ(load(&net, "t\nA 1 2 3\nA 4 5 6\nA 7 8 9\n"), 1);
    EXPECT_EQ(printed_text(), "\nLoading edges...\n"
                              "File 'ground.txt' line 4: an edge without its second point\n"
                              "Loaded 2 points and 1 edges\n");
}

TEST_F(EdgeFiles, ManyBadLinesAreCounted)
{
    SurfaceNet net;
    std::string text = "t\n";
    for (int i = 0; i < 100; ++i)
        text += "rubbish\n";
    EXPECT_EQ(load(&net, text), 1);
    const std::string printed = printed_text();
    EXPECT_NE(printed.find("line 11: no point"), printed.npos);
    EXPECT_EQ(printed.find("line 12: no point"), printed.npos);
    EXPECT_NE(printed.find("File 'ground.txt': 90 more bad lines\nLoaded 0 points and 0 edges\n"),
              printed.npos);
}

// A line with a zero in it is bad, but the next one is read.
TEST_F(EdgeFiles, ZerosInALineEndItsTextOnly)
{
    SurfaceNet net;
    const std::string zero(1, '\0');
    load(&net, "t\nA 1 " + zero + "2 3\nA 1 1 1\nA 1 2 3\nA 4 5 6\n");
    EXPECT_EQ(printed_text(), "\nLoading edges...\nFile 'ground.txt' line 2: no point, edge left out\n"
                              "Loaded 2 points and 1 edges\n");
}

TEST_F(EdgeFiles, RandomBytesAreSurvived)
{
    std::uint32_t state = 1;
    for (int round = 0; round < 200; ++round) {
        std::string text;
        for (int i = 0; i < 2000; ++i) {
            state = state * 1664525 + 1013904223;
            const char* const likely = "0123456789 .-+e\n\n\nA";
            text += round % 2 ? likely[(state >> 16) % 19] : static_cast<char>(state >> 24);
        }
        SurfaceNet net;
        EXPECT_EQ(load(&net, text, 1), 1);
        printed_text();
    }
}

TEST_F(EdgeFiles, AnEdgeTwiceIsOne)
{
    SurfaceNet net;
    load(&net, "t\nA 1 2 3\nA 4 5 6\nA 4 5 6\nA 1 2 3\n");
    EXPECT_EQ(printed_text(), "\nLoading edges...\nLoaded 2 points and 1 edges\n");
}

TEST_F(EdgeFiles, ABreakEndsTheReading)
{
    SurfaceNet net;
    std::string text = "t\n";
    for (int i = 0; i < 1000; ++i)
        text += "A " + std::to_string(i) + " 0 0\nA " + std::to_string(i) + " 1 0\n";
    test_heap::break_at(3);
    EXPECT_EQ(load(&net, text, 1), 1);
    EXPECT_EQ(printed_text(), "\nLoading edges...\n\nFunction cancelled at user request.");
    EXPECT_EQ(net.edges.count, 299);
    EXPECT_EQ(net.triangles.count, 0);
}

// Each allocation in turn fails, from the file to the last triangle, and all is given back.
TEST_F(EdgeFiles, AnExhaustedHeapIsSurvived)
{
    std::string text = "t\n";
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c) {
            const std::string at = "A " + std::to_string(c) + " " + std::to_string(r) + " 5\n";
            text += at + "A " + std::to_string(c + 1) + " " + std::to_string(r) + " 5\n";
            text += at + "A " + std::to_string(c) + " " + std::to_string(r + 1) + " 5\n";
        }
    for (int n = 1, failed = 1; failed; ++n) {
        triangle_cache = {};
        {
            test_heap::fail_at(n);
            SurfaceNet net;
            load(&net, text, 1);
            const double p[3] = {-0.5, 0.5, 0}, q[3] = {2.2, 1.5, 0};
            pg_node* chain = pg_node_push(p, nullptr, 0);
            if (chain)
                chain->next = pg_node_push(q, nullptr, 0);
            pg_ring ring{chain, 0, 0, nullptr};
            SurfaceNet* draped = net.drape(&ring);
            net.cut_crossings();
            if (chain)
                net.merge_chain(chain);
            net.close_faces();
            net.find_triangle(p);
            delete draped;
            pl_free_nodes(chain);
            failed = test_heap::has_failed();
        }
        ASSERT_EQ(test_heap::live_blocks(), 0) << "allocation " << n;
        test_heap::fail_at(0);
        printed_text();
        ASSERT_LT(n, 100000);
    }
}

TEST_F(EdgeFiles, LoadingGrowsWithTheFile)
{
    const auto rows = [](int count) {
        SurfaceNet net;
        std::string text = "t\n";
        const int side = static_cast<int>(std::sqrt(count));
        for (int r = 0; r < side; ++r)
            for (int c = 0; c < side; ++c)
                text += "A " + std::to_string(c) + " " + std::to_string(r) + " 5\nA " + std::to_string(c + 1) +
                        " " + std::to_string(r) + " 5\n";
        load(&net, text);
        printed_text();
    };
    EXPECT_TRUE(grows_in_proportion(rows, 64000));
}

} // namespace
