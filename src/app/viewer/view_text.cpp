#include "app/viewer/view_text.h"

#include "host/elevation/elevation_data.h"
#include "platform/system/number_text.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

/// A number without needless zeros behind the point.
std::string Trimmed(double value, int digits)
{
    std::string text = FixedText(value, digits);
    if (text.find('.') == std::string::npos)
        return text;
    while (text.back() == '0')
        text.pop_back();
    if (text.back() == '.')
        text.pop_back();
    return text == "-0" ? "0" : text;
}

/// Digits behind the point that tell two neighbouring cells apart.
int DigitsFor(double step)
{
    return std::clamp(static_cast<int>(std::ceil(1.0 - std::log10(std::max(std::fabs(step), 1e-9)))), 0, 9);
}

}  // namespace

std::string LengthText(double metres)
{
    return std::fabs(metres) >= 1000.0 ? Trimmed(metres / 1000.0, 2) + " km" : Trimmed(metres, 2) + " m";
}

std::string HeightText(double metres)
{
    return FixedText(metres, 1) + " m";
}

std::string SlopeText(double degrees)
{
    return FixedText(degrees, 1) + "°";
}

std::string CountText(std::uint64_t count)
{
    std::string digits = std::to_string(count);
    for (std::size_t place = digits.size(); place > 3;) {
        place -= 3;
        digits.insert(place, "\u202F");
    }
    return digits;
}

std::string PlaceText(const ElevationData& data, double x, double z)
{
    const double depth = (data.height - 1) * data.spacingY;
    const std::string metres = LengthText(x) + " E, " + LengthText(depth - z) + " N";
    if (!data.georeferenced)
        return metres;
    const double first = data.originX + x / data.spacingX * data.stepX;
    const double second = data.originY + z / data.spacingY * data.stepY;
    const int digits = DigitsFor(data.stepX);
    if (data.geographic)
        return FixedText(std::fabs(second), digits) + (second < 0.0 ? "° S  " : "° N  ") +
               FixedText(std::fabs(first), digits) + (first < 0.0 ? "° W" : "° E") + "   (" + metres + ")";
    return FixedText(first, digits) + " E  " + FixedText(second, digits) + " N   (" + metres + ")";
}

double RoundLength(double most)
{
    const double unit = std::pow(10.0, std::floor(std::log10(most)));
    for (const double factor : {5.0, 2.0}) {
        if (factor * unit <= most)
            return factor * unit;
    }
    return unit;
}

std::vector<double> LegendMarks(double low, double high, int most)
{
    std::vector<double> marks;
    if (!(high > low))
        return {low};
    double step = RoundLength((high - low) / most);
    while ((high - low) / step > most)
        step = RoundLength(step * 2.5);
    for (double mark = std::ceil(low / step) * step; mark <= high + step * 1e-9; mark += step)
        marks.push_back(std::fabs(mark) < step * 1e-9 ? 0.0 : mark);
    return marks;
}

}  // namespace tessara
