#pragma once

#include <cstddef>
#include <cstdint>

/// Blocks of one size for the nodes of a tree, handed out from large chunks, with a free list. All blocks can be
/// dropped at once, with their memory or to be handed out again.
class NodePool {
public:
    /// \param blockSize in bytes, a multiple of the alignment of a pointer and no smaller than one
    explicit NodePool(std::size_t blockSize) : blockSize_(blockSize) {}
    NodePool(const NodePool&) = delete;
    NodePool& operator=(const NodePool&) = delete;
    ~NodePool() { Release(); }

    /// \return an uninitialised block \throws std::bad_alloc when memory is short or BlockLimit is reached
    void* Allocate()
    {
        if (used_ >= BlockLimit)
            Refuse();
        void* block = freeList_;
        if (block) {
            freeList_ = freeList_->next;
        } else {
            if (fresh_ == freshEnd_)
                AddChunk();
            block = fresh_;
            fresh_ += blockSize_;
        }
        ++used_;
        return block;
    }

    /// Takes back a block of Allocate.
    void Free(void* block) noexcept
    {
        auto* free = static_cast<FreeBlock*>(block);
        free->next = freeList_;
        freeList_ = free;
        --used_;
    }

    /// Drops every block and keeps the memory for those to come.
    void Recycle() noexcept;

    /// Gives back the memory that Recycle has kept and that wasn't needed since.
    void ReleaseSpare() noexcept;

    /// Drops every block and gives the memory back.
    void Release() noexcept;

    std::size_t BlocksUsed() const { return used_; }

    /// Memory taken from the system, free blocks included.
    std::size_t BytesHeld() const { return held_; }

    std::size_t BlockLimit = SIZE_MAX;  ///< blocks that may be in use at once; one more fails as if memory were short

private:
    struct FreeBlock {
        FreeBlock* next;
    };
    struct Chunk {
        Chunk* next;
        std::size_t size;  // with this header
    };

    void AddChunk();
    [[noreturn]] static void Refuse();

    std::size_t blockSize_;
    FreeBlock* freeList_ = nullptr;
    std::byte* fresh_ = nullptr;  // blocks of the newest chunk that were never handed out
    std::byte* freshEnd_ = nullptr;
    Chunk* chunks_ = nullptr;  // in use, the newest first
    Chunk* spare_ = nullptr;   // kept by Recycle, the oldest first
    std::size_t used_ = 0;
    std::size_t held_ = 0;
};
