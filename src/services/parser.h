#pragma once

#include "../platform/com/unknown.h"

/// A value that FindNode found: an opaque word of the parser's, meaningful to it alone.
using ParserNode = void*;

/// A place in a project file, where the surface's values stand as named nodes.
///
/// Each name that comes in is a new BSTR that goes over to the parser: it frees it with SysFreeString, whatever it
/// answers. The surface never does, since that would break a parser that frees its names; one that doesn't only leaks.
struct IParser : IUnknown {
    /// Stores a copy of a value under a name at the parser's current place.
    /// \param parent null
    /// \param name the parser's to free
    /// \param bytes freed or changed right after the call
    /// \param size in bytes
    /// \param typeCode 2 integers, 8 sizes, 0x10 floats, 0x40 text, 0x80 and 0x280 bytes
    virtual HRESULT STDMETHODCALLTYPE AddNode(ParserNode parent, BSTR name, const void* bytes, LONG size,
                                              LONG typeCode) = 0;

    /// Fills the caller's buffer, which has the value's size, with the bytes as they were stored, whatever the type
    /// code asked for, and makes the count non-zero. A value that can't be delivered gives a failure or a count of 0;
    /// the capacity isn't told, so a value of another size than its name calls for is one of those.
    virtual HRESULT STDMETHODCALLTYPE GetNodeValue(ParserNode node, void* buffer, LONG* count, LONG typeCode) = 0;

    /// Finds a value by its name. \param parent null \param name the parser's to free \param index -1
    /// \return a failure when there is no value of that name at the parser's current place
    virtual HRESULT STDMETHODCALLTYPE FindNode(ParserNode parent, BSTR name, LONG index, ParserNode* node) = 0;

protected:
    ~IParser() = default;
};

template <>
inline constexpr GUID InterfaceId<IParser> = {
    0x3B0C5A56, 0x7C0E, 0x4A8F, {0x9D, 0x12, 0x5E, 0x84, 0x61, 0x2F, 0xA0, 0x01}};
