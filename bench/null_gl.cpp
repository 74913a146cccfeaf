// An OpenGL that does nothing, in place of the real one: what is measured is the terrain's own work.

#include "platform/gl/gl.h"

extern "C" {
void APIENTRY glPushMatrix() {}
void APIENTRY glPopMatrix() {}
void APIENTRY glEnable(GLenum) {}
void APIENTRY glDisable(GLenum) {}
void APIENTRY glEnableClientState(GLenum) {}
void APIENTRY glDisableClientState(GLenum) {}
void APIENTRY glVertexPointer(GLint, GLenum, GLsizei, const GLvoid*) {}
void APIENTRY glNormalPointer(GLenum, GLsizei, const GLvoid*) {}
void APIENTRY glColorPointer(GLint, GLenum, GLsizei, const GLvoid*) {}
void APIENTRY glTexCoordPointer(GLint, GLenum, GLsizei, const GLvoid*) {}
void APIENTRY glColor4f(GLfloat, GLfloat, GLfloat, GLfloat) {}
void APIENTRY glBlendFunc(GLenum, GLenum) {}
void APIENTRY glTranslatef(GLfloat, GLfloat, GLfloat) {}
void APIENTRY glScalef(GLfloat, GLfloat, GLfloat) {}
void APIENTRY glPolygonMode(GLenum, GLenum) {}
void APIENTRY glDrawElements(GLenum, GLsizei, GLenum, const GLvoid*);
}

long long g_drawCalls = 0;

void APIENTRY glDrawElements(GLenum, GLsizei, GLenum, const GLvoid*)
{
    ++g_drawCalls;
}
