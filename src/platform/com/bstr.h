#pragma once

#include "com.h"

#include <string>
#include <string_view>
#include <utility>

namespace tessara {

/// Text of a BSTR as UTF-8. An unpaired surrogate becomes U+FFFD. \param text null is empty
TESSARA_EXPORT std::string NarrowText(BSTR text);

/// UTF-8 as UTF-16. A byte that is not UTF-8 becomes U+FFFD.
TESSARA_EXPORT std::basic_string<OLECHAR> WideText(std::string_view text);

/// A new BSTR of UTF-8 text, for the caller to free. \throws std::bad_alloc
[[nodiscard]] TESSARA_EXPORT BSTR MakeBstr(std::string_view text);

/// Owns a BSTR.
class BstrHolder {
public:
    BstrHolder() noexcept = default;
    explicit BstrHolder(std::string_view text) : text_(MakeBstr(text)) {}
    BstrHolder(BstrHolder&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    BstrHolder& operator=(BstrHolder&& other) noexcept
    {
        std::swap(text_, other.text_);
        return *this;
    }
    ~BstrHolder() { SysFreeString(text_); }

    BSTR Get() const noexcept { return text_; }
    std::string Narrow() const { return NarrowText(text_); }

    /// Gives the text to the caller to free.
    [[nodiscard]] BSTR Detach() noexcept { return std::exchange(text_, nullptr); }

    /// Frees what is held and gives the address for an out argument.
    BSTR* Out() noexcept
    {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }

private:
    BSTR text_ = nullptr;
};

}  // namespace tessara
