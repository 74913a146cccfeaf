#pragma once

#include "platform/gl/gl_functions.h"

#include <cstdint>

namespace tessara {

/// Counts the triangles that are drawn between two calls. Belongs to the context that was current when it was made.
class TriangleCounter {
public:
    /// \param gl outlives this object
    explicit TriangleCounter(const GlFunctions& gl) : gl_(gl) { gl_.GenQueries(1, &query_); }
    TriangleCounter(const TriangleCounter&) = delete;
    TriangleCounter& operator=(const TriangleCounter&) = delete;
    ~TriangleCounter() { gl_.DeleteQueries(1, &query_); }

    void Begin() const { gl_.BeginQuery(GL_PRIMITIVES_GENERATED, query_); }

    std::uint32_t End() const
    {
        GLuint count = 0;
        gl_.EndQuery(GL_PRIMITIVES_GENERATED);
        gl_.GetQueryObjectuiv(query_, GL_QUERY_RESULT, &count);
        return count;
    }

private:
    const GlFunctions& gl_;
    GLuint query_ = 0;
};

}  // namespace tessara
