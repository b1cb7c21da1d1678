#pragma once
// An OpenGL texture made from up to six surfaces (the faces of a block). Each face is uploaded
// from a colour-keyed copy of its surface, so magenta pixels are transparent in the texture. The
// face map says which face's texture each drawn face uses; the surfaces are not owned and must
// outlive Refresh calls. Needs a current OpenGL context.
#include <array>
#include <vector>

class VeSurface;

// OpenGL filter values, so that callers need no OpenGL header.
enum VeTextureFilter : unsigned int {
    VeFilterNearest = 0x2600,
    VeFilterLinear = 0x2601,
    VeFilterNearestMipmapNearest = 0x2700,
    VeFilterLinearMipmapNearest = 0x2701,
    VeFilterNearestMipmapLinear = 0x2702,
    VeFilterLinearMipmapLinear = 0x2703,
};

class VeTexture {
public:
    // Face 0 is the surface, the face map is [0], and face 0 is uploaded.
    explicit VeTexture(VeSurface* surface, unsigned int filter = VeFilterNearest);
    ~VeTexture();
    VeTexture(const VeTexture&) = delete;
    VeTexture& operator=(const VeTexture&) = delete;

    // Face index (0 to 5) becomes the surface and is uploaded.
    void SetFace(VeSurface* surface, int index);
    void SetFaceMap(const std::array<int, 6>& map);
    // Binds the texture the face map names for that face.
    void Bind(int face) const;
    // The texture name the face map gives for a face; entry 0 for faces the map does not cover.
    unsigned int NameForFace(int face) const;
    // The face-map entry a drawn block face uses: its own entry when the map has more than one and
    // the face is inside it and above 0, else entry 0.
    static int SlotForFace(const std::vector<int>& faceMap, int face);
    unsigned int BlockFaceName(int face) const;
    // Deletes face 0's texture and uploads again from the surface (Replace) or from face 0.
    void Replace(VeSurface* surface);
    void Refresh();

    std::array<VeSurface*, 6> faces{};
    std::array<unsigned int, 6> names{};
    std::vector<int> faceMap;
    unsigned int filter;

private:
    unsigned int UploadFace(const VeSurface& surface) const;
    void DeleteName(int index);
};
