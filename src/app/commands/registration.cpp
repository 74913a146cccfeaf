#include "app/commands/commands.h"
#include "app/options/text_checks.h"
#include "app/output/debug_reasons.h"
#include "host/module_path.h"
#include "platform/com/class_registry.h"
#include "platform/com/guid_text.h"
#include "platform/com/module_server.h"
#include "platform/com/version_record.h"
#include "platform/system/terminal_text.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <stdexcept>

namespace tessara {

namespace {

struct RegistrationOptions {
    std::string module;  // empty for the one that lies with this program
    bool system = false;
};

/// The first reason that was given, or words with the result code where none was.
std::string Sentence(const DebugReasons& reasons, const std::string& what, HRESULT result)
{
    if (!reasons.First().empty())
        return reasons.First() + '.';
    char digits[8];
    const auto end = std::to_chars(digits, digits + sizeof digits, static_cast<std::uint32_t>(result), 16);
    return what + " (result 0x" + std::string(digits, end.ptr) + ").";
}

std::string ModuleOf(const RegistrationOptions& options)
{
    return options.module.empty() ? FindModulePath() : std::filesystem::absolute(options.module).string();
}

const char* NameOf(RegistryScope scope)
{
    return scope == RegistryScope::User ? "this user" : "all users";
}

/// Path and version of a module.
std::string Describe(const std::string& module)
{
    const auto record = ReadVersionRecord(module);
    if (!record)
        return module;
    std::string text = module + " (version ";
    for (const WORD part : record->fileVersion)
        text += std::to_string(part) + '.';
    text.back() = ')';
    return text;
}

RegistryScope ScopeOf(const RegistrationOptions& options)
{
    return options.system ? RegistryScope::System : RegistryScope::User;
}

/// What is registered in the file that a scope's registrations go to.
std::vector<RegisteredClass> ClassesIn(RegistryScope scope)
{
    std::vector<RegisteredClass> classes = ListRegisteredClasses().classes;
    const std::string file = RegistrationFile(scope);
    classes.erase(std::remove_if(classes.begin(), classes.end(),
                                 [&file](const RegisteredClass& one) { return one.store != file; }),
                  classes.end());
    return classes;
}

void Register(const RegistrationOptions& options)
{
    const std::string module = ModuleOf(options);
    const RegistryScope scope = ScopeOf(options);
    SetRegistrationScope(scope);
    {
        const DebugReasons reasons;
        const HRESULT result = RegisterServer(module);
        if (FAILED(result))
            throw std::runtime_error(Sentence(reasons, "The module " + module + " can't be registered", result));
    }
    std::cout << Describe(module) << "\nis registered for " << NameOf(scope) << ", in " << RegistrationFile(scope)
              << '\n';
    for (const RegisteredClass& one : ClassesIn(scope)) {
        if (one.hidden && one.modulePath == module)
            std::cout << "Another registration of " << one.name << " comes before it; see tessara classes.\n";
    }
}

void Unregister(const RegistrationOptions& options)
{
    const std::string module = ModuleOf(options);
    const RegistryScope scope = ScopeOf(options);
    SetRegistrationScope(scope);
    const std::size_t before = ClassesIn(scope).size();
    {
        // The module itself reports no failure, so a reason that was given is one.
        const DebugReasons reasons;
        const HRESULT result = UnregisterServer(module);
        if (FAILED(result) || !reasons.First().empty())
            throw std::runtime_error(Sentence(reasons, "The module " + module + " can't be unregistered", result));
    }
    std::cout << Describe(module)
              << (ClassesIn(scope).size() < before ? "\nis no longer registered for " : "\nwas not registered for ")
              << NameOf(scope) << '\n';
}

void Line(const char* name, const std::string& text)
{
    std::cout << "  " << std::left << std::setw(12) << name << TerminalText(text) << '\n';
}

/// What a host gets that asks for the class.
HRESULT Probe(const RegisteredClass& one)
{
    std::string path = one.modulePath;
    const HRESULT found = one.hidden ? S_OK : FindRegisteredModule(one.id, path);
    return FAILED(found) ? found : ProbeServer(path, one.id);
}

/// \return whether the class loads
bool PrintClass(const RegisteredClass& one)
{
    const DebugReasons reasons;
    const HRESULT result = Probe(one);
    const bool loads = SUCCEEDED(result);
    std::cout << (one.name.empty() ? "A class without a name" : TerminalText(one.name)) << '\n';
    Line("Class", GuidText(one.id));
    if (!one.progId.empty())
        Line("Name", one.progId);
    Line("Module", Describe(one.modulePath));
    Line("Registered", std::string("for ") + NameOf(one.scope) + ", in " + one.store);
    Line("Loads", loads ? "yes" : "no: " + Sentence(reasons, "The module doesn't serve the class", result));
    if (one.hidden)
        Line("Used", "no: the same class is registered above");
    return loads;
}

void Classes()
{
    const RegistryContent content = ListRegisteredClasses();
    int broken = 0;
    for (const RegisteredClass& one : content.classes)
        broken += PrintClass(one) ? 0 : 1;
    if (!content.faults.empty())
        throw std::runtime_error(content.faults.front());
    if (content.classes.empty())
        std::cout << "No class is registered.\n";
    if (broken != 0)
        throw std::runtime_error(std::to_string(broken) + " of the registered classes can't be loaded.");
}

void AddRegistrationOptions(CLI::App& command, RegistrationOptions& options)
{
    command.add_option("MODULE", options.module, "The component's file [the one that came with this program]")
        ->check(NotEmpty())
        ->option_text(" ");
    command.add_flag("--system", options.system, "For all users of this machine, instead of for you");
}

}  // namespace

void AddRegistrationCommands(CLI::App& program)
{
    const auto options = std::make_shared<RegistrationOptions>();
    CLI::App& enter =
        *program.add_subcommand("register", "Let other programs find the terrain component")->group("Component");
    AddRegistrationOptions(enter, *options);
    enter.callback([options] { Register(*options); });
    CLI::App& leave = *program.add_subcommand("unregister", "Take the terrain component out again")->group("Component");
    AddRegistrationOptions(leave, *options);
    leave.callback([options] { Unregister(*options); });
    program.add_subcommand("classes", "List the registered components, and whether they load")
        ->group("Component")
        ->callback(Classes);
}

}  // namespace tessara
