#include "terrain/node_pool.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

constexpr std::size_t kSmallestChunk = std::size_t{16} << 10;
constexpr std::size_t kLargestChunk = std::size_t{8} << 20;

}  // namespace

void NodePool::AddChunk()
{
    Chunk* chunk = spare_;
    if (chunk) {
        spare_ = chunk->next;
    } else {
        // Chunks grow with the tree, so that small trees stay small and large ones cost few allocations.
        const std::size_t wanted = std::clamp(held_ / 4, kSmallestChunk, kLargestChunk);
        const std::size_t blocks = std::max<std::size_t>(1, (wanted - sizeof(Chunk)) / blockSize_);
        const std::size_t size = sizeof(Chunk) + blocks * blockSize_;
        chunk = new (::operator new(size)) Chunk{nullptr, size};
        held_ += size;
    }
    chunk->next = std::exchange(chunks_, chunk);
    fresh_ = reinterpret_cast<std::byte*>(chunk + 1);
    freshEnd_ = reinterpret_cast<std::byte*>(chunk) + chunk->size;
}

void NodePool::Recycle() noexcept
{
    while (chunks_) {
        Chunk* chunk = std::exchange(chunks_, chunks_->next);
        chunk->next = std::exchange(spare_, chunk);
    }
    freeList_ = nullptr;
    fresh_ = nullptr;
    freshEnd_ = nullptr;
    used_ = 0;
}

void NodePool::ReleaseSpare() noexcept
{
    while (spare_) {
        held_ -= spare_->size;
        ::operator delete(std::exchange(spare_, spare_->next));
    }
}

void NodePool::Release() noexcept
{
    Recycle();
    ReleaseSpare();
}

void NodePool::Refuse()
{
    throw std::bad_alloc();
}
