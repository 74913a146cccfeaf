#include "host/elevation/no_data_mark.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cmath>
#include <limits>

namespace tessara {
namespace {

constexpr int kWholeNumbers = 65536;

bool IsHeight(const ElevationData& data, float mark)
{
    for (std::size_t cell = 0; cell < data.metres.size(); ++cell)
        if (data.metres[cell] == mark && data.HasData(cell))
            return true;
    return false;
}

std::optional<float> FreeWholeNumber(const ElevationData& data)
{
    std::bitset<kWholeNumbers> used;
    for (std::size_t cell = 0; cell < data.metres.size(); ++cell)
        if (data.HasData(cell))
            used.set(static_cast<std::size_t>(std::clamp(std::lround(data.metres[cell]), 0L, kWholeNumbers - 1L)));
    const double told = data.noDataMark.value_or(-1.0);
    if (told >= 0.0 && told < kWholeNumbers && told == std::floor(told) && !used[static_cast<std::size_t>(told)])
        return static_cast<float>(told);
    if (!used[0])
        return 0.0f;
    for (int number = kWholeNumbers - 1; number > 0; --number)
        if (!used[static_cast<std::size_t>(number)])
            return static_cast<float>(number);
    return std::nullopt;
}

}  // namespace

std::optional<float> FreeNoDataMark(const ElevationData& data, bool wholeNumbers)
{
    if (wholeNumbers)
        return FreeWholeNumber(data);
    std::array<float, 5> marks = {-9999.0f, -9999.0f, -32768.0f, -99999.0f, std::numeric_limits<float>::lowest()};
    // One that a float can't hold would come back as another.
    if (data.noDataMark && std::abs(*data.noDataMark) <= static_cast<double>(std::numeric_limits<float>::max()) &&
        static_cast<double>(static_cast<float>(*data.noDataMark)) == *data.noDataMark)
        marks[0] = static_cast<float>(*data.noDataMark);
    const auto* free = std::find_if(marks.begin(), marks.end(), [&](float mark) { return !IsHeight(data, mark); });
    return free != marks.end() ? std::optional(*free) : std::nullopt;
}

}  // namespace tessara
