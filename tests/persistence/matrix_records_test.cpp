#include "host/elevation_matrix.h"
#include "host/host_classes.h"
#include "persistence/records_fixture.h"
#include "support/allocation_failure.h"

#include <limits>

namespace tessara::test {

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

class MatrixRecordsTest : public RecordsTest {
protected:
    void PutMatrix(LONG width, LONG height, const std::vector<float>& elevations)
    {
        parser->Put<LONG>("MATRIX_WIDTH", 8, {width});
        parser->Put<LONG>("MATRIX_HEIGHT", 8, {height});
        parser->Put("MATRIX_DATA", 0x10, elevations);
    }
    std::vector<float> Elevations() const
    {
        std::vector<float> values;
        for (const ElevationElement& element : matrix->elements)
            values.push_back(element.value);
        return values;
    }
};

TEST_F(MatrixRecordsTest, WritesRangeSizeAndElevationsRowByRow)
{
    matrix->Resize(3, 2);
    for (LONG y = 0; y < 2; ++y) {
        for (LONG x = 0; x < 3; ++x)
            matrix->At(x, y).value = static_cast<float>(10 * y + x);
    }
    EXPECT_EQ(surface->SerializeMatrix(parser.Get()), S_OK);
    EXPECT_THAT(log, ElementsAre("GetWidth()", "GetHeight()", "GetCell(0, 0)", "GetCell(1, 0)", "GetCell(2, 0)",
                                 "GetCell(0, 1)", "GetCell(1, 1)", "GetCell(2, 1)", "AddNode(MIN_ELEVATION, 4, 16)",
                                 "AddNode(MAX_ELEVATION, 4, 16)", "AddNode(MATRIX_WIDTH, 4, 8)",
                                 "AddNode(MATRIX_HEIGHT, 4, 8)", "AddNode(MATRIX_DATA, 24, 16)"));
    EXPECT_THAT(parser->Get<float>("MIN_ELEVATION"), ElementsAre(0.0f));
    EXPECT_THAT(parser->Get<float>("MAX_ELEVATION"), ElementsAre(255.0f));
    EXPECT_THAT(parser->Get<LONG>("MATRIX_WIDTH"), ElementsAre(3));
    EXPECT_THAT(parser->Get<LONG>("MATRIX_HEIGHT"), ElementsAre(2));
    EXPECT_THAT(parser->Get<float>("MATRIX_DATA"), ElementsAre(0.0f, 1.0f, 2.0f, 10.0f, 11.0f, 12.0f));
}

TEST_F(MatrixRecordsTest, WritesNothingWithoutCells)
{
    matrix->Resize(0, 5);
    EXPECT_EQ(surface->SerializeMatrix(parser.Get()), E_FAIL);
    matrix->Resize(5, 0);
    EXPECT_EQ(surface->SerializeMatrix(parser.Get()), E_FAIL);
    matrix->width = matrix->height = 40000;  // more than a 32-bit size can tell
    EXPECT_EQ(surface->SerializeMatrix(parser.Get()), E_FAIL);
    EXPECT_THAT(TakeParserCalls(), ElementsAre());
}

TEST_F(MatrixRecordsTest, RestoresTheMatrixInTheOrderThatItsServiceWants)
{
    PutMatrix(2, 1, {0.25f, 0.75f});
    parser->Put<float>("MIN_ELEVATION", 0x10, {100.0f});
    parser->Put<float>("MAX_ELEVATION", 0x10, {900.0f});
    const ElevationPalette* before = matrix->palette;
    EXPECT_EQ(surface->LoadSerializedMatrix(parser.Get()), S_OK);
    EXPECT_THAT(TakeLog(),
                ElementsAre("FindNode(MATRIX_WIDTH)", "GetNodeValue(MATRIX_WIDTH, 8)", "FindNode(MATRIX_HEIGHT)",
                            "GetNodeValue(MATRIX_HEIGHT, 8)", "FindNode(MAX_ELEVATION)",
                            "GetNodeValue(MAX_ELEVATION, 16)", "FindNode(MIN_ELEVATION)",
                            "GetNodeValue(MIN_ELEVATION, 16)", "FindNode(MATRIX_DATA)", "GetNodeValue(MATRIX_DATA, 16)",
                            "ResetMatrix()", "SetElevationRange(100.000000, 900.000000)", "SetPalette()",
                            "BeginUpdate(0)", "SetWidth(2)", "SetHeight(1)", "AllocateCells()", "EndUpdate(0)",
                            "BeginUpdate(0)", "GetCell(0, 0)", "GetCell(1, 0)", "EndUpdate(0)"));
    EXPECT_THAT(Elevations(), ElementsAre(0.25f, 0.75f));
    EXPECT_NE(matrix->palette, before) << "a new matrix gets a new palette";
    EXPECT_THAT(matrix->palette->nodes, ElementsAre(0, 50, 200, 255));
}

TEST_F(MatrixRecordsTest, TakesElevationsThatATreeCanBeBuiltOn)
{
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float endless = std::numeric_limits<float>::infinity();
    PutMatrix(7, 1, {none, endless, -endless, 3e38f, -3e38f, 8848.86f, -1e-40f});
    EXPECT_EQ(surface->LoadSerializedMatrix(parser.Get()), S_OK);
    EXPECT_THAT(Elevations(), ElementsAre(0.0f, 0.0f, 0.0f, 1e9f, -1e9f, 8848.86f, -1e-40f));
}

TEST_F(MatrixRecordsTest, KeepsTheRangeThatItHasWhereNoneIsSaved)
{
    PutMatrix(1, 1, {0.5f});
    parser->Put<float>("MAX_ELEVATION", 0x10, {900.0f});
    parser->unreadable.insert("MAX_ELEVATION");
    EXPECT_EQ(surface->LoadSerializedMatrix(parser.Get()), S_OK);
    EXPECT_THAT(TakeLog(), testing::Contains("SetElevationRange(0.000000, 255.000000)"));
}

/// What makes a matrix impossible to load.
struct BadMatrix {
    const char* what;
    LONG width, height;
    enum { Present, Missing, Unreadable, Uncounted } how;
    const char* value;
};

class BadMatrixTest : public MatrixRecordsTest, public testing::WithParamInterface<BadMatrix> {};

TEST_P(BadMatrixTest, FailsAndLeavesTheMatrixAlone)
{
    const BadMatrix& bad = GetParam();
    PutMatrix(bad.width, bad.height, {0.1f, 0.2f, 0.3f, 0.4f});
    if (bad.how == BadMatrix::Missing)
        parser->values.erase(bad.value);
    else if (bad.how == BadMatrix::Unreadable)
        parser->unreadable.insert(bad.value);
    else if (bad.how == BadMatrix::Uncounted)
        parser->uncounted.insert(bad.value);
    EXPECT_EQ(surface->LoadSerializedMatrix(parser.Get()), E_FAIL);
    for (const std::string& call : TakeLog())
        EXPECT_NE(call.find("Node"), std::string::npos) << call;
}

INSTANTIATE_TEST_SUITE_P(Matrices, BadMatrixTest,
                         testing::Values(BadMatrix{"no width", 2, 2, BadMatrix::Missing, "MATRIX_WIDTH"},
                                         BadMatrix{"unreadable width", 2, 2, BadMatrix::Unreadable, "MATRIX_WIDTH"},
                                         BadMatrix{"width of no bytes", 2, 2, BadMatrix::Uncounted, "MATRIX_WIDTH"},
                                         BadMatrix{"width 0", 0, 2, BadMatrix::Present, ""},
                                         BadMatrix{"no height", 2, 2, BadMatrix::Missing, "MATRIX_HEIGHT"},
                                         BadMatrix{"unreadable height", 2, 2, BadMatrix::Unreadable, "MATRIX_HEIGHT"},
                                         BadMatrix{"height 0", 2, 0, BadMatrix::Present, ""},
                                         BadMatrix{"no elevations", 2, 2, BadMatrix::Missing, "MATRIX_DATA"},
                                         BadMatrix{"unreadable elevations", 2, 2, BadMatrix::Unreadable, "MATRIX_DATA"},
                                         BadMatrix{"elevations of no bytes", 2, 2, BadMatrix::Uncounted, "MATRIX_DATA"},
                                         BadMatrix{"negative width", -2, 2, BadMatrix::Present, ""},
                                         BadMatrix{"negative sizes", -2, -2, BadMatrix::Present, ""},
                                         BadMatrix{"product beyond 31 bits", 65536, 65537, BadMatrix::Present, ""},
                                         BadMatrix{"product beyond 61 bits", INT32_MAX, INT32_MAX, BadMatrix::Present,
                                                   ""}),
                         [](const auto& test) {
                             std::string name = test.param.what;
                             std::replace(name.begin(), name.end(), ' ', '_');
                             return name;
                         });

TEST_F(MatrixRecordsTest, LeavesTheSurfaceAloneWhenTheElevationsDontFitIntoMemory)
{
    PutMatrix(100, 101, std::vector<float>(100 * 101));
    parser->Put<float>("MIN_ELEVATION", 0x10, {-1.0f});
    {
        const RefusedSize refused(100 * 101 * sizeof(float));
        EXPECT_EQ(surface->LoadSerializedMatrix(parser.Get()), E_FAIL);
    }
    EXPECT_EQ(matrix->width, 4);
    surface->SerializeMatrix(parser.Get());
    EXPECT_THAT(parser->Get<float>("MIN_ELEVATION"), ElementsAre(0.0f));
}

TEST_F(MatrixRecordsTest, MakesAMatrixOfTheProcesssClassWhereThereIsNone)
{
    PutMatrix(3, 2, {0.0f, 0.1f, 0.2f, 0.3f, 0.4f, 0.5f});
    const auto bare = MakeObject<CoTessara>();
    bare->InitServer();
    EXPECT_EQ(bare->LoadSerializedMatrix(parser.Get()), S_OK) << "a class that nobody registered";
    IUnknown* made = nullptr;
    bare->GetMatrix(&made);
    EXPECT_EQ(made, nullptr);

    const HostClasses classes = RegisterHostClasses();
    EXPECT_EQ(bare->LoadSerializedMatrix(parser.Get()), S_OK);
    bare->GetMatrix(&made);
    ASSERT_NE(made, nullptr);
    auto* loaded = static_cast<ElevationMatrix*>(static_cast<IElevationMatrix*>(made));
    EXPECT_EQ(loaded->ElementAt(2, 1)->value, 0.5f);
    EXPECT_EQ(loaded->ElementAt(3, 0), nullptr);
    bare->StopServer();
}

TEST_F(MatrixRecordsTest, AFailedAllocationOfTheCellsIsToldAndLeavesNothingToDraw)
{
    const auto real = MakeObject<ElevationMatrix>();
    const auto bare = MakeObject<CoTessara>();
    bare->InitServer();
    bare->SetKVO(host.Get());
    bare->SetMatrix(real.Get());
    bare->SetSize(8, 8);
    bare->InitMatrix();
    ASSERT_EQ(bare->InitQuadTree(), S_OK);
    PutMatrix(30, 20, std::vector<float>(600, 0.5f));
    {
        const RefusedSize refused(600 * sizeof(ElevationElement) + sizeof(std::size_t));
        EXPECT_EQ(bare->LoadSerializedMatrix(parser.Get()), E_FAIL);
    }
    LONG width = -1;
    real->GetWidth(&width);
    EXPECT_EQ(width, 0);
    RecordingGl::Reset();
    bare->Draw3D(camera.Get());
    EXPECT_EQ(RecordingGl::Get().Count("glDrawElements"), 0u) << "the old tree points at cells that are gone";
    bare->StopServer();
}

}  // namespace

}  // namespace tessara::test
