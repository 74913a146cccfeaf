#include "app/output/output_check.h"

#include "host/elevation/elevation_sources.h"
#include "platform/system/replacement_file.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

namespace tessara {

namespace {

namespace fs = std::filesystem;

/// The endings as a list in words.
std::string Listed(std::initializer_list<std::string_view> endings)
{
    std::string list;
    std::size_t left = endings.size();
    for (const std::string_view ending : endings) {
        list += ending;
        --left;
        list += left > 1 ? ", " : left == 1 ? " or " : "";
    }
    return list;
}

void CheckEnding(const std::string& target, std::initializer_list<std::string_view> endings)
{
    std::string ending = fs::path(target).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    std::error_code error;
    const bool isDevice = fs::exists(target, error) && !fs::is_regular_file(target, error);
    if (ending.empty() || isDevice || endings.size() == 0 ||
        std::find(endings.begin(), endings.end(), ending) != endings.end())
        return;
    throw FileError(target, "\"" + ending + "\" is not what is written; the name must end in " + Listed(endings));
}

void CheckInputs(const std::string& target, const std::vector<std::string>& inputs)
{
    std::error_code error;
    if (!fs::is_regular_file(target, error))
        return;
    for (const std::string& input : inputs) {
        for (const std::string& source : FilesBehind(input)) {
            if (fs::equivalent(source, target, error))
                throw FileError(target,
                                source == input ? "it is what is read" : "what is read, " + input + ", is made of it");
        }
    }
}

}  // namespace

std::string CheckedOutput(const std::string& named, const std::vector<std::string>& inputs,
                          std::initializer_list<std::string_view> endings)
{
    if (named == "-")
        return kStandardOutput;
    CheckEnding(named, endings);
    RequireReplaceable(named);
    CheckInputs(named, inputs);
    return named;
}

}  // namespace tessara
