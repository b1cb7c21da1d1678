#include "Environment/ArEnvironmentManager.h"

#include "Gameplay/Entities/ArEntity.h"
#include "Screen/Text/VeText.h"
#include "Screen/VeScreen.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr uint32_t kTextColour = 0xFFFFFF;
constexpr uint32_t kShadowColour = 0x000000;
constexpr uint32_t kCountdownOutline = 0x1C1A24;
// Where the name and the badge sit on the panel.
constexpr int kNameX = 14;
constexpr int kBadgeX = 216;
constexpr int kBadgeY = 4;
// The width the map's name may take left of the badge.
constexpr int kNameRoom = kBadgeX - kNameX - 6;
// Room kept free at both sides of a centred text.
constexpr int kTextMargin = 8;

// The words of text in lines of at most perLine characters (a longer word stands alone).
std::vector<std::string> WrapWords(const std::string& text, size_t perLine) {
    std::vector<std::string> lines;
    std::string line;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find(' ', start);
        if (end == std::string::npos) {
            end = text.size();
        }
        const std::string word = text.substr(start, end - start);
        start = end + 1;
        if (word.empty()) {
            continue;
        }
        if (!line.empty() && line.size() + 1 + word.size() > perLine) {
            lines.push_back(line);
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    if (!line.empty()) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace

ArEnvironmentManager::ArEnvironmentManager(VeScreen& screenToDrawOn, QmWorldViewHost& viewHost,
                                           QmWorldFrontEndLink* frontEndLink,
                                           std::unique_ptr<QmWorldArt> decodedArt)
    : QmClientEnvironmentManager(screenToDrawOn, viewHost, frontEndLink, std::move(decodedArt)) {
    const char* badgeFiles[4] = {"Assets/Badges/Gold.png", "Assets/Badges/Silver.png",
                                 "Assets/Badges/Bronze.png", "Assets/Badges/Badge.png"};
    for (size_t i = 0; i < badges.size(); ++i) {
        badges[i] = std::make_unique<VeImage>(badgeFiles[i]);
    }
    panel = std::make_unique<VeImage>("Assets/HUD/Panel.png");
    textStyle.Size(4).Colour(kTextColour).Weight(3).LetterSpacing(2).LineHeight(4);
    shadowStyle = textStyle;
    shadowStyle.Colour(kShadowColour);
    countdownStyle.Size(24).Colour(kTextColour).Weight(20).LetterSpacing(4);
    countdownShadowStyle = countdownStyle;
    countdownShadowStyle.Colour(kShadowColour);
    hudStyle.Size(3).Colour(kTextColour).Weight(2).LetterSpacing(1);
    hudSmallStyle = hudStyle;
    hudSmallStyle.Size(2);
    racerFace.Load(0, OpenGLAvailable());
}

ArEnvironmentManager::~ArEnvironmentManager() = default;

void ArEnvironmentManager::SetFade(float multiplier) {
    screen.screenColorMultiplier = multiplier;
}

void ArEnvironmentManager::ReversePixelOrder() {
    turnPending = true;
}

void ArEnvironmentManager::GreyFrame() {
    greyPending = true;
}

void ArEnvironmentManager::ComposeOverlay() {
    // Grey and turn belong to the world; the panel and the texts come after them, so they stay
    // upright and in colour.
    if (greyPending) {
        screen.overlay.GreyRect(0, 0, 0, 0);
    }
    if (turnPending) {
        screen.overlay.Rotate180();
    }
    greyPending = false;
    turnPending = false;
    for (const auto& draw : raceTexts) {
        draw();
    }
    raceTexts.clear();
}

void ArEnvironmentManager::DrawText(const std::string& text, int y) {
    if (text.empty()) {
        return;
    }
    raceTexts.push_back([this, text, y] {
        // Long lines are broken between words, each part centred on its own.
        const VeText measure(std::string(), &textStyle);
        const int perLine =
            std::max(1, (screen.width - 2 * kTextMargin + textStyle.letterSpacing) / measure.Advance());
        const int centre = screen.width / 2;
        int top = y;
        for (const std::string& line : WrapWords(text, static_cast<size_t>(perLine))) {
            VeText::DrawString(screen.overlay, line, centre + 1, top + 1, shadowStyle, true);
            VeText::DrawString(screen.overlay, line, centre, top, textStyle, true);
            top += measure.LineStep();
        }
    });
}

void ArEnvironmentManager::DrawCountdown(const std::string& number) {
    raceTexts.push_back([this, number] {
        VeText text(number, &countdownStyle);
        VeText shadow(number, &countdownShadowStyle);
        const int x = screen.width / 2;
        const int y = (screen.height - text.Height()) / 2;
        shadow.DrawOnto(screen.overlay, x + 5, y + 5, true, 0.4f);
        text.DrawOnto(screen.overlay, x, y, true, 1.0f, kCountdownOutline);
    });
}

void ArEnvironmentManager::DrawHud(const std::string& mapName, int badge) {
    if (hudShown) {
        raceTexts.push_back([this, mapName, badge] { DrawPanel(mapName, badge); });
    }
}

void ArEnvironmentManager::DrawRunHud(const std::string& level, const std::string& time) {
    if (!hudShown) {
        return;
    }
    raceTexts.push_back([this, level, time] {
        DrawPanel(level, NoBadge);
        VeText clock(time, &hudStyle);
        const int y = kHudY + (panel->height - clock.Height()) / 2;
        clock.DrawOnto(screen.overlay, kHudX + panel->width - kNameX - clock.Width(), y, false, 1.0f,
                       kShadowColour);
    });
}

void ArEnvironmentManager::DrawPanel(const std::string& mapName, int badge) {
    VeSurface& overlay = screen.overlay;
    overlay.BlitKeyed(*panel, kHudX, kHudY);
    if (!mapName.empty()) {
        // A long name (up to 15 characters) is written smaller rather than run under the badge.
        const VeText large(mapName, &hudStyle);
        const VeText small(large.Width() > kNameRoom ? mapName : std::string(), &hudSmallStyle);
        const VeText& name = large.Width() > kNameRoom ? small : large;
        const int y = kHudY + (panel->height - name.Height()) / 2;
        name.DrawOnto(overlay, kHudX + kNameX, y, false, 1.0f, kShadowColour);
    }
    if (badge >= 0 && badge < static_cast<int>(badges.size())) {
        overlay.BlitKeyed(*badges[static_cast<size_t>(badge)], kHudX + kBadgeX, kHudY + kBadgeY);
    }
}

void ArEnvironmentManager::DrawEntity(const ArEntity& entity, EntityKind kind, float alpha) {
    DrawEntityAt(kind, entity.x, entity.y, alpha);
}

void ArEnvironmentManager::DrawEntityAt(EntityKind kind, float x, float y, float alpha) {
    if (kind == EnemyEntity) {
        QmClientEnvironmentManager::DrawEntity(CowImage(blockSize), CowTexture(blockSize), x, y, alpha,
                                               false);
        return;
    }
    // The racer comes forward when it dies; the ghost stays where it is.
    QmClientEnvironmentManager::DrawEntity(RacerFaceImage(blockSize), RacerFaceTexture(blockSize), x, y,
                                           alpha, kind == RacerEntity);
}

const VeSurface* ArEnvironmentManager::RacerFaceImage(int size) const {
    const VeSurface* face = racerFace.Image(size);
    return face != nullptr ? face : RacerImage(size);
}

const VeTexture* ArEnvironmentManager::RacerFaceTexture(int size) const {
    const VeTexture* face = racerFace.Texture(size);
    return face != nullptr ? face : RacerTexture(size);
}

void ArEnvironmentManager::SetRacerFace(int eyeDX, int eyeDY, int bodyFrame) {
    racerFace.Build(eyeDX, eyeDY, bodyFrame);
}

void ArEnvironmentManager::SetCharacter(int character) {
    if (character != racerFace.Character()) {
        racerFace.Load(character, OpenGLAvailable());
    }
}

const uint32_t* ArEnvironmentManager::FireImage(int index, int size) {
    if (index < 0) {
        return nullptr;
    }
    const VeSurface* frame = fireFrames.Frame(index).Surface(size);
    return frame != nullptr ? frame->Pixels() : nullptr;
}
