#include "module/tessara_app.h"

#include "dialog/spin_messages.h"
#include "module/module_object.h"
#include "module/object_map.h"
#include "module/type_library.h"
#include "platform/com/guard.h"
#include "platform/com/module_file.h"

#include <string>

namespace {

// In the order of their start; they end the other way round.
ObjectMap g_objectMap;
ModuleObject g_module;
CTessaraApp g_app;
const tessara::ModuleSpan g_span(g_app);

}  // namespace

const tessara::MessageMap* CTessaraApp::GetMessageMap() const
{
    return CWinApp::GetMessageMap();
}

BOOL CTessaraApp::InitInstance()
{
    std::string path;
    Guard([&] {
        path = tessara::ModulePathOf(&g_module);
        return S_OK;
    });
    g_module.Init(g_objectMap, std::move(path), kTypeLibrary);
    tessara::RegisterSpinMessages();
    return CWinApp::InitInstance();
}

int CTessaraApp::ExitInstance()
{
    g_module.Term();
    return CWinApp::ExitInstance();
}

ModuleObject& TheModule() noexcept
{
    return g_module;
}
