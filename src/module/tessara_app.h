#pragma once

#include "platform/system/win_app.h"

class ModuleObject;

/// The module's application object: its start and its end.
class CTessaraApp final : public CWinApp {
public:
    CTessaraApp() noexcept : CWinApp(nullptr) {}
    ~CTessaraApp() override = default;
    const tessara::MessageMap* GetMessageMap() const override;

    /// Starts the module object and asks for the numbers of the spin messages.
    BOOL InitInstance() override;

    /// Ends the module object, which releases the cached class factory.
    int ExitInstance() override;
};

/// The one module object, alive from InitInstance to ExitInstance.
ModuleObject& TheModule() noexcept;
