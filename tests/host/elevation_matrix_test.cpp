#include "host/elevation_matrix.h"
#include "host/host_classes.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessara {
namespace {

ComPtr<ElevationMatrix> MatrixOf(LONG width, LONG height)
{
    auto matrix = MakeObject<ElevationMatrix>();
    matrix->SetWidth(width);
    matrix->SetHeight(height);
    EXPECT_EQ(matrix->AllocateCells(), S_OK);
    return matrix;
}

LONG WidthOf(ElevationMatrix& matrix)
{
    LONG width = -1;
    EXPECT_EQ(matrix.GetWidth(&width), S_OK);
    return width;
}

/// Counts the palettes that are destroyed.
class WatchedPalette : public ElevationPalette {
public:
    explicit WatchedPalette(int& destroyed) : destroyed_(destroyed) {}
    ~WatchedPalette() override { ++destroyed_; }

private:
    int& destroyed_;
};

class Outer : public ComObject<IClassFactory> {
public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

TEST(ElevationMatrix, TakesItsSizeWhenCellsAreAllocated)
{
    const auto matrix = MakeObject<ElevationMatrix>();
    matrix->SetWidth(3);
    matrix->SetHeight(2);
    EXPECT_EQ(WidthOf(*matrix), 0);
    ASSERT_EQ(matrix->AllocateCells(), S_OK);
    EXPECT_EQ(WidthOf(*matrix), 3);
    matrix->SetWidth(50);
    EXPECT_EQ(WidthOf(*matrix), 3);
    ComPtr<IElevationCell> cell;
    EXPECT_EQ(matrix->GetCell(3, 0, cell.Out()), E_INVALIDARG);
    EXPECT_EQ(matrix->GetCell(2, 1, cell.Out()), S_OK);
}

TEST(ElevationMatrix, CellsAreTheGridsElements)
{
    const auto matrix = MatrixOf(3, 2);
    for (LONG y = 0; y < 2; ++y) {
        for (LONG x = 0; x < 3; ++x) {
            ComPtr<IElevationCell> cell;
            ASSERT_EQ(matrix->GetCell(x, y, cell.Out()), S_OK);
            EXPECT_EQ(cell->SetElevation(static_cast<float>(10 * y + x)), S_OK);
        }
    }
    ElevationElement* grid = nullptr;
    ASSERT_EQ(matrix->GetGrid(&grid), S_OK);
    const std::vector<float> expected = {0, 1, 2, 10, 11, 12};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(grid[i].value, expected[i]);
    grid[4].value = 0.5f;
    ComPtr<IElevationCell> cell;
    float elevation = 0.0f;
    ASSERT_EQ(matrix->GetCell(1, 1, cell.Out()), S_OK);
    EXPECT_EQ(cell->GetElevation(&elevation), S_OK);
    EXPECT_EQ(elevation, 0.5f);
}

TEST(ElevationMatrix, SeveralCellsAreOutAtOnce)
{
    const auto matrix = MatrixOf(4, 1);
    ComPtr<IElevationCell> cells[4];
    for (LONG x = 0; x < 4; ++x) {
        matrix->GetCell(x, 0, cells[x].Out());
        cells[x]->SetElevation(static_cast<float>(x));
    }
    for (LONG x = 3; x >= 0; --x) {
        EXPECT_EQ(matrix->ElementAt(x, 0)->value, static_cast<float>(x));
        cells[x] = nullptr;
    }
}

TEST(ElevationMatrix, ACellOutlivesEveryOtherReferenceToItsMatrix)
{
    auto matrix = MatrixOf(2, 2);
    ComPtr<IElevationCell> first;
    ComPtr<IElevationCell> second;
    matrix->GetCell(1, 1, first.Out());
    matrix->GetCell(0, 1, second.Out());
    matrix = nullptr;
    float elevation = 0.0f;
    EXPECT_EQ(first->SetElevation(0.25f), S_OK);
    EXPECT_EQ(first->GetElevation(&elevation), S_OK);
    EXPECT_EQ(elevation, 0.25f);
    first = nullptr;
    EXPECT_EQ(second->SetElevation(0.5f), S_OK);
}

TEST(ElevationMatrix, ACellOfALargerPastIsRefusedAndOneInsideStillWorks)
{
    const auto matrix = MatrixOf(4, 4);
    ComPtr<IElevationCell> inside;
    ComPtr<IElevationCell> outside;
    matrix->GetCell(1, 1, inside.Out());
    matrix->GetCell(3, 3, outside.Out());
    matrix->SetWidth(2);
    matrix->SetHeight(2);
    ASSERT_EQ(matrix->AllocateCells(), S_OK);
    EXPECT_EQ(inside->SetElevation(1.0f), S_OK);
    EXPECT_EQ(outside->SetElevation(1.0f), E_UNEXPECTED);
    EXPECT_EQ(matrix->ElementAt(1, 1)->value, 1.0f);
    matrix->ResetMatrix();
    float elevation = 9.0f;
    EXPECT_EQ(inside->GetElevation(&elevation), E_UNEXPECTED);
    EXPECT_EQ(elevation, 0.0f);
}

TEST(ElevationMatrix, NewCellsStandAtZero)
{
    const auto matrix = MatrixOf(2, 1);
    matrix->ElementAt(1, 0)->value = 1.0f;
    ASSERT_EQ(matrix->AllocateCells(), S_OK);
    EXPECT_EQ(matrix->ElementAt(1, 0)->value, 0.0f);
}

TEST(ElevationMatrix, ASizeThatIsNotPositiveKeepsTheCells)
{
    const auto matrix = MatrixOf(2, 1);
    for (const auto& [width, height] : {std::pair<LONG, LONG>{0, 4}, {4, 0}, {-1, 4}, {4, -2147483647 - 1}}) {
        matrix->SetWidth(width);
        matrix->SetHeight(height);
        EXPECT_EQ(matrix->AllocateCells(), E_INVALIDARG);
        EXPECT_EQ(WidthOf(*matrix), 2);
    }
}

TEST(ElevationMatrix, ASizeBeyondMemoryLeavesAnEmptyMatrix)
{
    const auto matrix = MatrixOf(2, 1);
    matrix->SetWidth(1 << 30);
    matrix->SetHeight(1 << 30);
    EXPECT_EQ(matrix->AllocateCells(), E_OUTOFMEMORY);
    EXPECT_EQ(WidthOf(*matrix), 0);
    ElevationElement* grid = matrix->ElementAt(0, 0);
    EXPECT_EQ(matrix->GetGrid(&grid), E_FAIL);
    EXPECT_EQ(grid, nullptr);
    matrix->SetWidth(1);
    matrix->SetHeight(1);
    EXPECT_EQ(matrix->AllocateCells(), S_OK);
}

TEST(ElevationMatrix, OwnsItsPalette)
{
    int destroyed = 0;
    auto matrix = MakeObject<ElevationMatrix>();
    ElevationPalette* palette = nullptr;
    ASSERT_EQ(matrix->GetPalette(&palette), S_OK);
    ASSERT_NE(palette, nullptr);
    EXPECT_EQ(matrix->SetPalette(nullptr), E_POINTER);

    auto* first = new WatchedPalette(destroyed);
    matrix->SetPalette(first);
    matrix->SetPalette(first);
    EXPECT_EQ(destroyed, 0);
    matrix->SetPalette(new WatchedPalette(destroyed));
    EXPECT_EQ(destroyed, 1);
    matrix->ResetMatrix();
    EXPECT_EQ(destroyed, 1);
    matrix = nullptr;
    EXPECT_EQ(destroyed, 2);
}

TEST(ElevationMatrix, RefusesNullPointersAndPlacesWithoutCell)
{
    const auto matrix = MatrixOf(2, 3);
    EXPECT_EQ(matrix->GetWidth(nullptr), E_POINTER);
    EXPECT_EQ(matrix->GetHeight(nullptr), E_POINTER);
    EXPECT_EQ(matrix->GetPalette(nullptr), E_POINTER);
    EXPECT_EQ(matrix->GetGrid(nullptr), E_POINTER);
    EXPECT_EQ(matrix->GetCell(0, 0, nullptr), E_POINTER);
    for (const auto& [x, y] : {std::pair<LONG, LONG>{-1, 0}, {0, -1}, {2, 0}, {0, 3}}) {
        IElevationCell* cell = reinterpret_cast<IElevationCell*>(1);
        EXPECT_EQ(matrix->GetCell(x, y, &cell), E_INVALIDARG);
        EXPECT_EQ(cell, nullptr);
    }
    ComPtr<IElevationCell> cell;
    matrix->GetCell(0, 0, cell.Out());
    EXPECT_EQ(cell->GetElevation(nullptr), E_POINTER);
    EXPECT_EQ(matrix->EndUpdate(0), E_UNEXPECTED);
    EXPECT_EQ(matrix->BeginUpdate(0), S_OK);
    EXPECT_EQ(matrix->EndUpdate(0), S_OK);
}

TEST(HostClasses, AreKnownAsLongAsTheirRegistrationLives)
{
    ComPtr<IElevationMatrix> matrix;
    const auto create = [&](IUnknown* outer, REFIID iid) {
        return CoCreateInstance(CLSID_ElevationMatrix, outer, CLSCTX_INPROC_SERVER, iid, matrix.OutVoid());
    };
    {
        const HostClasses classes = RegisterHostClasses();
        EXPECT_EQ(create(nullptr, InterfaceId<IElevationMatrix>), S_OK);
        ASSERT_TRUE(matrix);
        LONG width = -1;
        EXPECT_EQ(matrix->GetWidth(&width), S_OK);
        EXPECT_EQ(width, 0);
    }
    EXPECT_EQ(create(nullptr, InterfaceId<IElevationMatrix>), REGDB_E_CLASSNOTREG);
}

TEST(HostClasses, AMatrixCanLiveInAnAggregate)
{
    const HostClasses classes = RegisterHostClasses();
    const auto outer = MakeObject<Outer>();
    ComPtr<IUnknown> inner;
    EXPECT_EQ(CoCreateInstance(CLSID_ElevationMatrix, outer.Get(), CLSCTX_INPROC_SERVER, InterfaceId<IElevationMatrix>,
                               inner.OutVoid()),
              CLASS_E_NOAGGREGATION);
    ASSERT_EQ(CoCreateInstance(CLSID_ElevationMatrix, outer.Get(), CLSCTX_INPROC_SERVER, IID_IUnknown, inner.OutVoid()),
              S_OK);
    const auto matrix = inner.As<IElevationMatrix>();
    ASSERT_TRUE(matrix);
    EXPECT_TRUE(matrix.As<IClassFactory>());
}

}  // namespace
}  // namespace tessara
