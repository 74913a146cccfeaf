#include "app/options/usage_message.h"

#include "platform/system/terminal_text.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <vector>

namespace tessara {

namespace {

/// What a command didn't know.
std::string UnknownText(const CLI::App& command, const std::string& word)
{
    if (word.starts_with("-"))
        return "there is no option " + word.substr(0, word.find('='));
    return command.get_subcommands({}).empty() ? "\"" + word + "\" is one argument too many"
                                               : "there is no command \"" + word + "\"";
}

std::string MissingCommandText(const CLI::App& command)
{
    std::string list;
    for (const CLI::App* below : command.get_subcommands({}))
        list += (list.empty() ? "" : ", ") + below->get_name();
    return "a command must follow: " + list;
}

/// CLI11 tells first what is missing, even where a mistyped word is the reason.
std::string Reason(const CLI::App& command, const CLI::Error& error)
{
    const bool isMissing = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
    const std::vector<std::string> unknown = command.remaining(true);
    if (!unknown.empty() && (isMissing || dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr))
        return UnknownText(command, unknown.front());
    if (isMissing && command.get_require_subcommand_min() > 0)
        return MissingCommandText(command);
    const std::string text = error.what();
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
        return text.substr(0, text.find(':')) + " lacks a value";
    if (dynamic_cast<const CLI::ConversionError*>(&error) != nullptr)
        return text.substr(text.find(": ") + 2) + " is not a value that it takes";
    return text;
}

}  // namespace

std::string UsageMessage(const CLI::App* program, const CLI::Error& error)
{
    std::string name = program->get_name();
    const CLI::App* command = program;
    while (!command->get_subcommands().empty()) {
        command = command->get_subcommands().front();
        name += " " + command->get_name();
    }
    return name + ": " + TerminalText(Reason(*command, error)) + "\nTry: " + name + " --help\n";
}

}  // namespace tessara
