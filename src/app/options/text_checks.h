#pragma once

#include <string>
#include <vector>

namespace CLI {
class Validator;
}

namespace tessara {

/// Refuses a text without a letter, as an unset variable of the shell gives one.
CLI::Validator NotEmpty();

/// Takes one of some words.
CLI::Validator OneOf(std::vector<std::string> words);

/// Takes what can be the name of a terrain or a texture: up to 255 bytes without control characters.
CLI::Validator NameText();

}  // namespace tessara
