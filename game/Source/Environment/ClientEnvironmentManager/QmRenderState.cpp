#include "Environment/ClientEnvironmentManager/QmRenderState.h"

#include <GL/glew.h>

void QmRenderState::SetupPass() {
    glActiveTexture(GL_TEXTURE0);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glDepthMask(GL_TRUE);
    known = false;
}

void QmRenderState::SetCulling(Culling culling) {
    if (known && culling == current) {
        return;
    }
    if (culling == CullNothing) {
        glDisable(GL_CULL_FACE);
    } else {
        glEnable(GL_CULL_FACE);
        glCullFace(culling == CullFrontFaces ? GL_FRONT : GL_BACK);
    }
    current = culling;
    known = true;
}

void QmRenderState::SetDepthWrite(bool on) {
    glDepthMask(on ? GL_TRUE : GL_FALSE);
}

void QmRenderState::SetClearColour(uint32_t colour) {
    glClearColor(static_cast<float>((colour >> 16) & 0xFF) / 255.0f,
                 static_cast<float>((colour >> 8) & 0xFF) / 255.0f,
                 static_cast<float>(colour & 0xFF) / 255.0f, 1.0f);
}

void QmRenderState::BindShadowMap(unsigned int depthTexture) {
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, depthTexture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_MODE, GL_COMPARE_REF_TO_TEXTURE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_FUNC, GL_LEQUAL);
    glActiveTexture(GL_TEXTURE0);
}

void QmRenderState::BindOnUnitOne(unsigned int texture) {
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, texture);
    glActiveTexture(GL_TEXTURE0);
}
