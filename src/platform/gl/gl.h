#pragma once

// OpenGL 1.x, its extensions' constants, and GLU, under one name on every platform.

#ifdef _WIN32
#include "../com/types_win32.h"
#endif

#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>

/// Calling convention and types of the two texture unit entry points, where an OpenGL header leaves them out.
using ActiveTextureProc = void(APIENTRY*)(GLenum unit);
using MultiTexCoord2fProc = void(APIENTRY*)(GLenum unit, GLfloat s, GLfloat t);
