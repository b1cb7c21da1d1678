#include "Screen/Scene/VeRenderState.h"

#include <GL/glew.h>

void VeRenderState::SetupPass() {
    glActiveTexture(GL_TEXTURE0);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDepthFunc(GL_LESS);
    culling = {};
    blending = {};
    depthWrite = {};
    depthTest = {};
    SetBlending(true);
    SetDepthTest(true);
    SetDepthWrite(true);
}

void VeRenderState::SetCulling(Culling wanted) {
    if (!culling.Changes(wanted)) {
        return;
    }
    if (wanted == CullNothing) {
        glDisable(GL_CULL_FACE);
    } else {
        glEnable(GL_CULL_FACE);
        glCullFace(wanted == CullFrontFaces ? GL_FRONT : GL_BACK);
    }
}

void VeRenderState::SetBlending(bool on) {
    if (!blending.Changes(on ? 1 : 0)) {
        return;
    }
    if (on) {
        glEnable(GL_BLEND);
    } else {
        glDisable(GL_BLEND);
    }
}

void VeRenderState::SetDepthWrite(bool on) {
    if (depthWrite.Changes(on ? 1 : 0)) {
        glDepthMask(on ? GL_TRUE : GL_FALSE);
    }
}

void VeRenderState::SetDepthTest(bool on) {
    if (!depthTest.Changes(on ? 1 : 0)) {
        return;
    }
    if (on) {
        glEnable(GL_DEPTH_TEST);
    } else {
        glDisable(GL_DEPTH_TEST);
    }
}

void VeRenderState::SetClearColour(uint32_t colour) {
    glClearColor(static_cast<float>((colour >> 16) & 0xFF) / 255.0f,
                 static_cast<float>((colour >> 8) & 0xFF) / 255.0f,
                 static_cast<float>(colour & 0xFF) / 255.0f, 1.0f);
}

void VeRenderState::BindShadowMap(unsigned int depthTexture) {
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, depthTexture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_MODE, GL_COMPARE_REF_TO_TEXTURE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_FUNC, GL_LEQUAL);
    glActiveTexture(GL_TEXTURE0);
}

void VeRenderState::BindTexture(int unit, unsigned int texture) {
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    glBindTexture(GL_TEXTURE_2D, texture);
    glActiveTexture(GL_TEXTURE0);
}
