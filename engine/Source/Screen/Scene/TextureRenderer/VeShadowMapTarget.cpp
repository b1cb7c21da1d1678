#include "Screen/Scene/TextureRenderer/VeShadowMapTarget.h"

#include "Platform/VeLog.h"

#include <GL/glew.h>

VeShadowMapTarget::~VeShadowMapTarget() {
    Destroy();
}

void VeShadowMapTarget::Create(int32_t w, int32_t h) {
    Destroy();
    width = w;
    height = h;
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glGenTextures(1, &depthTexture);
    glBindTexture(GL_TEXTURE_2D, depthTexture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT16, w, h, 0, GL_DEPTH_COMPONENT, GL_FLOAT, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glFramebufferTexture(GL_DRAW_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, depthTexture, 0);
    glDrawBuffer(GL_NONE);
    glReadBuffer(GL_NONE);
    GLenum status = glCheckFramebufferStatus(GL_FRAMEBUFFER);
    if (status != GL_FRAMEBUFFER_COMPLETE) {
        Log("FB error, status: 0x%x\n", status);
    }
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void VeShadowMapTarget::BeginShadowPass() {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glViewport(0, 0, static_cast<GLsizei>(static_cast<float>(width) * scale),
               static_cast<GLsizei>(static_cast<float>(height) * scale));
    glClear(GL_DEPTH_BUFFER_BIT);
}

void VeShadowMapTarget::BeginShadowPassFrom(const VeShadowMapTarget& start) {
    const GLsizei w = static_cast<GLsizei>(static_cast<float>(width) * scale);
    const GLsizei h = static_cast<GLsizei>(static_cast<float>(height) * scale);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, start.framebuffer);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, framebuffer);
    glBlitFramebuffer(0, 0, w, h, 0, 0, w, h, GL_DEPTH_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glViewport(0, 0, w, h);
}

void VeShadowMapTarget::Destroy() {
    if (framebuffer != 0) {
        glDeleteFramebuffers(1, &framebuffer);
        framebuffer = 0;
    }
    if (depthTexture != 0) {
        glDeleteTextures(1, &depthTexture);
        depthTexture = 0;
    }
}
