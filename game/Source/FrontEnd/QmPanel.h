#pragma once
// The dark translucent panels the menu pages lay their texts on, so that titles, lists and tables
// stay readable over the bright, moving backdrop of falling blocks: a band across the whole page
// behind the title, and panels behind the lists, tables and choices. A panel darkens what lies
// under it (the backdrop where the overlay is clear); it never hides it. A question asked on a
// page sits in a darker box with a white frame, as the notice dialog's.
class VeSurface;

class QmPanel {
public:
    // What a panel leaves of the light under it; the title band is a little lighter.
    static constexpr float kShade = 0.3f;
    static constexpr float kTitleShade = 0.4f;
    static constexpr float kQuestionShade = 0.1f;
    // The room the title band leaves above and below the title.
    static constexpr int kBandPadding = 6;
    // The page's panels span from kLeft to kRight, as the play page's two columns do.
    static constexpr int kLeft = 16;
    static constexpr int kRight = 624;

    // The band across the page behind a title whose text is height pixels high at y.
    static void DrawTitleBand(VeSurface& target, int y, int height);
    // A band as the title's across the page between top and bottom (a page's notes and status).
    static void DrawBand(VeSurface& target, int top, int bottom);
    // A panel over the rectangle.
    static void Draw(VeSurface& target, int x, int y, int width, int height);
    // A panel from kLeft to kRight between top and bottom.
    static void DrawAcross(VeSurface& target, int top, int bottom);
    // The framed box of a question over the rectangle (the frame lies just outside it).
    static void DrawQuestion(VeSurface& target, int x, int y, int width, int height);
};
