#pragma once

namespace tessara {

/// Whose registrations: the user's, which are looked at first, or everybody's on the machine.
enum class RegistryScope { User, System };

}  // namespace tessara
