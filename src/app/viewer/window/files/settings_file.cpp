#include "app/viewer/window/files/settings_file.h"

#include <wx/fileconf.h>
#include <wx/filename.h>
#include <wx/log.h>
#include <wx/stdpaths.h>

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

}  // namespace

KeptSettings LoadSettings()
{
    const wxLogNull quiet;
    wxFileConfig file(wxEmptyString, wxEmptyString, SettingsPath().GetFullPath(), wxEmptyString,
                      wxCONFIG_USE_LOCAL_FILE | wxCONFIG_USE_NO_ESCAPE_CHARACTERS, wxConvUTF8);
    file.SetExpandEnvVars(false);
    SettingsMap stored;
    std::vector<wxString> groups;
    wxString group;
    long cookie = 0;
    for (bool more = file.GetFirstGroup(group, cookie); more; more = file.GetNextGroup(group, cookie))
        groups.push_back(group);
    for (const wxString& each : groups)
        ReadGroup(file, each, stored);
    return Restore(stored);
}

bool SaveSettings(const KeptSettings& settings)
{
    const wxLogNull quiet;
    const wxFileName path = SettingsPath();
    if (!wxFileName::Mkdir(path.GetPath(), wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL) && !path.DirExists())
        return false;
    wxFileConfig file(wxEmptyString, wxEmptyString, path.GetFullPath(), wxEmptyString,
                      wxCONFIG_USE_LOCAL_FILE | wxCONFIG_USE_NO_ESCAPE_CHARACTERS, wxConvUTF8);
    file.DisableAutoSave();
    file.SetExpandEnvVars(false);
    for (long cookie = 0;;) {
        wxString group;
        if (!file.GetFirstGroup(group, cookie))
            break;
        file.DeleteGroup(group);
    }
    for (const auto& [name, text] : Store(settings))
        file.Write("/" + wxString::FromUTF8(name), wxString::FromUTF8(text));
    return file.Flush();
}

}  // namespace tessara
