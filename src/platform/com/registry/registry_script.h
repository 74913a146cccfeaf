#pragma once

#include <string>
#include <string_view>

namespace tessara {

class RegistryData;

/// What is to be done with the entries of a script.
enum class ScriptAction { Register, Unregister };

/// Carries out a registration script, which is data:
///
///     HKCR
///     {
///         Name.Class = s 'default value'
///         {
///             Subkey = s 'value'
///         }
///         NoRemove CLSID
///         {
///             ForceRemove {...} = s 'value'
///             {
///                 InprocServer32 = s '%MODULE%'
///                 {
///                     val ThreadingModel = s 'Apartment'
///                 }
///             }
///         }
///     }
///
/// Registering makes the keys and sets the values; a ForceRemove key is deleted first, with all below it. Unregistering
/// deletes the keys: a ForceRemove key with all below it, a NoRemove key never, any other one unless keys that aren't
/// the script's are below it, which then loses the script's values. Words with blanks, braces or '=' stand in single
/// quotes; a doubled quote is one of the text.
/// \param modulePath what "%MODULE%" stands for, the one replacement; "%%" is a percent sign
/// \throws RegistryError with E_FAIL, which names the line, for a script that can't be carried out. `data` may have
/// changed by then.
void RunRegistryScript(std::string_view script, ScriptAction action, std::string_view modulePath, RegistryData& data);

}  // namespace tessara
