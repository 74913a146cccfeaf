#include "support/scripted_window_system.h"

#include <algorithm>

namespace tessara::test {

namespace {

std::size_t At(int row)
{
    return static_cast<std::size_t>(row);
}

}  // namespace

bool ScriptedSurface::CreateGl()
{
    log_.push_back("CreateGl");
    if (!hasGl || created_)
        return false;
    created_ = true;
    return true;
}

void ScriptedSurface::DestroyGl()
{
    log_.push_back("DestroyGl");
    created_ = false;
}

bool ScriptedSurface::MakeCurrent()
{
    log_.push_back("MakeCurrent");
    if (!created_)
        return false;
    ++current;
    return true;
}

void ScriptedSurface::ReleaseCurrent()
{
    log_.push_back("ReleaseCurrent");
    --current;
}

ScriptedDialog::ScriptedDialog(CallLog& log, const DialogTemplate& form, DialogEvents& events)
    : title(form.title), log_(log), form_(form), events_(events)
{
    for (const ControlTemplate& source : form.controls) {
        Control& control = controls_[source.id];
        control.form = source;
        control.text = source.kind == ControlKind::Spin ? "" : source.text;
        for (const char* row : source.rows)
            AddRow(source.id, row);
        if (source.kind == ControlKind::Viewport)
            control.surface = std::make_unique<ScriptedSurface>(log, source.width * 2, source.height * 2);
    }
}

ScriptedDialog::Control* ScriptedDialog::Find(int control)
{
    const auto found = controls_.find(control);
    return control == 0 || found == controls_.end() ? nullptr : &found->second;
}

const ScriptedDialog::Control* ScriptedDialog::Find(int control) const
{
    return const_cast<ScriptedDialog*>(this)->Find(control);
}

std::string ScriptedDialog::GetText(int control) const
{
    const Control* found = Find(control);
    return control == 0 ? title : found ? found->text : "";
}

void ScriptedDialog::SetText(int control, const std::string& text)
{
    if (control == 0)
        title = text;
    if (Control* found = Find(control)) {
        found->text = text;
        found->modified = false;
    }
}

void ScriptedDialog::Enable(int control, bool enable)
{
    if (Control* found = Find(control))
        found->enabled = enable;
}

bool ScriptedDialog::IsEnabled(int control) const
{
    const Control* found = Find(control);
    return control == 0 || (found && found->enabled);
}

RECT ScriptedDialog::GetRect(int control) const
{
    const Control* found = Find(control);
    if (!found)
        return {0, 0, form_.width * 2, form_.height * 2};
    const ControlTemplate& form = found->form;
    return {form.x * 2, form.y * 2, (form.x + form.width) * 2, (form.y + form.height) * 2};
}

void ScriptedDialog::Invalidate(int)
{
    invalid_ = true;
}

void ScriptedDialog::SetChecked(int control, bool checked)
{
    if (Control* found = Find(control))
        found->checked = checked;
}

bool ScriptedDialog::IsChecked(int control) const
{
    const Control* found = Find(control);
    return found && found->checked;
}

void ScriptedDialog::SetFocus(int control)
{
    MoveFocus(control);
}

int ScriptedDialog::AddRow(int control, const std::string& text)
{
    Control* found = Find(control);
    if (!found)
        return -1;
    found->rows.push_back(text);
    found->selected.push_back(false);
    return static_cast<int>(found->rows.size()) - 1;
}

void ScriptedDialog::ClearRows(int control)
{
    if (Control* found = Find(control)) {
        found->rows.clear();
        found->selected.clear();
        found->current = -1;
    }
}

int ScriptedDialog::RowCount(int control) const
{
    const Control* found = Find(control);
    return found ? static_cast<int>(found->rows.size()) : 0;
}

std::string ScriptedDialog::RowText(int control, int row) const
{
    return row >= 0 && row < RowCount(control) ? Find(control)->rows[At(row)] : "";
}

int ScriptedDialog::CurrentRow(int control) const
{
    const Control* found = Find(control);
    return found ? found->current : -1;
}

void ScriptedDialog::SetCurrentRow(int control, int row)
{
    if (Control* found = Find(control))
        found->current = row >= 0 && row < RowCount(control) ? row : -1;
}

std::vector<int> ScriptedDialog::SelectedRows(int control) const
{
    std::vector<int> rows;
    for (int row = 0; row < RowCount(control); ++row) {
        if (Find(control)->selected[At(row)])
            rows.push_back(row);
    }
    return rows;
}

void ScriptedDialog::SelectRow(int control, int row, bool select)
{
    if (row < 0 || row >= RowCount(control))
        return;
    Control* found = Find(control);
    found->selected[At(row)] = select;
    if (select && found->current < 0)
        found->current = row;
}

bool ScriptedDialog::IsModified(int control) const
{
    const Control* found = Find(control);
    return found && found->modified;
}

void ScriptedDialog::SetModified(int control, bool modified)
{
    if (Control* found = Find(control))
        found->modified = modified;
}

void ScriptedDialog::SetImage(int control, const Image& image)
{
    images[control] = image;
}

DeviceContext* ScriptedDialog::GetDeviceContext(int control)
{
    Control* found = Find(control);
    return found ? found->surface.get() : nullptr;
}

void ScriptedDialog::Post(UINT message, WPARAM wParam, LPARAM lParam)
{
    posted_.push_back({message, wParam, lParam});
}

void ScriptedDialog::End(int value)
{
    if (!result)
        result = value;
}

bool ScriptedDialog::CanUse(int control) const
{
    return !result && IsEnabled(control);
}

void ScriptedDialog::Notify(int control, UINT notification)
{
    events_.Dispatch(WM_COMMAND, MakeCommand(control, notification), 0);
}

void ScriptedDialog::MoveFocus(int control)
{
    if (control == focus_)
        return;
    const Control* left = Find(std::exchange(focus_, control));
    if (left && left->form.kind == ControlKind::Edit)
        Notify(left->form.id, EN_KILLFOCUS);
}

void ScriptedDialog::FocusNext()
{
    const auto controls = form_.controls;
    std::size_t place = controls.size() - 1;
    for (std::size_t i = 0; i < controls.size(); ++i) {
        if (controls[i].id != 0 && controls[i].id == focus_)
            place = i;
    }
    for (std::size_t tried = 0; tried < controls.size(); ++tried) {
        place = (place + 1) % controls.size();
        if (controls[place].tabStop && IsEnabled(controls[place].id)) {
            MoveFocus(controls[place].id);
            return;
        }
    }
}

void ScriptedDialog::PressDefault()
{
    const Control* focused = Find(focus_);
    if (focused && focused->form.kind == ControlKind::Button) {
        Notify(focus_, BN_CLICKED);
        return;
    }
    for (const ControlTemplate& control : form_.controls) {
        if (control.kind == ControlKind::DefaultButton && IsEnabled(control.id))
            Notify(control.id, BN_CLICKED);
    }
}

void ScriptedDialog::Click(int control)
{
    Control* found = Find(control);
    if (!found || !CanUse(control))
        return;
    MoveFocus(control);
    if (found->form.kind == ControlKind::CheckBox)
        found->checked = !found->checked;
    Notify(control, BN_CLICKED);
    Rest();
}

void ScriptedDialog::Type(int control, const std::string& text)
{
    Control* found = Find(control);
    if (!found || !CanUse(control))
        return;
    MoveFocus(control);
    found->text = text;
    found->modified = true;
    Rest();
}

void ScriptedDialog::Pick(int control, int row)
{
    PickRows(control, {row}, row);
}

void ScriptedDialog::PickRows(int control, const std::vector<int>& rows, int focus)
{
    Control* found = Find(control);
    if (!found || !CanUse(control))
        return;
    MoveFocus(control);
    std::fill(found->selected.begin(), found->selected.end(), false);
    for (const int row : rows)
        found->selected[At(row)] = true;
    found->current = focus;
    Notify(control, LBN_SELCHANGE);
    Rest();
}

void ScriptedDialog::Press(WPARAM key)
{
    if (result)
        return;
    MSG message{WM_KEYDOWN, key, 0, focus_};
    if (!events_.Translate(message)) {
        if (key == VK_TAB)
            FocusNext();
        else if (key == VK_RETURN)
            PressDefault();
        else if (key == VK_ESCAPE)
            Notify(IDCANCEL, BN_CLICKED);
    }
    Rest();
}

void ScriptedDialog::Step(int control, int steps)
{
    if (CanUse(control))
        events_.Step(control, steps);
    Rest();
}

void ScriptedDialog::Focus(int control)
{
    if (CanUse(control))
        MoveFocus(control);
    Rest();
}

void ScriptedDialog::ClickLink(const std::string& text)
{
    if (!result && linkMessage != 0)
        events_.Dispatch(linkMessage, reinterpret_cast<WPARAM>(text.c_str()), 0);
    Rest();
}

void ScriptedDialog::Paint()
{
    invalid_ = true;
    Rest();
}

void ScriptedDialog::Rest()
{
    while (!result && (!posted_.empty() || invalid_)) {
        if (std::exchange(invalid_, false)) {
            events_.Dispatch(WM_PAINT, 0, 0);
            continue;
        }
        const Message message = posted_.front();
        posted_.pop_front();
        events_.Dispatch(message.message, message.wParam, message.lParam);
    }
}

}  // namespace tessara::test
