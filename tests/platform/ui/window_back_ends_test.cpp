#include "platform/ui/window_contract.h"
#include "support/scripted_window_system.h"

namespace tessara::test {

namespace {

class NullBackEnd final : public WindowBackEnd {
public:
    WindowSystem& System() override { return NullWindowSystem(); }
    void SetUser(std::function<void(DialogUser&)>) override {}
    void SetAnswer(int) override {}
};

class ScriptedUser final : public DialogUser {
public:
    explicit ScriptedUser(ScriptedDialog& dialog) : dialog_(dialog) {}
    void Click(int control) override { dialog_.Click(control); }
    void Type(int control, const std::string& text) override { dialog_.Type(control, text); }
    void Pick(int control, int row) override { dialog_.Pick(control, row); }
    void PickRange(int control, int first, int last) override
    {
        dialog_.Pick(control, first);
        std::vector<int> rows;
        for (int row = first; row <= last; ++row)
            rows.push_back(row);
        dialog_.PickRows(control, rows, last);
    }
    void Press(WPARAM key) override { dialog_.Press(key); }
    void StepUp(int spin) override { dialog_.Step(spin, 1); }
    void StepDown(int spin) override { dialog_.Step(spin, -1); }
    void Rest() override { dialog_.Rest(); }

private:
    ScriptedDialog& dialog_;
};

class ScriptedBackEnd final : public WindowBackEnd {
public:
    WindowSystem& System() override { return system_; }
    void SetUser(std::function<void(DialogUser&)> user) override
    {
        system_.user = [user](ScriptedDialog& dialog) {
            ScriptedUser hands(dialog);
            user(hands);
        };
    }
    void SetAnswer(int answer) override { system_.answers.push_back(answer); }

private:
    CallLog log_;
    ScriptedWindowSystem system_{log_};
};

template <class BackEnd>
std::unique_ptr<WindowBackEnd> Make()
{
    return std::make_unique<BackEnd>();
}

INSTANTIATE_TEST_SUITE_P(Null, NoWindowsContract, testing::Values(&Make<NullBackEnd>));
INSTANTIATE_TEST_SUITE_P(Scripted, DialogContract, testing::Values(&Make<ScriptedBackEnd>));

}  // namespace

}  // namespace tessara::test
