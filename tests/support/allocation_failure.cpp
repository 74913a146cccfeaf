#include "support/allocation_failure.h"

#include <cstdlib>
#include <new>

namespace tessara::test {

namespace {

constexpr std::size_t kNever = SIZE_MAX;

std::size_t g_refusedSize = kNever;
std::size_t g_remaining = kNever;  // up to the first failure, with that one
std::size_t g_failures = 0;        // that are to come after it is reached

bool Refused(std::size_t size)
{
    if (g_remaining != kNever && g_remaining != 0)
        --g_remaining;
    if (g_remaining == 0 && g_failures != 0) {
        if (g_failures != kNever)
            --g_failures;
        return true;
    }
    return size == g_refusedSize;
}

}  // namespace

RefusedSize::RefusedSize(std::size_t size)
{
    g_refusedSize = size;
}

RefusedSize::~RefusedSize()
{
    g_refusedSize = kNever;
}

MemoryShortage::MemoryShortage(std::size_t n, std::size_t failures)
{
    g_remaining = n;
    g_failures = failures;
}

MemoryShortage::~MemoryShortage()
{
    g_remaining = kNever;
}

bool MemoryShortage::Struck() const
{
    return g_remaining == 0;
}

}  // namespace tessara::test

// Every form, since a sanitizer's own forms don't call each other.

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return tessara::test::Refused(size) ? nullptr : std::malloc(size ? size : 1);
}

void* operator new(std::size_t size)
{
    void* memory = operator new(size, std::nothrow);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return operator new(size, std::nothrow);
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}
