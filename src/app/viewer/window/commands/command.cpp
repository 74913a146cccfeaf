#include "app/viewer/window/commands/command.h"

#include "app/viewer/window/commands/menu_commands.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <vector>

namespace tessara {

std::span<const Command> AllCommands()
{
    static const std::vector<Command> all = [] {
        std::vector<Command> joined;
        for (const auto menu : {FileCommands(), EditCommands(), ViewCommands(), TerrainCommands(), HelpCommands()})
            joined.insert(joined.end(), menu.begin(), menu.end());
        return joined;
    }();
    return all;
}

const Command* FindCommand(int id)
{
    const auto commands = AllCommands();
    const auto found = std::ranges::find(commands, id, &Command::id);
    return found == commands.end() ? nullptr : &*found;
}

int PlainKey(const Command& command)
{
    const std::string_view key = command.key;
    if (key.size() == 1)
        return key[0];
    return key == "Home" ? WXK_HOME : 0;
}

const Command* CommandOfKey(int key)
{
    const auto commands = AllCommands();
    const auto found = std::ranges::find_if(commands, [key](const Command& command) {
        return PlainKey(command) != 0 && PlainKey(command) == std::toupper(key);
    });
    return found == commands.end() ? nullptr : &*found;
}

std::string KeyText(const Command& command)
{
    std::string text;
    for (const char* letter = command.key; *letter; ++letter)
        text += *letter == '+' ? std::string(" + ") : std::string(1, *letter);
    return text;
}

std::string PlainLabel(const Command& command)
{
    std::string label = command.label;
    std::erase(label, '&');
    return label;
}

}  // namespace tessara
