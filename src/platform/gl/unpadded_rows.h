#pragma once

#include "platform/gl/gl.h"

namespace tessara {

/// Makes the rows of pixel transfers unpadded for as long as it lives, and puts the old alignment back.
class UnpaddedRows {
public:
    /// \param alignment GL_UNPACK_ALIGNMENT or GL_PACK_ALIGNMENT
    explicit UnpaddedRows(GLenum alignment) : alignment_(alignment)
    {
        glGetIntegerv(alignment_, &previous_);
        glPixelStorei(alignment_, 1);
    }
    UnpaddedRows(const UnpaddedRows&) = delete;
    UnpaddedRows& operator=(const UnpaddedRows&) = delete;
    ~UnpaddedRows() { glPixelStorei(alignment_, previous_); }

private:
    GLenum alignment_;
    GLint previous_ = 4;
};

}  // namespace tessara
