#pragma once
// Test support for the pages drawn on the dark panels (highscores, party, party results,
// character): the page test's plain background, where the title band reaches the page's edges
// shaded as the band shades it.
#include "FrontEnd/QmPanel.h"
#include "PageTestSupport.h"

namespace page_test {

class PanelPageTest : public PageTest {
protected:
    // Nothing but the background, plain or under the title band, within kMargin of the edges: no
    // text runs off the page.
    ::testing::AssertionResult EdgesClearOfText() const {
        const uint32_t shaded = Shaded(true);
        for (int y = 0; y < page.height; ++y) {
            for (int x = 0; x < page.width; ++x) {
                const bool edge =
                    x < kMargin || y < kMargin || x >= page.width - kMargin || y >= page.height - kMargin;
                const uint32_t pixel = page.GetXY(x, y) & 0xFFFFFF;
                if (edge && pixel != kBackground && pixel != shaded) {
                    return ::testing::AssertionFailure() << "drawn at the edge: " << x << "," << y;
                }
            }
        }
        return ::testing::AssertionSuccess();
    }

    // The title band across the page at y (seen at the left edge) and a panel at (x, panelY), both
    // where nothing else is drawn.
    ::testing::AssertionResult OnBandAndPanel(int y, int x, int panelY) const {
        if ((page.GetXY(0, y) & 0xFFFFFF) != Shaded(true)) {
            return ::testing::AssertionFailure() << "no title band at y " << y;
        }
        if ((page.GetXY(x, panelY) & 0xFFFFFF) != Shaded(false)) {
            return ::testing::AssertionFailure() << "no panel at " << x << "," << panelY;
        }
        return ::testing::AssertionSuccess();
    }

    // The plain background as the title band (or a panel) shades it.
    static uint32_t Shaded(bool band) {
        VeSurface pixel;
        pixel.Create(1, 1);
        pixel.Fill(kBackground);
        if (band) {
            QmPanel::DrawTitleBand(pixel, QmPanel::kBandPadding, 1);
        } else {
            QmPanel::Draw(pixel, 0, 0, 1, 1);
        }
        return pixel.GetXY(0, 0) & 0xFFFFFF;
    }
};

} // namespace page_test
