#include "app/viewer/picture/view_text.h"

#include "host/elevation/elevation_data.h"
#include "platform/system/number_text.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

/// Places closer than this share of a step count as one.
constexpr double kSame = 1e-9;

/// A rounded number, where a minus before nothing but zeros is none.
std::string Rounded(double value, int digits)
{
    const std::string text = FixedText(value, digits);
    return text.find_first_of("123456789") == std::string::npos && text.starts_with('-') ? text.substr(1) : text;
}

/// A number without needless zeros behind the point.
std::string Trimmed(double value, int digits)
{
    std::string text = Rounded(value, digits);
    if (text.find('.') == std::string::npos)
        return text;
    while (text.back() == '0')
        text.pop_back();
    if (text.back() == '.')
        text.pop_back();
    return text;
}

/// Digits behind the point that tell two neighbouring cells apart.
int DigitsFor(double step)
{
    return std::clamp(static_cast<int>(std::ceil(1.0 - std::log10(std::max(std::fabs(step), 1e-9)))), 0, 9);
}

}  // namespace

std::string LengthText(double metres)
{
    return std::fabs(metres) >= 999.995 ? Trimmed(metres / 1000.0, 2) + " km" : Trimmed(metres, 2) + " m";
}

std::string HeightText(double metres)
{
    return Rounded(metres, 1) + " m";
}

std::string HeightText(const ElevationData& data, double metres)
{
    if (data.heightUnitName.empty())
        return HeightText(metres);
    return Rounded(metres / data.heightUnit, 1) + " " + data.heightUnitName + " (" + HeightText(metres) + ")";
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
    return Rounded(first, digits) + " E  " + Rounded(second, digits) + " N   (" + metres + ")";
}

double RoundLength(double most)
{
    const double unit = std::pow(10.0, std::floor(std::log10(most)));
    for (const double factor : {5.0, 2.0}) {
        if (factor * unit <= most * (1.0 + kSame))
            return factor * unit;
    }
    return unit;
}

std::vector<double> LegendMarks(double low, double high, int most)
{
    if (!(high > low) || !std::isfinite(high - low))
        return {low};
    double step = RoundLength((high - low) / most);
    const auto first = [&] { return std::ceil(low / step - kSame); };
    const auto count = [&] { return std::floor(high / step + kSame) - first() + 1.0; };
    while (count() > most)
        step = RoundLength(step * 2.5);
    std::vector<double> marks;
    for (int i = 0; i < static_cast<int>(count()); ++i)
        marks.push_back((first() + i) * step + 0.0);  // never a negative zero
    return marks;
}

}  // namespace tessara
