#include "app/viewer/open_viewer.h"
#include "app/viewer/picture/node_survey.h"
#include "host/terrain_session.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace tessara {
namespace {

using test::Hills;
using test::OpenViewer;

TEST(NodeSurvey, SortsFansByTheirNodes)
{
    // A node of half size 1 with two triangles, one of half size 2, one of half size 4 whose centre at column 12 is
    // drawn at the last column, and a triangle that the corner of the grid has cut off.
    const std::vector<DrawnVertex> fans = {{1, 0.5f, 1}, {0, 0.2f, 0}, {0, 0.3f, 2},  //
                                           {1, 0.5f, 1}, {2, 0.9f, 0}, {0, 0.2f, 0},  //
                                           {6, 0.0f, 2}, {8, 0.1f, 0}, {4, 0.1f, 0},  //
                                           {9, 0.0f, 4}, {8, 0.0f, 0}, {8, 0.0f, 8},  //
                                           {9, 0.0f, 9}, {9, 0.0f, 9}, {9, 0.0f, 9}};
    const NodeSurvey survey = SurveyNodes(fans, 8);
    EXPECT_EQ(survey.nodeOf, (std::vector<std::size_t>{0, 0, 1, 2, 3}));
    ASSERT_EQ(survey.nodes.size(), 4u);
    EXPECT_EQ(survey.nodes[0].half, 1);
    EXPECT_EQ(survey.nodes[0].low, 0.2f);
    EXPECT_EQ(survey.nodes[0].high, 0.9f);
    EXPECT_EQ(LevelOf(survey.nodes[0]), 0);
    EXPECT_EQ(LevelOf(survey.nodes[1]), 1);
    EXPECT_EQ(survey.nodes[2].centerX, 12);
    EXPECT_EQ(LevelOf(survey.nodes[2]), 2);
    EXPECT_TRUE(survey.nodes[2].beyond && survey.nodes[3].beyond && !survey.nodes[1].beyond);
    EXPECT_EQ(survey.active, 6u);  // three, the small one's parents, and the root
    EXPECT_EQ(SurveyNodes({}, 4).active, 0u);
}

TEST(NodeSurvey, FindsEachTriangleOfATerrainInItsNode)
{
    OpenViewer open(Hills(129, 129));
    open.Settle();
    FrameProbe probe(open.gl, OffscreenContext::Lookup());
    const auto camera = MakeObject<DetailCamera>();
    camera->SeeAll();
    const auto vertices = probe.Capture(open.viewer.Document().Session().Surface(), *camera, 10);
    const NodeSurvey survey = SurveyNodes(vertices, 128);
    ASSERT_EQ(survey.nodeOf.size() * 3, vertices.size());
    std::size_t cut = 0;
    std::set<int> levels;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const DrawnNode& node = survey.nodes[survey.nodeOf[i / 3]];
        cut += node.half == 0 ? 1 : 0;
        if (node.half == 0)
            continue;
        levels.insert(LevelOf(node));
        if (node.beyond)
            continue;
        ASSERT_LE(std::fabs(vertices[i].x - static_cast<float>(node.centerX)), static_cast<float>(node.half));
        ASSERT_LE(std::fabs(vertices[i].z - static_cast<float>(node.centerZ)), static_cast<float>(node.half));
        ASSERT_TRUE(vertices[i].y >= node.low && vertices[i].y <= node.high);
    }
    EXPECT_LT(cut, vertices.size() / 16);
    EXPECT_GT(levels.size(), 2u);
}

}  // namespace
}  // namespace tessara
