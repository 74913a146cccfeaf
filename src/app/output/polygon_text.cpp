#include "app/output/polygon_text.h"

#include <algorithm>

namespace tessara {

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20;

}  // namespace

void PolygonText::Append(std::string_view text)
{
    lines_ += static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
    if (pieces_.empty() || pieces_.back().size() + text.size() > kPiece)
        Begin();
    pieces_.back() += text;
}

void PolygonText::Begin()
{
    std::string rest;
    if (!pieces_.empty()) {
        std::string& last = pieces_.back();
        const std::size_t end = last.rfind('\n') + 1;  // 0 where there is none
        rest = last.substr(end);
        last.resize(end);
    }
    pieces_.emplace_back().reserve(kPiece);
    pieces_.back() = rest;
}

}  // namespace tessara
