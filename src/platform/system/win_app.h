#pragma once

#include "platform/com/types.h"

namespace tessara {
struct MessageMap;
}

/// The application object of a program or a module: what happens at its start and its end.
class CWinApp {
public:
    /// \param applicationName outlives the object; null for the name of the program itself
    explicit CWinApp(const char* applicationName = nullptr) noexcept : m_pszAppName(applicationName) {}
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp() = default;

    /// Handlers of the application's messages, or null for none.
    virtual const tessara::MessageMap* GetMessageMap() const { return nullptr; }

    /// Called once at the start. \return 0 when it failed
    virtual BOOL InitInstance() { return 1; }

    /// Called once at the end. \return the exit code, which means nothing for a module
    virtual int ExitInstance() { return 0; }

    const char* const m_pszAppName;
};

namespace tessara {

/// Starts an application object and ends it: an object of this class that stands behind it, at the level of a module's
/// file, makes the module's loading its start and its unloading its end.
class ModuleSpan {
public:
    explicit ModuleSpan(CWinApp& application) : application_(application) { application_.InitInstance(); }
    ModuleSpan(const ModuleSpan&) = delete;
    ModuleSpan& operator=(const ModuleSpan&) = delete;
    ~ModuleSpan() { application_.ExitInstance(); }

private:
    CWinApp& application_;
};

}  // namespace tessara
