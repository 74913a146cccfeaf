#pragma once

#include "types.h"

#include <new>
#include <utility>

/// Runs the body of an interface method and turns every exception into a result code, so that none crosses the border.
/// \param onBadAlloc what an allocation failure becomes; every other exception becomes E_FAIL
template <class Body>
HRESULT Guard(Body&& body, HRESULT onBadAlloc = E_OUTOFMEMORY) noexcept
{
    try {
        return std::forward<Body>(body)();
    } catch (const std::bad_alloc&) {
        return onBadAlloc;
    } catch (...) {
        return E_FAIL;
    }
}
