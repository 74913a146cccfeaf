#pragma once

#include "services/gl_context.h"

namespace tessara {

/// Makes the preview's context current for as long as it lives. Where that fails, nothing may be drawn: OpenGL calls
/// would reach the terrain's context.
class CurrentPreview {
public:
    explicit CurrentPreview(IGLContext& context) : context_(context), made_(SUCCEEDED(context.MakeCurrent())) {}
    CurrentPreview(const CurrentPreview&) = delete;
    CurrentPreview& operator=(const CurrentPreview&) = delete;
    ~CurrentPreview()
    {
        if (made_)
            context_.ReleaseCurrent();
    }

    explicit operator bool() const noexcept { return made_; }

private:
    IGLContext& context_;
    const bool made_;
};

}  // namespace tessara
