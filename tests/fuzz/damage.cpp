#include "fuzz/damage.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace tessara::test {

std::size_t Damage::Take(int bytes)
{
    std::size_t number = 0;
    for (int i = 0; i < bytes; ++i) {
        number = number << 8 | (IsLeft() ? input_.front() : 0u);
        input_ = input_.subspan(IsLeft() ? 1 : 0);
    }
    return number;
}

std::vector<std::uint8_t> Damage::TakeBlock(std::size_t size)
{
    const auto block = input_.first(std::min(size, input_.size()));
    input_ = input_.subspan(block.size());
    std::vector<std::uint8_t> taken(block.begin(), block.end());
    taken.resize(size);
    return taken;
}

void Damage::Cut(std::string& file)
{
    file.resize(Take(3) % file.size());
}

void Damage::Apply(std::string& file, std::size_t page)
{
    while (IsLeft() && !file.empty()) {
        const std::size_t pages = (file.size() + page - 1) / page;
        const std::size_t how = Take(1);
        const std::size_t start = how % pages * page;
        const std::size_t any = Take(3) % file.size();
        if (how < 16)
            file.replace(start, page, std::string(file, Take(1) % pages * page, page));
        else if (how < 144)
            file[std::min(start + any % 256, file.size() - 1)] = static_cast<char>(Take(1));
        else if (how < 160)
            file.erase(any, Take(1) % 32);
        else if (how < 176)
            file.insert(any, std::string(file, any, Take(1) % 32));
        else
            file[any] = static_cast<char>(Take(1));
    }
}

void Require(bool held, const std::string& what)
{
    if (held)
        return;
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

}  // namespace tessara::test
