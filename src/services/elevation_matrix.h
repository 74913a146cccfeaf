#pragma once

#include "../platform/com/unknown.h"

class ElevationElement;
class ElevationPalette;

/// One cell of an elevation matrix.
struct IElevationCell : IUnknown {
    /// \param elevation normalised: 0.0 at the lowest, 1.0 at the highest point of the terrain
    virtual HRESULT STDMETHODCALLTYPE SetElevation(float elevation) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetElevation(float* elevation) = 0;

protected:
    ~IElevationCell() = default;
};

/// The height field of a terrain. Column x runs east from 0 to width - 1, row y runs south from 0 to height - 1.
struct IElevationMatrix : IUnknown {
    /// The size asked for; it takes effect at AllocateCells.
    virtual HRESULT STDMETHODCALLTYPE SetWidth(LONG width) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetHeight(LONG height) = 0;

    /// The size of the cells that exist, 0 when there are none.
    virtual HRESULT STDMETHODCALLTYPE GetWidth(LONG* width) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetHeight(LONG* height) = 0;

    /// Gives the matrix its cells for the size set.
    virtual HRESULT STDMETHODCALLTYPE AllocateCells() = 0;

    /// Gives the cell at column x and row y, with one reference for the caller.
    virtual HRESULT STDMETHODCALLTYPE GetCell(LONG x, LONG y, IElevationCell** cell) = 0;

    /// Range of the elevations in the units of their source.
    virtual HRESULT STDMETHODCALLTYPE SetElevationRange(float minimum, float maximum) = 0;

    /// The matrix keeps the palette, takes it over from the caller, and gives it out with GetPalette. It was allocated
    /// with `new`.
    virtual HRESULT STDMETHODCALLTYPE SetPalette(ElevationPalette* palette) = 0;

    /// Back to a matrix without cells. Called first when a saved matrix is restored.
    virtual HRESULT STDMETHODCALLTYPE ResetMatrix() = 0;

    /// Brackets a series of cell writes or a resize. The argument is 0.
    virtual HRESULT STDMETHODCALLTYPE BeginUpdate(LONG reserved) = 0;
    virtual HRESULT STDMETHODCALLTYPE EndUpdate(LONG reserved) = 0;

    /// Gives the palette without a reference, or null. It stays valid as long as a terrain is built on the matrix.
    virtual HRESULT STDMETHODCALLTYPE GetPalette(ElevationPalette** palette) = 0;

    /// Gives the first of the row-major elements, width elements a row. They stay valid, and in place, as long as a
    /// terrain is built on the matrix.
    virtual HRESULT STDMETHODCALLTYPE GetGrid(ElevationElement** grid) = 0;

protected:
    ~IElevationMatrix() = default;
};

/// Class that CoCreateInstance makes a matrix of.
inline constexpr CLSID CLSID_ElevationMatrix = {
    0x1AD2F998, 0x1E75, 0x4673, {0x97, 0x20, 0x9B, 0xE3, 0xF1, 0x17, 0x21, 0x7D}};

template <>
inline constexpr GUID InterfaceId<IElevationMatrix> = {
    0xFA2FC9A5, 0x72E9, 0x45DB, {0xAA, 0x2A, 0x04, 0x15, 0x05, 0x1B, 0xF4, 0xB0}};

template <>
inline constexpr GUID InterfaceId<IElevationCell> = {
    0x3B0C5A55, 0x7C0E, 0x4A8F, {0x9D, 0x12, 0x5E, 0x84, 0x61, 0x2F, 0xA0, 0x01}};
