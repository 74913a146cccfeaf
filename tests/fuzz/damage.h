#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tessara::test {

/// What is done to a sound file, as the bytes of an input say; zeros when they are used up.
class Damage {
public:
    explicit Damage(std::span<const std::uint8_t> input) : input_(input) {}

    bool IsLeft() const { return !input_.empty(); }
    std::size_t Take(int bytes);
    std::vector<std::uint8_t> TakeBlock(std::size_t size);

    /// Cuts the file short.
    void Cut(std::string& file);

    /// Uses up the input for other bytes, mostly near the beginning of the file or of a page, where formats keep their
    /// numbers, for pages in the place of others, and for pieces that are missing or doubled.
    void Apply(std::string& file, std::size_t page);

private:
    std::span<const std::uint8_t> input_;
};

/// Ends the process with a sentence where something that must always be so isn't.
void Require(bool held, const std::string& what);

}  // namespace tessara::test
