#include "app/output/report.h"

#include "host/elevation/elevation_data.h"
#include "platform/system/replacement_file.h"
#include "platform/system/terminal_text.h"

#include <unistd.h>

#include <charconv>
#include <cmath>
#include <iomanip>
#include <iostream>

namespace tessara {

std::string NumberText(double value, int decimals)
{
    const double unit = std::pow(10.0, decimals);
    char digits[400];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, std::round(value * unit) / unit + 0.0, std::chars_format::fixed);
    return std::string(digits, end.ptr);
}

std::string MebibytesText(double bytes)
{
    return NumberText(bytes / (1024.0 * 1024.0), 1) + " MiB";
}

void Line(const char* name, const std::string& text)
{
    std::cout << std::left << std::setw(20) << TerminalText(name) << TerminalText(text) << '\n';
}

void PrintWritten(const std::string& what, const std::string& path)
{
    if (path != kStandardOutput)
        std::cout << TerminalText(what) << '\n' << (isatty(STDOUT_FILENO) != 0 ? TerminalText(path) : path) << '\n';
}

void PrintGrid(const ElevationData& data)
{
    Line("Heights", std::to_string(data.width) + " columns x " + std::to_string(data.height) + " rows");
    if (data.sourceWidth != data.width || data.sourceHeight != data.height)
        Line("In the file", std::to_string(data.sourceWidth) + " columns x " + std::to_string(data.sourceHeight) +
                                " rows, read at a lower resolution");
    Line("Spacing", NumberText(data.spacingX, 3) + " m east, " + NumberText(data.spacingY, 3) + " m south");
    Line("Extent", NumberText(data.spacingX * (data.width - 1) / 1000.0, 3) + " km x " +
                       NumberText(data.spacingY * (data.height - 1) / 1000.0, 3) + " km");
    const auto [lowest, highest] = data.sourceRange.value_or(std::pair(data.minimum, data.maximum));
    Line("Lowest, highest",
         NumberText(static_cast<double>(lowest), 2) + " m, " + NumberText(static_cast<double>(highest), 2) + " m");
}

void PrintReference(const ElevationData& data)
{
    Line("Reference system", data.referenceSystem.empty() ? "none" : data.referenceSystem);
    if (data.georeferenced)
        Line("North-west point", NumberText(data.originX, 7) + ", " + NumberText(data.originY, 7));
}

}  // namespace tessara
