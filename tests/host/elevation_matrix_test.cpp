#include "host/elevation_matrix.h"
#include "host/host_classes.h"

#include <gtest/gtest.h>

#include <utility>
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
    const auto matrix = MatrixOf(3, 2);
    const auto allocate = [&matrix](LONG width, LONG height) {
        matrix->SetWidth(width);
        matrix->SetHeight(height);
        return matrix->AllocateCells();
    };
    matrix->ElementAt(2, 1)->value = 1.0f;
    matrix->SetWidth(50);
    EXPECT_EQ(WidthOf(*matrix), 3);
    for (const auto& [width, height] : {std::pair<LONG, LONG>{0, 4}, {4, 0}, {-1, 4}, {4, -2147483647 - 1}}) {
        EXPECT_EQ(allocate(width, height), E_INVALIDARG);
        EXPECT_EQ(WidthOf(*matrix), 3);
    }
    EXPECT_EQ(matrix->ElementAt(2, 1)->value, 1.0f);
    ASSERT_EQ(allocate(3, 2), S_OK);
    EXPECT_EQ(matrix->ElementAt(2, 1)->value, 0.0f);
    EXPECT_EQ(allocate(1 << 30, 1 << 30), E_OUTOFMEMORY);
    EXPECT_EQ(WidthOf(*matrix), 0);
    ElevationElement* grid = matrix->ElementAt(0, 0);
    EXPECT_EQ(matrix->GetGrid(&grid), E_FAIL);
    EXPECT_EQ(grid, nullptr);
    EXPECT_EQ(allocate(1, 1), S_OK);
}

TEST(ElevationMatrix, CellsAreTheGridsElementsAndKeepTheirMatrix)
{
    auto matrix = MatrixOf(3, 2);
    ComPtr<IElevationCell> cells[6];
    for (LONG i = 0; i < 6; ++i) {
        ASSERT_EQ(matrix->GetCell(i % 3, i / 3, cells[i].Out()), S_OK);
        EXPECT_EQ(cells[i]->SetElevation(static_cast<float>(i)), S_OK);
    }
    ElevationElement* grid = nullptr;
    ASSERT_EQ(matrix->GetGrid(&grid), S_OK);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(grid[i].value, static_cast<float>(i));
    grid[0].value = 0.5f;
    float elevation = 0.0f;
    EXPECT_EQ(cells[0]->GetElevation(&elevation), S_OK);
    EXPECT_EQ(elevation, 0.5f);

    matrix->SetWidth(2);
    ASSERT_EQ(matrix->AllocateCells(), S_OK);
    EXPECT_EQ(cells[2]->SetElevation(1.0f), E_UNEXPECTED);  // a place of a larger past
    matrix = nullptr;
    EXPECT_EQ(cells[4]->SetElevation(0.25f), S_OK);
    EXPECT_EQ(cells[4]->GetElevation(&elevation), S_OK);
    EXPECT_EQ(elevation, 0.25f);
}

TEST(ElevationMatrix, KeepsThePalettesThatSomebodyMayDrawWith)
{
    int destroyed = 0;
    auto matrix = MakeObject<ElevationMatrix>();
    ElevationPalette* given = nullptr;
    ASSERT_EQ(matrix->GetPalette(&given), S_OK);
    ASSERT_NE(given, nullptr);
    EXPECT_EQ(matrix->SetPalette(nullptr), E_POINTER);

    auto* unseen = new WatchedPalette(destroyed);
    matrix->SetPalette(unseen);
    matrix->SetPalette(unseen);
    EXPECT_EQ(destroyed, 0);
    auto* seen = new WatchedPalette(destroyed);
    matrix->SetPalette(seen);
    EXPECT_EQ(destroyed, 1);
    matrix->GetPalette(&given);
    EXPECT_EQ(given, seen);
    for (ElevationPalette* next : {static_cast<ElevationPalette*>(new WatchedPalette(destroyed)), given}) {
        matrix->SetPalette(next);
        EXPECT_EQ(seen->GetRed(255), 255);
    }
    EXPECT_EQ(destroyed, 2);  // the one that nobody asked for
    matrix->ResetMatrix();
    matrix = nullptr;
    EXPECT_EQ(destroyed, 3);
}

TEST(ElevationMatrix, KeepsTheCellsThatSomebodyMayDrawFrom)
{
    const auto matrix = MatrixOf(4, 3);
    std::vector<ElevationElement*> given(1);
    ASSERT_EQ(matrix->GetGrid(&given[0]), S_OK);
    given[0][11].value = 0.75f;
    matrix->ResetMatrix();
    EXPECT_EQ(matrix->GetGrid(&given[0]), E_FAIL);
    EXPECT_EQ(given[0], nullptr);
    // Larger cells need memory of their own; what fits into earlier memory is put there.
    for (const auto& [width, height] : {std::pair<LONG, LONG>{5, 5}, {3, 4}, {25, 1}, {2, 2}}) {
        matrix->SetWidth(width);
        matrix->SetHeight(height);
        ASSERT_EQ(matrix->AllocateCells(), S_OK);
        EXPECT_EQ(matrix->ElementAt(width - 1, height - 1)->value, 0.0f);
        ASSERT_EQ(matrix->GetGrid(&given.emplace_back()), S_OK);
        matrix->ElementAt(width - 1, height - 1)->value = 1.0f;
    }
    EXPECT_EQ(given[3], given[1]);
    EXPECT_EQ(given[4], given[2]);
    EXPECT_EQ(given[1][24].value, 1.0f);
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
