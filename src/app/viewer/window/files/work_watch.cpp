#include "app/viewer/window/files/work_watch.h"

#include "app/viewer/viewer.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window/panes/status_line.h"
#include "app/viewer/window/window_text.h"
#include "host/project/project_file.h"

#include <wx/datetime.h>
#include <wx/msgdlg.h>

#include <chrono>
#include <exception>
#include <utility>

namespace tessara {

namespace {

constexpr int kEvery = 60000;  // milliseconds

/// \return wxID_YES to recover, wxID_NO to discard, anything else for later
int AskForRecovery(wxWindow& window, const Recovery& recovery, const std::string& terrain)
{
    const wxDateTime time(std::chrono::system_clock::to_time_t(recovery.Time()));
    const wxString subject = Wide(recovery.ProjectPath().empty() ? terrain : recovery.ProjectPath());
    wxMessageDialog question(&window,
                             "The viewer ended unexpectedly. Recover the unsaved work on " + subject + ", kept on " +
                                 time.FormatISODate() + " at " + time.FormatISOTime() + "?",
                             "Tessara", wxYES_NO | wxCANCEL | wxICON_QUESTION);
    question.SetYesNoCancelLabels("&Recover", "&Discard", "&Later");
    return question.ShowModal();
}

}  // namespace

WorkWatch::WorkWatch(wxWindow& window, Viewer& viewer, PicturePane& picture, StatusLine& status)
    : window_(window), viewer_(viewer), picture_(picture), status_(status)
{
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Keep(); });
}

std::optional<TerrainRequest> WorkWatch::Start()
{
    timer_.Start(kEvery);
    for (Recovery& each : FindRecoveries()) {
        const std::string terrain = KeptTerrain(ProjectFile(each.Path()));
        const int answer = AskForRecovery(window_, each, terrain);
        if (answer == wxID_NO)
            each.Discard();
        if (answer != wxID_YES)
            continue;
        TerrainRequest request{.path = each.Path(), .element = terrain, .recoveredFor = each.ProjectPath()};
        recovery_ = std::move(each);
        return request;
    }
    return std::nullopt;
}

void WorkWatch::Opened(bool recovered)
{
    keeper_.Forget();
    if (recovered && recovery_)
        keeper_.Adopt(std::move(*recovery_));
    recovery_.reset();
}

/// Nobody is interrupted in the middle of something.
void WorkWatch::Keep()
{
    if (!viewer_.HasTerrain() || viewer_.IsCoarse() || picture_.IsBusy() || !picture_.MakeCurrent())
        return;
    try {
        keeper_.Update(viewer_.Work());
    } catch (const std::exception& error) {
        timer_.Stop();
        status_.Tell(std::string("Unsaved work can't be kept safe: ") + error.what());
    }
}

}  // namespace tessara
