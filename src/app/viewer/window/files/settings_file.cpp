#include "app/viewer/window/files/settings_file.h"

#include "platform/system/file_lock.h"
#include "platform/system/replacement_stream.h"

#include <wx/fileconf.h>
#include <wx/filename.h>
#include <wx/log.h>
#include <wx/mstream.h>
#include <wx/stdpaths.h>
#include <wx/utils.h>

#include <optional>
#include <vector>

namespace tessara {

namespace {

wxFileName SettingsPath()
{
    wxStandardPaths& paths = wxStandardPaths::Get();
    paths.SetFileLayout(wxStandardPaths::FileLayout_XDG);
    wxFileName name(paths.GetUserConfigDir(), "viewer.ini");
    name.AppendDir("tessara");
    return name;
}

/// Walks through all groups and entries.
void ReadGroup(wxFileConfig& file, const wxString& group, SettingsMap& stored)
{
    file.SetPath("/" + group);
    wxString entry;
    long cookie = 0;
    for (bool more = file.GetFirstEntry(entry, cookie); more; more = file.GetNextEntry(entry, cookie))
        stored[(group + "/" + entry).utf8_string()] = file.Read(entry, wxEmptyString).utf8_string();
    file.SetPath("/");
}

constexpr long kStyle = wxCONFIG_USE_LOCAL_FILE | wxCONFIG_USE_NO_ESCAPE_CHARACTERS;
constexpr int kTries = 50;
constexpr int kBetweenTries = 10;  // milliseconds

SettingsMap ReadMap(const wxFileName& path)
{
    const wxLogNull quiet;
    wxFileConfig file(wxEmptyString, wxEmptyString, path.GetFullPath(), wxEmptyString, kStyle, wxConvUTF8);
    file.SetExpandEnvVars(false);
    SettingsMap stored;
    std::vector<wxString> groups;
    wxString group;
    long cookie = 0;
    for (bool more = file.GetFirstGroup(group, cookie); more; more = file.GetNextGroup(group, cookie))
        groups.push_back(group);
    for (const wxString& each : groups)
        ReadGroup(file, each, stored);
    return stored;
}

/// \throws FileError
void WriteMap(const wxFileName& path, const SettingsMap& stored)
{
    wxMemoryInputStream nothing("", 0);
    wxFileConfig file(nothing, wxConvUTF8);
    file.DisableAutoSave();
    file.SetExpandEnvVars(false);
    file.SetStyle(kStyle);
    for (const auto& [name, text] : stored) {
        // A line of the file holds no more than one.
        if (text.find_first_of("\r\n") == std::string::npos)
            file.Write("/" + wxString::FromUTF8(name), wxString::FromUTF8(text));
    }
    wxMemoryOutputStream bytes;
    file.Save(bytes, wxConvUTF8);
    ReplacementStream target(path.GetFullPath().utf8_string(), ReplacementFile::Kind::File);
    target.Stream().write(static_cast<const char*>(bytes.GetOutputStreamBuffer()->GetBufferStart()),
                          static_cast<std::streamsize>(bytes.GetSize()));
    target.PutInPlace();
}

/// Waits for its turn. \return nothing when it doesn't come
std::optional<FileLock> TakeTurn(const wxFileName& path)
{
    const std::string name = path.GetFullPath().utf8_string() + ".lock";
    for (int i = 0; i < kTries; ++i) {
        for (const auto open : {FileLock::Open::Existing, FileLock::Open::New}) {
            if (auto lock = FileLock::Try(name, open))
                return lock;
        }
        wxMilliSleep(kBetweenTries);
    }
    return std::nullopt;
}

}  // namespace

KeptSettings LoadSettings()
{
    return Restore(ReadMap(SettingsPath()));
}

bool ChangeSettings(const std::function<void(SettingsMap&)>& change)
{
    const wxLogNull quiet;
    const wxFileName path = SettingsPath();
    if (!wxFileName::Mkdir(path.GetPath(), wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL) && !path.DirExists())
        return false;
    const auto turn = TakeTurn(path);
    if (!turn)
        return false;
    SettingsMap stored = ReadMap(path);
    change(stored);
    try {
        WriteMap(path, stored);
    } catch (const FileError&) {
        return false;
    }
    return true;
}

}  // namespace tessara
