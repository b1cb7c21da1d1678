#include "Screen/Scene/TextureRenderer/VeTextureRenderer.h"

#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"
#include "Screen/VeScreen.h"

#include <GL/glew.h>

#include <cstring>
#include <vector>

namespace {
}

VeTextureRenderer::VeTextureRenderer(int32_t w, int32_t h, float s) : width(w), height(h), scale(s) {
    Init();
}

VeTextureRenderer::~VeTextureRenderer() {
    Destroy();
}

int32_t VeTextureRenderer::ScaledWidth() const {
    return static_cast<int32_t>(static_cast<float>(width) * scale);
}

int32_t VeTextureRenderer::ScaledHeight() const {
    return static_cast<int32_t>(static_cast<float>(height) * scale);
}

bool VeTextureRenderer::Init() {
    const GLsizei w = ScaledWidth();
    const GLsizei h = ScaledHeight();
    if (useMultisample) {
        GLint maxSamples = 0;
        glGetIntegerv(GL_MAX_SAMPLES, &maxSamples);
        Log("Maximum Samples supported for MSAA: %i\n", maxSamples);
        if (maxSamples < samples) {
            samples = maxSamples;
        }
        glEnable(GL_MULTISAMPLE);
        glGenFramebuffers(1, &multisampleFramebuffer);
        glBindFramebuffer(GL_FRAMEBUFFER, multisampleFramebuffer);
        glGenTextures(1, &multisampleColour);
        glBindTexture(GL_TEXTURE_2D_MULTISAMPLE, multisampleColour);
        glTexImage2DMultisample(GL_TEXTURE_2D_MULTISAMPLE, samples, GL_RGB, w, h, GL_TRUE);
        glBindTexture(GL_TEXTURE_2D_MULTISAMPLE, 0);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D_MULTISAMPLE,
                               multisampleColour, 0);
        glGenRenderbuffers(1, &multisampleDepthStencil);
        glBindRenderbuffer(GL_RENDERBUFFER, multisampleDepthStencil);
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_DEPTH24_STENCIL8, w, h);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER,
                                  multisampleDepthStencil);
        GLenum status = glCheckFramebufferStatus(GL_FRAMEBUFFER);
        if (status != GL_FRAMEBUFFER_COMPLETE) {
            Log("Failed to bind MSAA Framebuffer: 0x%x\n", status);
            VE_ASSERT(false);
        }
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
    }
    if (useResolve) {
        glGenFramebuffers(1, &resolveFramebuffer);
        glBindFramebuffer(GL_FRAMEBUFFER, resolveFramebuffer);
        glGenTextures(1, &resolveColour);
        glBindTexture(GL_TEXTURE_2D, resolveColour);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, w, h, 0, GL_RGB, GL_UNSIGNED_BYTE, nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, resolveColour, 0);
        glGenRenderbuffers(1, &resolveDepth);
        glBindRenderbuffer(GL_RENDERBUFFER, resolveDepth);
        glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT, w, h);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, resolveDepth);
        GLenum status = glCheckFramebufferStatus(GL_FRAMEBUFFER);
        if (status != GL_FRAMEBUFFER_COMPLETE) {
            Log("Failed to bind Framebuffer: 0x%x\n", status);
            VE_ASSERT(false);
        }
        glBindRenderbuffer(GL_RENDERBUFFER, 0);
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
    }
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    return true;
}

void VeTextureRenderer::BeginScene(bool everyPixelDrawn) {
    glViewport(0, 0, ScaledWidth(), ScaledHeight());
    glBindFramebuffer(GL_READ_FRAMEBUFFER, 0);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, multisampleFramebuffer);
    // Stencil is cleared with depth: they share a buffer, which is then simply overwritten instead
    // of having its depth replaced around the kept stencil. Clearing the colour of every sample
    // is a full pass of its own, wasted when the scene covers it all anyway.
    glClear((everyPixelDrawn ? 0 : GL_COLOR_BUFFER_BIT) | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
}

void VeTextureRenderer::ResolveScene(VeScreen& screen) {
    const GLint w = ScaledWidth();
    const GLint h = ScaledHeight();
    // One full-screen pass straight into the resolve target; the window's framebuffer is left
    // alone (it may be smaller than the scene, and is cleared for the composition anyway).
    glBindFramebuffer(GL_READ_FRAMEBUFFER, multisampleFramebuffer);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, resolveFramebuffer);
    glBlitFramebuffer(0, 0, w, h, 0, 0, w, h, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    screen.ResetViewport();
}

void VeTextureRenderer::BindSceneTexture() {
    if (resolveFramebuffer == 0) {
        return;
    }
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, resolveColour);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_MODE, GL_NONE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_FUNC, GL_LEQUAL);
    glActiveTexture(GL_TEXTURE0);
}

VeSurface VeTextureRenderer::ReadSceneToSurface() {
    const int32_t w = ScaledWidth();
    const int32_t h = ScaledHeight();
    std::vector<uint8_t> bytes(static_cast<size_t>(w) * h * 4);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, resolveFramebuffer);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, w, h, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
    glBindFramebuffer(GL_READ_FRAMEBUFFER, 0);
    VeSurface surface(w, h);
    for (int32_t y = 0; y < h; ++y) {
        // OpenGL rows run bottom-up.
        const uint8_t* row = bytes.data() + static_cast<size_t>(h - 1 - y) * w * 4;
        uint32_t* to = surface.Pixels() + static_cast<size_t>(w) * y;
        for (int32_t x = 0; x < w; ++x) {
            to[x] = 0xFF000000u | uint32_t{row[x * 4]} << 16 | uint32_t{row[x * 4 + 1]} << 8 | row[x * 4 + 2];
        }
    }
    return surface;
}

void VeTextureRenderer::Destroy() {
    auto deleteFramebuffer = [](unsigned int& name) {
        if (name != 0) {
            glDeleteFramebuffers(1, &name);
            name = 0;
        }
    };
    auto deleteRenderbuffer = [](unsigned int& name) {
        if (name != 0) {
            glDeleteRenderbuffers(1, &name);
            name = 0;
        }
    };
    auto deleteTexture = [](unsigned int& name) {
        if (name != 0) {
            glDeleteTextures(1, &name);
            name = 0;
        }
    };
    deleteFramebuffer(multisampleFramebuffer);
    deleteFramebuffer(resolveFramebuffer);
    deleteRenderbuffer(multisampleDepthStencil);
    deleteRenderbuffer(resolveDepth);
    deleteTexture(multisampleColour);
    deleteTexture(resolveColour);
}
