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
    // Chunks grow with the tree, so that small trees stay small and large ones cost few allocations.
    const std::size_t wanted = std::clamp(held_ / 4, kSmallestChunk, kLargestChunk);
    const std::size_t blocks = std::max<std::size_t>(1, (wanted - sizeof(Chunk)) / blockSize_);
    const std::size_t size = sizeof(Chunk) + blocks * blockSize_;
    auto* memory = static_cast<std::byte*>(::operator new(size));
    chunks_ = new (memory) Chunk{chunks_};
    fresh_ = memory + sizeof(Chunk);
    freshEnd_ = fresh_ + blocks * blockSize_;
    held_ += size;
}

void NodePool::Release() noexcept
{
    while (chunks_)
        ::operator delete(std::exchange(chunks_, chunks_->next));
    freeList_ = nullptr;
    fresh_ = nullptr;
    freshEnd_ = nullptr;
    used_ = 0;
    held_ = 0;
}

void NodePool::Refuse()
{
    throw std::bad_alloc();
}
