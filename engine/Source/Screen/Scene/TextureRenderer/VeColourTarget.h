#pragma once
// A plain off-screen colour target: an RGBA texture of 8 bits a channel with a framebuffer to draw
// into it, no depth and no multisampling. What is drawn into it is then used as any texture (its
// row 0 is the one drawn at the bottom of the viewport). Needs a current OpenGL context.
#include <cstdint>

class VeColourTarget {
public:
    VeColourTarget() = default;
    ~VeColourTarget();
    VeColourTarget(const VeColourTarget&) = delete;
    VeColourTarget& operator=(const VeColourTarget&) = delete;

    // Makes the texture (with that filter, nearest or linear: it has no mipmaps; clamped edges) and
    // the framebuffer; an incomplete framebuffer is logged and leaves the target empty.
    bool Create(int32_t width, int32_t height, unsigned int filter);
    // Directs drawing into the texture over its whole size; the caller binds the next target.
    void Begin() const;
    void Destroy();
    bool Ready() const { return framebuffer != 0; }

    unsigned int framebuffer = 0;
    unsigned int texture = 0;
    int32_t width = 0;
    int32_t height = 0;
};
