#include "host/elevation/gdal_session.h"

#include <cpl_conv.h>
#include <cpl_error.h>
#include <gdal.h>

#include <algorithm>
#include <mutex>

namespace tessara {
namespace {

struct Option {
    const char* name;
    const char* value;
};

/// A way out to the network that leads nowhere, for nothing listens at port 0: a file may point to other data, and that
/// must not make the program call servers.
constexpr const char* kDeadEnd = "http://127.0.0.1:0";
constexpr const char* kDeadEndMark = "127.0.0.1 port 0";
constexpr Option kOffline[] = {
    {"GDAL_HTTP_PROXY", kDeadEnd}, {"GDAL_HTTPS_PROXY", kDeadEnd}, {"GDAL_HTTP_MAX_RETRY", "0"}};

constexpr std::size_t kLongestMessage = 160;

void CPL_STDCALL KeepFirstFailure(CPLErr severity, CPLErrorNum, const char* message)
{
    auto* first = static_cast<std::string*>(CPLGetErrorHandlerUserData());
    if (severity >= CE_Failure && first->empty())
        *first = message != nullptr && *message != '\0' ? message : "unknown error";
}

/// Shortens a text in UTF-8 without cutting through a character.
void Shorten(std::string& text, std::size_t length)
{
    if (text.size() <= length)
        return;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0u) == 0x80u)
        --length;
    text.resize(length);
}

}  // namespace

GdalSession::GdalSession(bool mayUseNetwork)
{
    static_assert(std::size(kOffline) == kOptionCount);
    for (std::size_t i = 0; i < kOptionCount; ++i)
        before_[i] = CPLGetThreadLocalConfigOption(kOffline[i].name, "");
    CPLPushErrorHandlerEx(&KeepFirstFailure, &firstFailure_);
    if (!mayUseNetwork)
        for (const Option& option : kOffline)
            CPLSetThreadLocalConfigOption(option.name, option.value);
    static std::once_flag registered;
    std::call_once(registered, [] { GDALAllRegister(); });
    ForgetFailures();  // a driver that can't be loaded is not the file's fault
}

GdalSession::~GdalSession()
{
    for (std::size_t i = 0; i < kOptionCount; ++i)
        CPLSetThreadLocalConfigOption(kOffline[i].name, before_[i].empty() ? nullptr : before_[i].c_str());
    CPLPopErrorHandler();
}

std::string GdalSession::Reason(const std::string& what, const std::string& name) const
{
    if (firstFailure_.find(kDeadEndMark) != std::string::npos)
        return "it points to data on a network, which is not read";
    std::string message = firstFailure_;
    for (const std::string& front : {name, name.substr(name.rfind('/') + 1)})
        if (message.starts_with(front))
            message.erase(0, message.find_first_not_of(":, ", front.size()));
    std::replace_if(
        message.begin(), message.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
    Shorten(message, kLongestMessage);
    message.erase(message.find_last_not_of(" .") + 1);
    return message.empty() ? what : what + " (" + message + ")";
}

}  // namespace tessara
