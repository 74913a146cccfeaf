#include "support/scripted_window_system.h"

#include <algorithm>

namespace tessara::test {

namespace {

std::size_t At(int row)
{
    return static_cast<std::size_t>(row);
}

}  // namespace

ScriptedDialog::ScriptedDialog(const DialogTemplate& form, DialogEvents& events) : form_(form), events_(events)
{
    controls_[0].text = form.title;
    for (const ControlTemplate& source : form.controls) {
        if (source.id == 0)
            continue;
        Control& control = controls_[source.id];
        control.form = source;
        control.text = source.kind == ControlKind::Spin ? "" : source.text;
        for (const char* row : source.rows)
            AddRow(source.id, row);
        if (source.kind == ControlKind::Viewport)
            control.surface = std::make_unique<ScriptedSurface>(source.width * 2, source.height * 2);
    }
}

ScriptedDialog::Control& ScriptedDialog::Of(int control) const
{
    const auto found = controls_.find(control);
    if (found != controls_.end())
        return const_cast<Control&>(found->second);
    missing_ = {};
    missing_.enabled = false;
    return missing_;
}

void ScriptedDialog::SetText(int control, const std::string& text)
{
    Of(control).text = text;
    Of(control).modified = false;
}

RECT ScriptedDialog::GetRect(int control) const
{
    if (control == 0)
        return {0, 0, form_.width * 2, form_.height * 2};
    const ControlTemplate& form = Of(control).form;
    return {form.x * 2, form.y * 2, (form.x + form.width) * 2, (form.y + form.height) * 2};
}

int ScriptedDialog::AddRow(int control, const std::string& text)
{
    Of(control).rows.push_back(text);
    Of(control).selected.push_back(false);
    return RowCount(control) - 1;
}

void ScriptedDialog::ClearRows(int control)
{
    Of(control).rows.clear();
    Of(control).selected.clear();
    Of(control).current = -1;
}

std::string ScriptedDialog::RowText(int control, int row) const
{
    return row >= 0 && row < RowCount(control) ? Of(control).rows[At(row)] : "";
}

std::vector<int> ScriptedDialog::SelectedRows(int control) const
{
    std::vector<int> rows;
    for (int row = 0; row < RowCount(control); ++row) {
        if (Of(control).selected[At(row)])
            rows.push_back(row);
    }
    return rows;
}

void ScriptedDialog::SelectRow(int control, int row, bool select)
{
    if (row < 0 || row >= RowCount(control))
        return;
    Of(control).selected[At(row)] = select;
    if (select && CurrentRow(control) < 0)
        SetCurrentRow(control, row);
}

void ScriptedDialog::Notify(int control, UINT notification)
{
    events_.Dispatch(WM_COMMAND, MakeCommand(control, notification), 0);
}

void ScriptedDialog::SetFocus(int control)
{
    const int left = std::exchange(focus_, control);
    if (left != control && Of(left).form.kind == ControlKind::Edit)
        Notify(left, EN_KILLFOCUS);
}

void ScriptedDialog::FocusNext()
{
    const auto controls = form_.controls;
    const auto isFocused = [this](const ControlTemplate& c) { return c.id != 0 && c.id == focus_; };
    const auto focused = std::find_if(controls.begin(), controls.end(), isFocused);
    std::size_t place =
        focused == controls.end() ? controls.size() - 1 : At(static_cast<int>(focused - controls.begin()));
    for (std::size_t tried = 0; tried < controls.size(); ++tried) {
        place = (place + 1) % controls.size();
        if (controls[place].tabStop && IsEnabled(controls[place].id))
            return SetFocus(controls[place].id);
    }
}

bool ScriptedDialog::Reach(int control)
{
    if (result || !IsEnabled(control))
        return false;
    SetFocus(control);
    return true;
}

void ScriptedDialog::Click(int control)
{
    if (!Reach(control))
        return;
    if (Of(control).form.kind == ControlKind::CheckBox)
        Of(control).checked = !Of(control).checked;
    Notify(control, BN_CLICKED);
    Rest();
}

void ScriptedDialog::Type(int control, const std::string& text)
{
    if (!Reach(control))
        return;
    Of(control).text = text;
    Of(control).modified = true;
    Rest();
}

void ScriptedDialog::PickRows(int control, const std::vector<int>& rows, int focus)
{
    if (!Reach(control))
        return;
    Of(control).selected.assign(Of(control).rows.size(), false);
    for (const int row : rows)
        Of(control).selected[At(row)] = true;
    Of(control).current = focus;
    Notify(control, LBN_SELCHANGE);
    Rest();
}

void ScriptedDialog::Press(WPARAM key)
{
    InputMessage message{WM_KEYDOWN, key, 0, focus_};
    if (result)
        return;
    if (!events_.Translate(message)) {
        if (key == VK_TAB)
            FocusNext();
        else if (key == VK_RETURN)
            Notify(Of(focus_).form.kind == ControlKind::Button ? focus_ : IDOK, BN_CLICKED);
        else if (key == VK_ESCAPE)
            Notify(IDCANCEL, BN_CLICKED);
    }
    Rest();
}

void ScriptedDialog::Step(int control, int steps)
{
    if (!result && IsEnabled(control))
        events_.Step(control, steps);
    Rest();
}

void ScriptedDialog::Focus(int control)
{
    Reach(control);
    Rest();
}

void ScriptedDialog::ClickLink(const std::string& text)
{
    if (!result && linkMessage != 0)
        events_.Dispatch(linkMessage, reinterpret_cast<WPARAM>(text.c_str()), 0);
    Rest();
}

void ScriptedDialog::Rest()
{
    while (!result && (!posted_.empty() || invalid_)) {
        InputMessage next{WM_PAINT, 0, 0, 0};
        if (!std::exchange(invalid_, false)) {
            next = posted_.front();
            posted_.pop_front();
        }
        events_.Dispatch(next.message, next.wParam, next.lParam);
    }
}

}  // namespace tessara::test
