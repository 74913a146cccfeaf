#include "app/output/output_check.h"

#include "platform/system/replacement_file.h"

#include <filesystem>
#include <system_error>

namespace tessara {

void RequireWritable(const std::string& target, const std::string& source)
{
    RequireReplaceable(target);
    std::error_code error;
    if (!source.empty() && std::filesystem::equivalent(source, target, error))
        throw FileError(target, "it is the elevation file itself");
}

}  // namespace tessara
