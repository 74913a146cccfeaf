#include "platform/ui/wx_user.h"

#include <wx/app.h>
#include <wx/dialog.h>

namespace tessara::test {

namespace {

class WxBackEnd final : public WindowBackEnd {
public:
    WindowSystem& System() override { return CurrentWindowSystem(); }

    void SetUser(std::function<void(DialogUser&)> user) override
    {
        modal_ = std::make_unique<WhenModal>([user](wxDialog& dialog) {
            WxUser hands(dialog);
            user(hands);
        });
    }

    void SetAnswer(int answer) override
    {
        constexpr int kReturn = WXK_RETURN;
        asked_ = std::make_unique<WhenAsked>(answer == IDYES ? 'y' : answer == IDNO ? 'n' : kReturn);
    }

private:
    std::unique_ptr<WhenModal> modal_;
    std::unique_ptr<WhenAsked> asked_;
};

std::unique_ptr<WindowBackEnd> MakeWx()
{
    return std::make_unique<WxBackEnd>();
}

INSTANTIATE_TEST_SUITE_P(Wx, DialogContract, testing::Values(&MakeWx));

}  // namespace

}  // namespace tessara::test
