#pragma once

#include <string>

namespace CLI {
class App;
class Error;
}  // namespace CLI

namespace tessara {

/// What to tell a user who mistyped something: what was wrong, and which help tells more.
std::string UsageMessage(const CLI::App* program, const CLI::Error& error);

}  // namespace tessara
