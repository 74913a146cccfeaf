#pragma once

#include <cstddef>
#include <cstdint>

namespace tessara::test {

/// Makes operator new fail for requests of one size for as long as it lives. Linking this library replaces the
/// program's operator new.
class RefusedSize {
public:
    explicit RefusedSize(std::size_t size);
    RefusedSize(const RefusedSize&) = delete;
    RefusedSize& operator=(const RefusedSize&) = delete;
    ~RefusedSize();
};

/// Makes the n-th operator new from now (1 is the next one) and all later ones, or as many as are said, fail for as
/// long as it lives.
class MemoryShortage {
public:
    explicit MemoryShortage(std::size_t n, std::size_t failures = SIZE_MAX);
    MemoryShortage(const MemoryShortage&) = delete;
    MemoryShortage& operator=(const MemoryShortage&) = delete;
    ~MemoryShortage();

    /// Tells whether an allocation has failed.
    bool Struck() const;
};

}  // namespace tessara::test
