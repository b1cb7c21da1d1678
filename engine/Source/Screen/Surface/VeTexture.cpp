#include "Screen/Surface/VeTexture.h"

#include "Screen/Surface/VeSurface.h"

#include <GL/glew.h>

static_assert(VeFilterNearest == GL_NEAREST && VeFilterLinear == GL_LINEAR);
static_assert(VeFilterNearestMipmapNearest == GL_NEAREST_MIPMAP_NEAREST &&
              VeFilterLinearMipmapNearest == GL_LINEAR_MIPMAP_NEAREST);
static_assert(VeFilterNearestMipmapLinear == GL_NEAREST_MIPMAP_LINEAR &&
              VeFilterLinearMipmapLinear == GL_LINEAR_MIPMAP_LINEAR);

VeTexture::VeTexture(VeSurface* surface, unsigned int textureFilter) : faceMap{0}, filter(textureFilter) {
    faces[0] = surface;
    if (surface != nullptr) {
        names[0] = UploadFace(*surface);
    }
}

VeTexture::~VeTexture() {
    for (int i = 0; i < 6; ++i) {
        DeleteName(i);
    }
}

void VeTexture::DeleteName(int index) {
    if (names[index] != 0) {
        GLuint name = names[index];
        glDeleteTextures(1, &name);
        names[index] = 0;
    }
}

unsigned int VeTexture::UploadFace(const VeSurface& surface) const {
    VeSurface keyed(surface.width, surface.height);
    keyed.CopyFrom(surface);
    keyed.ApplyColourKey(kColourKey, true);
    return keyed.UploadTexture(filter);
}

void VeTexture::SetFace(VeSurface* surface, int index) {
    if (index < 0 || index >= 6) {
        return;
    }
    DeleteName(index);
    faces[index] = surface;
    if (surface != nullptr) {
        names[index] = UploadFace(*surface);
    }
}

void VeTexture::SetFaceMap(const std::array<int, 6>& map) {
    faceMap.assign(map.begin(), map.end());
    for (int& entry : faceMap) {
        entry = entry >= 0 && entry < 6 ? entry : 0;
    }
}

unsigned int VeTexture::NameForFace(int face) const {
    int slot = face >= 0 && face < static_cast<int>(faceMap.size()) ? faceMap[face] : faceMap[0];
    return names[slot];
}

int VeTexture::SlotForFace(const std::vector<int>& map, int face) {
    if (map.empty()) {
        return 0;
    }
    if (map.size() > 1 && face > 0 && face < static_cast<int>(map.size())) {
        return map[face];
    }
    return map[0];
}

unsigned int VeTexture::BlockFaceName(int face) const {
    return names[SlotForFace(faceMap, face)];
}

void VeTexture::Bind(int face) const {
    glBindTexture(GL_TEXTURE_2D, NameForFace(face));
}

void VeTexture::Replace(VeSurface* surface) {
    DeleteName(0);
    if (surface != nullptr) {
        names[0] = UploadFace(*surface);
    }
}

void VeTexture::Refresh() {
    Replace(faces[0]);
}
