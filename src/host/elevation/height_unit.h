#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessara {

/// A unit of heights.
struct HeightUnit {
    double metres = 1.0;  ///< in one of it
    std::string name;     ///< as the file has it, empty for metres
    std::string note;     ///< a sentence for the user where the unit is not metres
};

/// \param name in any case, such as "m", "ft" and "us-ft" \return nothing for a name that is none of a unit
std::optional<HeightUnit> KnownHeightUnit(std::string_view name);

/// \param name as an elevation file has it, in any case; empty means metres, and so does an unknown one
HeightUnit HeightUnitOf(std::string_view name);

}  // namespace tessara
